#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "config/Persistence.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/TestScheduler.h"
#include "widgets/TimeMath.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct RecordedNotifications final : Notifications {
  Capability capability() const override { return Capability::yes(); }
  void post(const QString&, const QString& body, std::function<void()> unseen) override {
    posted << body;
    if (nobodyLooks) unseen();
  }
  bool nobodyLooks = false;
  QStringList posted;
};

/// A store that lives through what a computer does in a day.
struct Life {
  Life() { start(); }

  void start() {
    store = std::make_unique<AppStore>(StoreSetup{.scheduler = time,
                                                  .counters = std::make_unique<NoCounters>(),
                                                  .installedApps = desktop.installedApps,
                                                  .applications = desktop.applications,
                                                  .notifications = notifications,
                                                  .session = session,
                                                  .remote = desktop.facilities.remote,
                                                  .credentials = desktop.facilities.credentials,
                                                  .clipboard = desktop.facilities.clipboard,
                                                  .reservations = desktop.facilities.reservations,
                                                  .storage = folder.filePath(u"config.json"_s)});
  }
  void begin(const QString& kind, const QMap<QString, QString>& options) {
    store->edit([&](DockConfiguration& config) {
      config.notificationsEnabled = true;
      config.profiles[0].widgets = {{QUuid::createUuid(), kind, {}, options}};
    });
    store->toggleTimer(store->widgets().first().id);
  }
  /// "+60": a minute goes by. "sleep 60": so does one asleep. "off 60": so does one while the program does not run.
  /// "clock -60": the wall clock is set back by a minute. "toggle": the user starts or stops it.
  void live(const QString& step) {
    const QString action = step.section(u' ', 0, 0);
    const int seconds = step.section(u' ', -1).toInt();
    if (action == u"sleep"_s) {
      Q_EMIT session.willSleep();
      time.jump(seconds);
      Q_EMIT session.didWake();
    } else if (action == u"off"_s) {
      store->shutdown();
      store.reset();
      time.advance(seconds);
      start();
    } else if (action == u"clock"_s) {
      time.jump(seconds);
    } else if (action == u"toggle"_s) {
      store->toggleTimer(store->widgets().first().id);
    } else {
      time.advance(seconds);
    }
  }

  QTemporaryDir folder;
  test::TestScheduler time;
  NoDesktop desktop{time};
  SessionEvents session;
  RecordedNotifications notifications;
  std::unique_ptr<AppStore> store;
};

TEST(TimerLife, EndsAreAnnouncedOnceWhateverHappens) {
  const QString finished = u"Your timer is finished."_s;
  const QString pause = u"Time for a break."_s;
  const QString work = u"Ready for your next focus session."_s;
  const QString seated = u"Return to a comfortable seated posture."_s;
  const QMap<QString, QString> minute{{u"minutes"_s, u"1"_s}};
  QMap<QString, QString> goesOn{{u"minutes"_s, u"1"_s}, {u"shortBreak"_s, u"1"_s}, {u"autoContinue"_s, u"true"_s}};
  QMap<QString, QString> stands{{u"minutes"_s, u"1"_s}, {u"standingMinutes"_s, u"1"_s}, {u"autoContinue"_s, u"true"_s}};
  const struct {
    const char* name;
    QString kind;
    QMap<QString, QString> options;
    QStringList steps;
    QStringList announced;
    double left;  ///< Or counted, of a stopwatch.
  } cases[] = {
      {"runs out", u"timer"_s, minute, {u"+59"_s, u"+1"_s, u"+60"_s}, {finished}, 0},
      {"asleep at its end", u"timer"_s, minute, {u"sleep 500"_s, u"+5"_s}, {finished}, 0},
      {"ends while the program is off",
       u"timer"_s,
       minute,
       {u"+10"_s, u"off 500"_s, u"+5"_s, u"off 5"_s},
       {finished},
       0},
      {"runs across a restart", u"timer"_s, minute, {u"+10"_s, u"off 20"_s, u"+1"_s}, {}, 29},
      {"paused across everything",
       u"timer"_s,
       minute,
       {u"+10"_s, u"toggle"_s, u"off 90"_s, u"sleep 90"_s, u"clock 90"_s},
       {},
       50},
      {"a clock set back after its end", u"timer"_s, minute, {u"+61"_s, u"clock -300"_s, u"+300"_s}, {finished}, 0},
      {"a clock set forward", u"timer"_s, minute, {u"clock 300"_s, u"+2"_s, u"clock -300"_s, u"+90"_s}, {finished}, 0},
      {"a clock set back on the way", u"timer"_s, minute, {u"+30"_s, u"clock -30"_s, u"+1"_s}, {}, 59},
      {"a focus session that stops", u"pomodoro"_s, minute, {u"sleep 4000"_s, u"+90"_s}, {pause}, 300},
      {"a focus cycle asleep", u"pomodoro"_s, goesOn, {u"sleep 190"_s, u"+1"_s}, {pause}, 49},
      {"a focus cycle while off", u"pomodoro"_s, goesOn, {u"+1"_s, u"off 129"_s, u"+1"_s}, {work}, 49},
      {"a focus cycle awake", u"pomodoro"_s, goesOn, {u"+130"_s}, {pause, work}, 50},
      {"a posture cycle asleep", u"posture"_s, stands, {u"sleep 130"_s, u"+1"_s}, {seated}, 49},
      {"a stopwatch across a restart", u"stopwatch"_s, {}, {u"+10"_s, u"off 20"_s, u"sleep 30"_s, u"+1"_s}, {}, 61},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    Life life;
    life.begin(each.kind, each.options);
    for (const QString& step : each.steps) life.live(step);
    EXPECT_EQ(life.notifications.posted.join(u'|').toStdString(), each.announced.join(u'|').toStdString());
    const DockWidget& widget = life.store->widgets().first();
    const QDateTime now = life.time.now();
    EXPECT_EQ(each.kind == u"stopwatch"_s ? TimeMath::elapsed(widget, now) : TimeMath::remaining(widget, now),
              each.left);
  }
}

