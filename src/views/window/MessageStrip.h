#pragma once

#include <QWidget>

namespace tarnwick {

class AppStore;
class IconButton;
class TextLabel;

/// The store's message line in a window: a quiet bar with the sentence and a button that dismisses it. Takes no room
/// while there is no message. Screen readers are told of a new one.
class MessageStrip final : public QWidget {
  Q_OBJECT
 public:
  /// `store` outlives the strip.
  explicit MessageStrip(AppStore& store, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void update();

  AppStore& store_;
  TextLabel* text_;
  IconButton* dismiss_;
};

}  // namespace tarnwick
