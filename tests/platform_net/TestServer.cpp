#include "TestServer.h"

#include <sys/socket.h>

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>

namespace tarnwick::test {

using namespace Qt::StringLiterals;

namespace {

/// Connections of this machine to a port that are established, seen from the side that asked for them.
int establishedTo(quint16 port) {
  int found = 0;
  for (const QString& table : {u"/proc/net/tcp"_s, u"/proc/net/tcp6"_s}) {
    QFile file(table);
    if (!file.open(QIODevice::ReadOnly)) continue;
    for (const QByteArray& line : file.readAll().split('\n')) {
      const QList<QByteArray> columns = line.simplified().split(' ');
      if (columns.size() > 3 && columns[3] == "01" && columns[2].split(':').last().toUInt(nullptr, 16) == port) ++found;
    }
  }
  return found;
}

}  // namespace

const TestCertificates& TestCertificates::all() {
  static QTemporaryDir folder;
  static const TestCertificates made = [] {
    constexpr auto kScript = R"(set -e
      key() { openssl ecparam -name prime256v1 -genkey -noout -out $1; }
      key ca.pem.key; openssl req -x509 -new -key ca.pem.key -subj /CN=Trusted -days 2 -out ca.pem
      key other.pem.key; openssl req -x509 -new -key other.pem.key -subj /CN=Other -days 2 -out other.pem
      key key.pem
      leaf() { printf "subjectAltName=$3\n" > ext; openssl req -new -key key.pem -subj /CN=Leaf -out csr
        openssl x509 -req -in csr -CA $2 -CAkey $2.key -CAcreateserial -days $4 -extfile ext -out $1; }
      leaf good.pem ca.pem DNS:localhost,$(seq -s , -f IP:127.0.0.%.0f $1) 2
      leaf foreign.pem ca.pem DNS:foreign.example 2
      leaf expired.pem ca.pem IP:127.0.0.1 -1
      leaf stranger.pem other.pem IP:127.0.0.1 2
      leaf services.pem ca.pem DNS:api.dropboxapi.com,DNS:www.dropbox.com,DNS:api.github.com 2)";
    QProcess shell;
    shell.setWorkingDirectory(folder.path());
    shell.start(u"sh"_s, {u"-c"_s, QString::fromLatin1(kScript), u"sh"_s, QString::number(kMostAddresses)});
    shell.waitForFinished();
    const auto read = [](const QString& name) {
      QFile file(folder.filePath(name));
      return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    return TestCertificates{read(u"ca.pem"_s),       read(u"key.pem"_s),     read(u"good.pem"_s),
                            read(u"foreign.pem"_s),  read(u"expired.pem"_s), read(u"stranger.pem"_s),
                            read(u"services.pem"_s), folder.path()};
  }();
  return made;
}

TestReply TestReply::of(int status, const QByteArray& body, const QByteArray& headers) {
  return {"HTTP/1.1 " + QByteArray::number(status) + " Word\r\n" + headers +
              "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body,
          After::Keep};
}

/// One connection. Lives on the server's thread.
class TestServer::Client final : public QSslSocket {
 public:
  Client(TestServer& server, qintptr descriptor, QObject* parent) : QSslSocket(parent), server_(server) {
    setSocketDescriptor(descriptor);
    setPrivateKey(QSslKey(TestCertificates::all().key, QSsl::Ec));
    setLocalCertificate(QSslCertificate(server.certificate_));
    connect(this, &QSslSocket::disconnected, this, &QObject::deleteLater);
    connect(this, &QSslSocket::readyRead, this, &Client::take);
    if (server.as_ == As::Server) startServerEncryption();
  }

 private:
  /// What a proxy is asked, before it becomes the server.
  void lead() {
    buffer_ += readAll();
    if (!buffer_.startsWith("CONNECT ") || !buffer_.endsWith("\r\n\r\n")) return;
    buffer_.clear();
    write("HTTP/1.1 200 OK\r\n\r\n");
    startServerEncryption();
  }
  void take() {
    if (mode() == UnencryptedMode) return lead();
    buffer_ += readAll();
    while (true) {
      const qsizetype end = buffer_.indexOf("\r\n\r\n");
      if (end < 0) return;
      TestRequest request;
      request.lines = buffer_.left(end);
      request.head = request.lines.toLower();
      const qsizetype at = request.head.indexOf("content-length:");
      const qsizetype size = at < 0 ? 0 : request.head.mid(at + 15).split('\r').first().trimmed().toLongLong();
      if (buffer_.size() < end + 4 + size) return;
      const QList<QByteArray> line = buffer_.left(buffer_.indexOf("\r\n")).split(' ');
      request.method = line.value(0);
      request.path = line.value(1);
      request.body = buffer_.mid(end + 4, size);
      buffer_.remove(0, end + 4 + size);
      {
        const std::lock_guard lock(server_.mutex_);
        server_.received_ << request;
      }
      server_.count();
      reply(server_.answer_(request));
    }
  }
  void reply(const TestReply& reply) {
    if (reply.after == TestReply::After::Slowly) return drip(reply.bytes);
    write(reply.bytes);
    if (reply.after == TestReply::After::HalfClose) {
      flush();
      ::shutdown(static_cast<int>(socketDescriptor()), SHUT_WR);
    }
    if (reply.after == TestReply::After::Close) disconnectFromHost();
    if (reply.after != TestReply::After::Dribble) return;
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this] {
      write(" ");
      const std::lock_guard lock(server_.mutex_);
      ++server_.dribbled_;
    });
    timer->start(2);
  }

  void drip(QByteArray bytes) {
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this, timer, left = std::move(bytes)]() mutable {
      write(left.left(5));
      left.remove(0, 5);
      if (left.isEmpty()) timer->deleteLater();
    });
    timer->start(2);
  }

  TestServer& server_;
  QByteArray buffer_;
};

class TestServer::Listener final : public QTcpServer {
 public:
  explicit Listener(TestServer& server) : server_(server) {}

 protected:
  void incomingConnection(qintptr descriptor) override {
    {
      const std::lock_guard lock(server_.mutex_);
      ++server_.accepted_;
    }
    server_.count();
    new Client(server_, descriptor, this);
  }

 private:
  TestServer& server_;
};

TestServer::TestServer(const QByteArray& certificate, Answer answer, As as, const QHostAddress& address)
    : answer_(std::move(answer)), certificate_(certificate), as_(as) {
  auto* listener = new Listener(*this);
  listener->listen(address);
  port_ = listener->serverPort();
  listener->moveToThread(&thread_);
  QObject::connect(&thread_, &QThread::finished, listener, &QObject::deleteLater);
  thread_.start();
}

TestServer::~TestServer() {
  thread_.quit();
  thread_.wait();
}

void TestServer::count() {
  // The table is no snapshot: one that closed while it was read and the one that came after it are both there.
  const int now = std::min(establishedTo(port_), establishedTo(port_));
  const std::lock_guard lock(mutex_);
  most_ = std::max(most_, now);
}

QList<TestRequest> TestServer::received() const {
  const std::lock_guard lock(mutex_);
  return received_;
}

int TestServer::dribbled() const {
  const std::lock_guard lock(mutex_);
  return dribbled_;
}

int TestServer::mostEstablished() const {
  const std::lock_guard lock(mutex_);
  return most_;
}

int TestServer::accepted() const {
  const std::lock_guard lock(mutex_);
  return accepted_;
}

}  // namespace tarnwick::test
