#include "platform/x11/X11Panel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QPointer>
#include <QScreen>
#include <QWindow>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "desktop/PopupPlacement.h"
#include "platform/x11/X11Popup.h"
#include "platform/x11/X11Properties.h"
#include "platform/x11/X11Shape.h"

namespace tarnwick {
namespace {

constexpr quint32 kRemoveState = 0;
constexpr quint32 kAddState = 1;
constexpr quint32 kFromApplication = 1;

}  // namespace

X11Panel::X11Panel(X11Events& events, X11Screens& screens, std::unique_ptr<QWidget> content, bool isComposited)
    : events_(events), screens_(screens), isComposited_(isComposited), focus_(events), content_(std::move(content)) {
  content_->setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus |
                           Qt::WindowStaysOnTopHint | Qt::NoDropShadowWindowHint);
  content_->setAttribute(Qt::WA_TranslucentBackground);
  content_->setAttribute(Qt::WA_ShowWithoutActivating);
  content_->setAttribute(Qt::WA_X11NetWmWindowTypeDock);
  content_->setAttribute(Qt::WA_QuitOnClose, false);
  content_->setMinimumSize(1, 1);  // An explicit one: the content takes the size that it is given.
  content_->installEventFilter(this);
  connect(&screens, &X11Screens::changed, this, &X11Panel::followScreens);
  connect(qGuiApp, &QGuiApplication::screenRemoved, this, &X11Panel::screenGoes);
  // Openbox 3.6 passes the region on to the frame that it puts around us only when it changes after the mapping.
  connect(&events, &X11Events::windowMapped, this, [this](quint32 window) {
    if (window != window_) return;
    isMapped_ = true;
    applyInput();
    if (keyboard_ == Keyboard::Exclusive) takeKeyboard();
  });
}

X11Panel::~X11Panel() { focus_.giveBack(); }

void X11Panel::place(const PanelPlacement& placement) {
  placement_ = placement;
  if (!applyPlacement()) lose();
}

bool X11Panel::isShown() const { return content_->isVisible(); }

void X11Panel::setShown(bool shown) {
  comesBack_ = false;
  if (shown == isShown()) return;
  if (!shown) {
    hide();
    return;
  }
  if (!placement_ || !applyPlacement()) return;
  realise();
  applyIdentity();
  content_->show();
  announceState();
}

void X11Panel::setInputRegion(const QRegion& region) {
  if (input_ == region) return;
  input_ = region;
  applyInput();
}

void X11Panel::setOutline(const QRegion& outline) {
  if (outline_ == outline) return;
  outline_ = outline;
  if (!isComposited_) applyOutline();
}

void X11Panel::setBlurBehind(const QRegion& region) {
  if (blur_ == region) return;
  blur_ = region;
  applyBlur();
}

void X11Panel::reserve(Edge edge, int thickness) {
  if (edge_ == edge && thickness_ == thickness) return;
  edge_ = edge;
  thickness_ = thickness;
  if (thickness > 0) screens_.noteReservation(edge);
  applyReservation();
}

void X11Panel::setKeyboard(Keyboard keyboard) {
  if (std::exchange(keyboard_, keyboard) == keyboard) {
    // Asked for once more, it may have been lost without an event in between.
    if (keyboard == Keyboard::Exclusive && isMapped_) takeKeyboard();
    return;
  }
  applyKeyboard();
  if (keyboard == Keyboard::None) {
    focus_.giveBack();
  } else if (isMapped_) {
    takeKeyboard();
  }
}

void X11Panel::setAboveFullscreen(bool above) {
  if (std::exchange(isAboveFullscreen_, above) == above) return;
  applyFullscreen();
  if (isShown()) announceState();
}

void X11Panel::setFullscreen(quint32 window) {
  if (std::exchange(fullscreen_, window) != window) applyFullscreen();
}

std::unique_ptr<Popup> X11Panel::popup(std::unique_ptr<QWidget> content, const QRect& beside, const PopupStyle& style) {
  auto popup = std::make_unique<X11Popup>(events_, screens_, *content_, placement_ ? placement_->screen : QString(),
                                          std::move(content), beside, style);
  popup->setComposited(isComposited_);
  connect(this, &X11Panel::compositedChanged, popup.get(), &X11Popup::setComposited);
  popup->show();
  return popup;
}

