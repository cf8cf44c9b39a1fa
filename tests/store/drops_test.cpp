#include <gtest/gtest.h>

#include <QSignalSpy>

#include "base/DomainError.h"
#include "config/WidgetTransfer.h"
#include "store/AppStore.h"
#include "store/DockDrops.h"
#include "store/DocumentEdits.h"
#include "store/NoDesktop.h"
#include "store/WidgetPlaces.h"
#include "support/TestScheduler.h"
#include "support/TestServices.h"
#include "widgets/PinnedTiles.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct Credentials : CredentialKeeping {
  explicit Credentials(QList<QUuid>& list) : removed(list) {}
  void remove(const QList<QUuid>& widgets, Failed) override { removed << widgets; }
  void removeOrphans(const QList<QUuid>&) override {}
  QList<QUuid>& removed;
};

struct Fetches final : RemoteRefresh {
  void refresh(const DockWidget& widget) override { asked << widget.options.value(option::city); }
  void refreshAll() override { asked << u"all"_s; }
  QStringList asked;
};

StoreSetup setupWith(Scheduler& time, NoDesktop& desktop, CredentialKeeping& credentials, RemoteRefresh& remote) {
  return {.scheduler = time,
          .counters = std::make_unique<NoCounters>(),
          .installedApps = desktop.installedApps,
          .applications = desktop.applications,
          .notifications = desktop.notifications,
          .session = desktop.session,
          .remote = remote,
          .credentials = credentials,
          .clipboard = desktop.facilities.clipboard,
          .reservations = desktop.facilities.reservations,
          .diagnostic = true,
          .platformReads = false};
}

AppEnvironment twoFolders() {
  AppEnvironment environment;
  environment.dataHome = u"/mine"_s;
  environment.dataFolders = {u"/all"_s};
  return environment;
}

class DropsTest : public testing::Test {
 protected:
  DropsTest() { QObject::connect(&undo, &UndoStack::failed, &store, &AppStore::setError); }

  DockWidget tile(const QString& kind, const QString& path = {}) {
    DockWidget widget{QUuid::createUuid(), kind, {}, {}};
    if (!path.isEmpty()) widget.options.insert(u"path"_s, path);
    return widget;
  }
  void show(const QList<DockWidget>& widgets) {
    store.edit([&](DockConfiguration& config) { config.profiles[0].widgets = widgets; });
  }
  /// The row as kinds with their paths.
  QString row() const {
    QStringList words;
    for (const DockWidget& widget : store.widgets()) words << widget.kind + widget.options.value(u"path"_s);
    return words.join(u' ');
  }
  QString sentence() const { return undo.latest() ? undo.latest()->sentence : QString(); }

  test::TestScheduler time;
  NoDesktop desktop{time};
  QList<QUuid> forgotten;
  Credentials credentials{forgotten};
  Fetches fetches;
  AppStore store{setupWith(time, desktop, credentials, fetches)};
  test::TestServices services{time, twoFolders()};
  const Services all = services.all();
  test::FakeFiles& files = services.files;
  UndoStack undo;
  UndoableEdits edits{store, services.installedApps, undo};
  DockDrops drops{store, all, undo, edits};
};

