#include <gtest/gtest.h>

#include <QDBusArgument>

#include "platform/dbus/DesktopNotifications.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"
#include "support/ForeignTexts.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kNotifications = "org.freedesktop.Notifications"_L1;

TEST(DesktopNotifications, ArriveInOrderAndAsTheServiceReadsThem) {
  struct Case {
    const char* what;
    QStringList capabilities;
    bool readsMarkup;
    QString body;
  };
  const std::vector<Case> cases{
      {"a service that reads markup", {u"body"_s, u"body-markup"_s}, true, u"5 &lt; 6 &amp; 7"_s},
      {"one that shows the text as it is", {u"body"_s, u"sound"_s}, false, u"5 < 6 & 7"_s},
  };
  for (const auto& expected : cases) {
    PrivateBus bus;
    FakeService service(bus.connection(), kNotifications);
    QList<QVariantList> posted;
    service.answer(u"GetCapabilities"_s, [&](const QDBusMessage&) { return QVariantList{expected.capabilities}; });
    service.answer(u"Notify"_s, [&](const QDBusMessage& message) {
      posted << message.arguments();
      return QVariantList{static_cast<uint>(posted.size())};
    });
    DesktopNotifications notifications(bus.connection());
    const auto unseen = [] { ADD_FAILURE() << "the service took it"; };
    notifications.post(u"Timer"_s, u"5 < 6 & 7"_s, unseen);
    notifications.post(u"Second"_s, {}, unseen);
    ASSERT_TRUE(waitFor([&] { return posted.size() == 2; })) << expected.what;
    notifications.post(u"Third"_s, {}, unseen);
    ASSERT_TRUE(waitFor([&] { return posted.size() == 3; })) << expected.what;

    EXPECT_EQ(posted[0][0], u"Tarnwick"_s);
    EXPECT_EQ(posted[0][1], 0u) << "never replaces an earlier one";
    EXPECT_EQ(posted[0][3], u"Timer"_s);
    EXPECT_EQ(posted[0][4], expected.body) << expected.what;
    const auto hints = qdbus_cast<QVariantMap>(posted[0][6]);
    EXPECT_EQ(hints.value(u"sound-name"_s), u"message-new-instant"_s);
    EXPECT_EQ(hints.value(u"desktop-entry"_s), u"com.brindlemoor.Tarnwick"_s);
    EXPECT_EQ(posted[1][3], u"Second"_s);
    EXPECT_EQ(posted[2][3], u"Third"_s);
    EXPECT_TRUE(notifications.capability());

    for (const test::ForeignSample& sample : test::foreignSamples()) {
      const qsizetype before = posted.size();
      notifications.post(sample.text, sample.text, unseen);
      ASSERT_TRUE(waitFor([&] { return posted.size() > before; }));
      const QString title = posted.last()[3].toString();
      const QString body = posted.last()[4].toString();
      EXPECT_TRUE(test::ForeignSample::isHarmless(title) && title.contains(sample.seen)) << qPrintable(title.left(80));
      EXPECT_TRUE(test::ForeignSample::isHarmless(body)) << qPrintable(body.left(80));
      EXPECT_TRUE(body.contains(expected.readsMarkup ? sample.seen.toHtmlEscaped() : sample.seen))
          << qPrintable(body.left(80));
    }
  }
}

TEST(DesktopNotifications, SaysSoWhereNobodyShowsThem) {
  PrivateBus bus;
  DesktopNotifications alone(bus.connection());
  int unseen = 0;
  alone.post(u"Nobody"_s, u"sees this"_s, [&] { ++unseen; });
  ASSERT_TRUE(waitFor([&] { return !alone.capability() && unseen == 1; }));
  EXPECT_EQ(alone.capability().reason, u"No notification service was found."_s);

  // A service that comes later is found; what was posted before it came stays lost.
  FakeService service(bus.connection(), kNotifications);
  QStringList titles;
  service.answer(u"GetCapabilities"_s, [](const QDBusMessage&) { return QVariantList{QStringList()}; });
  service.answer(u"Notify"_s, [&](const QDBusMessage& message) {
    titles << message.arguments()[3].toString();
    return QVariantList{1u};
  });
  ASSERT_TRUE(waitFor([&] { return alone.capability().available; }));
  alone.post(u"Somebody"_s, {}, [&] { ++unseen; });
  ASSERT_TRUE(waitFor([&] { return !titles.isEmpty(); }));
  EXPECT_EQ(titles, QStringList{u"Somebody"_s});
  // One that answers, but will not show it.
  service.answer(u"Notify"_s, {});
  alone.post(u"Refused"_s, {}, [&] { ++unseen; });
  ASSERT_TRUE(waitFor([&] { return unseen == 2; }));

  DesktopNotifications withoutBus(QDBusConnection(u"there is no such connection"_s));
  withoutBus.post(u"Nobody"_s, {}, [&] { ++unseen; });
  EXPECT_TRUE(waitFor([&] { return !withoutBus.capability() && unseen == 3; }));
}

}  // namespace
}  // namespace tarnwick
