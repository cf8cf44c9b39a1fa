// Pictures for a person to judge, and what can be judged by counting pixels.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "DockFixture.h"
#include "views/dock/MessageBubble.h"
#include "views/theme/Symbols.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"
#include "views/tiles/TilePainter.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

constexpr DockStyle kStyles[] = {DockStyle::DarkGlass, DockStyle::LightGlass, DockStyle::LiquidGlass,
                                 DockStyle::Black,     DockStyle::White,      DockStyle::Transparent};

DockRow styled(DockStyle style, bool composited, bool blurred, bool monochrome = false) {
  DockRow row = starterRow();
  row.runningApps = runningApps();
  row.style = style;
  row.composited = composited;
  row.blurred = blurred;
  row.monochrome = monochrome;
  return row;
}

void paste(QImage& sheet, const QImage& picture, QPointF at) {
  QPainter painter(&sheet);
  painter.drawImage(at, picture);
}

QColor blend(const QColor& front, const QColor& back) {
  const float a = front.alphaF();
  return QColor::fromRgbF(front.redF() * a + back.redF() * (1 - a), front.greenF() * a + back.greenF() * (1 - a),
                          front.blueF() * a + back.blueF() * (1 - a));
}

double luminance(const QColor& color) {
  const auto linear = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
  const double la = luminance(a);
  const double lb = luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

/// The least alpha, or the greatest, among the pixels that `wanted` picks.
template <class Wanted>
std::pair<int, int> alphaRange(const QImage& image, Wanted wanted) {
  std::pair<int, int> range{255, 0};
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (wanted(QPoint(x, y))) {
        range.first = std::min(range.first, qAlpha(image.pixel(x, y)));
        range.second = std::max(range.second, qAlpha(image.pixel(x, y)));
      }
  return range;
}

}  // namespace

TEST(Pictures, DocksInEveryStyle) {
  constexpr double ratio = 2;
  struct Case {
    DockStyle style;
    bool composited;
    bool blurred;
    bool monochrome;
  };
  const std::vector<Case> cases = {
      {DockStyle::DarkGlass, true, true, false},     {DockStyle::DarkGlass, true, false, false},
      {DockStyle::LightGlass, true, true, false},    {DockStyle::LiquidGlass, true, true, false},
      {DockStyle::Black, true, true, false},         {DockStyle::White, true, true, false},
      {DockStyle::Transparent, true, true, false},   {DockStyle::DarkGlass, true, true, true},
      {DockStyle::DarkGlass, false, false, false},   {DockStyle::LightGlass, false, false, false},
      {DockStyle::LiquidGlass, false, false, false}, {DockStyle::Transparent, false, false, false}};
  const QSize band(1240, 134);
  QImage sheet(QSize(band.width(), band.height() * static_cast<int>(cases.size())) * ratio,
               QImage::Format_ARGB32_Premultiplied);
  sheet.setDevicePixelRatio(ratio);
  int y = 0;
  for (const Case& look : cases) {
    const auto view = makeView(styled(look.style, look.composited, look.blurred, look.monochrome));
    view->resize(band);
    view->grab();
    paste(sheet, over(wallpaper(band, ratio), *view, ratio), QPointF(0, y));
    y += band.height();
  }
  keep(sheet, u"dock-styles"_s);
}

TEST(Pictures, DocksAtEveryScale) {
  const std::vector<double> scales = {0.5, 0.65, 0.75, 1, 1.25, 1.6};
  QImage sheet(1900, 900, QImage::Format_ARGB32_Premultiplied);
  sheet.fill(QColor(0x2B, 0x3A, 0x4D));
  int y = 0;
  for (const double scale : scales) {
    DockRow row = styled(DockStyle::DarkGlass, true, false);
    row.scale = scale;
    const auto view = makeView(row);
    paste(sheet, paintedBy(*view), QPointF(0, y));
    y += view->height() - 10;
  }
  keep(sheet, u"dock-scales"_s);
}

