#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include "platform/dbus/BusService.h"
#include "platform/dbus/PortalScreenColors.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"

namespace tarnwick {

struct Rgb {
  double red = 0, green = 0, blue = 0;
};
QDBusArgument& operator<<(QDBusArgument& argument, const Rgb& color) {
  argument.beginStructure();
  argument << color.red << color.green << color.blue;
  argument.endStructure();
  return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, Rgb& color) {
  argument.beginStructure();
  argument >> color.red >> color.green >> color.blue;
  argument.endStructure();
  return argument;
}

namespace {

using namespace Qt::StringLiterals;

TEST(PortalScreenColors, TellsWhatWasPickedOrThatNothingCanBe) {
  qDBusRegisterMetaType<Rgb>();
  PrivateBus bus;
  const QString sentence = u"This desktop cannot pick a color from the screen."_s;
  const struct {
    const char* name;
    uint outcome;
    QVariant color;
    QString answers;
  } cases[] = {
      {"a color", 0, QVariant::fromValue(Rgb{46 / 255.0, 140 / 255.0, 148 / 255.0}), u"#2E8C94"_s},
      {"out of range", 0, QVariant::fromValue(Rgb{-1, 0.5, 7}), u"#0080FF"_s},
      {"no number", 0, QVariant::fromValue(Rgb{std::nan(""), 0, 0}), sentence},
      {"another type", 0, u"red"_s, sentence},
      {"no color", 0, {}, sentence},
      {"another end", 2, {}, sentence},
  };
  auto portal = std::make_unique<FakeService>(bus.connection(), u"org.freedesktop.portal.Desktop"_s);
  QString path;
  portal->answer(u"PickColor"_s, [&](const QDBusMessage& call) {
    const auto options = qdbus_cast<QVariantMap>(call.arguments()[1]);
    path = u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(call.service().sliced(1).replace(u'.', u'_'),
                                                                  options.value(u"handle_token"_s).toString());
    return QVariantList{QVariant::fromValue(QDBusObjectPath(path))};
  });
  PortalScreenColors colors(bus.connection());
  QStringList answers;
  const auto tell = [&](const QString& text) { answers << text; };
  QObject context;
  // It listens once it has learned who the portal is, which it asked before this.
  bool isListening = false;
  ask(bus.connection(),
      QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
                                     u"GetId"_s),
      &context, [&](const QDBusMessage&) { isListening = true; });
  ASSERT_TRUE(waitFor([&] { return isListening; }));
  const auto begin = [&](QObject* forWhom) {
    path.clear();
    answers.clear();
    colors.pick(forWhom, tell, tell);
    ASSERT_TRUE(waitFor([&] { return !path.isEmpty(); }));
  };
  const auto respond = [&](const QString& request, uint outcome, const QVariant& color) {
    portal->emitSignal(request, u"org.freedesktop.portal.Request"_s, u"Response"_s,
                       {outcome, color.isValid() ? QVariantMap{{u"color"_s, color}} : QVariantMap()});
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    begin(&context);
    respond(u"/somebody/else"_s, 0, QVariant::fromValue(Rgb{}));
    respond(path, each.outcome, each.color);
    EXPECT_TRUE(waitFor([&] { return !answers.isEmpty(); }));
    EXPECT_EQ(answers, QStringList{each.answers});
  }

  // Cancelled, or nobody left to answer: nothing arrives before the next picking's answer.
  begin(&context);
  respond(path, 1, {});
  {
    QObject gone;
    begin(&gone);
  }
  respond(path, 0, cases[0].color);
  begin(&context);
  respond(path, 0, cases[0].color);
  EXPECT_TRUE(waitFor([&] { return !answers.isEmpty(); }));
  EXPECT_EQ(answers, QStringList{u"#2E8C94"_s});

  portal.reset();
  answers.clear();
  colors.pick(&context, tell, tell);
  EXPECT_TRUE(waitFor([&] { return answers == QStringList{sentence}; }));
}

}  // namespace
}  // namespace tarnwick
