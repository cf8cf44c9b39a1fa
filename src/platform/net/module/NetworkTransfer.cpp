#include "platform/net/module/NetworkTransfer.h"

#include <QPointer>
#include <algorithm>

namespace tarnwick {

namespace {

/// What is kept of a body before it is taken over; more waits at the server.
constexpr qint64 kReadAhead = 256 * 1024;

/// What is taken over in one turn of the event loop, unpacked: well under a frame's work.
constexpr qint64 kTurn = 256 * 1024;

/// From so many bytes on there is space for the largest body, so that no growth copies it. What is not written into
/// costs nothing.
constexpr qsizetype kMuch = 256 * 1024;

/// Seconds; the toolkit itself gives a connection up after thirty.
constexpr double kLongestConnecting = 35;

/// The end of a reply closes its connection. To abort it would report a failure, and the one that its service is about
/// to report would be a second one, of which the toolkit complains. It ends in the next turn, since it may be what is
/// calling; then the place behind the gate is given up. The thread of the connections does one thing after the other,
/// so this one is closed before that of whoever comes next is opened.
void closeReply(QNetworkReply* reply, const QObject* listener, std::unique_ptr<HostGate::Pass> pass) {
  if (!reply) return;
  reply->disconnect(listener);
  QMetaObject::invokeMethod(
      reply->manager(),
      [ended = QPointer(reply), held = std::shared_ptr<HostGate::Pass>(std::move(pass))]() mutable {
        delete ended;
        held.reset();
      },
      Qt::QueuedConnection);
}

bool isOfProxy(QNetworkReply::NetworkError error) {
  return error >= QNetworkReply::ProxyConnectionRefusedError && error <= QNetworkReply::UnknownProxyError;
}

/// A request that is not wanted any more while its connection is being made. The toolkit would go on making it, for
/// nobody, beside that of whoever comes next: so the place behind the gate is kept until the request has its
/// connection, which can then be closed, or has failed.
class Straggler final : public QObject {
 public:
  Straggler(QNetworkReply* reply, std::unique_ptr<HostGate::Pass> pass, Scheduler& scheduler, QObject* parent)
      : QObject(parent), reply_(reply), pass_(std::move(pass)) {
    connect(reply, &QNetworkReply::requestSent, this, &Straggler::close);
    connect(reply, &QNetworkReply::metaDataChanged, this, &Straggler::close);
    connect(reply, &QNetworkReply::finished, this, &Straggler::close);
    bound_ = scheduler.after(kLongestConnecting, [this] { close(); });
  }

 private:
  void close() {
    closeReply(std::exchange(reply_, nullptr), this, std::move(pass_));
    bound_.reset();
    disconnect();
    deleteLater();
  }

