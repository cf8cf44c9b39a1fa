#include "views/commandbar/CommandBarPane.h"

#include <QSignalSpy>
#include <QTest>

#include "commandbar/CommandBarTest.h"
#include "commandbar/CommandExtras.h"
#include "support/TestFrameClock.h"
#include "views/commandbar/CommandBarMeasures.h"
#include "views/commandbar/CommandField.h"
#include "views/commandbar/CommandList.h"

namespace tarnwick {
namespace {

struct KnownClocks final : FrameClocks {
  std::unique_ptr<FrameClock> make(const QString&) override {
    auto clock = std::make_unique<test::TestFrameClock>();
    made << clock.get();
    return clock;
  }
  QList<test::TestFrameClock*> made;
};

class CommandBarPaneTest : public CommandBarTest {
 protected:
  CommandBarPaneTest() {
    model->setChoices(
        {.findsWidgets = false, .findsSymbols = false, .findsFiles = false, .searchesWeb = false, .webSearch = {}});
    extras.setChoices({.findsEmoji = false, .findsSettings = false});
    pane.setDockLook(DockStyle::DarkGlass, Backdrop::Plain, false);
    pane.resize(pane.sizeHint());
    pane.show();
  }
  void type(const QString& text) {
    QTest::keyClicks(&pane.field(), text);
    pane.resize(pane.sizeHint());
  }
  bool key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    press.ignore();
    QCoreApplication::sendEvent(&pane.field(), &press);
    return press.isAccepted();
  }

