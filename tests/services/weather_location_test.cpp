#include <gtest/gtest.h>

#include <QList>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "base/OneShotEvent.h"
#include "services/WeatherLocation.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// A desktop that finds the machine when the test says so.
struct ScriptedLocation final : LocationSource {
  struct Turn {
    OneShotEvent over;
    std::optional<Coordinate> found;
    LocationFailure::Reason failure = LocationFailure::Reason::Disabled;
    bool isWithdrawn = false;
  };
  QList<std::shared_ptr<Turn>> asked;

  QCoro::Task<Coordinate> locate(std::stop_token stop) override {
    const auto turn = std::make_shared<Turn>();
    asked << turn;
    const std::stop_callback withdraw(stop, [turn] {
      turn->isWithdrawn = true;
      turn->over.happen();
    });
    co_await turn->over.happened();
    throwIfStopped(stop);
    if (!turn->found) throw LocationFailure(turn->failure);
    co_return *turn->found;
  }
  void answer(Coordinate found) {
    asked.last()->found = found;
    asked.last()->over.happen();
  }
};

struct Tile {
  std::stop_source stop;
  std::optional<Coordinate> found;
  QString sentence;
  bool isCancelled = false;
};

QCoro::Task<> wait(WeatherLocation location, std::shared_ptr<Tile> tile) {
  try {
    const Coordinate found = co_await location.coordinate(tile->stop.get_token());
    tile->found = found;
  } catch (const Cancelled&) {
    tile->isCancelled = true;
  } catch (const DomainError& error) {
    tile->sentence = error.message();
  }
}

struct WeatherLocationTest : ::testing::Test {
  std::shared_ptr<Tile> ask() {
    const auto tile = std::make_shared<Tile>();
    wait(location, tile);
    return tile;
  }

  double seconds = 1000;
  std::shared_ptr<ScriptedLocation> desktop = std::make_shared<ScriptedLocation>();
  WeatherLocation location{desktop, [this] { return seconds; }};
};

TEST_F(WeatherLocationTest, TilesShareOneAnswerAndOneThatLeavesTakesNothingFromTheOthers) {
  const auto first = ask();
  const auto second = ask();
  const auto third = ask();
  ASSERT_EQ(desktop->asked.size(), 1);
  first->stop.request_stop();
  EXPECT_TRUE(first->isCancelled) << "at once";
  EXPECT_FALSE(desktop->asked[0]->isWithdrawn);
  desktop->answer({51.9, 4.5});
  EXPECT_EQ(second->found, (Coordinate{51.9, 4.5}));
  EXPECT_EQ(third->found, second->found);
  EXPECT_FALSE(first->found.has_value());

  seconds += WeatherLocation::kKept - 1;
  EXPECT_EQ(ask()->found, second->found) << "without asking again";
  EXPECT_EQ(desktop->asked.size(), 1);
  seconds += 1;
  EXPECT_FALSE(ask()->found.has_value());
  EXPECT_EQ(desktop->asked.size(), 2);
}

TEST_F(WeatherLocationTest, TheLastThatLeavesWithdrawsTheQuestion) {
  const auto first = ask();
  const auto second = ask();
  first->stop.request_stop();
  second->stop.request_stop();
  EXPECT_TRUE(desktop->asked[0]->isWithdrawn);
  EXPECT_TRUE(second->isCancelled);
  const auto later = ask();
  ASSERT_EQ(desktop->asked.size(), 2);
  desktop->answer({1, 2});
  EXPECT_TRUE(later->found.has_value());
}

TEST_F(WeatherLocationTest, SaysWhyAndAsksAgainTheNextTime) {
  using Reason = LocationFailure::Reason;
  const std::pair<Reason, QString> reasons[] = {
      {Reason::Disabled, u"Location Services are disabled. Choose a city or enable Location Services."_s},
      {Reason::Refused, u"Location access was not granted. Choose a city or enable access in Privacy settings."_s},
      {Reason::TimedOut, u"Location timed out. Try again or choose a city."_s}};
  for (const auto& [reason, sentence] : reasons) {
    const auto tile = ask();
    desktop->asked.last()->failure = reason;
    desktop->asked.last()->over.happen();
    EXPECT_EQ(tile->sentence, sentence);
  }
  EXPECT_EQ(desktop->asked.size(), 3);
}

}  // namespace
}  // namespace tarnwick
