#include <gtest/gtest.h>

#include <QCoroTask>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <coroutine>
#include <exception>

#include "base/DomainError.h"
#include "base/ForeignText.h"
#include "services/RemoteRules.h"
#include "services/RemoteValues.h"
#include "services/ServiceHTTPError.h"
#include "services/ServiceUnreachable.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct SwitchedNetwork final : NetworkReach {
  void start() override {}
  bool isKnown() const override { return known; }
  bool isOnline() const override { return online; }
  bool isOnItsWay() const override { return onItsWay; }
  void set(bool is, bool isOnItsWay = false) {
    online = is;
    onItsWay = isOnItsWay;
    known = true;
    Q_EMIT changed();
  }
  bool known = true;
  bool online = true;
  bool onItsWay = false;
};

struct SwitchedSession final : SessionEvents {
  bool isLockKnown() const override { return known; }
  void setLocked(bool is) {
    Q_EMIT lockedChanged(is);
    known = true;
    Q_EMIT lockKnown();
  }
  bool known = true;
};

/// Services that answer when the test says so. Each fetch that began is in `asked`, in order.
struct Services {
  struct Turn {
    DockWidget widget;
    bool fahrenheit = false;
    bool isOver = false;
    RemoteValue value;
    std::exception_ptr fault;
    std::coroutine_handle<> waiting;
  };
  struct End {
    std::shared_ptr<Turn> turn;
    bool await_ready() const noexcept { return turn->isOver; }
    void await_suspend(std::coroutine_handle<> coroutine) const { turn->waiting = coroutine; }
    void await_resume() const noexcept {}
  };

  QCoro::Task<RemoteValue> load(DockWidget widget, bool fahrenheit, std::stop_token) {
    const auto turn = std::make_shared<Turn>();
    turn->widget = std::move(widget);
    turn->fahrenheit = fahrenheit;
    asked << turn;
    const End end{turn};
    co_await end;
    if (turn->fault) std::rethrow_exception(turn->fault);
    co_return turn->value;
  }
  static void finish(const std::shared_ptr<Turn>& turn) {
    turn->isOver = true;
    if (turn->waiting) std::exchange(turn->waiting, {}).resume();
  }
  void answer(qsizetype index, const QString& headline) {
    asked[index]->value.value = headline;
    asked[index]->value.updated = QDateTime(QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc());
    asked[index]->value.rows = {{u"1"_s, u"a row"_s, {}, QUrl(u"javascript:alert(1)"_s)}};
    finish(asked[index]);
  }
  template <class Error>
  void fail(qsizetype index, const Error& error) {
    asked[index]->fault = std::make_exception_ptr(error);
    finish(asked[index]);
  }
  /// What a cancelled fetch holds ends with its coroutine.
  ~Services() { forget(); }
  void forget() {
    for (const auto& turn : std::exchange(asked, {})) {
      if (!turn->isOver) finish(turn);
    }
  }

  QList<std::shared_ptr<Turn>> asked;
};

DockWidget connected(const QString& name) {
  return {QUuid::createUuid(),
          kind::revenueStripe.toString(),
          name,
          {{option::endpoint, u"https://numbers.example/"_s + name}}};
}

struct RemoteTest : ::testing::Test {
  RemoteTest() { restart(); }

  void restart() {
    values.reset();
    values = std::make_unique<RemoteValues>(
        RemoteValues::Setup{.scheduler = time,
                            .session = session,
                            .network = network,
                            .loader = [this](DockWidget widget, bool fahrenheit,
                                             std::stop_token stop) { return services.load(widget, fahrenheit, stop); },
                            .cacheFile = folder.filePath(u"remote-cache.json"_s),
                            .bootClock = [this] { return time.reference() + slept; }});
  }
  void show(const QList<DockWidget>& widgets) {
    config.profiles[0].widgets = widgets;
    values->follow(config, ActiveSets::of(widgets));
  }
  void startWith(const QList<DockWidget>& widgets) {
    config.profiles[0].widgets = widgets;
    values->start(config, ActiveSets::of(widgets));
  }
  RemoteValue shown(const DockWidget& widget) const { return values->remote().value(widget.id); }
  QStringList names() const {
    QStringList all;
    for (const auto& turn : services.asked) all << turn->widget.title;
    return all;
  }
  void refresh(const DockWidget& widget) {
    values->refresh(widget);
    time.advance(0);
  }
  test::TestScheduler time;
  SwitchedSession session;
  SwitchedNetwork network;
  Services services;
  QTemporaryDir folder;
  double slept = 0;
  DockConfiguration config;
  std::unique_ptr<RemoteValues> values;
};

