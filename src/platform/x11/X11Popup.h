#pragma once

#include <QWidget>
#include <optional>

#include "desktop/Panels.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11Focus.h"
#include "platform/x11/X11Screens.h"

namespace tarnwick {

/// A window that no window manager looks after: it is exactly where it is put, on every desktop and above
/// full-screen windows. Clicks outside of it are seen, not taken: they also do what they do without it.
/// The events, the screens and the panel's content must outlive it.
class X11Popup final : public Popup {
  Q_OBJECT
 public:
  /// `screen`: the identity of the panel's display. `beside`: in the coordinates of `panel`.
  X11Popup(X11Events& events, const X11Screens& screens, const QWidget& panel, const QString& screen,
           std::unique_ptr<QWidget> content, const QRect& beside, const PopupStyle& style);
  ~X11Popup() override;

  void reposition() override;
  void moveBeside(const QRect& rectangle) override;
  void giveBackKeyboard() override { focus_.giveBack(); }
  void setComposited(bool isComposited);
  /// Maps it. Once, after it knows whether the screen is composited.
  void show();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void applyShape() const;
  void holdPicture(bool isAbove) const;
  QRect anchor() const;
  void pressed(xcb_timestamp_t time);
  void judgePress(const X11RawInput::Pointer& pointer);
  void close(xcb_timestamp_t time = XCB_CURRENT_TIME);

  X11Events& events_;
  const X11Screens& screens_;
  const QWidget& panel_;
  QString screen_;
  std::unique_ptr<QWidget> content_;
  QRect beside_;
  PopupStyle style_;
  bool isComposited_ = true;
  X11RawInput::Subscription buttons_;
  std::optional<xcb_timestamp_t> press_;  ///< The time of one whose place is not known yet.
  quint64 question_ = 0;                  ///< The request whose answer says so.
  X11Focus focus_;
};

}  // namespace tarnwick