TEST(Pictures, EveryKindOfWidget) {
  constexpr double ratio = 2;
  for (const DockStyle style : {DockStyle::DarkGlass, DockStyle::White}) {
    QImage sheet(QSize(1300, 1560) * ratio, QImage::Format_ARGB32_Premultiplied);
    sheet.setDevicePixelRatio(ratio);
    TileStyle look;
    look.palette = Palette::make(style, Backdrop::Opaque, false);
    sheet.fill(look.palette.panel.bodyTop);
    QPainter painter(&sheet);
    TileSources sources = morning();
    sources.weather = {};
    double x = 10;
    double y = 10;
    for (const WidgetDefinition& kind : Catalog::items()) {
      if (x + kind.width > 1290) {
        x = 10;
        y += 78;
      }
      look.accent = tileAccent(kind);
      paintTile(painter, QRectF(x, y, kind.width, 64), makeTileContent(widget(kind.id), kind, sources), look);
      x += kind.width + 12;
    }
    painter.end();
    keep(sheet, style == DockStyle::White ? u"kinds-light"_s : u"kinds-dark"_s);
  }
}

TEST(Pictures, SymbolsAndStates) {
  constexpr double ratio = 2;
  QImage sheet(QSize(1240, 620) * ratio, QImage::Format_ARGB32_Premultiplied);
  sheet.setDevicePixelRatio(ratio);
  sheet.fill(QColor(0x1E, 0x24, 0x2E));
  QPainter painter(&sheet);
  painter.setRenderHint(QPainter::Antialiasing);
  QSet<QString> names;
  for (const WidgetDefinition& kind : Catalog::items()) names.insert(kind.symbol);
  for (const WidgetGroup& group : Catalog::groups()) names.insert(group.symbol);
  for (const auto& name : {u"wifi"_s, u"moon"_s, u"bell.slash"_s, u"cup.and.saucer"_s, u"bluetooth"_s,
                           u"speaker.slash"_s, u"xmark"_s, u"plus"_s, u"bell"_s})
    names.insert(name);
  QStringList sorted(names.begin(), names.end());
  sorted.sort();
  for (qsizetype i = 0; i < sorted.size(); ++i)
    Symbols::draw(painter, sorted[i],
                  QRectF(20 + 60 * static_cast<double>(i % 20), 16 + 56 * static_cast<double>(i / 20), 40, 40),
                  Qt::white);

  const TileSources sources = morning();
  TileStyle look;
  look.palette = Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false);
  double x = 20;
  for (const TileState state :
       {TileState::Rest, TileState::Hover, TileState::Pressed, TileState::PanelOpen, TileState::Dragged}) {
    look.state = state;
    look.magnification = state == TileState::Hover ? theme::kHoverScale : 1;
    for (const auto& kind : {u"digitalClock"_s, u"cpu"_s}) {
      const WidgetDefinition& definition = Catalog::find(kind);
      look.accent = tileAccent(definition);
      paintTile(painter, QRectF(x, kind == u"cpu"_s ? 350 : 270, definition.width, 64),
                makeTileContent(widget(kind), definition, sources), look);
    }
    x += 170;
  }
  look.state = TileState::Rest;
  look.focused = true;
  paintTile(painter, QRectF(x, 270, 150, 64),
            makeTileContent(widget(u"digitalClock"_s), Catalog::find(u"digitalClock"_s), sources), look);

  DockRow tabbed = styled(DockStyle::DarkGlass, true, false);
  tabbed.tabs = {u"Everyday"_s, u"Work"_s, u"Studio"_s};
  tabbed.runningApps.clear();
  const auto view = makeView(tabbed);
  view->showTabs(true);
  painter.drawImage(QPointF(20, 440), paintedBy(*view, ratio));
  const auto empty = makeView(DockRow{});
  painter.drawImage(QPointF(860, 460), paintedBy(*empty, ratio));
  MessageBubble bubble;
  bubble.setMessage(
      u"Settings could not be saved: the disk is full, and this sentence is long enough to need a second line."_s);
  bubble.resize(bubble.sizeHint());
  painter.drawImage(QPointF(800, 330), paintedBy(bubble, ratio));
  painter.end();
  keep(sheet, u"symbols-and-states"_s);
}

