#include <gtest/gtest.h>

#include <QDir>
#include <QImageReader>
#include <QSet>
#include <QTemporaryDir>

#include "app/SnapshotBar.h"
#include "app/SnapshotMode.h"
#include "app/SnapshotWindows.h"
#include "base/DomainError.h"
#include "support/FileTest.h"
#include "views/commandbar/CommandBarMeasures.h"
#include "views/onboarding/OnboardingWindow.h"
#include "views/settings/SettingsWindow.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(SnapshotTest, ReadsItsOptions) {
  const SnapshotOptions all = snapshotOptions({u"--snapshot"_s, u"--output"_s, u"/pictures"_s});
  EXPECT_EQ(all.folder, u"/pictures"_s);
  EXPECT_TRUE(all.tiles && all.panels && all.docks && all.windows && all.bars);
  EXPECT_EQ(all.densities, (QList<double>{1, 2}));
  const SnapshotOptions some = snapshotOptions(
      {u"--output"_s, u"/p"_s, u"--snapshot-images"_s, u"docks, tiles"_s, u"--snapshot-densities"_s, u"1.5,1.5,3"_s});
  EXPECT_TRUE(some.tiles && some.docks && !some.panels && !some.windows && !some.bars);
  EXPECT_EQ(some.densities, (QList<double>{1.5, 3}));
  EXPECT_FALSE(some.locale) << "that of the fixture";
  EXPECT_EQ(snapshotOptions({u"--output"_s, u"/p"_s, u"--snapshot-locale"_s, u"ar_EG"_s}).locale,
            QLocale(QLocale::Arabic, QLocale::Egypt));

  const auto fails = [](const QStringList& arguments) {
    return !failureOf([&] { snapshotOptions(QStringList{u"--output"_s, u"/p"_s} + arguments); }).empty();
  };
  EXPECT_TRUE(fails({u"--snapshot-images"_s, u"tiles,moons"_s}));
  EXPECT_TRUE(fails({u"--snapshot-images"_s}));
  EXPECT_TRUE(fails({u"--snapshot-locale"_s, u"nowhere"_s}));
  for (const QString& density : {u"0"_s, u"-1"_s, u"two"_s, u"1,,2"_s, u"100"_s, u"nan"_s})
    EXPECT_TRUE(fails({u"--snapshot-densities"_s, density})) << density.toStdString();
}

TEST(SnapshotTest, WritesWhatWasChosen) {
  QTemporaryDir folder;
  SnapshotOptions options;
  options.folder = folder.path();
  options.panels = options.windows = false;
  options.densities = {1.5};
  const QStringList files = takeSnapshot(options);
  const qsizetype kinds = Catalog::items().size();
  const QDir root(folder.path());
  const auto count = [&](const QString& part) {
    return QDir(root.filePath(part)).entryList({u"*@1.5x.png"_s}, QDir::Files).size();
  };
  EXPECT_EQ(count(u"tiles"_s), kinds);
  EXPECT_EQ(count(u"docks"_s), 7);
  EXPECT_EQ(count(u"panels"_s), 0);
  EXPECT_GE(count(u"sheets"_s), Catalog::groups().size() * 3);
  EXPECT_EQ(files.size(), count(u"tiles"_s) + count(u"docks"_s) + count(u"sheets"_s));
  const QSize one = QImageReader(root.filePath(u"tiles/cpu@1.5x.png"_s)).size();
  EXPECT_GT(one.width(), static_cast<int>(Catalog::find(u"cpu"_s).width * 1.5));

  options.folder = root.filePath(u"tiles/cpu@1.5x.png"_s);
  EXPECT_NE(failureOf([&] { takeSnapshot(options); }), "");
}

TEST(SnapshotTest, IsTheSameEachTime) {
  QTemporaryDir folder;
  const auto take = [&](const QString& name) {
    SnapshotOptions options;
    options.folder = folder.filePath(name);
    options.tiles = options.panels = options.windows = false;
    options.densities = {1};
    takeSnapshot(options);
    return QImage(folder.filePath(name + u"/docks/darkGlass@1x.png"_s));
  };
  const QImage first = take(u"a"_s);
  ASSERT_FALSE(first.isNull());
  EXPECT_EQ(first, take(u"b"_s));
}

TEST(SnapshotTest, PicturesEveryWindowOfTheProgram) {
  SnapshotWindows windows;
  QTemporaryDir folder;
  SnapshotOptions options;
  options.folder = folder.path();
  options.tiles = options.panels = options.docks = false;
  options.densities = {1};
  options.windowList = windows.list();
  QSet<QByteArray> pictures;
  for (const QString& file : takeSnapshot(options)) {
    const QImage image(QDir(folder.path()).filePath(file));
    EXPECT_GT(image.width(), 300) << file.toStdString();
    pictures.insert(QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
  }
  EXPECT_GE(options.windowList.size(), SettingsWindow::sections().size() + OnboardingWindow::kPages + 5);
  EXPECT_EQ(pictures.size(), options.windowList.size() * 2)
      << "each is pictured, dark and light, and looks its own way";
}

TEST(SnapshotTest, PicturesTheCommandBarInEachOfItsStates) {
  SnapshotWindows windows;
  QTemporaryDir folder;
  SnapshotOptions options;
  options.folder = folder.path();
  options.tiles = options.panels = options.docks = options.windows = false;
  options.densities = {1};
  options.barList = SnapshotBar::list(windows.places());
  takeSnapshot(options);
  const QDir bars(folder.filePath(u"bars"_s));
  QSet<QByteArray> pictures;
  for (const QString& file : bars.entryList(QDir::Files)) {
    const QImage image(bars.filePath(file));
    pictures.insert(QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
  }
  EXPECT_EQ(pictures.size(), options.barList.size() * 3) << "each looks its own way in each of three looks";
  const auto heightOf = [&](const QString& state) { return QImage(bars.filePath(state + u"-dark@1x.png"_s)).height(); };
  EXPECT_EQ(heightOf(u"all-rows"_s) - heightOf(u"empty"_s), 12 * 44 + 2 * 8 + theme::kBarDivider)
      << "of both full lists, with the line between them";
  EXPECT_GT(heightOf(u"settings"_s), heightOf(u"sum"_s)) << "places of Settings are found";
}

}  // namespace
}  // namespace tarnwick
