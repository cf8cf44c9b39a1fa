#pragma once

#include <QHash>
#include <QString>
#include <functional>
#include <list>
#include <map>
#include <memory>

#include "base/Scheduler.h"

namespace tarnwick {

/// Lets so many through to each host at a time; others wait, the first to come the first to go. A connection that is
/// kept for the next request of its port counts too, until the toolkit has closed it. Must outlive its passes.
class HostGate {
 public:
  /// Whether the connection may be kept for the next request. Of a host that is asked at several ports none is: those
  /// of one port would be in the way of another.
  enum class Connection { Kept, Closed };
  using Enter = std::function<void(Connection connection)>;
  /// Closes all that is kept, of whatever host. Called only while nobody is inside anywhere.
  using CloseKept = std::function<void()>;

  /// A place in the queue of a host or, once `enter` was called, behind the gate. Destroying it gives the place up.
  class Pass {
   public:
    Pass(HostGate& gate, QString host, int port, Enter enter);
    Q_DISABLE_COPY_MOVE(Pass)
    ~Pass();

   private:
    friend class HostGate;
    HostGate& gate_;
    QString host_;
    int port_;
    Enter enter_;
    bool isInside_ = false;
    Connection connection_ = Connection::Kept;
  };

  /// `keptSeconds` is how long the toolkit keeps a connection at most after its last request.
  HostGate(int width, double keptSeconds, Scheduler& scheduler, CloseKept closeKept = {})
      : width_(width), keptSeconds_(keptSeconds), scheduler_(scheduler), closeKept_(std::move(closeKept)) {}
  Q_DISABLE_COPY_MOVE(HostGate)

  /// `enter` is called once, perhaps within this call or within the end of another pass, and must neither make nor
  /// destroy a pass itself.
  [[nodiscard]] std::unique_ptr<Pass> ask(const QString& host, int port, Enter enter);

 private:
  struct Port {
    int inside = 0;
    int open = 0;          ///< Connections, those that wait for the next request included.
    double idleSince = 0;  ///< On the reference clock, while nobody is inside.
  };
  struct Host {
    std::map<int, Port> ports;  ///< All that were ever asked.
    std::list<Pass*> waiting;
    JobHandle closing;  ///< Runs only while somebody waits for connections that are kept.
  };

  void closeIdle(Host& host) const;
  bool hasRoom(const Host& host, const Port& port) const;
  bool isAnyInside() const;
  bool makeRoom();
  void admitElsewhere();
  void waitForClosing(const QString& name);
  void admit(const QString& name);
  void leave(const Pass& pass);

  int width_;
  double keptSeconds_;
  Scheduler& scheduler_;
  CloseKept closeKept_;
  std::map<QString, Host> hosts_;
};

}  // namespace tarnwick