TEST(Pictures, TheDockUnderThePointer) {
  constexpr double ratio = 2;
  DockRow row = styled(DockStyle::DarkGlass, true, true);
  row.tabs = {u"Everyday"_s, u"Work"_s, u"Studio"_s};
  row.widgets[3] = widget(u"trash"_s);
  row.widgets[4].kind = u"folderLauncher"_s;
  row.widgets[4].options.insert(u"path"_s, u"/home/me/Projects"_s);
  row.runningApps[1].urgent = true;
  row.runningApps[2].progress = 0.6;
  row.runningApps[3].count = 3;
  row.runningApps[4].count = 1204;
  QMimeData files;
  files.setUrls({QUrl::fromLocalFile(u"/proc/version"_s)});
  const auto hold = [&files](DockView& view, QPointF at) {
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction | Qt::LinkAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &enter);
  };
  const std::vector<std::function<void(MovedView&)>> gestures = {
      [](MovedView& view) {
        view.showTabs(true);
        view.rest();
      },
      [](MovedView& view) {
        const QPointF at = view.itemRect(1).center();
        mouse(view, QEvent::MouseButtonPress, at);
        mouse(view, QEvent::MouseMove, at + QPointF(7, 0));
        mouse(view, QEvent::MouseMove, view.itemRect(2).center() + QPointF(20, 0));
        view.rest();
      },
      [&](MovedView& view) { hold(view, view.itemRect(4).center()); },
      [&](MovedView& view) { hold(view, view.itemRect(9).center()); },
      [&](MovedView& view) { hold(view, view.itemRect(2).center() + QPointF(5, 0)); },
      [](MovedView& view) {
        view.setFocus();
        press(view, Qt::Key_End);
      },
      [](MovedView& view) {
        view.resize(700, view.height());
        view.grab();
        wheel(view, view.itemRect(1).center(), {0, -120});
      },
      [](MovedView& view) {
        DockRow next = view.row();
        next.activeTab = 1;
        next.widgets = {widget(u"digitalClock"_s), widget(u"storage"_s), widget(u"systemQuickToggles"_s)};
        view.setRow(next);
        view.beat(0.09);
      }};
  const QSize band(1240, 160);
  QImage sheet(QSize(band.width(), band.height() * static_cast<int>(gestures.size())) * ratio,
               QImage::Format_ARGB32_Premultiplied);
  sheet.setDevicePixelRatio(ratio);
  int y = 0;
  for (const auto& gesture : gestures) {
    const auto view = makeView(row);
    view->show();
    view->activateWindow();
    QCoreApplication::processEvents();
    view->clearFocus();
    gesture(*view);
    paste(sheet, over(wallpaper(band, ratio), *view, ratio), QPointF(0, y));
    y += band.height();
  }
  keep(sheet, u"dock-hands"_s);
}

TEST(Pictures, ApplicationsAndFiles) {
  constexpr double ratio = 2;
  for (const DockStyle style : {DockStyle::DarkGlass, DockStyle::White}) {
    QImage sheet(QSize(1000, 90) * ratio, QImage::Format_ARGB32_Premultiplied);
    sheet.setDevicePixelRatio(ratio);
    TileStyle look;
    look.palette = Palette::make(style, Backdrop::Opaque, false);
    const TileIcons icons = [](const QString& name, int size, double pixels) {
      DockApp app;
      app.icon = name;
      return name.contains(u'#') ? icon(app, size, pixels) : QPixmap();
    };
    look.icons = &icons;
    sheet.fill(look.palette.panel.bodyTop);
    TileSources sources = morning();
    sources.trashItems = 12;
    sources.shelfItems = 3;
    for (const DockApp& app : runningApps())
      sources.applications.insert(u'/' + app.name, {app.name, app.icon, app.id, app.marks()});
    QPainter painter(&sheet);
    double x = 14;
    for (const auto& [kind, option, value] : std::initializer_list<std::tuple<QString, QString, QString>>{
             {u"applications"_s, {}, {}},
             {u"appFolder"_s, u"paths"_s, u"/Files\n/Music\n/Mail\n/unknown/Thing.desktop"_s},
             {u"appFolder"_s, {}, {}},
             {u"appLauncher"_s, u"path"_s, u"/Browser"_s},
             {u"appLauncher"_s, u"path"_s, u"/unknown/Thing.desktop"_s},
             {u"appLauncher"_s, {}, {}},
             {u"folderLauncher"_s, u"path"_s, u"/home/me/Projects"_s},
             {u"downloads"_s, {}, {}},
             {u"fileShelf"_s, {}, {}},
             {u"trash"_s, {}, {}}}) {
      DockWidget tile = widget(kind);
      if (!option.isEmpty()) tile.options.insert(option, value);
      const WidgetDefinition& definition = Catalog::find(kind);
      look.accent = tileAccent(definition);
      paintTile(painter, QRectF(x, 13, definition.width, 64), makeTileContent(tile, definition, sources), look);
      x += definition.width + 12;
    }
    painter.end();
    keep(sheet, style == DockStyle::White ? u"apps-light"_s : u"apps-dark"_s);
  }
}