  KnownClocks clocks;
  CommandExtras extras{{.commands = commands}};
  CommandBarRows rows{*model, extras};
  CommandBarPane pane{rows, [](QPainter&, const QRectF&, const CommandItem&) {}, clocks, {}};
  QSignalSpy done{&pane, &CommandBarPane::done};
};

TEST_F(CommandBarPaneTest, KeysChooseAndDo) {
  type(u"ma"_s);
  ASSERT_EQ(pane.list().rows().size(), 2) << "Mail and Maps";
  EXPECT_EQ(pane.list().currentIndex().row(), 0);
  const struct {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    int row;
  } steps[] = {{Qt::Key_Down, Qt::NoModifier, 1},
               {Qt::Key_Down, Qt::NoModifier, 0},
               {Qt::Key_Up, Qt::NoModifier, 1},
               {Qt::Key_Tab, Qt::NoModifier, 0},
               {Qt::Key_Backtab, Qt::ShiftModifier, 1}};
  for (const auto& step : steps) {
    EXPECT_TRUE(key(step.key, step.modifiers));
    EXPECT_EQ(pane.list().currentIndex().row(), step.row);
  }
  EXPECT_TRUE(key(Qt::Key_C, Qt::ControlModifier));
  EXPECT_TRUE(commands.asked.contains(u"copy /apps/maps.desktop"_s)) << commands.asked.join(u", "_s).toStdString();
  EXPECT_EQ(done.size(), 0) << "it stays";
  EXPECT_FALSE(key(Qt::Key_Escape)) << "that is for the window";
  QTest::keyClick(&pane.field(), Qt::Key_Return);
  EXPECT_EQ(done.size(), 1);
  EXPECT_TRUE(commands.asked.contains(u"start /apps/maps.desktop"_s)) << commands.asked.join(u", "_s).toStdString();
}

TEST_F(CommandBarPaneTest, TellsItsFirstFrameOnce) {
  QSignalSpy appeared(&pane, &CommandBarPane::appeared);
  ASSERT_TRUE(appeared.wait());
  pane.repaint();
  EXPECT_EQ(appeared.size(), 1);
}

TEST_F(CommandBarPaneTest, AClickOnARowDoesWhatReturnDoes) {
  type(u"ed"_s);
  for (test::TestFrameClock* clock : clocks.made) clock->beat(1);
  const QRect row = pane.list().visualRect(pane.list().model()->index(0, 0));
  QTest::mouseClick(pane.list().viewport(), Qt::LeftButton, {}, row.center());
  EXPECT_EQ(done.size(), 1);
  EXPECT_TRUE(commands.asked.contains(u"start /apps/editor.desktop"_s));
}

TEST_F(CommandBarPaneTest, TheGlassGrowsIntoItsWindowAndShrinksWithinIt) {
  const int alone = theme::kBarFieldHeight;
  const auto height = [this] { return pane.sizeHint().shrunkBy(pane.margins()).height(); };
  EXPECT_EQ(height(), alone);
  type(u"ma"_s);
  const int whole = alone + theme::kBarListPadding * 2 + theme::kBarRowHeight * 2;
  EXPECT_EQ(height(), whole) << "the window is there before the glass";
  EXPECT_FALSE(pane.list().isVisible());
  for (test::TestFrameClock* clock : clocks.made) clock->beat();
  EXPECT_TRUE(pane.list().isVisible());
  EXPECT_LT(pane.list().height(), whole - alone);
  for (test::TestFrameClock* clock : clocks.made) clock->beat(2);
  EXPECT_EQ(pane.list().height(), whole - alone);
  for (const test::TestFrameClock* clock : clocks.made) EXPECT_FALSE(clock->isRunning());

  type(u"zz"_s);
  EXPECT_EQ(height(), whole) << "until the glass has left it";
  for (test::TestFrameClock* clock : clocks.made) clock->beat(2);
  EXPECT_EQ(height(), alone);
}

TEST_F(CommandBarPaneTest, ShowsTwelveRowsAtMostAndNoneInPart) {
  QStringList names;
  for (int i = 1; i <= 14; ++i) names << u"Map %1"_s.arg(i);
  desktop.installedApps.setFixed(appsNamed(names));
  const auto rest = [this] {
    for (test::TestFrameClock* clock : clocks.made) clock->beat(2);
    pane.resize(pane.sizeHint());
    QCoreApplication::processEvents();
  };
  type(u"map"_s);
  ASSERT_EQ(pane.list().rows().size(), 12);
  rest();
  EXPECT_EQ(pane.list().height(), theme::kBarListPadding * 2 + theme::kBarRowHeight * 12);
  pane.setSpaceForRows(300);
  rest();
  EXPECT_EQ(pane.list().height(), theme::kBarListPadding * 2 + theme::kBarRowHeight * 6);
  const auto place = [this](int row) { return pane.list().visualRect(pane.list().model()->index(row, 0)); };
  for (const auto& [steps, first] : {std::pair(8, 3), {1, 4}, {-5, 4}, {-1, 3}}) {
    for (int i = 0; i < std::abs(steps); ++i) key(steps > 0 ? Qt::Key_Down : Qt::Key_Up);
    EXPECT_EQ(place(first).top(), 0) << steps;
    EXPECT_TRUE(pane.list().viewport()->rect().contains(place(pane.list().currentIndex().row()))) << steps;
  }
}

TEST_F(CommandBarPaneTest, SeveralLinesThatArePastedAreOne) {
  pane.field().insert(u"two\r\nlines\tmore"_s);
  EXPECT_EQ(pane.field().text(), u"two lines more"_s);
  EXPECT_EQ(model->query(), pane.field().text());
}

TEST_F(CommandBarPaneTest, WhatIsStillBeingWrittenIsNoQuery) {
  const int before = pane.field().inputMethodQuery(Qt::ImCursorRectangle).toRect().left();
  QInputMethodEvent writing(u"mai"_s, {{QInputMethodEvent::Cursor, 3, 1, {}}});
  QCoreApplication::sendEvent(&pane.field(), &writing);
  EXPECT_GT(pane.field().inputMethodQuery(Qt::ImCursorRectangle).toRect().left(), before);
  EXPECT_EQ(model->query(), QString());
  QInputMethodEvent written;
  written.setCommitString(u"mail"_s);
  QCoreApplication::sendEvent(&pane.field(), &written);
  EXPECT_EQ(model->query(), u"mail"_s);
}

TEST_F(CommandBarPaneTest, SaysWhatItDidAndWhereNothingCanBeFound) {
  type(u"ma"_s);
  key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(pane.list().accessibleDescription(), u"Path copied"_s);
  EXPECT_EQ(pane.list().note(), u"Path copied"_s);
  // The path is among what was copied then, and the row that it is about is still chosen.
  model->setChoices({.findsWidgets = false, .findsSymbols = false, .findsFiles = false, .webSearch = {}});
  EXPECT_EQ(pane.list().rows().size(), 3);
  EXPECT_EQ(pane.list().note(), u"Path copied"_s);
  key(Qt::Key_Down);
  EXPECT_EQ(pane.list().note(), QString());
  pane.field().clear();
  pane.setFindsNothing(true);
  EXPECT_EQ(pane.field().placeholderText(), u"Write a calculation"_s);
  for (test::TestFrameClock* clock : clocks.made) clock->beat(2);
  type(u"zzz"_s);
  EXPECT_EQ(pane.sizeHint().height(), pane.margins().top() + pane.margins().bottom() + theme::kBarFieldHeight +
                                          theme::kBarListPadding * 2 + theme::kBarRowHeight);
}

}  // namespace
}  // namespace tarnwick
