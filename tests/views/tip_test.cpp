// What the dock says of what is pointed at: when it comes and goes, what it says, and how it looks.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QPainter>
#include <QSignalSpy>
#include <functional>

#include "../support/TestScheduler.h"
#include "DockFixture.h"
#include "views/controls/TipBubble.h"
#include "views/controls/WrappedText.h"
#include "views/theme/Theme.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;
using tarnwick::test::TestScheduler;

namespace {

/// Of switches: one that is on, and one that this computer has not got.
TileSources withoutBluetooth() {
  TileSources sources = morning();
  sources.toggles.insert(Toggle::Bluetooth, {false, Capability::no(u"This computer has no Bluetooth adapter."_s)});
  return sources;
}

DockRow rowWithApps() {
  DockRow row = starterRow();
  row.runningApps = runningApps();
  row.placement = RunningAppsPlacement::Right;
  return row;
}

class Tips : public ::testing::Test {
 protected:
  void show(const DockRow& row, const TileSources& sources = morning()) {
    view = makeView(row, time);
    view->refresh(sources);
    view->show();
    view->activateWindow();
    QCoreApplication::processEvents();
    view->clearFocus();
  }
  void point(QPointF at) { mouse(*view, QEvent::MouseMove, at, Qt::NoButton); }
  void leave() {
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(view.get(), &event);
  }
  QPointF middle(qsizetype item) const { return view->itemRect(item).center(); }
  QPointF gapAfter(qsizetype item) const {
    return {(view->itemRect(item).right() + view->itemRect(item + 1).left()) / 2, middle(item).y()};
  }
  QString text() const { return view->tip() ? view->tip()->text : QString(); }
  QString tipOf(qsizetype item) const { return view->itemText(item).tip(); }

