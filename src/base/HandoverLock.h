#pragma once

#include <QString>
#include <chrono>
#include <optional>
#include <utility>

#include "base/FileLock.h"

namespace tarnwick {

/// Keeps the processes apart that change what is not ours, such as settings of the system's dock or where windows are:
/// held while a process reads, writes or removes a recovery file, or changes what that is about. An object belongs to
/// one thread; two of one process keep each other out. See docs/handover.md.
class HandoverLock {
 public:
  /// Holds the lock as long as it lives; several of one process count as one.
  class Hold {
   public:
    explicit Hold(HandoverLock& lock) : lock_(&lock) { ++lock.holds_; }
    Hold(Hold&& other) noexcept : lock_(std::exchange(other.lock_, nullptr)) {}
    Hold& operator=(Hold&& other) noexcept {
      std::swap(lock_, other.lock_);
      return *this;
    }
    ~Hold() {
      if (lock_ && --lock_->holds_ == 0) lock_->file_.release();
    }

   private:
    HandoverLock* lock_;
  };

  /// The folder need not exist: then there is nothing to keep apart yet.
  explicit HandoverLock(const QString& directory);

  /// Absent when another process has it for longer than `patience`. Where the folder cannot hold a lock the answer is
  /// as if no other process were there. Throws DomainError where something else is under the lock's name.
  std::optional<Hold> take(std::chrono::milliseconds patience);

 private:
  FileLock file_;
  int holds_ = 0;
};

}  // namespace tarnwick