TEST_F(RemoteTest, AHeadlineStaysWhileItIsFetchedAndAfterAFailure) {
  const DockWidget sales = connected(u"sales"_s);
  show({sales});
  refresh(sales);
  EXPECT_TRUE(shown(sales).loading);
  EXPECT_FALSE(shown(sales).value);
  EXPECT_EQ(shown(sales).subtitle, u"Updating…"_s);
  services.answer(0, u"12\u202E\n3"_s);
  EXPECT_EQ(shown(sales).value, u"12 3"_s) << "what turns the text around is shown";
  EXPECT_FALSE(shown(sales).rows.constFirst().url) << "an address that is none of the web's opens";

  refresh(sales);
  EXPECT_EQ(shown(sales).value, u"12 3"_s);
  EXPECT_TRUE(shown(sales).rows.isEmpty());
  const RemoteReading before = *values->reading(sales.id);
  EXPECT_FALSE(before.isLoading) << "what is answered at once flickers";
  EXPECT_EQ(before.value.rows.size(), 1) << "the list vanishes for the time of a fetch";
  const QSignalSpy changed(values.get(), &RemoteValues::changed);
  time.advance(RemoteValues::kUnnoticed);
  EXPECT_EQ(changed.size(), 1);
  EXPECT_TRUE(values->reading(sales.id)->isLoading);
  EXPECT_EQ(values->reading(sales.id)->value, before.value);
  services.fail(1, DomainError::invalid(u"The service is on holiday."_s));
  EXPECT_EQ(shown(sales).value, u"12 3"_s);
  EXPECT_TRUE(shown(sales).failed);
  EXPECT_EQ(shown(sales).subtitle, u"The service is on holiday."_s);
  EXPECT_TRUE(values->reading(sales.id)->value.rows.isEmpty());
  EXPECT_EQ(values->reading(sales.id)->goodAt, before.goodAt);

  refresh(sales);
  time.advance(RemoteValues::kUnnoticed);
  EXPECT_TRUE(values->reading(sales.id)->isLoading);
  EXPECT_TRUE(values->reading(sales.id)->value.failed) << "that it failed vanishes for the time of a fetch";
  services.answer(2, u"14"_s);
  EXPECT_FALSE(values->reading(sales.id)->isLoading);
  EXPECT_EQ(values->reading(sales.id)->value.value, u"14"_s);
  DockWidget unconnected = sales;
  unconnected.options.clear();
  show({unconnected});
  EXPECT_FALSE(values->reading(sales.id)) << "what is connected to nothing shows what it was told before";
}

TEST_F(RemoteTest, TheLatestFetchAloneWrites) {
  const DockWidget sales = connected(u"sales"_s);
  show({sales});
  refresh(sales);
  refresh(sales);
  services.answer(1, u"new"_s);
  services.answer(0, u"old"_s);
  EXPECT_EQ(shown(sales).value, u"new"_s);

  // A beat does so too.
  refresh(sales);
  values->beat(ActiveSets::of({sales}));
  time.advance(1);
  ASSERT_EQ(services.asked.size(), 4);
  services.answer(3, u"newer"_s);
  services.answer(2, u"older"_s);
  EXPECT_EQ(shown(sales).value, u"newer"_s);
  services.asked.resize(2);

  // An edit ends what is under way and leaves what is shown.
  refresh(sales);
  DockWidget edited = sales;
  edited.options[option::field] = u"total"_s;
  show({edited});
  services.answer(2, u"of another field"_s);
  EXPECT_EQ(shown(sales).value, u"newer"_s);

  refresh(edited);
  show({});
  services.answer(3, u"of nobody"_s);
  EXPECT_TRUE(values->remote().isEmpty());

  show({sales});
  refresh(sales);
  values->end();
  services.answer(4, u"too late"_s);
  EXPECT_FALSE(shown(sales).value);
  refresh(sales);
  EXPECT_EQ(services.asked.size(), 5) << "something is fetched after the end";
}

