#include <gtest/gtest.h>

#include <QApplication>
#include <QBitmap>
#include <QGraphicsOpacityEffect>
#include <QLocale>
#include <QMenu>
#include <QProxyStyle>
#include <algorithm>
#include <cmath>

#include "../support/TestFrameClock.h"
#include "views/families/Rooms.h"
#include "views/theme/BadgePicture.h"
#include "views/theme/DesktopLook.h"
#include "views/theme/Emoji.h"
#include "views/theme/Glass.h"
#include "views/theme/IconStyle.h"
#include "views/theme/MenuStyle.h"
#include "views/theme/Palette.h"
#include "views/theme/SmoothLine.h"
#include "views/theme/SymbolTable.h"
#include "views/theme/Symbols.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"
#include "views/theme/WindowFade.h"
#include "views/theme/WindowPalette.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

constexpr TextStyle kTextStyles[] = {TextStyle::Display, TextStyle::Headline, TextStyle::Title,     TextStyle::Body,
                                     TextStyle::ListRow, TextStyle::Caption,  TextStyle::GaugeLabel};

}

TEST(SmoothLine, FlowsThroughTheSamplesWithoutLeavingTheRangeOfNeighbours) {
  const QList<QList<QPointF>> cases = {
      {{0, 5}},
      {{0, 0}, {4, 8}},
      {{0, 0}, {1, 0}, {2, 10}, {3, 10}, {4, 10}, {5, 2}, {6, 9}},
      {{0, 3}, {1, 3.5}, {5, 90}, {6, 1}, {6.5, 1}, {12, 40}},
  };
  for (const QList<QPointF>& samples : cases) {
    const QPainterPath line = smoothLine(samples);
    for (int i = 0; i + 1 < samples.size(); ++i) {
      const QPointF from = samples[i], to = samples[i + 1];
      const QPointF first = line.elementAt(1 + 3 * i), second = line.elementAt(2 + 3 * i);
      EXPECT_EQ(QPointF(line.elementAt(3 + 3 * i)), to);
      const double low = std::min(from.y(), to.y()), high = std::max(from.y(), to.y());
      double before = from.y();
      for (double t = 0; t <= 1; t += 0.05) {
        const double u = 1 - t;
        const double y =
            u * u * u * from.y() + 3 * u * u * t * first.y() + 3 * u * t * t * second.y() + t * t * t * to.y();
        EXPECT_TRUE(y >= low - 1e-9 && y <= high + 1e-9) << i << " at " << t;
        EXPECT_GE((y - before) * (to.y() - from.y()), -1e-9) << "it turns back between two samples";
        before = y;
      }
    }
  }
  EXPECT_TRUE(smoothLine({}).isEmpty());

  // A ramp is straight, not a row of steps.
  const QPainterPath ramp = smoothLine({{0, 0}, {1, 2}, {2, 4}, {3, 6}});
  for (double share = 0; share <= 1; share += 0.01) {
    const QPointF at = ramp.pointAtPercent(share);
    EXPECT_NEAR(at.y(), at.x() * 2, 1e-6);
  }
}

TEST(Badges, LettersStandOutFromEveryColour) {
  const auto luminance = [](const QColor& color) {
    const auto linear = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
  };
  for (const bool light : {false, true})
    for (const bool monochrome : {false, true})
      for (const bool highContrast : {false, true}) {
        const Palette palette =
            Palette::make(light ? DockStyle::White : DockStyle::Black, Backdrop::Plain, monochrome, highContrast);
        QList<QRgb> seen;
        for (int color = 0; color < Palette::kBadgeColors; ++color) {
          const BadgeColors colors = palette.badge(color);
          const double one = luminance(colors.ground), other = luminance(colors.ink);
          EXPECT_GE((std::max(one, other) + 0.05) / (std::min(one, other) + 0.05), highContrast ? 7 : 4.5) << color;
          const bool isAlike = monochrome || highContrast;
          EXPECT_TRUE(isAlike || !seen.contains(colors.ground.rgb())) << color;
          seen << colors.ground.rgb();
        }
      }
}

