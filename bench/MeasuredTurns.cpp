#include "MeasuredTurns.h"

#include <QAbstractEventDispatcher>
#include <QByteArray>
#include <QFile>
#include <algorithm>
#include <chrono>
#include <ctime>
#include <thread>

namespace tarnwick {

namespace {

using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

/// The number behind a name in one of the system's lists.
qint64 listed(const QString& path, const QByteArray& name) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : file.readAll().split('\n')) {
    if (line.startsWith(name)) return line.mid(name.size()).simplified().split(' ').first().toLongLong();
  }
  return 0;
}

}  // namespace

double MeasuredTurns::worked() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

bool MeasuredTurns::waitUntil(const std::function<bool()>& holds, double seconds) {
  const auto deadline = Clock::now() + std::chrono::duration<double>(seconds);
  while (!holds()) {
    const auto begin = Clock::now();
    if (begin > deadline) return false;
    const double before = worked();
    const bool isBusy = QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents);
    longest_ = std::max(longest_, Milliseconds(Clock::now() - begin).count());
    mostWork_ = std::max(mostWork_, worked() - before);
    if (!isBusy) std::this_thread::sleep_for(std::chrono::microseconds(100));
  }
  return true;
}

qint64 MeasuredMemory::share() { return listed(u"/proc/self/smaps_rollup"_s, "Pss:"); }
qint64 MeasuredMemory::peak() { return listed(u"/proc/self/status"_s, "VmHWM:"); }
qint64 MeasuredMemory::resident() { return listed(u"/proc/self/status"_s, "VmRSS:"); }

void MeasuredMemory::resetPeak() {
  QFile file(u"/proc/self/clear_refs"_s);
  if (file.open(QIODevice::WriteOnly)) file.write("5");
}

}  // namespace tarnwick
