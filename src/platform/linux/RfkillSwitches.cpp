#include "platform/linux/RfkillSwitches.h"

#include <fcntl.h>
#include <linux/rfkill.h>
#include <unistd.h>

#include <QFile>
#include <QSocketNotifier>
#include <algorithm>
#include <cerrno>

namespace tarnwick {

RfkillSwitches::RfkillSwitches(const QString& device, QObject* parent) : QObject(parent) {
  descriptor_ = ::open(QFile::encodeName(device).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor_ < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { drain(); });
}

RfkillSwitches::~RfkillSwitches() {
  notifier_.reset();
  if (descriptor_ >= 0) ::close(descriptor_);
}

std::optional<bool> RfkillSwitches::wifiBlocked() const {
  if (wifiBlocked_.empty()) return std::nullopt;
  return std::all_of(wifiBlocked_.begin(), wifiBlocked_.end(), [](const auto& radio) { return radio.second; });
}

void RfkillSwitches::drain() {
  const auto before = wifiBlocked_;
  while (true) {
    rfkill_event event{};
    const ssize_t count = ::read(descriptor_, &event, sizeof event);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && errno == EAGAIN) break;
    if (count < static_cast<ssize_t>(sizeof event)) {
      // An end of file stays readable for ever.
      notifier_->setEnabled(false);
      break;
    }
    if (event.type != RFKILL_TYPE_WLAN) continue;
    if (event.op == RFKILL_OP_DEL) {
      wifiBlocked_.erase(event.idx);
    } else {
      wifiBlocked_[event.idx] = event.soft != 0 || event.hard != 0;
    }
  }
  if (wifiBlocked_ != before) Q_EMIT changed();
}

}  // namespace tarnwick
