#include <gtest/gtest.h>

#include <QAccessible>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>

#include "OpenPanel.h"
#include "base/DomainError.h"
#include "support/TestScheduler.h"
#include "views/controls/ConfirmBar.h"
#include "views/controls/Fields.h"
#include "views/controls/ItemView.h"
#include "views/controls/Segments.h"
#include "views/panels/FileDropZone.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// Changes widgets, keeps back whether an application was started, and may not end processes.
struct SlowCommands final : test::ChangingCommands {
  using ChangingCommands::ChangingCommands;
  void openUrl(const QUrl& url, const std::function<void(bool)>& done = {}) override {
    RecordingCommands::openUrl(url);
    over = done;
  }
  void endProcess(const ProcessReading& process) override {
    asked << u"end "_s + process.name;
    throw DomainError::invalid(u"You may not end it."_s);
  }

  std::function<void(bool)> over;
};

/// A panel and a note of everything that it asked for.
struct ListPanel : test::OpenPanel<SlowCommands> {
  /// `change` has the fixture and the context before the panel is made.
  explicit ListPanel(const QString& kind, const std::function<void(ListPanel&)>& change = {}) : OpenPanel(kind) {
    if (change) change(*this);
    panel = test::shown(context);
    QObject::connect(panel.get(), &TilePanel::closeRequested, [this] { closed = true; });
  }

  ItemView& view() { return *panel->findChild<ItemView*>(); }
  QLineEdit& field() { return *panel->findChild<SearchField*>(); }
  std::string titles() {
    QStringList all;
    for (const ViewItem& item : view().items()) all << item.title;
    return all.join(u'|').toStdString();
  }
  std::string did() { return std::exchange(commands.asked, {}).join(u'|').toStdString(); }

  bool closed = false;
};

TEST(ApplicationsPanel, IsSearchedAndStartedByKeys) {
  ListPanel open(u"applications"_s);
  EXPECT_EQ(open.view().items().size(), 20);
  QTest::keyClicks(&open.field(), u"m"_s);
  EXPECT_EQ(open.titles().substr(0, 28), "Mail|Maps|Messages|Music|Cam") << "names that begin with it first";
  QTest::keyClick(&open.field(), Qt::Key_Down);  // One row of four further.
  QTest::keyClick(&open.field(), Qt::Key_Up);
  QTest::keyClick(&open.field(), Qt::Key_Return);
  EXPECT_EQ(open.did(), "start /usr/share/applications/mail.desktop");
  EXPECT_TRUE(open.closed);
  QTest::keyClicks(&open.field(), u"zzz"_s);
  EXPECT_FALSE(open.view().isVisible());
  QTest::keyClick(&open.field(), Qt::Key_Return);
  EXPECT_EQ(open.did(), "");
}

