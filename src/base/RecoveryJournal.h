#pragma once

#include "base/DomainError.h"
#include "base/RecordCodec.h"
#include "base/RecoveryFile.h"

namespace tarnwick {

/// Records of what belongs to others and is changed for as long as we run, on the disk before each change. A file that
/// cannot be understood is never overwritten: it may be all that is left of what others had. Whoever of several
/// processes comes second reads it anew, under the lock. Belongs to one thread.
template <class Record>
class RecoveryJournal {
 public:
  using Records = QList<Record>;

  /// Reads the file; never fails, but `error` may be set. Records of which `areValid` says no are as if they could not
  /// be read.
  RecoveryJournal(RecoveryFile::Terms terms, bool (*areValid)(const Records& records))
      : file_(std::move(terms)), areValid_(areValid) {
    try {
      const auto held = file_.hold();
      open();
    } catch (const DomainError&) {
      // Another process works on it: each change looks again, and says so itself.
    }
  }

  const QString& path() const { return file_.path(); }
  const Records& records() const { return records_; }
  /// Why the journal must not be touched.
  const std::optional<QString>& error() const { return error_; }

  /// Gives `change` the records as they are now, under the lock, and writes down what it makes of them where that
  /// differs. Throws DomainError, also what `change` throws; the records then are what they were.
  template <class Change>
  void change(Change change) {
    const auto held = file_.hold();
    if (error_ || file_.hasChanged()) open();
    if (error_) throw DomainError::invalid(*error_);
    Records records = change(std::as_const(records_));
    if (records == records_) return;
    file_.write(RecordCodec::toBytes(records));
    records_ = std::move(records);
  }

 private:
  void open() {
    error_.reset();
    records_.clear();
    try {
      const auto bytes = file_.read();
      if (!bytes) return;
      auto records = RecordCodec::fromBytes<Records>(*bytes);
      if (areValid_(records))
        records_ = std::move(records);
      else
        error_ = file_.terms().invalid;
    } catch (const DomainError& failure) {
      error_ = failure.message();
    }
  }

  RecoveryFile file_;
  bool (*areValid_)(const Records& records);
  Records records_;
  std::optional<QString> error_;
};

}  // namespace tarnwick
