#include "base/Background.h"

#include <malloc.h>

#include <QMetaObject>
#include <QObject>
#include <QThreadPool>
#include <limits>

namespace tarnwick {

namespace {

constexpr int kReaders = 3;
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

/// None of these is ever destroyed: a pool waits for its threads then, and one may be stuck for good.
QThreadPool& pool(Background::Lane lane) {
  static QThreadPool* const reading = makePool(kReaders);
  static QThreadPool* const pictures = makePool(1);
  static QThreadPool* const ordered = makeOrderedPool();
  switch (lane) {
    case Background::Lane::Pictures:
      return *pictures;
    case Background::Lane::Ordered:
      return *ordered;
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
