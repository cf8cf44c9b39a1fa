#pragma once

#include <QWidget>

#include "desktop/Panels.h"
#include "platform/wayland/OutsideCatcher.h"
#include "platform/wayland/PanelOrder.h"
#include "platform/wayland/PanelPointer.h"
#include "platform/wayland/WaylandScreens.h"

namespace tarnwick {

/// A small window in the uppermost layer. A click outside that closes it is taken: it reaches nothing else but our own
/// panels. What it is made with must outlive it.
class WaylandPopup final : public Popup {
  Q_OBJECT
 public:
  /// `screen`: the identity of the panel's display. `beside`: in the coordinates of `panel`.
  WaylandPopup(const WaylandSession& session, const WaylandScreens& screens, PanelPointer& pointer, PanelOrder& order,
               const QWidget& panel, const QString& screen, std::unique_ptr<QWidget> content, const QRect& beside,
               const PopupStyle& style);
  ~WaylandPopup() override;

  void reposition() override;
  void moveBeside(const QRect& rectangle) override;
  void giveBackKeyboard() override;
  /// Once.
  void show();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void leaveOrder();
  QRect anchor() const;
  void pressed(const QPointF& place);
  void followDrag(QEvent::Type type);
  void close();

  const WaylandSession& session_;
  const WaylandScreens& screens_;
  PanelPointer& pointer_;
  PanelOrder& order_;
  const QWidget& panel_;
  QString screen_;
  std::unique_ptr<OutsideCatcher> catcher_;
  std::unique_ptr<QWidget> content_;
  QRect beside_;
  PopupStyle style_;
  bool isDraggedOver_ = false;
  LayerWindow* layer_ = nullptr;  ///< Null where there is no display for it.
};

}  // namespace tarnwick
