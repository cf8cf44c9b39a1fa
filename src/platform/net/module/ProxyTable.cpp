#include "platform/net/module/ProxyTable.h"

#include <unistd.h>

#include <QNetworkInterface>
#include <QSslConfiguration>
#include <QThreadPool>
#include <cstdio>
#include <cstdlib>

namespace tarnwick {

namespace {

constexpr int kAskers = 4;

/// At the end of the process the toolkit waits for its thread that loads scripts, and so perhaps for ever for a server
/// that does not answer. What is asked for at the end last is done first, so this comes before that.
void endWithoutWaiting() {
#ifdef __GLIBC__
  static const int isAsked = ::on_exit(
      [](int status, void*) {
        std::fflush(nullptr);
        ::_exit(status);
      },
      nullptr);
  Q_UNUSED(isAsked)
#endif
}

/// A pool waits for its threads when it is destroyed, and one of these may be stuck: then it is left to itself.
void leave(QThreadPool* pool) {
  if (pool->activeThreadCount() == 0) delete pool;
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

ProxyTable::~ProxyTable() {
  if (!askers_) return;
  if (askers_->activeThreadCount() > 0) endWithoutWaiting();
  leave(askers_);
}

/// Those who wait for a script of the network as it was hold up nobody who asks in the one that is there now.
void ProxyTable::renewAskers() {
  if (askers_ && askers_->activeThreadCount() == 0) return;
  if (askers_) {
    askers_->clear();
    leave(askers_);
  }
  askers_ = new QThreadPool;
  askers_->setMaxThreadCount(kAskers);
}

void ProxyTable::find(const QUrl& url, QObject* context, std::function<void()> ready) {
  const QByteArray network = sources_.network();
  if (network != network_ || !askers_) {
    network_ = network;
    renewAskers();
    for (auto [host, entry] : entries_.asKeyValueRange()) {
      entry.found.reset();
      // What a thread still finds out is about the network as it was.
      if (std::exchange(entry.isAsked, false)) ask(host, entry);
    }
  }
  Entry& entry = entries_[url.host()];
  if (entry.found && scheduler_.reference() - *entry.found < secondsKept) {
    ready();
    return;
  }
  entry.waiting.emplace_back(context, std::move(ready));
  entry.root = rootOf(url);
  if (!entry.isAsked) ask(url.host(), entry);
}

void ProxyTable::ask(const QString& host, Entry& entry) {
  entry.isAsked = true;
  askers_->start([root = entry.root, host, network = network_, ask = sources_.proxies, self = std::weak_ptr(self_)] {
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
  if (network != network_) return;  // It was asked again then.
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
