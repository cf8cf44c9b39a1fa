#include <gtest/gtest.h>

#include <QAccessible>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPaintEvent>
#include <QStyleHints>
#include <QTemporaryDir>
#include <QTest>

#include "DockFixture.h"
#include "views/dock/MessageBubble.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

/// A view that remembers what it was asked to paint.
class WatchedView : public DockView {
 public:
  using DockView::DockView;
  QRegion painted;

 protected:
  void paintEvent(QPaintEvent* event) override {
    painted += event->region();
    DockView::paintEvent(event);
  }
};

}  // namespace

TEST(Layout, HasTheSpecifiedMeasuresAtEveryScale) {
  // Tiles of 68, 150, 80, 92, 70, 70 and 170 with six gaps of 7, insets of 10.
  constexpr double row = 700 + 42;
  for (const double scale : {0.5, 0.75, 1.0, 1.25, 1.6}) {
    DockRow dock = starterRow();
    dock.scale = scale;
    const QRectF slot(24, 16, 1600, std::ceil(84 * scale));
    const RowLayout layout = RowLayout::of(dock, slot, 1);
    ASSERT_EQ(layout.items.size(), 7);
    EXPECT_NEAR(layout.glass.width(), (row + 20) * scale, 1) << scale;
    EXPECT_NEAR(layout.glass.center().x(), slot.center().x(), 1) << scale;
    double x = 10;
    for (const auto& [item, width] : std::initializer_list<std::pair<int, double>>{
             {0, 68}, {1, 150}, {2, 80}, {3, 92}, {4, 70}, {5, 70}, {6, 170}}) {
      const QRectF rect = layout.items[item].rect;
      EXPECT_NEAR(rect.left() - layout.glass.left(), x * scale, 1) << scale << " tile " << item;
      EXPECT_NEAR(rect.width(), width * scale, 1) << scale << " tile " << item;
      EXPECT_NEAR(rect.top() - layout.glass.top(), 10 * scale, 1) << scale;
      EXPECT_NEAR(rect.height(), 64 * scale, 1) << scale;
      for (const double edge : {rect.left(), rect.top(), rect.right(), rect.bottom()})
        EXPECT_NEAR(edge, std::round(edge), 1e-9) << "an edge between device pixels at " << scale;
      x += width + 7;
    }
    dock.widgets.clear();
    const RowLayout empty = RowLayout::of(dock, QRectF(0, 0, 110, std::ceil(84 * scale)), 1);
    EXPECT_EQ(empty.glass.width(), 110) << scale;
    EXPECT_EQ(empty.overflow, 0) << scale;
  }
}

TEST(Layout, RunningAppsArePlacedAsRequested) {
  struct Case {
    RunningAppsPlacement placement;
    bool anchored;
    QString order;
  };
  // "w" a widget, "A" the applications tile, "r" a running application.
  const std::vector<Case> cases = {
      {RunningAppsPlacement::None, true, u"wAw"_s},         {RunningAppsPlacement::Left, true, u"rrwAw"_s},
      {RunningAppsPlacement::BeforeApps, true, u"wrrAw"_s}, {RunningAppsPlacement::AfterApps, true, u"wArrw"_s},
      {RunningAppsPlacement::Right, true, u"wAwrr"_s},      {RunningAppsPlacement::BeforeApps, false, u"wwrr"_s},
      {RunningAppsPlacement::AfterApps, false, u"wwrr"_s}};
  for (const Case& expected : cases) {
    DockRow row;
    row.widgets = {widget(u"cpu"_s), widget(u"applications"_s), widget(u"ram"_s)};
    if (!expected.anchored) row.widgets.remove(1);
    row.runningApps = runningApps().mid(0, 2);
    row.placement = expected.placement;
    const RowLayout layout = RowLayout::of(row, QRectF(0, 0, 900, 84), 1);
    QString order;
    for (const RowItem& item : layout.items) {
      const bool app = item.kind == RowItem::Kind::App;
      order += app ? u'r' : row.widgets[item.index].kind == u"applications" ? u'A' : u'w';
    }
    EXPECT_EQ(order, expected.order);
    EXPECT_EQ(layout.separator.isEmpty(), expected.placement == RunningAppsPlacement::None);
    for (qsizetype i = 1; i < layout.items.size(); ++i)
      EXPECT_GE(layout.items[i].rect.left(), layout.items[i - 1].rect.right()) << qPrintable(expected.order);
    EXPECT_NEAR(layout.items.last().rect.right() + 10, layout.glass.right(), 1);
  }
}

