// Apps on the dock, under a real pointer and a real keyboard.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMenu>
#include <QStandardPaths>
#include <algorithm>
#include <vector>

#include "desktop/ShellTest.h"
#include "support/ForeignWindow.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class X11Apps : public ShellTest {
 protected:
  // X codes of keys by their place.
  static constexpr quint8 kEscapeKey = 9, kDigitOne = 10, kReturnKey = 36, kLetter = 38, kDownKey = 116,
                          kSuperKey = 133;

  X11Apps() { QDir().mkpath(entries()); }
  ~X11Apps() override {
    end();
    for (const QString& path : made_) QFile::remove(path);
  }

  static QString entries() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/applications"_s;
  }
  /// An installed app, whose windows have its name for a class. Starting it leaves a file of that name, no window.
  QString install(const QString& name) {
    const QString path = entries() + u'/' + name + u".desktop"_s;
    QFile entry(path);
    EXPECT_TRUE(entry.open(QIODevice::WriteOnly));
    entry.write(u"[Desktop Entry]\nType=Application\nName=%1\nExec=touch %2\n"_s.arg(name, started(name)).toUtf8());
    made_ << path;
    return path;
  }
  QString started(const QString& name) const { return folder.filePath(name + u".started"_s); }
  static DockWidget launcher(const QString& path) {
    return {QUuid::createUuid(), QString(kind::appLauncher), {}, {{u"path"_s, path}}};
  }
  std::unique_ptr<ForeignWindow> open(const QString& app, const QString& title, const QRect& frame) {
    auto window = std::make_unique<ForeignWindow>(display, frame);
    window->setText("_NET_WM_NAME", "UTF8_STRING", title.toUtf8());
    window->setText("WM_CLASS", "STRING", app.toUtf8() + '\0' + app.toUtf8() + '\0');
    EXPECT_TRUE(window->show());
    EXPECT_TRUE(comesTrue([&] { return isKnownInFront(*window); }));
    return window;
  }
  bool isInFront(const ForeignWindow& window) { return display.focus() == window.id(); }
  /// Whether the program has noticed as well; of windows that come quicker it sees the last alone.
  bool isKnownInFront(const ForeignWindow& window) {
    const QList<ClientWindow> all = adapters->services().windows.all();
    return isInFront(window) &&
           std::ranges::any_of(all, [&](const ClientWindow& each) { return each.active && each.id == window.id(); });
  }
  /// The tile of an app that runs without standing on the dock by itself.
  QPoint runningTile(const QString& app) {
    for (const RunningApp& each : store().unpinnedRunningApps(id())) {
      const QRectF place = view().applicationPlaces().value(each.identity);
      if (each.name == app && !place.isEmpty()) return place.translated(dock().contentOrigin(id())).center().toPoint();
    }
    return {};
  }
  /// Waits until the row holds so many apps, each at its place, and clicks at the end of the row are the dock's.
  bool showsRunning(int apps) {
    return inTime([&] {
      return store().unpinnedRunningApps(id()).size() == apps && view().applicationPlaces().size() >= apps &&
             !view().isMoving() && display.topLevelAt({glass().right() - 4, glass().center().y()}) != XCB_WINDOW_NONE;
    });
  }
  /// What comes of it must be waited for before the pointer goes on: the window manager holds the pointer while it
  /// looks at a press, and what is told afterwards is told where the pointer is by then.
  void click(QPoint place, quint8 button = 1) {
    time.advance(1);  // Not the second of a double click.
    display.click(place, button);
  }
  /// Keeps the button down there.
  void hold(QPoint place) {
    desk.moveTo(place);
    desk.settle();
    desk.button(true);
    EXPECT_TRUE(comesTrue([&] { return view().isHeld(); }));
  }
  QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
  bool menuOpens() {
    return comesTrue([&] { return menu() && menu()->isVisible(); });
  }
  bool menuCloses() {
    return comesTrue([&] { return !menu() && !isOpen(); });
  }
  QStringList lines() {
    QStringList texts;
    for (const QAction* each : menu()->actions()) texts << (each->isSeparator() ? u"-"_s : each->text());
    return texts;
  }
  void press(const QString& text) {
    const QList<QAction*> all = menu()->actions();
    const auto entry = std::ranges::find(all, text, &QAction::text);
    ASSERT_NE(entry, all.end()) << qPrintable(text);
    desk.click(menu()->mapToGlobal(menu()->actionGeometry(*entry).center()));
  }
  void choose(const QString& text) {
    press(text);
    EXPECT_TRUE(menuCloses());
  }
  DockConfiguration withApps(const QStringList& names) {
    DockConfiguration config;
    config.liveApps = true;
    for (qsizetype i = names.size(); i-- > 0;) config.profiles[0].widgets.prepend(launcher(install(names[i])));
    return config;
  }

  VirtualDisplay& display = VirtualDisplay::current();

 private:
  QStringList made_;
};

