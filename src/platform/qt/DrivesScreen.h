// The first screen: the drives, and what to look for. Main thread.
#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>

#include "platform/qt/ControlTable.h"
#include "platform/qt/TableSource.h"
#include "platform/qt/TableView.h"

namespace norvo {

class DrivesScreen : public QWidget {
 public:
  // `image_chosen` hears of a disk image that was chosen in the file dialog or dropped on the list.
  DrivesScreen(ControlTable& controls, TableSource drives,
               std::function<void(const std::filesystem::path&)> image_chosen);

  TableView& table() const { return *table_; }

  // Asks for a disk image file.
  void choose_image();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* make_refresh_box(ControlTable& controls);
  QWidget* make_mode_box(ControlTable& controls);

  std::function<void(const std::filesystem::path&)> image_chosen_;
  TableView* table_;
};

}  // namespace norvo
