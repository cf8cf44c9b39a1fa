#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <functional>
#include <memory>
#include <optional>

namespace tarnwick {

/// What bounds a visitor of the loopback server.
struct LoopbackLimits {
  /// Of a request in all. Exactly so many pass.
  static constexpr qsizetype largestRequest = 16'384;
  static constexpr qsizetype chunk = 8'192;
  static constexpr int connections = 8;  ///< At a time; others are closed at once.
  static constexpr double seconds = 10;  ///< Of each, from its beginning to its end.
};

/// A small server for the user's own browser, on the loopback address 127.0.0.1 alone. It reads the head of one request
/// of each connection within LoopbackLimits, and sends what it is told. Destroying it closes everything and frees the
/// port. Main thread only; never blocks it.
class LoopbackServer {
 public:
  /// What to send for the head of a request, without the blank line that ends it; absent where none came whole or in
  /// time. Called within an event of the server, which it must not destroy.
  using Answer = std::function<QByteArray(const std::optional<QByteArray>& head)>;

  LoopbackServer() = default;
  Q_DISABLE_COPY_MOVE(LoopbackServer)
  virtual ~LoopbackServer() = default;

  /// Listens on a port, 0 for any, and gives which; absent where it cannot. To be called once.
  virtual std::optional<quint16> listen(quint16 port, Answer answer) = 0;
  /// Takes nobody in any more, and frees the port. Who is there gets an answer still.
  virtual void close() = 0;
};

/// Makes one that does not listen yet.
using MakeLoopbackServer = std::function<std::unique_ptr<LoopbackServer>()>;

}  // namespace tarnwick
