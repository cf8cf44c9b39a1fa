#pragma once

#include <QPointer>
#include <QWidget>
#include <optional>
#include <span>

#include "desktop/Panels.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11Focus.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/X11Strut.h"

namespace tarnwick {

/// A dock window. It always has a translucent visual; while nothing composites the screen it is cut to its outline
/// instead. The events and the screens must outlive it.
class X11Panel final : public Panel {
  Q_OBJECT
 public:
  X11Panel(X11Events& events, X11Screens& screens, std::unique_ptr<QWidget> content, bool isComposited);
  ~X11Panel() override;

  void place(const PanelPlacement& placement) override;
  void setShown(bool shown) override;
  bool isShown() const override;
  void setInputRegion(const QRegion& region) override;
  void setOutline(const QRegion& outline) override;
  void setBlurBehind(const QRegion& region) override;
  void reserve(Edge edge, int thickness) override;
  void setKeyboard(Keyboard keyboard) override;
  /// Window managers keep a dock above ordinary windows, but below a full-screen one that has the keyboard. Above that
  /// they let only what belongs to it; so while it has the keyboard the panel says that it does.
  void setAboveFullscreen(bool above) override;
  /// Does nothing: X11 shows every window to everybody.
  void setHiddenFromCapture(bool) override {}
  std::unique_ptr<Popup> popup(std::unique_ptr<QWidget> content, const QRect& beside, const PopupStyle& style) override;
  void openMenu(QMenu& menu, const QRect& beside) override;

  void setComposited(bool isComposited);
  /// The full-screen window of another program that has the keyboard, or none.
  void setFullscreen(quint32 window);

 Q_SIGNALS:
  void compositedChanged(bool isComposited);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void realise();
  void hide();
  void takeKeyboard();
  void followScreens();
  void screenGoes(const QScreen* screen);
  void lose();
  bool applyPlacement();
  void applyIdentity() const;
  void announceState() const;
  void applyKeyboard() const;
  void applyFullscreen() const;
  void applyInput() const;
  void applyOutline() const;
  void applyBlur() const;
  void applyReservation();
  void setWords(X11Atom property, xcb_atom_t type, std::span<const quint32> words) const;

  X11Events& events_;
  X11Screens& screens_;
  xcb_window_t window_ = XCB_WINDOW_NONE;  ///< None until it is first shown.
  bool isComposited_;
  bool isMapped_ = false;
  bool isAboveFullscreen_ = true;
  xcb_window_t fullscreen_ = XCB_WINDOW_NONE;
  Keyboard keyboard_ = Keyboard::None;
  X11Focus focus_;
  bool comesBack_ = false;  ///< Hidden because its display went, until it is known whether that comes back at once.
  std::optional<PanelPlacement> placement_;
  double scale_ = 1;
  std::optional<QRegion> input_;
  std::optional<QRegion> outline_;
  QRegion blur_;
  Edge edge_ = Edge::Bottom;
  int thickness_ = 0;
  std::optional<X11Strut> kept_;      ///< What the window's properties say now.
  std::unique_ptr<QWidget> content_;  ///< Destroyed first: its window reports its end.
};

}  // namespace tarnwick
