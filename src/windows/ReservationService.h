#pragma once

#include <QObject>
#include <memory>

#include "base/OrderedWork.h"
#include "base/Scheduler.h"
#include "desktop/ClientWindows.h"
#include "facilities/StoreCalls.h"
#include "windows/WindowKeeper.h"

namespace tarnwick {

/// Keeps windows of other programs clear of the docks, on a thread of its own: it waits for these programs. Nothing is
/// opened or read before the first window has to be moved or an earlier run left something to put back.
class ReservationService final : public QObject, public WindowReservations {
  Q_OBJECT
 public:
  /// Until the desktop has done what else belongs to a change, in seconds.
  static constexpr double kSettle = 0.15;
  /// How long another process that puts windows back is waited for.
  static constexpr std::chrono::milliseconds kPatience{2000};

  struct Setup {
    Scheduler& scheduler;
    const ClientWindows& windows;
    QString directory;  ///< Where the journal lies.
    /// Makes the adapter, on the thread that uses it.
    std::function<std::unique_ptr<WindowFrames>()> frames;
    WindowKeeper::LaunchOf launchOf;  ///< Any thread.
    /// A dock in the window system's own pixels.
    std::function<ReservedSpace(const ReservingDock& dock)> inPixels;
    /// Whether somebody is to stand by who puts windows back when this process dies.
    std::function<void(bool standsBy)> guard;
  };

  /// What is referred to must outlive it.
  explicit ReservationService(Setup setup);
  ~ReservationService() override;

  void reserve(const QList<ReservingDock>& docks) override;
  void restore() override;
  void finish() override;

 private:
  class Keeping;
  struct Outcome {
    QString message;       ///< What went wrong; empty where nothing did.
    bool isMoved = false;  ///< Windows are not where their users left them.
  };

  /// What decides whether windows have to be looked at again.
  struct Situation {
    QList<ReservingDock> docks;
    qint64 front = 0;  ///< The process of the window in front.
    QList<quint64> windows;

    bool operator==(const Situation&) const = default;
  };

  Situation situation(const QList<ReservingDock>& docks) const;
  void begin();
  void carryOut(const WindowKeeper::Plan& plan);
  void ended(const Outcome& outcome);
  void say(const QString& message);

  const Setup setup_;
  QList<ReservingDock> docks_;
  Situation last_;
  bool hasBegun_ = false;  ///< This run may have moved something.
  int underWay_ = 0;
  QString said_;
  JobHandle settling_;
  std::shared_ptr<Keeping> keeping_;
  OrderedWork work_;  ///< Goes first: it uses all others.
};

}  // namespace tarnwick
