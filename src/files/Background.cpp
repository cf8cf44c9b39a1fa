#include "files/Background.h"

#include <malloc.h>

#include <QMetaObject>
#include <QObject>
#include <QThreadPool>

namespace tarnwick {

namespace {

constexpr int kReaders = 3;

QThreadPool* makePool(int threads) {
  auto* pool = new QThreadPool;
  pool->setMaxThreadCount(threads);
  return pool;
}

/// None of these is ever destroyed: a pool waits for its threads then, and one may be stuck for good.
QThreadPool& pool(Background::Lane lane) {
  static QThreadPool* const reading = makePool(kReaders);
  static QThreadPool* const pictures = makePool(1);
  return lane == Background::Lane::Reading ? *reading : *pictures;
}

QObject& mainThread() {
  static QObject* const receiver = new QObject;
  return *receiver;
}

}  // namespace

void Background::run(Lane lane, std::function<void()> work) {
  mainThread();  // It belongs to the thread that asks first.
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
