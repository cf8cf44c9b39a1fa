#include <gtest/gtest.h>

#include <QDir>
#include <QMimeData>
#include <QTest>
#include <QTextDocument>

#include "clipboard/ClipboardHistory.h"
#include "support/FakePasteboard.h"
#include "support/FileTest.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"
#include "views/controls/Buttons.h"
#include "views/controls/ConfirmBar.h"
#include "views/controls/Fields.h"
#include "views/controls/ItemView.h"
#include "views/controls/PaneMenu.h"
#include "views/families/Rooms.h"
#include "views/panels/TilePanel.h"
#include "views/snapshot/SnapshotFixture.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// The panel over a history of its own, in a folder, and a clipboard that the test plays.
class ClipboardPanelTest : public FolderTest {
 protected:
  void SetUp() override { history = std::make_unique<ClipboardHistory>(folder_.path(), clock); }

  void open() { open(pasteboard); }
  void open(Pasteboard& clipboard) {
    ReadingServices fixed = fixture.readings().services();
    const PanelContext base = fixture.contextOf(u"clipboard"_s, commands);
    const PanelContext context{fixture.store(),
                               clock,
                               base.toggles,
                               commands,
                               base.widget,
                               base.display,
                               base.sources,
                               ReadingServices{.recent = fixed.recent,
                                               .bookmarks = fixed.bookmarks,
                                               .screenshots = fixed.screenshots,
                                               .stacks = fixed.stacks,
                                               .thumbnails = fixed.thumbnails,
                                               .processes = fixed.processes,
                                               .temperature = fixed.temperature,
                                               .machine = fixed.machine,
                                               .apps = fixed.apps,
                                               .windows = fixed.windows,
                                               .windowService = fixed.windowService,
                                               .meeting = fixed.meeting,
                                               .media = fixed.media,
                                               .clipboard = *history,
                                               .pasteboard = clipboard,
                                               .connections = fixed.connections}};
    panel = makePanel(context);
    panel->start();
    panel->resize(panel->sizeHint());
    panel->show();
    QObject::connect(panel.get(), &TilePanel::closeRequested, [this] { closed = true; });
    settle();
  }
  void settle() {
    for (int round = 0; round < 2; ++round) {
      bool isDone = false;
      history->load([&] { isDone = true; });
      ASSERT_TRUE(waitFor([&] { return isDone; }));
      QCoreApplication::processEvents();
    }
  }
  /// Copied in this order.
  void record(const QStringList& texts) {
    for (const QString& text : texts) history->record(*ClipboardCapture::ofText(text));
    settle();
  }
  ItemView& view() { return *panel->findChild<ItemView*>(); }
  SearchField& field() { return *panel->findChild<SearchField*>(); }
  QStringList titles() {
    QStringList all;
    for (const ViewItem& item : view().items()) all << item.title;
    return all;
  }
  PaintedButton* button(const QString& label) {
    for (PaintedButton* each : panel->findChildren<PaintedButton*>())
      if (each->label() == label && each->isVisible()) return each;
    return nullptr;
  }
  void click(const QString& label) {
    PaintedButton* found = button(label);
    ASSERT_TRUE(found) << "no button " << label.toStdString();
    found->click();
    settle();
  }
  bool says(const QString& sentence) {
    for (const TextLabel* label : panel->findChildren<TextLabel*>())
      if (label->isVisible() && label->text().contains(sentence)) return true;
    return false;
  }
  /// Does what the menu of a row, or a screen reader, offers under a word.
  void act(int row, const QString& word) {
    const QModelIndex index = view().model()->index(row, 0);
    const qsizetype action = view().itemActions(index).indexOf(word);
    ASSERT_GE(action, 0) << word.toStdString();
    view().runItemAction(index, action);
    settle();
  }

  test::TestScheduler clock;
  SnapshotStore fixture;
  test::FakePasteboard pasteboard;
  test::RecordingCommands commands;
  std::unique_ptr<ClipboardHistory> history;
  std::unique_ptr<TilePanel> panel;
  bool closed = false;
};

