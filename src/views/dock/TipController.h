#pragma once

#include <QObject>
#include <QRect>
#include <QString>
#include <optional>

#include "base/Scheduler.h"

namespace tarnwick {

/// What is said of something in a dock, and what part of the dock it is placed beside.
struct DockTip {
  QString key;  ///< Of what it is about. The text of that may change while the tip is seen.
  QString text;
  QRect beside;
  quint64 application = 0;  ///< The running application that it is about, by its identity; 0 for none.

  bool operator==(const DockTip&) const = default;
};

/// When the tip of what is pointed at comes and goes: half a second after the pointer or the keyboard came to it, at
/// once where another one is seen, and a moment longer than the pointer is in the gap between two.
class TipController final : public QObject {
  Q_OBJECT
 public:
  static constexpr double kDelay = 0.5;
  static constexpr double kGap = 0.2;

  /// The delays are counted with what is borrowed here.
  explicit TipController(Scheduler& scheduler) : scheduler_(scheduler) {}

  /// What is pointed at now.
  void point(const std::optional<DockTip>& tip);
  /// Something that must be read at once, as what letting go of a tile would do; dismiss() ends it.
  void say(const DockTip& tip);
  /// Nothing is pointed at, and what is seen goes at once.
  void leave();
  /// What is seen goes at once, and does not come again before something else was pointed at.
  void dismiss();
  const std::optional<DockTip>& shown() const { return shown_; }

 Q_SIGNALS:
  /// shown() did.
  void changed();

 private:
  void show(const std::optional<DockTip>& tip);

  Scheduler& scheduler_;
  JobHandle work_;
  std::optional<DockTip> pointed_;
  std::optional<DockTip> shown_;
};

}  // namespace tarnwick