TEST(Badges, TellServicesApartBySmallLettersAloneAndByInitialAndColour) {
  const auto picture = [](const ServiceBadge& badge, bool monochrome, BadgeDetail detail, int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette palette = Palette::make(DockStyle::Black, Backdrop::Plain, monochrome, false);
    drawServiceBadge(painter, image.rect(), 4, badge, palette, detail);
    return image;
  };
  const auto differs = [](const QImage& a, const QImage& b) {
    int pixels = 0;
    for (int y = 0; y < a.height(); ++y)
      for (int x = 0; x < a.width(); ++x)
        if (std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 40) ++pixels;
    return pixels;
  };
  QList<ServiceBadge> badges;
  for (const WidgetDefinition& item : Catalog::items())
    if (isConnectedFamily(item.family) && !badges.contains(serviceBadge(item))) badges << serviceBadge(item);
  for (const ServiceBadge& badge : badges)
    for (const QChar letter : badge.letters) EXPECT_FALSE(badgeLetter(letter).isEmpty());
  const int compact = static_cast<int>(theme::kSymbolSize * theme::kCompactScale);
  for (qsizetype i = 0; i < badges.size(); ++i)
    for (qsizetype j = 0; j < i; ++j) {
      SCOPED_TRACE((badges[i].letters + u' ' + badges[j].letters).toStdString());
      // In one colour, as large as they are in the smallest dock that has both letters.
      EXPECT_GE(differs(picture(badges[i], true, BadgeDetail::Whole, compact),
                        picture(badges[j], true, BadgeDetail::Whole, compact)),
                4);
      if (badges[i].letters[0] != badges[j].letters[0]) continue;
      const Palette palette = Palette::make(DockStyle::Black, Backdrop::Plain, false, false);
      const QColor one = palette.badge(badges[i].color).ground, other = palette.badge(badges[j].color).ground;
      EXPECT_GT(std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
                    std::abs(one.blue() - other.blue()),
                140);
      EXPECT_NE(picture(badges[i], false, BadgeDetail::Initial, 13),
                picture(badges[j], false, BadgeDetail::Initial, 13));
    }
}

TEST(Badges, HaveTheColourOfTheBarsAndChartsOfTheirService) {
  const Palette palette = Palette::make(DockStyle::Black, Backdrop::Plain, false, false);
  QHash<QString, Accent> accents;  // By service.
  for (const WidgetDefinition& item : Catalog::items()) {
    // A meeting is no service.
    if (!isConnectedFamily(item.family) || item.id == kind::zoomMeeting) continue;
    const ServiceBadge badge = serviceBadge(item);
    const Accent accent = tileAccent(item);
    EXPECT_EQ(accents.value(badge.letters, accent), accent) << qPrintable(item.id);
    accents.insert(badge.letters, accent);
    const int apart = std::abs(palette.badge(badge.color).ground.hue() - palette.accent(accent).hue());
    EXPECT_LE(std::min(apart, 360 - apart), 45) << qPrintable(item.id);
  }
}

TEST(Text, FiguresKeepTheirWidthWhateverTheirDigits) {
  for (const TextStyle style : kTextStyles) {
    const double reference = TextLine(u"00:00"_s, style).width();
    for (const auto& figure : {u"11:11"_s, u"19:48"_s, u"23:57"_s})
      EXPECT_DOUBLE_EQ(TextLine(figure, style).width(), reference) << qPrintable(figure);
  }
}

TEST(Text, ElisionNeverExceedsTheRoomAndKeepsTheRightEnd) {
  const QString name = u"Quarterly report 2026 final (approved).pdf"_s;
  for (const TextStyle style : kTextStyles)
    for (const double scale : {0.5, 1.0, 1.6})
      for (const double room : {0.0, 8.0, 30.0, 75.5, 120.0, 1000.0})
        for (const Elide mode : {Elide::End, Elide::Middle}) {
          const TextLine line = TextLine(name, style, scale).elided(room, mode);
          EXPECT_LE(line.width(), room) << "room " << room;
          EXPECT_EQ(line.text() == name, room >= 1000) << room;
          if (line.text().isEmpty() || line.text() == name) continue;
          EXPECT_EQ(line.text().front(), name.front());
          EXPECT_EQ(line.text().back(), mode == Elide::Middle && line.text().size() > 2 ? name.back() : QChar(0x2026));
        }
}