TEST(Contrast, TextIsReadableOverTheWorstWallpapers) {
  for (const DockStyle style : kStyles)
    for (const auto& [composited, blurred] : {std::pair(true, true), std::pair(true, false), std::pair(false, false)})
      for (const QColor& behind : {QColor(Qt::white), QColor(Qt::black)}) {
        DockRow row = starterRow();
        row.style = style;
        row.composited = composited;
        row.blurred = blurred;
        const auto view = makeView(row);
        QImage image(view->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(behind);
        QPainter painter(&image);
        painter.drawImage(0, 0, paintedBy(*view));
        painter.end();
        const Palette palette = Palette::make(style, row.backdrop(), false);
        // The ground of the clock's tile, near its top and its foot, where there is no text.
        const QRectF tile = view->itemRect(1);
        for (const QPointF at : {tile.topRight() + QPointF(-20, 6), tile.bottomRight() + QPointF(-20, -4)}) {
          const QColor ground = image.pixelColor(at.toPoint());
          const auto where = ::testing::Message() << "style " << int(style) << " composited " << composited
                                                  << " blurred " << blurred << " over " << qPrintable(behind.name());
          EXPECT_GE(contrast(blend(palette.primary, ground), ground), 4.5) << where << ", primary";
          EXPECT_GE(contrast(blend(palette.secondary, ground), ground), 4.5) << where << ", secondary";
          if (!blurred || style == DockStyle::Black || style == DockStyle::White) {
            EXPECT_GE(contrast(palette.accentWord(Accent::Blue), ground), blurred ? 4.5 : 3.4)
                << where << ", accent word";
          }
        }
      }
}

TEST(Contrast, ASwitchThatIsMissingIsRecognisedOverTheWorstWallpapers) {
  constexpr double ratio = 2;
  for (const DockStyle style : kStyles)
    for (const auto& [composited, blurred] : {std::pair(true, true), std::pair(true, false), std::pair(false, false)})
      for (const QColor& behind : {QColor(Qt::white), QColor(Qt::black)}) {
        DockRow row;
        row.widgets = {widget(u"systemQuickToggles"_s)};
        row.style = style;
        row.composited = composited;
        row.blurred = blurred;
        const auto view = makeView(row);
        const auto painted = [&](const ToggleState& state) {
          TileSources sources = morning();
          sources.toggles = {{Toggle::WiFi, state}};
          view->refresh(sources);
          QImage image(view->size() * ratio, QImage::Format_ARGB32_Premultiplied);
          image.fill(behind);
          QImage own = paintedBy(*view, ratio);
          own.setDevicePixelRatio(1);
          QPainter(&image).drawImage(0, 0, own);
          return image;
        };
        const QImage missing = painted({false, Capability::no(u"There is no such device."_s)});
        const QRectF tile = view->itemRect(0);
        const QColor ground = missing.pixelColor((QPointF(tile.left() + 6, tile.center().y()) * ratio).toPoint());
        // The first of four discs, 37.3 apart.
        const QPointF first(tile.center().x() - 37.3 * 1.5, tile.center().y());
        const QRect symbol = QRectF((first - QPointF(9, 9)) * ratio, QSizeF(18, 18) * ratio).toRect();
        double most = 1;
        for (int y = symbol.top(); y <= symbol.bottom(); ++y)
          for (int x = symbol.left(); x <= symbol.right(); ++x)
            most = std::max(most, contrast(missing.pixelColor(x, y), ground));
        const auto where = ::testing::Message() << "style " << int(style) << " composited " << composited << " blurred "
                                                << blurred << " over " << qPrintable(behind.name());
        EXPECT_GE(most, 3) << where;
        EXPECT_NE(difference(missing.copy(symbol), painted({false, Capability::yes()}).copy(symbol)), 0)
            << where << ", it looks switched off";
      }
}

TEST(Painting, StaysWithinTheGlassAndItsMargins) {
  for (const DockStyle style : kStyles)
    for (const bool composited : {true, false})
      for (const double scale : {0.5, 1.0, 1.6}) {
        DockRow row = starterRow();
        row.style = style;
        row.composited = composited;
        row.scale = scale;
        row.runningApps = runningApps();
        row.widgets.insert(1, widget(u"dockSeparator"_s));
        const auto view = makeView(row, 1400);
        const QImage image = paintedBy(*view);
        const QRect room = view->glassRect().toAlignedRect().marginsAdded(view->margins());
        const auto outside = alphaRange(image, [&](QPoint p) { return !room.contains(p); });
        EXPECT_EQ(outside.second, 0) << "style " << int(style) << " composited " << composited << " scale " << scale;
        if (composited) continue;
        const QRegion outline = view->outlineRegion();
        const auto inside = alphaRange(image, [&](QPoint p) { return outline.contains(p); });
        EXPECT_EQ(inside.first, 255) << "a window cut to its outline shows through, style " << int(style) << " scale "
                                     << scale;
      }
}

TEST(Painting, AppsOfADockWithoutGlassStandOnOnePlate) {
  DockRow row = starterRow();
  row.style = DockStyle::Transparent;
  row.composited = false;
  row.runningApps = runningApps();
  const qsizetype shown = row.widgets.size();
  row.widgets.insert(1, widget(u"dockSeparator"_s));
  row.widgets.append(widget(u"dockSpace"_s));
  const auto view = makeView(row);
  const QRegion outline = view->outlineRegion();
  const auto layout = RowLayout::of(row, view->glassRect(), 1);
  const QList<QRectF> plates = layout.plates(row);
  ASSERT_EQ(plates.size(), shown + 1) << "what only parts tiles has no ground";
  const QRect plate = plates.last().toAlignedRect();
  EXPECT_DOUBLE_EQ(plates.last().width(), theme::kAppSlot * static_cast<double>(row.runningApps.size()));
  EXPECT_TRUE(outline.contains(QPoint(plate.left() + static_cast<int>(theme::kAppSlot), plate.top())))
      << "no corners where two applications meet";
  EXPECT_FALSE(outline.contains(plate.topLeft()));
  for (const QPointF middle : {view->itemRect(1).center(), layout.separator.center()})
    EXPECT_TRUE(outline.contains(middle.toPoint())) << "a line is cut away at " << middle.x();
  row.widgets.clear();
  row.runningApps.clear();
  const auto none = makeView(row);
  EXPECT_TRUE(none->outlineRegion().contains(none->glassRect().center().toPoint())) << "an empty dock cannot be seen";
}

TEST(Painting, EveryKindStaysWithinItsTile) {
  for (const double scale : {0.5, 0.7, 1.0, 1.6})
    for (const bool connected : {true, false})
      for (const WidgetDefinition& kind : Catalog::items()) {
        TileSources sources = morning();
        sources.applications.insert(u"/x"_s, {u"X"_s, {}, 1, {true, true, true, false, 0.5, 1204}});
        DockWidget tile = widget(kind.id);
        tile.options = {{u"path"_s, u"/x"_s}, {u"paths"_s, u"/x"_s}};
        if (!connected) {
          sources = TileSources();
          sources.now = morning().now;
          sources.locale = QLocale(QLocale::German);
        }
        TileStyle look;
        look.palette = Palette::make(DockStyle::DarkGlass, Backdrop::Opaque, false);
        look.scale = scale;
        look.filled = false;
        const QRect place(20, 20, static_cast<int>(std::ceil(kind.width * scale)),
                          static_cast<int>(std::ceil(64 * scale)));
        QImage image(place.size() + QSize(40, 40), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paintTile(painter, place, makeTileContent(tile, kind, sources), look);
        painter.end();
        EXPECT_EQ(alphaRange(image, [&](QPoint p) { return !place.contains(p); }).second, 0)
            << qPrintable(kind.id) << " at " << scale << " paints outside its tile";
        if (kind.family != u"space") {
          EXPECT_GT(alphaRange(image, [&](QPoint p) { return place.contains(p); }).second, 40)
              << qPrintable(kind.id) << " at " << scale << " paints nothing";
        }
      }
}

TEST(Pictures, AnArrowIsSeenOverWhateverTile) {
  for (const DockStyle style : {DockStyle::DarkGlass, DockStyle::LightGlass, DockStyle::LiquidGlass, DockStyle::Black,
                                DockStyle::White, DockStyle::Transparent}) {
    SCOPED_TRACE(static_cast<int>(style));
    DockRow row = starterRow();
    row.style = style;
    const auto view = makeView(row, 400);
    const RowLayout layout = RowLayout::of(row, QRectF(view->rect()).marginsRemoved(view->margins()), 1);
    ASSERT_FALSE(layout.onArrow.isEmpty());
    const Palette palette = Palette::make(style, row.backdrop(), false);
    const QColor ground = paintedBy(*view).pixelColor(layout.onArrow.center().toPoint() - QPoint(0, 14));
    EXPECT_EQ(ground, palette.tileDragged) << "nothing shows through";
    for (const QColor& ink : {palette.primary, palette.secondary}) EXPECT_GE(contrast(blend(ink, ground), ground), 3);
  }
}

}  // namespace tarnwick::testing