TEST_F(DropsTest, EachTileTakesFilesInItsOwnWay) {
  const DockWidget folder = tile(u"folderLauncher"_s, u"/tmp/Old"_s.toLower());
  const DockWidget gone = tile(u"folderLauncher"_s, u"/goned"_s);
  const DockWidget trash = tile(u"trash"_s);
  const DockWidget airdrop = tile(u"airdrop"_s);
  const DockWidget clock = tile(u"digitalClock"_s);
  const DockWidget shelf = tile(u"fileShelf"_s);
  files.missing = {u"/goned"_s, u"/lost"_s};
  const QList<DockWidget> plain{clock, folder, gone, trash, airdrop};
  const QList<DockWidget> shelved = plain + QList<DockWidget>{shelf};
  const QString base = u"digitalClock folderLauncher/tmp/old folderLauncher/goned trash airdrop"_s;

  struct Case {
    const char* name;
    QList<DockWidget> row;
    QUuid on;
    QStringList urls;
    qsizetype index;
    Qt::DropAction action;
    QString sentence, error;
    QString expectedRow;
    QStringList expectedShelf;
    QStringList expectedBack;
  };
  const auto none = Qt::IgnoreAction;
  const QString onlyLocal = u"Only files on this computer can be dropped here."_s;
  const Case cases[] = {
      {"a folder", plain, folder.id, {u"/a"_s}, 1, none, u"“a” was moved to “old”."_s, {}, base, {}, {u"/a"_s}},
      {"copied, several",
       plain,
       folder.id,
       {u"/a"_s, u"/b"_s},
       1,
       Qt::CopyAction,
       u"2 items were copied to “old”."_s,
       {},
       base,
       {},
       {u"/a"_s, u"/b"_s}},
      {"the trash", plain, trash.id, {u"/a"_s}, 1, none, u"“a” was moved to the trash."_s, {}, base, {}, {u"/a"_s}},
      {"devices nearby",
       plain,
       airdrop.id,
       {u"/a"_s},
       1,
       none,
       {},
       u"Files cannot be sent to nearby devices from this computer."_s,
       base,
       {},
       {}},
      {"an address on a folder", plain, folder.id, {u"https://example.org/"_s}, 1, none, {}, onlyLocal, base, {}, {}},
      {"an address on nothing", plain, {}, {u"https://example.org/"_s}, 1, none, {}, onlyLocal, base, {}, {}},
      {"a folder that is gone", plain, gone.id, {u"/a"_s}, 0, none, {}, u"“goned” no longer exists."_s, base, {}, {}},
      {"a gap",
       plain,
       {},
       {u"/x/yard"_s, u"/a b"_s, u"/lost"_s},
       1,
       none,
       u"2 widgets were added to the dock."_s,
       u"“lost” no longer exists."_s,
       u"digitalClock folderLauncher/x/yard appLauncher/a b folderLauncher/tmp/old folderLauncher/goned trash airdrop"_s,
       {},
       {}},
      {"a gap beside a shelf",
       shelved,
       {},
       {u"/a"_s, u"/b.desktop"_s},
       99,
       none,
       u"“b” was added to the dock."_s,
       {},
       base + u" fileShelf appLauncher/b.desktop"_s,
       {u"/a"_s},
       {}},
      {"the shelf itself",
       shelved,
       shelf.id,
       {u"/b.desktop"_s, u"/b.desktop"_s},
       0,
       none,
       u"“b.desktop” was added to the file shelf."_s,
       {},
       base + u" fileShelf"_s,
       {u"/b.desktop"_s},
       {}},
      {"the shelf, and a file that is gone",
       shelved,
       shelf.id,
       {u"/a"_s, u"/lost"_s},
       0,
       none,
       u"“a” was added to the file shelf."_s,
       u"“lost” no longer exists."_s,
       base + u" fileShelf"_s,
       {u"/a"_s},
       {}},
      {"what the dock holds",
       plain,
       {},
       {u"/tmp/old"_s},
       0,
       none,
       {},
       u"“old” is already in the dock."_s,
       base,
       {},
       {}},
  };
  const QSignalSpy pushed(&undo, &UndoStack::pushed);
  for (const Case& c : cases) {
    undo.clear();
    files.takenBack.clear();
    store.clearError();
    show(c.row);
    store.edit([](DockConfiguration& config) { config.shelf.clear(); });
    const DockConfiguration before = store.config();
    DockFileDrop drop{u"L"_s, {}, c.on, 0, c.index, c.action};
    for (const QString& url : c.urls) drop.urls << (url.startsWith(u'/') ? QUrl::fromLocalFile(url) : QUrl(url));
    drops.routeDroppedFiles(drop);
    EXPECT_EQ(sentence(), c.sentence) << c.name;
    EXPECT_EQ(store.error(), c.error) << c.name;
    EXPECT_EQ(row(), c.expectedRow) << c.name;
    EXPECT_EQ(store.config().shelf, c.expectedShelf) << c.name;
    while (undo.size() > 0) undo.undo();
    EXPECT_EQ(store.config(), before) << c.name;
    EXPECT_EQ(files.takenBack, c.expectedBack) << c.name;
  }

  ASSERT_FALSE(pushed.isEmpty());
  for (const QList<QVariant>& step : pushed) EXPECT_EQ(step.at(2), u"L"_s) << "told above the dock that took the drop";

  files.error = u"“b” could not be moved: Permission denied."_s;
  drops.routeDroppedFiles({u"L"_s, {QUrl::fromLocalFile(u"/a"_s)}, folder.id});
  EXPECT_EQ(store.error(), files.error);
  EXPECT_EQ(undo.size(), 1) << "what was done can be taken back nevertheless";
}

