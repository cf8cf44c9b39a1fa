#pragma once

#include <QMap>
#include <QString>
#include <functional>
#include <optional>

#include "windows/ZoomLabels.h"
#include "windows/ports/AccessibleControls.h"

namespace tarnwick {

/// What the windows of one process show of a meeting.
struct ZoomInspection {
  static constexpr qsizetype kMostWindows = 10;
  static constexpr int kMostElements = 600;        ///< That are looked at in a window.
  static constexpr qsizetype kMostWaiting = 1200;  ///< That are remembered to be looked at.

  struct Button {
    QString label;
    AccessibleControls::Element element;
  };

  QMap<ZoomAction, Button> actions;
  std::optional<int> participants;
  std::optional<QString> duration;

  /// Looks window by window, what is nearest to the window first. Ends with what it has once `isOver` says so.
  static ZoomInspection inspect(qint64 pid, AccessibleControls& controls, const std::function<bool()>& isOver);

 private:
  void take(const AccessibleControls::Element& element, const AccessibleControls::Reading& reading);
};

}  // namespace tarnwick