TEST(Layout, IsTurnedOverForPeopleWhoReadFromTheRight) {
  DockRow row = starterRow();
  row.runningApps = runningApps();
  row.tabs = {u"Everyday"_s, u"Work"_s};
  for (const double width : {2000.0, 500.0}) {
    const QRectF slot(24, 0, width, 110);
    const RowLayout plain = RowLayout::of(row, slot, 1, {40, 1});
    const RowLayout turned = RowLayout::of(row, slot, 1, {40, 1, true});
    const auto mirrored = [&](double x) { return plain.glass.left() + plain.glass.right() - x; };
    ASSERT_EQ(turned.glass, plain.glass);
    ASSERT_EQ(turned.items.size(), plain.items.size());
    for (qsizetype i = 0; i < plain.items.size(); ++i) {
      EXPECT_EQ(turned.items[i].index, plain.items[i].index) << "the order of reading stays";
      EXPECT_EQ(turned.items[i].rect.left(), mirrored(plain.items[i].rect.right()));
      EXPECT_EQ(turned.items[i].rect.size(), plain.items[i].rect.size());
    }
    EXPECT_EQ(turned.tabs[0].right(), mirrored(plain.tabs[0].left()));
    EXPECT_EQ(turned.separator.left(), mirrored(plain.separator.right()));
    // What is held at a place means the same tile and the same gap.
    for (double x = plain.glass.left() + 0.5; x < plain.glass.right(); x += 3) {
      const QPointF place(x, plain.items[0].rect.center().y());
      const QPointF other(mirrored(x), place.y());
      EXPECT_EQ(turned.itemAt(other), plain.itemAt(place)) << x;
      EXPECT_EQ(turned.itemUnder(other, 1), plain.itemUnder(place, 1)) << x;
      EXPECT_EQ(turned.widgetsBefore(other.x()), plain.widgetsBefore(x)) << x;
    }
    for (qsizetype index = 0; index <= row.widgets.size(); ++index)
      EXPECT_EQ(turned.insertionX(index, 7), mirrored(plain.insertionX(index, 7)));
  }
}

TEST(Layout, TabsGrowTheGlassOnlyWhileTheyShow) {
  DockRow row = starterRow();
  row.tabs = {u"Everyday"_s, u"Work"_s};
  const QRectF slot(0, 0, 900, 110);
  for (const Edge edge : {Edge::Bottom, Edge::Top}) {
    row.edge = edge;
    const bool bottom = edge == Edge::Bottom;
    const RowLayout hidden = RowLayout::of(row, slot, 1);
    EXPECT_EQ(hidden.glass.height(), 84);
    EXPECT_EQ(bottom ? hidden.glass.bottom() : hidden.glass.top(), bottom ? slot.bottom() : slot.top());
    const RowLayout shown = RowLayout::of(row, slot, 1, {0, 1});
    EXPECT_EQ(shown.glass.height(), 110);
    EXPECT_EQ(shown.items[0].rect.top(), bottom ? 36 : 10);
    ASSERT_EQ(shown.tabs.size(), 2);
    EXPECT_EQ(shown.tabs[0].top(), bottom ? 8 : 82);
    EXPECT_EQ(shown.tabs[0].height(), 20);
    // Tiles do not move when the tabs come.
    EXPECT_EQ(shown.items[0].rect, hidden.items[0].rect);
  }
}

