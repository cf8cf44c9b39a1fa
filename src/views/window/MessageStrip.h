#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace tarnwick {

class AppStore;
class Button;
class IconButton;
class TextLabel;

/// The store's message line in a window: a bar with the sentence and a button that dismisses it. Takes no space
/// while there is no message. Screen readers are notified of a new one.
class MessageStrip final : public QWidget {
  Q_OBJECT
 public:
  /// `store` outlives the strip.
  explicit MessageStrip(AppStore& store, QWidget* parent = nullptr);
  /// Shows all but this one, which is said elsewhere in the window.
  void leaveOut(const QString& message);
  /// What opens the settings that were kept aside; offered while the message reports some.
  void setOpenKept(std::function<void()> open);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void update();

  AppStore& store_;
  QString leftOut_;
  std::function<void()> openKept_;
  TextLabel* text_;
  Button* keptButton_;
  IconButton* dismiss_;
};

}  // namespace tarnwick
