#include "app/WindowPlaces.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QWindow>
#include <algorithm>

#include "views/window/AppWindow.h"

namespace tarnwick {

namespace {

constexpr int kStep = 28;  // About a title bar.
constexpr int kNear = 12;
constexpr int kMostSteps = 12;
constexpr double kLeastShare = 0.6;
constexpr QMargins kUsualFrame(1, 28, 1, 1);

/// The toolkit's window knows its frame sooner than the widget in it, which may learn it only when it is moved.
QMargins frameOf(const QWidget& window) {
  return window.windowHandle() ? window.windowHandle()->frameMargins() : QMargins();
}

QRect placeOf(const QWidget& window) { return window.geometry().marginsAdded(frameOf(window)); }

/// What is open of ours has the frame that another window will have.
QMargins frameToBe() {
  for (const QWidget* each : QApplication::topLevelWidgets())
    if (qobject_cast<const AppWindow*>(each) && each->isVisible())
      if (const QMargins frame = frameOf(*each); frame.top() > 0) return frame;
  return kUsualFrame;
}

bool isNear(const QPoint& one, const QPoint& other) { return (one - other).manhattanLength() < kNear; }

bool hasPlace(const QWidget& window) {
  return window.isVisible() &&
         !(window.windowState() & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen));
}

QRect usableOf(const Screen& screen) { return (screen.usable.isEmpty() ? screen.frame : screen.usable).toRect(); }

/// Whether its size is the user's, and not that of its contents.
bool isSized(const QWidget& window) { return window.minimumWidth() < window.maximumWidth(); }

}  // namespace

QRect WindowPlaces::within(QRect place, const QRect& bounds) {
  place.moveRight(std::min(place.right(), bounds.right()));
  place.moveBottom(std::min(place.bottom(), bounds.bottom()));
  place.moveLeft(std::max(place.left(), bounds.left()));
  place.moveTop(std::max(place.top(), bounds.top()));
  return place;
}

QRect WindowPlaces::centred(const QSize& size, const QRect& over, const QRect& bounds, const QList<QRect>& taken) {
  QRect place(QPoint(), size);
  place.moveCenter(over.center());
  place = within(place, bounds);
  const auto isTaken = [&] {
    const QRect covered = place.marginsAdded({kNear, kNear, kNear, kNear});
    return std::ranges::any_of(taken, [&](const QRect& each) { return covered.contains(each.topLeft()); });
  };
  for (int step = 0; step < kMostSteps && isTaken(); ++step) {
    const QRect aside = place.translated(kStep, kStep);
    // At the end of the space it begins anew at the top.
    place = bounds.contains(aside) ? aside : within(QRect(bounds.topLeft() + QPoint(kStep * step, 0), size), bounds);
  }
  return place;
}

QRect WindowPlaces::beside(const QRect& dock, const QRect& bounds) {
  if (!dock.intersects(bounds)) return bounds;
  QRect above = bounds;
  above.setBottom(dock.top() - kNear);
  QRect below = bounds;
  below.setTop(dock.bottom() + kNear);
  const QRect larger = above.height() >= below.height() ? above : below;
  return larger.height() >= bounds.height() * kLeastShare ? larger : bounds;
}

QRect WindowPlaces::evenly(const QRect& free, const QRect& whole) {
  const int taken = std::max(free.top() - whole.top(), whole.bottom() - free.bottom());
  const QRect even = whole.adjusted(0, taken, 0, -taken);
  return even.height() >= whole.height() * kLeastShare ? even & free : free;
}

void WindowPlaces::settle(AppWindow& window, const QString& name, const Request& request) {
  window.setObjectName(name);
  window.setUsableArea([this](const QPoint& place) { return usableAt({}, place); });
  window.installEventFilter(this);
  connect(&window, &QObject::destroyed, this, [this, gone = &window] { opened_.remove(gone); });
  // It takes its size while it is shown, and is not seen before this.
  connect(
      &window, &AppWindow::aboutToAppear, this, [this, &window, name, request] { open(window, name, request); },
      Qt::SingleShotConnection);
}

