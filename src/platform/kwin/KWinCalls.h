#pragma once

#include <QDBusMessage>
#include <QString>

namespace tarnwick {

/// What is said to KWin on the session's bus.
struct KWinCalls {
  static QDBusMessage scripting(const QString& method, const QVariantList& arguments);
  /// Whether a script of that name runs. Changes nothing.
  static QDBusMessage hasScript(const QString& name);
  /// A window as it is now, by KWin's own name for it. Its pixels come through the pipe, which the message holds open.
  static QDBusMessage picture(const QString& window, int pipe);
};

}  // namespace tarnwick