TEST_F(RemoteTest, AServiceThatWantsToBeLeftAloneIs) {
  struct Case {
    const char* name;
    std::optional<qint64> retry;  ///< Seconds from now.
    double jump, advance, sleep;
    bool isAsked;
  };
  const Case cases[] = {
      {"without a date, too early", std::nullopt, 0, 299, 0, false},
      {"without a date", std::nullopt, 0, 301, 0, true},
      {"with a date, too early", 60, 0, 59, 0, false},
      {"with a date", 60, 0, 61, 0, true},
      {"the clock is set back", 60, -86400, 61, 0, true},
      {"the clock is set ahead", 60, 61, 0, 0, true},
      {"the machine slept", 60, -86400, 1, 61, true},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    const DockWidget sales = connected(QString::fromLatin1(each.name));
    show({sales});
    refresh(sales);
    const auto retryAt = each.retry ? std::optional(time.now().addSecs(*each.retry)) : std::nullopt;
    services.fail(services.asked.size() - 1, ServiceHTTPError(429, retryAt));
    const RemoteValue failed = shown(sales);
    const qsizetype before = services.asked.size();
    time.jump(each.jump);
    time.advance(each.advance);
    slept += each.sleep;
    values->refreshAll();
    time.advance(0);
    EXPECT_EQ(services.asked.size(), before + each.isAsked);
    if (!each.isAsked) {
      EXPECT_EQ(shown(sales), failed) << "a placeholder hides the sentence";
    }
    time.jump(-each.jump);
  }

  // Another failure sets none, and does not end one; an edit does. What the user asks for is asked nevertheless.
  const DockWidget sales = connected(u"sales"_s);
  show({sales});
  refresh(sales);
  services.fail(services.asked.size() - 1, ServiceHTTPError(500));
  EXPECT_FALSE(values->reading(sales.id)->pausedUntil);
  refresh(sales);
  services.fail(services.asked.size() - 1, ServiceHTTPError(429));
  EXPECT_EQ(values->reading(sales.id)->pausedUntil, time.now().addSecs(RemoteRules::kPause));
  refresh(sales);
  services.fail(services.asked.size() - 1, ServiceHTTPError(500));
  EXPECT_TRUE(values->reading(sales.id)->pausedUntil) << "another failure ended the pause";
  DockWidget edited = sales;
  edited.options[option::field] = u"total"_s;
  show({edited});
  EXPECT_FALSE(values->reading(sales.id)->pausedUntil);
}

TEST_F(RemoteTest, RefreshesAreSpreadTheSeenOnesFirst) {
  QList<DockWidget> widgets;
  for (int number = 0; number < 20; ++number) widgets << connected(QString::number(number));
  DockWidget unset = connected(u"unset"_s);
  unset.options.clear();
  widgets.prepend(unset);
  show(widgets);
  values->setSeen({widgets[15].id});
  values->refreshAll();
  time.advance(0);
  EXPECT_EQ(names(), QStringList{u"14"_s}) << "the seen one, and not all in one instant";
  time.advance(RemoteValues::kSpreadOnRequest);
  EXPECT_EQ(services.asked.size(), RemoteValues::kMostAtOnce);
  EXPECT_FALSE(values->remote().contains(widgets[20].id)) << "what waits shows what it showed";
  for (qsizetype index = 0; index < 20; ++index) {
    ASSERT_LT(index, services.asked.size());
    services.answer(index, u"1"_s);
    time.advance(0.01);
  }
  EXPECT_EQ(services.asked.size(), 20);
  EXPECT_FALSE(values->remote().contains(unset.id));
  EXPECT_EQ(time.waiting(), 1) << "only the cache waits to be written";
}

TEST_F(RemoteTest, WhatIsCancelledLeavesWhatWasThereBefore) {
  const DockWidget asked = connected(u"asked"_s);
  const DockWidget fresh = connected(u"fresh"_s);
  show({asked, fresh});
  refresh(asked);
  services.answer(0, u"1"_s);
  const RemoteValue before = shown(asked);
  values->refreshAll();
  time.advance(RemoteValues::kSpreadOnRequest);
  EXPECT_TRUE(shown(asked).loading && shown(fresh).loading);
  values->cancelAll();
  EXPECT_EQ(shown(asked), before);
  EXPECT_FALSE(values->remote().contains(fresh.id));
  services.answer(1, u"late"_s);
  services.answer(2, u"late"_s);
  EXPECT_EQ(shown(asked), before);
  EXPECT_FALSE(values->remote().contains(fresh.id));
}

