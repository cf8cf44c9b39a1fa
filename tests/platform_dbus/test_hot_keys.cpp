#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QSignalSpy>

#include "desktop/VirtualKeys.h"
#include "platform/dbus/PortalHotKeys.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"

namespace tarnwick {

struct TestShortcut {
  QString id;
  QVariantMap facts;
};
QDBusArgument& operator<<(QDBusArgument& argument, const TestShortcut& shortcut) {
  argument.beginStructure();
  argument << shortcut.id << shortcut.facts;
  argument.endStructure();
  return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, TestShortcut& shortcut) {
  argument.beginStructure();
  argument >> shortcut.id >> shortcut.facts;
  argument.endStructure();
  return argument;
}

namespace {

using namespace Qt::StringLiterals;

const QString kName = u"org.freedesktop.portal.Desktop"_s;
const QString kDesktop = u"/org/freedesktop/portal/desktop"_s;
const QString kShortcuts = u"org.freedesktop.portal.GlobalShortcuts"_s;
constexpr quint32 kToggle = 1;
constexpr quint32 kProfile = 13;
const HotKeyRequest kD{2, VirtualKeys::kControl | VirtualKeys::kOption | VirtualKeys::kCommand};
const HotKeyRequest kThree{20, VirtualKeys::kShift};

HotKeyAction action(quint32 identifier) {
  return identifier == kToggle ? HotKeyAction{u"--toggle"_s, u"Show or hide"_s}
                               : HotKeyAction{u"--profile 3"_s, u"Profile 3"_s};
}

/// The desktop's portal, as far as keys go. Each question waits for the test's answer.
struct FakePortal {
  explicit FakePortal(const QDBusConnection& bus) : service(bus, kName) {
    qDBusRegisterMetaType<TestShortcut>();
    qDBusRegisterMetaType<QList<TestShortcut>>();
    service.setProperty(kDesktop, kShortcuts, u"version"_s, 1U);
    service.answer(u"Register"_s, [this](const QDBusMessage& call) {
      registered << call.arguments().value(0).toString();
      return QVariantList();
    });
    service.answer(u"CreateSession"_s, [this](const QDBusMessage& call) { return requested(call); });
    service.answer(u"BindShortcuts"_s, [this](const QDBusMessage& call) {
      requests = qdbus_cast<QList<TestShortcut>>(call.arguments().value(1).value<QDBusArgument>());
      return requested(call);
    });
    service.answer(u"Close"_s, [this](const QDBusMessage& call) {
      closed << call.path();
      return QVariantList();
    });
  }

  QVariantList requested(const QDBusMessage& call) {
    const auto options = qdbus_cast<QVariantMap>(call.arguments().last());
    path = u"%1/request/%2/%3"_s.arg(kDesktop, call.service().sliced(1).replace(u'.', u'_'),
                                     options.value(u"handle_token"_s).toString());
    asked = call.member();
    return {QVariant::fromValue(QDBusObjectPath(path))};
  }
  bool isAsked(const QString& method) {
    return waitFor([&] { return asked == method; });
  }
  void respond(uint outcome, const QVariantMap& results) {
    asked.clear();
    service.emitSignal(path, u"org.freedesktop.portal.Request"_s, u"Response"_s, {outcome, results});
  }
  void press(const QString& session, const QString& id) {
    service.emitSignal(kDesktop, kShortcuts, u"Activated"_s,
                       {QVariant::fromValue(QDBusObjectPath(session)), id, quint64(1), QVariantMap()});
  }