TEST(ApplicationsPanel, OffersToKeepWhatTheDockDoesNotHold) {
  const QString mail = u"/usr/share/applications/mail.desktop"_s;
  ListPanel open(u"applications"_s);
  QTest::keyClicks(&open.field(), u"mail"_s);
  const auto offered = [&] { return open.view().itemActions(open.view().model()->index(0, 0)); };
  const auto run = [&](const QString& action) {
    open.view().runItemAction(open.view().model()->index(0, 0), offered().indexOf(action));
    return open.did();
  };
  const auto hold = [&](const QString& kind, const QString& key) {
    open.fixture.store().edit([&](DockConfiguration& config) {
      for (DockProfile& profile : config.profiles) {
        profile.widgets.removeIf([&](const DockWidget& widget) { return widget.id != open.context.widget; });
        if (!kind.isEmpty()) profile.widgets << DockWidget{QUuid::createUuid(), kind, {}, {{key, mail}}};
      }
    });
  };

  hold({}, {});
  EXPECT_EQ(offered().filter(u"Keep in Dock"_s).size(), 1);
  EXPECT_EQ(run(u"Keep in Dock"_s), QString(u"keep %1 on %2"_s).arg(mail, open.context.display).toStdString());
  EXPECT_FALSE(open.closed) << "more may be kept";
  hold(u"appLauncher"_s, u"path"_s);
  EXPECT_FALSE(offered().contains(u"Keep in Dock"_s));
  hold(u"appFolder"_s, u"paths"_s);
  EXPECT_FALSE(offered().contains(u"Keep in Dock"_s)) << "a folder of apps in the dock holds it too";
  QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
  QCoreApplication::sendEvent(&open.field(), &key);
  const auto* menu = open.panel->findChild<PaneMenu*>();
  ASSERT_TRUE(menu && menu->isVisible()) << "by its key, though the field has the keyboard";
  QTest::keyClick(open.panel->window()->focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(open.closed);
  EXPECT_EQ(run(u"New Window"_s), "another " + mail.toStdString());
  EXPECT_TRUE(open.closed);
  EXPECT_EQ(run(u"Open"_s), "start " + mail.toStdString());
}

TEST(AppFolderPanel, TakesAppsInAndGivesThemBack) {
  ListPanel open(u"appFolder"_s);
  EXPECT_EQ(open.titles(), "Mail|Music|Messages|Photos");
  open.click(u"Add Apps"_s);
  EXPECT_EQ(open.view().items().size(), 16) << "those that are in it are not offered";
  QTest::keyClicks(&open.field(), u"maps"_s);
  QTest::keyClick(&open.field(), Qt::Key_Return);
  open.click(u"Done"_s);
  EXPECT_EQ(open.titles(), "Mail|Music|Messages|Photos|Maps");
  open.view().choose(1);
  QTest::keyClick(&open.view(), Qt::Key_Delete);
  EXPECT_EQ(open.titles(), "Mail|Messages|Photos|Maps");
  EXPECT_FALSE(open.option(u"paths"_s).contains(u"music"_s));
  EXPECT_EQ(open.did(), "");
  EXPECT_EQ(open.commands.announced, QStringList{u"“Music” was removed."_s});
  EXPECT_EQ(open.commands.changed.size(), 2) << "both can be taken back";
}

TEST(RunningAppsPanel, KeepsTheTextOfItsRowsInLineWhicheverWayWordsRun) {
  for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    QGuiApplication::setLayoutDirection(direction);
    ListPanel open(u"openWindows"_s);
    const auto header = open.panel->findChild<PanelHeader*>();
    const int left = header->mapTo(open.panel.get(), QPoint()).x();
    const int right = left + header->width();
    EXPECT_EQ(open.view().mapTo(open.panel.get(), QPoint()).x(), left - theme::kRowOverhang);
    EXPECT_EQ(open.view().mapTo(open.panel.get(), open.view().rect().topRight()).x() + 1, right + theme::kRowOverhang);
    // Nothing on the way to the panel cuts the rows off.
    EXPECT_EQ(open.view().visibleRegion().boundingRect().width(), open.view().width());
  }
  QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST(FileMenus, OfferWhatCanBeDoneByMouseKeyboardAndReader) {
  ListPanel open(u"recentFiles"_s);
  ItemView& view = open.view();
  ASSERT_FALSE(view.items().isEmpty());
  const std::string path = view.items().first().id.toStdString();
  const QModelIndex first = view.model()->index(0, 0);
  const QPoint at = view.visualRect(first).center();
  const auto menu = [&] { return open.panel->findChild<PaneMenu*>(); };
  const auto ask = [&](QContextMenuEvent::Reason reason) {
    QContextMenuEvent event(reason, at, view.viewport()->mapToGlobal(at));
    QWidget* target = reason == QContextMenuEvent::Mouse ? view.viewport() : static_cast<QWidget*>(&view);
    QCoreApplication::sendEvent(target, &event);
    ASSERT_TRUE(menu() && menu()->isVisible());
    EXPECT_TRUE(open.panel->rect().contains(menu()->geometry()));
  };
  const auto gone = [&] {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return !menu();
  };

  view.setFocus();
  ask(QContextMenuEvent::Mouse);
  open.click(u"Open"_s);
  EXPECT_EQ(open.did(), path);
  EXPECT_TRUE(open.closed) << "like a click on the item";
  open.closed = false;
  EXPECT_TRUE(gone());
  ask(QContextMenuEvent::Mouse);
  open.click(u"Copy Path"_s);
  EXPECT_EQ(open.did(), "copy " + path);
  EXPECT_TRUE(gone());
  ask(QContextMenuEvent::Keyboard);
  QTest::keyClick(open.panel->window()->focusWidget(), Qt::Key_Up);
  QTest::keyClick(open.panel->window()->focusWidget(), Qt::Key_Return);
  EXPECT_EQ(open.did(), "throw away " + path + " on " + open.context.display.toStdString()) << "the last of them";
  EXPECT_TRUE(gone());
  EXPECT_TRUE(view.hasFocus() || open.panel->window()->focusWidget() == &view) << "the keyboard goes back";

  ask(QContextMenuEvent::Mouse);
  QTest::keyClick(open.panel->window()->focusWidget(), Qt::Key_Escape);
  EXPECT_TRUE(gone());
  EXPECT_FALSE(open.closed) << "Escape closes the menu alone";
  ask(QContextMenuEvent::Mouse);
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(view.model()->index(1, 0)).center());
  EXPECT_TRUE(gone());
  EXPECT_EQ(open.did(), "") << "a click beside it opens nothing";

  const QStringList actions = view.itemActions(first);
  EXPECT_EQ(actions.count(u"Show in Files"_s), 1);
  view.runItemAction(first, actions.indexOf(u"Copy Path"_s));
  EXPECT_EQ(open.did(), "copy " + path);
}

