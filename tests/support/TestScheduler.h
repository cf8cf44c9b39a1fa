#pragma once

#include <QTimeZone>
#include <algorithm>
#include <list>

#include "base/Scheduler.h"

namespace tarnwick::test {

/// A scheduler whose clock the test sets. Work runs inside `advance`, in the order of its due times.
class TestScheduler final : public Scheduler {
 public:
  explicit TestScheduler(const QDateTime& start = QDateTime(QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc()))
      : start_(start) {}

  QDateTime now() const override { return start_.addMSecs(qRound64((elapsed_ + jump_) * 1000)); }
  double reference() const override { return 1000 + elapsed_; }

  JobHandle after(double seconds, std::function<void()> work) override { return add(seconds, 0, std::move(work)); }
  JobHandle every(double seconds, std::function<void()> work) override {
    return add(seconds, seconds, std::move(work));
  }

  void advance(double seconds) {
    const double end = elapsed_ + seconds;
    while (Entry* next = due(end)) {
      elapsed_ = std::max(elapsed_, next->at);
      const auto work = next->work;
      if (next->period > 0) {
        next->at += next->period;
      } else {
        next->at = -1;
      }
      work();
    }
    elapsed_ = end;
  }
  /// Sets the wall clock forwards or back, as a person or a time server does.
  void jump(double seconds) { jump_ += seconds; }
  /// Work that waits.
  qsizetype waiting() const {
    return std::ranges::count_if(entries_, [](const Entry& entry) { return entry.at >= 0; });
  }

 private:
  struct Entry {
    double at;
    double period;
    std::function<void()> work;
  };
  struct Handle final : Job {
    Handle(std::list<Entry>& list, std::list<Entry>::iterator entry) : entries(list), it(entry) {}
    ~Handle() override { entries.erase(it); }
    std::list<Entry>& entries;
    std::list<Entry>::iterator it;
  };

  JobHandle add(double seconds, double period, std::function<void()> work) {
    entries_.push_back({elapsed_ + seconds, period, std::move(work)});
    return std::make_unique<Handle>(entries_, std::prev(entries_.end()));
  }

  Entry* due(double until) {
    Entry* first = nullptr;
    for (Entry& entry : entries_) {
      const bool waits = entry.at >= 0 && entry.at <= until + 1e-9;
      if (waits && (!first || entry.at < first->at)) first = &entry;
    }
    return first;
  }

  QDateTime start_;
  double elapsed_ = 0;
  double jump_ = 0;
  std::list<Entry> entries_;
};

}  // namespace tarnwick::test