TEST_F(DropsTest, AFolderThatIsShownTakesFilesAsItsTileDoes) {
  files.missing = {u"/goned"_s};
  const struct {
    const char* name;
    QString folder;
    QStringList urls;
    Qt::DropAction action;
    QString sentence, error;
    QStringList back;
  } rows[] = {
      {"moved", u"/old"_s, {u"file:///a"_s}, Qt::MoveAction, u"“a” was moved to “old”."_s, {}, {u"/a"_s}},
      {"copied, several",
       u"/old"_s,
       {u"file:///a"_s, u"file:///b"_s},
       Qt::CopyAction,
       u"2 items were copied to “old”."_s,
       {},
       {u"/a"_s, u"/b"_s}},
      {"a folder that is gone", u"/goned"_s, {u"file:///a"_s}, Qt::MoveAction, {}, u"“goned” no longer exists."_s, {}},
      {"an address",
       u"/old"_s,
       {u"https://example.org/"_s},
       Qt::CopyAction,
       {},
       u"Only files on this computer can be dropped here."_s,
       {}},
  };
  for (const auto& each : rows) {
    SCOPED_TRACE(each.name);
    undo.clear();
    files.takenBack.clear();
    store.clearError();
    drops.dropInto(each.folder, {.display = u"L"_s, .urls = QUrl::fromStringList(each.urls), .action = each.action});
    EXPECT_EQ(sentence(), each.sentence);
    EXPECT_EQ(store.error(), each.error);
    undo.undo();
    EXPECT_EQ(files.takenBack, each.back);
  }
}

TEST_F(DropsTest, DevicesNearbyAreSentWhatTheirTileTakes) {
  const DockWidget airdrop = tile(u"airdrop"_s);
  show({airdrop});
  const QList<QUrl> sent{QUrl::fromLocalFile(u"/a"_s), QUrl::fromLocalFile(u"/b"_s)};
  for (const bool isThere : {true, false}) {
    services.nearby.sent.clear();
    services.nearby.isThere = isThere;
    drops.routeDroppedFiles({u"L"_s, sent, airdrop.id});
    EXPECT_EQ(services.nearby.sent, isThere ? sent : QList<QUrl>());
    EXPECT_EQ(store.error().isEmpty(), isThere);
  }
  EXPECT_EQ(undo.size(), 0);
}

TEST_F(DropsTest, AnEntryThatOverridesOneOfTheDockIsTheSameApplication) {
  show({tile(u"appLauncher"_s, u"/all/applications/x.desktop"_s)});
  const QString before = row();
  drops.routeDroppedFiles({u"L"_s, {QUrl::fromLocalFile(u"/mine/applications/x.desktop"_s)}});
  EXPECT_EQ(store.error(), u"“x” is already in the dock."_s);
  EXPECT_EQ(row(), before);
}

