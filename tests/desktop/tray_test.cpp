// The mark in the tray, against a watcher of the test's own on the test's bus.
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdlib>

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
  QDir(home.path()).mkpath(u"Tarnwick"_s);
  QFile broken(home.filePath(u"Tarnwick/config.json"_s));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write("{");
  broken.close();
  Program program(home.path());
  ASSERT_TRUE(program.shows(2));  // The dock, and its message.

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
  const auto visible = [&] {
    QList<Entry> shown = layout().children;
    shown.removeIf([](const Entry& entry) { return !entry.properties.value(u"visible"_s, true).toBool(); });
    return shown;
  };
  const auto choose = [&](const QList<Entry>& entries, const QString& label) {
    const auto entry = std::ranges::find(entries, label, &Entry::label);
    ASSERT_NE(entry, entries.end()) << qPrintable(label);
    menu.call(u"Event"_s, entry->id, u"clicked"_s, QVariant::fromValue(QDBusVariant(QString())), 0u);
  };
  // The message is first, and choosing it dismisses it.
  const QString message = visible().first().label();
  EXPECT_TRUE(message.startsWith(u"Could not load settings."_s)) << qPrintable(message);
  choose(visible(), message);
  EXPECT_TRUE(program.shows(1));

  QStringList labels;
  for (const Entry& entry : visible()) labels << entry.label();
  // Whose settings were lost went through the setup before.
  EXPECT_EQ(labels, (QStringList{u"Settings…"_s, u""_s, u"Layout"_s, u"Show / Hide Dock"_s,
                                 u"Restore the System Dock"_s, u""_s, u"Help"_s, u""_s, u"Quit Tarnwick"_s}));
  const auto layouts = [&] {
    const QList<Entry> entries = visible();
    const auto submenu = std::ranges::find(entries, u"Layout"_s, &Entry::label);
    return submenu == entries.end() ? QList<Entry>() : submenu->children;
  };
  const auto checked = [&] {
    QStringList names;
    for (const Entry& entry : layouts()) {
      if (entry.properties.value(u"toggle-state"_s).toInt() == 1) names << entry.label();
    }
    return names;
  };
  EXPECT_EQ(checked(), QStringList{u"Fixed"_s});
  const QString other = u"Floating"_s;
  choose(layouts(), other);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return checked() == QStringList{other}; }));

  // The panel, and for trays that show no menus of others the menu, hang on an unseen window of their own.
  item.call(u"Activate"_s, 800, 10);
  EXPECT_TRUE(program.shows(2));
  item.call(u"Activate"_s, 800, 10);
  EXPECT_TRUE(program.shows(1));
  item.call(u"ContextMenu"_s, 800, 10);
  EXPECT_TRUE(program.shows(2));
  constexpr quint8 kEscape = 9;
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
    VirtualDisplay::current().tap(kEscape);
    return program.windows().size() == 1;
  }));

  choose(visible(), u"Show / Hide Dock"_s);
  EXPECT_TRUE(program.shows(0));
  choose(visible(), u"Quit Tarnwick"_s);
  EXPECT_EQ(program.end(), 0);
  bus.unregisterService(u"org.kde.StatusNotifierWatcher"_s);
}

/// A tray of the older kind, with a connection of its own, that comes after the program too.
TEST(Tray, AnOlderTrayIsAskedToTakeTheMark) {
  QTemporaryDir home;
  Program program(home.path());
  ASSERT_TRUE(program.shows(1));
  const VirtualDisplay& display = VirtualDisplay::current();
  xcb_connection_t* tray = xcb_connect(display.name().toLatin1().constData(), nullptr);
  const xcb_window_t window = xcb_generate_id(tray);
  xcb_create_window(tray, 0, window, display.root(), 0, 0, 32, 32, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    display.screen().root_visual, 0, nullptr);
  xcb_set_selection_owner(tray, window, display.atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
  xcb_client_message_event_t manager = {};
  manager.response_type = XCB_CLIENT_MESSAGE;
  manager.format = 32;
  manager.window = display.root();
  manager.type = display.atom("MANAGER");
  manager.data.data32[1] = display.atom("_NET_SYSTEM_TRAY_S0");
  manager.data.data32[2] = window;
  xcb_send_event(tray, 0, display.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY, reinterpret_cast<const char*>(&manager));
  xcb_flush(tray);
  const xcb_atom_t opcode = display.atom("_NET_SYSTEM_TRAY_OPCODE");
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
    bool asked = false;
    while (auto* event = reinterpret_cast<xcb_client_message_event_t*>(xcb_poll_for_event(tray))) {
      asked = asked || ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE && event->type == opcode);
      std::free(event);
    }
    return asked;
  }));
  program.signal(SIGTERM);
  EXPECT_EQ(program.end(), 0);
  xcb_disconnect(tray);
}

}  // namespace
}  // namespace tarnwick

#include "tray_test.moc"