TEST(Layout, TabsStayOnTheGlassAndTheActiveOneAmongThem) {
  const QString endless = u"A name that goes on and on and on and on and on"_s;
  struct Case {
    QStringList tabs;
    qsizetype active;
    double width;
    QList<qsizetype> shown;
  };
  const Case cases[] = {
      {{u"Everyday"_s, endless, u"Work"_s}, 1, 900, {0, 1, 2}},
      {{endless, endless, endless}, 2, 400, {0, 1, 2}},
      {{u"A"_s, u"B"_s, endless, u"D"_s, u"E"_s}, 3, 110, {2, 3}},
      {{endless, u"B"_s, endless}, 0, 110, {0, 1}},
      {{endless, u"B"_s, endless}, 2, 110, {1, 2}},
  };
  for (const Case& expected : cases) {
    DockRow row;
    row.tabs = expected.tabs;
    row.activeTab = expected.active;
    if (expected.width > 110) row.widgets = QList<DockWidget>(3, widget(u"digitalClock"_s));
    const RowLayout layout = RowLayout::of(row, QRectF(0, 0, expected.width, 110), 1, {0, 1});
    ASSERT_EQ(layout.tabs.size(), row.tabs.size());
    double end = layout.glass.left() + 9;
    for (qsizetype tab = 0; tab < row.tabs.size(); ++tab) {
      const QRectF& place = layout.tabs[tab];
      ASSERT_EQ(place.isEmpty(), !expected.shown.contains(tab)) << tab;
      EXPECT_EQ(layout.tabAt(place.center()).value_or(-1), place.isEmpty() ? -1 : tab);
      if (place.isEmpty()) continue;
      EXPECT_GE(place.left(), end);
      EXPECT_GE(place.width(), 26);
      end = place.right();
    }
    EXPECT_LE(end, layout.glass.right() - 9);
    // A short name is not shortened for a long one.
    if (expected.width > 400) {
      EXPECT_GT(layout.tabs[0].width(), 60);
    }
  }
}

TEST(Layout, TheGlassIsWideEnoughForTheWholeNamesOfItsTabs) {
  for (const double scale : {0.5, 0.75, 1.0, 1.4})
    for (const double ratio : {1.0, 2.0}) {
      DockRow row;
      row.scale = scale;
      row.widgets = {widget(u"analogClassicLight"_s)};
      row.tabs = {u"Everyday"_s, u"Work"_s, u"Evening"_s};
      const double wanted = RowLayout::tabsWidth(row.tabs, scale);
      EXPECT_EQ(RowLayout::idealWidth(row), wanted) << scale;
      const RowLayout layout = RowLayout::of(row, QRectF(0, 0, wanted, 110 * scale), ratio, {0, 1});
      EXPECT_EQ(layout.overflow, 0) << "the tile does not scroll for it";
      EXPECT_NEAR(layout.items[0].rect.center().x(), layout.glass.center().x(), 1);
      Animator animator;
      test::TestScheduler time;
      const ProfileTabs tabs(row, layout, animator, time);
      for (qsizetype tab = 0; tab < row.tabs.size(); ++tab) {
        EXPECT_TRUE(layout.glass.contains(layout.tabs[tab]));
        EXPECT_EQ(tabs.tip(tab), QString()) << "cut at scale " << scale;
      }
      // Where no pointer brings them they take nothing.
      row.tabsOnHover = false;
      EXPECT_LT(RowLayout::idealWidth(row), wanted);
    }
  // A name without end is no reason for a glass without end.
  const double most = theme::kTabMostWidth * 2 + theme::kTabGap + theme::kInset * 2;
  EXPECT_LE(RowLayout::tabsWidth({QString(1000, u'w'), QString(1000, u'm')}, 1), most + 1);
}

TEST(Layout, AnEmptyProfileIsAGlassOfTheLeastWidthThatOffersWidgets) {
  const auto view = makeView(DockRow{});
  EXPECT_EQ(view->glassRect().width(), 110);
  int asked = 0;
  QObject::connect(view.get(), &DockView::addWidgetsRequested, [&] { ++asked; });
  click(*view, view->glassRect().center());
  EXPECT_EQ(asked, 1);
  EXPECT_LE(TextLine(u"Add Widgets…"_s, TextStyle::Body).width(), 110 - 20);
}

