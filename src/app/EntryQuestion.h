#pragma once

#include <QMessageBox>
#include <QPointer>
#include <functional>

#include "apps/TrustedEntries.h"

namespace tarnwick {

/// Asks whether a desktop entry from outside the folders of applications may run. One question at a time: another one
/// takes its place. Destroying it closes the window.
class EntryQuestion {
 public:
  ~EntryQuestion();

  /// `run` runs when the user says so; `show` when the question is closed in any other way. Neither does when another
  /// question comes.
  void ask(const ForeignEntry& entry, const QString& action, std::function<void()> run, std::function<void()> show);

 private:
  QPointer<QMessageBox> box_;  // Deletes itself when it is closed.
};

}  // namespace tarnwick
