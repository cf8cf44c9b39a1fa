#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QList>
#include <QTcpServer>
#include <QThread>
#include <functional>
#include <mutex>

namespace tarnwick::test {

/// Certificates that are made when they are first asked for, and an authority that only the test trusts.
struct TestCertificates {
  static constexpr int kMostAddresses = 60;

  QByteArray authority;
  QByteArray key;
  QByteArray good;     ///< For 127.0.0.1 and the addresses after it, up to 127.0.0.kMostAddresses.
  QByteArray foreign;  ///< For another name.
  QByteArray expired;
  QByteArray stranger;  ///< Of an authority that nobody trusts.
  QByteArray services;  ///< For the hosts of two services, which a proxy of the test stands for.
  QString folder;       ///< Where `key.pem` and `good.pem` are.

  /// Empty where they could not be made.
  static const TestCertificates& all();
};

/// What the server received.
struct TestRequest {
  QByteArray method;
  QByteArray path;
  QByteArray head;   ///< In lower case.
  QByteArray lines;  ///< The same as it was sent.
  QByteArray body;
};

/// What the server does about it, as written.
struct TestReply {
  /// Hold sends no more and closes nothing, Dribble a blank every few milliseconds, Slowly the bytes themselves so.
  /// HalfClose sends no more either and goes on listening.
  enum class After { Keep, Close, Hold, Dribble, Slowly, HalfClose };

  QByteArray bytes;
  After after = After::Keep;

  static TestReply of(int status, const QByteArray& body, const QByteArray& headers = {});
};

/// A real server in a thread of its own, over TLS.
class TestServer {
 public:
  using Answer = std::function<TestReply(const TestRequest&)>;

  /// By whom it is asked. A proxy leads every host to the server itself.
  enum class As { Server, Proxy };

  /// `answer` runs on the server's thread.
  TestServer(const QByteArray& certificate, Answer answer, As as = As::Server,
             const QHostAddress& address = QHostAddress::LocalHost);
  Q_DISABLE_COPY_MOVE(TestServer)
  ~TestServer();

  quint16 port() const { return port_; }
  QList<TestRequest> received() const;
  int dribbled() const;
  /// The most connections that the clients had open at once, counted by the system at every step of the server.
  int mostEstablished() const;
  int accepted() const;

 private:
  class Listener;
  class Client;

  void count();

  Answer answer_;
  QByteArray certificate_;
  As as_;
  QThread thread_;
  quint16 port_ = 0;
  mutable std::mutex mutex_;
  QList<TestRequest> received_;
  int dribbled_ = 0;
  int most_ = 0;
  int accepted_ = 0;
};

}  // namespace tarnwick::test
