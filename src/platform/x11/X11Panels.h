#pragma once

#include "desktop/Panels.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11Screens.h"

namespace tarnwick {

/// Makes dock windows and watches the compositor. The events and the screens must outlive it and every panel.
class X11Panels final : public Panels {
  Q_OBJECT
 public:
  X11Panels(X11Events& events, X11Screens& screens);

  std::unique_ptr<Panel> make(std::unique_ptr<QWidget> content) override;
  bool isComposited() const override { return isComposited_; }
  bool canBlur() const override { return isComposited_ && announcesBlur_; }
  Capability captureProtection() const override;

 Q_SIGNALS:
  /// Another program's full-screen window got the keyboard, or none has it any more.
  void fullscreenChanged(quint32 window);

 private:
  bool readAnnouncement() const;
  void readFullscreen();

  X11Events& events_;
  X11Screens& screens_;
  bool isComposited_ = false;
  bool announcesBlur_ = false;
  xcb_window_t active_ = XCB_WINDOW_NONE;
  xcb_window_t fullscreen_ = XCB_WINDOW_NONE;
};

}  // namespace tarnwick