std::optional<Screen> WindowPlaces::screenAt(const QString& display, const QPoint& place) const {
  const QList<Screen> all = screens_.all();
  auto screen = std::ranges::find(all, display, &Screen::id);
  if (screen == all.end())
    screen = std::ranges::find_if(all, [&](const Screen& each) { return each.frame.contains(place); });
  return screen == all.end() ? std::nullopt : std::optional(*screen);
}

QRect WindowPlaces::freeOf(const Screen& screen) const {
  return beside(dock_(screen).toAlignedRect(), usableOf(screen));
}

QRect WindowPlaces::usableAt(const QString& display, const QPoint& place) const {
  const std::optional<Screen> screen = screenAt(display, place);
  if (!screen) return {};
  // A desktop that places windows itself puts them in the middle, or wherever there is space.
  return screens_.placesWindows() ? evenly(freeOf(*screen), usableOf(*screen)) : freeOf(*screen);
}

/// A window that is higher than what the dock leaves lies behind the dock, wherever it is.
void WindowPlaces::keepClear(AppWindow& window) const {
  if (!window.isVisible() || !window.screen()) return;
  const std::optional<Screen> screen = screenAt({}, window.screen()->geometry().center());
  if (!screen) return;
  const QRect free = freeOf(*screen);
  QMargins frame = frameOf(window);
  if (screens_.placesWindows() && frame.isNull()) frame = kUsualFrame;
  const int hidden = std::max(0, window.height() + frame.top() + frame.bottom() - free.height());
  const bool dockIsOnTop = free.top() > usableOf(*screen).top();
  window.setBehind(dockIsOnTop ? QMargins(0, hidden, 0, 0) : QMargins(0, 0, 0, hidden));
}

void WindowPlaces::docksMoved() {
  for (QWidget* each : QApplication::topLevelWidgets())
    if (auto* window = qobject_cast<AppWindow*>(each)) keepClear(*window);
}

void WindowPlaces::open(AppWindow& window, const QString& name, const Request& request) {
  const QRect left = left_.value(name);
  const AppWindow* over = request.over && hasPlace(*request.over) ? request.over : nullptr;
  if (over) window.windowHandle()->setTransientParent(over->windowHandle());
  const QPoint about = over ? placeOf(*over).center() : left.isNull() ? QCursor::pos() : left.center();
  const QRect bounds = usableAt(over ? QString() : request.display, about);
  if (bounds.isEmpty()) return;

  const QMargins frame = frameToBe();
  const bool isLeftHere = !left.isNull() && bounds.contains(left.center());
  if (isLeftHere && isSized(window)) window.resize(left.size().shrunkBy(frame));
  QList<QRect> taken;
  for (const QWidget* each : QApplication::topLevelWidgets())
    if (each != &window && each->objectName() == name && hasPlace(*each)) taken << placeOf(*each);
  const QSize size = window.size().grownBy(frame).boundedTo(bounds.size());
  QRect middle = over ? placeOf(*over) : bounds;
  if (isLeftHere) middle = QRect(left.topLeft(), size);
  const QRect place = centred(size, middle, bounds, taken);
  window.setGeometry(place.marginsRemoved(frame));
  opened_[&window] = place;
}

bool WindowPlaces::eventFilter(QObject* window, QEvent* event) {
  if (event->type() == QEvent::Close) remember(*static_cast<AppWindow*>(window));
  if (event->type() == QEvent::Resize) keepClear(*static_cast<AppWindow*>(window));
  return QObject::eventFilter(window, event);
}

void WindowPlaces::remember(const AppWindow& window) {
  if (!hasPlace(window)) return;
  const QRect place = placeOf(window);
  const QRect opened = opened_.value(&window);
  const QSize grown = place.size() - opened.size();
  const bool isResized = isSized(window) && std::max(std::abs(grown.width()), std::abs(grown.height())) > kNear;
  if (opened.isNull() || isResized || !isNear(place.topLeft(), opened.topLeft())) left_[window.objectName()] = place;
}

}  // namespace tarnwick
