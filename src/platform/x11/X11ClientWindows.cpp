#include "platform/x11/X11ClientWindows.h"

#include <xcb/composite.h>

#include <QCoreApplication>
#include <algorithm>
#include <utility>
#include <vector>

#include "platform/x11/SandboxIdentity.h"
#include "platform/x11/X11Properties.h"
#include "platform/x11/X11WindowReader.h"

namespace tarnwick {
namespace {

constexpr quint32 kFromPager = 2;
constexpr quint32 kIconic = 3;

struct X11ClientWindowsWords {
  Q_DECLARE_TR_FUNCTIONS(X11ClientWindows)
};

}  // namespace

X11ClientWindows::X11ClientWindows(X11Events& events, const X11Screens& screens, Capability moves)
    : events_(events), screens_(screens), moves_(std::move(moves)) {
  connect(&events, &X11Events::rootPropertyChanged, this, [this](quint32 name) {
    for (const X11Atom one : {X11Atom::NetClientList, X11Atom::NetActiveWindow, X11Atom::NetCurrentDesktop}) {
      if (name == events_.atom(one)) refreshLater();
    }
  });
  connect(&events, &X11Events::windowPropertyChanged, this, [this](quint32 window, quint32 name) {
    if (!known_.contains(window) || !X11WindowReader::reads(events_.server(), name)) return;
    stale_.insert(window);
    refreshLater();
  });
  connect(&events, &X11Events::windowMoved, this, [this](quint32 window) {
    if (!known_.contains(window)) return;
    stale_.insert(window);
    refreshLater();
  });
  connect(&screens, &X11Screens::changed, this, &X11ClientWindows::refreshLater);
  refresh();
}

Capability X11ClientWindows::pictures() const {
  const auto* composite = xcb_get_extension_data(events_.connection(), &xcb_composite_id);
  if (composite && composite->present) return Capability::yes();
  return Capability::no(X11ClientWindowsWords::tr("This X server cannot show windows that others cover."));
}

void X11ClientWindows::watchFrames(bool watched) {
  if (std::exchange(reportsFrames_, watched) == watched) return;
  for (ClientWindow& window : windows_) window.frame = reportedFrame(known_[static_cast<xcb_window_t>(window.id)]);
  followMoves();
}

bool X11ClientWindows::needsMoves(const Known& known) const {
  return reportsFrames_ || known.window.fullscreen || known.window.dock || screens_.all().size() > 1;
}

/// What moved before it was followed is read again.
void X11ClientWindows::followMoves() {
  followed_.removeIf([this](xcb_window_t window) { return !known_.contains(window); });
  for (auto each = known_.cbegin(); each != known_.cend(); ++each) {
    const bool needed = needsMoves(each.value());
    if (needed == followed_.contains(each.key())) continue;
    events_.watchMoves(each.key(), needed);
    if (!needed) {
      followed_.remove(each.key());
      continue;
    }
    followed_.insert(each.key());
    stale_.insert(each.key());
    refreshLater();
  }
  xcb_flush(events_.connection());
}

void X11ClientWindows::activate(quint64 id) {
  ask(id, X11Atom::NetActiveWindow, {kFromPager, events_.userTime(), XCB_WINDOW_NONE, 0, 0});
}

void X11ClientWindows::close(quint64 id) {
  ask(id, X11Atom::NetCloseWindow, {events_.userTime(), kFromPager, 0, 0, 0});
}

void X11ClientWindows::minimise(quint64 id) { ask(id, X11Atom::WmChangeState, {kIconic, 0, 0, 0, 0}); }

void X11ClientWindows::setIconGeometry(const QList<quint64>& windows, const QRectF& tile) {
  const auto native = screens_.nativeOf(tile);
  const QRect place = native ? native->toRoot(tile) : QRect();
  for (const quint64 id : windows) {
    const auto window = static_cast<xcb_window_t>(id);
    if (!known_.contains(window) || tiles_.value(window) == place) continue;
    tiles_[window] = place;
    const QList<quint32> words = {static_cast<quint32>(place.x()), static_cast<quint32>(place.y()),
                                  static_cast<quint32>(place.width()), static_cast<quint32>(place.height())};
    const auto cookie = xcb_change_property_checked(
        events_.connection(), XCB_PROP_MODE_REPLACE, window, events_.atom(X11Atom::NetWmIconGeometry),
        XCB_ATOM_CARDINAL, 32, place.isEmpty() ? 0 : static_cast<quint32>(words.size()), words.constData());
    xcb_discard_reply(events_.connection(), cookie.sequence);  // It may be gone by now, which is no news.
  }
  xcb_flush(events_.connection());
}

void X11ClientWindows::ask(quint64 id, X11Atom request, const std::array<quint32, 5>& data) const {
  const auto window = static_cast<xcb_window_t>(id);
  if (known_.contains(window)) events_.askManager(window, request, data);
}

void X11ClientWindows::refreshLater() {
  if (std::exchange(isRefreshing_, true)) return;
  QMetaObject::invokeMethod(this, &X11ClientWindows::refresh, Qt::QueuedConnection);
}

void X11ClientWindows::refresh() {
  isRefreshing_ = false;
  PropertyRequest active(events_.connection(), events_.root(), events_.atom(X11Atom::NetActiveWindow));
  PropertyRequest desktop(events_.connection(), events_.root(), events_.atom(X11Atom::NetCurrentDesktop));
  QList<xcb_window_t> order = events_.watchClients();
  order.removeIf([&](xcb_window_t window) { return events_.isOurs(window); });
  const QSet<xcb_window_t> stale = std::exchange(stale_, {});
  const QHash<xcb_window_t, Known> before = std::exchange(known_, {});

  std::vector<X11WindowReader> readers;
  for (const xcb_window_t window : order) {
    if (before.contains(window) && !stale.contains(window)) {
      known_[window] = before[window];
    } else {
      readers.emplace_back(events_.server(), window);
    }
  }
  for (X11WindowReader& reader : readers) {
    X11WindowReader::Answer answer = reader.read();
    answer.window.sandboxId = sandboxOf(answer.window.pid);
    known_[reader.window()] = {answer.window, answer.frame, answer.outline, answer.desktop};
  }
  sandboxes_.removeIf([&](const auto& entry) {
    return std::ranges::none_of(known_, [&](const Known& one) { return one.window.pid == entry.key(); });
  });
  tiles_.removeIf([&](const auto& entry) { return !known_.contains(entry.key()); });
  order_ = order;
  followMoves();
  publish(active.word(), desktop.word());
}

QString X11ClientWindows::sandboxOf(qint64 pid) {
  auto found = sandboxes_.find(pid);
  if (found == sandboxes_.end()) found = sandboxes_.insert(pid, SandboxIdentity::of(pid));
  return *found;
}

void X11ClientWindows::publish(xcb_window_t active, quint32 desktop) {
  QList<ClientWindow> windows;
  for (const xcb_window_t window : order_) {
    const Known& known = known_[window];
    ClientWindow one = known.window;
    one.active = window == active;
    one.elsewhere = known.desktop != kAllDesktops && known.desktop != desktop;
    one.screens = screens_.showing(known.frame);
    one.frame = reportedFrame(known);
    windows.append(one);
  }
  replace(windows_, windows);
}

QRectF X11ClientWindows::reportedFrame(const Known& known) const {
  const bool isBare = known.window.fullscreen || known.window.dock;
  if (!isBare && !reportsFrames_) return {};
  const QRect& frame = isBare ? known.frame : known.outline;
  const auto native = screens_.nativeOf(frame);
  return native ? native->toDesktop(frame) : QRectF();
}

}  // namespace tarnwick
