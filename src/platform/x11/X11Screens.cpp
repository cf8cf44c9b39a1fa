#include "platform/x11/X11Screens.h"

#include <QGuiApplication>
#include <algorithm>
#include <utility>

#include "desktop/ScreenIdentity.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11Properties.h"

namespace tarnwick {
namespace {

QRect nativeFrame(const QScreen& screen) {
  // On X11 Qt scales a display's size but not its place.
  const QRect frame = screen.geometry();
  return QRect(frame.topLeft(), (QSizeF(frame.size()) * screen.devicePixelRatio()).toSize());
}

const X11Monitor* monitorOf(const QScreen& screen, const QList<X11Monitor>& monitors) {
  auto found = std::ranges::find(monitors, screen.name(), &X11Monitor::name);
  if (found == monitors.end()) {
    const QPoint corner = screen.geometry().topLeft();
    found = std::ranges::find_if(monitors, [&](const X11Monitor& one) { return one.frame.topLeft() == corner; });
  }
  return found == monitors.end() ? nullptr : &*found;
}

template <typename Natives, typename Part>
auto showingMost(const Natives& natives, const Part& part) {
  std::optional<X11Screens::Native> best;
  double most = 0;
  for (const X11Screens::Native& native : natives) {
    const QRectF shown = part(native);
    if (const double area = shown.width() * shown.height(); area > most) {
      most = area;
      best = native;
    }
  }
  return best;
}

}  // namespace

QPointF X11Screens::Native::toDesktop(const QPoint& root) const {
  return desktopFrame.topLeft() + QPointF(root - frame.topLeft()) / scale;
}

QRectF X11Screens::Native::toDesktop(const QRect& root) const {
  return {toDesktop(root.topLeft()), QSizeF(root.size()) / scale};
}

QRect X11Screens::Native::toRoot(const QRectF& desktop) const {
  const QPointF corner = (desktop.topLeft() - desktopFrame.topLeft()) * scale;
  return QRectF(corner + frame.topLeft(), desktop.size() * scale).toRect();
}

X11Screens::X11Screens(X11Events& events) : events_(events), hasMonitors_(X11Monitor::areKnown(events)) {
  for (QScreen* screen : QGuiApplication::screens()) follow(screen);
  connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
    follow(screen);
    displaysChanged();
  });
  connect(qGuiApp, &QGuiApplication::screenRemoved, this, &X11Screens::displaysChanged);
  connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &X11Screens::displaysChanged);
  connect(&events, &X11Events::displaysChanged, this, &X11Screens::displaysChanged);
  connect(&events, &X11Events::rootPropertyChanged, this, [this](quint32 name) {
    for (const X11Atom one : {X11Atom::NetClientList, X11Atom::NetWorkarea, X11Atom::NetCurrentDesktop}) {
      if (name == events_.atom(one)) refreshLater();
    }
  });
  connect(&events, &X11Events::windowPropertyChanged, this, [this](quint32 window, quint32 name) {
    if (name != events_.atom(X11Atom::NetWmStrut) && name != events_.atom(X11Atom::NetWmStrutPartial)) return;
    staleStruts_.insert(window);
    refreshLater();
  });
  refresh();
}

void X11Screens::follow(QScreen* screen) {
  connect(screen, &QScreen::geometryChanged, this, &X11Screens::displaysChanged);
  connect(screen, &QScreen::physicalDotsPerInchChanged, this, &X11Screens::displaysChanged);
  connect(screen, &QScreen::logicalDotsPerInchChanged, this, &X11Screens::displaysChanged);
}

QString X11Screens::mainId() const { return screens_.isEmpty() ? QString() : screens_.first().id; }

std::optional<X11Screens::Native> X11Screens::native(const QString& id) const {
  const auto found = natives_.constFind(id);
  return found == natives_.constEnd() ? std::nullopt : std::optional(*found);
}

std::optional<X11Screens::Native> X11Screens::nativeOf(const QRect& root) const {
  return showingMost(natives_, [&](const Native& native) { return QRectF(native.frame & root); });
}

std::optional<X11Screens::Native> X11Screens::nativeOf(const QRectF& desktop) const {
  return showingMost(natives_, [&](const Native& native) { return native.desktopFrame & desktop; });
}

QRect X11Screens::usable(const QString& id) const {
  const auto found = std::ranges::find(screens_, id, &Screen::id);
  return found == screens_.end() ? QRect() : found->usable.toRect();
}

QList<QRect> X11Screens::nativeFrames() const {
  QList<QRect> frames;
  for (const Native& native : natives_) frames.append(native.frame);
  return frames;
}

QStringList X11Screens::showing(const QRect& rectangle) const {
  QStringList ids;
  for (const Screen& screen : screens_) {
    if (natives_[screen.id].frame.intersects(rectangle)) ids.append(screen.id);
  }
  return ids;
}

void X11Screens::noteReservation(Edge edge) { (edge == Edge::Top ? reservesTop_ : reservesBottom_) = true; }

void X11Screens::displaysChanged() {
  displaysAreStale_ = true;
  refreshLater();
}

