#include "app/InstanceSocket.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QTimer>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kLargest = 64 * 1024;
constexpr size_t kMostGuests = 8;
/// So long may one be silent.
constexpr int kGuestPatienceMs = 2000;
/// Each request and each answer is one message.
constexpr int kType = SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK;

/// A folder that is open, and the address of a socket in it. By the open folder's number the address is short enough
/// for every path.
struct Place {
  FileDescriptor folder;
  QByteArray name;

  sockaddr_un address() const {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const QByteArray path = "/proc/self/fd/" + QByteArray::number(folder.number()) + '/' + name;
    std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
    return address;
  }
};

Place openPlace(const QString& folder, const QByteArray& name) {
  return {FileDescriptor(::open(QFile::encodeName(folder).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC)), name};
}

/// Beside the lock, and in the runtime folder for a data folder that holds no sockets.
std::vector<Place> places(const QString& directory) {
  std::vector<Place> places;
  places.push_back(openPlace(directory, "tarnwick.socket"));
  struct stat status = {};
  const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (!runtime.isEmpty() && places[0].folder && ::fstat(places[0].folder.number(), &status) == 0) {
    const QByteArray number = QByteArray::number(static_cast<qulonglong>(status.st_dev), 16) + '-' +
                              QByteArray::number(static_cast<qulonglong>(status.st_ino), 16);
    places.push_back(openPlace(runtime, "tarnwick-" + number + ".socket"));
  }
  std::erase_if(places, [](const Place& place) { return !place.folder; });
  return places;
}

bool isSameUser(int connection) {
  ucred peer = {};
  socklen_t length = sizeof peer;
  return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0 && peer.uid == ::geteuid();
}

bool sendObject(int connection, const QJsonObject& object) {
  const QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Compact);
  if (text.size() > kLargest) return false;
  return ::send(connection, text.constData(), static_cast<size_t>(text.size()), MSG_NOSIGNAL) == text.size();
}

/// What has arrived; nothing when it is no object.
std::optional<QJsonObject> receiveObject(int connection) {
  QByteArray text(kLargest + 1, Qt::Uninitialized);
  const ssize_t length = ::recv(connection, text.data(), static_cast<size_t>(text.size()), 0);
  if (length <= 0 || length > kLargest) return std::nullopt;
  text.truncate(length);
  const QJsonDocument document = QJsonDocument::fromJson(text);
  return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

}  // namespace

struct InstanceSocket::Guest {
  FileDescriptor connection;
  QSocketNotifier speaks;
  QTimer silence;

  explicit Guest(int number) : connection(number), speaks(number, QSocketNotifier::Read) {
    silence.setSingleShot(true);
    silence.start(kGuestPatienceMs);
  }
};

InstanceSocket::InstanceSocket(const QString& directory, QObject* parent) : QObject(parent), directory_(directory) {}

InstanceSocket::~InstanceSocket() { close(); }

bool InstanceSocket::listen(Answer answer) {
  close();
  answer_ = std::move(answer);
  for (const Place& place : places(directory_)) {
    FileDescriptor door(::socket(AF_UNIX, kType, 0));
    if (!door) return false;
    const sockaddr_un address = place.address();
    // One that is left is of a copy that is gone, since we have the lock. Nothing but a socket is taken away.
    struct stat left = {};
    if (::fstatat(place.folder.number(), place.name.constData(), &left, AT_SYMLINK_NOFOLLOW) == 0 &&
        S_ISSOCK(left.st_mode)) {
      ::unlinkat(place.folder.number(), place.name.constData(), 0);
    }
    // The mode of the socket's file is that of the socket.
    ::fchmod(door.number(), 0600);
    if (::bind(door.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) continue;
    if (::listen(door.number(), static_cast<int>(kMostGuests)) != 0) return false;
    char folder[4096];
    const ssize_t length =
        ::readlink(("/proc/self/fd/" + QByteArray::number(place.folder.number())).constData(), folder, sizeof folder);
    if (length > 0) path_ = QByteArray(folder, length) + '/' + place.name;
    door_ = std::move(door);
    knocks_ = std::make_unique<QSocketNotifier>(door_.number(), QSocketNotifier::Read);
    connect(knocks_.get(), &QSocketNotifier::activated, this, &InstanceSocket::admit);
    return true;
  }
  return false;
}

void InstanceSocket::close() {
  guests_.clear();
  knocks_.reset();
  door_.reset();
  if (!path_.isEmpty()) ::unlink(std::exchange(path_, {}).constData());
}

void InstanceSocket::admit() {
  FileDescriptor connection(::accept4(door_.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
  if (!connection || guests_.size() >= kMostGuests || !isSameUser(connection.number())) return;
  const int number = connection.release();
  Guest& guest = *guests_.emplace(number, std::make_unique<Guest>(number)).first->second;
  connect(&guest.speaks, &QSocketNotifier::activated, this, [this, number] { serve(number); });
  connect(&guest.silence, &QTimer::timeout, this, [this, number] { serve(number); });
}

/// One question, one answer, and it goes; who has said nothing goes without one.
void InstanceSocket::serve(int number) {
  const auto node = guests_.extract(number);
  if (node.empty()) return;
  Guest* const guest = node.mapped().get();
  guest->speaks.setEnabled(false);
  guest->silence.stop();
  if (const auto request = receiveObject(number)) sendObject(number, answer_(*request));
  // Not from within one of its own signals.
  QTimer::singleShot(0, this, [kept = std::shared_ptr<Guest>(std::move(node.mapped()))] {});
}

InstanceSocket::Reply InstanceSocket::ask(const QString& directory, const QJsonObject& request, int milliseconds) {
  QElapsedTimer asked;
  asked.start();
  for (const Place& place : places(directory)) {
    const FileDescriptor connection(::socket(AF_UNIX, kType, 0));
    const sockaddr_un address = place.address();
    if (!connection ||
        ::connect(connection.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
      continue;
    }
    if (!isSameUser(connection.number()) || !sendObject(connection.number(), request)) return {};
    pollfd arrival{connection.number(), POLLIN, 0};
    for (;;) {
      const auto left = std::max<qint64>(0, milliseconds - asked.elapsed());
      const int count = ::poll(&arrival, 1, static_cast<int>(left));
      if (count > 0) return {receiveObject(connection.number()), false};
      if (count == 0) return {std::nullopt, true};
      if (errno != EINTR) return {};
    }
  }
  return {};
}

}  // namespace tarnwick
