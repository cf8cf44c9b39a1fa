#include "platform/x11/X11MapRetry.h"

#include <xcb/xcb.h>

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>
#include <chrono>
#include <vector>

#include "platform/x11/X11Events.h"
#include "platform/x11/X11Properties.h"

namespace tarnwick {
namespace {

using std::chrono::milliseconds;

/// Long enough for a window manager that is busy, short enough that the dock is not missed.
constexpr milliseconds kFirstPause{150};
/// Then the window manager does not mean to show this one, until another takes over.
constexpr milliseconds kLastPause{10'000};
constexpr quint32 kIconicState = 3;

/// Where no window manager can come between the program and the server.
bool isUnmanaged(const QWindow& window) {
  const Qt::WindowType type = window.type();
  return type == Qt::Popup || type == Qt::ToolTip || window.flags().testFlag(Qt::BypassWindowManagerHint);
}

}  // namespace

X11MapRetry::X11MapRetry(X11Events& events) : events_(events) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &X11MapRetry::look);
  connect(&events, &X11Events::rootPropertyChanged, this, [this](quint32 name) {
    if (name == events_.atom(X11Atom::NetSupportingWmCheck)) start();
  });
  qGuiApp->installEventFilter(this);
}

bool X11MapRetry::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Show && watched->isWindowType() && !isUnmanaged(*static_cast<QWindow*>(watched))) {
    start();
  }
  return false;
}

void X11MapRetry::start() { timer_.start(kFirstPause); }

void X11MapRetry::look() {
  const milliseconds next = timer_.intervalAsDuration() * 2;
  if (askAgain() && next <= kLastPause) timer_.start(next);
}

/// Whether something had to be asked for.
bool X11MapRetry::askAgain() {
  struct Question {
    xcb_window_t window;
    xcb_get_window_attributes_cookie_t attributes;
    PropertyRequest state;
  };
  xcb_connection_t* connection = events_.connection();
  std::vector<Question> questions;
  for (const QWindow* window : QGuiApplication::topLevelWindows()) {
    if (!window->isVisible() || !window->handle() || isUnmanaged(*window)) continue;
    const auto id = static_cast<xcb_window_t>(window->winId());
    questions.push_back({id, xcb_get_window_attributes(connection, id),
                         PropertyRequest(connection, id, events_.atom(X11Atom::WmState), 1)});
  }
  const QList<xcb_window_t> managed =
      PropertyRequest(connection, events_.root(), events_.atom(X11Atom::NetClientList), 1 << 16).words();
  bool asked = false;
  for (Question& question : questions) {
    const XcbReply reply(xcb_get_window_attributes_reply(connection, question.attributes, nullptr));
    // One that is minimised, or on another desktop, is where the user wants it.
    if (!reply || reply->map_state != XCB_MAP_STATE_UNMAPPED || question.state.word() == kIconicState) continue;
    if (managed.contains(question.window)) continue;
    xcb_map_window(connection, question.window);
    asked = true;
  }
  if (asked) xcb_flush(connection);
  return asked;
}

}  // namespace tarnwick