void X11Screens::refreshLater() {
  if (std::exchange(isRefreshing_, true)) return;
  QMetaObject::invokeMethod(this, &X11Screens::refresh, Qt::QueuedConnection);
}

void X11Screens::refresh() {
  isRefreshing_ = false;
  if (std::exchange(displaysAreStale_, false)) readDisplays();
  readStruts();
  publish();
}

void X11Screens::readDisplays() {
  const auto cookie = xcb_get_geometry(events_.connection(), events_.root());
  if (const XcbReply root(xcb_get_geometry_reply(events_.connection(), cookie, nullptr)); root) {
    rootSize_ = QSize(root->width, root->height);
  }
  displays_.clear();
  const QList<X11Monitor> monitors = hasMonitors_ ? X11Monitor::read(events_) : QList<X11Monitor>();
  // Where no monitor is connected Qt makes one up.
  if (hasMonitors_ && monitors.isEmpty()) return;
  for (QScreen* screen : QGuiApplication::screens()) {
    Display display{.screen = screen, .connector = screen->name(), .edid = {}, .frame = nativeFrame(*screen)};
    if (const X11Monitor* monitor = monitorOf(*screen, monitors)) {
      display.connector = monitor->name;
      display.edid = monitor->edid;
      display.frame = monitor->frame;
    }
    // Two monitors that show the same picture are one display.
    const bool isMirror = std::ranges::find(displays_, display.frame, &Display::frame) != displays_.end();
    if (!display.frame.isEmpty() && !isMirror) displays_.append(display);
  }
}

void X11Screens::readStruts() {
  struct Question {
    xcb_window_t window;
    PropertyRequest partial;
    PropertyRequest plain;
  };
  const QSet<xcb_window_t> stale = std::exchange(staleStruts_, {});
  const QHash<xcb_window_t, Strut> known = std::exchange(struts_, {});
  std::vector<Question> questions;
  for (const xcb_window_t window : events_.watchClients()) {
    if (events_.isOurs(window)) continue;
    if (known.contains(window) && !stale.contains(window)) {
      struts_[window] = known[window];
    } else {
      questions.push_back({window,
                           {events_.connection(), window, events_.atom(X11Atom::NetWmStrutPartial)},
                           {events_.connection(), window, events_.atom(X11Atom::NetWmStrut)}});
    }
  }
  for (Question& question : questions) {
    struts_[question.window] = X11Strut::read(question.partial.words(), question.plain.words());
  }
}

// A window manager's own bars are no windows with struts; its work area includes them, but only for the desktop as a
// whole.
QMargins X11Screens::workAreaInsets() const {
  if (displays_.size() != 1) return {};
  PropertyRequest areas(events_.connection(), events_.root(), events_.atom(X11Atom::NetWorkarea));
  PropertyRequest desktop(events_.connection(), events_.root(), events_.atom(X11Atom::NetCurrentDesktop));
  const QList<quint32> words = areas.words();
  const qsizetype start = 4 * static_cast<qsizetype>(desktop.word());
  if (words.size() < start + 4) return {};
  const auto value = [&](qsizetype index) { return static_cast<int>(words[start + index]); };
  const QRect area(value(0), value(1), value(2), value(3));
  const QRect& frame = displays_.first().frame;
  if (area.isEmpty() || !frame.contains(area)) return {};
  return QMargins(area.left() - frame.left(), reservesTop_ ? 0 : area.top() - frame.top(), frame.right() - area.right(),
                  reservesBottom_ ? 0 : frame.bottom() - area.bottom());
}

QRect X11Screens::usableFrame(const QRect& frame, const QMargins& insets) const {
  QList<X11Strut> struts;
  for (const Strut& strut : struts_) {
    if (strut) struts.append(*strut);
  }
  return X11Strut::usable(frame, struts, rootSize_) & frame.marginsRemoved(insets);
}

void X11Screens::publish() {
  QList<ScreenIdentity::Source> sources;
  for (const Display& display : displays_) sources.append({.connector = display.connector, .edid = display.edid});
  const QStringList identities = ScreenIdentity::assign(sources);
  const QMargins insets = workAreaInsets();

  QList<Screen> screens;
  natives_.clear();
  for (qsizetype index = 0; index < displays_.size(); ++index) {
    const Display& display = displays_[index];
    if (!display.screen) continue;
    const double scale = display.screen->devicePixelRatio();
    const QRectF frame = display.screen->geometry();
    const QRect usable = usableFrame(display.frame, insets);
    const QPointF corner = frame.topLeft() + QPointF(usable.topLeft() - display.frame.topLeft()) / scale;
    const bool isWhole = usable == display.frame;
    screens.append({.id = identities[index],
                    .legacyId = {},
                    .name = display.edid && !display.edid->model.isEmpty() ? display.edid->model : display.connector,
                    .frame = frame,
                    .usable = isWhole ? frame : QRectF(corner, QSizeF(usable.size()) / scale),
                    .scale = scale});
    natives_[identities[index]] = {
        .frame = display.frame, .scale = scale, .screen = display.screen, .desktopFrame = frame};
  }
  if (std::exchange(screens_, screens) != screens) Q_EMIT changed();
}

}  // namespace tarnwick
