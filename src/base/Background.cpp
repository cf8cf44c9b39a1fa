#include "base/Background.h"

#include <malloc.h>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QMetaObject>
#include <QObject>
#include <QThreadPool>
#include <limits>
#include <system_error>
#include <thread>

namespace tarnwick {

namespace {

constexpr int kReaders = 3;
constexpr int kComputers = 2;
/// Ordered work needs no limit: there are never more threads than queues that have work, and with fewer a queue that
/// hangs would hold up another.
constexpr int kNoLimit = std::numeric_limits<int>::max();
/// Longer than the time between two samples of the beat, which then find a thread.
constexpr int kOrderedStayMs = 6000;

QThreadPool* makePool(int threads) {
  auto* pool = new QThreadPool;
  pool->setMaxThreadCount(threads);
  return pool;
}

QThreadPool* makeOrderedPool() {
  QThreadPool* pool = makePool(kNoLimit);
  pool->setExpiryTimeout(kOrderedStayMs);
  return pool;
}

QThreadPool* makePatientPool() {
  QThreadPool* pool = makePool(1);
  pool->setExpiryTimeout(0);
  return pool;
}

/// The calling thread works only when nothing else wants to. Where the system refuses it works as others do.
void becomeIdle() {
  const sched_param none{};
  ::sched_setscheduler(0, SCHED_IDLE, &none);
  // The kernel's numbers, for which the library has neither names nor a function.
  constexpr int kOfThread = 1;
  constexpr int kIdleDisk = 3 << 13;
  ::syscall(SYS_ioprio_set, kOfThread, 0, kIdleDisk);
}

/// None of these is ever destroyed: a pool waits for its threads then, and one may be stuck for good.
QThreadPool& pool(Background::Lane lane) {
  static QThreadPool* const reading = makePool(kReaders);
  static QThreadPool* const pictures = makePool(1);
  static QThreadPool* const ordered = makeOrderedPool();
  static QThreadPool* const computing = makePool(kComputers);
  static QThreadPool* const patient = makePatientPool();
  switch (lane) {
    case Background::Lane::Pictures:
      return *pictures;
    case Background::Lane::Ordered:
      return *ordered;
    case Background::Lane::Computing:
      return *computing;
    case Background::Lane::Patient:
      return *patient;
    case Background::Lane::Reading:
      break;
  }
  return *reading;
}

QObject& mainThread() {
  static QObject* const receiver = new QObject;
  return *receiver;
}

}  // namespace

void Background::run(Lane lane, std::function<void()> work) {
  if (lane != Lane::Ordered) mainThread();  // It belongs to the thread that asks first.
  pool(lane).start(std::move(work));
}

void Background::idly(const std::function<void()>& work) {
  try {
    // One of its own: a thread that is idle cannot become another one again.
    std::thread([&work] {
      becomeIdle();
      work();
    }).join();
  } catch (const std::system_error&) {
    work();  // No thread is to be had now.
  }
}

void Background::giveBackMemory() {
#ifdef __GLIBC__
  // Once something large was freed, the library keeps what is of that size for itself.
  ::malloc_trim(0);
#endif
}

void Background::answer(std::function<void()> answer) {
  QMetaObject::invokeMethod(&mainThread(), std::move(answer), Qt::QueuedConnection);
}

}  // namespace tarnwick
