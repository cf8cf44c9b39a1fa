#include "platform/net/module/LoopbackListener.h"

#include <sys/socket.h>

#include <algorithm>

namespace tarnwick {

/// One connection. It goes once both sides have said all, or its time is over.
class LoopbackListener::Visitor final : public QObject {
 public:
  Visitor(LoopbackListener& listener, QTcpSocket* socket) : QObject(socket), listener_(listener), socket_(*socket) {
    socket_.setReadBufferSize(LoopbackLimits::chunk);
    connect(&socket_, &QTcpSocket::readyRead, this, &Visitor::read);
    // One that says no more is told so, as far as it still listens.
    connect(&socket_, &QTcpSocket::readChannelFinished, this, [this] {
      read();
      answer(std::nullopt);
    });
    connect(&socket_, &QTcpSocket::disconnected, this, &Visitor::leave);
    connect(&socket_, &QTcpSocket::bytesWritten, this, &Visitor::endWriting);
    deadline_ = listener_.scheduler_.after(LoopbackLimits::seconds, [this] {
      answer(std::nullopt);
      leave();
    });
    read();
  }

 private:
  void read() {
    while (socket_.bytesAvailable() > 0) {
      const QByteArray chunk = socket_.read(LoopbackLimits::chunk);
      received_ += chunk.size();
      // What comes after the answer is taken off the line, for a while: closing over it would lose the answer.
      if (isAnswered_) {
        if (received_ > kMostIgnored) leave();
        continue;
      }
      request_ += chunk;
      if (request_.size() > LoopbackLimits::largestRequest) {
        answer(std::nullopt);
        continue;
      }
      const qsizetype end = request_.indexOf("\r\n\r\n");
      if (end >= 0) answer(request_.first(end));
    }
  }
  void answer(const std::optional<QByteArray>& head) {
    if (isAnswered_) return;
    isAnswered_ = true;
    request_.clear();
    socket_.write(listener_.answer_(head));
    socket_.flush();
    endWriting();
  }
  void endWriting() {
    if (isAnswered_ && socket_.bytesToWrite() == 0) ::shutdown(static_cast<int>(socket_.socketDescriptor()), SHUT_WR);
  }
  void leave() {
    deadline_.reset();
    socket_.disconnect(this);
    socket_.abort();
    socket_.deleteLater();
  }

  static constexpr qsizetype kMostIgnored = 1'000'000;

  LoopbackListener& listener_;
  QTcpSocket& socket_;
  QByteArray request_;
  qsizetype received_ = 0;
  bool isAnswered_ = false;
  JobHandle deadline_;
};

LoopbackListener::~LoopbackListener() {
  for (QTcpSocket* socket : server_.findChildren<QTcpSocket*>(Qt::FindDirectChildrenOnly)) socket->disconnect();
}

std::optional<quint16> LoopbackListener::listen(quint16 port, Answer answer) {
  answer_ = std::move(answer);
  QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { admit(); });
  if (!server_.listen(QHostAddress(QHostAddress::LocalHost), port)) return std::nullopt;
  return server_.serverPort();
}

void LoopbackListener::close() { server_.close(); }

void LoopbackListener::admit() {
  while (QTcpSocket* socket = server_.nextPendingConnection()) {
    const QList<QTcpSocket*> sockets = server_.findChildren<QTcpSocket*>(Qt::FindDirectChildrenOnly);
    const auto visitors = std::ranges::count_if(
        sockets, [](const QTcpSocket* each) { return each->state() != QAbstractSocket::UnconnectedState; });
    if (visitors > LoopbackLimits::connections) {
      socket->abort();
      socket->deleteLater();
      continue;
    }
    new Visitor(*this, socket);
  }
}

}  // namespace tarnwick