TEST(Layout, AnEmptyProfileAsksForWidgetsBesideTheRunningApplications) {
  using Placement = RunningAppsPlacement;
  for (const bool mirrored : {false, true})
    for (const double scale : {0.5, 1.0, 1.6})
      for (const Placement placement :
           {Placement::Left, Placement::BeforeApps, Placement::AfterApps, Placement::Right}) {
        DockRow row;
        row.scale = scale;
        row.runningApps = runningApps().mid(0, 2);
        row.placement = placement;
        const double width = RowLayout::idealWidth(row);
        const RowLayout layout = RowLayout::of(row, QRectF(0, 0, width, 84 * scale), 1, {.mirrored = mirrored});
        ASSERT_EQ(layout.items.size(), 2);
        ASSERT_FALSE(layout.invitation.isEmpty());
        EXPECT_TRUE(layout.glass.contains(layout.invitation));
        for (const RowItem& item : layout.items) EXPECT_FALSE(layout.invitation.intersects(item.rect));
        EXPECT_GE(layout.invitation.width(), RowLayout::invitationLine(scale).width() * scale) << scale;
        const bool isRight = (placement == Placement::Left) != mirrored;
        EXPECT_EQ(layout.invitation.left() > layout.separator.left(), isRight);
        EXPECT_EQ(layout.insertionX(0, row.spacing), layout.invitation.center().x());
      }

  DockRow row;
  row.runningApps = runningApps().mid(0, 1);
  const auto view = makeView(row);
  int asked = 0;
  QObject::connect(view.get(), &DockView::addWidgetsRequested, [&] { ++asked; });
  const QPointF beside(view->glassRect().left() + 40, view->glassRect().center().y());
  click(*view, beside);
  EXPECT_EQ(asked, 1);
  click(*view, view->itemRect(0).center());
  EXPECT_EQ(asked, 1) << "an application is started by its tile";
  mouse(*view, QEvent::MouseMove, {2, 2}, Qt::NoButton);
  const QImage still = paintedBy(*view);
  mouse(*view, QEvent::MouseMove, beside, Qt::NoButton);
  EXPECT_NE(paintedBy(*view), still) << "nothing answers the pointer";
  row.runningApps = runningApps();
  keep(paintedBy(*makeView(row), 2), u"invitation"_s);
  row.placement = Placement::None;
  EXPECT_TRUE(RowLayout::of(row, QRectF(0, 0, 110, 84), 1).invitation.isEmpty()) << "the whole dock is one";
}

TEST(Layout, ARowThatIsTooLongScrollsWithinItsGlass) {
  const auto view = makeView(starterRow(), 500);
  EXPECT_LE(view->glassRect().width(), 500);
  EXPECT_NEAR(view->itemRect(0).left(), view->glassRect().left() + 10, 1);
  wheel(*view, view->glassRect().center(), {0, -9000});
  EXPECT_NEAR(view->itemRect(6).right(), view->glassRect().right() - 10, 1);
  EXPECT_NEAR(view->itemRect(0).left(), view->glassRect().left() + 10, 1) << "the app stays";
  // What is out of sight cannot be hit.
  EXPECT_NE(view->widgetAt(view->itemRect(1).center()), view->row().widgets[1].id);
  EXPECT_FALSE(view->isItemSeen(1));

  // What is added is seen, at whichever end.
  DockRow row = view->row();
  row.widgets.insert(1, widget(u"cpu"_s));
  view->setRow(row);
  EXPECT_TRUE(view->isItemSeen(1));
  row.widgets.append(widget(u"ram"_s));
  view->setRow(row);
  EXPECT_TRUE(view->isItemSeen(8));
  EXPECT_NEAR(view->itemRect(8).right(), view->glassRect().right() - 10, 30);
}

/// A row that begins and ends with apps and has others in its middle.
DockRow rowWithEnds() {
  DockRow row;
  for (const auto& kind : {u"appLauncher"_s, u"appLauncher"_s, u"cpu"_s, u"digitalClock"_s, u"appLauncher"_s, u"ram"_s,
                           u"weatherCurrent"_s, u"timeOnly"_s})
    row.widgets.append(widget(kind));
  for (DockWidget& each : row.widgets)
    if (each.kind == u"appLauncher"_s) each.options.insert(u"path"_s, u"/a.desktop"_s);
  row.runningApps = runningApps().first(2);
  return row;
}