TEST(RunningAppsPanel, LeadsToWindowsOrApps) {
  ListPanel windows(u"openWindows"_s);
  EXPECT_EQ(windows.titles(), "Release notes|Weather in Kendal|tiles.cpp|Inbox|robin@kendal: ~");
  Q_EMIT windows.view().opened(u"11"_s);
  EXPECT_EQ(windows.did(), "window 11");
  auto& field = *windows.panel->findChild<SearchField*>();
  field.setText(u"brow"_s);
  EXPECT_EQ(windows.titles(), "Release notes|Weather in Kendal") << "of an app of that name";
  field.setText(u"inb"_s);
  QTest::keyClick(&field, Qt::Key_Return);
  EXPECT_EQ(windows.did(), "window 40");
  field.setText(u"nothing"_s);
  EXPECT_TRUE(windows.view().isHidden());
  ListPanel apps(u"topApps"_s, [](ListPanel& open) { open.fixture.readings().windows.list.clear(); });
  EXPECT_EQ(apps.titles(), "Browser|Editor|Terminal|Mail");
  EXPECT_EQ(apps.view().items().first().caption, u"2 windows"_s);
  QTest::keyClick(&apps.view(), Qt::Key_Down);
  QTest::keyClick(&apps.view(), Qt::Key_Return);
  EXPECT_EQ(apps.did().substr(0, 4), "app ");
}

TEST(PinnedWindowPanel, ShowsTheWindowAndTakesAnother) {
  ListPanel open(u"pinnedWindow"_s);
  open.click(u"Show Window"_s);
  EXPECT_EQ(open.did(), "window 40");
  Q_EMIT open.view().opened(u"20"_s);
  EXPECT_EQ(open.option(u"windowTitle"_s), u"tiles.cpp"_s);
  EXPECT_EQ(open.option(u"bundleID"_s), u"editor"_s);
  open.click(u"Show Window"_s);
  EXPECT_EQ(open.did(), "window 20");
}

