// Writing in the command bar through an input method: the program itself, its toolkit's connection to one, and a
// method that turns one key into a word.
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>

#include "config/Persistence.h"
#include "desktop/Program.h"
#include "desktop/ShellTest.h"
#include "platform_dbus/FakeService.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

/// How an input method sends a text, without anything that says how it is to look.
struct MethodText {
  QString text;
};
struct MethodLooks {};

}  // namespace tarnwick::testing

Q_DECLARE_METATYPE(tarnwick::testing::MethodText)
Q_DECLARE_METATYPE(tarnwick::testing::MethodLooks)

namespace tarnwick::testing {

QDBusArgument& operator<<(QDBusArgument& into, const MethodLooks&) {
  into.beginStructure();
  into << u"IBusAttrList"_s << QVariantMap();
  into.beginArray(QMetaType::fromType<QDBusVariant>());
  into.endArray();
  into.endStructure();
  return into;
}
QDBusArgument& operator<<(QDBusArgument& into, const MethodText& text) {
  into.beginStructure();
  into << u"IBusText"_s << QVariantMap() << text.text << QDBusVariant(QVariant::fromValue(MethodLooks()));
  into.endStructure();
  return into;
}
// Nothing is received in these forms.
const QDBusArgument& operator>>(const QDBusArgument& from, MethodLooks&) { return from; }
const QDBusArgument& operator>>(const QDBusArgument& from, MethodText&) { return from; }

namespace {

constexpr uint kKeyOfTwo = '2';
const QString kContext = u"/org/freedesktop/IBus/InputContext_1"_s;

class InputMethodScenario : public ::testing::Test {
 protected:
  InputMethodScenario() {
    qDBusRegisterMetaType<MethodLooks>();
    qDBusRegisterMetaType<MethodText>();
    method.answer(u"CreateInputContext"_s,
                  [](const QDBusMessage&) { return QVariantList{QVariant::fromValue(QDBusObjectPath(kContext))}; });
    method.answer(u"ProcessKeyEvent"_s, [this](const QDBusMessage& message) {
      const uint key = message.arguments().value(0).toUInt();
      keys << key;
      return QVariantList{key == kKeyOfTwo};
    });
    for (const auto& name : {u"SetCapabilities"_s, u"FocusIn"_s, u"FocusOut"_s, u"Reset"_s, u"SetCursorLocation"_s,
                             u"SetCursorLocationRelative"_s, u"SetSurroundingText"_s}) {
      method.answer(name, [this, name](const QDBusMessage&) {
        if (name == u"FocusIn"_s) ++focused;
        return QVariantList();
      });
    }
    Program::setVariable(u"QT_IM_MODULE"_s, u"ibus"_s);
    Program::setVariable(u"IBUS_USE_PORTAL"_s, u"1"_s);
  }
  ~InputMethodScenario() override { Program::resetVariables(); }

  void say(const QString& signal, const QString& text, const QVariantList& more = {}) {
    const QVariant sent = QVariant::fromValue(QDBusVariant(QVariant::fromValue(MethodText{text})));
    method.emitSignal(kContext, u"org.freedesktop.IBus.InputContext"_s, signal, QVariantList{sent} + more);
  }
  bool comesTrue(const std::function<bool()>& predicate) const { return VirtualDisplay::waitUntil(predicate); }

  FakeService method{QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"input method"_s),
                     u"org.freedesktop.portal.IBus"_s};
  QList<uint> keys;
  int focused = 0;
  QTemporaryDir folder;
  TestDesk& desk = TestDesk::current();
};

TEST_F(InputMethodScenario, WhatItMakesOfAKeyIsWrittenInTheBar) {
  DockConfiguration config;
  config.onboardingComplete = true;
  Persistence::save(config, folder.filePath(u"Tarnwick/config.json"_s));
  const Program program(folder.path());
  ASSERT_TRUE(comesTrue([&] {
    const auto owner = QDBusConnection::sessionBus().interface()->servicePid(u"com.brindlemoor.Tarnwick"_s);
    return owner.value() == static_cast<uint>(program.pid());
  }));
  const auto terminal = desk.terminal();
  ASSERT_EQ(runToEnd(folder.path(), {u"--command-bar"_s}).status, 0);
  ASSERT_TRUE(comesTrue([&] { return focused > 0; }));
  desk.type({KEY_2});
  ASSERT_TRUE(comesTrue([&] { return keys.contains(kKeyOfTwo); }));
  say(u"UpdatePreeditText"_s, u"9+9"_s, {1U, true});
  say(u"CommitText"_s, u"2+2"_s);
  desk.type({KEY_ENTER});
  // The keyboard is back in the terminal once the bar has gone.
  EXPECT_TRUE(comesTrue([&] {
    desk.type({KEY_V}, {KEY_LEFTCTRL});
    return terminal->typed().contains("4");
  })) << terminal->typed().constData();
  EXPECT_FALSE(terminal->typed().contains("2")) << "what was only being written is no text";
}

}  // namespace
}  // namespace tarnwick::testing
