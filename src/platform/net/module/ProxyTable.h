#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QNetworkProxy>
#include <QPointer>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "base/Scheduler.h"

class QThreadPool;

namespace tarnwick {

/// Which proxy leads to a host. The system is asked on a thread of its own, since it may have to load a script from a
/// server that does not answer; what it said holds for ten minutes or until the network changes. Main thread only.
class ProxyTable {
 public:
  static constexpr double secondsKept = 600;

  struct Sources {
    /// Called on another thread, and may take its time.
    std::function<QList<QNetworkProxy>(const QUrl&)> proxies;
    /// Something that differs once the network does; quick.
    std::function<QByteArray()> network;

    static Sources ofSystem();
  };

  ProxyTable(Scheduler& scheduler, Sources sources);
  Q_DISABLE_COPY_MOVE(ProxyTable)
  ~ProxyTable();

  /// Calls `ready` once `known` holds for the host of this address, perhaps within this call; not after `context` is
  /// gone.
  void find(const QUrl& url, QObject* context, std::function<void()> ready);
  /// What was last found; none at all for a host that was never asked for.
  QList<QNetworkProxy> known(const QString& host) const;

 private:
  struct Entry {
    QList<QNetworkProxy> proxies;
    std::optional<double> found;  ///< On the scheduler's clock that never jumps.
    bool isAsked = false;
    QUrl root;  ///< Of the host.
    std::vector<std::pair<QPointer<QObject>, std::function<void()>>> waiting;
  };

  void renewAskers();
  void ask(const QString& host, Entry& entry);
  void take(const QString& host, const QByteArray& network, const QList<QNetworkProxy>& proxies);

  Scheduler& scheduler_;
  Sources sources_;
  QByteArray network_;
  QHash<QString, Entry> entries_;
  QThreadPool* askers_ = nullptr;      ///< Null until somebody asks.
  std::shared_ptr<ProxyTable*> self_;  ///< What threads hold of it; empty once it is gone.
};

}  // namespace tarnwick