TEST(TimerLife, EndsThatNoNotificationShowsAreReportedOnceByTheMessageLine) {
  const struct {
    const char* name;
    bool on;
    bool nobodyLooks;
    QString title;
    QString message;
  } cases[] = {
      {"shown by the desktop", true, false, {}, {}},
      {"nobody shows notifications", true, true, {}, u"Your timer is finished."_s},
      {"switched off", false, false, {}, u"Your timer is finished."_s},
      {"one of several timers", false, false, u"Tea"_s, u"Tea: Your timer is finished."_s},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    Life life;
    life.begin(u"timer"_s, {{u"minutes"_s, u"1"_s}});
    life.store->edit([&](DockConfiguration& config) {
      config.notificationsEnabled = each.on;
      config.profiles[0].widgets[0].title = each.title;
    });
    life.notifications.nobodyLooks = each.nobodyLooks;
    life.live(u"+61"_s);
    EXPECT_EQ(life.store->error().toStdString(), each.message.toStdString());
    EXPECT_EQ(life.store->isAnnouncement(), !each.message.isEmpty());
    EXPECT_EQ(life.notifications.posted.isEmpty(), !each.on);
    life.store->clearError();
    life.live(u"off 60"_s);
    life.live(u"+60"_s);
    EXPECT_EQ(life.store->error().toStdString(), "");
  }
}

TEST(TimerLife, OfMoreThanThreeEndsWhileNobodyLooksNoneIsLost) {
  Life life;
  life.begin(u"timer"_s, {{u"minutes"_s, u"1"_s}});
  for (const QString& name : {u"Tea"_s, u"Eggs"_s, u"Rice"_s, u"Tea"_s, QString()}) {
    life.store->edit([&](DockConfiguration& config) {
      config.notificationsEnabled = false;
      config.profiles[0].widgets.append({QUuid::createUuid(), u"timer"_s, name, {{u"minutes"_s, u"1"_s}}});
    });
    life.store->toggleTimer(life.store->widgets().last().id);
  }
  life.store->addWidget({{}, u"exercise"_s, {}, {{u"minutes"_s, u"1"_s}}}, life.store->profile().id);
  life.store->toggleTimer(life.store->widgets().last().id);
  life.live(u"+61"_s);
  EXPECT_EQ(life.store->error().toStdString(),
            "Your timer is finished. (2) Tea (2), Eggs, Rice: Your timer is finished. Take a break to move and "
            "stretch.");
  // A later end joins what is still shown; what was dismissed does not come back.
  life.store->toggleTimer(life.store->widgets().last().id);
  life.live(u"+61"_s);
  EXPECT_TRUE(life.store->error().endsWith(u"Take a break to move and stretch. (2)"_s));
  life.store->clearError();
  life.store->toggleTimer(life.store->widgets().last().id);
  life.live(u"+61"_s);
  EXPECT_EQ(life.store->error().toStdString(), "Take a break to move and stretch.");
}

}  // namespace
}  // namespace tarnwick