TEST_F(RemoteTest, WhatCannotBeAskedNowIsOwedAndAskedOnce) {
  const DockWidget sales = connected(u"sales"_s);
  DockWidget local{
      QUuid::createUuid(), kind::codexUsage.toString(), u"local"_s, {{option::connectionMode, value::codexLocal}}};
  struct Case {
    const char* name;
    std::function<void()> begin, end;
    RemoteWait wait;
    QStringList meanwhile;
  };
  const Case cases[] = {
      {"offline", [&] { network.set(false); }, [&] { network.set(true); }, RemoteWait::Network, {u"local"_s}},
      {"locked",
       [&] { Q_EMIT session.lockedChanged(true); },
       [&] { Q_EMIT session.lockedChanged(false); },
       RemoteWait::Unlocking,
       {}},
      {"asleep", [&] { Q_EMIT session.willSleep(); }, [&] { Q_EMIT session.didWake(); }, RemoteWait::Waking, {}},
      {"unseen",
       [&] {
         values->setSeen({});
         time.advance(RemoteValues::kUnseen);
       },
       [&] {
         values->setSeen({sales.id, local.id});
       },
       RemoteWait::BeingSeen,
       {}},
  };
  show({sales, local});
  EXPECT_FALSE(values->reading(sales.id));
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    services.forget();
    each.begin();
    values->refreshAll();
    time.advance(60);
    values->refreshAll();
    time.advance(60);
    for (qsizetype index = 0; index < services.asked.size(); ++index) services.answer(index, u"1"_s);
    QStringList asked = names();
    asked.removeDuplicates();
    EXPECT_EQ(asked, each.meanwhile);
    services.forget();
    // Also of what was never asked.
    ASSERT_TRUE(values->reading(sales.id));
    EXPECT_EQ(values->reading(sales.id)->waitsFor, each.wait);
    each.end();
    time.advance(10);
    EXPECT_EQ(values->reading(sales.id)->waitsFor, std::nullopt);
    QStringList owed{u"sales"_s, u"local"_s};
    for (const QString& name : each.meanwhile) owed.removeAll(name);
    EXPECT_EQ(names(), owed);
    for (qsizetype index = 0; index < services.asked.size(); ++index) services.answer(index, u"1"_s);
    each.end();
    time.advance(10);
    EXPECT_EQ(names(), owed) << "it is asked again for one reason";
  }

  // What is waited for may change meanwhile, and that is told.
  network.set(false);
  values->refreshAll();
  time.advance(0);
  const QSignalSpy told(values.get(), &RemoteValues::changed);
  Q_EMIT session.lockedChanged(true);
  EXPECT_EQ(values->reading(sales.id)->waitsFor, RemoteWait::Unlocking);
  EXPECT_TRUE(told.contains(QVariantList{sales.id}));
  Q_EMIT session.lockedChanged(false);

  // What the user asks for is asked.
  services.forget();
  refresh(sales);
  EXPECT_EQ(names(), QStringList{u"sales"_s});

  // What follows something closely waits as well, and not for its turn among others.
  services.forget();
  Q_EMIT session.lockedChanged(true);
  values->refreshByItself(local, RemoteValues::Cause::News);
  time.advance(60);
  EXPECT_EQ(names(), QStringList());
  Q_EMIT session.lockedChanged(false);
  time.advance(10);
  EXPECT_EQ(names(), QStringList{u"local"_s});
  values->refreshByItself(local, RemoteValues::Cause::News);
  time.advance(0);
  EXPECT_EQ(names(), (QStringList{u"local"_s, u"local"_s}));
}

TEST_F(RemoteTest, AWidgetThatComesWhileItsDockIsHiddenIsNotSeenEither) {
  const DockWidget sales = connected(u"sales"_s);
  const DockWidget later = connected(u"later"_s);
  show({sales});
  values->setSeen({});
  show({sales, later});
  time.advance(RemoteValues::kUnseen);
  values->refreshAll();
  time.advance(60);
  EXPECT_EQ(names(), QStringList());
  values->setSeen({sales.id, later.id});
  time.advance(60);
  EXPECT_TRUE(names().contains(u"later"_s));
}

