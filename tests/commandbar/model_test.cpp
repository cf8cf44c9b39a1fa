#include <QSignalSpy>

#include "commandbar/CommandBarTest.h"

namespace tarnwick {
namespace {

TEST_F(CommandBarTest, ShowsNothingForNothing) {
  EXPECT_EQ(rows(), "");
  for (const auto& query : {u" "_s, u"\t"_s, QString()}) {
    model->setQuery(query);
    EXPECT_EQ(rows(), "") << '"' << query.toStdString() << '"';
  }
  EXPECT_FALSE(model->selected());
  model->moveSelection(1);
  EXPECT_EQ(model->selection(), 0);
}

TEST_F(CommandBarTest, LeadsWithACalculationAndEndsWithTheWeb) {
  model->setQuery(u" 2+2 "_s);
  EXPECT_EQ(rows(), "calc:4 web:search");
  model->setQuery(u"Editor"_s);
  EXPECT_EQ(model->results().first().id, u"app:/apps/editor.desktop"_s);
  EXPECT_EQ(model->results().last().id, u"web:search"_s);
  model->setQuery(u"example.dev"_s);
  EXPECT_EQ(rows(), "web:https://example.dev");
  model->setQuery(u"m"_s);
  EXPECT_EQ(model->results().size(), 12);
  model->setQuery(u"x"_s.repeated(10'000));
  EXPECT_EQ(rows(), "web:search");
}

TEST_F(CommandBarTest, ShowsCopiesOnlyWhileTheHistoryIsOn) {
  copy(u"mail to Ada"_s);
  model->setQuery(u"mail to"_s);
  EXPECT_EQ(rowsOf(CommandItem::Kind::Clipboard).size(), 0);
  store->edit([](DockConfiguration& config) { config.clipboardEnabled = true; });
  model->recompute();
  ASSERT_EQ(rowsOf(CommandItem::Kind::Clipboard).size(), 1);
  // What comes while the bar is open is found too.
  copy(u"mail to Eve"_s);
  model->refresh();
  EXPECT_EQ(rowsOf(CommandItem::Kind::Clipboard).size(), 2);
  CommandBarChoices choices;
  choices.findsClipboard = choices.searchesWeb = false;
  model->setChoices(choices);
  EXPECT_EQ(rows(), "");
  EXPECT_EQ(clipboardLoads, 1);
}

TEST_F(CommandBarTest, TheSelectionWrapsAndBeginsAnewWithEachQuery) {
  CommandBarChoices choices;
  choices.findsWidgets = choices.findsSymbols = false;
  model->setChoices(choices);
  model->setQuery(u"ma"_s);
  ASSERT_EQ(rows(), "app:mail.desktop app:maps.desktop web:search");
  const struct {
    qsizetype by;
    qsizetype place;
  } steps[] = {{-1, 2}, {1, 0}, {1, 1}, {1, 2}, {1, 0}, {-7, 2}};
  for (const auto& step : steps) {
    model->moveSelection(step.by);
    EXPECT_EQ(model->selection(), step.place);
  }
  EXPECT_EQ(model->selected().value_or(CommandItem()).id, u"web:search"_s);
  model->setQuery(u"map"_s);
  EXPECT_EQ(model->selection(), 0);

  QSignalSpy queries(model.get(), &CommandBarModel::queryChanged);
  QSignalSpy results(model.get(), &CommandBarModel::resultsChanged);
  model->moveSelection(1);
  model->setQuery(u"map"_s);
  EXPECT_EQ(model->selection(), 1);
  EXPECT_EQ(queries.size() + results.size(), 0);
}

TEST_F(CommandBarTest, LooksForFilesOnceTypingRests) {
  model->setQuery(u"m"_s);
  EXPECT_EQ(waiting(), 0);
  model->setQuery(u"zq"_s);
  time.advance(0.1);
  model->setQuery(u" zqx"_s);
  time.advance(0.1);
  EXPECT_EQ(search.asked, QStringList());
  time.advance(0.05);
  EXPECT_EQ(search.asked, QStringList{u"zqx"_s});
  EXPECT_TRUE(model->searchingFiles());

  QStringList names;
  for (int i = 0; i < 30; ++i) names << u"zqx %1"_s.arg(i, 2, 10, QChar(u'0'));
  model->moveSelection(0);
  findFiles(names);
  EXPECT_FALSE(model->searchingFiles());
  const auto files = rowsOf(CommandItem::Kind::File);
  ASSERT_EQ(files.size(), 12);
  EXPECT_EQ(files.first().title, u"zqx 00"_s);

  // They stay through the next key, are judged by it, and go once there is news.
  model->setQuery(u"zqx 03"_s);
  EXPECT_EQ(rows(), "file:zqx 03 web:search");
  model->recompute();
  EXPECT_EQ(rows(), "web:search");
  time.advance(0.15);
  EXPECT_TRUE(search.isRunning());
  model->setQuery(u"z"_s);
  EXPECT_FALSE(search.isRunning());
  EXPECT_FALSE(model->searchingFiles());
  EXPECT_EQ(waiting(), 0);
}

TEST_F(CommandBarTest, ArrivingFilesKeepTheSelectedPlace) {
  model->setQuery(u"zq"_s);
  time.advance(0.15);
  findFiles({u"zq a"_s, u"zq b"_s});
  ASSERT_EQ(rows(), "file:zq a file:zq b web:search");
  model->moveSelection(2);
  model->recompute();
  EXPECT_EQ(model->selection(), 2);
  model->setQuery(u"zq "_s);
  model->moveSelection(2);
  time.advance(0.15);
  findFiles({});
  EXPECT_EQ(rows(), "web:search");
  EXPECT_EQ(model->selection(), 0);
}

TEST_F(CommandBarTest, ClosingEndsTheSearchAndForgetsTheQuery) {
  model->setQuery(u"zqx"_s);
  model->closed();
  EXPECT_EQ(waiting(), 0);
  model->opened();
  model->setQuery(u"zqx"_s);
  time.advance(0.15);
  model->closed();
  EXPECT_FALSE(search.isRunning() || model->searchingFiles());
  EXPECT_EQ(model->query(), QString());
  EXPECT_EQ(rows(), "");
  Q_EMIT desktop.installedApps.changed();
  model->opened();
  model->setQuery(u"zqx"_s);
  EXPECT_EQ(rows(), "web:search");
  time.advance(0.15);
  model.reset();
  EXPECT_FALSE(search.isRunning());
  EXPECT_EQ(clipboardLoads, 1);
}

TEST_F(CommandBarTest, NewApplicationsKeepTheSelectedRow) {
  CommandBarChoices choices;
  choices.findsWidgets = choices.findsSymbols = false;
  model->setChoices(choices);
  model->setQuery(u"map"_s);
  ASSERT_EQ(rows(), "app:maps.desktop web:search");
  desktop.installedApps.setFixed(appsNamed({u"Map"_s, u"Maps"_s}));
  Q_EMIT desktop.installedApps.changed();
  EXPECT_EQ(rows(), "app:map.desktop app:maps.desktop web:search");
  EXPECT_EQ(model->selection(), 1);

  // Return does not search the web for the name of an application that is read only now.
  model->setQuery(u"zqx"_s);
  ASSERT_EQ(rows(), "web:search");
  desktop.installedApps.setFixed(appsNamed({u"Zqx"_s}));
  Q_EMIT desktop.installedApps.changed();
  EXPECT_EQ(rows(), "app:zqx.desktop web:search");
  EXPECT_EQ(model->selection(), 0);
  model->moveSelection(1);
  desktop.installedApps.setFixed(appsNamed({u"Zqx"_s, u"Zqxy"_s}));
  Q_EMIT desktop.installedApps.changed();
  EXPECT_EQ(model->selection(), 2) << "it was gone to";
}

TEST_F(CommandBarTest, OffersWindowsButTheOneThatWasInFront) {
  for (const quint64 id : {1, 2}) {
    ClientWindow window;
    window.id = id;
    window.applicationId = u"editor"_s;
    window.title = u"zq %1"_s.arg(id);
    window.active = id == 2;
    desktop.windows.list << window;
  }
  desktop.applications.start();
  model->opened();
  desktop.windows.list[1].active = false;  // The bar is in front now.
  model->setQuery(u"zq"_s);
  ASSERT_EQ(model->results().size(), 2);
  EXPECT_EQ(model->results().first().id, u"window:1"_s);
  EXPECT_EQ(model->results().first().subtitle, u"Switch to · Editor"_s);
  EXPECT_TRUE(model->activate(model->results().first()));
  EXPECT_EQ(commands.asked, QStringList{u"window 1"_s});
  EXPECT_TRUE(CommandUsageStore::load(folder_.path()).records.isEmpty());
}

TEST_F(CommandBarTest, DoesWhatARowStandsFor) {
  CommandItem row;
  const auto make = [&](CommandItem::Kind kind, const QString& id, const QString& path, const QString& payload) {
    row.id = id;
    row.kind = kind;
    row.path = path;
    row.payload = payload;
    return row;
  };
  using Kind = CommandItem::Kind;
  const QList<std::pair<CommandItem, QString>> cases{
      {make(Kind::App, u"app:/a.desktop"_s, u"/a.desktop"_s, {}), u"start /a.desktop"_s},
      {make(Kind::File, u"file:/f"_s, u"/f"_s, {}), u"/f"_s},
      {make(Kind::Clipboard, u"clip:X"_s, {}, u" a\nb"_s), u"copy  a\nb"_s},
      {make(Kind::Calculation, u"calc:4"_s, {}, u"4"_s), u"copy 4"_s},
      {make(Kind::Symbol, u"symbol:→"_s, {}, u"→"_s), u"copy →"_s},
      {make(Kind::Web, u"web:search"_s, {}, u"https://x.org/?q=a"_s), u"https://x.org/?q=a"_s},
  };
  for (const auto& [item, asked] : cases) {
    commands.asked.clear();
    EXPECT_TRUE(model->activate(item));
    EXPECT_EQ(commands.asked, QStringList{asked});
  }
  commands.asked.clear();
  EXPECT_TRUE(model->activate(make(Kind::Web, u"web:bad"_s, {}, u"https://a^b"_s)));
  EXPECT_EQ(commands.asked, QStringList());
  model->revealInFinder(cases[1].first);
  model->copyPath(cases[1].first);
  EXPECT_EQ(commands.asked, (QStringList{u"reveal /f"_s, u"copy /f"_s}));

  commands.asked.clear();
  model->activate(make(Kind::Widget, u"widget:todayClock"_s, {}, u"todayClock"_s));
  EXPECT_EQ(commands.asked.size(), 1);
  EXPECT_TRUE(commands.asked.join(u' ').contains(u"todayClock"_s));
}

TEST_F(CommandBarTest, RemembersWhatWasChosen) {
  model->setQuery(u"ma"_s);
  const auto rowsBefore = model->results();
  const CommandItem maps = *std::ranges::find(rowsBefore, u"app:/apps/maps.desktop"_s, &CommandItem::id);
  EXPECT_EQ(model->results().first().title, u"Mail"_s);
  model->activate(maps);
  model->activate(maps);
  model.reset();
  EXPECT_EQ(CommandUsageStore::load(folder_.path()).records.value(maps.id).count, 2);
  start();
  model->setQuery(u"ma"_s);
  EXPECT_EQ(model->results().first().title, u"Maps"_s);
}

TEST_F(CommandBarTest, SearchingTheWebLiftsNoRow) {
  for (const auto& query : {u"news"_s, u"weather today"_s, u"maps of io"_s, u"https://example.org"_s}) {
    model->setQuery(query);
    EXPECT_TRUE(model->activate(model->results().last()));
  }
  EXPECT_EQ(commands.asked.size(), 4);
  model->setQuery(u"map"_s);
  EXPECT_EQ(model->results().first().title, u"Maps"_s);
  EXPECT_EQ(model->results().last().id, u"web:search"_s);
  model.reset();
  const auto records = CommandUsageStore::load(folder_.path()).records;
  EXPECT_EQ(records.value(u"web:search"_s).count, 3) << "it is noted all the same";
  EXPECT_EQ(records.value(u"web:https://example.org"_s).count, 1);
  EXPECT_EQ(records.size(), 2);
}

}  // namespace
}  // namespace tarnwick