TEST_F(ClipboardPanelTest, SaysWhatIsMissing) {
  open();
  EXPECT_TRUE(says(u"Copy something to start your history."_s));
  click(u"Pause"_s);
  EXPECT_FALSE(fixture.store().config().clipboardEnabled);
  EXPECT_TRUE(says(u"Keeps text, images, files, links and colours you copy, on this Mac only."_s));
  EXPECT_TRUE(says(u"Copies that applications mark as concealed"_s));
  click(u"Enable Clipboard History"_s);
  EXPECT_TRUE(fixture.store().config().clipboardEnabled);
  EXPECT_TRUE(says(u"Copy something to start your history."_s));

  StillPasteboard none(Capability::no(u"The compositor has no clipboard control."_s));
  open(none);
  EXPECT_TRUE(says(u"The compositor has no clipboard control."_s));
  EXPECT_FALSE(button(u"Enable Clipboard History"_s)) << "it would promise what cannot be";

  put(u"Clipboard/index.json"_s, "broken");
  SetUp();
  fixture.store().edit([](DockConfiguration& config) { config.clipboardEnabled = true; });
  open();
  EXPECT_TRUE(says(u"Your clipboard history couldn't be read."_s));
  EXPECT_FALSE(button(u"Clear History"_s));
}

TEST_F(ClipboardPanelTest, WhilePausedTheHistoryIsThereAndItIsSaidThatNothingIsRecorded) {
  record({u"a"_s, u"b"_s});
  open();
  EXPECT_FALSE(says(u"Paused."_s));
  click(u"Pause"_s);
  EXPECT_FALSE(fixture.store().config().clipboardEnabled);
  EXPECT_TRUE(says(u"Paused. What you copy is not recorded."_s));
  EXPECT_TRUE(says(u"Copies that applications mark as concealed"_s));
  EXPECT_FALSE(button(u"Pause"_s));
  EXPECT_TRUE(view().isVisible());
  EXPECT_EQ(titles(), (QStringList{u"b"_s, u"a"_s}));
  view().choose(1);
  QTest::keyClick(&view(), Qt::Key_Return);
  EXPECT_EQ(pasteboard.offered, PasteboardOffer::text(u"a"_s)) << "what is kept can be used";
  click(u"Enable Clipboard History"_s);
  EXPECT_TRUE(fixture.store().config().clipboardEnabled);
  EXPECT_FALSE(says(u"Paused."_s));
  click(u"Pause"_s);
  click(u"Clear History"_s);
  click(u"Clear History"_s);
  EXPECT_TRUE(history->items().isEmpty());
  EXPECT_TRUE(says(u"Clipboard history is off"_s));
}

TEST_F(ClipboardPanelTest, ShowsGroupsThatHoldSomething) {
  record({u"/plain"_s, u"#abc"_s, u"https://example.org/a"_s});
  open();
  EXPECT_EQ(titles(), (QStringList{u"https://example.org/a"_s, u"#abc"_s, u"/plain"_s}));
  for (const QString& missing : {u"Favourites"_s, u"Images"_s, u"Files"_s})
    EXPECT_FALSE(button(missing)) << missing.toStdString();
  const int height = panel->sizeHint().height();
  click(u"Colours"_s);
  EXPECT_EQ(titles(), QStringList{u"#abc"_s});
  EXPECT_EQ(panel->sizeHint().height(), height) << "the tabs stay under the pointer";
  act(0, u"Add to Favourites"_s);
  EXPECT_EQ(view().items().first().mark, u"star"_s);
  click(u"Favourites"_s);
  EXPECT_EQ(titles(), QStringList{u"#abc"_s});
  act(0, u"Remove from Favourites"_s);
  EXPECT_EQ(titles().size(), 3) << "a group without entries gives way to the recent ones";
  EXPECT_FALSE(button(u"Favourites"_s));
}