TEST_F(RemoteTest, AClockIsAskedAnewForAnotherPlaceAlone) {
  DockWidget clock{QUuid::createUuid(), kind::todayClock.toString(), u"clock"_s, {{option::city, u"Kendal"_s}}};
  const auto edit = [&](const auto& key, const QString& value) {
    clock.options.insert(key, value);
    show({clock});
  };
  show({clock});
  refresh(clock);
  edit(option::zoneLabel, u"Home"_s);
  services.answer(0, u"6°"_s);
  EXPECT_EQ(shown(clock).value, u"6°"_s);
  refresh(clock);
  edit(option::city, u"Cairo"_s);
  services.answer(1, u"31°"_s);
  EXPECT_EQ(shown(clock).value, u"6°"_s) << "that was asked for the other place";
}

TEST_F(RemoteTest, TheFirstRefreshWaitsUntilItIsKnownWhatKeepsIt) {
  const DockWidget sales = connected(u"sales"_s);
  struct Case {
    const char* name;
    std::function<void()> tell;
    bool isAsked;
  };
  const Case cases[] = {
      {"offline", [&] { network.set(false); }, false},
      {"online", [&] { network.set(true); }, true},
      {"locked", [&] { session.setLocked(true); }, false},
      {"not locked", [&] { session.setLocked(false); }, true},
      {"nobody tells", [&] { time.advance(RemoteValues::kPatience); }, true},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    restart();
    services.forget();
    network.set(true);
    const bool isOfSession = QByteArray(each.name).contains("locked");
    (isOfSession ? session.known : network.known) = false;
    startWith({sales});
    values->refreshAll();
    time.advance(0.5);
    EXPECT_TRUE(services.asked.isEmpty());
    each.tell();
    time.advance(0);
    EXPECT_EQ(services.asked.size(), each.isAsked ? 1 : 0);
    session.known = true;
  }
}

TEST_F(RemoteTest, WhatANewNetworkDidNotReachIsTriedOnceMore) {
  const ServiceUnreachable unreachable(u"The service could not be reached."_s);
  const auto come = [&] {
    network.set(false);
    values->refreshAll();
    time.advance(1);
    network.set(true, true);
    time.advance(1);
  };
  const auto arrive = [&] { network.set(true); };
  struct Case {
    const char* name;
    std::function<void()> begin, then;
    bool isUnreachable, isAgain;
  };
  const Case cases[] = {
      {"it comes and is there later", come, arrive, true, true},
      {"it is there before the failure", [&] { come(), arrive(); }, [] {}, true, true},
      {"it never is", come, [] {}, true, false},
      {"another failure", come, arrive, false, false},
      {"behind a sleep",
       [&] {
         Q_EMIT session.willSleep();
         Q_EMIT session.didWake();
         values->refreshAll();
         time.advance(1);
       },
       [] {}, true, true},
      {"it was there all the time",
       [&] {
         time.advance(60);
         values->refreshAll();
         time.advance(1);
       },
       [] {}, true, false},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    const DockWidget sales = connected(u"sales"_s);
    show({sales});
    services.forget();
    each.begin();
    ASSERT_EQ(services.asked.size(), 1);
    each.isUnreachable ? services.fail(0, unreachable) : services.fail(0, ServiceHTTPError(500));
    time.advance(60);
    each.then();
    time.advance(RemoteValues::kFresh);
    ASSERT_EQ(services.asked.size(), each.isAgain ? 2 : 1);
    if (each.isAgain) services.fail(1, unreachable);
    time.advance(60);
    EXPECT_EQ(services.asked.size(), each.isAgain ? 2 : 1) << "more than once";
    network.set(true);
  }
}