TEST(FolderPanel, IsLookedThroughInPlace) {
  ListPanel open(u"folderLauncher"_s);
  EXPECT_EQ(open.titles().substr(0, 16), "tiles.png|Travel");
  Q_EMIT open.view().opened(u"/home/robin/Documents/Travel"_s);
  EXPECT_EQ(open.view().items().first().id, u"/home/robin/Documents/Travel/tiles.png"_s);
  EXPECT_FALSE(open.closed);
  open.click(u"Back"_s);
  open.view().choose(0);
  QTest::keyClick(&open.view(), Qt::Key_R, Qt::ControlModifier);
  EXPECT_EQ(open.did(), "reveal /home/robin/Documents/tiles.png");
  QTest::keyClick(&open.view(), Qt::Key_Return);
  EXPECT_EQ(open.did(), "/home/robin/Documents/tiles.png");
  EXPECT_TRUE(open.closed);
  Q_EMIT open.panel->findChild<Segments*>()->chosenChanged(1);
  EXPECT_EQ(open.option(u"sort"_s), u"name"_s);

  const QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&open.view());
  EXPECT_EQ(list->childCount(), 12);
  EXPECT_EQ(list->child(0)->text(QAccessible::Name), u"tiles.png"_s);
  EXPECT_EQ(list->child(0)->role(), QAccessible::ListItem);
  QAccessibleActionInterface* actions = list->child(1)->actionInterface();
  ASSERT_TRUE(actions);
  const QString reveal = u"Show in Files"_s;
  EXPECT_TRUE(actions->actionNames().contains(reveal));
  actions->doAction(reveal);
  QCoreApplication::processEvents();
  EXPECT_EQ(open.did(), "reveal " + open.view().items()[1].id.toStdString());
  actions->doAction(QAccessibleActionInterface::pressAction());
  QCoreApplication::processEvents();
  EXPECT_EQ(open.view().items().first().title, u"tiles.png"_s) << "the folder Travel was opened";
}

TEST(FolderPanel, TakesFilesIntoTheFolderThatTheyAreHeldOver) {
  QTemporaryDir disk;
  const QString root = disk.filePath(u"Shown"_s);
  const QString travel = root + u"/Travel"_s;
  ASSERT_TRUE(QDir().mkpath(travel));
  SnapshotStore fixture;
  test::RecordingCommands commands;
  test::TestScheduler clock;
  const PanelContext fixed = fixture.contextOf(u"folderLauncher"_s, commands);
  fixture.store().edit(
      [&](DockConfiguration& config) { DocumentEdits::find(config, fixed.widget)->options.insert(u"path"_s, root); });
  PanelContext context{fixed.store, clock,         fixed.toggles,  fixed.commands, fixed.widget,
                       u"L"_s,      fixed.sources, fixed.readings, nullptr};
  const auto entry = [](const QString& path, bool isFolder) {
    FolderEntry made;
    made.path = path;
    made.name = QFileInfo(path).fileName();
    made.isFolder = isFolder;
    return made;
  };
  context.readings.fixedFolder = [&](const FolderRequest& request) {
    FolderContents contents;
    if (request.folder == root) contents.entries = {entry(root + u"/old.txt"_s, false), entry(travel, true)};
    contents.total = contents.entries.size();
    return contents;
  };
  const std::unique_ptr<TilePanel> panel = test::shown(context);

  QString asked;
  QObject::connect(panel->findChild<FileDropZone*>(), &FileDropZone::dropped,
                   [&](const QString& folder, const QList<QUrl>& urls, Qt::DropAction action) {
                     asked = (action == Qt::CopyAction ? u"copy "_s : u"move "_s) + urls.first().toLocalFile() +
                             u" into "_s + folder;
                   });
  const auto& view = *panel->findChild<ItemView*>();
  const auto cell = [&](int row) {
    return view.viewport()->mapTo(panel.get(), view.visualRect(view.model()->index(row, 0)).center());
  };
  const auto into = [](const QString& folder) { return u" into "_s + folder; };
  const QString file = disk.filePath(u"new.txt"_s);
  for (const QString& path : {file, root + u"/old.txt"_s}) ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
  const struct {
    const char* name;
    QPoint at;
    QString url;
    Qt::KeyboardModifiers keys;
    QString asked;
  } rows[] = {
      {"beside the files", panel->rect().center(), file, {}, u"move "_s + file + into(root)},
      {"over a file", cell(0), file, {}, u"move "_s + file + into(root)},
      {"over a folder", cell(1), file, {}, u"move "_s + file + into(travel)},
      {"copied", cell(1), file, Qt::ControlModifier, u"copy "_s + file + into(travel)},
      {"what is there already", cell(0), root + u"/old.txt"_s, {}, {}},
      {"what is there already, further in",
       cell(1),
       root + u"/old.txt"_s,
       {},
       u"move "_s + root + u"/old.txt"_s + into(travel)},
      {"a folder onto itself", cell(1), travel, {}, {}},
      {"no file", cell(1), {}, {}, {}},
  };
  for (const auto& each : rows) {
    SCOPED_TRACE(each.name);
    QMimeData data;
    data.setText(u"text"_s);
    if (!each.url.isEmpty()) data.setUrls({QUrl::fromLocalFile(each.url)});
    const Qt::DropActions all = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
    QDragEnterEvent enter(each.at, all, &data, Qt::LeftButton, each.keys);
    QCoreApplication::sendEvent(panel.get(), &enter);
    QDragMoveEvent move(each.at, all, &data, Qt::LeftButton, each.keys);
    QCoreApplication::sendEvent(panel.get(), &move);
    EXPECT_EQ(move.isAccepted(), !each.asked.isEmpty());
    QDropEvent drop(each.at, all, &data, Qt::LeftButton, each.keys);
    QCoreApplication::sendEvent(panel.get(), &drop);
    EXPECT_EQ(std::exchange(asked, {}).toStdString(), each.asked.toStdString());
  }

  // Held over a folder long enough it opens, and over the arrow the one above again.
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(file)});
  const auto hold = [&](QPoint at) {
    QDragEnterEvent enter(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(panel.get(), &enter);
  };
  const QList<IconButton*> buttons = panel->findChildren<IconButton*>();
  const auto named = std::ranges::find(buttons, u"Back"_s, &IconButton::label);
  ASSERT_NE(named, buttons.end());
  const IconButton* back = *named;
  hold(cell(1));
  clock.advance(0.7);
  hold(cell(0));
  clock.advance(2);
  EXPECT_FALSE(back->isVisible()) << "a file that goes on opens nothing";
  hold(cell(1));
  clock.advance(0.9);
  QCoreApplication::processEvents();
  EXPECT_TRUE(back->isVisible());
  hold(back->mapTo(panel.get(), back->rect().center()));
  clock.advance(0.9);
  QCoreApplication::processEvents();
  EXPECT_FALSE(back->isVisible());
}

