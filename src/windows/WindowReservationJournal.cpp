#include "windows/WindowReservationJournal.h"

#include <QCoreApplication>
#include <QSet>
#include <algorithm>
#include <cmath>

namespace tarnwick {
namespace {

struct JournalWords {
  Q_DECLARE_TR_FUNCTIONS(WindowReservationJournal)
};

bool isFrame(const QRectF& frame) {
  const bool isFinite = std::isfinite(frame.x()) && std::isfinite(frame.y()) && std::isfinite(frame.width()) &&
                        std::isfinite(frame.height());
  return isFinite && frame.width() > 0 && frame.height() > 0;
}

bool areValid(const QList<WindowReservation>& records) {
  if (records.size() > WindowReservationJournal::kMostRecords) return false;
  QSet<QString> keys;
  return std::ranges::all_of(records, [&keys](const WindowReservation& record) {
    const bool isNew = !keys.contains(record.key());
    keys.insert(record.key());
    return isNew && record.pid >= 1 && record.number != 0 && isFrame(record.original) && isFrame(record.adjusted);
  });
}

}  // namespace

WindowReservationJournal::WindowReservationJournal(const QString& directory, std::chrono::milliseconds patience)
    : journal_({.directory = directory,
                .name = kFileName,
                .mostBytes = kMostBytes,
                .patience = patience,
                .busy = JournalWords::tr("Another process is putting windows back. Try again."),
                .tooLarge = JournalWords::tr("Window recovery journal is too large."),
                .invalid = JournalWords::tr("Invalid window recovery journal.")},
               &areValid) {}

QList<WindowReservation> WindowReservationJournal::prepare(const QList<WindowReservation>& reservations) {
  QList<WindowReservation> stored = reservations;
  journal_.change([&stored](QList<WindowReservation> records) {
    for (WindowReservation& each : stored) {
      const auto before = std::ranges::find(records, each.key(), &WindowReservation::key);
      if (before != records.end()) {
        const bool isOurs = WindowReservation::near(each.original, before->adjusted) ||
                            WindowReservation::near(each.original, before->original);
        if (isOurs) each.original = before->original;
        records.erase(before);
      }
      records.append(each);
    }
    if (records.size() > kMostRecords) throw DomainError::invalid(JournalWords::tr("Too many windows were moved."));
    return records;
  });
  return stored;
}

void WindowReservationJournal::recover(const Read& read, const Apply& apply) {
  journal_.change([&](const QList<WindowReservation>& records) {
    QList<WindowReservation> kept;
    for (const WindowReservation& record : records) {
      const ReservationWindowState state = read(record);
      if (state.known == ReservationWindowState::Known::Gone) continue;
      if (state.known == ReservationWindowState::Known::Frame) {
        const bool isOurs = WindowReservation::near(state.frame, record.adjusted) ||
                            WindowReservation::near(state.frame, record.original);
        if (!isOurs || apply(record)) continue;
      }
      kept.append(record);
    }
    return kept;
  });
}

}  // namespace tarnwick
