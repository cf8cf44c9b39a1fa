#pragma once

#include <QWidget>
#include <optional>

#include "desktop/Panels.h"
#include "platform/wayland/WaylandScreens.h"

namespace tarnwick {

/// A dock in an ordinary window without a frame. What the desktop alone could do for it is left undone: it keeps no
/// space, lies where other windows lie and gets the keyboard when the compositor agrees. The screens must outlive it.
class PlainPanel final : public Panel {
  Q_OBJECT
 public:
  PlainPanel(WaylandScreens& screens, std::unique_ptr<QWidget> content);

  void place(const PanelPlacement& placement) override;
  void setShown(bool shown) override;
  bool isShown() const override { return content_->isVisible(); }
  void setInputRegion(const QRegion& region) override;
  void setOutline(const QRegion&) override {}
  void setBlurBehind(const QRegion&) override {}
  void reserve(Edge, int) override {}
  void setKeyboard(Keyboard keyboard) override;
  void setAboveFullscreen(bool) override {}
  void setHiddenFromCapture(bool) override {}
  std::unique_ptr<Popup> popup(std::unique_ptr<QWidget> content, const QRect& beside, const PopupStyle& style) override;
  void openMenu(QMenu& menu, const QRect& beside) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void applyInput();
  void followScreens();

  WaylandScreens& screens_;
  std::optional<PanelPlacement> placement_;
  std::optional<QRegion> input_;
  std::unique_ptr<QWidget> content_;  ///< Destroyed first: its window reports its end.
};

}  // namespace tarnwick
