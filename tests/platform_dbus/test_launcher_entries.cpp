#include <QSignalSpy>
#include <limits>

#include "platform/dbus/LauncherEntries.h"
#include "platform_dbus/PrivateBus.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

void say(QDBusConnection connection, const QString& application, const QVariantMap& properties) {
  auto signal = QDBusMessage::createSignal(u"/any/path"_s, u"com.canonical.Unity.LauncherEntry"_s, u"Update"_s);
  signal << application << properties;
  ASSERT_TRUE(connection.send(signal));
}

TEST(LauncherEntries, ReadWhatProgramsSayUntilTheyLeave) {
  PrivateBus bus;
  LauncherEntries entries(bus.connection());
  entries.start();
  const QSignalSpy changed(&entries, &LauncherHints::changed);
  const auto hint = [&] { return entries.of(u"org.example.Mail"_s); };
  const QString mail = u"application://org.example.Mail.desktop"_s;
  std::optional<QDBusConnection> first = bus.connection();
  const QDBusConnection second = bus.connection();

  struct Case {
    QVariantMap said;
    LauncherHint expected;
  };
  const Case cases[] = {
      {{{u"count"_s, qint64(12)}, {u"count-visible"_s, true}}, {12, std::nullopt, false}},
      // Each word stays until the same word is said anew.
      {{{u"progress"_s, 0.25}, {u"progress-visible"_s, true}}, {12, 0.25, false}},
      {{{u"progress"_s, 7.0}, {u"urgent"_s, true}}, {12, 1.0, true}},
      {{{u"progress"_s, std::numeric_limits<double>::quiet_NaN()}}, {12, std::nullopt, true}},
      {{{u"count"_s, u"many"_s}, {u"progress-visible"_s, false}}, {0, std::nullopt, true}},
      {{{u"count-visible"_s, false}}, {std::nullopt, std::nullopt, true}},
  };
  for (const Case& c : cases) {
    say(*first, mail, c.said);
    EXPECT_TRUE(waitFor([&] { return hint() == c.expected; })) << qPrintable(c.said.firstKey());
  }

  say(second, mail, {{u"count"_s, qint64(3)}, {u"count-visible"_s, true}});
  ASSERT_TRUE(waitFor([&] { return hint() == LauncherHint{3, std::nullopt, true}; }));
  EXPECT_EQ(changed.last().at(0), u"org.example.Mail"_s);
  QDBusConnection::disconnectFromBus(first->name());
  first.reset();
  EXPECT_TRUE(waitFor([&] { return hint() == LauncherHint{3, std::nullopt, false}; }));

  // Nonsense is no application, and nothing that is done later is lost behind it.
  const qsizetype before = changed.size();
  say(second, u"org.example.Mail.desktop"_s, {{u"urgent"_s, true}});
  say(second, u"application://"_s, {{u"urgent"_s, true}});
  say(second, u"application://other.desktop"_s, {{u"urgent"_s, true}});
  ASSERT_TRUE(waitFor([&] { return entries.of(u"other"_s).urgent; }));
  EXPECT_EQ(changed.size(), before + 1);
  bus.stop();
  EXPECT_TRUE(waitFor([&] { return entries.of(u"other"_s) == LauncherHint() && hint() == LauncherHint(); }));
}

}  // namespace
}  // namespace tarnwick
