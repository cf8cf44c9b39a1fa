#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>

#include "app/DockCommands.h"
#include "app/DockMenus.h"
#include "app/DockQuestions.h"
#include "apps/apps_fixture.h"
#include "config/CalendarFolders.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"
#include "support/TestServices.h"
#include "views/theme/MenuStyle.h"

namespace tarnwick::test {
namespace {

class CommandsTest : public AppsTest {
 protected:
  void SetUp() override {
    program(u"note"_s, "#!/bin/sh\nprintf '%s\\n' x \"$@\" > %1.part\nmv %1.part %1\n"_L1.arg(root(u"out"_s)));
    write(system(u"editor.desktop"_s),
          application(
              u"Editor & Co"_s, u"note --start"_s,
              u"Actions=new-window;tips;\nMimeType=inode/directory;\n\n[Desktop Action new-window]\nName=New Window\n"
              "Exec=note --new\n\n[Desktop Action tips]\nName=Tips\nExec=note --tips\n"_s));
    desktop = std::make_unique<TestServices>(scheduler, environment,
                                             LaunchEnvironment::from(variables({{"PATH", "/usr/bin:/bin"}})));
    services = std::make_unique<Services>(desktop->all());
    noDesktop = std::make_unique<NoDesktop>(scheduler);
    store = std::make_unique<AppStore>(noDesktop->diagnosticSetup());
    edits = std::make_unique<UndoableEdits>(*store, desktop->installedApps, undo);
    tiles = std::make_unique<DockCommands>(*store, *services, asked);
    menus = std::make_unique<DockMenus>(*store, *services, asked, *edits, *tiles);
    desktop->runningApps.start();
    ASSERT_TRUE(waitFor([&] { return desktop->installedApps.loaded(); }));
    store->edit([&](DockConfiguration& config) {
      config.profiles[0].widgets = {
          {QUuid::createUuid(), u"appLauncher"_s, {}, {{u"path"_s, system(u"editor.desktop"_s)}}},
          {QUuid::createUuid(), u"folderLauncher"_s, {}, {{u"path"_s, root(u"home"_s)}}},
          {QUuid::createUuid(), u"trash"_s, {}, {}},
          {QUuid::createUuid(), u"digitalClock"_s, {}, {}},
          {QUuid::createUuid(), u"dockSpace"_s, {}, {}}};
    });
  }
  const DockWidget& widget(qsizetype index) const { return store->widgets()[index]; }
  QString editor() const { return system(u"editor.desktop"_s); }
  QString ran() {
    QFile file(root(u"out"_s));
    EXPECT_TRUE(waitFor([&] { return file.exists(); }));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QString words = QString::fromUtf8(file.readAll()).trimmed().split(u'\n').mid(1).join(u' ');
    file.remove();
    return words;
  }
  static QString lines(const QList<DockMenuEntry>& entries) {
    QStringList lines;
    for (const DockMenuEntry& entry : entries) {
      const QString mark = entry.checked.value_or(false) ? u"*"_s : QString();
      lines << (entry.text.isEmpty() ? u"-"_s : entry.run ? mark + entry.text : u'(' + entry.text + u')');
    }
    return lines.join(u'|');
  }
  static void choose(const QList<DockMenuEntry>& entries, const QString& text) {
    for (const DockMenuEntry& entry : entries) {
      if (entry.text == text) return entry.run();
    }
    FAIL() << text.toStdString();
  }

  void click(qsizetype index) { tiles->activateTile(u"L"_s, widget(index).id); }
  FakeWindows& windows() { return desktop->windows; }
  void showThisWorkspaceOnly(bool only) {
    store->edit([only](DockConfiguration& config) {
      DeskOptions desk = config.desk();
      desk.workspaceWindows = only;
      config.setDesk(desk);
    });
  }

