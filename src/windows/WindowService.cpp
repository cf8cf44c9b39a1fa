#include "windows/WindowService.h"

#include <QCollator>
#include <algorithm>
#include <mutex>

#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

/// What takes pictures on the other thread, and what that thread is still to take.
class WindowService::Worker {
 public:
  explicit Worker(const Setup& setup) : setup_(setup) {}

  WindowPictures& pictures() {
    if (!pictures_) pictures_ = setup_.pictures();
    return *pictures_;
  }
  QImage take(quint64 window) {
    QImage picture = pictures().take(window);
    if (picture.isNull() && !failed_.contains(window)) {
      failed_.insert(window);
      qInfo("Window previews: the window %llu could not be captured.", static_cast<unsigned long long>(window));
    }
    return picture;
  }
  void rest() {
    failed_.clear();
    if (pictures_) pictures_->rest();
  }
  /// Any thread.
  void setWanted(QUuid generation) {
    const std::lock_guard lock(mutex_);
    wanted_ = generation;
  }
  bool isWanted(QUuid generation) {
    const std::lock_guard lock(mutex_);
    return wanted_ == generation;
  }

 private:
  const Setup& setup_;
  std::unique_ptr<WindowPictures> pictures_;
  QSet<quint64> failed_;  ///< That was said once.
  std::mutex mutex_;
  QUuid wanted_;
};

WindowService::WindowService(Setup setup) : setup_(std::move(setup)), worker_(std::make_shared<Worker>(setup_)) {
  connect(&setup_.windows, &ClientWindows::changed, this, [this] {
    if (!followed_.isEmpty()) Q_EMIT followedChanged();
  });
  connect(&setup_.session, &SessionEvents::lockedChanged, this, [this](bool locked) {
    isLocked_ = locked;
    if (isShowing_) return loadPreviews(wanted_);
    generation_ = QUuid::createUuid();
    worker_->setWanted(generation_);
    underWay_.clear();
    restUnlessNeeded();
  });
}

WindowService::~WindowService() = default;

QImage WindowService::preview(quint64 window) const { return previews_.value(window); }

void WindowService::setFixedPreviews(const QHash<quint64, QImage>& previews) {
  isFixed_ = true;
  previews_ = previews;
}

// --- The list -------------------------------------------------------------------------------------------------------

QList<AccessibleWindow> WindowService::listed() const {
  QList<AccessibleWindow> windows;
  const QList<ClientWindow> all = setup_.windows.all();
  for (const RunningApp& app : setup_.applications()) {
    for (const quint64 id : app.windows) {
      const ClientWindow* window = known(id, all);
      if (!window) continue;
      const QRectF& frame = window->frame;
      if (!frame.isEmpty() && (frame.width() <= kSliver || frame.height() <= kSliver)) continue;
      const QString title = window->title.isEmpty() ? tr("Untitled window") : window->title;
      windows.append(
          {id, app.identity, app.name, app.iconName, app.desktopId, title, window->minimised, window->active});
    }
  }
  QCollator collator;
  collator.setNumericMode(true);
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  std::ranges::stable_sort(windows, [&collator](const AccessibleWindow& a, const AccessibleWindow& b) {
    return collator.compare(a.appName + a.title, b.appName + b.title) < 0;
  });
  return windows;
}

const ClientWindow* WindowService::known(quint64 window, const QList<ClientWindow>& all) const {
  const auto found = std::ranges::find(all, window, &ClientWindow::id);
  return found == all.end() ? nullptr : &*found;
}

void WindowService::refresh(const QString& bundleID) {
  bundleID_ = bundleID;
  windows_ = setup_.windows.capability() ? listed() : QList<AccessibleWindow>();
  if (!bundleID.isEmpty())
    windows_.removeIf([&bundleID](const AccessibleWindow& window) { return window.bundleID != bundleID; });
  if (!setup_.windows.capability())
    message_ = tr("Enable Accessibility to list and switch individual windows.");
  else
    message_ = windows_.isEmpty() ? tr("No available windows. Open an app window, then refresh.") : QString();
  // What is gone is never shown again.
  const QList<ClientWindow> all = setup_.windows.all();
  previews_.removeIf([&](const auto& entry) { return !known(entry.key(), all); });
  Q_EMIT changed();
}

void WindowService::say(const QString& message) {
  message_ = message;
  Q_EMIT changed();
}

void WindowService::raise(quint64 window) {
  if (!setup_.windows.capability()) return;
  if (!known(window, setup_.windows.all())) return say(tr("This window could not be raised. It may have closed."));
  setup_.windows.activate(window);
}

void WindowService::minimize(quint64 window) {
  const QList<ClientWindow> all = setup_.windows.all();
  const ClientWindow* const found = known(window, all);
  if (found && found->minimisable) setup_.windows.minimise(window);
  refresh(bundleID_);
  if (!found || !found->minimisable) say(tr("This app does not allow that window action."));
}

