#include <QLabel>
#include <QTest>
#include <QTimeZone>

#include "settings/SettingsFixture.h"
#include "store/DocumentEdits.h"
#include "views/controls/Buttons.h"
#include "views/settings/ConnectionRows.h"
#include "views/settings/OrderList.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

DockWidget connectedTo(const QString& address) {
  return {QUuid::createUuid(), u"analyticsPlausible"_s, u"Visitors"_s, {{option::endpoint, address}}};
}

TEST(ConnectionRowsTest, SayWhomAWidgetAsksHowItStandsAndWhen) {
  const QDateTime now(QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc());
  RemoteReading good;
  good.goodAt = now.addSecs(-360);
  RemoteReading failed = good;
  failed.value.failed = true;
  failed.value.subtitle = u"The service\u202E could not be reached."_s;
  RemoteReading paused = failed;
  paused.pausedUntil = now.addSecs(960);
  RemoteReading over = failed;
  over.pausedUntil = now.addSecs(-1);
  RemoteReading asking = good;
  asking.isLoading = true;
  RemoteReading owed = good;
  owed.waitsFor = RemoteWait::BeingSeen;
  RemoteReading old = good;
  old.goodAt = now.addDays(-1);
  const auto time = [&](qint64 seconds) { return now.addSecs(seconds).time().toString(u"HH:mm"_s); };
  const QString last = u"Last answer "_s + time(-360) + u'.';
  const struct {
    std::optional<RemoteReading> reading;
    QString state, details;
  } cases[] = {
      {std::nullopt, u"Not asked yet"_s, {}},
      {good, u"Connected"_s, last},
      {failed, u"Failed"_s, u"The service could not be reached. "_s + last},
      {paused, u"Paused until "_s + time(960), u"The service could not be reached. "_s + last},
      {over, u"Failed"_s, u"The service could not be reached. "_s + last},
      {asking, u"Asking…"_s, last},
      {owed, u"Waiting"_s, u"Waiting for the dock to be shown. "_s + last},
      {old, u"Connected"_s,
       u"Last answer "_s + QLocale().toString(old.goodAt->date(), QLocale::ShortFormat) + u' ' + time(0) + u'.'},
  };
  for (const auto& [reading, state, details] : cases) {
    SCOPED_TRACE(state.toStdString());
    EXPECT_EQ(ConnectionRows::state(reading, now, true), state);
    EXPECT_EQ(ConnectionRows::details(reading, std::nullopt, now, true), details);
  }
  EXPECT_EQ(ConnectionRows::details(std::nullopt, now.addSecs(600), now, true), u"Next refresh about 10:34."_s);
  EXPECT_EQ(ConnectionRows::details(std::nullopt, now.addSecs(4 * 3600), now, false),
            u"Next refresh about 2:24 "_s + QLocale().pmText() + u'.')
      << "as the desktop writes it, whatever the language does";

  DockWidget widget = connectedTo(u"https://API.example.org/v1"_s);
  EXPECT_EQ(ConnectionRows::service(widget), u"Own address · api.example.org"_s);
  widget.options = {{option::connectionMode, u"native"_s}};
  EXPECT_EQ(ConnectionRows::service(widget), u"Plausible"_s);
}

class ConnectionsPageTest : public testing::Test, protected SettingsFixture {
 protected:
  ConnectionsPageTest() {
    store().edit([this](DockConfiguration& config) { config.profiles[1].widgets = widgets_; });
    turnTo("connections");
  }
  void press(const QString& word) {
    for (auto* button : window().findChildren<Button*>())
      if (button->isVisible() && button->label() == word) return button->click();
    ADD_FAILURE() << "no " << word.toStdString();
  }
  bool says(const QString& sentence) {
    for (const QLabel* label : window().findChildren<QLabel*>())
      if (label->isVisible() && label->text() == sentence) return true;
    return false;
  }