TEST(Layout, AppsAtTheEndsStayAndTheRestScrollsBetweenThem) {
  const DockRow row = rowWithEnds();
  const QRectF slot(0, 0, 700, 84);
  for (const bool mirrored : {false, true}) {
    const RowLayout begun = RowLayout::of(row, slot, 1, {0, 0, mirrored});
    ASSERT_GT(begun.overflow, 100);
    const RowLayout amid = RowLayout::of(row, slot, 1, {50, 0, mirrored});
    const RowLayout ended = RowLayout::of(row, slot, 1, {1e6, 0, mirrored});
    EXPECT_TRUE(begun.separatorStays);
    EXPECT_EQ(begun.separator, ended.separator);
    const double way = mirrored ? 50 : -50;
    for (qsizetype i = 0; i < begun.items.size(); ++i) {
      const bool stays = i < 2 || i >= 8;
      EXPECT_EQ(begun.items[i].stays, stays) << i;
      EXPECT_EQ(amid.items[i].rect, begun.items[i].rect.translated(stays ? 0 : way, 0)) << i;
      // A point over an item that stays is that item's, whatever is scrolled below it.
      if (!stays) continue;
      EXPECT_EQ(ended.itemAt(ended.items[i].rect.center()), i);
      EXPECT_EQ(ended.itemUnder(ended.items[i].rect.center(), 1), i);
    }
    // An arrow on each side that has more.
    EXPECT_TRUE(begun.backArrow.isEmpty());
    EXPECT_TRUE(ended.onArrow.isEmpty());
    EXPECT_EQ(amid.arrowAt(amid.backArrow.center()), -1);
    EXPECT_EQ(amid.arrowAt(amid.onArrow.center()), 1);
    EXPECT_EQ(amid.backArrow.center().x() < amid.onArrow.center().x(), !mirrored);
    EXPECT_FALSE(amid.itemAt(amid.onArrow.center()).has_value());
    // What is dropped over an end goes there, and the mark never stands where it can't be seen.
    const double behindFirst = (ended.items[0].rect.center().x() + ended.items[1].rect.center().x()) / 2;
    EXPECT_EQ(ended.widgetsBefore(behindFirst), 1);
    EXPECT_EQ(ended.widgetsBefore(ended.items[9].rect.center().x()), 8);
    const double hidden = ended.insertionX(3, row.spacing);
    EXPECT_TRUE(hidden >= ended.middle.left() && hidden <= ended.middle.right());
  }
}

TEST(Layout, AClickOnAnArrowReachesNoTileThoughTheArrowGoes) {
  const auto view = makeView(rowWithEnds(), 700);
  view->show();
  QList<QUuid> activated;
  QObject::connect(view.get(), &DockView::tileActivated, [&](const QUuid& id) { activated << id; });
  const auto again = static_cast<quint64>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
  const QPointF place(view->itemRect(8).left() - 26, view->itemRect(0).center().y());
  const auto clickAt = [&](quint64 down, quint64 up) {
    mouse(*view, QEvent::MouseButtonPress, place, Qt::LeftButton, down);
    view->rest();
    mouse(*view, QEvent::MouseButtonRelease, place, Qt::LeftButton, up);
    EXPECT_TRUE(view->rest());
  };
  quint64 now = 1000;
  // To the end; the last one is down when the arrow goes.
  for (int i = 0; i < 9 && view->itemAt(place) < 0; ++i, now += again * 2) clickAt(now, now + 50);
  now -= again * 2 - 50;
  ASSERT_GE(view->itemAt(place), 0) << "the arrow has gone";
  struct Case {
    const char* what;
    quint64 after;
    qsizetype activated;
  };
  for (const Case& expected :
       {Case{"at once", 20, 0}, Case{"and once more", again, 0}, Case{"much later", again + 1, 1}}) {
    SCOPED_TRACE(expected.what);
    now += expected.after;
    clickAt(now, now);
    EXPECT_EQ(activated.size(), expected.activated);
  }
}

TEST(Layout, AnArrowTurnsThePageAndTheKeyboardBringsItsTileIntoSight) {
  const auto view = makeView(rowWithEnds(), 700);
  view->show();
  const double first = view->itemRect(2).left();
  const double middle = view->itemRect(0).center().y();
  const QPointF onArrow(view->itemRect(8).left() - 20, middle);
  click(*view, onArrow);
  EXPECT_TRUE(view->rest());
  const double paged = view->itemRect(2).left();
  EXPECT_LT(paged, first - 100);
  for (int i = 0; i < 9; ++i) click(*view, onArrow);
  EXPECT_TRUE(view->rest());
  EXPECT_NEAR(view->itemRect(7).right(), view->itemRect(8).left(), 30);
  EXPECT_FALSE(view->isItemSeen(2));
  view->focusItem(2);
  EXPECT_TRUE(view->isItemSeen(2));
  EXPECT_EQ(view->itemAt(view->itemRect(2).center()), 2);
  keep(paintedBy(*view, 2), u"ends"_s);
}

TEST(Look, NumbersStandOnTheAppsThatHaveKeysAndNowhereElse) {
  const DockRow row = rowWithEnds();
  const auto view = makeView(row);
  const QImage plain = paintedBy(*view);
  view->showNumbers({0, 2, 4});
  const QImage numbered = paintedBy(*view);
  keep(paintedBy(*view, 2), u"numbers"_s);
  for (qsizetype item = 0; item < view->itemCount(); ++item) {
    const QRect place = view->itemRect(item).toAlignedRect();
    // The first app, the third, which stands among others, and the second of those that run.
    const bool isNumbered = item == 0 || item == 4 || item == 9;
    EXPECT_EQ(plain.copy(place) != numbered.copy(place), isNumbered) << item;
  }
  view->showNumbers({});
  EXPECT_EQ(paintedBy(*view), plain);
}

