#include "platform/qt/TimerFrameClock.h"

#include <sys/timerfd.h>
#include <time.h>

#include <QScreen>
#include <cmath>

namespace tarnwick {
namespace {

constexpr double kUsualRate = 60;
constexpr double kLeastRate = 10;  // What lies outside of these is a driver's fancy.
constexpr double kGreatestRate = 1000;
constexpr qint64 kSecond = 1'000'000'000;

qint64 steadyNow() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * kSecond + now.tv_nsec;
}

timespec timeOf(qint64 nanoseconds) { return {.tv_sec = nanoseconds / kSecond, .tv_nsec = nanoseconds % kSecond}; }

}  // namespace

void TimerFrameClock::start() {
  if (isRunning()) return;
  timer_ = FileDescriptor(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK));
  if (!timer_) return;
  notifier_ = std::make_unique<QSocketNotifier>(timer_.number(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, &TimerFrameClock::beat);
  if (const QScreen* screen = screen_()) {
    connect(screen, &QScreen::refreshRateChanged, notifier_.get(), [this] { run(); });
  }
  run();
}

void TimerFrameClock::stop() {
  if (!notifier_) return;
  notifier_->setEnabled(false);
  notifier_->disconnect(this);
  notifier_.release()->deleteLater();  // It may be emitting.
  timer_.reset();
}

double TimerFrameClock::rate() const {
  const QScreen* screen = screen_();
  const double rate = screen ? screen->refreshRate() : kUsualRate;
  return rate >= kLeastRate && rate <= kGreatestRate ? rate : kUsualRate;
}

void TimerFrameClock::run() {
  period_ = std::llround(static_cast<double>(kSecond) / rate());
  // The first beat comes at once: what moves is a frame further on before the screen shows it.
  previous_ = steadyNow() - period_;
  const itimerspec beats{.it_interval = timeOf(period_), .it_value = timeOf(1)};
  timerfd_settime(timer_.number(), 0, &beats, nullptr);
}

void TimerFrameClock::beat() {
  quint64 count = 0;
  if (::read(timer_.number(), &count, sizeof count) != sizeof count) return;
  previous_ += static_cast<qint64>(count) * period_;
  constexpr auto kUnit = static_cast<double>(kSecond);
  Q_EMIT frame(static_cast<double>(previous_) / kUnit, static_cast<double>(period_) / kUnit);
}

}  // namespace tarnwick
