#include "platform/kwin/KWinWindowTable.h"

#include <algorithm>

namespace tarnwick {

using Clock = std::chrono::steady_clock;

void KWinWindowTable::insert(quint64 window, const QString& id) {
  const std::lock_guard lock(mutex_);
  windows_.insert(window, {id, {}, {}});
}

void KWinWindowTable::remove(quint64 window) {
  const std::lock_guard lock(mutex_);
  windows_.remove(window);
}

void KWinWindowTable::setFrame(quint64 window, const QRectF& frame) {
  const std::lock_guard lock(mutex_);
  Window& known = windows_[window];
  // Later it is somebody else who moves it.
  if (known.frame != frame && Clock::now() - kept_ > kSoon) known.before = {};
  known.frame = frame;
}

void KWinWindowTable::keepPlaces() {
  const std::lock_guard lock(mutex_);
  kept_ = Clock::now();
  for (Window& window : windows_)
    if (window.before.isEmpty()) window.before = window.frame;
}

QString KWinWindowTable::idOf(quint64 window) const {
  const std::lock_guard lock(mutex_);
  return windows_.value(window).id;
}

QRectF KWinWindowTable::before(const QString& id) const {
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find(windows_, id, &Window::id);
  return found == windows_.end() || found->before == found->frame ? QRectF() : found->before;
}

}  // namespace tarnwick