TEST_F(X11Apps, AnAppThatIsStartedPulsesUntilAWindowComesAlsoWhereItRunsAlready) {
  startShown(withApps({u"pad"_s}));
  ASSERT_TRUE(showsRunning(0));
  // Nothing else moves for longer than a blink.
  const auto isPulsing = [&] {
    QElapsedTimer moving;
    moving.start();
    return comesTrue([&] {
      if (!view().isMoving()) moving.restart();
      return moving.hasExpired(1500);
    });
  };
  const auto rests = [&] { return comesTrue([&] { return !view().isMoving(); }); };
  const auto opens = [&](int place) {
    auto window = open(u"pad"_s, u"a window"_s, QRect(place, 100, 300, 200));
    EXPECT_TRUE(rests());
    return window;
  };
  click(tile(0).center());
  EXPECT_TRUE(isPulsing());
  const auto first = opens(100);
  click(tile(0).center(), 2);
  EXPECT_TRUE(isPulsing()) << "it runs already";
  const auto second = opens(500);
  click(tile(0).center(), 2);
  EXPECT_TRUE(isPulsing());
  time.advance(10.1);
  EXPECT_TRUE(rests()) << "none comes";
}

TEST_F(X11Apps, AClickBringsTheLastWindowAloneAndFromThereOnListsThem) {
  startShown(withApps({}));
  const auto first = open(u"pad"_s, u"first"_s, QRect(100, 100, 300, 200));
  const auto second = open(u"pad"_s, u"second"_s, QRect(500, 100, 300, 200));
  const auto above = open(u"other"_s, u"above"_s, QRect(50, 50, 800, 300));
  ASSERT_TRUE(showsRunning(2));
  const QPoint pad = runningTile(u"Pad"_s);
  ASSERT_FALSE(pad.isNull()) << "a program without a desktop entry has its class for a name";
  desk.click(pad);
  EXPECT_TRUE(comesTrue([&] { return isInFront(*second); }));
  EXPECT_NE(display.topLevelAt({600, 200}), display.topLevelAt({60, 60}));
  EXPECT_EQ(display.topLevelAt({200, 200}), display.topLevelAt({60, 60})) << "the other one stays where it was";

  // In front, it lists them; one way after the other leaves the list.
  const struct {
    const char* name;
    std::function<void()> act;
    const ForeignWindow& front;
  } ways[] = {{"Escape", [&] { display.tap(kEscapeKey); }, *second},
              {"a second click", [&] { click(pad); }, *second},
              {"a click elsewhere",
               [&] {
                 desk.click({900, 500});
               },
               *second},
              {"keys",
               [&] {
                 for (const quint8 key : {kDownKey, kReturnKey}) display.tap(key);
               },
               *first}};
  for (const auto& [name, act, front] : ways) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(comesTrue([&] { return isKnownInFront(*second); }));
    click(pad);
    ASSERT_TRUE(menuOpens());
    EXPECT_EQ(lines(), (QStringList{u"first"_s, u"second"_s}));
    EXPECT_TRUE(menu()->actions()[1]->isChecked());
    act();
    EXPECT_TRUE(menuCloses());
    desk.settle();
    EXPECT_FALSE(menu());
    EXPECT_TRUE(comesTrue([&] { return isInFront(front); }));
  }

  // One that lies behind lists its windows as well while the button is held, though a click would bring one of them.
  click(runningTile(u"Other"_s));
  ASSERT_TRUE(comesTrue([&] { return isKnownInFront(*above); }));
  hold(pad);
  time.advance(0.3);
  EXPECT_FALSE(menu());
  time.advance(0.2);
  ASSERT_TRUE(menuOpens());
  desk.button(false);
  desk.settle();
  ASSERT_TRUE(menu()) << "letting go does not choose";
  EXPECT_EQ(lines(), (QStringList{u"first"_s, u"second"_s}));
  choose(u"second"_s);
  EXPECT_TRUE(comesTrue([&] { return isInFront(*second); }));
}