TEST_F(DropsTest, AWidgetTravelsAsText) {
  show({tile(u"trash"_s), tile(u"digitalClock"_s)});
  DockWidget timer = tile(u"timer"_s);
  timer.options.insert(u"minutes"_s, u"5"_s);
  drops.dropWidget(WidgetTransfer::encode(timer), 1, u"L"_s);
  drops.dropWidget(WidgetTransfer::encode(timer), -1, u"L"_s);
  EXPECT_EQ(row(), u"trash timer digitalClock timer"_s);
  EXPECT_NE(store.widgets()[1].id, store.widgets()[3].id);
  EXPECT_EQ(store.widgets()[1].options, timer.options);
  drops.dropWidget(u"tarnwick-widget:e30"_s, 0, u"L"_s);
  EXPECT_EQ(store.error(), u"Invalid widget transfer."_s);

  QList<DockWidget> full;
  for (int i = 0; i < 149; ++i) full << tile(u"cpu"_s);
  show(full);
  // Two for one place: all or nothing.
  drops.routeDroppedFiles({u"L"_s, {QUrl::fromLocalFile(u"/a"_s), QUrl::fromLocalFile(u"/b"_s)}});
  EXPECT_EQ(store.error(), u"This dock already has 150 widgets."_s);
  EXPECT_EQ(store.widgets(), full);
}

TEST_F(DropsTest, ARemovedWidgetComesBackWhereItWas) {
  const DockWidget a = tile(u"cpu"_s);
  DockWidget b = tile(u"timer"_s);
  b.options.insert(u"minutes"_s, u"5"_s);
  const DockWidget c = tile(u"ram"_s);
  show({a, b, c});
  edits.remove(b.id);
  EXPECT_EQ(sentence(), u"“Timer” was removed from the dock."_s);
  EXPECT_EQ(row(), u"cpu ram"_s);
  undo.undo();
  EXPECT_EQ(store.widgets(), (QList<DockWidget>{a, b, c}));

  // Neighbours that went or moved meanwhile, a profile that is gone, a dock that is full.
  edits.remove(b.id);
  store.move(a.id, 1);
  undo.undo();
  EXPECT_EQ(row(), u"timer ram cpu"_s);
  edits.remove(b.id);
  store.newProfile(u"Other"_s, false);
  store.deleteProfile(store.config().profiles[0].id);
  undo.undo();
  EXPECT_EQ(row(), u"timer"_s);
  edits.remove(b.id);
  QList<DockWidget> full;
  while (full.size() < 150) full << tile(u"cpu"_s);
  show(full);
  undo.undo();
  EXPECT_EQ(store.error(), u"This dock already has 150 widgets."_s);
  EXPECT_TRUE(forgotten.isEmpty());

  // Credentials live until nothing can bring the widget back.
  edits.remove(full[0].id);
  for (qsizetype i = 0; i < UndoStack::kMost; ++i) undo.push(u"x"_s, [] {});
  EXPECT_EQ(forgotten, QList<QUuid>{full[0].id});
  edits.remove(full[1].id);
  undo.clear();
  EXPECT_EQ(forgotten, (QList<QUuid>{full[0].id, full[1].id}));
}

