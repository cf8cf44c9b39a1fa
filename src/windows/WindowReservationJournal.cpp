#include "windows/WindowReservationJournal.h"

#include <QCoreApplication>
#include <QDir>
#include <QSet>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <system_error>

#include "base/DomainError.h"
#include "base/SmallFile.h"

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
    : url_(QDir(directory).filePath(kFileName)), lock_(directory), patience_(patience) {
  try {
    const auto held = hold();
    open();
  } catch (const DomainError&) {
    // Another process works on it: each operation looks again, and says so itself.
  }
}

HandoverLock::Hold WindowReservationJournal::hold() {
  auto held = lock_.take(patience_);
  if (!held) throw DomainError::invalid(JournalWords::tr("Another process is putting windows back. Try again."));
  return std::move(*held);
}

/// What another process may have made of the file.
void WindowReservationJournal::readAgain() {
  if (error_ || DurableFile::stamp(url_) != stamp_) open();
  if (error_) throw DomainError::invalid(*error_);
}

void WindowReservationJournal::open() {
  error_.reset();
  records_.clear();
  stamp_ = DurableFile::stamp(url_);
  const auto bytes = SmallFile::read(url_, kMostBytes);
  if (!bytes) {
    const int reason = errno;
    if (reason == ENOENT) return;
    error_ = reason == EFBIG ? JournalWords::tr("Window recovery journal is too large.")
                             : QString::fromLocal8Bit(std::generic_category().message(reason).c_str());
    return;
  }
  try {
    auto records = RecordCodec::fromBytes<QList<WindowReservation>>(*bytes);
    if (areValid(records))
      records_ = std::move(records);
    else
      error_ = JournalWords::tr("Invalid window recovery journal.");
  } catch (const DomainError& failure) {
    error_ = failure.message();
  }
}

void WindowReservationJournal::write(const QList<WindowReservation>& records) {
  DurableFile::write(RecordCodec::toBytes(records), url_);
  stamp_ = DurableFile::stamp(url_);
  records_ = records;
}

QList<WindowReservation> WindowReservationJournal::prepare(const QList<WindowReservation>& reservations) {
  const auto held = hold();
  readAgain();
  QList<WindowReservation> stored = reservations;
  QList<WindowReservation> records = records_;
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
  write(records);
  return stored;
}

void WindowReservationJournal::recover(const Read& read, const Apply& apply) {
  const auto held = hold();
  readAgain();
  if (records_.isEmpty()) return;
  QList<WindowReservation> kept;
  for (const WindowReservation& record : records_) {
    const ReservationWindowState state = read(record);
    if (state.known == ReservationWindowState::Known::Gone) continue;
    if (state.known == ReservationWindowState::Known::Frame) {
      const bool isOurs = WindowReservation::near(state.frame, record.adjusted) ||
                          WindowReservation::near(state.frame, record.original);
      if (!isOurs || apply(record)) continue;
    }
    kept.append(record);
  }
  if (kept != records_) write(kept);
}

}  // namespace tarnwick
