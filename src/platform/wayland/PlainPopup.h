#pragma once

#include <QRect>
#include <QWidget>

#include "desktop/Panels.h"
#include "platform/wayland/WaylandScreens.h"

namespace tarnwick {

/// A small window that belongs to an ordinary one. One that closes on a click outside is a popup of the toolkit's,
/// which the compositor closes; one that does not is a tip. The screens and the panel's widget must outlive it.
class PlainPopup final : public Popup {
  Q_OBJECT
 public:
  PlainPopup(const WaylandScreens& screens, const QWidget& panel, const QString& screen,
             std::unique_ptr<QWidget> content, const QRect& beside, const PopupStyle& style);

  void show();
  void reposition() override;
  void moveBeside(const QRect& rectangle) override;
  /// The compositor does so when the window goes, and not before.
  void giveBackKeyboard() override {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  const WaylandScreens& screens_;
  const QWidget& panel_;
  QString screen_;
  std::unique_ptr<QWidget> content_;
  QRect beside_;
  PopupStyle style_;
};

}  // namespace tarnwick
