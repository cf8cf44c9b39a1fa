#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

#include "support/ChildProcess.h"

namespace tarnwick::testing {

/// A terminal that keeps what is typed in it, and the clicks on it. Control and V paste from the clipboard.
class TestTerminal {
 public:
  static QString title() { return QStringLiteral("terminal"); }

  /// `command`: that of a terminal, up to where the program in it stands.
  explicit TestTerminal(const QStringList& command);

  /// What was typed or pasted so far.
  QByteArray typed() const;
  int clicks() const;

 private:
  QByteArray input() const;

  QTemporaryDir folder_;
  std::unique_ptr<ChildProcess> process_;
};

}  // namespace tarnwick::testing