TEST(Layout, ATileGoesToAnEndWhateverIsScrolledBelowIt) {
  for (const bool isApp : {true, false}) {
    const auto view = makeView(rowWithEnds(), 700);
    view->show();
    wheel(*view, view->glassRect().center(), {0, -160});
    ASSERT_TRUE(view->rest());
    std::optional<std::pair<qsizetype, qsizetype>> asked;
    QObject::connect(view.get(), &DockView::reorderRequested, [&](qsizetype from, qsizetype to) {
      asked = {from, to};
    });
    const qsizetype from = isApp ? 4 : 3;
    const double between = (view->itemRect(0).center().x() + view->itemRect(1).center().x()) / 2;
    const QPointF at = view->itemRect(from).center();
    mouse(*view, QEvent::MouseButtonPress, at);
    mouse(*view, QEvent::MouseMove, at + QPointF(-20, 0));
    const QList<double> stay{view->itemRect(0).left(), view->itemRect(8).left()};
    mouse(*view, QEvent::MouseMove, QPointF(between, at.y()));
    EXPECT_EQ((QList<double>{view->itemRect(0).left(), view->itemRect(8).left()}), stay);
    mouse(*view, QEvent::MouseButtonRelease, QPointF(between, at.y()));
    ASSERT_TRUE(asked.has_value());
    EXPECT_EQ(asked->first, from);
    EXPECT_LE(asked->second, 1);
    EXPECT_TRUE(view->rest());
  }
}

TEST(Look, ReducedTransparencyLetsNothingThroughAndKeepsTheShadow) {
  for (const DockStyle style : {DockStyle::DarkGlass, DockStyle::LightGlass, DockStyle::LiquidGlass}) {
    DockRow row = starterRow();
    row.style = style;
    row.blurred = true;
    const auto alphas = [&] {
      const auto view = makeView(row);
      const QImage picture = paintedBy(*view);
      const QRectF first = view->itemRect(0);
      const QPoint besides(static_cast<int>(first.left()) - 4, static_cast<int>(first.center().y()));
      const QPoint below(static_cast<int>(first.right()), picture.height() - 8);
      return std::pair(qAlpha(picture.pixel(besides)), qAlpha(picture.pixel(below)));
    };
    const auto usual = alphas();
    row.reduceTransparency = true;
    const auto reduced = alphas();
    EXPECT_LT(usual.first, 255);
    EXPECT_EQ(reduced.first, 255);
    EXPECT_EQ(reduced.second, usual.second);
  }
}

TEST(Look, APictureCoversTheGlassAndAFileThatIsNoneLeavesIt) {
  QTemporaryDir folder;
  QImage blue(40, 300, QImage::Format_RGB32);
  blue.fill(QColor(0, 0, 200));
  const QString file = folder.filePath(u"kept.dat"_s);
  ASSERT_TRUE(blue.save(file, "PNG"));
  DockRow row = starterRow();
  row.style = DockStyle::Transparent;
  row.picture = {folder.filePath(u"none.dat"_s), 12, 0.5};
  const auto view = makeView(row);
  const auto inGlass = [&] {
    const QPointF place(view->glassRect().center().x(), view->glassRect().top() + 4);
    return paintedBy(*view).pixelColor((place * view->devicePixelRatio()).toPoint());
  };
  EXPECT_LT(inGlass().blue(), 50);
  row.picture.file = file;
  view->setRow(row);
  inGlass();
  // Dimmed by half, and no darker at its edge. A style without glass has its shape all the same.
  EXPECT_TRUE(QTest::qWaitFor([&] { return inGlass().blue() == 100; })) << inGlass().blue();
  EXPECT_TRUE(view->outlineRegion().contains(view->glassRect().adjusted(30, 2, -30, -2).topLeft().toPoint()));
  row.picture = {};
  view->setRow(row);
  EXPECT_LT(inGlass().blue(), 50);
}

