// The gallery's items as a list for a view. What is shown is a copy, brought in line by refresh():
// items that stay or are moved stay selected, and the scroll position is kept. Main thread.
#pragma once

#include <QAbstractListModel>
#include <QMimeData>
#include <cstdint>
#include <functional>
#include <vector>

#include "results/Gallery.h"

namespace norvo {

class ResultModel : public QAbstractListModel {
 public:
  enum Role { uid_role = Qt::UserRole };

  // `gallery` outlives the model.
  explicit ResultModel(const Gallery& gallery);

  // `removed` is called for every item that leaves the list, `emptied` when all have left it since
  // the last refresh, be there new ones already.
  void on_removed(std::function<void(const QString& image_UID)> removed);
  void on_emptied(std::function<void()> emptied);

  // What is known of an item beside its name, for screen readers. It is asked for when it is
  // needed.
  void describe_by(std::function<QString(const QString& image_UID)> description);

  // The picture or the description of an item is another one now.
  void tell_change(const QString& image_UID);

  void refresh();

  // The row of an item, or -1.
  int row_of(const QString& image_UID) const;

  const MyImageObject& item(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

  // What is dragged means something to this model only: neither files nor names leave it.
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QModelIndexList& indexes) const override;
  bool is_own(const QMimeData& content) const;

 private:
  struct Shown {
    QString image_UID;
    QString name;
    MyImageObject item;
  };

  QByteArray identity() const;
  void append(std::vector<Shown> added);
  void clear();
  void reorder(const std::vector<Shown>& now);
  void replace(std::vector<Shown> now);
  void replace_middle(std::vector<Shown>& now, std::size_t same_before, std::size_t same_after);

  const Gallery& gallery_;
  std::vector<Shown> shown_;
  std::uint64_t edits_ = 0;  // of the gallery, when it was read last
  std::function<void(const QString&)> removed_;
  std::function<void()> emptied_;
  std::function<QString(const QString&)> description_;
};

}  // namespace norvo