  TestScheduler time;
  std::unique_ptr<MovedView> view;
};

TEST_F(Tips, ComeAfterHalfASecondAndAtOnceBesideAnother) {
  show(starterRow());
  QSignalSpy changes(view.get(), &DockView::tipChanged);
  point(middle(4));
  time.advance(0.49);
  EXPECT_EQ(text(), QString());
  // Moving within the tile begins nothing anew.
  point(middle(4) + QPointF(3, 0));
  time.advance(0.02);
  EXPECT_EQ(text(), tipOf(4));
  EXPECT_EQ(changes.count(), 1);
  // Over the gap to the next one.
  point(gapAfter(4));
  time.advance(0.1);
  EXPECT_EQ(text(), tipOf(4));
  point(middle(5));
  EXPECT_EQ(text(), tipOf(5));
  // For longer in a gap, or elsewhere.
  point(gapAfter(5));
  time.advance(0.25);
  EXPECT_EQ(text(), QString());
  point(middle(5));
  EXPECT_EQ(text(), QString());
  time.advance(0.6);
  EXPECT_EQ(text(), tipOf(5));
  leave();
  time.advance(0.25);
  EXPECT_EQ(text(), QString());
  // A pointer that only passes by calls nothing.
  for (const qsizetype item : {1, 2, 4, 5}) {
    point(middle(item));
    time.advance(0.3);
  }
  leave();
  time.advance(2);
  EXPECT_EQ(text(), QString());
  EXPECT_EQ(time.waiting(), 0);
}

TEST_F(Tips, NameAppsTilesAndEachSwitchAndStandBesideTheGlass) {
  DockRow row = rowWithApps();
  row.widgets[6].options.insert(u"toggles"_s, u"wifi,bluetooth,darkMode,keepAwake"_s);
  show(row, withoutBluetooth());
  QStringList said;
  QList<QRect> places;
  const QRectF switches = view->itemRect(6);
  for (int step = 0; step <= 100; ++step) {
    point({switches.left() + switches.width() * step / 100, switches.center().y()});
    time.advance(0.6);
    if (!view->tip() || (!said.isEmpty() && said.last() == text())) continue;
    said << text();
    places << view->tip()->beside;
  }
  const QString whole = tipOf(6);  // Between the discs.
  const QString missing = u"Bluetooth: This computer has no Bluetooth adapter."_s;
  EXPECT_EQ(said.count(missing), 1) << qPrintable(said.join(u" | "_s));
  EXPECT_EQ(said.count(u"Wi-Fi"_s), 1);
  EXPECT_EQ(said.count(u"Keep Awake"_s), 1);
  for (qsizetype i = 0; i < said.size(); ++i) {
    EXPECT_EQ(places[i].top(), view->glassRect().top());
    EXPECT_EQ(places[i].bottom() + 1, view->glassRect().bottom());
    EXPECT_EQ(places[i].width() < 40, said[i] != whole) << qPrintable(said[i]);
  }
  const qsizetype app = view->itemCount() - 1;
  point(middle(app));
  time.advance(0.6);
  EXPECT_EQ(text().toStdString(), "Music");
  EXPECT_NEAR(view->tip()->beside.center().x(), middle(app).x(), 1);
}

TEST_F(Tips, GoWithAllThatIsDoneOnTheDockAndStayAwayMeanwhile) {
  show(rowWithApps());
  struct Action {
    const char* what;
    std::function<void()> begin;
    std::function<void()> end;
    bool comesAgain;  ///< Without another tile in between.
  };
  const QUuid other = view->row().widgets[1].id;
  const std::vector<Action> actions = {
      {"a press", [this] { mouse(*view, QEvent::MouseButtonPress, middle(4)); },
       [this] { mouse(*view, QEvent::MouseButtonRelease, middle(4)); }, false},
      {"a panel", [&] { view->setPanelOpen(other); }, [this] { view->setPanelOpen({}); }, false},
      {"a hidden dock", [this] { view->hide(); },
       [this] {
         view->show();
         point(middle(4));
       },
       true},
  };
  for (const Action& action : actions) {
    leave();
    time.advance(1);
    point(middle(4));
    time.advance(0.6);
    ASSERT_EQ(text(), tipOf(4)) << action.what;
    action.begin();
    EXPECT_EQ(text(), QString()) << action.what;
    time.advance(2);
    EXPECT_EQ(text(), QString()) << action.what;
    action.end();
    point(middle(4) + QPointF(1, 0));
    time.advance(2);
    EXPECT_EQ(!text().isEmpty(), action.comesAgain) << action.what;
    point(middle(5));
    time.advance(0.6);
    EXPECT_EQ(text(), tipOf(5)) << action.what;
  }
}

TEST_F(Tips, FollowTheValueOfTheirTile) {
  DockRow row = starterRow();
  show(row);
  point(middle(4));
  time.advance(0.6);
  const QString before = text();
  TileSources later = morning();
  later.metrics->cpu = 77;
  view->refresh(later);
  EXPECT_NE(text(), before);
  EXPECT_EQ(text(), tipOf(4));
  // One of a tile that has gone goes too.
  row.widgets.removeAt(4);
  view->setRow(row);
  view->refresh(later);
  time.advance(1);
  EXPECT_FALSE(text().startsWith(before.section(u':', 0, 0))) << qPrintable(text());
}

TEST_F(Tips, ComeToWhatTheKeyboardIsAt) {
  show(starterRow());
  view->setFocus();
  if (view->focusedItem() < 0) GTEST_SKIP() << "no window is active here";
  press(*view, Qt::Key_Home);
  time.advance(0.6);
  EXPECT_EQ(text(), tipOf(0));
  press(*view, Qt::Key_Right);
  EXPECT_EQ(text(), tipOf(1));
  // A pointer that moves is asked first, one that rests is not.
  point(middle(5));
  EXPECT_EQ(text(), tipOf(5));
  press(*view, Qt::Key_Right);
  EXPECT_EQ(text(), tipOf(2));
  view->clearFocus();
  EXPECT_EQ(text(), tipOf(5));
  leave();
  time.advance(0.3);
  EXPECT_EQ(text(), QString());
}

TEST(TipBubbles, HoldTheWholeTextWhateverItsLength) {
  for (const DockStyle style : {DockStyle::DarkGlass, DockStyle::White})
    for (const Backdrop backdrop : {Backdrop::Plain, Backdrop::Opaque})
      for (const QString& text : {u"Files"_s, u"Bluetooth: This computer has no Bluetooth adapter."_s,
                                  u"word "_s.repeated(60), u"w"_s.repeated(1000), u"one\ntwo"_s}) {
        TipBubble bubble;
        bubble.setLook(style, backdrop);
        bubble.setText(text);
        bubble.resize(bubble.sizeHint());
        const QSize pane = bubble.size().shrunkBy(bubble.margins());
        EXPECT_LE(pane.width(), theme::kBubbleTextWidth + theme::kTipPaddingX * 2 + 1);
        EXPECT_GE(pane.height(), 20);
        // Ink keeps off the edges of the pane: within the padding there is nothing but the ground.
        TipBubble empty;
        empty.setLook(style, backdrop);
        empty.resize(bubble.size());
        const QImage written = paintedBy(bubble);
        const QImage ground = paintedBy(empty);
        const QRect room = bubble.rect().marginsRemoved(bubble.margins());
        const QRect inner = room.adjusted(4, 3, -4, -3);
        int ink = 0;
        for (int y = room.top(); y <= room.bottom(); ++y)
          for (int x = room.left(); x <= room.right(); ++x) {
            if (written.pixel(x, y) == ground.pixel(x, y)) continue;
            ++ink;
            ASSERT_TRUE(inner.contains(x, y)) << x << ',' << y << ' ' << qPrintable(text.left(20));
          }
        EXPECT_GT(ink, 40);
      }
}

TEST(Pictures, Tips) {
  constexpr double ratio = 2;
  QImage sheet(QSize(1110, 130) * ratio, QImage::Format_ARGB32_Premultiplied);
  sheet.setDevicePixelRatio(ratio);
  QPainter painter(&sheet);
  painter.drawImage(0, 0, wallpaper(QSize(1110, 130), ratio));
  double x = 0;
  for (const auto& [style, backdrop] :
       {std::pair(DockStyle::DarkGlass, Backdrop::Plain), std::pair(DockStyle::White, Backdrop::Plain),
        std::pair(DockStyle::DarkGlass, Backdrop::Opaque)}) {
    double y = 4;
    for (const QString& text : {u"Files"_s, u"Bluetooth: This computer has no Bluetooth adapter. It may be off."_s}) {
      TipBubble bubble;
      bubble.setLook(style, backdrop);
      bubble.setText(text);
      bubble.resize(bubble.sizeHint());
      painter.drawImage(QPointF(x, y), paintedBy(bubble, ratio));
      y += bubble.height();
    }
    x += 370;
  }
  painter.end();
  keep(sheet, u"tips"_s);
}

}  // namespace
}  // namespace tarnwick::testing
