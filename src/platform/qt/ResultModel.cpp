#include "platform/qt/ResultModel.h"

#include <QHash>
#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/qt/QtText.h"

namespace norvo {

using namespace Qt::StringLiterals;

ResultModel::ResultModel(const Gallery& gallery) : gallery_(gallery) {
}

void ResultModel::on_removed(std::function<void(const QString&)> removed) {
  removed_ = std::move(removed);
}

void ResultModel::on_emptied(std::function<void()> emptied) {
  emptied_ = std::move(emptied);
}

void ResultModel::describe_by(std::function<QString(const QString&)> description) {
  description_ = std::move(description);
}

void ResultModel::tell_change(const QString& image_UID) {
  const int row = row_of(image_UID);
  if (row < 0) return;
  Q_EMIT dataChanged(index(row), index(row), {Qt::DecorationRole, Qt::AccessibleDescriptionRole});
}

void ResultModel::refresh() {
  GalleryChanges changes = gallery_.changes(edits_, shown_.size());
  edits_ = changes.edits;
  std::vector<Shown> list;
  list.reserve(changes.items.size());
  for (MyImageObject& item : changes.items) {
    list.push_back({to_qt(item.image_UID), to_qt(displayable(item.image_Name)), std::move(item)});
  }
  if (changes.emptied) clear();
  changes.only_added ? append(std::move(list)) : replace(std::move(list));
}

// An item that comes now is another one, even under the identifier of an old one.
void ResultModel::clear() {
  if (shown_.empty()) return;
  replace({});
  if (emptied_) emptied_();
}

void ResultModel::append(std::vector<Shown> added) {
  if (added.empty()) return;
  const auto first = static_cast<int>(shown_.size());
  beginInsertRows({}, first, first + static_cast<int>(added.size()) - 1);
  std::ranges::move(added, std::back_inserter(shown_));
  endInsertRows();
}

// Items that were moved and not taken out go to their new places at once: nobody has to make their
// pictures again, and they stay selected.
void ResultModel::reorder(const std::vector<Shown>& now) {
  const std::size_t count = shown_.size();
  if (now.size() < count) return;
  QHash<QString, int> places;
  for (std::size_t i = 0; i < count; ++i) places.insert(now[i].image_UID, static_cast<int>(i));
  // Fewer under a name that comes twice: then nobody can say which one went where.
  if (places.size() != static_cast<qsizetype>(count)) return;
  std::vector<int> place_of;
  for (const Shown& item : shown_) place_of.push_back(places.value(item.image_UID, -1));
  if (std::ranges::is_sorted(place_of) || std::ranges::find(place_of, -1) != place_of.end()) return;
  Q_EMIT layoutAboutToBeChanged();
  std::vector<Shown> moved(count);
  for (std::size_t i = 0; i < count; ++i) {
    moved[static_cast<std::size_t>(place_of[i])] = std::move(shown_[i]);
  }
  shown_ = std::move(moved);
  for (const QModelIndex& old : persistentIndexList()) {
    changePersistentIndex(old, index(place_of[static_cast<std::size_t>(old.row())]));
  }
  Q_EMIT layoutChanged();
}

void ResultModel::replace(std::vector<Shown> now) {
  reorder(now);
  const auto same_item = [](const Shown& one, const Shown& other) {
    return one.image_UID == other.image_UID;
  };
  const auto [old_end, new_end] =
      std::mismatch(shown_.begin(), shown_.end(), now.begin(), now.end(), same_item);
  const auto before = static_cast<std::size_t>(old_end - shown_.begin());
  const auto [old_tail, new_tail] =
      std::mismatch(shown_.rbegin(), std::make_reverse_iterator(old_end), now.rbegin(),
                    std::make_reverse_iterator(new_end), same_item);
  const auto after = static_cast<std::size_t>(old_tail - shown_.rbegin());
  replace_middle(now, before, after);
  for (std::size_t i = 0; i < now.size(); ++i) {
    if (shown_[i].item == now[i].item) continue;
    shown_[i] = now[i];
    const QModelIndex changed = index(static_cast<int>(i));
    Q_EMIT dataChanged(changed, changed);
  }
}

void ResultModel::replace_middle(std::vector<Shown>& now, std::size_t same_before,
                                 std::size_t same_after) {
  const auto first = static_cast<std::ptrdiff_t>(same_before);
  const auto old_last = static_cast<std::ptrdiff_t>(shown_.size() - same_after);
  const auto new_last = static_cast<std::ptrdiff_t>(now.size() - same_after);
  if (old_last > first) {
    beginRemoveRows({}, static_cast<int>(first), static_cast<int>(old_last) - 1);
    if (removed_) {
      for (auto i = first; i < old_last; ++i) {
        removed_(shown_[static_cast<std::size_t>(i)].image_UID);
      }
    }
    shown_.erase(shown_.begin() + first, shown_.begin() + old_last);
    endRemoveRows();
  }
  if (new_last > first) {
    beginInsertRows({}, static_cast<int>(first), static_cast<int>(new_last) - 1);
    shown_.insert(shown_.begin() + first, now.begin() + first, now.begin() + new_last);
    endInsertRows();
  }
}

int ResultModel::row_of(const QString& image_UID) const {
  // Asked for most often are the items that came last.
  const auto found = std::find_if(shown_.rbegin(), shown_.rend(), [&image_UID](const Shown& item) {
    return item.image_UID == image_UID;
  });
  return static_cast<int>(shown_.rend() - found) - 1;
}

const MyImageObject& ResultModel::item(int row) const {
  return shown_[static_cast<std::size_t>(row)].item;
}

int ResultModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

QVariant ResultModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const Shown& item = shown_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
      return item.name;
    case Qt::AccessibleDescriptionRole:
      return description_ ? description_(item.image_UID) : QString();
    case uid_role:
      return item.image_UID;
    default:
      return {};
  }
}

QByteArray ResultModel::identity() const {
  return QByteArray::number(reinterpret_cast<quintptr>(this));
}

QStringList ResultModel::mimeTypes() const {
  return {u"application/x-norvo-items"_s};
}

QMimeData* ResultModel::mimeData(const QModelIndexList& /*indexes*/) const {
  auto* content = new QMimeData;
  content->setData(mimeTypes().first(), identity());
  return content;
}

bool ResultModel::is_own(const QMimeData& content) const {
  return content.data(mimeTypes().first()) == identity();
}

Qt::ItemFlags ResultModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::ItemIsDropEnabled;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled |
         Qt::ItemNeverHasChildren;
}

}  // namespace norvo
