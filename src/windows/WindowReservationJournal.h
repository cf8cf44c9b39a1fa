#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <optional>
#include <variant>

#include "base/RecoveryJournal.h"
#include "windows/WindowReservation.h"

namespace tarnwick {

/// What a reader says of the window of a record: where it is, that it is gone (or its process), or that this cannot be
/// told now.
struct ReservationWindowState {
  enum class Known { Frame, Gone, Unavailable };
  Known known = Known::Unavailable;
  QRectF frame;
};

/// The windows that are not where their users left them, on the disk before the first of them is moved. A file that
/// cannot be understood is never overwritten: it may be all that is left of somebody's windows. Belongs to one thread.
class WindowReservationJournal {
 public:
  static constexpr qint64 kMostBytes = 1'000'000;
  static constexpr qsizetype kMostRecords = 500;
  static constexpr qint64 kEmptyBytes = 2;  ///< A list without records.
  static constexpr auto kFileName = QLatin1StringView("window-recovery.json");

  using Read = std::function<ReservationWindowState(const WindowReservation& record)>;
  /// True when the window is back.
  using Apply = std::function<bool(const WindowReservation& record)>;

  /// The journal of a data folder. Reads it; never fails, but `error` may be set. `patience` is how long another
  /// process that works on it is waited for.
  explicit WindowReservationJournal(const QString& directory, std::chrono::milliseconds patience);

  const QString& url() const { return journal_.path(); }
  const QList<WindowReservation>& records() const { return journal_.records(); }
  /// Why the journal must not be touched.
  const std::optional<QString>& error() const { return journal_.error(); }

  /// Writes down that a window is about to be moved, and returns the record that was stored: a window that was moved
  /// before goes back to where it stood before the first time, unless its user has moved it since. Throws DomainError;
  /// then nothing has changed and the window must stay.
  WindowReservation prepare(const WindowReservation& reservation) { return prepare(QList{reservation}).first(); }
  /// The same for several, which reach the disk together: all of them or none.
  QList<WindowReservation> prepare(const QList<WindowReservation>& reservations);

  /// Puts back what can be put back and forgets it, and what needs not be. Throws DomainError; then what was put back
  /// is found there the next time.
  void recover(const Read& read, const Apply& apply);

 private:
  RecoveryJournal<WindowReservation> journal_;
};

}  // namespace tarnwick
