#include "platform/qt/SourceTableModel.h"

#include <utility>

#include "platform/qt/QtText.h"

namespace norvo {

SourceTableModel::SourceTableModel(TableSource source, std::vector<TableColumn> columns,
                                   Reload reload)
    : source_(std::move(source)), columns_(std::move(columns)), reload_(reload) {
}

void SourceTableModel::on_ticked(std::function<void(std::size_t, bool)> ticked) {
  ticked_ = std::move(ticked);
}

void SourceTableModel::reload() {
  if (reload_ == Reload::in_place) {
    reload_in_place();
    return;
  }
  beginResetModel();
  rows_ = static_cast<int>(source_.rows());
  endResetModel();
}

void SourceTableModel::reload_in_place() {
  const int now = static_cast<int>(source_.rows());
  if (now > rows_) {
    beginInsertRows({}, rows_, now - 1);
    rows_ = now;
    endInsertRows();
  } else if (now < rows_) {
    beginRemoveRows({}, now, rows_ - 1);
    rows_ = now;
    endRemoveRows();
  }
  if (rows_ > 0) Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
}

int SourceTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int SourceTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QString SourceTableModel::text(const QModelIndex& index) const {
  const TableColumn& column = columns_[static_cast<std::size_t>(index.column())];
  const auto value = source_.value(column.identifier, static_cast<std::size_t>(index.row()));
  return value ? to_qt(displayable(*value)) : QString();
}

QVariant SourceTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const TableColumn& column = columns_[static_cast<std::size_t>(index.column())];
  if (column.kind == TableColumn::Kind::box) {
    if (role == Qt::AccessibleTextRole) return column.heading;
    if (role != Qt::CheckStateRole || !source_.ticked) return {};
    return source_.ticked(static_cast<std::size_t>(index.row())) ? Qt::Checked : Qt::Unchecked;
  }
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return text(index);
  if (role == Qt::TextAlignmentRole) {
    const bool number = column.kind == TableColumn::Kind::number;
    return QVariant((number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  }
  return {};
}

QVariant SourceTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  const TableColumn& column = columns_[static_cast<std::size_t>(section)];
  if (role == Qt::DisplayRole) {
    return column.kind == TableColumn::Kind::box ? QString() : column.heading;
  }
  if (role == Qt::TextAlignmentRole) {
    const bool number = column.kind == TableColumn::Kind::number;
    return QVariant((number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  }
  return {};
}

Qt::ItemFlags SourceTableModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  const bool box = index.isValid() && columns_[static_cast<std::size_t>(index.column())].kind ==
                                          TableColumn::Kind::box;
  return box ? flags | Qt::ItemIsUserCheckable : flags;
}

bool SourceTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !(flags(index) & Qt::ItemIsUserCheckable)) return false;
  if (ticked_) ticked_(static_cast<std::size_t>(index.row()), value.toInt() == Qt::Checked);
  Q_EMIT dataChanged(index, index);
  return true;
}

}  // namespace norvo