TEST_F(ClipboardPanelTest, AFolderIsNotCalledAFile) {
  QFile file(folder_.filePath(u"note.txt"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"Letters"_s));
  for (const auto& name : {u"note.txt"_s, u"Letters"_s}) {
    ClipboardCapture copied;
    copied.kind = ClipboardEntry::Kind::File;
    copied.value = folder_.filePath(name);
    history->record(copied);
  }
  settle();
  open();
  EXPECT_TRUE(waitFor([&] { return view().items().value(0).caption.startsWith(u"Folder · "_s); }));
  EXPECT_TRUE(view().items().value(1).caption.startsWith(u"File · "_s));
}

TEST_F(ClipboardPanelTest, IsSearchedByWritingAndPutsAnEntryBackByReturn) {
  record({u"first apple"_s, u"pear"_s, u"second apple"_s});
  open();
  EXPECT_FALSE(field().isVisible());
  QTest::keyClick(&view(), Qt::Key_A);
  EXPECT_TRUE(field().isVisible());
  QTest::keyClicks(&field(), u"pp"_s);
  EXPECT_EQ(titles(), (QStringList{u"second apple"_s, u"first apple"_s}));
  QTest::keyClick(&field(), Qt::Key_Down);
  QTest::keyClick(&field(), Qt::Key_Return);
  EXPECT_EQ(pasteboard.offered, PasteboardOffer::text(u"first apple"_s));
  EXPECT_TRUE(closed);
  QTest::keyClicks(&field(), u"zzz"_s);
  EXPECT_TRUE(says(u"Nothing found."_s));
  click(u"Search"_s);
  EXPECT_FALSE(field().isVisible());
  EXPECT_EQ(titles().size(), 3);
}

TEST_F(ClipboardPanelTest, TheButtonsOfARowStarItAndOpenItsMenuAndItsTipIsTheWholeCopyAsItIs) {
  record({u"<b>one</b>\ntwo"_s, u"b"_s});
  open();
  for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    panel->setLayoutDirection(direction);
    settle();
    const QRect row = view().visualRect(view().model()->index(1, 0));
    const bool mirrored = direction == Qt::RightToLeft;
    const auto fromEnd = [&](int distance) {
      return QPoint(mirrored ? row.left() + distance : row.right() - distance, row.center().y());
    };
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, fromEnd(theme::kRowOverhang + 12));
    auto* menu = panel->findChild<PaneMenu*>();
    ASSERT_TRUE(menu) << "mirrored: " << mirrored;
    EXPECT_EQ(menu->accessibleName(), u"<b>one</b> two"_s);
    QTest::keyClick(menu, Qt::Key_Escape);
    QTRY_VERIFY(!panel->findChild<PaneMenu*>());
    EXPECT_FALSE(closed) << "a button's click does not use the entry";
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, fromEnd(theme::kRowOverhang + 24 + 4 + 12));
    settle();
    EXPECT_EQ(view().items()[1].mark.isEmpty(), mirrored) << "once on, once off";
  }
  QTextDocument tip;
  tip.setHtml(view().model()->index(1, 0).data(Qt::ToolTipRole).toString());
  EXPECT_EQ(tip.toPlainText(), u"<b>one</b>\ntwo"_s);
}

TEST_F(ClipboardPanelTest, RemovesByDeleteAndTakesItBackForAWhile) {
  record({u"a"_s, u"b"_s, u"c"_s});
  open();
  view().choose(1);
  QTest::keyClick(&view(), Qt::Key_Delete);
  settle();
  EXPECT_EQ(titles(), (QStringList{u"c"_s, u"a"_s}));
  EXPECT_EQ(view().currentIndex().row(), 1) << "the next one is chosen";
  EXPECT_EQ(commands.announced, QStringList{u"Text removed from the history."_s});
  panel.reset();
  commands.undos.at(0)();
  settle();
  EXPECT_EQ(history->items().size(), 3);
  EXPECT_EQ(history->items()[1].value, u"b"_s);
  commands.redos.at(0)();
  settle();
  EXPECT_EQ(history->items().size(), 2);
  clock.advance(7.9);
  commands.undos.at(0)();
  settle();
  EXPECT_EQ(history->items().size(), 3);
  commands.redos.at(0)();
  settle();
  clock.advance(8.1);
  EXPECT_NE(failureOf([&] { commands.undos.at(0)(); }), "") << "nothing of it is left";
  settle();
  EXPECT_EQ(history->items().size(), 2);
}