TEST_F(X11Apps, ARunningAppIsKept) {
  install(u"pad"_s);
  startShown(withApps({}));
  const auto window = open(u"pad"_s, u"first"_s, QRect(100, 100, 300, 200));
  ASSERT_TRUE(showsRunning(1));
  const qsizetype before = store().widgets().size();
  desk.click(runningTile(u"pad"_s), Qt::RightButton);
  ASSERT_TRUE(menuOpens());
  EXPECT_EQ(lines().last(2), (QStringList{u"Add Widgets…"_s, u"Settings…"_s}));
  choose(u"Keep in Dock"_s);
  ASSERT_TRUE(comesTrue([&] { return store().widgets().size() == before + 1; }));
  EXPECT_TRUE(inTime([&] { return runningTile(u"pad"_s).isNull(); })) << "its own tile stands for it now";
}

TEST_F(X11Apps, WhatTheDocksOwnMenuSaysIsDone) {
  startShown(twoProfiles());
  const auto between = [&] { return QPoint(tile(1).right() + 4, glass().center().y()); };
  const auto shows = [](const QString& title) {
    return std::ranges::any_of(QApplication::topLevelWidgets(), [&title](const QWidget* each) {
      return each->isVisible() && each->windowTitle().startsWith(title);
    });
  };
  const struct {
    QStringList path;
    std::function<bool()> isDone;
  } entries[] = {{{u"Add Widgets…"_s}, [&] { return shows(u"Add Widgets"_s); }},
                 {{u"Settings…"_s}, [&] { return shows(u"Tarnwick Settings"_s); }},
                 {{u"Help"_s}, [&] { return shows(u"Tarnwick Help"_s); }},
                 {{u"Profiles"_s, u"Work"_s}, [&] { return store().profile().name == u"Work"_s; }},
                 {{u"Layout"_s, u"Floating"_s}, [&] { return store().config().layout == DockLayout::Floating; }},
                 {{u"Hide"_s}, [&] { return !takesClicks(between()); }}};
  for (const auto& [path, isDone] : entries) {
    SCOPED_TRACE(path.join(u" > ").toStdString());
    ASSERT_TRUE(inTime([&] { return takesClicks(between()) && !view().isMoving(); }));
    EXPECT_FALSE(isDone());
    time.advance(1);
    desk.click(between(), Qt::RightButton);
    ASSERT_TRUE(menuOpens());
    EXPECT_EQ(lines().join(u'|'), u"Add Widgets…|Settings…|-|Layout|Profiles|Hide|-|Help|Quit Tarnwick"_s);
    for (const QString& each : path) {
      const QMenu* const before = menu();
      press(each);
      if (each == path.last()) break;
      ASSERT_TRUE(comesTrue([&] { return menu() != before && menu()->isVisible(); }));
    }
    EXPECT_TRUE(inTime(isDone));
    EXPECT_TRUE(menuCloses());
    for (QWidget* each : QApplication::topLevelWidgets())
      if (!each->windowTitle().isEmpty()) each->close();
  }
}