  TestScheduler scheduler;
  UndoStack undo;
  RecordingCommands asked;
  std::unique_ptr<TestServices> desktop;
  std::unique_ptr<Services> services;
  std::unique_ptr<NoDesktop> noDesktop;
  std::unique_ptr<AppStore> store;
  std::unique_ptr<UndoableEdits> edits;
  std::unique_ptr<DockCommands> tiles;
  std::unique_ptr<DockMenus> menus;
};

TEST_F(CommandsTest, WhatCouldNotBeOpenedIsSaidForEightSecondsOfNobodyPointing) {
  const QString says = u"No installed app opens “x”."_s;
  const struct {
    const char* name;
    QList<std::pair<double, std::function<void()>>> then;  ///< So many seconds after what was before.
    double rest;
    bool stays;
  } rows[] = {
      {"not yet", {}, 7.9, true},
      {"eight seconds", {}, 8.1, false},
      {"said again", {{7, [&] { Q_EMIT desktop->opener.failed(says); }}}, 7.9, true},
      {"pointed at", {{7, [&] { tiles->holdMessage(true); }}}, 60, true},
      {"pointed at before",
       {{7, [&] { tiles->holdMessage(true); }}, {20, [&] { tiles->holdMessage(false); }}},
       7.9,
       true},
      {"long before", {{7, [&] { tiles->holdMessage(true); }}, {20, [&] { tiles->holdMessage(false); }}}, 8.1, false},
  };
  for (const auto& each : rows) {
    SCOPED_TRACE(each.name);
    Q_EMIT desktop->opener.failed(says);
    for (const auto& [seconds, what] : each.then) {
      scheduler.advance(seconds);
      what();
    }
    scheduler.advance(each.rest);
    EXPECT_EQ(store->error(), each.stays ? says : QString());
  }
  // One that stays is not this one.
  store->setError(u"The disk is full."_s);
  tiles->holdMessage(false);
  scheduler.advance(60);
  EXPECT_FALSE(store->error().isEmpty());
}

TEST_F(CommandsTest, AClickStartsBringsForwardAndMinimises) {
  click(0);
  EXPECT_EQ(ran(), u"--start"_s);
  scheduler.advance(1);
  EXPECT_TRUE(tiles->isLaunching(editor()));
  windows().open(1, u"editor"_s);
  EXPECT_FALSE(tiles->isLaunching(editor()));
  windows().open(2, u"editor"_s);
  windows().open(3, u"other"_s);
  windows().activate(1);
  windows().activate(3);
  windows().activated.clear();

  click(0);
  EXPECT_EQ(windows().activated, QList<quint64>{1}) << "the one that was used last, and no other";
  click(0);
  EXPECT_TRUE(windows().minimised.isEmpty()) << "a double click is one";
  scheduler.advance(1);
  const QSignalSpy choices(tiles.get(), &DockCommands::windowChoiceRequested);
  click(0);
  EXPECT_TRUE(windows().minimised.isEmpty());
  EXPECT_EQ(choices.size(), 1) << "of two windows the user chooses one";
  scheduler.advance(1);
  windows().windows[1].elsewhere = true;
  Q_EMIT windows().changed();
  click(0);
  EXPECT_EQ(choices.size(), 2) << "the choice lists the one on another workspace too";
  scheduler.advance(1);
  showThisWorkspaceOnly(true);
  click(0);
  EXPECT_EQ(windows().minimised, QList<quint64>{1}) << "the only one that the dock shows";
  EXPECT_EQ(choices.size(), 2);
  showThisWorkspaceOnly(false);
  windows().windows[1].elsewhere = false;
  windows().minimised.clear();
  tiles->openTile(u"L"_s, widget(0).id);
  EXPECT_TRUE(windows().minimised.isEmpty()) << "a menu's Open never takes away";

  // A second window, or the one that is there brought forward, ends the feedback; so do ten seconds.
  tiles->newWindow(tiles->applicationOf(widget(0)));
  EXPECT_EQ(ran(), u"--new"_s);
  windows().activate(1);
  EXPECT_TRUE(tiles->isLaunching(editor()));
  scheduler.advance(DockCommands::kLaunchFeedback - 0.1);
  EXPECT_TRUE(tiles->isLaunching(editor()));
  scheduler.advance(0.2);
  EXPECT_FALSE(tiles->isLaunching(editor()));

  const quint64 application = tiles->applicationOf(widget(0));
  tiles->quit(application);
  EXPECT_EQ(windows().windows.size(), 1);
  EXPECT_EQ(tiles->applicationOf(widget(0)), 0u);
  tiles->activateApplication(u"L"_s, application);
  tiles->newWindowOfTile(widget(0).id);
  EXPECT_EQ(ran(), u"--new"_s);
}

TEST_F(CommandsTest, WindowsOfOtherDesktopsStayThereWhereSomeAreHere) {
  windows().open(1, u"editor"_s);
  windows().open(2, u"editor"_s);
  windows().open(3, u"other"_s);
  const auto activate = [&](bool first, bool second) {
    windows().windows[0].elsewhere = first;
    windows().windows[1].elsewhere = second;
    windows().activate(3);
    windows().activated.clear();
    scheduler.advance(1);
    click(0);
    return windows().activated;
  };
  windows().activate(1);
  EXPECT_EQ(activate(false, false), QList<quint64>{1});
  EXPECT_EQ(activate(true, false), QList<quint64>{2});
  EXPECT_EQ(activate(true, true), QList<quint64>{2}) << "used last, wherever it is";
}

TEST_F(CommandsTest, TheWheelGoesRoundTheWindows) {
  const QList<quint64> all{7, 8, 9};
  EXPECT_EQ(DockCommands::nextWindow(all, 9, 1), 7u);
  EXPECT_EQ(DockCommands::nextWindow(all, 7, -1), 9u);
  EXPECT_EQ(DockCommands::nextWindow(all, 5, -1), 7u);
  EXPECT_EQ(DockCommands::nextWindow({}, 5, 1), 0u);

  for (const quint64 id : all) windows().open(id, u"editor"_s);
  windows().open(20, u"other"_s);
  windows().activate(8);
  windows().activate(20);
  windows().activated.clear();
  const quint64 application = tiles->applicationOf(widget(0));
  for (int i = 0; i < 4; ++i) tiles->cycleWindows(u"L"_s, application, 1);
  tiles->cycleWindows(u"L"_s, application, -1);
  EXPECT_EQ(windows().activated, (QList<quint64>{8, 9, 7, 8, 7})) << "the latest first, then in their own order";
}

TEST_F(CommandsTest, HowQuickADoubleClickIsTheDesktopSays) {
  const int before = QApplication::doubleClickInterval();
  const auto clicks = [&](int interval, double between) {
    QApplication::setDoubleClickInterval(interval);
    scheduler.advance(5);
    asked.asked.clear();
    click(3);
    scheduler.advance(between);
    click(3);
    return asked.asked.size();
  };
  EXPECT_EQ(clicks(1000, 0.9), 1);
  EXPECT_EQ(clicks(1000, 1.1), 2);
  EXPECT_EQ(clicks(200, 0.3), 2);
  QApplication::setDoubleClickInterval(before);
}

TEST_F(CommandsTest, ADockForItsOwnDisplayLeavesTheWindowsOfOthersAlone) {
  store->edit([](DockConfiguration& config) {
    DeskOptions desk = config.desk();
    desk.displayWindows = true;
    config.setDesk(desk);
  });
  for (const quint64 id : {1, 2, 3}) windows().open(id, u"editor"_s);
  windows().windows[0].screens = {u"L"_s};
  windows().windows[1].screens = {u"R"_s};
  windows().windows[2].screens = {u"R"_s};
  const quint64 editorRuns = tiles->applicationOf(widget(0));
  const QSignalSpy choices(tiles.get(), &DockCommands::windowChoiceRequested);
  windows().activate(3);
  windows().activated.clear();

  click(0);
  EXPECT_EQ(windows().activated, QList<quint64>{1}) << "the one in front is on the other display";
  EXPECT_TRUE(windows().minimised.isEmpty());
  scheduler.advance(1);
  click(0);
  EXPECT_EQ(windows().minimised, QList<quint64>{1}) << "the only one here";
  windows().activated.clear();
  tiles->activateApplication(u"R"_s, editorRuns);
  EXPECT_EQ(windows().activated, QList<quint64>{3});
  scheduler.advance(1);
  tiles->activateApplication(u"R"_s, editorRuns);
  EXPECT_EQ(choices.size(), 1) << "of the two there";
  windows().activated.clear();
  choose(menus->application(editorRuns, u"L"_s), u"Open Editor & Co"_s);
  EXPECT_EQ(windows().activated, QList<quint64>{1});
  windows().activated.clear();
  for (int i = 0; i < 3; ++i) tiles->cycleWindows(u"R"_s, editorRuns, 1);
  EXPECT_EQ(windows().activated, (QList<quint64>{3, 2, 3}));
}

TEST_F(CommandsTest, OpensFoldersTheTrashAndPanels) {
  store->edit([](DockConfiguration& config) { config.foldersInFinder = true; });
  click(1);
  EXPECT_EQ(store->error(), QString());
  ASSERT_TRUE(waitFor([&] { return !store->error().isEmpty(); }));
  EXPECT_EQ(store->error(), u"“Editor & Co” cannot open files."_s) << "its command has no place for them";
  store->clearError();
  store->edit([](DockConfiguration& config) { config.foldersInFinder = false; });
  scheduler.advance(1);
  QStringList panels;
  for (const int tile : {1, 3, 2}) panels << u"panel L "_s + widget(tile).id.toString();
  for (const int tile : {1, 1, 3, 3, 2, 2}) click(tile);  // A double click is one.
  EXPECT_EQ(asked.asked, panels);
  store->edit([](DockConfiguration& config) { config.foldersInFinder = true; });
  scheduler.advance(1);
  click(2);
  EXPECT_EQ(store->error(), u"No file manager is installed."_s);
}

TEST_F(CommandsTest, TellsWindowsWhereTheirTileIs) {
  windows().open(1, u"editor"_s);
  windows().open(2, u"editor"_s);
  windows().windows[1].screens = QStringList{u"R"_s};
  const quint64 application = tiles->applicationOf(widget(0));
  const QRectF left(10, 20, 52, 52);
  const QRectF right(2000, 20, 52, 52);
  tiles->setTileRects(u"L"_s, {{application, left}});
  tiles->setTileRects(u"R"_s, {{application, right}});
  EXPECT_EQ(windows().tiles, (QHash<quint64, QRectF>{{1, left}, {2, right}}));
  const int before = windows().placements;
  tiles->setTileRects(u"R"_s, {{application, right}});
  EXPECT_EQ(windows().placements, before);
  windows().open(3, u"editor"_s);
  EXPECT_EQ(windows().tiles.value(3), left);
  tiles->setTileRects(u"L"_s, {});
  EXPECT_EQ(windows().tiles.value(1), right);
}

TEST_F(CommandsTest, AnIconOfTheUsersOwnOutlivesItsFileAndIsTakenBack) {
  OwnIcons& icons = menus->icons();
  const QString picture = root(u"mine.jpg"_s);
  QImage large(900, 300, QImage::Format_RGB32);
  large.fill(Qt::red);
  ASSERT_TRUE(large.save(picture));
  icons.choose(editor(), picture);
  ASSERT_TRUE(waitFor([&] { return icons.has(editor()); }));
  QFile::remove(picture);
  const QImage kept(icons.iconOf(editor()));
  EXPECT_EQ(kept.width(), OwnIcons::kSide);
  EXPECT_EQ(kept.height(), OwnIcons::kSide / 3);
  // An entry that overrides it is the same application.
  EXPECT_EQ(icons.iconOf(own(u"editor.desktop"_s)), icons.iconOf(editor()));

  write(root(u"text.png"_s), u"no picture"_s);
  icons.choose(editor(), root(u"text.png"_s));
  ASSERT_TRUE(waitFor([&] { return !store->error().isEmpty(); }));
  EXPECT_EQ(store->error(), u"That file couldn't be read as an image."_s);
  EXPECT_TRUE(icons.has(editor())) << "what there was stays";
  edits->setHeld(false);  // What comes is a step of its own.
  icons.reset(editor());
  EXPECT_TRUE(icons.iconOf(editor()).isEmpty());
  undo.undo();
  EXPECT_TRUE(icons.has(editor()));
  icons.reset(editor());

  // What the settings name may be anything.
  for (const QString& name : {u"../../x"_s, QString(64, u'0')}) {
    store->edit([&](DockConfiguration& config) { config.desktop.customAppIcons.insert(u"editor"_s, name); });
    EXPECT_TRUE(icons.iconOf(editor()).isEmpty()) << qPrintable(name);
  }
}

TEST_F(CommandsTest, CalendarFoldersAreKeptForAllCalendars) {
  store->edit([](DockConfiguration& config) {
    config.nativeConnections = QStringList{u"player"_s, u"calendarFolder:not/absolute"_s};
    config.profiles[0].widgets = {{QUuid::createUuid(), u"remindersNext"_s, {}, {}}};
  });
  const auto tail = [&] { return lines(menus->tile(widget(0).id, u"L"_s)).section(u"|-|"_s, 2, 2); };
  EXPECT_EQ(tail(), u"Add Calendar Folder…"_s);
  choose(menus->tile(widget(0).id, u"L"_s), u"Add Calendar Folder…"_s);
  EXPECT_EQ(asked.asked, QStringList{u"calendar folder"_s});
  for (int i = 0; i < 2; ++i)
    store->edit([](DockConfiguration& config) { CalendarFolders::add(config, u"/home/me/club/"_s); });
  EXPECT_EQ(CalendarFolders::of(store->config()), QStringList{u"/home/me/club"_s});
  EXPECT_EQ(tail(), u"Add Calendar Folder…|Remove “club”"_s);
  choose(menus->tile(widget(0).id, u"L"_s), u"Remove “club”"_s);
  EXPECT_EQ(store->config().nativeConnections, (QStringList{u"player"_s, u"calendarFolder:not/absolute"_s}));
}

TEST_F(CommandsTest, TheMenuOfADockHasWhatIsAskedOfAllOfIt) {
  store->newProfile(u"Evening"_s, false);
  store->selectProfile(store->config().profiles[0].id);
  store->pinDisplay(u"R"_s, store->config().profiles[1].id);
  const auto menu = menus->dock(u"R"_s);
  EXPECT_EQ(lines(menu), u"Add Widgets…|Settings…|-|(Layout)|(Profiles)|Hide|-|Help|Quit Tarnwick"_s);
  EXPECT_EQ(lines(menu[3].entries).count(u'*'), 1);
  EXPECT_TRUE(
      menu[3].entries[std::ranges::find(kDockLayouts, store->config().layout) - kDockLayouts.begin()].checked.value());
  EXPECT_EQ(lines(menu[4].entries), store->config().profiles[0].name + u"|*Evening"_s);
  for (const DockMenuEntry& entry : menu)
    if (entry.run) entry.run();
  menu[3].entries[1].run();
  menu[4].entries[0].run();
  EXPECT_EQ(asked.asked,
            (QStringList{u"library R"_s, u"settings"_s, u"toggle"_s, u"help"_s, u"quit"_s, u"profile 0 R"_s}));
  EXPECT_EQ(asked.layouts, QList{kDockLayouts[1]});

  // To a screen reader each entry is an action of its own.
  const auto flat = DockMenuModel::flat(menu);
  EXPECT_EQ(flat.size(), menu.size() - 2 + kDockLayouts.size() + 2);
  EXPECT_TRUE(std::ranges::any_of(flat, [](const DockMenuEntry& each) { return each.text == u"Profiles: Evening"_s; }));
  QMenu shown;
  DockMenuModel::fill(shown, menu);
  ASSERT_TRUE(shown.actions()[4]->menu());
  EXPECT_TRUE(shown.actions()[4]->menu()->actions()[1]->isChecked());
}

TEST(DockQuestionsTest, ShowsAllThatWouldRunAndRunsOnlyByItsOwnButton) {
  ForeignEntry foreign;
  foreign.path = u"/tmp/<b>d</b>/x.desktop"_s;
  foreign.entry.name = u"<i>Safe</i>"_s;
  foreign.entry.exec = u"/bin/echo hi <!-- ; rm -rf /home --> "_s + QString(3000, u'x');
  const Question question = DockQuestions::aboutEntry(foreign, {});
  QuestionPane pane(question);
  pane.show();
  QString said;
  for (const QLabel* label : pane.findChildren<QLabel*>()) {
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    said += label->text();
  }
  EXPECT_TRUE(said.contains(u"<i>Safe</i>"_s));
  const auto* facts = pane.findChild<QPlainTextEdit*>();
  EXPECT_TRUE(facts->isReadOnly());
  EXPECT_TRUE(facts->toPlainText().contains(foreign.entry.exec.trimmed()));
  EXPECT_GT(facts->verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(facts->horizontalScrollBar()->maximum(), 0);

  QList<bool> answers;
  QObject::connect(&pane, &QuestionPane::answered, [&](bool accepted) { answers << accepted; });
  const auto press = [&](Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(pane.focusWidget(), &event);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
    QCoreApplication::sendEvent(pane.focusWidget(), &release);
  };
  press(Qt::Key_Space);
  press(Qt::Key_Escape);
  EXPECT_EQ(answers, (QList<bool>{false, false}));
  for (auto* button : pane.findChildren<QAbstractButton*>())
    if (button->text() == question.accept || button->accessibleName() == question.accept) button->click();
  EXPECT_EQ(answers, (QList<bool>{false, false, true}));
}

TEST_F(CommandsTest, MenusOfferWhatAppliesNow) {
  const auto tile = [&](qsizetype index) { return menus->tile(widget(index).id, u"L"_s); };
  EXPECT_EQ(lines(tile(0)),
            u"Open Editor & Co|Edit Widget…|App Icon…|(Reset Icon)|(Move Left)|Move Right|-|Remove Widget|-|"
            "New Window|Tips|-|Add Widgets…|Settings…"_s);
  const auto head = [&](qsizetype index) { return lines(tile(index)).section(u"|-|Add Widgets…"_s, 0, 0); };
  EXPECT_EQ(head(1), u"Open home|Edit Widget…|Move Left|Move Right|-|Remove Widget|-|Show in Files"_s);
  EXPECT_EQ(head(2), u"Open Trash|Edit Widget…|Move Left|Move Right|-|Remove Widget|-|(Empty Trash…)"_s);
  EXPECT_EQ(head(4), u"Edit Widget…|Move Left|(Move Right)|-|Remove Widget"_s);
  QGuiApplication::setLayoutDirection(Qt::RightToLeft);
  EXPECT_EQ(head(4), u"Edit Widget…|(Move Left)|Move Right|-|Remove Widget"_s);
  choose(tile(4), u"Move Right"_s);
  QGuiApplication::setLayoutDirection(Qt::LeftToRight);
  EXPECT_EQ(head(3), u"Edit Widget…|Move Left|Move Right|-|Remove Widget"_s);
  choose(tile(3), u"Move Right"_s);
  EXPECT_TRUE(menus->tile(QUuid::createUuid(), u"L"_s).isEmpty());

  windows().open(1, u"editor"_s);
  windows().open(2, u"stranger"_s);
  windows().windows[0].title = u"Letter"_s;
  windows().activate(1);
  desktop->files.count = 2;
  store->edit([](DockConfiguration& config) { config.desktop.customAppIcons.insert(u"editor"_s, u"x"_s); });
  EXPECT_EQ(lines(tile(0)),
            u"Open Editor & Co|Edit Widget…|App Icon…|Reset Icon|(Move Left)|Move Right|-|Remove Widget|-|"
            "New Window|Tips|-|(Windows)|-|Quit|-|Add Widgets…|Settings…"_s);
  EXPECT_EQ(lines(menus->windows(desktop->runningApps.list()[0].identity, u"L"_s)), u"*Letter"_s);
  EXPECT_TRUE(head(2).endsWith(u"|Empty Trash…"_s));
  const QSignalSpy empties(menus.get(), &DockMenus::emptyTrashRequested);
  choose(tile(2), u"Empty Trash…"_s);
  EXPECT_EQ(empties.size(), 1);
  EXPECT_TRUE(asked.asked.isEmpty()) << "nothing goes before that is confirmed";
  choose(menus->dock(u"L"_s), u"Add Widgets…"_s);
  choose(tile(0), u"Edit Widget…"_s);
  EXPECT_EQ(asked.asked, (QStringList{u"library L"_s, u"edit "_s + widget(0).id.toString()}));
  const quint64 stranger = desktop->runningApps.list()[1].identity;
  EXPECT_EQ(lines(menus->application(stranger, u"L"_s)), u"Open Stranger|-|(Windows)|-|Quit|-|Add Widgets…|Settings…"_s)
      << "without a desktop entry there is nothing to keep";

  choose(tile(0), u"Reset Icon"_s);
  EXPECT_TRUE(store->config().desktopOptions().customAppIcons.isEmpty());
  choose(tile(0), u"Tips"_s);
  EXPECT_EQ(ran(), u"--tips"_s);
  choose(tile(0), u"Move Right"_s);
  EXPECT_EQ(widget(1).kind, u"appLauncher"_s);
  // The row changes under an open menu: it is the tile that moves, wherever it stands by then.
  const auto opened = tile(1);
  store->moveDisplayed(1, 3, {});
  choose(opened, u"Move Left"_s);
  EXPECT_EQ(widget(2).kind, u"appLauncher"_s);
  store->moveDisplayed(2, 1, {});
  choose(tile(1), u"Remove Widget"_s);
  const quint64 application = desktop->runningApps.list()[0].identity;
  const auto kept = menus->application(application, u"L"_s);
  EXPECT_EQ(lines(kept),
            u"Open Editor & Co|-|New Window|Tips|-|(Windows)|-|Keep in Dock|Quit|-|Add Widgets…|Settings…"_s);
  choose(kept, u"Keep in Dock"_s);
  EXPECT_EQ(widget(4).options.value(u"path"_s), editor());
  EXPECT_FALSE(lines(menus->application(application, u"L"_s)).contains(u"Keep in Dock"_s));

  QMenu menu;
  DockMenuModel::fill(menu, tile(4));
  EXPECT_EQ(menu.actions()[0]->text(), u"Open Editor && Co"_s);
  EXPECT_TRUE(menu.actions()[0]->isEnabled());
  EXPECT_FALSE(menu.actions()[3]->isEnabled());
}

TEST_F(CommandsTest, EveryWindowOfManyCanBeChosenHoweverLongItsTitle) {
  MenuStyle style;
  for (const int count : {1, 50, 200}) {
    SCOPED_TRACE(count);
    for (int i = 1; i <= count; ++i) {
      windows().open(static_cast<quint64>(i), u"editor"_s);
      windows().windows.last().title = QString::number(i) + u' ' + u"title "_s.repeated(170);
    }
    QMenu menu;
    menu.setStyle(&style);
    DockMenuModel::fill(menu, menus->windows(tiles->applicationOf(widget(0)), u"L"_s));
    ASSERT_EQ(menu.actions().size(), count);
    menu.popup({100, 100});
    EXPECT_TRUE(menu.screen()->geometry().contains(menu.geometry()));
    for (QAction* entry : {menu.actions().last(), menu.actions().first(), menu.actions().last()}) {
      menu.setActiveAction(entry);
      EXPECT_TRUE(menu.rect().contains(menu.actionGeometry(entry)));
    }
    menu.actions().last()->trigger();
    EXPECT_EQ(asked.asked, QStringList{u"window %1"_s.arg(count)});
    asked.asked.clear();
    while (!windows().windows.isEmpty()) windows().close(windows().windows.first().id);
  }
}

}  // namespace
}  // namespace tarnwick::test
