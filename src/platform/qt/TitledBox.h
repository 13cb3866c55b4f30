// A group of controls on a card with an optional title. Main thread.
#pragma once

#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

namespace norvo {

class TitledBox : public QWidget {
 public:
  // A flat box has a title and no card.
  enum class Kind { card, flat };
  explicit TitledBox(const QString& title, Kind kind = Kind::card, QWidget* parent = nullptr);

  // An empty title takes no room.
  void set_title(const QString& title);
  QString title() const;

  QVBoxLayout& content() { return *content_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Kind kind_;
  QLabel* title_;
  QVBoxLayout* content_;
};

}  // namespace norvo
