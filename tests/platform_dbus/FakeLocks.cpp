#include "platform_dbus/FakeLocks.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <QDBusUnixFileDescriptor>
#include <algorithm>
#include <array>

namespace tarnwick {

FakeLocks::FakeLocks(FakeService& login) {
  login.answer(QStringLiteral("Inhibit"), [this](const QDBusMessage& message) {
    last_ = message.arguments();
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    ends_.push_back(ends[0]);
    QDBusUnixFileDescriptor given;
    given.giveFileDescriptor(ends[1]);
    return QVariantList{QVariant::fromValue(given)};
  });
}

FakeLocks::~FakeLocks() {
  for (const int end : ends_) ::close(end);
}

int FakeLocks::held() const {
  return static_cast<int>(std::count_if(ends_.begin(), ends_.end(), [](int end) {
    pollfd question{.fd = end, .events = POLLIN, .revents = 0};
    return ::poll(&question, 1, 0) == 0;
  }));
}

}  // namespace tarnwick