  QNetworkReply* reply_;
  std::unique_ptr<HostGate::Pass> pass_;
  JobHandle bound_;
};

}  // namespace

NetworkTransfer::NetworkTransfer(NetworkTransport& transport, HTTPRequest request, HTTPTransport::Done done)
    : transport_(transport), request_(std::move(request)), done_(std::move(done)) {
  pass_ = transport_.gate_.ask(request_.url.host(), port(), [this](HostGate::Connection connection) {
    connection_ = connection;
    beginning_ = transport_.scheduler_.after(0, [this] { begin(); });
    deadline_ = transport_.scheduler_.after(HTTPLimits::seconds, [this] { end(HTTPFailure::TimedOut); });
  });
}

NetworkTransfer::~NetworkTransfer() { leave(); }

void NetworkTransfer::begin() {
  transport_.proxies_.find(request_.url, this, [this] { start(); });
}

void NetworkTransfer::start() {
  if (!done_) return;
  reply_ = transport_.start(request_, connection_);
  reply_->setReadBufferSize(kReadAhead);
  connect(reply_, &QNetworkReply::requestSent, this, [this] { isSent_ = true; });
  connect(reply_, &QNetworkReply::metaDataChanged, this, &NetworkTransfer::readHead);
  connect(reply_, &QNetworkReply::readyRead, this, &NetworkTransfer::readBody);
  connect(reply_, &QNetworkReply::finished, this, &NetworkTransfer::readEnd);
}

void NetworkTransfer::readHead() {
  isSent_ = true;
  const int known = status();
  if (known >= 300 || (known > 0 && known < 200)) {
    end(response());
    return;
  }
  const QByteArray encoding = reply_->rawHeader("Content-Encoding").trimmed().toLower();
  if (encoding == "gzip" || encoding == "x-gzip" || encoding == "deflate") unpacker_.emplace();
}

bool NetworkTransfer::readBody() {
  if (goingOn_ || status() < 200 || status() > 299) return true;
  for (qint64 left = kTurn; left > 0;) {
    const qsizetype room = HTTPLimits::largestBody - body_.size();
    const QByteArray bytes = nextBytes(std::min<qsizetype>(room + 1, left));
    if (unpacker_ && unpacker_->isDamaged()) {
      end(HTTPFailure::Unreachable);
      return false;
    }
    if (bytes.size() > room) {
      end(HTTPFailure::TooLarge);
      return false;
    }
    if (bytes.isEmpty()) return true;
    if (body_.size() + bytes.size() > kMuch) body_.reserve(HTTPLimits::largestBody);
    body_ += bytes;
    left -= bytes.size();
  }
  goingOn_ = transport_.scheduler_.after(0, [this] {
    goingOn_.reset();
    if (reply_->isFinished()) {
      readEnd();
    } else {
      readBody();
    }
  });
  return true;
}

QByteArray NetworkTransfer::nextBytes(qsizetype most) {
  if (!unpacker_) return reply_->read(most);
  while (true) {
    if (!unpacker_->hasMore()) {
      const QByteArray packed = reply_->read(kReadAhead);
      if (packed.isEmpty()) return {};
      unpacker_->add(packed);
    }
    // A piece may hold nothing but the beginning of something.
    QByteArray bytes = unpacker_->next(most);
    if (!bytes.isEmpty() || unpacker_->isDamaged()) return bytes;
  }
}

void NetworkTransfer::readEnd() {
  if (!readBody() || goingOn_) return;
  const QNetworkReply::NetworkError error = reply_->error();
  const bool isSuccess = status() >= 200 && status() <= 299;
  // Nothing at all is nothing, however it is packed.
  const bool isCut = isSuccess && unpacker_ && unpacker_->hasBegun() && !unpacker_->isComplete();
  if (isCut || (error != QNetworkReply::NoError && (isOfProxy(error) || isSuccess || status() == 0))) {
    end(HTTPFailure::Unreachable);
  } else {
    end(response());
  }
}

int NetworkTransfer::status() const {
  return reply_ ? reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() : 0;
}

HTTPResponse NetworkTransfer::response() {
  HTTPResponse response;
  response.status = status();
  for (const auto& [name, value] : reply_->rawHeaderPairs()) response.headers.set(name, value.trimmed());
  response.body = std::move(body_);
  response.received = transport_.scheduler_.now();
  return response;
}

void NetworkTransfer::end(HTTPAnswer answer) {
  leave();
  if (const HTTPTransport::Done done = std::exchange(done_, nullptr)) done(std::move(answer));
}

void NetworkTransfer::leave() {
  beginning_.reset();
  goingOn_.reset();
  deadline_.reset();
  if (QNetworkReply* reply = std::exchange(reply_, nullptr)) {
    if (isSent_ || reply->isFinished()) {
      closeReply(reply, this, std::move(pass_));
    } else {
      reply->disconnect(this);
      new Straggler(reply, std::move(pass_), transport_.scheduler_, &transport_.manager_);
    }
  }
  pass_.reset();
}

}  // namespace tarnwick