TEST_F(RemoteTest, WhatIsReadHereWaitsForAUserWhoCanSeeItButForItsDeadline) {
  const DockWidget local{QUuid::createUuid(),
                         kind::analyticsClaudeCodeStatus.toString(),
                         u"local"_s,
                         {{option::connectionMode, value::claudeActivity}}};
  show({local});
  const auto asked = [&](RemoteValues::Cause cause) {
    services.forget();
    values->refreshByItself(local, cause);
    time.advance(0);
    return services.asked.size();
  };
  network.set(false);
  EXPECT_EQ(asked(RemoteValues::Cause::News), 1) << "it needs no network";
  session.setLocked(true);
  EXPECT_EQ(asked(RemoteValues::Cause::News), 0);
  EXPECT_EQ(asked(RemoteValues::Cause::Deadline), 0);
  session.setLocked(false);
  time.advance(0);
  EXPECT_EQ(services.asked.size(), 1) << "what was new meanwhile is forgotten";
  values->setSeen({});
  time.advance(RemoteValues::kUnseen);
  EXPECT_EQ(asked(RemoteValues::Cause::News), 0);
  EXPECT_EQ(asked(RemoteValues::Cause::Deadline), 1);
  EXPECT_EQ(asked(RemoteValues::Cause::News), 0);
  values->setSeen({local.id});
  time.advance(0);
  EXPECT_EQ(services.asked.size(), 1);
}

TEST_F(RemoteTest, TheNextRefreshIsTheFirstBeatThatBeginsOne) {
  const DockWidget sales = connected(u"sales"_s);
  show({sales});
  const double beat = values->everyTicks();
  const auto next = [&] {
    const auto at = values->nextRefresh(sales.id);
    return at ? time.now().secsTo(*at) : -1;
  };
  values->beat(ActiveSets::of({sales}));
  time.advance(1);
  EXPECT_EQ(next(), beat - 1);
  for (const auto& [pause, expected] : {std::pair(60, beat - 1), {700, beat * 2 - 1}, {2400, beat * 5 - 1}}) {
    refresh(sales);
    services.fail(services.asked.size() - 1, ServiceHTTPError(429, time.now().addSecs(pause)));
    EXPECT_EQ(next(), expected) << pause;
  }
  network.set(false);
  EXPECT_EQ(next(), -1) << "nothing is asked without a network";
  network.set(true);
  show({});
  EXPECT_EQ(next(), -1);
}

