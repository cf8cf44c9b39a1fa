#include "base/OrderedWork.h"

#include <gtest/gtest.h>

#include <QThread>
#include <array>
#include <atomic>
#include <semaphore>
#include <stop_token>

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

TEST(OrderedWork, CanBeFinishedBeforeItsEnd) {
  std::atomic<int> done = 0;
  {
    OrderedWork work;
    for (int i = 0; i < 20; ++i) work.start([&done] { return ++done; }, [](int) {});
    work.finish();
    EXPECT_EQ(done, 20);
  }
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

/// Hangs until it is asked to stop.
bool hang(const std::stop_token& stop) {
  std::binary_semaphore asked(0);
  const std::stop_callback stops(stop, [&asked] { asked.release(); });
  asked.acquire();
  return true;
}

TEST(OrderedWork, NothingIsAnsweredOnceItsOwnerIsGone) {
  std::binary_semaphore running(0);
  int answered = 0;
  const auto isHeld = std::make_shared<int>();
  {
    OrderedWork work;
    const auto answer = [&answered, isHeld](bool) { ++answered; };
    work.start([] { return true; }, answer);
    work.start(
        [&running, stop = work.stopToken()] {
          running.release();
          return hang(stop);
        },
        answer);
    running.acquire();  // The first is done, and its answer is on its way.
  }
  OrderedWork after;
  bool isAfter = false;
  after.start([] { return true; }, [&isAfter](bool) { isAfter = true; });
  ASSERT_TRUE(waitFor([&] { return isAfter; }));
  EXPECT_EQ(answered, 0);
  EXPECT_EQ(isHeld.use_count(), 1) << "what an answer holds goes with it";
}

TEST(OrderedWork, OneThatHangsHoldsUpNoOther) {
  constexpr std::size_t more = 12;  // Than this computer may have processors for.
  std::counting_semaphore<> running(0);
  std::array<OrderedWork, more> hanging;
  for (OrderedWork& each : hanging)
    each.start(
        [&running, stop = each.stopToken()] {
          running.release();
          return hang(stop);
        },
        [](bool) {});
  OrderedWork work;
  bool isAnswered = false;
  work.start([] { return true; }, [&isAnswered](bool) { isAnswered = true; });
  EXPECT_TRUE(waitFor([&] { return isAnswered; }));
  for (std::size_t i = 0; i < more; ++i) running.acquire();
}

}  // namespace
}  // namespace tarnwick
