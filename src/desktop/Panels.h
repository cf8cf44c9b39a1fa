#pragma once

#include <QMargins>
#include <QObject>
#include <QRect>
#include <QRegion>
#include <QString>
#include <memory>

#include "desktop/Capability.h"

class QMenu;
class QWidget;

namespace tarnwick {

/// Where a panel is placed: a rectangle within one screen, and transparent margins around it that are painted on (a
/// shadow, a lifted tile) but are no part of the panel's place. Device-independent pixels from the screen's top left.
struct PanelPlacement {
  QString screen;  ///< Screen::id
  QRect rectangle;
  QMargins margins;

  bool operator==(const PanelPlacement&) const = default;
};

/// A screen edge that a panel may keep free for itself.
enum class Edge { Top, Bottom };

/// Whether a panel's window takes what is typed.
enum class Keyboard {
  None,       ///< Never; a click on it leaves the focus where it is.
  Exclusive,  ///< All of it, until it is set to None again; the focus then goes back to where it was.
};

/// A small window that belongs to a panel: a detail panel or a bubble. It is shown when made and stays until it is
/// destroyed, or until the user presses Escape or clicks outside of it. A click on the rectangle that it belongs to is
/// left to the owner, who may take it for a request to close it.
class Popup : public QObject {
  Q_OBJECT
 public:
  /// Lays the window out anew beside its rectangle, after the content's size changed.
  virtual void reposition() = 0;
  /// The same, beside where that rectangle is now: it moved within the panel, or along with the panel.
  virtual void moveBeside(const QRect& rectangle) = 0;
  /// Gives the keyboard back to the window that had it before, for a popup that is still visible while it closes.
  virtual void giveBackKeyboard() = 0;

 Q_SIGNALS:
  /// The user closed it; it is hidden now. Its owner destroys it, not within this signal.
  void closed();
};

/// What a popup is like.
struct PopupStyle {
  QMargins margins{};         ///< Space within the content around its outline that is painted on (a shadow).
  int gap = 10;               ///< Between the rectangle that it belongs to and its outline.
  bool takesKeys = true;      ///< Whether it has the keyboard while it is open.
  bool closesOutside = true;  ///< Whether a click outside closes it. One that does not lets those clicks through.
  bool abovePanels = false;   ///< Whether it lies above every panel where they meet, as all do beside their own one.
  bool takesClicks = true;    ///< Whether clicks on it are its own. One that does not lets those through too.
  bool keepsKeys = false;     ///< Whether a window that opens meanwhile does not get the keyboard, only one that the
                              ///< user turns to. Where the compositor decides (Wayland), it is as it decides.
};

/// One borderless window of ours that floats above the others on every desktop and never takes the focus by itself.
/// It is hidden when made. Destroying it closes the window and the content with it.
/// Nothing here raises, lowers or moves by absolute coordinates: another window system could not keep that promise.
class Panel : public QObject {
  Q_OBJECT
 public:
  /// Puts the window, grown by the margins, on the screen. The content is laid out to fill the whole window.
  virtual void place(const PanelPlacement& placement) = 0;
  virtual void setShown(bool shown) = 0;
  virtual bool isShown() const = 0;
  /// What takes clicks, in the content's coordinates; everything else lets them through to what lies below.
  /// An empty region lets everything through.
  virtual void setInputRegion(const QRegion& region) = 0;
  /// The visible outline, in the content's coordinates. It is used only while nothing composites the screen, where a
  /// window cannot be translucent and is cut to this shape instead.
  virtual void setOutline(const QRegion& outline) = 0;
  /// Asks the compositor to blur what lies behind this region of the content; empty for none.
  virtual void setBlurBehind(const QRegion& region) = 0;
  /// Keeps `thickness` pixels along the edge free of maximised windows; 0 releases them.
  virtual void reserve(Edge edge, int thickness) = 0;
  virtual void setKeyboard(Keyboard keyboard) = 0;
  /// Whether the panel lies above full-screen windows. It does unless set otherwise.
  virtual void setAboveFullscreen(bool above) = 0;
  /// Asks the desktop to leave the window out of pictures of the screen.
  virtual void setHiddenFromCapture(bool hidden) = 0;

  /// Opens `content` beside a rectangle of this panel's content, towards the middle of the screen: it never covers the
  /// rectangle and never leaves the screen. It is as large as the content's size hint says, margins included, and
  /// smaller where there is no space. Never null; the popup owns the content and must not outlive the panel.
  virtual std::unique_ptr<Popup> popup(std::unique_ptr<QWidget> content, const QRect& beside,
                                       const PopupStyle& style) = 0;
  /// Opens a menu, with its submenus, beside a rectangle of this panel's content. The menu is the caller's and must
  /// live until its aboutToHide.
  virtual void openMenu(QMenu& menu, const QRect& beside) = 0;

 Q_SIGNALS:
  /// The window system took the window away, as when its display vanished.
  void closed();
};

/// Makes panels, and says what this desktop can show.
class Panels : public QObject {
  Q_OBJECT
 public:
  /// Takes `content`, which must be a top-level widget that was never shown. Never null.
  virtual std::unique_ptr<Panel> make(std::unique_ptr<QWidget> content) = 0;
  /// Whether windows can be translucent now. A compositor may come and go; `compositingChanged` reports it.
  virtual bool isComposited() const = 0;
  /// Whether the compositor blurs what lies behind a panel that asks for it.
  virtual bool canBlur() const = 0;
  /// Whether windows can be left out of pictures of the screen.
  virtual Capability captureProtection() const = 0;
  /// Whether panels are where they were put; elsewhere they are windows that may be anywhere.
  virtual bool keepsPlaces() const { return true; }

 Q_SIGNALS:
  void compositingChanged();
};

}  // namespace tarnwick
