// A table over a TableSource. Main thread.
#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <string>
#include <vector>

#include "platform/qt/TableSource.h"

namespace norvo {

struct TableColumn {
  std::string identifier;
  QString heading;
  enum class Kind { text, number, box } kind = Kind::text;
};

class SourceTableModel : public QAbstractTableModel {
 public:
  // A reload either forgets everything (another list), or keeps what stays in its row.
  enum class Reload { anew, in_place };
  SourceTableModel(TableSource source, std::vector<TableColumn> columns, Reload reload);

  // Called when the person ticks a box; the list is changed by whoever keeps it.
  void on_ticked(std::function<void(std::size_t row, bool on)> ticked);

  void reload();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  QString text(const QModelIndex& index) const;
  void reload_in_place();

  TableSource source_;
  std::vector<TableColumn> columns_;
  Reload reload_;
  std::function<void(std::size_t, bool)> ticked_;
  int rows_ = 0;
};

}  // namespace norvo