TEST(FolderPanel, SaysWhatIsWrongWithAFolder) {
  ListPanel gone(u"folderLauncher"_s, [](ListPanel& open) {
    open.context.readings.fixedFolder = [](const FolderRequest&) {
      return FolderContents{{}, 0, u"You do not have permission to open this folder."_s};
    };
  });
  bool said = false;
  for (const TextLabel* label : gone.panel->findChildren<TextLabel*>())
    said = said || (label->isVisible() && label->text() == u"You do not have permission to open this folder."_s);
  EXPECT_TRUE(said);
}

TEST(ShelfPanel, GivesUpFilesOneByOneAndAll) {
  ListPanel open(u"fileShelf"_s);
  EXPECT_EQ(open.titles(), "Quarterly summary.pdf|tiles.png|notes.txt");
  EXPECT_EQ(open.view().items()[1].drag, QUrl(u"file:///home/robin/tiles.png"_s));
  EXPECT_TRUE(open.view().model()->index(1, 0).flags() & Qt::ItemIsDragEnabled);
  open.view().choose(1);
  QTest::keyClick(&open.view(), Qt::Key_Delete);
  EXPECT_EQ(open.titles(), "Quarterly summary.pdf|notes.txt");
  open.click(u"Clear Shelf"_s);
  EXPECT_TRUE(open.fixture.store().config().shelf.isEmpty());
  EXPECT_EQ(open.did(), "") << "nothing was opened or shown meanwhile";
  open.fixture.store().edit([](DockConfiguration& config) { config.shelf = {u"/home/robin/new.txt"_s}; });
  for (; !open.commands.undos.empty(); open.commands.undos.pop_back()) open.commands.undos.back()();
  QCoreApplication::processEvents();
  EXPECT_EQ(open.titles(), "Quarterly summary.pdf|tiles.png|notes.txt|new.txt");
  open.commands.redos[0]();
  QCoreApplication::processEvents();
  EXPECT_EQ(open.titles(), "Quarterly summary.pdf|notes.txt|new.txt");
  open.commands.redos[1]();
  EXPECT_EQ(open.fixture.store().config().shelf, QStringList{u"/home/robin/new.txt"_s}) << "what came since stays";
}

