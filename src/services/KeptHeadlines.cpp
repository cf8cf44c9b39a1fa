#include "services/KeptHeadlines.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

KeptHeadlines::KeptHeadlines(Scheduler& scheduler, QString file) : scheduler_(scheduler), file_(std::move(file)) {}

void KeptHeadlines::read(std::function<QList<DockWidget>()> widgets,
                         std::function<void(const DockWidget&, const RemoteValue&)> found) {
  disk_.start([path = file_] { return RemoteCache::load(path); },
              [this, widgets = std::move(widgets), found = std::move(found)](const RemoteCache& cache) {
                take(cache, widgets(), found);
              });
}

void KeptHeadlines::take(const RemoteCache& cache, const QList<DockWidget>& widgets,
                         const std::function<void(const DockWidget&, const RemoteValue&)>& found) {
  isRead_ = true;
  QList<std::pair<DockWidget, RemoteValue>> taken;
  for (const DockWidget& widget : widgets) {
    if (values_.contains(widget.id) || forgotten_.contains(widget.id)) continue;
    const std::optional<RemoteValue> value = cache.valueOf(widget);
    if (!value) continue;
    values_.insert(widget.id, RemoteCache::kept(widget, *value));
    taken.append({widget, *value});
  }
  forgotten_.clear();
  const auto isUseless = [this](const CachedValue& each) { return !values_.contains(each.id); };
  if (std::ranges::any_of(cache.values, isUseless)) saveIn(0);
  for (const auto& [widget, value] : std::as_const(taken)) found(widget, value);
}

void KeptHeadlines::keep(const DockWidget& widget, const RemoteValue& value) {
  if (!RemoteCache::mayKeep(widget)) return;
  values_.insert(widget.id, RemoteCache::kept(widget, value));
  if (!saving_) saveIn(kDelay);
}

void KeptHeadlines::forget(QUuid widget) {
  const bool wasKept = values_.remove(widget);
  if (!isRead_) forgotten_.insert(widget);
  // In a turn of its own: several may go at once.
  if (wasKept && isRead_) saveIn(0);
}

void KeptHeadlines::saveIn(double seconds) {
  saving_ = scheduler_.after(seconds, [this] { save(); });
}

void KeptHeadlines::save() {
  saving_.reset();
  disk_.start(
      [path = file_, cache = RemoteCache{values_.values()}] {
        cache.save(path);
        return true;
      },
      [](bool) {});
}

void KeptHeadlines::end() {
  if (saving_) save();
  disk_.finish();
}

}  // namespace tarnwick
