#pragma once

#include <QNetworkAccessManager>
#include <QTcpSocket>
#include <QUrl>

#include "platform_net/TestServer.h"
#include "services/ServiceSession.h"

namespace tarnwick::test {

/// A service that lets one client sign in by codes with a proof key, and whose folder only its own tokens read.
class AuthorizationServer {
 public:
  static inline const QString kClient = QStringLiteral("client/1");
  static inline const QString kSecret = QStringLiteral("secret.1");

  explicit AuthorizationServer(const QByteArray& certificate = TestCertificates::all().good,
                               TestServer::As as = TestServer::As::Server);

  /// A row of a service, at this server.
  OAuthProvider at(OAuthProvider row) const;
  quint16 port() const { return server_.port(); }

  // What it does from here on.
  void decline(bool declines);
  void leaveOutRefreshToken(bool leavesOut);
  void expire(int seconds);

  /// The answers of the token endpoint, in order: "code", "refresh", or "refused".
  QStringList exchanges() const;
  /// How often the folder was read with a token that is good.
  int reads() const;

 private:
  TestReply answer(const TestRequest& request);
  TestReply authorize(const QUrl& target);
  TestReply exchange(const QByteArray& form);

  mutable std::mutex mutex_;
  bool declines_ = false;
  bool leavesOut_ = false;
  int seconds_ = 3600;
  QString code_, challenge_, redirect_, refreshToken_, accessToken_;
  QStringList exchanges_;
  int reads_ = 0;
  int made_ = 0;
  TestServer server_;
};

/// The user's browser: opens a page and goes where that leads it. What it was shown at the end is in `shown`.
class TestBrowser {
 public:
  void open(const QUrl& page);
  /// Asks a server on this machine as it stands, whatever the bytes are.
  void send(quint16 port, const QByteArray& bytes);

  quint16 proxy = 0;  ///< Of a proxy that leads to every page; 0 for none.
  QTcpSocket line;    ///< To the address where it came back to.
  QByteArray shown;

 private:
  void readPage();

  QNetworkAccessManager manager_;
  QNetworkReply* reply_ = nullptr;
};

}  // namespace tarnwick::test
