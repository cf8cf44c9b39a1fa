#include "windows/ZoomInspection.h"

namespace tarnwick {

ZoomInspection ZoomInspection::inspect(qint64 pid, AccessibleControls& controls, const std::function<bool()>& isOver) {
  ZoomInspection found;
  const QList<AccessibleControls::Element> windows = controls.windows(pid).mid(0, kMostWindows);
  for (const AccessibleControls::Element& window : windows) {
    QList<AccessibleControls::Element> waiting{window};
    for (qsizetype i = 0; i < waiting.size() && i < kMostElements; ++i) {
      if (isOver()) return found;
      const AccessibleControls::Element element = waiting[i];
      const auto reading = controls.read(element);
      if (!reading) continue;
      found.take(element, *reading);
      const QList<AccessibleControls::Element> children = controls.children(element);
      // Counted are those that still wait, not those that were looked at.
      const qsizetype room = kMostWaiting - (waiting.size() - i - 1);
      waiting += children.mid(0, std::max<qsizetype>(room, 0));
    }
  }
  return found;
}

void ZoomInspection::take(const AccessibleControls::Element& element, const AccessibleControls::Reading& reading) {
  const auto action = ZoomLabels::action(reading.label);
  if (action) {
    if (reading.isControl && reading.isEnabled && !actions.contains(*action))
      actions.insert(*action, {reading.label, element});
    return;
  }
  if (const auto count = ZoomLabels::participants(reading.label)) participants = count;
  if (const auto time = ZoomLabels::duration(reading.label)) duration = time;
}

}  // namespace tarnwick