  const QList<DockWidget> widgets_{connectedTo(u"https://one.example/"_s), connectedTo(u"https://two.example/"_s)};
};

TEST_F(ConnectionsPageTest, FollowsWhatIsFetchedWhileItIsSeen) {
  auto* list = control<OrderList>("Connections");
  ASSERT_TRUE(list);
  ASSERT_EQ(list->items().size(), 2);
  const auto fetch = [&](const QString& sentence) {
    RemoteReading& reading = connections.readings[widgets_[0].id];
    reading.value.failed = true;
    reading.value.subtitle = sentence;
    Q_EMIT connections.changed(widgets_[0].id);
    Q_EMIT connections.changed(widgets_[0].id);
    QCoreApplication::processEvents();
  };
  connections.asked = 0;
  fetch(u"Once."_s);
  EXPECT_EQ(list->items()[0].note, u"Once."_s);
  EXPECT_EQ(list->items()[0].value, u"Failed"_s);
  EXPECT_EQ(connections.asked, 2) << "once for what came together";
  turnTo("privacy");
  connections.asked = 0;
  fetch(u"Twice."_s);
  EXPECT_EQ(connections.asked, 0);
  turnTo("connections");
  EXPECT_EQ(list->items()[0].note, u"Twice."_s);
  store().edit([](DockConfiguration& config) { config.profiles[1].widgets.clear(); });
  QCoreApplication::processEvents();
  EXPECT_FALSE(list->isVisible());
  EXPECT_TRUE(says(u"No service is connected"_s));
}

TEST_F(ConnectionsPageTest, SaysWhatCameOfARefreshAndGoesByTheMinute) {
  auto* list = control<OrderList>("Connections");
  ASSERT_TRUE(list);
  list->choose(widgets_[0].id.toString());
  const auto come = [&](const RemoteReading& reading) {
    connections.readings[widgets_[0].id] = reading;
    Q_EMIT connections.changed(widgets_[0].id);
  };
  RemoteReading asking;
  asking.isAsking = true;
  RemoteReading failed;
  failed.value.failed = true;
  failed.value.subtitle = u"No\u202E answer."_s;
  RemoteReading good;
  good.value.value = u"3,184"_s;
  good.goodAt = store().scheduler().now();
  const QString name = u"“Visitors”"_s;
  for (const auto& [reading, said] :
       {std::pair(failed, name + u": No answer."_s), std::pair(good, name + u" shows 3,184."_s)}) {
    QTest::keyClick(list, Qt::Key_F5);
    come(asking);
    EXPECT_TRUE(says(u"Asking for "_s + name + u"…"_s));
    come(reading);
    EXPECT_TRUE(says(said)) << said.toStdString();
  }
  come(failed);
  EXPECT_FALSE(says(name + u": No answer."_s)) << "nobody asked for that one";

  connections.asked = 0;
  store().heartbeat();
  EXPECT_EQ(connections.asked, 2);
  store().heartbeat();
  EXPECT_EQ(connections.asked, 2);
}

TEST_F(ConnectionsPageTest, IsEditedAndLosesItsCredentialByKeys) {
  auto* list = control<OrderList>("Connections");
  ASSERT_TRUE(list);
  list->choose(widgets_[1].id.toString());
  QTest::keyClick(list, Qt::Key_F2);
  EXPECT_EQ(commands.asked.last(), u"edit "_s + widgets_[1].id.toString());
  const QString stuck = u"The keyring is locked."_s;
  for (const bool isStuck : {true, false}) {
    connections.failure = isStuck ? stuck : QString();
    connections.removed.clear();
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_TRUE(connections.removed.isEmpty()) << "it asks first";
    press(u"Cancel"_s);
    QTest::keyClick(list, Qt::Key_Delete);
    press(u"Remove"_s);
    EXPECT_EQ(connections.removed, QList{widgets_[1].id});
    EXPECT_EQ(says(stuck), isStuck);
  }
}

}  // namespace
}  // namespace tarnwick::test