TEST_F(X11Apps, ATileIsRemovedBeyondSixtyPointsAndEscapeBringsItBack) {
  startShown(DockConfiguration());
  const QList<DockWidget> before = store().widgets();
  const auto carry = [&](int above) {
    const QPoint held = tile(1).center();
    hold(held);
    for (const QPoint& place : {held - QPoint(0, 20), QPoint(held.x(), glass().top() - above)}) {
      desk.moveTo(place);
      desk.settle();
    }
  };
  const auto letGo = [&] {
    desk.button(false);
    EXPECT_TRUE(comesTrue([&] { return !view().isHeld(); }));
    desk.settle();
  };
  carry(58);
  letGo();
  EXPECT_EQ(store().widgets(), before);
  carry(150);
  display.tap(kEscapeKey);
  EXPECT_TRUE(comesTrue([&] { return !view().isHeld(); }));
  letGo();
  EXPECT_EQ(store().widgets(), before) << "thought better of";
  carry(62);
  letGo();
  EXPECT_TRUE(comesTrue([&] { return store().widgets().size() == before.size() - 1; }));
}

TEST_F(X11Apps, SuperAndADigitStartOrBringForwardAndNumbersGoWithAnyOtherKey) {
  startShown(withApps({u"one"_s, u"two"_s}));
  const auto window = open(u"one"_s, u"a window"_s, QRect(100, 100, 300, 200));
  const auto other = open(u"other"_s, u"another"_s, QRect(500, 100, 300, 200));
  ASSERT_TRUE(showsRunning(1));
  display.tap(kDigitOne, {kSuperKey});
  EXPECT_TRUE(comesTrue([&] { return isInFront(*window); }));
  EXPECT_FALSE(QFile::exists(started(u"one"_s)));
  display.tap(kDigitOne + 1, {kSuperKey});
  EXPECT_TRUE(comesTrue([&] { return QFile::exists(started(u"two"_s)); }));
  time.advance(10.1);
  ASSERT_TRUE(inTime([&] { return !view().isMoving(); }));

  const auto seen = [&] { return display.screenshot().copy(tile(0)); };
  display.settle();
  const QImage atRest = seen();
  const qsizetype waiting = time.waiting();
  display.key(kSuperKey, true);
  ASSERT_TRUE(comesTrue([&] { return time.waiting() > waiting; }));
  time.advance(0.35);
  ASSERT_TRUE(comesTrue([&] { return seen() != atRest; }));
#ifdef TARNWICK_HAS_XCB_SYNC
  display.tap(kLetter);
  EXPECT_TRUE(comesTrue([&] { return seen() == atRest; })) << "a key that goes to the window in front";
#endif
  display.key(kSuperKey, false);
}

TEST_F(X11Apps, OfSixtyRunningAppsEachCanBeReached) {
  constexpr int kApps = 60;
  startShown(withApps({}));
  std::vector<std::unique_ptr<ForeignWindow>> windows;
  for (int app = 0; app < kApps; ++app)
    windows.push_back(open(u"app%1"_s.arg(app), QString(1000, u'x'), QRect(100 + app, 100, 300, 200)));
  ASSERT_TRUE(showsRunning(kApps));
  EXPECT_TRUE(desk.display(0).contains(glass()));
  const QList<RunningApp> apps = store().unpinnedRunningApps(id());
  for (const int app : {0, kApps / 2, kApps - 1}) {
    SCOPED_TRACE(app);
    const quint64 identity = apps[app].identity;
    const auto item = [&] {
      for (qsizetype each = 0; each < view().itemCount(); ++each)
        if (view().itemText(each).name == apps[app].name) return each;
      return qsizetype(-1);
    };
    // The keyboard brings it into sight.
    dock().focus();
    ASSERT_TRUE(comesTrue([&] { return view().hasFocus(); }));
    view().focusItem(item());
    ASSERT_TRUE(inTime([&] { return view().isItemSeen(item()) && !view().isMoving(); }));
    const QPoint place =
        view().applicationPlaces().value(identity).translated(dock().contentOrigin(id())).center().toPoint();
    EXPECT_TRUE(glass().contains(place));
    time.advance(1);
    desk.click(place);
    EXPECT_TRUE(comesTrue([&] {
      const auto brought = store().unpinnedRunningApps(id()).value(app);
      return brought.identity == identity && brought.active;
    }));
    desk.moveTo(desk.away());
  }
}

}  // namespace
}  // namespace tarnwick::testing
