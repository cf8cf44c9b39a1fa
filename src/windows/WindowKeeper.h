#pragma once

#include <QCoreApplication>
#include <QHash>
#include <QList>
#include <QString>

#include "windows/ReservedSpace.h"
#include "windows/WindowReservationJournal.h"
#include "windows/ports/WindowFrames.h"

namespace tarnwick {

/// Moves windows of the application in front out of the dock's way, and back. What is moved is on the disk before, so
/// that a run that died is made good by the next. Belongs to one thread, which waits for other programs.
class WindowKeeper {
  Q_DECLARE_TR_FUNCTIONS(WindowKeeper)

 public:
  static constexpr std::chrono::milliseconds kReservePatience{80};
  static constexpr std::chrono::milliseconds kRestorePatience{150};

  /// When a process began, in hundredths of a second since 1970; absent where there is none.
  using LaunchOf = std::function<std::optional<qint64>(int pid)>;
  /// A clock that never jumps.
  using Now = std::function<std::chrono::steady_clock::time_point()>;

  /// Both must outlive it. `self` is the process whose windows are never touched.
  WindowKeeper(WindowFrames& frames, WindowReservationJournal& journal, LaunchOf launchOf, qint64 self,
               Now now = &std::chrono::steady_clock::now);

  /// What has to be moved out of the way of these docks; nothing is touched yet, but for what an earlier run left.
  struct Move {
    WindowReservation record;
    QRectF from;  ///< Where it is now.
  };
  struct Plan {
    QList<Move> windows;
    QString message;  ///< What went wrong, as a sentence; empty where nothing did.
  };
  Plan plan(const QList<ReservedSpace>& spaces);
  /// Moves it. A window that its user moves meanwhile is left alone. Returns what went wrong, as above.
  QString carryOut(const QList<Move>& windows);
  /// Both.
  QString reserve(const QList<ReservedSpace>& spaces);
  /// Puts back what was moved, by this run or an earlier one. Returns what went wrong as a sentence, or an empty text.
  QString restore();

 private:
  /// So soon after it was moved, nobody but the program itself puts a window back.
  static constexpr std::chrono::seconds kOwnWill{2};

  struct Moved {
    QRectF from;
    std::chrono::steady_clock::time_point when;
    bool isGivenUp = false;  ///< As long as it stands there.
  };

  QList<Move> inTheWay(const QList<ReservedSpace>& spaces);
  bool isToComeBack(const WindowFrames::Window& window, const QList<ReservedSpace>& spaces) const;
  bool move(quint32 number, const QRectF& to, std::chrono::milliseconds patience);
  bool isGivenUp(quint32 number, const QRectF& frame);
  ReservationWindowState stateOf(const WindowReservation& record,
                                 const std::optional<QList<WindowFrames::Window>>& windows);

  WindowFrames& frames_;
  WindowReservationJournal& journal_;
  LaunchOf launchOf_;
  qint64 self_;
  Now now_;
  QHash<quint32, Moved> moved_;
  bool recoveryPending_ = true;  ///< What an earlier run left has not been put back.
};

}  // namespace tarnwick