void X11Panel::openMenu(QMenu& menu, const QRect& beside) {
  if (!placement_) return;
  // A popup that has just closed gave the keyboard to another program. Menus do not outlive the moment in which the
  // toolkit receives that event, so this one comes right after it.
  if (QGuiApplication::focusWindow() && !events_.isOurs(focus_.current())) {
    const auto again = [panel = QPointer(this), &menu, beside] {
      if (panel) panel->openMenu(menu, beside);
    };
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, &menu, again,
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    return;
  }
  const QRect anchor(content_->mapToGlobal(beside.topLeft()), beside.size());
  const QRect usable = screens_.usable(placement_->screen);
  const auto corner = [&](const QSize& size) {
    return PopupPlacement::outline(anchor, size, PopupPlacement::kMenuGap, usable).topLeft();
  };
  menu.popup(corner(menu.sizeHint()));
  // A menu that is filled when it is about to show has changed its size.
  menu.move(corner(menu.size()));
}

void X11Panel::setComposited(bool isComposited) {
  if (std::exchange(isComposited_, isComposited) == isComposited) return;
  applyOutline();
  content_->update();
  Q_EMIT compositedChanged(isComposited);
}

bool X11Panel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == content_.get() && event->type() == QEvent::Close) {
    QMetaObject::invokeMethod(this, &Panel::closed, Qt::QueuedConnection);
  }
  // Openbox 3.6 minimises with a window whatever belongs to it.
  if (watched == content_.get() && event->type() == QEvent::WindowStateChange && content_->isMinimized()) {
    content_->setWindowState(Qt::WindowNoState);
  }
  return false;
}

// Everything is in place before the window is first mapped, so that it never appears elsewhere or as something else.
void X11Panel::realise() {
  const auto window = static_cast<xcb_window_t>(content_->winId());
  if (std::exchange(window_, window) == window) return;
  kept_.reset();
  applyInput();
  applyOutline();
  applyBlur();
  applyReservation();
  applyKeyboard();
  applyFullscreen();
}

void X11Panel::takeKeyboard() {
  focus_.take(window_);
  // Hidden and shown in one breath, Qt sees a window that never lost the keyboard, on a widget that did.
  if (QGuiApplication::focusWindow() == content_->windowHandle()) QApplication::setActiveWindow(content_.get());
}

void X11Panel::hide() {
  focus_.giveBack();
  isMapped_ = false;
  content_->hide();
}

void X11Panel::screenGoes(const QScreen* screen) {
  // Qt would move the window to another display; it may also be that this one comes back in the same breath, changed.
  if (!isShown() || content_->screen() != screen) return;
  hide();
  comesBack_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (!comesBack_) return;
        if (const auto native = screens_.native(placement_->screen); native && native->screen) {
          setShown(true);
        } else {
          lose();
        }
      },
      Qt::QueuedConnection);
}

void X11Panel::followScreens() {
  if (!placement_) return;
  if (!applyPlacement() && isShown()) lose();
  applyReservation();
}

void X11Panel::lose() {
  const bool wasThere = std::exchange(comesBack_, false) || isShown();
  hide();
  if (wasThere) QMetaObject::invokeMethod(this, &Panel::closed, Qt::QueuedConnection);
}

bool X11Panel::applyPlacement() {
  const auto native = screens_.native(placement_->screen);
  if (!native || !native->screen) return false;
  const QRect outer = placement_->rectangle.marginsAdded(placement_->margins);
  const QSize size = outer.size().expandedTo(QSize(1, 1));
  if (content_->screen() != native->screen && !content_->isVisible()) content_->setScreen(native->screen);
  content_->setGeometry(QRect(native->screen->geometry().topLeft() + outer.topLeft(), size));
  if (std::exchange(scale_, native->scale) != native->scale) {
    applyInput();
    applyOutline();
    applyBlur();
  }
  applyReservation();
  return true;
}

void X11Panel::setWords(X11Atom property, xcb_atom_t type, std::span<const quint32> words) const {
  if (words.empty()) {
    xcb_delete_property(events_.connection(), window_, events_.atom(property));
  } else {
    xcb_change_property(events_.connection(), XCB_PROP_MODE_REPLACE, window_, events_.atom(property), type, 32,
                        static_cast<quint32>(words.size()), words.data());
  }
}

// A window manager takes these away from a window that is hidden.
void X11Panel::applyIdentity() const {
  const std::array<quint32, 1> types{events_.atom(X11Atom::NetWmWindowTypeDock)};
  const std::array<quint32, 4> states{events_.atom(X11Atom::NetWmStateAbove), events_.atom(X11Atom::NetWmStateSticky),
                                      events_.atom(X11Atom::NetWmStateSkipTaskbar),
                                      events_.atom(X11Atom::NetWmStateSkipPager)};
  setWords(X11Atom::NetWmWindowType, XCB_ATOM_ATOM, types);
  setWords(X11Atom::NetWmState, XCB_ATOM_ATOM, states);
  setWords(X11Atom::NetWmDesktop, XCB_ATOM_CARDINAL, std::array<quint32, 1>{kAllDesktops});
  xcb_flush(events_.connection());
}