TEST(Repainting, ATickPaintsOnlyTheTilesThatLookDifferent) {
  test::TestScheduler time;
  WatchedView view(time);
  view.setRow(starterRow());
  TileSources sources = morning();
  view.refresh(sources);
  view.resize(view.sizeHint());
  view.show();
  QCoreApplication::processEvents();
  const auto paintedBy = [&](const TileSources& next) {
    view.painted = QRegion();
    view.refresh(next);
    QCoreApplication::processEvents();
    return view.painted;
  };
  EXPECT_TRUE(paintedBy(sources).isEmpty());
  sources.now = sources.now.addSecs(1);
  EXPECT_EQ(paintedBy(sources).boundingRect(), view.itemRect(2).toAlignedRect());
  sources.metrics->memory = 30;
  EXPECT_EQ(paintedBy(sources).boundingRect(), view.itemRect(5).toAlignedRect());
  // A widget that only counts something else is no new row.
  view.painted = QRegion();
  DockRow row = view.row();
  row.widgets[1].options[u"timezone"_s] = u"Asia/Tokyo"_s;
  view.setRow(row);
  QCoreApplication::processEvents();
  EXPECT_EQ(view.painted.boundingRect(), view.itemRect(1).toAlignedRect());
}

TEST(Repainting, HoverPaintsTheTilesThatItEntersAndLeaves) {
  test::TestScheduler time;
  WatchedView view(time);
  DockRow row = starterRow();
  view.setRow(row);
  view.resize(view.sizeHint());
  view.show();
  QCoreApplication::processEvents();
  const auto paintedBy = [&](QPointF pointer) {
    view.painted = QRegion();
    mouse(view, QEvent::MouseMove, pointer, Qt::NoButton);
    QCoreApplication::processEvents();
    return view.painted;
  };
  EXPECT_TRUE(paintedBy({2, 2}).isEmpty()) << "the margins are not the dock";
  row.reduceMotion = true;
  view.setRow(row);
  QCoreApplication::processEvents();
  const QRect first = view.itemRect(0).toAlignedRect();
  const QRect second = view.itemRect(1).toAlignedRect();
  EXPECT_EQ(paintedBy(first.center()), QRegion(first));
  EXPECT_TRUE(paintedBy(first.center() + QPoint(3, 3)).isEmpty());
  EXPECT_EQ(paintedBy(second.center()), QRegion(first) + second);
}

TEST(Pointer, ActivatesWhatWasPressedAndReleased) {
  DockRow row = starterRow();
  row.runningApps = runningApps();
  const auto view = makeView(row);
  QUuid activated;
  quint64 application = 0;
  int part = -1;
  QObject::connect(view.get(), &DockView::tileActivated, [&](const QUuid& id) { activated = id; });
  QObject::connect(view.get(), &DockView::applicationActivated, [&](quint64 id) { application = id; });
  QObject::connect(view.get(), &DockView::tilePartActivated, [&](const QUuid& id, int which) {
    EXPECT_EQ(id, row.widgets[6].id);
    part = which;
  });
  click(*view, view->itemRect(1).center());
  EXPECT_EQ(activated, row.widgets[1].id);
  click(*view, view->itemRect(7).center());
  EXPECT_EQ(application, 1U);

  activated = {};
  mouse(*view, QEvent::MouseButtonPress, view->itemRect(1).center());
  mouse(*view, QEvent::MouseButtonRelease, view->itemRect(3).center());
  EXPECT_TRUE(activated.isNull()) << "a press that leaves the tile means nothing";
  click(*view, view->itemRect(6).topLeft() + QPointF(29, 32));
  EXPECT_EQ(part, int(Toggle::WiFi));
  EXPECT_TRUE(activated.isNull());
  click(*view, view->itemRect(6).topLeft() + QPointF(6, 6));
  EXPECT_EQ(activated, row.widgets[6].id) << "beside the discs, the tile opens";

  EXPECT_EQ(view->widgetAt(view->itemRect(4).center()), row.widgets[4].id);
  EXPECT_TRUE(view->widgetAt(view->itemRect(4).topRight() + QPointF(3, 10)).isNull());
  EXPECT_FALSE(view->inputRegion().contains(QPoint(1, 1))) << "the margins let clicks through";
}

