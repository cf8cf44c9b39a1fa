#include "platform/net/module/ProxyTable.h"

#include <QNetworkInterface>
#include <QSslConfiguration>
#include <QThreadPool>

namespace tarnwick {

namespace {

constexpr int kAskers = 4;

/// Never destroyed: a pool waits for its threads then, and one of these may be stuck.
QThreadPool& askers() {
  static QThreadPool* const pool = [] {
    auto* made = new QThreadPool;
    made->setMaxThreadCount(kAskers);
    return made;
  }();
  return *pool;
}

/// On the main thread, which asks for it first. Never destroyed, so that a late thread can still post to it.
QObject& answers() {
  static QObject* const receiver = new QObject;
  return *receiver;
}

/// The address of the host alone: a script for proxies is not told what is asked of it.
QUrl rootOf(const QUrl& url) {
  QUrl root;
  root.setScheme(url.scheme());
  root.setHost(url.host());
  root.setPort(url.port());
  root.setPath(QStringLiteral("/"));
  return root;
}

}  // namespace

ProxyTable::Sources ProxyTable::Sources::ofSystem() {
  return {[](const QUrl& url) {
            // Reads the library of certificates in, which takes a while the first time.
            QSslConfiguration::defaultConfiguration();
            return QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
          },
          [] {
            QByteArray addresses;
            for (const QHostAddress& address : QNetworkInterface::allAddresses())
              addresses += address.toString().toUtf8() + ' ';
            return addresses;
          }};
}

ProxyTable::ProxyTable(Scheduler& scheduler, Sources sources)
    : scheduler_(scheduler), sources_(std::move(sources)), self_(std::make_shared<ProxyTable*>(this)) {
  answers();
}

void ProxyTable::find(const QUrl& url, QObject* context, std::function<void()> ready) {
  const QByteArray network = sources_.network();
  if (network != network_) {
    network_ = network;
    for (Entry& entry : entries_) {
      entry.found.reset();
      entry.isAsked = false;  // What a thread still finds out is about the network as it was.
    }
  }
  const QString host = url.host();
  Entry& entry = entries_[host];
  if (entry.found && scheduler_.reference() - *entry.found < secondsKept) {
    ready();
    return;
  }
  entry.waiting.emplace_back(context, std::move(ready));
  if (entry.isAsked) return;
  entry.isAsked = true;
  askers().start([root = rootOf(url), host, network, ask = sources_.proxies, self = std::weak_ptr(self_)] {
    QList<QNetworkProxy> proxies = ask(root);
    QMetaObject::invokeMethod(
        &answers(),
        [host, network, proxies = std::move(proxies), self] {
          if (const auto table = self.lock()) (*table)->take(host, network, proxies);
        },
        Qt::QueuedConnection);
  });
}

QList<QNetworkProxy> ProxyTable::known(const QString& host) const {
  const QList<QNetworkProxy> found = entries_.value(host).proxies;
  return found.isEmpty() ? QList{QNetworkProxy(QNetworkProxy::NoProxy)} : found;
}

void ProxyTable::take(const QString& host, const QByteArray& network, const QList<QNetworkProxy>& proxies) {
  if (network != network_) return;  // Whoever noticed that has asked again.
  Entry& entry = entries_[host];
  entry.proxies = proxies;
  entry.found = scheduler_.reference();
  entry.isAsked = false;
  // One of them may ask for more.
  for (const auto& [context, ready] : std::exchange(entry.waiting, {})) {
    if (context) ready();
  }
}

}  // namespace tarnwick