  FakeService service;
  QStringList registered;
  QString asked;
  QString path;
  QList<TestShortcut> requests;
  QStringList closed;
};

TEST(PortalHotKeys, HaveWhatTheDesktopGrants) {
  PrivateBus bus;
  FakePortal portal(bus.connection());
  PortalHotKeys keys(bus.connection(), u"com.example.Program"_s, &action);
  QSignalSpy pressed(&keys, &HotKeys::pressed);
  QSignalSpy lost(&keys, &HotKeys::lost);
  const HotKeyBinding binding = keys.bind(kToggle, kD);
  EXPECT_TRUE(binding.bound);
  EXPECT_EQ(binding.text, u"Ctrl+Alt+Super+D"_s);
  keys.bind(kProfile, kThree);
  QSignalSpy answered(&keys, &HotKeys::answered);
  EXPECT_FALSE(keys.hasAnswered());
  EXPECT_EQ(keys.unasked(), Capability::no({}));

  ASSERT_TRUE(portal.isAsked(u"CreateSession"_s));
  EXPECT_EQ(portal.registered, QStringList{u"com.example.Program"_s});
  const QString session = kDesktop + u"/session/one"_s;
  portal.respond(0, {{u"session_handle"_s, session}});
  ASSERT_TRUE(portal.isAsked(u"BindShortcuts"_s));
  ASSERT_EQ(portal.requests.size(), 2);
  EXPECT_FALSE(keys.hasAnswered()) << "the user is still asked";
  EXPECT_TRUE(answered.isEmpty());
  EXPECT_EQ(portal.requests[0].id, u"toggle"_s);
  EXPECT_EQ(portal.requests[0].facts,
            (QVariantMap{{u"description"_s, u"Show or hide"_s}, {u"preferred_trigger"_s, u"CTRL+ALT+LOGO+d"_s}}));
  EXPECT_EQ(portal.requests[1].id, u"profile-3"_s);
  EXPECT_EQ(portal.requests[1].facts.value(u"preferred_trigger"_s), u"SHIFT+3"_s);
  const QList<TestShortcut> granted{{u"toggle"_s, {}}};
  portal.respond(0, {{u"shortcuts"_s, QVariant::fromValue(granted)}});
  ASSERT_TRUE(waitFor([&] { return lost.size() == 1; }));
  EXPECT_EQ(lost[0][0], kProfile);
  EXPECT_TRUE(keys.hasAnswered());
  EXPECT_EQ(answered.size(), 1);

  portal.press(u"/somebody/else"_s, u"toggle"_s);
  portal.press(session, u"profile-3"_s);
  portal.press(session, u"toggle"_s);
  ASSERT_TRUE(waitFor([&] { return !pressed.isEmpty(); }));
  EXPECT_EQ(pressed.size(), 1);
  EXPECT_EQ(pressed[0][0], kToggle);

  // Another request is another session.
  keys.unbindAll();
  keys.bind(kProfile, kThree);
  EXPECT_FALSE(keys.hasAnswered());
  ASSERT_TRUE(portal.isAsked(u"CreateSession"_s));
  EXPECT_EQ(portal.closed, QStringList{session});
}

TEST(PortalHotKeys, NameTheOrderToBindWhereTheyAreRefused) {
  const char* const cases[] = {"no portal", "a portal without keys", "the user declined"};
  for (const char* const each : cases) {
    SCOPED_TRACE(each);
    PrivateBus bus;
    std::unique_ptr<FakePortal> portal;
    std::unique_ptr<FakeService> other;
    if (each == cases[1]) other = std::make_unique<FakeService>(bus.connection(), kName);
    if (each == cases[2]) portal = std::make_unique<FakePortal>(bus.connection());
    PortalHotKeys keys(bus.connection(), u"com.example.Program"_s, &action);
    QSignalSpy lost(&keys, &HotKeys::lost);
    keys.bind(kToggle, kD);
    EXPECT_FALSE(keys.hasAnswered());
    if (portal) {
      ASSERT_TRUE(portal->isAsked(u"CreateSession"_s));
      portal->respond(1, {});
    }
    ASSERT_TRUE(waitFor([&] { return lost.size() == 1; }));
    EXPECT_FALSE(keys.capability());
    EXPECT_TRUE(keys.hasAnswered());
    const HotKeyBinding binding = keys.bind(kToggle, kD);
    EXPECT_FALSE(binding.bound);
    EXPECT_EQ(
        binding.reason,
        u"Apps cannot register shortcuts on this desktop. Add one for “tarnwick --toggle” in the desktop’s settings."_s);
  }
}

TEST(PortalHotKeys, AreBoundAnewByAPortalThatComesBack) {
  PrivateBus bus;
  auto portal = std::make_unique<FakePortal>(bus.connection());
  PortalHotKeys keys(bus.connection(), u"com.example.Program"_s, &action);
  keys.bind(kToggle, kD);
  ASSERT_TRUE(portal->isAsked(u"CreateSession"_s));
  portal.reset();
  portal = std::make_unique<FakePortal>(bus.connection());
  EXPECT_TRUE(portal->isAsked(u"CreateSession"_s));
}

}  // namespace
}  // namespace tarnwick
