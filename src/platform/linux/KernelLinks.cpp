#include "platform/linux/KernelLinks.h"

#include <linux/rtnetlink.h>
#include <net/if.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <QByteArray>
#include <QPointer>
#include <QSocketNotifier>
#include <algorithm>
#include <cerrno>
#include <cstring>

#include "base/Background.h"

namespace tarnwick {

namespace {

/// The kernel sends no larger message of interfaces to those who ask without their counters.
constexpr int kLargestMessage = 32 * 1024;
constexpr int kAttempts = 3;
constexpr timeval kPatience{5, 0};

/// What is said of one interface.
struct LinkNews {
  int index = 0;
  bool isGone = false;
  bool isUp = false;
};

std::optional<LinkNews> newsIn(const nlmsghdr& header, const char* message) {
  if (header.nlmsg_type != RTM_NEWLINK && header.nlmsg_type != RTM_DELLINK) return std::nullopt;
  ifinfomsg link{};
  if (header.nlmsg_len < NLMSG_LENGTH(sizeof link)) return std::nullopt;
  std::memcpy(&link, message + NLMSG_HDRLEN, sizeof link);
  // Others tell of a bridge's ports, which leave their bridge and stay.
  if (link.ifi_family != AF_UNSPEC) return std::nullopt;
  const bool isConnected = (link.ifi_flags & IFF_UP) != 0 && (link.ifi_flags & IFF_RUNNING) != 0;
  return LinkNews{link.ifi_index, header.nlmsg_type == RTM_DELLINK,
                  isConnected && (link.ifi_flags & IFF_LOOPBACK) == 0};
}

/// Hands on every message of what was received in one piece.
void eachMessage(const char* bytes, size_t size, const std::function<void(const nlmsghdr&, const char*)>& take) {
  nlmsghdr header{};
  while (size >= sizeof header) {
    std::memcpy(&header, bytes, sizeof header);
    if (header.nlmsg_len < sizeof header || header.nlmsg_len > size) return;
    take(header, bytes);
    const size_t step = std::min<size_t>(NLMSG_ALIGN(header.nlmsg_len), size);
    bytes += step;
    size -= step;
  }
}

struct ReceivedPiece {
  ssize_t size = 0;
  bool isOfKernel = false;
  bool isWhole = false;
};

ReceivedPiece receivePiece(int socket, QByteArray& buffer) {
  sockaddr_nl from{};
  iovec place{buffer.data(), static_cast<size_t>(buffer.size())};
  msghdr message{};
  message.msg_name = &from;
  message.msg_namelen = sizeof from;
  message.msg_iov = &place;
  message.msg_iovlen = 1;
  const ssize_t size = ::recvmsg(socket, &message, 0);
  return {size, from.nl_pid == 0, (message.msg_flags & MSG_TRUNC) == 0};
}

FileDescriptor openRoute(int flags) {
  return FileDescriptor(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | flags, NETLINK_ROUTE));
}

bool askForAll(int socket) {
  struct {
    nlmsghdr header;
    ifinfomsg link;
    rtattr attribute;
    quint32 mask;
  } question{};
  question.header = {sizeof question, RTM_GETLINK, NLM_F_REQUEST | NLM_F_DUMP, 1, 0};
  question.link.ifi_family = AF_UNSPEC;
  question.attribute = {RTA_LENGTH(sizeof question.mask), IFLA_EXT_MASK};
  question.mask = RTEXT_FILTER_SKIP_STATS;
  return ::send(socket, &question, sizeof question, 0) == static_cast<ssize_t>(sizeof question);
}

enum class Listing { Complete, Disturbed, Failed };

Listing listOnce(int socket, std::map<int, bool>& links) {
  if (!askForAll(socket)) return Listing::Failed;
  QByteArray buffer(kLargestMessage, Qt::Uninitialized);
  bool isOver = false;
  bool isFailed = false;
  bool isDisturbed = false;
  while (!isOver && !isFailed) {
    const ReceivedPiece piece = receivePiece(socket, buffer);
    if (piece.size < 0 && errno == EINTR) continue;
    if (piece.size <= 0 || !piece.isWhole) return Listing::Failed;
    if (!piece.isOfKernel) continue;
    eachMessage(buffer.constData(), static_cast<size_t>(piece.size), [&](const nlmsghdr& header, const char* message) {
      isOver |= header.nlmsg_type == NLMSG_DONE;
      isFailed |= header.nlmsg_type == NLMSG_ERROR;
      isDisturbed |= (header.nlmsg_flags & NLM_F_DUMP_INTR) != 0;
      if (const auto news = newsIn(header, message)) links[news->index] = news->isUp;
    });
  }
  if (isFailed) return Listing::Failed;
  return isDisturbed ? Listing::Disturbed : Listing::Complete;
}

/// All interfaces, and whether each is up. It may have to wait for the kernel: not on the main thread.
std::optional<std::map<int, bool>> listLinks() {
  const FileDescriptor socket = openRoute(0);
  if (!socket) return std::nullopt;
  ::setsockopt(socket.number(), SOL_SOCKET, SO_RCVTIMEO, &kPatience, sizeof kPatience);
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    std::map<int, bool> links;
    const Listing listing = listOnce(socket.number(), links);
    if (listing == Listing::Failed) return std::nullopt;
    // What changed meanwhile is announced besides, so the last attempt counts in any case.
    if (listing == Listing::Complete || attempt + 1 == kAttempts) return links;
  }
  return std::nullopt;
}

}  // namespace

