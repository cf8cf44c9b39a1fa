#pragma once

#include <QObject>
#include <QPixmap>
#include <QString>
#include <optional>

#include "base/Scheduler.h"
#include "motion/SpringSet.h"
#include "views/dock/DockRow.h"
#include "views/dock/Gestures.h"
#include "views/dock/RowLayout.h"

class QWheelEvent;

namespace tarnwick {

/// The change of one profile's row to another's.
struct RowSlide {
  QPixmap old;
  double from = 0;      ///< Where the new row began; the old one moves as far.
  double oldStart = 0;  ///< Where the old row was by then.
};

/// The profiles of a dock: their tabs, which come and go with the pointer; the sideways drag and the wheel that switch
/// them; and the rows that slide past each other then. It switches nothing by itself. The row, its layout
/// and what the delay of hover is counted with are borrowed.
class ProfileTabs final : public QObject {
  Q_OBJECT
 public:
  ProfileTabs(const DockRow& row, const RowLayout& layout, Animator& animator, Scheduler& scheduler);

  void setRatio(double ratio) { springs_.setRatio(ratio); }
  /// There is another row; it may offer no tabs.
  void takeRow();

  /// Brings the tabs out or takes them back; false where they already go there.
  bool show(bool shown, bool isSeen);
  /// The pointer is over the glass or not. While they are `held` they stay as they are.
  void hover(bool inside, bool held);
  /// How far they have come out, from 0 to 1.
  double share() const;
  /// Whether the glass grows or shrinks.
  bool areMoving() const;
  /// The space for a tab's name at scale 1.
  double nameWidth(qsizetype tab) const;
  /// A name that is not shown whole.
  QString tip(qsizetype tab) const;
  /// Whether the wheel was turned over the tabs: it goes through the profiles, those without a tab included.
  bool turn(const QWheelEvent& event);

  void swipeBy(double distance);
  void endSwipe(double distance, double velocity);
  /// Which way a switch to another profile goes.
  bool isForward(const DockRow& next) const;
  /// The next row comes in from one side while the picture of the old one goes out at the other.
  void beginSlide(const QPixmap& old, bool forward);
  const std::optional<RowSlide>& slide() const { return slide_; }
  /// How far the row is from the middle of its glass.
  double offset() const;

 Q_SIGNALS:
  /// A profile was chosen.
  void activated(qsizetype tab);
  /// The pointer has been there, or away, for long enough.
  void due(bool shown);
  /// The row or the glass are seen differently.
  void moved();
  void rested();

 private:
  const DockRow& row_;
  const RowLayout& layout_;
  Scheduler& scheduler_;
  JobHandle work_;
  bool wanted_ = false;
  bool coming_ = false;
  WheelMeter wheel_;
  std::optional<RowSlide> slide_;
  std::optional<bool> swipedForward_;
  SpringSet springs_;
};

}  // namespace tarnwick