TEST(Text, RunsBothWaysWithinALine) {
  struct Case {
    QString text;
    QString seen;  ///< From left to right, whichever way that is read.
  };
  const Case cases[] = {
      {u"יום רביעי, 25 בנוב"_s, u"בונב 25 ,יעיבר םוי"_s},
      {u"ב־14:30 עם Ines"_s, u"Ines םע 14:30־ב"_s},
      {u"Lunch עם דנה 3, at 13:30"_s, u"Lunch 3 הנד םע, at 13:30"_s},
      {u"חדר 12.4 MB/s"_s, u"MB/s 12.4 רדח"_s},
      {u"11:00 – 11:45"_s, u"11:00 – 11:45"_s},
      {u"דו ٢٥ דו"_s, u"וד ٢٥ וד"_s},
  };
  const auto picture = [](const TextLine& line) {
    QImage image(640, 60, QImage::Format_Alpha8);
    image.fill(0);
    QPainter painter(&image);
    painter.scale(3, 3);
    line.draw(painter, {3, 14}, Qt::black);
    return image;
  };
  /// How much of their ink two pictures do not share, from 0 to 1.
  const auto difference = [](const QImage& a, const QImage& b) {
    double apart = 0;
    double whole = 0;
    for (int y = 0; y < a.height(); ++y)
      for (int x = 0; x < a.width(); ++x) {
        apart += std::abs(a.constScanLine(y)[x] - b.constScanLine(y)[x]);
        whole += a.constScanLine(y)[x] + b.constScanLine(y)[x];
      }
    return apart / whole;
  };
  for (const Case& each : cases) {
    const TextLine line(each.text, TextStyle::Body);
    // Forced from left to right, character by character.
    const TextLine seen(QChar(0x202D) + each.seen + QChar(0x202C), TextStyle::Body);
    EXPECT_NEAR(line.width(), seen.width(), 0.5) << qPrintable(each.text);
    EXPECT_LT(difference(picture(line), picture(seen)), 0.2) << qPrintable(each.text);
  }
  // Shortened, it goes on the way it ran, and no character loses a part.
  for (const QString& text :
       {u"12 פגישות עם Ines and Sam"_s, u"👩‍👩‍👧👩‍👩‍👧👩‍👩‍👧👩‍👩‍👧"_s})
    for (double room = 20; room < 100; room += 7)
      for (const Elide mode : {Elide::End, Elide::Middle}) {
        const QString kept = TextLine(text, TextStyle::Title).elided(room, mode).text();
        EXPECT_FALSE(kept.toUcs4().contains(0xFFFD)) << qPrintable(kept);
        EXPECT_FALSE(kept.endsWith(QChar(0x200D)) || kept.contains(u"\u200D…"_s)) << qPrintable(kept);
      }
}

TEST(Text, NeverFallsBelowTheLeastSizeOnTheScreen) {
  for (const TextStyle style : kTextStyles)
    for (const double scale : {0.5, 0.6, 0.75, 1.0, 1.6}) {
      EXPECT_GE(Typography::pixelSize(style, scale) * scale, theme::kLeastTextSize - 1e-9);
      EXPECT_GE(TextLine::unit(u"%"_s, style, scale).pixelSize() * scale, theme::kLeastTextSize - 1e-9);
    }
}

TEST(Text, BaselinesStandOnWholeDevicePixels) {
  for (const double ratio : {1.0, 1.25, 2.0})
    for (const double scale : {0.5, 0.85, 1.0, 1.6}) {
      QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
      image.setDevicePixelRatio(ratio);
      QPainter painter(&image);
      painter.translate(0, 7.3);
      painter.scale(scale, scale);
      const double y = snappedY(painter, {0, 49});
      const double device = painter.deviceTransform().map(QPointF(0, y)).y();
      EXPECT_NEAR(device, std::round(device), 1e-6);
      EXPECT_LE(std::abs(y - 49) * scale * ratio, 0.5 + 1e-6);
    }
}