// It may also take them away late, while the window is already shown again: then this brings them back.
void X11Panel::announceState() const {
  events_.askManager(
      window_, X11Atom::NetWmState,
      {isAboveFullscreen_ ? kAddState : kRemoveState, events_.atom(X11Atom::NetWmStateAbove), 0, kFromApplication, 0});
  events_.askManager(window_, X11Atom::NetWmState,
                     {kAddState, events_.atom(X11Atom::NetWmStateSticky), 0, kFromApplication, 0});
  events_.askManager(window_, X11Atom::NetWmState,
                     {kAddState, events_.atom(X11Atom::NetWmStateSkipTaskbar),
                      events_.atom(X11Atom::NetWmStateSkipPager), kFromApplication, 0});
  events_.askManager(window_, X11Atom::NetWmDesktop, {kAllDesktops, kFromApplication, 0, 0, 0});
}

// Neither Qt nor the window manager gives the keyboard to a window that does not want it.
void X11Panel::applyKeyboard() const {
  if (window_ == XCB_WINDOW_NONE) return;
  content_->windowHandle()->setFlag(Qt::WindowDoesNotAcceptFocus, keyboard_ == Keyboard::None);
  // With the flag Qt has written anew what it thinks that the window is.
  applyIdentity();
  if (isShown()) announceState();
  // Openbox 3.6 takes the keyboard back from a window that the user did nothing to.
  if (keyboard_ == Keyboard::Exclusive && events_.userTime() != XCB_CURRENT_TIME) {
    setWords(X11Atom::NetWmUserTime, XCB_ATOM_CARDINAL, std::array<quint32, 1>{events_.userTime()});
    xcb_flush(events_.connection());
  }
}

void X11Panel::applyFullscreen() const {
  if (window_ == XCB_WINDOW_NONE) return;
  if (isAboveFullscreen_ && fullscreen_ != XCB_WINDOW_NONE) {
    xcb_change_property(events_.connection(), XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_TRANSIENT_FOR,
                        XCB_ATOM_WINDOW, 32, 1, &fullscreen_);
  } else {
    xcb_delete_property(events_.connection(), window_, XCB_ATOM_WM_TRANSIENT_FOR);
  }
  xcb_flush(events_.connection());
}

void X11Panel::applyInput() const {
  if (window_ != XCB_WINDOW_NONE && input_) X11Shape::apply(events_, window_, XCB_SHAPE_SK_INPUT, input_, scale_);
}

void X11Panel::applyOutline() const {
  if (window_ == XCB_WINDOW_NONE) return;
  X11Shape::apply(events_, window_, XCB_SHAPE_SK_BOUNDING, isComposited_ ? std::nullopt : outline_, scale_);
}

void X11Panel::applyBlur() const {
  if (window_ == XCB_WINDOW_NONE) return;
  std::vector<quint32> words;
  for (const xcb_rectangle_t& one : X11Shape::rectangles(blur_, scale_)) {
    words.insert(words.end(), {static_cast<quint32>(one.x), static_cast<quint32>(one.y), one.width, one.height});
  }
  // An empty list would mean the whole window.
  setWords(X11Atom::KdeBlurBehind, XCB_ATOM_CARDINAL, words);
  xcb_flush(events_.connection());
}

void X11Panel::applyReservation() {
  if (window_ == XCB_WINDOW_NONE) return;
  const auto native = placement_ ? screens_.native(placement_->screen) : std::nullopt;
  std::optional<X11Strut> strut;
  if (native) {
    const int thickness = static_cast<int>(std::ceil(thickness_ * native->scale));
    strut = X11Strut::along(edge_, thickness, native->frame, screens_.nativeFrames(), screens_.rootSize());
  }
  // Each change makes the window manager lay out every maximised window anew.
  if (std::exchange(kept_, strut) == strut) return;
  const std::array<quint32, 12> words = strut.value_or(X11Strut()).words();
  setWords(X11Atom::NetWmStrut, XCB_ATOM_CARDINAL, std::span(words).first(strut ? 4 : 0));
  setWords(X11Atom::NetWmStrutPartial, XCB_ATOM_CARDINAL, std::span(words).first(strut ? 12 : 0));
  xcb_flush(events_.connection());
}

}  // namespace tarnwick
