#include "platform/wayland/WaylandFrameClock.h"

#include <QScreen>
#include <algorithm>

namespace tarnwick {
namespace {

constexpr double kUsualRate = 60;
constexpr double kLeastRate = 10;  // What lies outside of these is a driver's fancy.
constexpr double kGreatestRate = 1000;

}  // namespace

WaylandFrameClock::WaylandFrameClock(const WaylandScreens& screens, const QString& screen)
    : screens_(screens), screen_(screen) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &WaylandFrameClock::beat);
}

void WaylandFrameClock::start() {
  if (isRunning()) return;
  const QScreen* native = screens_.native(screen_);
  const double told = native ? native->refreshRate() : kUsualRate;
  const double rate = told >= kLeastRate && told <= kGreatestRate ? told : kUsualRate;
  period_ = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1 / rate));
  next_ = Clock::now() + period_;
  wait();
}

void WaylandFrameClock::wait() {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(next_ - Clock::now());
  timer_.start(std::max(left, std::chrono::milliseconds(0)));
}

void WaylandFrameClock::beat() {
  const auto missed = (Clock::now() - next_) / period_;
  const Clock::time_point shown = next_ + period_ * std::max<Clock::rep>(missed, 0);
  next_ = shown + period_;
  wait();
  constexpr auto seconds = [](Clock::duration span) { return std::chrono::duration<double>(span).count(); };
  Q_EMIT frame(seconds(shown.time_since_epoch()), seconds(period_));
}

}  // namespace tarnwick
