#pragma once

#include <QTcpServer>
#include <QTcpSocket>

#include "base/Scheduler.h"
#include "services/ports/LoopbackServer.h"

namespace tarnwick {

/// The loopback server over the toolkit's sockets.
class LoopbackListener final : public LoopbackServer {
 public:
  /// The scheduler must outlive it.
  explicit LoopbackListener(Scheduler& scheduler) : scheduler_(scheduler) {}
  ~LoopbackListener() override;

  std::optional<quint16> listen(quint16 port, Answer answer) override;
  void close() override;

 private:
  class Visitor;

  void admit();

  Scheduler& scheduler_;
  Answer answer_;
  QTcpServer server_;  ///< Owns its visitors.
};

}  // namespace tarnwick