TEST(SymbolDrawings, CoverTheCatalogAndStayOnTheirGrid) {
  QSet<QString> names;
  for (const WidgetDefinition& kind : Catalog::items()) names.insert(kind.symbol);
  for (const WidgetGroup& group : Catalog::groups()) names.insert(group.symbol);
  for (const QString& name : names) EXPECT_TRUE(Symbols::has(name)) << qPrintable(name);
  EXPECT_FALSE(Symbols::has(u"no.such.symbol"_s));
  EXPECT_EQ(Symbols::outline(u"no.such.symbol"_s), Symbols::outline(u"square"_s));
  for (auto row = symbolTable().cbegin(); row != symbolTable().cend(); ++row) {
    const QRectF box = parseSymbol(row.value()).boundingRect();
    EXPECT_TRUE(QRectF(1, 1, 18.5, 18.5).contains(box)) << qPrintable(row.key()) << " leaves the grid";
    EXPECT_GE(std::max(box.width(), box.height()), 9.5) << qPrintable(row.key()) << " is too small, or ends early";
  }
}

TEST(Emoji, StandInTheMiddleWhateverTheyAreMadeOf) {
  for (const QString& emoji :
       {u"🔥"_s, u"❤️"_s, u"⏱️"_s, u"🏴‍☠️"_s, u"1️⃣"_s, u"❤️‍🔥"_s}) {
    QImage image(48, 48, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawEmoji(painter, emoji, image.rect());
    painter.end();
    const QRect ink = QRegion(QBitmap::fromImage(image.createAlphaMask())).boundingRect();
    EXPECT_NEAR(ink.left(), image.width() - 1 - ink.right(), 6) << qPrintable(emoji);
  }
}

TEST(Styles, NamesAndSchemes) {
  EXPECT_EQ(dockStyleNamed(u"liquidGlass"_s), DockStyle::LiquidGlass);
  EXPECT_EQ(dockStyleNamed(u"somethingNew"_s), DockStyle::DarkGlass);
  EXPECT_TRUE(Palette::make(DockStyle::White, Backdrop::Plain, false).light);
  EXPECT_FALSE(Palette::make(DockStyle::Transparent, Backdrop::Plain, false).light);
  const Palette grey = Palette::make(DockStyle::DarkGlass, Backdrop::Plain, true);
  for (const Accent accent : {Accent::Blue, Accent::Green, Accent::Red, Accent::Purple})
    EXPECT_EQ(grey.accent(accent).hslSaturation(), 0);
}

/// A colour as it is seen over an opaque one.
static QColor seenOver(const QColor& color, const QColor& ground) {
  const auto mix = [&](float a, float b) { return a * color.alphaF() + b * (1 - color.alphaF()); };
  return QColor::fromRgbF(mix(color.redF(), ground.redF()), mix(color.greenF(), ground.greenF()),
                          mix(color.blueF(), ground.blueF()));
}

static double ratioBetween(const QColor& a, const QColor& b) {
  const auto luminance = [](const QColor& color) {
    const auto linear = [](double part) {
      return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
  };
  const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
  return (lighter + 0.05) / (darker + 0.05);
}

TEST(HighContrast, NoTextIsUnderSevenToOneAndEverythingHasAnEdge) {
  constexpr double least = 7;
  for (const DockStyle style : {DockStyle::DarkGlass, DockStyle::LightGlass, DockStyle::LiquidGlass, DockStyle::Black,
                                DockStyle::White, DockStyle::Transparent})
    for (const Backdrop backdrop : {Backdrop::Blurred, Backdrop::Plain, Backdrop::Opaque})
      for (const bool monochrome : {false, true}) {
        SCOPED_TRACE(static_cast<int>(style));
        const Palette palette = Palette::make(style, backdrop, monochrome, true);
        QList<QColor> grounds{palette.glass.bodyTop, palette.glass.bodyBottom, palette.panel.bodyTop,
                              palette.panel.bodyBottom};
        for (const QColor& ground : grounds) EXPECT_EQ(ground.alpha(), 255) << "something shows through";
        for (const QColor& part : {palette.tile, palette.tileHover, palette.tilePressed, palette.tileOpen,
                                   palette.tileDragged, palette.button, palette.buttonHover, palette.buttonPressed,
                                   palette.tab, palette.toggleOff, palette.well, palette.selection})
          grounds << seenOver(part, palette.glass.bodyTop);
        QList<QColor> inks{palette.primary, palette.secondary, palette.tertiary};
        for (int accent = 0; accent <= static_cast<int>(Accent::Purple); ++accent) {
          inks << palette.accentWord(static_cast<Accent>(accent));
          EXPECT_GE(
              ratioBetween(palette.inkOnAccent, seenOver(palette.accent(static_cast<Accent>(accent)), grounds[0])),
              least)
              << accent;
        }
        for (const QColor& ink : inks)
          for (const QColor& ground : grounds)
            EXPECT_GE(ratioBetween(seenOver(ink, ground), ground), least)
                << ink.name().toStdString() << " on " << ground.name().toStdString();
        for (const QColor& edge : {palette.glass.rim, palette.panel.rim, palette.tileEdge})
          EXPECT_GE(ratioBetween(seenOver(edge, grounds[0]), grounds[0]), 3);
        EXPECT_GE(ratioBetween(palette.pictures.plateInk, palette.pictures.plateTop), least);
      }
}

TEST(HighContrast, WindowsAndMenusFollow) {
  const DesktopLook before = DesktopLook::now();
  DesktopLook::set({true, true});
  for (const bool dark : {true, false}) {
    const QPalette palette = windowPalette(dark);
    for (const auto& [ink, ground] :
         {std::pair(QPalette::WindowText, QPalette::Window), std::pair(QPalette::Text, QPalette::Base),
          std::pair(QPalette::ButtonText, QPalette::Button), std::pair(QPalette::PlaceholderText, QPalette::Base),
          std::pair(QPalette::ToolTipText, QPalette::ToolTipBase), std::pair(QPalette::Link, QPalette::Base),
          std::pair(QPalette::HighlightedText, QPalette::Highlight)})
      EXPECT_GE(ratioBetween(palette.color(ink), palette.color(ground)), 7) << dark << ' ' << ink;
  }
  EXPECT_TRUE(Palette::make(DockStyle::DarkGlass, Backdrop::Blurred, false).highContrast) << "whoever does not say";
  DesktopLook::set(before);
  EXPECT_FALSE(Palette::make(DockStyle::DarkGlass, Backdrop::Blurred, false).highContrast);
}

TEST(Styles, FollowLightAndDarkOnceTheDesktopHasReported) {
  const DesktopLook before = DesktopLook::now();
  DockConfiguration config;
  config.style = u"transparent"_s;
  DeskOptions desk;
  desk.lightStyle = u"white"_s;
  desk.darkStyle = u"black"_s;
  struct Case {
    bool follows;
    std::optional<bool> dark;
    DockStyle shown;
  };
  for (const Case& each : {Case{false, true, DockStyle::Transparent}, Case{true, std::nullopt, DockStyle::Transparent},
                           Case{true, true, DockStyle::Black}, Case{true, false, DockStyle::White}}) {
    desk.styleFollows = each.follows;
    config.setDesk(desk);
    DesktopLook::set({each.dark, false});
    EXPECT_EQ(shownStyle(config), each.shown);
  }
  DesktopLook::set(before);
  config.setDesk(DeskOptions());
  EXPECT_FALSE(config.desktop.desk) << "defaults need no place in the file";
}

TEST(Palette, AColourFadesWithinItsBoundsWhereASpringOvershoots) {
  const QColor half(10, 20, 30, 128);
  const std::pair<double, int> cases[] = {{-0.001, 0}, {0, 0}, {0.5, 64}, {1, 128}, {1.02, 128}};
  for (const auto& [opacity, alpha] : cases) EXPECT_EQ(faded(half, opacity), QColor(10, 20, 30, alpha)) << opacity;
}

TEST(Icons, TakeTheirStyle) {
  QImage icon(3, 1, QImage::Format_ARGB32);
  icon.setPixel(0, 0, qRgb(255, 255, 255));
  icon.setPixel(1, 0, qRgb(255, 0, 0));
  icon.setPixel(2, 0, qRgba(0, 0, 255, 0));
  const auto styled = [&](const QString& name, bool dockIsDark) {
    return styledIcon(QPixmap::fromImage(icon), iconStyleNamed(name, dockIsDark)).toImage();
  };
  for (const QString& dark : {u"dark"_s, u"auto"_s}) {
    const QImage image = styled(dark, true);
    EXPECT_LT(qRed(image.pixel(0, 0)), 80) << "what is pale";
    EXPECT_EQ(image.pixel(1, 0), icon.pixel(1, 0)) << "colours stay";
    EXPECT_EQ(qAlpha(image.pixel(2, 0)), 0);
  }
  EXPECT_EQ(styled(u"auto"_s, false).pixel(0, 0), icon.pixel(0, 0));
  EXPECT_EQ(styled(u"strange"_s, true).pixel(0, 0), icon.pixel(0, 0));
  const QRgb grey = styled(u"monochrome"_s, true).pixel(1, 0);
  EXPECT_TRUE(qRed(grey) == qGreen(grey) && qGreen(grey) == qBlue(grey));
}

TEST(Outlines, AreRoundedAndSymmetric) {
  const QRect rect(5, 7, 200, 84);
  const QRegion outline = Glass::outline(rect, 24);
  EXPECT_EQ(outline.boundingRect(), rect);
  EXPECT_FALSE(outline.contains(rect.topLeft() + QPoint(6, 6)));
  EXPECT_TRUE(outline.contains(rect.topLeft() + QPoint(8, 8)));
  for (int y = rect.top(); y <= rect.bottom(); ++y)
    for (int x = rect.left(); x < rect.left() + 24; ++x) {
      const QPoint mirrored(rect.right() - (x - rect.left()), rect.bottom() - (y - rect.top()));
      ASSERT_EQ(outline.contains(QPoint(x, y)), outline.contains(mirrored));
    }
}

TEST(MenuStyle, MenusOfADockHaveItsSchemeWhateverTheWindowsHave) {
  struct Case {
    DockStyle style;
    bool light;
  };
  const QPalette before = QApplication::palette();
  for (const Case& dock :
       {Case{DockStyle::DarkGlass, false}, Case{DockStyle::Black, false}, Case{DockStyle::Transparent, false},
        Case{DockStyle::LightGlass, true}, Case{DockStyle::White, true}})
    for (const bool darkWindows : {true, false}) {
      SCOPED_TRACE(static_cast<int>(dock.style));
      QApplication::setPalette(windowPalette(darkWindows));
      QMenu menu;
      QMenu& deepest = *menu.addMenu(u"Profiles"_s)->addMenu(u"More"_s);
      MenuStyle::takeDockColors(menu, dock.style);
      for (const QMenu* each : {&menu, &deepest}) {
        const QColor ground = seenOver(each->palette().color(QPalette::Base), Qt::gray);
        EXPECT_EQ(ground.lightness() > 128, dock.light);
        EXPECT_GE(ratioBetween(each->palette().color(QPalette::Text), ground), 7);
      }
    }
  QApplication::setPalette(before);
}

TEST(WindowFade, TakesItsTimeAndTurnsOnItsWay) {
  QWidget window;
  auto clock = std::make_unique<test::TestFrameClock>();
  test::TestFrameClock& frames = *clock;
  auto& fade = *new WindowFade(window, std::move(clock));
  const auto* effect = qobject_cast<QGraphicsOpacityEffect*>(window.graphicsEffect());
  int gone = 0;
  const auto out = [&] { fade.out([&] { ++gone; }); };
  const auto settled = [&] {
    QCoreApplication::processEvents();
    return gone;
  };
  fade.in();
  EXPECT_EQ(effect->opacity(), 0);
  frames.beat(0.06);
  EXPECT_GT(effect->opacity(), 0.3);
  EXPECT_LT(effect->opacity(), 0.7);
  frames.beat(0.1);
  EXPECT_FALSE(effect->isEnabled()) << "it is painted as ever";
  EXPECT_FALSE(frames.isRunning());

  out();
  frames.beat(0.06);
  const double seen = effect->opacity();
  fade.in();
  EXPECT_EQ(effect->opacity(), seen) << "from where it is";
  frames.beat(1);
  EXPECT_EQ(settled(), 0);

  out();
  frames.beat(0.2);
  EXPECT_EQ(gone, 0) << "not within a frame";
  EXPECT_EQ(settled(), 1);
  EXPECT_FALSE(frames.isRunning());
}

TEST(WindowFade, IsThereAndGoneAtOnceWhereNothingMoves) {
  QWidget window;
  auto& fade = *new WindowFade(window, nullptr);
  fade.in();
  EXPECT_FALSE(window.graphicsEffect()->isEnabled());
  bool isGone = false;
  fade.out([&] { isGone = true; });
  EXPECT_TRUE(isGone);
}

TEST(MenuStyle, AMenuThatClosesLeavesItsPictureUntilThatHasFaded) {
  MenuStyle style;
  QWidget owner;
  QMenu menu;
  menu.addAction(u"Open"_s);
  QList<test::TestFrameClock*> clocks;
  style.fade(menu, &owner, [&] {
    auto clock = std::make_unique<test::TestFrameClock>();
    clocks << clock.get();
    return clock;
  });
  menu.popup({10, 10});
  clocks.last()->beat(1);
  const auto pictures = [&] {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return owner.findChildren<QWidget*>();
  };
  ASSERT_EQ(pictures().size(), 0);
  menu.close();
  ASSERT_EQ(pictures().size(), 1);
  const QWidget* left = pictures().first();
  EXPECT_TRUE(!menu.isVisible() && left->isVisible() && left->testAttribute(Qt::WA_TransparentForMouseEvents));
  EXPECT_EQ(left->geometry(), menu.geometry());
  EXPECT_TRUE(clocks.last()->isRunning());
  clocks.last()->beat(0.06);
  ASSERT_EQ(pictures().size(), 1);
  clocks.last()->beat(0.1);
  EXPECT_EQ(pictures().size(), 0);
}

// What a desktop's own style and platform plug-in want differs from one to the next.
TEST(MenuStyle, OpensMenusAtOnePaceOnEveryDesktop) {
  struct Leisurely final : QProxyStyle {
    int styleHint(StyleHint, const QStyleOption*, const QWidget*, QStyleHintReturn*) const override { return 999; }
  };
  MenuStyle style;
  style.setBaseStyle(new Leisurely);
  const auto hint = [&](QStyle::StyleHint which) { return style.styleHint(which, nullptr, nullptr, nullptr); };
  EXPECT_GT(hint(QStyle::SH_Menu_SubMenuPopupDelay), 0);
  EXPECT_LE(hint(QStyle::SH_Menu_SubMenuPopupDelay), 400);
  EXPECT_EQ(hint(QStyle::SH_Menu_SloppySubMenus), 1);
  EXPECT_EQ(hint(QStyle::SH_Menu_FlashTriggeredItem), 0);

  constexpr Qt::UIEffect kEffects[] = {Qt::UI_AnimateMenu, Qt::UI_FadeMenu, Qt::UI_AnimateCombo};
  for (const Qt::UIEffect effect : kEffects) QApplication::setEffectEnabled(effect, true);
  const QString before = QApplication::style()->name();
  MenuStyle::install();
  for (const Qt::UIEffect effect : kEffects) EXPECT_FALSE(QApplication::isEffectEnabled(effect)) << int(effect);
  QApplication::setStyle(before);
}

}  // namespace tarnwick::testing