TEST_F(RemoteTest, HeadlinesOutliveTheProgramWithoutTheirSecrets) {
  const DockWidget sales = connected(u"sales"_s);
  DockWidget mail{
      QUuid::createUuid(), kind::gmailLatest.toString(), u"mail"_s, {{option::endpoint, u"https://mail.example/"_s}}};
  startWith({sales, mail});
  refresh(sales);
  refresh(mail);
  services.answer(0, u"1,204"_s);
  services.answer(1, u"a letter"_s);
  values->end();
  QFile file(folder.filePath(u"remote-cache.json"_s));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
  const QByteArray kept = file.readAll();
  for (const char* secret : {"a letter", "a row", "https", "/sales"}) EXPECT_FALSE(kept.contains(secret)) << secret;

  restart();
  startWith({sales, mail});
  ASSERT_TRUE(waitFor([&] { return !values->remote().isEmpty(); }));
  EXPECT_EQ(shown(sales).value, u"1,204"_s);
  EXPECT_EQ(values->reading(sales.id)->goodAt, time.now());
  EXPECT_FALSE(values->remote().contains(mail.id));

  // Neither another host's answer nor what cannot be read is shown.
  values->end();
  DockWidget moved = sales;
  moved.options[option::endpoint] = u"https://elsewhere.example/sales"_s;
  EXPECT_FALSE(RemoteCache::load(file.fileName()).valueOf(moved));
  EXPECT_TRUE(RemoteCache::load(file.fileName()).valueOf(sales));
  for (const QByteArray& broken : {QByteArray("{"), QByteArray("[]"), QByteArray(2'000'001, ' ')}) {
    QFile(file.fileName()).remove();
    QFile damaged(file.fileName());
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write(broken);
    damaged.close();
    EXPECT_TRUE(RemoteCache::load(file.fileName()).values.isEmpty());
  }
  RemoteCache huge;
  for (int number = 0; number < 100; ++number) {
    huge.values << CachedValue{QUuid::createUuid(), {}, {}, QString(60'000, u'x'), {}, {}, static_cast<double>(number)};
  }
  const QByteArray encoded = huge.encoded();
  EXPECT_LE(encoded.size(), RemoteCache::kMostBytes);
  EXPECT_EQ(RecordCodec::fromBytes<RemoteCache>(encoded).values.constFirst().updated, 99);
}

TEST_F(RemoteTest, HeadlinesGoFromTheDiskWithTheirWidgets) {
  const DockWidget sales = connected(u"sales"_s);
  const QString file = folder.filePath(u"remote-cache.json"_s);
  struct Case {
    const char* name;
    std::function<void()> act;  ///< With the headline on the disk, at the start of a run.
  };
  const Case cases[] = {
      {"the widget is removed", [&] { startWith({sales}), show({}); }},
      {"its credential is removed before the disk was read", [&] { startWith({sales}), values->forget(sales.id); }},
      {"its credential is removed later",
       [&] {
         startWith({sales});
         EXPECT_TRUE(waitFor([&] { return values->remote().contains(sales.id); }));
         values->forget(sales.id);
       }},
      {"it was removed where this was not noticed", [&] { startWith({}); }},
      {"it asks another host by now",
       [&] {
         DockWidget moved = sales;
         moved.options[option::endpoint] = u"https://elsewhere.example/"_s;
         startWith({moved});
       }},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    restart();
    startWith({sales});
    refresh(sales);
    services.answer(services.asked.size() - 1, u"1"_s);
    values->end();
    ASSERT_TRUE(QFile::exists(file));
    restart();
    each.act();
    EXPECT_TRUE(waitFor([&] {
      time.advance(0);
      return !QFile::exists(file);
    }));
    EXPECT_FALSE(values->remote().contains(sales.id));
  }
}

TEST(RemoteRules, OnlyWhatIsSetUpIsFetched) {
  struct Case {
    QString kind;
    QMap<QString, QString> options;
    bool isSetUp;
  };
  const Case cases[] = {
      {kind::revenueStripe.toString(), {}, false},
      {kind::revenueStripe.toString(), {{option::endpoint, u"https://x.example"_s}}, true},
      {kind::revenueStripe.toString(), {{option::connectionMode, value::native}}, false},
      {kind::codexUsage.toString(), {{option::connectionMode, value::codexLocal}}, true},
      {kind::xStudio.toString(), {{option::endpoint, u"https://x.example"_s}}, true},
      {kind::todayClock.toString(), {{option::city, u"Oslo"_s}}, true},
      {kind::todayOverview.toString(), {{option::weatherLocation, value::current}}, true},
      {kind::weatherForecast.toString(), {{option::weatherLocation, u"elsewhere"_s}}, false},
      {kind::digitalClock.toString(), {{option::city, u"Oslo"_s}}, false},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(RemoteRules::isSetUp({{}, each.kind, {}, each.options}), each.isSetUp) << qPrintable(each.kind);
  }
}

TEST(ForeignText, LosesWhatActsOnOthers) {
  struct Case {
    QString text, line;
  };
  const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
  const Case cases[] = {
      {u"plain"_s, u"plain"_s},
      {u"a\r\nb\u2028c\td"_s, u"a b c d"_s},
      {u"\u202Eevil\u202C \u2066x\u2069\a\u009B"_s, u"evil x"_s},
      {u"<img src=x>&lt;"_s, u"<img src=x>&lt;"_s},
      {family.repeated(400), family.repeated(299) + u'…'},
      {QString(1'000'000, u'x'), QString(299, u'x') + u'…'},
      {QString(300, u'x'), QString(300, u'x')},
      {u"ends\n"_s, u"ends"_s},
  };
  for (const Case& each : cases) EXPECT_EQ(ForeignText::line(each.text), each.line);

  const std::pair<QString, bool> addresses[] = {{u"https://example.dev/a"_s, true},
                                                {u"http://example.dev"_s, true},
                                                {u"ftp://example.dev"_s, false},
                                                {u"https:///a"_s, false},
                                                {u"https://user@example.dev"_s, false},
                                                {u"file:///etc/passwd"_s, false},
                                                {u"https://example.dev/"_s + QString(2000, u'x'), false},
                                                {{}, false}};
  for (const auto& [address, opens] : addresses)
    EXPECT_EQ(ForeignText::mayOpen(QUrl(address)), opens) << qPrintable(address);
}

}  // namespace
}  // namespace tarnwick
