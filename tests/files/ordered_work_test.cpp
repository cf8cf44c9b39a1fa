#include "base/OrderedWork.h"

#include <gtest/gtest.h>

#include <QThread>
#include <atomic>
#include <semaphore>

#include "support/Wait.h"

namespace tarnwick {
namespace {

TEST(OrderedWork, IsDoneInTurnAndAnsweredHere) {
  OrderedWork work;
  QList<int> done;
  QList<int> answered;
  bool isHere = true;
  for (int i = 0; i < 20; ++i) {
    work.start(
        [&done, i] {
          done << i;
          return i;
        },
        [&](int number) {
          answered << number;
          isHere = isHere && QThread::currentThread() == qApp->thread();
        });
  }
  ASSERT_TRUE(waitFor([&] { return answered.size() == 20; }));
  EXPECT_TRUE(isHere);
  EXPECT_TRUE(std::ranges::is_sorted(answered));
  EXPECT_EQ(done, answered);
}

TEST(OrderedWork, NothingIsAnsweredOrBegunOnceItIsCancelled) {
  std::binary_semaphore running(0);
  std::binary_semaphore mayEnd(0);
  std::atomic<int> begun = 0;
  int answered = 0;
  const auto isHeld = std::make_shared<int>();
  {
    OrderedWork work;
    const auto answer = [&answered, isHeld](bool) { ++answered; };
    const auto wait = [&, stop = work.stopToken()] {
      ++begun;
      running.release();
      mayEnd.acquire();
      return stop.stop_requested();
    };
    work.start(wait, answer);
    work.start(wait, answer);
    running.acquire();
    work.cancel();
    work.start(wait, answer);
    mayEnd.release();
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(begun, 1);
  EXPECT_EQ(answered, 0);
  EXPECT_EQ(isHeld.use_count(), 1) << "what an answer holds goes with it";
}

}  // namespace
}  // namespace tarnwick
