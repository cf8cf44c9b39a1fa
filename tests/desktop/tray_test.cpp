// The mark in the tray, against a watcher of the test's own on the test's bus.
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusReply>
#include <QTemporaryDir>

#include "desktop/Program.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using tarnwick::testing::Program;
using tarnwick::testing::VirtualDisplay;

/// One entry of a menu as it travels over the bus, with what lies below it.
struct Entry {
  int id = 0;
  QVariantMap properties;
  QList<Entry> children;

  QString label() const { return properties.value(u"label"_s).toString().remove(u'_'); }
};

Entry readEntry(const QDBusArgument& argument) {
  Entry entry;
  argument.beginStructure();
  argument >> entry.id >> entry.properties;
  argument.beginArray();
  while (!argument.atEnd()) {
    QDBusVariant child;
    argument >> child;
    entry.children << readEntry(child.variant().value<QDBusArgument>());
  }
  argument.endArray();
  argument.endStructure();
  return entry;
}

class Watcher : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
  Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
  Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
  Q_PROPERTY(int ProtocolVersion READ version)

 public:
  bool hasHost() const { return true; }
  QStringList items() const { return items_; }
  int version() const { return 0; }

 public Q_SLOTS:
  void RegisterStatusNotifierItem(const QString& service) { items_ << service; }
  void RegisterStatusNotifierHost(const QString&) {}

 private:
  QStringList items_;
};

/// The tray comes after the program, and the test plays the person who opens the menu.
TEST(Tray, ComesWithTheTrayAndItsMenuActs) {
  QTemporaryDir home;
  Program program(home.path());
  ASSERT_TRUE(program.shows(1));

  QDBusConnection bus = QDBusConnection::sessionBus();
  Watcher watcher;
  ASSERT_TRUE(bus.registerObject(u"/StatusNotifierWatcher"_s, &watcher,
                                 QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties));
  ASSERT_TRUE(bus.registerService(u"org.kde.StatusNotifierWatcher"_s));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return !watcher.items().isEmpty(); }));

  const QString service = watcher.items().first();
  QDBusInterface item(service, u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s, bus);
  const auto menuPath = item.property("Menu").value<QDBusObjectPath>().path();
  QDBusInterface menu(service, menuPath, u"com.canonical.dbusmenu"_s, bus);
  const auto layout = [&] {
    menu.call(u"AboutToShow"_s, 0);
    const QDBusMessage reply = menu.call(u"GetLayout"_s, 0, -1, QStringList());
    return reply.arguments().size() == 2 ? readEntry(reply.arguments().at(1).value<QDBusArgument>()) : Entry();
  };
  QStringList labels;
  Entry toggle;
  const Entry top = layout();
  for (const Entry& entry : top.children) {
    labels << entry.label();
    if (entry.label() == u"Show / Hide Dock"_s) toggle = entry;
  }
  EXPECT_EQ(labels, (QStringList{u"Continue Setup…"_s, u"Settings…"_s, u""_s, u"Layout"_s, u"Show / Hide Dock"_s,
                                 u"Restore the System Dock"_s, u""_s, u"Help"_s, u""_s, u"Quit Tarnwick"_s}));
  ASSERT_NE(toggle.id, 0);
  menu.call(u"Event"_s, toggle.id, u"clicked"_s, QVariant::fromValue(QDBusVariant(QString())), 0u);
  EXPECT_TRUE(program.shows(0));

  program.signal(SIGTERM);
  EXPECT_EQ(program.end(), 0);
  bus.unregisterService(u"org.kde.StatusNotifierWatcher"_s);
}

}  // namespace
}  // namespace tarnwick

#include "tray_test.moc"