TEST(Keyboard, WalksTheRowAndSpeaksToScreenReaders) {
  DockRow row;
  row.widgets = {widget(u"cpu"_s), widget(u"dockSeparator"_s), widget(u"ram"_s)};
  const auto view = makeView(row);
  view->show();
  view->activateWindow();
  view->setFocus();
  QCoreApplication::processEvents();
  ASSERT_TRUE(view->hasFocus());
  EXPECT_EQ(view->focusedItem(), 0);
  QUuid activated;
  QList<QUuid> menus;
  QObject::connect(view.get(), &DockView::tileActivated, [&](const QUuid& id) { activated = id; });
  QObject::connect(view.get(), &DockView::contextMenuRequested, [&](const QUuid& id) { menus.append(id); });
  press(*view, Qt::Key_Right);
  EXPECT_EQ(view->focusedItem(), 1);
  press(*view, Qt::Key_Return);
  EXPECT_TRUE(activated.isNull()) << "a separator has nothing but a menu";
  press(*view, Qt::Key_F10, Qt::ShiftModifier);
  press(*view, Qt::Key_F10, Qt::ControlModifier);
  EXPECT_EQ(menus, (QList<QUuid>{row.widgets[1].id, QUuid()})) << "its own, and the dock's";
  press(*view, Qt::Key_Right);
  press(*view, Qt::Key_Right);
  EXPECT_EQ(view->focusedItem(), 2);
  press(*view, Qt::Key_Return);
  EXPECT_EQ(activated, row.widgets[2].id);

  // The keyboard stays with its tile, and takes the place of one that goes.
  DockRow longer = row;
  longer.widgets.prepend(widget(u"trash"_s));
  view->setRow(longer);
  EXPECT_EQ(view->focusedItem(), 3);
  longer.widgets.removeLast();
  view->setRow(longer);
  EXPECT_EQ(view->focusedItem(), 2);
  view->setRow(row);
  EXPECT_EQ(view->focusedItem(), 1);
  press(*view, Qt::Key_Right);
  DockRow another = row;
  another.widgets = {widget(u"timeOnly"_s), widget(u"calculator"_s), widget(u"quickTodo"_s), widget(u"trash"_s)};
  view->setRow(another);
  EXPECT_EQ(view->focusedItem(), 0) << "a tile of another profile is nobody's place";
  view->setRow(row);
  EXPECT_EQ(view->focusedItem(), 0);
  press(*view, Qt::Key_End);

  QAccessibleInterface* bar = QAccessible::queryAccessibleInterface(view.get());
  ASSERT_NE(bar, nullptr);
  ASSERT_EQ(bar->childCount(), 3);
  EXPECT_EQ(bar->child(0)->text(QAccessible::Name), u"CPU"_s);
  EXPECT_EQ(bar->child(0)->text(QAccessible::Value), u"23%"_s);
  EXPECT_EQ(bar->indexOfChild(bar->child(2)), 2);
  EXPECT_TRUE(bar->child(2)->state().focused);
  bar->child(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(activated, row.widgets[0].id);
  EXPECT_EQ(view->accessibleDescription(), u"CPU: 23%; RAM: 61%"_s);

  view->clearFocus();
  QAccessibleInterface* last = bar->child(2);
  row.widgets.removeLast();
  view->setRow(row);
  EXPECT_FALSE(last->isValid());
  EXPECT_EQ(bar->childCount(), 2);
}

TEST(Bubble, WrapsItsTextAndGoesWhenDismissed) {
  MessageBubble bubble;
  bubble.setMessage(u"Short."_s);
  const QSize small = bubble.bubbleSize();
  bubble.setMessage(
      u"Settings could not be saved: no space is left on the device that holds your home folder, and /a/path/"
      u"without/any/blank/that/is/very/very/long/indeed/so/it/has/to/break/somewhere does not help."_s);
  const QSize large = bubble.bubbleSize();
  EXPECT_GT(large.height(), small.height());
  EXPECT_LT(small.width(), large.width());
  EXPECT_LE(large.width(), 320 + 100);

  bubble.resize(bubble.sizeHint());
  const QImage image = paintedBy(bubble);
  EXPECT_GT(qAlpha(image.pixel(image.rect().center())), 200);
  EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
  int dismissed = 0;
  QObject::connect(&bubble, &MessageBubble::dismissed, [&] { ++dismissed; });
  const QRect body = bubble.outlineRegion().boundingRect();
  click(bubble, body.center());
  EXPECT_EQ(dismissed, 0);
  click(bubble, body.topRight() + QPoint(-22, 22));
  EXPECT_EQ(dismissed, 1);
  press(bubble, Qt::Key_Escape);
  EXPECT_EQ(dismissed, 2);
}

}  // namespace tarnwick::testing
