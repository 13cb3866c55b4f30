// The top of the window: the title of the step, the search type, and where in the steps one is.
// Main thread.
#pragma once

#include <QLabel>
#include <QWidget>
#include <vector>

#include "platform/qt/ControlTable.h"

namespace norvo {

enum class Step { drive, settings, file_types, search };

class StepIndicator : public QWidget {
 public:
  explicit StepIndicator(QWidget* parent = nullptr);

  void show_step(Step step, bool with_file_types);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Entry {
    QString title;
    bool done;
    bool current;
  };
  std::vector<Entry> entries() const;
  int entry_width(const Entry& entry) const;

  Step step_ = Step::drive;
  bool with_file_types_ = false;
};

class Header : public QWidget {
 public:
  explicit Header(ControlTable& controls);

  void show_step(Step step, const QString& title);

  // Searches with a choice of file types have one step more.
  void show_file_types(bool with_file_types);

 private:
  Step step_ = Step::drive;
  bool with_file_types_ = false;
  QLabel* title_;
  StepIndicator* steps_;
};

}  // namespace norvo