TEST_F(ClipboardPanelTest, AsksOnceBeforeAllGoes) {
  record({u"a"_s, u"b"_s});
  open();
  click(u"Clear History"_s);
  EXPECT_TRUE(says(u"Delete the whole history?"_s));
  history->toggleFavourite(history->items().first().id);
  settle();
  EXPECT_TRUE(says(u"1 favourite included"_s)) << "the question tells what is true now";
  click(u"Cancel"_s);
  EXPECT_EQ(history->items().size(), 2);
  click(u"Clear History"_s);
  click(u"Clear History"_s);
  EXPECT_TRUE(history->items().isEmpty());
  EXPECT_TRUE(says(u"Copy something to start your history."_s));
}

TEST_F(ClipboardPanelTest, GivesEachKindInItsOwnWay) {
  using Kind = ClipboardEntry::Kind;
  const QDateTime now = SnapshotFixture::moment().addSecs(-120);
  const auto entry = [&](Kind kind, const QString& value, const QString& file = {}) {
    return ClipboardEntry{QUuid::createUuid(), kind, value, file, now, false};
  };
  QImage small(4, 4, QImage::Format_RGB32);
  small.fill(Qt::red);
  const QList<ClipboardEntry> entries{entry(Kind::Text, u"<b>two</b>\nlines"_s), entry(Kind::Link, u"example.org/x"_s),
                                      entry(Kind::Color, u"#abc"_s), entry(Kind::File, u"/srv/a.pdf"_s),
                                      entry(Kind::Image, {}, u"p.png"_s)};
  fixture.readings().clipboard.setFixed(entries, {{u"p.png"_s, {small, {640, 480}}}});
  panel = makePanel(fixture.contextOf(u"clipboard"_s, commands));
  panel->start();
  struct Case {
    QString title;
    QString caption;
    QUrl drag;
    QString text;
    bool reveals;
  };
  const Case cases[] = {
      {u"<b>two</b> lines"_s, u"Text · 2 min ago"_s, {}, u"<b>two</b>\nlines"_s, false},
      {u"example.org/x"_s, u"Link · 2 min ago"_s, QUrl(u"https://example.org/x"_s), u"example.org/x"_s, false},
      {u"#abc"_s, u"Colour · 2 min ago"_s, {}, u"#abc"_s, false},
      {u"a.pdf"_s, u"File · /srv · 2 min ago"_s, QUrl::fromLocalFile(u"/srv/a.pdf"_s), u"/srv/a.pdf"_s, true},
      {u"Picture, 640 × 480"_s, u"Image · 2 min ago"_s, view().items().value(4).drag, {}, true},
  };
  ASSERT_EQ(view().items().size(), 5);
  for (int i = 0; i < 5; ++i) {
    const ViewItem& item = view().items()[i];
    SCOPED_TRACE(item.title.toStdString());
    EXPECT_EQ(item.title, cases[i].title);
    EXPECT_EQ(item.caption, cases[i].caption);
    EXPECT_EQ(item.drag, cases[i].drag);
    EXPECT_EQ(item.dragText, cases[i].text);
    const auto carried = ItemView::carried(item);
    ASSERT_TRUE(carried);
    EXPECT_EQ(carried->urls(), item.drag.isEmpty() ? QList<QUrl>() : QList{item.drag});
    EXPECT_EQ(carried->text(), i == 4 ? item.drag.toString() : cases[i].text) << "byte for byte";
    EXPECT_EQ(item.dragsCopy, i == 4) << "no program may take the history's own file away";
    EXPECT_EQ(view().itemActions(view().model()->index(i, 0)).contains(u"Reveal in Finder"_s), cases[i].reveals);
  }
  EXPECT_FALSE(ItemView::carried(ViewItem{u"id"_s, u"title"_s}));
  EXPECT_TRUE(view().items()[4].drag.toLocalFile().endsWith(u"Clipboard/p.png"_s));
}

}  // namespace
}  // namespace tarnwick
