#include "platform_net/AuthorizationServer.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QUrlQuery>

namespace tarnwick::test {

using namespace Qt::StringLiterals;

namespace {

QString valueOf(const QUrlQuery& query, const char* key) {
  return query.queryItemValue(QString::fromLatin1(key), QUrl::FullyDecoded);
}

TestReply json(int status, const QJsonObject& object) {
  return TestReply::of(status, QJsonDocument(object).toJson(), "Content-Type: application/json\r\n");
}

}  // namespace

AuthorizationServer::AuthorizationServer(const QByteArray& certificate, TestServer::As as)
    : server_(
          certificate, [this](const TestRequest& request) { return answer(request); }, as) {}

OAuthProvider AuthorizationServer::at(OAuthProvider row) const {
  for (QUrl* address : {&row.authorization, &row.token}) {
    address->setHost(u"127.0.0.1"_s);
    address->setPort(server_.port());
  }
  row.authorization.setPath(u"/oauth2/authorize"_s);
  row.token.setPath(u"/oauth2/token"_s);
  row.port = 0;
  return row;
}

void AuthorizationServer::decline(bool declines) {
  const std::lock_guard lock(mutex_);
  declines_ = declines;
}

void AuthorizationServer::leaveOutRefreshToken(bool leavesOut) {
  const std::lock_guard lock(mutex_);
  leavesOut_ = leavesOut;
}

void AuthorizationServer::expire(int seconds) {
  const std::lock_guard lock(mutex_);
  seconds_ = seconds;
}

QStringList AuthorizationServer::exchanges() const {
  const std::lock_guard lock(mutex_);
  return exchanges_;
}

int AuthorizationServer::reads() const {
  const std::lock_guard lock(mutex_);
  return reads_;
}

TestReply AuthorizationServer::answer(const TestRequest& request) {
  const std::lock_guard lock(mutex_);
  const QUrl target(QString::fromLatin1(request.path));
  if (target.path() == "/oauth2/authorize"_L1) return authorize(target);
  if (target.path() == "/oauth2/token"_L1) return exchange(request.body);
  const bool isGood =
      !accessToken_.isEmpty() && request.head.contains("authorization: bearer " + accessToken_.toLatin1() + "\r\n");
  if (target.path() != "/2/files/list_folder"_L1 || !isGood) return json(401, {});
  ++reads_;
  return TestReply::of(200, R"({"entries": [{".tag": "file", "id": "1", "name": "a", "path_display": "/a"},
      {".tag": "folder", "id": "2", "name": "b", "path_display": "/b"}], "has_more": false})");
}

TestReply AuthorizationServer::authorize(const QUrl& target) {
  const QUrlQuery query(target);
  if (valueOf(query, "response_type") != "code"_L1 || valueOf(query, "code_challenge_method") != "S256"_L1 ||
      valueOf(query, "client_id") != kClient)
    return json(400, {});
  code_ = u"code/%1+"_s.arg(++made_);
  challenge_ = valueOf(query, "code_challenge");
  redirect_ = valueOf(query, "redirect_uri");
  const QByteArray came = declines_ ? "error=access_denied" : "code=" + QUrl::toPercentEncoding(code_);
  return TestReply::of(302, {},
                       "Location: " + redirect_.toLatin1() + '?' + came +
                           "&state=" + QUrl::toPercentEncoding(valueOf(query, "state")) + "\r\n");
}

TestReply AuthorizationServer::exchange(const QByteArray& form) {
  const QUrlQuery query(QString::fromLatin1(form));
  const bool isCode = valueOf(query, "grant_type") == "authorization_code"_L1;
  const QByteArray proof =
      QCryptographicHash::hash(valueOf(query, "code_verifier").toLatin1(), QCryptographicHash::Sha256)
          .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
  const bool isClient = valueOf(query, "client_id") == kClient && valueOf(query, "client_secret") == kSecret;
  const bool isGranted = isCode ? !code_.isEmpty() && valueOf(query, "code") == code_ &&
                                      valueOf(query, "redirect_uri") == redirect_ && proof == challenge_.toLatin1()
                                : !refreshToken_.isEmpty() && valueOf(query, "refresh_token") == refreshToken_;
  if (!isClient || !isGranted) {
    exchanges_ << u"refused"_s;
    return json(400, {{u"error"_s, u"invalid_grant"_s}});
  }
  exchanges_ << (isCode ? u"code"_s : u"refresh"_s);
  code_.clear();
  accessToken_ = u"access-%1"_s.arg(++made_);
  QJsonObject granted{{u"access_token"_s, accessToken_}, {u"token_type"_s, u"bearer"_s}, {u"expires_in"_s, seconds_}};
  if (!leavesOut_) granted[u"refresh_token"_s] = refreshToken_ = u"refresh-%1"_s.arg(made_);
  return json(200, granted);
}

void TestBrowser::open(const QUrl& page) {
  shown.clear();
  if (proxy != 0) manager_.setProxy(QNetworkProxy(QNetworkProxy::HttpProxy, u"127.0.0.1"_s, proxy));
  QNetworkRequest request(page);
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
  QSslConfiguration trust = QSslConfiguration::defaultConfiguration();
  trust.setCaCertificates(QSslCertificate::fromData(TestCertificates::all().authority));
  request.setSslConfiguration(trust);
  reply_ = manager_.get(request);
  QObject::connect(reply_, &QNetworkReply::finished, reply_, [this] { readPage(); });
}

void TestBrowser::readPage() {
  reply_->deleteLater();
  const QUrl back = reply_->header(QNetworkRequest::LocationHeader).toUrl();
  if (back.host() != "127.0.0.1"_L1) return;
  const QByteArray port = QByteArray::number(back.port());
  send(static_cast<quint16>(back.port()), "GET " + back.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority) +
                                              " HTTP/1.1\r\nHost: 127.0.0.1:" + port + "\r\nAccept: text/html\r\n\r\n");
}

void TestBrowser::send(quint16 port, const QByteArray& bytes) {
  line.abort();
  line.disconnect();
  shown.clear();
  QObject::connect(&line, &QTcpSocket::readyRead, &line, [this] { shown += line.readAll(); });
  QObject::connect(&line, &QTcpSocket::connected, &line, [this, bytes] { line.write(bytes); });
  line.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
}

}  // namespace tarnwick::test