KernelLinks::KernelLinks(QObject* parent) : QObject(parent), socket_(openRoute(SOCK_NONBLOCK)) {
  sockaddr_nl address{};
  address.nl_family = AF_NETLINK;
  address.nl_groups = RTMGRP_LINK;
  if (!socket_ || ::bind(socket_.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(socket_.number(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { drain(); });
  ask();
}

KernelLinks::~KernelLinks() { notifier_.reset(); }

void KernelLinks::ask() {
  announced_.clear();
  isAsking_ = true;
  Background::run(Background::Lane::Reading, [self = QPointer(this), question = ++questions_] {
    Background::answer([self, question, links = listLinks()] {
      if (self && question == self->questions_) self->take(links);
    });
  });
}

/// What was announced in the meantime is newer than the list.
void KernelLinks::take(const std::optional<std::map<int, bool>>& listed) {
  isAsking_ = false;
  const std::set<int> announced = std::exchange(announced_, {});
  if (!listed) return;
  std::map<int, bool> links = *listed;
  for (const int index : announced) {
    links.erase(index);
    if (const auto found = links_.find(index); found != links_.end()) links.insert(*found);
  }
  links_ = std::move(links);
  isListed_ = true;
  decide();
}

void KernelLinks::drain() {
  QByteArray buffer(kLargestMessage, Qt::Uninitialized);
  bool isLost = false;
  while (true) {
    const ReceivedPiece piece = receivePiece(socket_.number(), buffer);
    if (piece.size < 0 && errno == EINTR) continue;
    if (piece.size < 0 && errno == ENOBUFS) {
      isLost = true;
      continue;
    }
    if (piece.size <= 0) {
      // What fails for good stays readable for ever.
      if (piece.size == 0 || errno != EAGAIN) notifier_->setEnabled(false);
      break;
    }
    if (!piece.isOfKernel) continue;
    isLost |= !piece.isWhole;
    eachMessage(buffer.constData(), static_cast<size_t>(piece.size), [&](const nlmsghdr& header, const char* message) {
      const auto news = newsIn(header, message);
      if (!news) return;
      if (isAsking_) announced_.insert(news->index);
      if (news->isGone)
        links_.erase(news->index);
      else
        links_[news->index] = news->isUp;
    });
  }
  if (isLost) ask();
  decide();
}

void KernelLinks::decide() {
  if (!isListed_) return;
  const bool isAnyUp = std::ranges::any_of(links_, [](const auto& link) { return link.second; });
  if (isAnyUp_ == isAnyUp) return;
  isAnyUp_ = isAnyUp;
  Q_EMIT changed();
}

}  // namespace tarnwick
