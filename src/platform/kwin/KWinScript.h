#pragma once

#include <QDBusMessage>
#include <QJsonObject>
#include <QJsonValue>
#include <chrono>
#include <optional>

namespace tarnwick {

/// A conversation with a script of ours that runs in KWin: only to scripts it tells where windows are, and only they
/// move them. The script asks what to do, does it, and asks again with what came of it; whoever asked waits meanwhile.
/// For one thread at a time, which is not the main one; it needs no event loop.
class KWinScript {
 public:
  /// For KWin to take the script, and for it to come to an answer.
  static constexpr std::chrono::milliseconds kPatience{1000};

  /// Whether a KWin runs in this session that takes scripts.
  static bool isOffered();

  KWinScript();
  Q_DISABLE_COPY_MOVE(KWinScript)
  ~KWinScript() { end(); }

  /// Has the script do something, for which it may take so long beside the time that any answer takes. Absent where
  /// none comes; the conversation is over then, and the next question begins another.
  std::optional<QJsonValue> ask(const QJsonObject& order, std::chrono::milliseconds patience);
  /// Takes the script out of KWin. It goes by itself when it is asked nothing for some seconds.
  void end();
  /// The process that answers; 0 before any did.
  int compositor() const { return compositor_; }

 private:
  class Ear;

  bool begin();

  const QString name_;  ///< Of the script in KWin.
  const QString path_;  ///< Where the script finds us on the bus.
  bool isLoaded_ = false;
  int compositor_ = 0;
  std::optional<QDBusMessage> asking_;  ///< The script waits for its next order.
};

}  // namespace tarnwick