TEST(TrashPanel, AsksBeforeItEmpties) {
  ListPanel open(u"trash"_s);
  open.click(u"Empty Trash…"_s);
  QTest::keyClick(open.panel->focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(open.closed || open.panel->findChild<ConfirmBar*>()->isAsking());
  open.click(u"Empty Trash…"_s);
  open.click(u"Empty Trash"_s);
  EXPECT_EQ(open.did(), "emptied");
}

TEST(SearchPanels, LeadToWhatWasMeant) {
  ListPanel web(u"webSearch"_s);
  QTest::keyClick(&web.field(), Qt::Key_Return);
  EXPECT_EQ(web.did(), "") << "nothing was written";
  web.field().insert(u" 100% & c++ ä "_s);
  QTest::keyClick(&web.field(), Qt::Key_Return);
  EXPECT_EQ(web.did(), "https://duckduckgo.com/?q=100%25%20%26%20c%2B%2B%20%C3%A4");
  web.commands.over(false);
  EXPECT_EQ(web.field().text(), u" 100% & c++ ä "_s) << "no browser was started, and it can be tried again";
  EXPECT_FALSE(web.closed);
  QTest::keyClick(&web.field(), Qt::Key_Return);
  web.commands.over(true);
  EXPECT_TRUE(web.closed && web.field().text().isEmpty());

  ListPanel bookmarks(u"bookmarks"_s);
  QTest::keyClicks(&bookmarks.field(), u"TRAINS"_s);
  EXPECT_EQ(bookmarks.titles(), "Timetable");
  QTest::keyClick(&bookmarks.field(), Qt::Key_Return);
  EXPECT_EQ(bookmarks.did(), "https://trains.example.com/");
}

TEST(ProcessesPanel, EndsTheProcessThatWasShownAfterAsking) {
  ListPanel open(u"processTopApps"_s);
  open.click(u"End Editor"_s);
  open.click(u"Cancel"_s);
  EXPECT_EQ(open.did(), "");
  open.click(u"End Editor"_s);
  Q_EMIT open.panel->findChild<Segments*>()->chosenChanged(1);  // Another process is in that row.
  EXPECT_EQ(open.option(u"sortBy"_s), u"RAM"_s);
  open.click(u"End Process"_s);
  EXPECT_EQ(open.did(), "end Editor");
  bool said = false;
  for (const TextLabel* label : open.panel->findChildren<TextLabel*>())
    said = said || (label->isVisible() && label->text() == u"You may not end it."_s);
  EXPECT_TRUE(said);
}

TEST(ReadingPanels, AreFinishedWithNothingToRead) {
  for (const char* kind : {"applications", "appFolder", "openWindows", "pinnedWindow", "recentFiles", "screenshots",
                           "bookmarks", "processTopApps", "temperature"}) {
    ListPanel bare(QString::fromLatin1(kind), [](ListPanel& open) {
      FixedReadings& readings = open.fixture.readings();
      readings.recent.setFixed({});
      readings.bookmarks.setFixed({});
      readings.screenshots.setFixed({}, {});
      readings.processes.setFixed({}, {});
      readings.apps.setFixed(std::make_shared<AppIndex>());
      readings.windows.list.clear();
      open.context.sources = nullptr;
    });
    EXPECT_GT(bare.panel->panelSize().height(), 60) << kind;
  }
}

}  // namespace
}  // namespace tarnwick