void WindowService::close(quint64 window) {
  const QList<ClientWindow> all = setup_.windows.all();
  const ClientWindow* const found = known(window, all);
  if (found && found->closable) setup_.windows.close(window);
  refresh(bundleID_);
  if (!found || !found->closable) say(tr("This app does not allow closing that window through Accessibility."));
}

// --- Pictures -------------------------------------------------------------------------------------------------------

void WindowService::loadPreviews() {
  QList<quint64> windows;
  for (const AccessibleWindow& window : windows_) windows.append(window.id);
  loadPreviews(windows);
}

void WindowService::loadPreviews(const QList<quint64>& windows) {
  if (isFixed_ || !setup_.windows.pictures()) return;
  generation_ = QUuid::createUuid();
  worker_->setWanted(generation_);
  isShowing_ = true;
  wanted_ = windows;
  if (isLocked_) return restUnlessNeeded();
  QList<quint64> seen = windows;
  const QList<ClientWindow> all = setup_.windows.all();
  seen.removeIf([&](quint64 id) {
    const ClientWindow* const window = known(id, all);
    return !window || window->minimised;
  });
  holds_ = true;
  work_.start(
      [worker = worker_, seen] {
        if (worker->pictures().capability()) worker->pictures().hold(seen);
        return 0;
      },
      [](int) {});
  for (const quint64 window : std::as_const(seen)) take(window, false, generation_);
}

void WindowService::take(quint64 window, bool onlyIfChanged, QUuid generation) {
  holds_ = true;
  work_.start(
      [worker = worker_, window, onlyIfChanged, generation] {
        if (!worker->isWanted(generation) || !worker->pictures().capability()) return QImage();
        if (onlyIfChanged && !worker->pictures().hasChanged(window)) return QImage();
        return worker->take(window);
      },
      [this, window, generation](const QImage& picture) {
        underWay_.remove(window);
        if (generation == generation_ && !picture.isNull()) show(window, picture);
      });
}

void WindowService::show(quint64 window, const QImage& picture) {
  if (previews_.value(window) == picture) return;
  previews_[window] = picture;
  Q_EMIT previewChanged(window);
}

void WindowService::stopPreviews() {
  if (isFixed_ || !setup_.windows.pictures()) return;
  generation_ = QUuid::createUuid();
  worker_->setWanted(generation_);
  isShowing_ = false;
  underWay_.clear();
  const QList<ClientWindow> all = setup_.windows.all();
  const auto isMinimized = [&](quint64 id) {
    const ClientWindow* const window = known(id, all);
    return window && window->minimised;
  };
  QList<quint64> kept;
  for (const DockWidget& widget : followed_)
    if (const auto window = pinned(widget)) kept.append(window->id);
  // One that is minimized could not be taken anew.
  previews_.removeIf([&](const auto& entry) { return !isMinimized(entry.key()) && !kept.contains(entry.key()); });
  restUnlessNeeded();
}

void WindowService::restUnlessNeeded() {
  if (!setup_.windows.pictures()) return;
  if (!holds_ || (!isLocked_ && (isShowing_ || !followed_.isEmpty()))) return;
  holds_ = false;
  work_.start(
      [worker = worker_] {
        worker->rest();
        return 0;
      },
      [](int) {});
}

// --- Pinned windows -------------------------------------------------------------------------------------------------

DockWidget WindowService::pin(const AccessibleWindow& window) {
  return {QUuid::createUuid(),
          QString(kind::pinnedWindow),
          {},
          {{QString(option::bundleID), window.bundleID},
           {QString(option::windowTitle), window.title},
           {QString(option::appName), window.appName}}};
}

std::optional<AccessibleWindow> WindowService::pinned(const DockWidget& widget) const {
  const QString title = widget.options.value(option::windowTitle);
  const QString owner = widget.options.value(option::bundleID);
  if (title.isEmpty()) return std::nullopt;
  const QList<AccessibleWindow> all = listed();
  const auto found = std::ranges::find_if(all, [&](const AccessibleWindow& window) {
    return window.title == title && (owner.isEmpty() || window.bundleID == owner);
  });
  return found == all.end() ? std::nullopt : std::optional(*found);
}

void WindowService::follow(const QList<DockWidget>& widgets) {
  if (std::exchange(followed_, widgets) != widgets) restUnlessNeeded();
}

void WindowService::beat(const ActiveSets&) {
  if (isFixed_ || isLocked_ || !setup_.windows.pictures()) return;
  for (const DockWidget& widget : std::as_const(followed_)) {
    const auto window = pinned(widget);
    if (!window || window->minimized || underWay_.contains(window->id)) continue;
    underWay_.insert(window->id);
    take(window->id, previews_.contains(window->id), generation_);
  }
}

}  // namespace tarnwick
