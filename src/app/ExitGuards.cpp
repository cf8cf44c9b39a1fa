#include "app/ExitGuards.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>

namespace tarnwick {
namespace {

constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};

std::atomic<int> writingEnd = -1;

void tell(int) {
  const int kept = errno;
  const char byte = 0;
  if (const int end = writingEnd.load(); end >= 0) [[maybe_unused]]
    const auto written = ::write(end, &byte, 1);
  errno = kept;
}

void setDisposition(void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (const int number : kSignals) {
    struct sigaction before = {};
    ::sigaction(number, nullptr, &before);
    // A user who started us under nohup wants us to outlive the terminal.
    if (number == SIGHUP && before.sa_handler == SIG_IGN) continue;
    ::sigaction(number, &action, nullptr);
  }
}

}  // namespace

ExitGuards::ExitGuards(std::function<void()> onSignal, QObject* parent)
    : QObject(parent), onSignal_(std::move(onSignal)) {
  if (::pipe2(ends_, O_CLOEXEC | O_NONBLOCK) != 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(ends_[0], QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
    char byte = 0;
    if (::read(ends_[0], &byte, 1) == 1) onSignal_();
  });
  writingEnd = ends_[1];
  setDisposition(&tell);
}

ExitGuards::~ExitGuards() {
  if (ends_[0] < 0) return;
  setDisposition(SIG_DFL);
  writingEnd = -1;
  notifier_.reset();
  ::close(ends_[0]);
  ::close(ends_[1]);
}

}  // namespace tarnwick