TEST_F(DropsTest, WhatComesBackIsFetchedAtOnce) {
  const auto in = [](DockWidget widget, const QString& city) {
    widget.options[option::city] = city;
    return widget;
  };
  const DockWidget rome = in(tile(kind::weatherCurrent.toString()), u"Rome"_s);
  const DockWidget unset = tile(kind::weatherCurrent.toString());
  struct Case {
    const char* name;
    std::function<void()> act;
    const char *done, *undone, *redone;
  };
  const Case cases[] = {
      {"a city", [&] { edits.update(in(rome, u"Oslo"_s)); }, "", "Rome", "Oslo"},
      {"a removal", [&] { edits.remove(rome.id); }, "", "Rome", ""},
      {"one that is not set up", [&] { edits.remove(unset.id); }, "", "", ""},
      {"one that is dropped", [&] { edits.insert({in(tile(kind::weatherCurrent.toString()), u"Bonn"_s)}, {}); }, "Bonn",
       "", "Bonn"},
      {"a unit", [&] { edits.change([](DockConfiguration& config) { config.temperatureUnit = u"fahrenheit"_s; }); },
       "all", "all", "all"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    store.edit([&](DockConfiguration& config) {
      config.profiles[0].widgets = {rome, unset};
      config.temperatureUnit = u"celsius"_s;
    });
    const auto fetched = [&] { return std::exchange(fetches.asked, {}).join(u' ').toStdString(); };
    fetched();
    each.act();
    EXPECT_EQ(fetched(), each.done);
    undo.undo();
    EXPECT_EQ(fetched(), each.undone);
    undo.redo();
    EXPECT_EQ(fetched(), each.redone);
    undo.clear();
  }
}

TEST_F(DropsTest, WhatIsDoneToProfilesCanBeTakenBack) {
  const QUuid everyday = store.profile().id;
  edits.newProfile(u"Work"_s, true);
  const QUuid work = store.profile().id;
  edits.pinDisplay(u"L"_s, everyday);
  const DockConfiguration before = store.config();

  // A listener changes something of its own, which stays.
  const auto listening = QObject::connect(&store, &AppStore::configChanged, &store, [this] {
    if (store.config().spacing != 9) store.edit([](DockConfiguration& config) { config.spacing = 9; });
  });
  edits.deleteProfile(everyday);
  QObject::disconnect(listening);
  EXPECT_EQ(store.config().profiles.size(), 1);
  EXPECT_FALSE(store.isPinned(u"L"_s));
  undo.undo();
  EXPECT_EQ(store.config().profiles, before.profiles);
  EXPECT_EQ(store.profile(u"L"_s).id, everyday);
  EXPECT_EQ(store.config().spacing, 9);

  undo.undo();
  EXPECT_EQ(store.profile(u"L"_s).id, work);
  undo.undo();
  EXPECT_EQ(store.profile().id, everyday);
  EXPECT_EQ(store.config().profiles.size(), 1);

  // What the keyring has for its widgets stays until it cannot come back.
  const DockWidget last = tile(u"cpu"_s);
  show({last});
  edits.newProfile(u"Work"_s, false);
  edits.deleteProfile(everyday);
  EXPECT_TRUE(forgotten.isEmpty());
  undo.clear();
  EXPECT_EQ(forgotten, QList<QUuid>{last.id});
}

TEST_F(DropsTest, ChangesOfTheSameFieldsThatFollowCloselyAreOneStep) {
  const auto scaleTo = [this](double scale) {
    edits.change([scale](DockConfiguration& config) { config.scale = scale; });
  };
  scaleTo(1.1);
  time.advance(0.5);
  store.edit([](DockConfiguration& config) { config.spacing = 9; });  // Another part's.
  scaleTo(1.2);
  time.advance(2);
  scaleTo(1.3);
  edits.change([](DockConfiguration& config) { config.edgeGap = 20; });
  EXPECT_EQ(undo.size(), 3);
  undo.undo();
  undo.undo();
  EXPECT_EQ(store.config().scale, 1.2);
  scaleTo(1.4);  // What was taken back is not gone on with.
  undo.undo();
  undo.undo();
  EXPECT_EQ(store.config().scale, 1.0);
  EXPECT_EQ(store.config().spacing, 9);

  edits.setHeld(true);
  for (const double scale : {1.1, 1.3, 1.2}) {
    scaleTo(scale);
    time.advance(5);
  }
  edits.setHeld(false);
  scaleTo(1.25);
  EXPECT_EQ(undo.size(), 2);
  undo.undo();
  EXPECT_EQ(store.config().scale, 1.2);
  scaleTo(1.5);
  scaleTo(1.2);  // There and back is nothing to take back.
  EXPECT_EQ(undo.size(), 1);
}

TEST_F(DropsTest, WhatWasTakenBackIsMadeAgain) {
  const DockWidget a = tile(u"cpu"_s);
  const DockWidget b = tile(u"timer"_s);
  const DockWidget c = tile(u"ram"_s);
  show({a, b, c});
  DockWidget named = b;
  named.title = u"Tea"_s;
  const struct {
    const char* name;
    std::function<void()> perform;
    const char* after;
  } cases[] = {
      {"removed", [&] { edits.remove(b.id); }, "cpu ram"},
      {"inserted", [&] { edits.insert({tile(u"flipClock"_s)}, u"L"_s, 1); }, "cpu flipClock timer ram"},
      {"added, a kind", [&] { edits.add(u"flipClock"_s, store.profile().id); }, "cpu timer ram flipClock"},
      {"added, a widget", [&] { edits.addWidget(named, store.profile().id); }, "cpu timer ram timer"},
      {"moved", [&] { edits.move(a.id, 2); }, "timer ram cpu"},
      {"edited", [&] { edits.update(named); }, "cpu timer ram"},
      {"set", [&] { edits.change([](DockConfiguration& config) { config.scale = 1.5; }); }, "cpu timer ram"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    const DockConfiguration before = store.config();
    each.perform();
    EXPECT_EQ(row().toStdString(), each.after);
    const DockConfiguration after = store.config();
    for (int turn = 0; turn < 2; ++turn) {
      undo.undo();
      EXPECT_EQ(store.config(), before);
      EXPECT_TRUE(undo.canRedo());
      undo.redo();
      EXPECT_EQ(store.config(), after);
    }
    undo.undo();
  }
  // Something new ends it.
  edits.remove(b.id);
  EXPECT_FALSE(undo.canRedo());
}

TEST_F(DropsTest, AWidgetMovesToTheDockOfAnotherDisplayAsOneStep) {
  const DockWidget a = tile(u"cpu"_s);
  const DockWidget b = tile(u"timer"_s);
  const DockWidget c = tile(u"ram"_s);
  const struct {
    const char* name;
    bool ownProfile;  ///< Of the display that it is let go on.
    qsizetype index;
    const char* left;
    const char* right;
  } rows[] = {{"before the first", true, 0, "cpu ram", "timer battery network"},
              {"between", true, 1, "cpu ram", "battery timer network"},
              {"behind the last", true, 2, "cpu ram", "battery network timer"},
              {"nowhere among them", true, -1, "cpu ram", "battery network timer"},
              {"to the front of the same profile", false, 0, "timer cpu ram", "timer cpu ram"},
              {"to its end", false, 3, "cpu ram timer", "cpu ram timer"},
              {"to its own place", false, 2, "cpu timer ram", "cpu timer ram"}};
  const auto kindsOn = [&](const QString& display) {
    QStringList kinds;
    for (const DockWidget& widget : store.displayedWidgets(display)) kinds << widget.kind;
    return kinds.join(u' ').toStdString();
  };
  for (const auto& each : rows) {
    SCOPED_TRACE(each.name);
    undo.clear();
    store.edit([&](DockConfiguration& config) {
      config.profiles = {DockProfile::initial(), DockProfile::initial()};
      config.profiles[0].widgets = {a, b, c};
      config.profiles[1].widgets = {tile(u"battery"_s), tile(u"network"_s)};
      config.activeProfileID = config.profiles[0].id;
      DocumentEdits::pin(config, u"R"_s, config.profiles[each.ownProfile ? 1 : 0].id);
    });
    const DockConfiguration before = store.config();
    edits.moveTo(b.id, u"R"_s, each.index);
    EXPECT_EQ(kindsOn(u"L"_s), each.left);
    EXPECT_EQ(kindsOn(u"R"_s), each.right);
    const DockConfiguration after = store.config();
    EXPECT_EQ(undo.size(), after == before ? 0 : 1);
    undo.undo();
    EXPECT_EQ(store.config(), before);
    undo.redo();
    EXPECT_EQ(store.config(), after);
  }

  store.edit([&](DockConfiguration& config) {
    config.profiles[0].widgets = {a, b, c};
    DocumentEdits::pin(config, u"R"_s, config.profiles[1].id);
    auto& full = config.profiles[1].widgets;
    while (full.size() < DockConfiguration::kMostWidgets) full << tile(u"cpu"_s);
  });
  const DockConfiguration before = store.config();
  undo.clear();
  edits.moveTo(b.id, u"R"_s, 0);
  EXPECT_EQ(store.config(), before) << "where there is no room it stays";
  EXPECT_EQ(store.error(), u"This dock already has 150 widgets."_s);
  EXPECT_EQ(undo.size(), 0);
}

TEST_F(DropsTest, ChangesOfTheSameOptionsThatFollowCloselyAreOneStep) {
  DockWidget water = tile(u"drinkWater"_s);
  show({water});
  for (const char* goal : {"9", "10", "11"}) {
    water.options[u"goal"_s] = QString::fromLatin1(goal);
    edits.update(water);
    store.drink(water.id);  // Counts go on, and are no part of it.
    water = store.widgets().first();
    time.advance(0.5);
  }
  time.advance(2);
  water.options[u"goal"_s] = u"12"_s;
  edits.update(water);
  EXPECT_EQ(undo.size(), 2);
  // One that is announced to the user neither goes on with what was before nor is gone on with.
  QStringList sentences;
  for (const QString& announced : {QString(), u"The goal was raised."_s, QString()}) {
    water.options[u"goal"_s] = QString::number(13 + sentences.size());
    edits.update(water, {announced, u"L"_s});
    sentences << sentence();
  }
  EXPECT_EQ(sentences, (QStringList{{}, u"The goal was raised."_s, {}}));
  EXPECT_EQ(undo.size(), 4);
  undo.undo();
  undo.undo();
  EXPECT_EQ(store.widgets().first().options.value(u"goal"_s), u"13"_s);
  undo.redo();
  EXPECT_EQ(store.widgets().first().options.value(u"goal"_s), u"14"_s);
  undo.undo();
  undo.undo();
  undo.undo();
  EXPECT_FALSE(store.widgets().first().options.contains(u"goal"_s));
  EXPECT_EQ(store.waterCount(store.widgets().first()), 3);
}

TEST(UndoStack, TakesBackWhatIsAskedAndSurvivesWhatFails) {
  UndoStack stack;
  QStringList log;
  QObject::connect(&stack, &UndoStack::failed, [&](const QString& message) { log << message; });
  const quint64 first = stack.push(u"first"_s, [&] { log << u"first"_s; });
  stack.push(u"second"_s, [] { throw DomainError::invalid(u"It is gone."_s); });
  stack.push(u"third"_s, [&] {
    log << u"third"_s;
    stack.push(u"again"_s, [] {});
  });
  stack.undo();
  EXPECT_EQ(stack.latest()->sentence, u"again"_s);
  stack.undo(first);
  stack.undo(first);
  stack.undo();
  stack.undo();
  stack.undo();
  EXPECT_EQ(log, (QStringList{u"third"_s, u"first"_s, u"It is gone."_s}));
}

TEST(PinnedTiles, AnOverriddenEntryIsTheSameApplication) {
  const auto idOf = [](const QString& path) { return path.section(u'/', -1).section(u'.', 0, 0); };
  const auto app = [](const QString& id, const QString& path) {
    RunningApp running;
    running.desktopId = id;
    running.path = path;
    return running;
  };
  DockWidget folder{QUuid::createUuid(), u"appFolder"_s, {}, {{u"paths"_s, u"/usr/a.desktop\n/usr/b.desktop\n"_s}}};
  const QList<DockWidget> widgets{folder, PinnedTiles::launcher(u"/usr/c.desktop"_s), {QUuid(), u"cpu"_s, {}, {}}};
  EXPECT_EQ(PinnedTiles::heldPaths(widgets).size(), 3);
  const QList<RunningApp> running{app(u"a"_s, u"/usr/a.desktop"_s), app(u"c"_s, u"/home/c.desktop"_s),
                                  app(u"d"_s, u"/usr/d.desktop"_s), app({}, {})};
  EXPECT_EQ(PinnedTiles::unheld(running, widgets, idOf), (QList<RunningApp>{running[2], running[3]}));
}

}  // namespace
}  // namespace tarnwick
