#include "platform/net/module/NetworkTransport.h"

#include <QNetworkProxyFactory>
#include <QSslCertificate>

#include "platform/net/module/NetworkTransfer.h"

namespace tarnwick {

namespace {

/// Seconds from the last request for which the toolkit is asked to keep connections. It looks after them in steps of
/// sixteen, and for less than one step without a pause.
constexpr int kKept = 17;
constexpr double kClosedBy = 40;

/// Answers from the table alone: this is called while a request starts, on the main thread.
class KnownProxies final : public QNetworkProxyFactory {
 public:
  explicit KnownProxies(const ProxyTable& table) : table_(table) {}

  QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
    return table_.known(query.peerHostName());
  }

 private:
  const ProxyTable& table_;
};

}  // namespace

NetworkTransport::NetworkTransport(const NetworkSetup& setup, ProxyTable::Sources proxies)
    : scheduler_(*setup.scheduler),
      proxies_(scheduler_, std::move(proxies)),
      gate_(HTTPLimits::connectionsToHost, kClosedBy, scheduler_, [this] { manager_.clearConnectionCache(); }) {
  manager_.setProxyFactory(new KnownProxies(proxies_));
  if (setup.certificates.isEmpty()) return;
  trusting_ = QSslConfiguration::defaultConfiguration();
  trusting_->addCaCertificates(QSslCertificate::fromData(setup.certificates));
}

std::unique_ptr<HTTPTransfer> NetworkTransport::send(HTTPRequest request, Done done) {
  return std::make_unique<NetworkTransfer>(*this, std::move(request), std::move(done));
}

QNetworkReply* NetworkTransport::start(const HTTPRequest& request, HostGate::Connection connection) {
  QNetworkRequest asked(request.url);
  asked.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
  asked.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
  asked.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  asked.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
  asked.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  asked.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
  asked.setAttribute(QNetworkRequest::ConnectionCacheExpiryTimeoutSecondsAttribute, kKept);
  // The second version keeps its connection whatever is asked for.
  const bool isKept = connection == HostGate::Connection::Kept;
  asked.setAttribute(QNetworkRequest::Http2AllowedAttribute, isKept);
  if (!isKept) asked.setRawHeader("Connection", "close");
  if (trusting_) asked.setSslConfiguration(*trusting_);
  for (const auto& [name, value] : request.headers.fields()) asked.setRawHeader(name, value);
  // The toolkit's own unpacking, which this turns off, does not tell what is too large from what is damaged.
  asked.setRawHeader("Accept-Encoding", "gzip");
  return request.body ? manager_.post(asked, *request.body) : manager_.get(asked);
}

}  // namespace tarnwick
