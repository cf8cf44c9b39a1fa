#include <gtest/gtest.h>

#include <QPainter>
#include <QSet>

#include "DockFixture.h"
#include "base/LocalFigures.h"
#include "views/families/Rooms.h"
#include "views/families/clocks/DigitTiles.h"
#include "views/families/system/MachineWords.h"
#include "views/families/system/ProcessTiles.h"
#include "views/panels/Room.h"
#include "views/tiles/TilePainter.h"
#include "widgets/ClockWords.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

const QLocale kEgypt(QLocale::Arabic, QLocale::Egypt);

/// What is without a locale of its own is written in this one.
class DefaultLocale {
 public:
  explicit DefaultLocale(const QLocale& locale) { QLocale::setDefault(locale); }
  ~DefaultLocale() { QLocale::setDefault(before_); }

 private:
  QLocale before_;
};

TileSources everything(const QLocale& locale) {
  TileSources sources;
  sources.now = QDateTime(QDate(2026, 11, 24), QTime(10, 24, 36), Qt::UTC);
  sources.locale = locale;
  sources.use24Hour = ClockWords::writes24Hours(locale);
  for (const Room* room : Rooms::all())
    if (room->picture) room->picture(sources);
  return sources;
}

bool hasLatinDigit(const QString& text) {
  return std::ranges::any_of(text, [](QChar each) { return each >= u'0' && each <= u'9'; });
}

}  // namespace

TEST(LocalFigures, NumbersTakeTheLocalesDigitsAndMarks) {
  const QLocale english(QLocale::English, QLocale::UnitedKingdom);
  const QLocale german(QLocale::German);
  struct Case {
    QLocale locale;
    QString ascii;
    QString local;
  };
  for (const Case& each : {Case{english, u"35.5%"_s, u"35.5%"_s},
                           {english, u"1,204.5 MB"_s, u"1,204.5 MB"_s},
                           {german, u"35.5%"_s, u"35,5%"_s},
                           {german, u"1,204.5 MB"_s, u"1.204,5 MB"_s},
                           {german, u"1:05:09.4"_s, u"1:05:09,4"_s},
                           {german, u"12."_s, u"12."_s},
                           {german, u"—"_s, u"—"_s},
                           {german, {}, {}},
                           {kEgypt, u"12:05"_s, u"١٢:٠٥"_s},
                           {kEgypt, u"−5°"_s, u"−٥°"_s},
                           {kEgypt, u"35.5%"_s, u"٣٥٫٥"_s + kEgypt.percent()},
                           {kEgypt, u"a % b"_s, u"a % b"_s},
                           {QLocale(QLocale::Chakma, QLocale::Bangladesh), u"10"_s, u"𑄷𑄶"_s}})
    EXPECT_EQ(LocalFigures::of(each.ascii, each.locale), each.local) << each.locale.name().toStdString();
  EXPECT_EQ(LocalFigures::number(1440, english), u"1440"_s) << "a figure of a tile has no marks between its groups";
  EXPECT_EQ(LocalFigures::number(-12, kEgypt), u"-١٢"_s);
  EXPECT_EQ(LocalFigures::percent(7, kEgypt), u"٧"_s + kEgypt.percent());
}

TEST(LocalFigures, OneDecimalMarkInOnePanel) {
  const QLocale german(QLocale::German);
  TileSources sources = everything(german);
  sources.readings.processes = {{{1, 1, u"indexer 2.0"_s, 0, 1 << 20}, 35.5}};
  const auto tile = makeTileContent(widget(u"processTopApps"_s), Catalog::find(u"processTopApps"_s), sources);
  EXPECT_EQ(contentAs<ProcessesContent>(tile).rows.first().value, u"35,5%"_s);
  EXPECT_EQ(contentAs<ProcessesContent>(tile).rows.first().name, u"indexer 2.0"_s) << "a name is no number";
  MachineReading reading;
  reading.load = 6.98;
  EXPECT_EQ(MachineWords::processor(german, reading), u"load 6,98"_s);
}

TEST(LocalFigures, EveryTileSpeaksInTheUsersDigits) {
  const DefaultLocale egypt(kEgypt);
  const TileSources sources = everything(kEgypt);
  // These say what a user wrote, or copies; services write their figures themselves.
  const QSet<QString> others{kind::quickTodo, kind::calculator, kind::converter, kind::colorPicker};
  int spoken = 0;
  for (const WidgetDefinition& kind : Catalog::items()) {
    if (others.contains(kind.id) || isConnectedFamily(kind.family)) continue;
    const DockWidget tile{QUuid(), kind.id, {}, Rooms::pictured(kind.id, sources.now)};
    const QString value = makeTileContent(tile, kind, sources).describe({}).spoken();
    EXPECT_FALSE(hasLatinDigit(value)) << kind.id.toStdString() << ": " << value.toStdString();
    spoken += std::ranges::any_of(value, [](QChar each) { return each >= u'٠' && each <= u'٩'; }) ? 1 : 0;
  }
  EXPECT_GT(spoken, 30);
}

TEST(LocalFigures, WhatIsStoredStays) {
  const DefaultLocale egypt(kEgypt);
  DockWidget timer = widget(u"timer"_s);
  timer.options = {{option::minutes, u"25"_s}, {option::remaining, u"65.5"_s}};
  const TileSources sources = everything(kEgypt);
  EXPECT_TRUE(makeTileContent(timer, Catalog::find(timer.kind), sources).describe({}).value.contains(u"٠١:٠٦"_s));
  EXPECT_EQ(timer.options.value(option::remaining), u"65.5"_s);
}

TEST(TwelveHours, EveryClockTellsMorningFromEveningAtEveryScale) {
  TileSources morning = everything(QLocale(QLocale::English, QLocale::UnitedStates));
  ASSERT_FALSE(morning.use24Hour);
  TileSources evening = morning;
  evening.now = morning.now.addSecs(12 * 3600);
  for (const QString& kind : {u"timeOnly"_s, u"timeSeconds"_s, u"flipClock"_s, u"pixelClock"_s, u"overlapClock"_s,
                              u"ringClock"_s, u"digitalClock"_s, u"worldClockCity"_s})
    for (const double scale : {0.5, 0.7, 1.0, 1.6}) {
      const auto picture = [&](const TileSources& sources) {
        const WidgetDefinition& definition = Catalog::find(kind);
        TileStyle style;
        style.palette = Palette::make(DockStyle::DarkGlass, Backdrop::Opaque, false);
        style.scale = scale;
        QImage image(static_cast<int>(definition.width * scale), static_cast<int>(64 * scale), QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        paintTile(painter, image.rect(), makeTileContent(widget(kind), definition, sources), style);
        painter.end();
        return image;
      };
      EXPECT_NE(picture(morning), picture(evening)) << kind.toStdString() << " at " << scale;
    }
}

}  // namespace tarnwick::testing
