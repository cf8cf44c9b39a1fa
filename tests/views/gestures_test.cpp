// Gestures on the dock: tiles that are moved, things that are dropped, profiles that are switched.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>
#include <cmath>

#include "../support/TestScheduler.h"
#include "DockFixture.h"
#include "config/Reordering.h"
#include "config/WidgetTransfer.h"
#include "views/dock/UndoBubble.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

constexpr Qt::DropActions kAll = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;

DockWidget widgetWith(const QString& kind, const QString& path) {
  DockWidget made = widget(kind);
  made.options.insert(u"path"_s, path);
  return made;
}

/// Presses a tile and moves the pointer so that it leaves its place.
void take(DockView& view, qsizetype item) {
  const QPointF at = view.itemRect(item).center();
  mouse(view, QEvent::MouseButtonPress, at);
  mouse(view, QEvent::MouseMove, at + QPointF(7, 0));
}

DockRow profiles(qsizetype count) {
  DockRow row = starterRow();
  for (qsizetype i = 0; i < count; ++i) row.tabs.append(u"Profile %1"_s.arg(i + 1));
  return row;
}

struct Dropped {
  Qt::DropAction proposed = Qt::IgnoreAction;
  bool taken = false;
};

Dropped dropOn(DockView& view, QPointF at, const QMimeData& data, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               Qt::DropActions possible = kAll) {
  QDragEnterEvent enter(at.toPoint(), possible, &data, Qt::LeftButton, modifiers);
  QCoreApplication::sendEvent(&view, &enter);
  QDropEvent drop(at, possible, &data, Qt::LeftButton, modifiers);
  QCoreApplication::sendEvent(&view, &drop);
  return {drop.dropAction(), enter.isAccepted() && drop.isAccepted()};
}

}  // namespace

TEST(Dragging, MovesATileToWhereItIsLetGo) {
  const auto view = makeView(starterRow());
  view->show();
  std::optional<std::pair<qsizetype, qsizetype>> moved;
  int started = 0;
  QUuid activated;
  QObject::connect(view.get(), &DockView::dragStarted, [&] { ++started; });
  QObject::connect(view.get(), &DockView::tileActivated, [&](const QUuid& id) { activated = id; });
  QObject::connect(view.get(), &DockView::reorderRequested, [&](qsizetype from, qsizetype to) {
    moved = {from, to};
    DockRow row = view->row();
    row.widgets = Reordering::reordered(row.widgets, from, to);
    view->setRow(row);
  });

  // Less than the slop is a click.
  const QPointF first = view->itemRect(0).center();
  mouse(*view, QEvent::MouseButtonPress, first);
  mouse(*view, QEvent::MouseMove, first + QPointF(5, 0));
  mouse(*view, QEvent::MouseButtonRelease, first + QPointF(5, 0));
  EXPECT_EQ(started, 0);
  EXPECT_EQ(activated, view->row().widgets[0].id);

  const QUuid taken = view->row().widgets[0].id;
  activated = {};
  take(*view, 0);
  EXPECT_EQ(started, 1);
  // Letting its middle pass that of another tile's new place moves it there.
  mouse(*view, QEvent::MouseMove, view->itemRect(3).center());
  mouse(*view, QEvent::MouseButtonRelease, view->itemRect(3).center());
  ASSERT_TRUE(moved);
  EXPECT_EQ(moved->first, 0);
  EXPECT_EQ(moved->second, 3);
  EXPECT_EQ(view->row().widgets[3].id, taken);
  EXPECT_TRUE(activated.isNull()) << "a drag is no click";
  EXPECT_TRUE(view->rest()) << "frames run only while something moves";
}

TEST(Dragging, LetsATileFollowThePointerWhereverItGoes) {
  const auto view = makeView(starterRow());
  view->show();
  QSignalSpy told(view.get(), &DockView::carriedChanged);
  const QRectF glass = view->glassRect();
  take(*view, 1);
  mouse(*view, QEvent::MouseMove, {glass.center().x(), glass.top() + 1});
  EXPECT_FALSE(view->carried()) << "the row has it";
  EXPECT_EQ(told.count(), 0);
  QPointF before(glass.center().x(), glass.top());
  mouse(*view, QEvent::MouseMove, before - QPointF(0, 1));
  ASSERT_TRUE(view->carried());
  QPoint place = view->carried()->place.topLeft() + QPoint(0, 1);
  const QSize size = view->carried()->place.size();
  EXPECT_EQ(size, view->itemRect(1).size().toSize());
  EXPECT_EQ(view->carried()->picture.deviceIndependentSize().toSize(), size.grownBy(view->carried()->margins));
  const QImage picture = view->carried()->picture.toImage();
  const QMargins margins = view->carried()->margins;
  const auto alphaAt = [&](int y) { return qAlpha(picture.pixel(picture.width() / 2, y)); };
  EXPECT_EQ(alphaAt(margins.top() + size.height() - 2), 255) << "the tile, where its place is";
  EXPECT_GT(alphaAt(margins.top() + size.height() + 2), 0) << "and its shadow";
  EXPECT_LT(alphaAt(margins.top() + size.height() + 2), 255);
  // Above, far above, and beyond a corner of the glass.
  for (const QPointF& at : {QPointF(glass.center().x(), glass.top() - 40), QPointF(glass.center().x(), -500),
                            QPointF(glass.right() + 300, -500)}) {
    mouse(*view, QEvent::MouseMove, at);
    ASSERT_TRUE(view->carried());
    const QRect now = view->carried()->place;
    EXPECT_EQ(now.top() - place.y(), qRound(at.y() - before.y())) << at.y();
    EXPECT_TRUE(now.adjusted(-1, -12, 1, 12).contains(at.toPoint())) << "under the pointer at " << at.x();
    place = now.topLeft();
    before = at;
  }
  press(*view, Qt::Key_Escape);
  EXPECT_FALSE(view->carried());
  EXPECT_GE(told.count(), 5) << "whoever shows it takes it away";
}

TEST(Dragging, TakesATileOffTheDockFarFromItAndSaysSo) {
  const auto view = makeView(starterRow());
  view->move(0, 400);
  view->show();
  const QUuid held = view->row().widgets[1].id;
  QList<QUuid> removed;
  int moved = 0;
  QObject::connect(view.get(), &DockView::removalRequested, [&](const QUuid& widget) { removed << widget; });
  QObject::connect(view.get(), &DockView::reorderRequested, [&] { ++moved; });
  const QPointF onGlass = view->itemRect(4).center();
  const QPointF near(onGlass.x(), view->glassRect().top() - 59);
  const QPointF far(onGlass.x(), view->glassRect().top() - 61);

  take(*view, 1);
  mouse(*view, QEvent::MouseMove, near);
  EXPECT_FALSE(view->tip());
  mouse(*view, QEvent::MouseMove, far);
  ASSERT_TRUE(view->tip());
  EXPECT_EQ(view->tip()->text, u"Remove"_s);
  EXPECT_EQ(view->tip()->beside.topLeft(), far.toPoint()) << "at the pointer";
  // Back near the row it has a place again.
  mouse(*view, QEvent::MouseMove, near);
  EXPECT_FALSE(view->tip());
  mouse(*view, QEvent::MouseMove, far);
  press(*view, Qt::Key_Escape);
  EXPECT_FALSE(view->tip());
  mouse(*view, QEvent::MouseButtonRelease, far);
  EXPECT_TRUE(removed.isEmpty()) << "taken back by Escape";

  // Over another window of ours it stays.
  QWidget other;
  other.setGeometry(QRect(view->mapToGlobal(far.toPoint()) - QPoint(40, 40), QSize(80, 80)));
  other.show();
  QCoreApplication::processEvents();
  ASSERT_EQ(QApplication::topLevelAt(view->mapToGlobal(far.toPoint())), &other);
  take(*view, 1);
  mouse(*view, QEvent::MouseMove, far);
  EXPECT_FALSE(view->tip());
  mouse(*view, QEvent::MouseButtonRelease, far);
  EXPECT_TRUE(removed.isEmpty());
  other.hide();

  take(*view, 1);
  mouse(*view, QEvent::MouseMove, far);
  mouse(*view, QEvent::MouseButtonRelease, far);
  EXPECT_EQ(removed, QList<QUuid>{held});
  EXPECT_EQ(moved, 0);
  EXPECT_FALSE(view->tip());
  // Whoever refuses keeps it where it was.
  EXPECT_TRUE(view->rest());
  EXPECT_EQ(paintedBy(*view), paintedBy(*makeView(view->row())));
}

TEST(Dragging, TheWayToRemovalIsAsLongAtEveryScale) {
  for (const double scale : {0.5, 1.0, 1.6}) {
    SCOPED_TRACE(scale);
    DockRow row = starterRow();
    row.scale = scale;
    const auto view = makeView(row);
    view->move(0, 400);
    view->show();
    const QPointF edge(view->glassRect().center().x(), view->glassRect().top());
    take(*view, 1);
    mouse(*view, QEvent::MouseMove, edge - QPointF(0, 59));
    EXPECT_FALSE(view->tip());
    mouse(*view, QEvent::MouseMove, edge - QPointF(0, 61));
    EXPECT_TRUE(view->tip());
    press(*view, Qt::Key_Escape);
  }
}

TEST(Dragging, IsTakenBackByEscape) {
  const auto view = makeView(starterRow());
  view->show();
  int moved = 0;
  QObject::connect(view.get(), &DockView::reorderRequested, [&] { ++moved; });
  const QPointF target = view->itemRect(4).center();

  take(*view, 1);
  mouse(*view, QEvent::MouseMove, target);
  press(*view, Qt::Key_Escape);
  mouse(*view, QEvent::MouseButtonRelease, target);
  EXPECT_EQ(moved, 0);

  // Another row without it ends the drag; the rest of the gesture means nothing.
  take(*view, 1);
  DockRow row = view->row();
  row.widgets.removeAt(1);
  view->setRow(row);
  mouse(*view, QEvent::MouseMove, target);
  mouse(*view, QEvent::MouseButtonRelease, target);
  EXPECT_EQ(moved, 0);
}

TEST(Dragging, LeavesTheTileWhereNobodyTellsThatItWasLetGo) {
  const auto pointer = [](QEvent::Type type, Qt::MouseButton button) {
    return [type, button](DockView& view, QPointF at) { mouse(view, type, at, button); };
  };
  const struct {
    const char* name;
    std::function<void(DockView& view, QPointF at)> tell;
    bool goesOn;
  } rows[] = {{"a move without a button", pointer(QEvent::MouseMove, Qt::NoButton), false},
              {"the button goes down again", pointer(QEvent::MouseButtonPress, Qt::LeftButton), false},
              {"another one goes down alone", pointer(QEvent::MouseButtonPress, Qt::RightButton), false},
              {"the window system takes the pointer",
               [](DockView& view, QPointF) {
                 QEvent taken(QEvent::UngrabMouse);
                 QCoreApplication::sendEvent(&view, &taken);
               },
               false},
              {"another one beside it",
               [](DockView& view, QPointF at) {
                 QMouseEvent event(QEvent::MouseButtonPress, at, view.mapToGlobal(at), Qt::RightButton,
                                   Qt::LeftButton | Qt::RightButton, Qt::NoModifier);
                 QCoreApplication::sendEvent(&view, &event);
               },
               true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const auto view = makeView(starterRow());
    view->move(0, 400);
    view->show();
    const QSignalSpy removed(view.get(), &DockView::removalRequested);
    const QSignalSpy moved(view.get(), &DockView::reorderRequested);
    const QPointF far(view->itemRect(4).center().x(), view->glassRect().top() - 200);
    take(*view, 1);
    mouse(*view, QEvent::MouseMove, far);
    row.tell(*view, far);
    EXPECT_EQ(view->carried().has_value(), row.goesOn);
    EXPECT_EQ(view->isHeld(), row.goesOn);
    mouse(*view, QEvent::MouseButtonRelease, far);
    EXPECT_EQ(removed.count(), row.goesOn ? 1 : 0);
    EXPECT_EQ(moved.count(), 0);
  }
}

TEST(Dragging, ATileThatIsLetGoOverAnotherDockGoesThere) {
  const struct {
    double above;
    bool isOther;
    bool crosses, removes, moves;
  } rows[] = {{100, true, true, false, false},
              {100, false, false, true, false},
              {20, true, true, false, false},
              {20, false, false, false, true},
              {-10, true, false, false, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.above);
    SCOPED_TRACE(row.isOther);
    const auto view = makeView(starterRow());
    view->move(0, 400);
    view->show();
    view->setOtherDocks([&row](QPointF) { return row.isOther; });
    const QSignalSpy crossed(view.get(), &DockView::leftForOtherDock);
    const QSignalSpy removed(view.get(), &DockView::removalRequested);
    const QSignalSpy moved(view.get(), &DockView::reorderRequested);
    const QUuid held = view->row().widgets[1].id;
    const QPointF at(view->itemRect(4).center().x(), view->glassRect().top() - row.above);
    take(*view, 1);
    mouse(*view, QEvent::MouseMove, at);
    EXPECT_EQ(view->tip().has_value(), row.removes) << "only then it says so";
    mouse(*view, QEvent::MouseButtonRelease, at);
    EXPECT_EQ(crossed.count(), row.crosses);
    EXPECT_EQ(removed.count(), row.removes);
    EXPECT_EQ(moved.count(), row.moves);
    if (row.crosses && crossed.count() == 1) {
      EXPECT_EQ(crossed[0][0].toUuid(), held);
      EXPECT_EQ(crossed[0][1].toPointF(), at);
    }
    EXPECT_TRUE(view->rest());
  }
}

TEST(Dragging, IsNotCutToTheTilesWhereNothingComposites) {
  DockRow row = starterRow();
  row.style = DockStyle::Transparent;
  row.composited = false;
  const auto view = makeView(row);
  view->show();
  QRegion reported = view->outlineRegion();
  QObject::connect(view.get(), &DockView::shapeChanged, [&] { reported = view->outlineRegion(); });
  const QRectF first = view->itemRect(0);
  const QPoint gap = QPointF((first.right() + view->itemRect(1).left()) / 2, first.center().y()).toPoint();
  EXPECT_FALSE(reported.contains(gap));
  take(*view, 0);
  EXPECT_TRUE(reported.contains(gap)) << "a tile on its way";
  mouse(*view, QEvent::MouseButtonRelease, first.center());
  EXPECT_TRUE(view->rest());
  EXPECT_FALSE(reported.contains(gap));

  QMimeData widgetText;
  widgetText.setText(WidgetTransfer::encode(widget(u"cpu"_s)));
  QDragEnterEvent enter(gap, kAll, &widgetText, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(view.get(), &enter);
  EXPECT_TRUE(reported.contains(gap)) << "the mark of where it goes";
  QDragLeaveEvent leave;
  QCoreApplication::sendEvent(view.get(), &leave);
  EXPECT_FALSE(reported.contains(gap));
}

TEST(Dragging, RunningApplicationsAndEmptyRoomAreNotTaken) {
  DockRow row = starterRow();
  row.runningApps = runningApps();
  const auto view = makeView(row);
  int started = 0;
  QObject::connect(view.get(), &DockView::dragStarted, [&] { ++started; });
  take(*view, 8);
  mouse(*view, QEvent::MouseButtonRelease, view->itemRect(8).center());
  EXPECT_EQ(started, 0);
  DockRow separated;
  separated.widgets = {widget(u"cpu"_s), widget(u"dockSeparator"_s), widget(u"ram"_s)};
  const auto other = makeView(separated);
  QObject::connect(other.get(), &DockView::dragStarted, [&] { ++started; });
  take(*other, 1);
  EXPECT_EQ(started, 1) << "even a line can be moved";
}

TEST(Dropping, GoesWhereTheRulesSay) {
  const QString here = QCoreApplication::applicationDirPath();
  DockRow row;
  row.widgets = {widget(u"digitalClock"_s),
                 widgetWith(u"folderLauncher"_s, here),
                 widgetWith(u"folderLauncher"_s, u"/proc"_s),
                 widget(u"trash"_s),
                 widgetWith(u"appLauncher"_s, u"/usr/share/applications/x.desktop"_s),
                 widget(u"fileShelf"_s),
                 widgetWith(u"folderLauncher"_s, here + u"/gone"_s),
                 widget(u"airdrop"_s)};
  row.runningApps = runningApps().mid(0, 1);
  const auto view = makeView(row);
  QMimeData files;
  files.setUrls({QUrl::fromLocalFile(QCoreApplication::applicationFilePath())});
  std::optional<DockFileDrop> dropped;
  QObject::connect(view.get(), &DockView::filesDropped, [&](const DockFileDrop& drop) { dropped = drop; });

  struct Case {
    const char* what;
    qsizetype item;
    Qt::KeyboardModifiers modifiers;
    Qt::DropActions possible;
    Qt::DropAction action;
    bool onTile;
  };
  const std::vector<Case> cases = {
      {"a folder beside the file", 1, Qt::NoModifier, kAll, Qt::MoveAction, true},
      {"the same, copied", 1, Qt::ControlModifier, kAll, Qt::CopyAction, true},
      {"the same, from one who only copies", 1, Qt::NoModifier, Qt::CopyAction, Qt::CopyAction, true},
      {"a folder of another file system", 2, Qt::NoModifier, kAll, Qt::CopyAction, true},
      {"the same, moved", 2, Qt::ShiftModifier, kAll, Qt::MoveAction, true},
      {"the trash", 3, Qt::NoModifier, kAll, Qt::MoveAction, true},
      {"an application", 4, Qt::ShiftModifier, kAll, Qt::CopyAction, true},
      {"the shelf", 5, Qt::NoModifier, kAll, Qt::LinkAction, true},
      {"a folder that is gone", 6, Qt::NoModifier, kAll, Qt::LinkAction, false},
      {"devices nearby, with nothing to send by", 7, Qt::NoModifier, kAll, Qt::LinkAction, false},
      {"a running application", 8, Qt::NoModifier, kAll, Qt::CopyAction, true},
      {"a clock, which takes nothing", 0, Qt::NoModifier, kAll, Qt::LinkAction, false},
      {"a clock, by one who only moves", 0, Qt::NoModifier, Qt::MoveAction, Qt::IgnoreAction, false}};
  for (const Case& expected : cases) {
    dropped.reset();
    const auto got =
        dropOn(*view, view->itemRect(expected.item).center(), files, expected.modifiers, expected.possible);
    EXPECT_EQ(got.taken ? got.proposed : Qt::IgnoreAction, expected.action) << expected.what;
    EXPECT_EQ(got.taken, expected.action != Qt::IgnoreAction) << expected.what;
    ASSERT_EQ(dropped.has_value(), got.taken) << expected.what;
    if (!dropped) continue;
    EXPECT_EQ(dropped->urls, files.urls());
    EXPECT_EQ(dropped->action, expected.action) << expected.what;
    const bool application = expected.item == 8;
    EXPECT_EQ(dropped->widget, expected.onTile && !application ? row.widgets[expected.item].id : QUuid());
    EXPECT_EQ(dropped->application, application ? 1U : 0U) << expected.what;
  }

  row.sendsNearby = true;
  view->setRow(row);
  dropOn(*view, view->itemRect(7).center(), files);
  EXPECT_EQ(dropped->widget, row.widgets[7].id);
  // A tile takes what is over or under it within the glass, from its left edge to what is not its right edge any more.
  const QRectF folder = view->itemRect(1);
  const double bottom = view->glassRect().bottom() - 1;
  for (const double x : {folder.left() - 1, folder.left(), folder.right() - 1, folder.right()}) {
    dropOn(*view, {x, bottom}, files);
    EXPECT_EQ(dropped->widget, x >= folder.left() && x < folder.right() ? row.widgets[1].id : QUuid()) << x;
  }

  // In the margins, and for what is no file, the dock is not there.
  EXPECT_FALSE(dropOn(*view, {2, 2}, files).taken);
  QMimeData text;
  text.setText(u"just a text"_s);
  EXPECT_FALSE(dropOn(*view, view->itemRect(1).center(), text).taken);
}

TEST(Dropping, AFileThatIsHeldOpensWhatIsBelowIt) {
  tarnwick::test::TestScheduler time;
  DockRow row;
  const QString here = QCoreApplication::applicationDirPath();
  row.widgets = {widget(u"digitalClock"_s),
                 widgetWith(u"folderLauncher"_s, here),
                 widgetWith(u"folderLauncher"_s, here + u"/gone"_s),
                 widgetWith(u"appLauncher"_s, u"/a.desktop"_s),
                 widgetWith(u"appLauncher"_s, u"/b.desktop"_s),
                 widget(u"trash"_s)};
  row.runningApps = runningApps().mid(0, 2);  // The first is in front.
  const auto view = makeView(row, time);
  TileSources sources = morning();
  sources.applications.insert(u"/a.desktop"_s, {u"A"_s, {}, 42, {.running = true, .front = true}});
  sources.applications.insert(u"/b.desktop"_s, {u"B"_s, {}, 43, {.running = true}});
  view->refresh(sources);
  QStringList opened;
  QObject::connect(view.get(), &DockView::tileActivated, [&](const QUuid& id) {
    opened << QString::number(std::ranges::find(row.widgets, id, &DockWidget::id) - row.widgets.begin());
  });
  QObject::connect(view.get(), &DockView::applicationActivated,
                   [&](quint64 application) { opened << u"app %1"_s.arg(application); });
  QMimeData files;
  files.setUrls({QUrl::fromLocalFile(QCoreApplication::applicationFilePath())});
  bool isIn = false;
  const auto hold = [&](QPointF at) {
    QDragEnterEvent enter(at.toPoint(), kAll, &files, Qt::LeftButton, Qt::NoModifier);
    QDragMoveEvent move(at.toPoint(), kAll, &files, Qt::LeftButton, Qt::NoModifier);
    if (!std::exchange(isIn, true)) QCoreApplication::sendEvent(view.get(), &enter);
    QCoreApplication::sendEvent(view.get(), &move);
  };
  const auto leave = [&] {
    QDragLeaveEvent event;
    QCoreApplication::sendEvent(view.get(), &event);
    isIn = false;
  };
  const QStringList expected = {{}, u"1"_s, {}, {}, u"4"_s, {}, {}, u"app 2"_s};
  ASSERT_EQ(view->itemCount(), expected.size());
  for (qsizetype item = 0; item < expected.size(); ++item) {
    opened.clear();
    const QPointF at = view->itemRect(item).center();
    hold(at);
    time.advance(0.4);
    hold(at + QPointF(2, 1));
    time.advance(0.39);
    EXPECT_TRUE(opened.isEmpty()) << item;
    time.advance(0.02);
    EXPECT_EQ(opened.join(u' ').toStdString(), expected[item].toStdString()) << item;
    time.advance(5);
    EXPECT_LE(opened.size(), 1) << "once";
    leave();
  }
  opened.clear();
  hold(view->itemRect(1).center());
  time.advance(0.7);
  hold(view->itemRect(0).center());
  time.advance(2);
  hold(view->itemRect(1).center());
  time.advance(0.7);
  leave();
  time.advance(2);
  EXPECT_TRUE(opened.isEmpty()) << "a file that goes on opens nothing";
  view->setPanelOpen(row.widgets[1].id);
  hold(view->itemRect(1).center());
  time.advance(2);
  EXPECT_TRUE(opened.isEmpty()) << "what is open stays so";
}

TEST(Dropping, AWidgetGoesBetweenTiles) {
  const auto view = makeView(starterRow());
  QMimeData data;
  data.setText(WidgetTransfer::encode(widget(u"cpu"_s)));
  QList<qsizetype> indices;
  QObject::connect(view.get(), &DockView::widgetTextDropped, [&](const QString& text, qsizetype index) {
    EXPECT_EQ(text, data.text());
    indices.append(index);
  });
  const QRectF third = view->itemRect(2);
  dropOn(*view, third.center() - QPointF(4, 0), data);
  dropOn(*view, third.center() + QPointF(4, 0), data);
  dropOn(*view, third.topRight() + QPointF(3, 30), data);
  dropOn(*view, QPointF(view->glassRect().right() - 3, third.center().y()), data);
  EXPECT_EQ(indices, (QList<qsizetype>{2, 3, 3, 7}));
}

TEST(Dropping, AWidgetThatIsHeldOpensAGapThatFollowsIt) {
  const auto view = makeView(starterRow());
  view->show();
  const DockWidget held = widget(u"cpu"_s);
  QMimeData data;
  data.setText(WidgetTransfer::encode(held));
  const QSize narrow = view->size();
  QList<bool> wide;
  QObject::connect(view.get(), &DockView::widthWanted, [&] {
    const double wanted = view->widthWithGuest(1);
    wide << (wanted > 0);
    const QMargins margins = view->margins();
    const int width = static_cast<int>(std::ceil(wanted)) + margins.left() + margins.right();
    view->resize(wanted > 0 ? QSize(width, narrow.height()) : narrow);
  });
  const auto between = [&](qsizetype item) { return view->itemRect(item + 1).left() - view->itemRect(item).right(); };
  const double usual = between(1);
  const double gap = Catalog::find(held.kind).width + usual * 2;
  const auto move = [&](QPointF at) {
    QDragMoveEvent event(at.toPoint(), kAll, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.get(), &event);
  };
  QDragEnterEvent enter(view->itemRect(1).center().toPoint() + QPoint(4, 0), kAll, &data, Qt::LeftButton,
                        Qt::NoModifier);
  QCoreApplication::sendEvent(view.get(), &enter);
  EXPECT_TRUE(view->isMoving()) << "the others make space";
  EXPECT_EQ(between(1), gap);
  EXPECT_EQ(between(2), usual);
  const QRectF glass = view->glassRect();
  move(view->itemRect(3).center() + QPointF(4, 0));
  EXPECT_EQ(between(1), usual);
  EXPECT_EQ(between(3), gap);
  EXPECT_EQ(view->glassRect(), glass);
  EXPECT_EQ(wide, QList<bool>{true}) << "it is wide enough";
  QDragLeaveEvent leave;
  QCoreApplication::sendEvent(view.get(), &leave);
  EXPECT_EQ(between(3), usual);
  QCoreApplication::processEvents();
  EXPECT_EQ(wide, (QList<bool>{true, false}));
  EXPECT_TRUE(view->rest());
  view->clearFocus();
  EXPECT_EQ(paintedBy(*view), paintedBy(*makeView(view->row())));
}

TEST(Dropping, InADockThatCannotGrowTheGapOpensInTheRowThatScrolls) {
  DockRow row;
  for (int i = 0; i < 9; ++i) row.widgets << widget(u"cpu"_s);
  row.widgets.prepend(widgetWith(u"appLauncher"_s, u"/a.desktop"_s));
  for (const auto& path : {u"/b.desktop"_s, u"/c.desktop"_s}) row.widgets << widgetWith(u"appLauncher"_s, path);
  const DockWidget held = widget(u"ram"_s);
  QMimeData data;
  data.setText(WidgetTransfer::encode(held));
  const double step = Catalog::find(held.kind).width + row.spacing;
  const struct {
    const char* name;
    double scroll;
    qsizetype before;            ///< The item that it is held before.
    double ends, first, second;  ///< How far these move: in steps, those of an end and those of the middle.
  } cases[] = {
      {"in the middle", 200, 5, 0, -0.5, 0.5},
      {"at the beginning", 0, 1, 0, 0, 1},
      {"at the end", 2000, 10, 0, -1, 0},
      {"within an end", 200, 11, -1, 0, 0},
  };
  for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    const int onwards = direction == Qt::LeftToRight ? 1 : -1;
    for (const auto& each : cases) {
      SCOPED_TRACE(each.name);
      const auto view = makeView(row, 620);
      view->setLayoutDirection(direction);
      view->show();
      wheel(*view, view->glassRect().center(), {0, static_cast<int>(each.scroll * -2)});
      const auto lefts = [&] {
        QList<double> found;
        for (qsizetype item = 0; item < view->itemCount(); ++item) found << view->itemRect(item).left();
        return found;
      };
      const QList<double> resting = lefts();
      const QRectF next = view->itemRect(each.before);
      const QPointF at(next.center().x() - onwards * 4, next.center().y());
      QDragEnterEvent enter(at.toPoint(), kAll, &data, Qt::LeftButton, Qt::NoModifier);
      QCoreApplication::sendEvent(view.get(), &enter);
      const QList<double> parted = lefts();
      for (qsizetype item = 0; item < parted.size(); ++item) {
        const bool isEnd = item == 0 || item >= 10;
        const double share =
            isEnd ? (item > 0 && item < each.before ? each.ends : 0) : (item < each.before ? each.first : each.second);
        EXPECT_NEAR(parted[item] - resting[item], share * step * onwards, 1) << item;
      }
      QDragLeaveEvent leave;
      QCoreApplication::sendEvent(view.get(), &leave);
      EXPECT_EQ(lefts(), resting);

      QObject::connect(view.get(), &DockView::widgetTextDropped, [&](const QString&, qsizetype index) {
        EXPECT_EQ(index, each.before);
        DockRow taken = row;
        taken.widgets.insert(index, held);
        view->setRow(taken);
      });
      dropOn(*view, at, data);
      QList<double> kept = lefts();
      const double added = kept.takeAt(each.before);
      // Within an end it parts the apps that stay there.
      if (each.ends == 0) {
        EXPECT_EQ(kept, parted) << "what made way stays there";
      }
      EXPECT_GT(added, view->glassRect().left());
      EXPECT_LT(added + step - row.spacing, view->glassRect().right());
      QCoreApplication::processEvents();
    }
  }
}

TEST(Wheel, CyclesWindowsOverApplicationsAndScrollsElsewhere) {
  DockRow row = starterRow();
  row.widgets[0] = widgetWith(u"appLauncher"_s, u"/a.desktop"_s);
  row.runningApps = runningApps();
  const auto view = makeView(row, 600);
  TileSources sources = morning();
  sources.applications.insert(u"/a.desktop"_s, {u"A"_s, u"#3F9E9A #226B70"_s, 42, {true, false, false, false, {}, {}}});
  view->refresh(sources);
  QList<std::pair<quint64, int>> cycled;
  QObject::connect(view.get(), &DockView::cycleWindowsRequested, [&](quint64 application, int direction) {
    cycled.append({application, direction});
  });
  const QPointF launcher = view->itemRect(0).center();
  const double start = view->itemRect(0).left();
  wheel(*view, launcher, {0, -120});
  wheel(*view, launcher, {0, 60});
  EXPECT_EQ(cycled.size(), 1) << "half a step is none";
  wheel(*view, launcher, {0, 60});
  EXPECT_EQ(cycled, (QList<std::pair<quint64, int>>{{42, 1}, {42, -1}}));
  EXPECT_EQ(view->itemRect(0).left(), start);

  cycled.clear();
  wheel(*view, launcher, {0, -120}, Qt::ShiftModifier);
  EXPECT_EQ(view->itemRect(0).left(), start - 60);
  wheel(*view, view->itemRect(1).center(), {0, 120});
  EXPECT_EQ(view->itemRect(0).left(), start);
  wheel(*view, launcher, {-40, 0});
  EXPECT_EQ(view->itemRect(0).left(), start - 20);
  EXPECT_TRUE(cycled.isEmpty());
}

TEST(Clicks, TheMiddleButtonAsksForANewWindowOfAnApplication) {
  DockRow row = starterRow();
  row.widgets[0] = widgetWith(u"appLauncher"_s, u"/a.desktop"_s);
  row.runningApps = runningApps();
  const auto view = makeView(row);
  QList<std::pair<QUuid, quint64>> asked;
  QObject::connect(view.get(), &DockView::newWindowRequested, [&](const QUuid& id, quint64 application) {
    asked.append({id, application});
  });
  EXPECT_EQ(view->apps().value(0), (DockAppItem{row.widgets[0].id, 0}));
  EXPECT_EQ(view->apps().value(1), (DockAppItem{QUuid(), 1}));
  EXPECT_EQ(view->apps().size(), 1 + row.runningApps.size());
  for (const qsizetype item : {0, 1, 7}) click(*view, view->itemRect(item).center(), Qt::MiddleButton);
  EXPECT_EQ(asked, (QList<std::pair<QUuid, quint64>>{{row.widgets[0].id, 0}, {QUuid(), 1}}));
}

TEST(Clicks, AButtonThatIsHeldShowsTheWindowsOfARunningApplication) {
  tarnwick::test::TestScheduler time;
  DockRow row = starterRow();
  row.runningApps = runningApps();
  const auto view = makeView(row, time);
  QList<quint64> shown, clicked;
  QObject::connect(view.get(), &DockView::windowsRequested, [&](quint64 application) { shown << application; });
  QObject::connect(view.get(), &DockView::applicationActivated, [&](quint64 id) { clicked << id; });
  const auto hold = [&](qsizetype item, double seconds, double away = 0) {
    const QPointF at = view->itemRect(item).center();
    mouse(*view, QEvent::MouseButtonPress, at);
    mouse(*view, QEvent::MouseMove, at + QPointF(0, away));
    time.advance(seconds);
    mouse(*view, QEvent::MouseButtonRelease, at);
  };
  const qsizetype application = row.widgets.size();
  hold(application, 0.3);
  EXPECT_EQ(clicked.size(), 1);
  time.advance(1);
  EXPECT_TRUE(shown.isEmpty()) << "a click is no hold, also later";
  hold(application, 0.5);
  EXPECT_EQ(shown, clicked);
  EXPECT_FALSE(view->isHeld());
  hold(1, 0.5);
  EXPECT_EQ(shown.size(), 1) << "a widget has no windows";
  hold(application, 0.5, 5);
  EXPECT_EQ(shown.size(), 2) << "a hand is never quite still";
  hold(application, 0.5, 7);
  EXPECT_EQ(shown.size(), 2) << "what moves is not held";
}

TEST(Keys, ReachEveryTileOpenMenusAndGiveTheKeyboardBack) {
  const auto view = makeView(starterRow(), 400);
  view->show();
  view->activateWindow();
  view->setFocus();
  QCoreApplication::processEvents();
  QUuid menu;
  QRect beside;
  int left = 0;
  QObject::connect(view.get(), &DockView::contextMenuRequested, [&](const QUuid& id, const QRect& place) {
    menu = id;
    beside = place;
  });
  QObject::connect(view.get(), &DockView::focusLeft, [&] { ++left; });
  press(*view, Qt::Key_End);
  EXPECT_EQ(view->focusedItem(), 6);
  EXPECT_LE(view->itemRect(6).right(), view->glassRect().right()) << "what has the focus is in sight";
  press(*view, Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_EQ(menu, view->row().widgets[6].id);
  // Beside the glass, over the tile.
  const QRect tile = view->itemRect(6).toAlignedRect();
  const QRect glass = view->glassRect().toAlignedRect();
  EXPECT_EQ(beside, QRect(tile.left(), glass.top(), tile.width(), glass.height()));
  QAccessibleInterface* bar = QAccessible::queryAccessibleInterface(view.get());
  bar->child(2)->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
  EXPECT_EQ(menu, view->row().widgets[2].id);

  // The dock's own menu, and what is in it.
  QAccessibleActionInterface* own = bar->actionInterface();
  ASSERT_TRUE(own);
  own->doAction(QAccessibleActionInterface::showMenuAction());
  EXPECT_EQ(menu, QUuid());
  EXPECT_EQ(beside, glass);
  QStringList run;
  view->setCommandProvider([&](const QUuid& widget, quint64 application, const QRect&) {
    const QString of = widget.isNull() && application == 0 ? u"dock"_s : u"tile"_s;
    return QList<ItemCommand>{{u"Quit"_s, [&run, of] { run << of; }}};
  });
  EXPECT_TRUE(own->actionNames().contains(u"Quit"_s));
  own->doAction(u"Quit"_s);
  bar->child(2)->actionInterface()->doAction(u"Quit"_s);
  EXPECT_TRUE(run.isEmpty()) << "the reader waits for its answer first";
  QCoreApplication::processEvents();
  EXPECT_EQ(run, (QStringList{u"dock"_s, u"tile"_s}));
  press(*view, Qt::Key_Home);
  EXPECT_EQ(view->focusedItem(), 0);
  press(*view, Qt::Key_Tab);
  EXPECT_EQ(left, 1);
  view->setFocus();
  press(*view, Qt::Key_Escape);
  EXPECT_EQ(left, 2);
  EXPECT_FALSE(view->hasFocus());
}

TEST(Profiles, TabsComeWithHoverOnlyWhereTheyAreWanted) {
  struct Case {
    qsizetype count;
    bool wanted;
    bool shown;
  };
  for (const Case& expected : {Case{3, true, true}, Case{1, true, false}, Case{3, false, false}}) {
    test::TestScheduler scheduler;
    DockRow row = profiles(expected.count);
    row.tabsOnHover = expected.wanted;
    const auto view = makeView(row, scheduler);
    const QPointF inside = view->itemRect(1).center();
    mouse(*view, QEvent::MouseMove, inside, Qt::NoButton);
    scheduler.advance(0.14);
    EXPECT_EQ(view->glassRect().height(), 84);
    scheduler.advance(0.02);
    EXPECT_EQ(view->glassRect().height(), expected.shown ? 110 : 84);
    if (!expected.shown) continue;
    int chosen = -1;
    QObject::connect(view.get(), &DockView::tabActivated, [&](qsizetype tab) { chosen = static_cast<int>(tab); });
    click(*view, QPointF(view->glassRect().center().x(), view->glassRect().top() + 18));
    EXPECT_EQ(chosen, 1);
    EXPECT_TRUE(view->inputRegion().contains(QPoint(int(inside.x()), int(view->glassRect().top()) + 2)));
    // Where the pointer leaves and comes back, they stay.
    mouse(*view, QEvent::MouseMove, {2, 2}, Qt::NoButton);
    scheduler.advance(0.1);
    mouse(*view, QEvent::MouseMove, inside, Qt::NoButton);
    scheduler.advance(1);
    EXPECT_EQ(view->glassRect().height(), 110);
    mouse(*view, QEvent::MouseMove, {2, 2}, Qt::NoButton);
    scheduler.advance(0.2);
    EXPECT_EQ(view->glassRect().height(), 84);
    EXPECT_EQ(scheduler.waiting(), 0);
  }
}

TEST(Profiles, TabsStandStillUnderWhatStandsOnTheGlassAndTurnByTheWheel) {
  DockRow row = starterRow();
  row.tabs = {u"Everyday"_s, u"Work"_s, u"Home"_s};
  row.activeTab = 1;
  row.reduceMotion = true;
  tarnwick::test::TestScheduler time;
  const auto view = makeView(row, time);
  const QPointF onTile = view->itemRect(1).center();
  view->setPanelOpen(row.widgets[1].id);
  mouse(*view, QEvent::MouseMove, onTile, Qt::NoButton);
  time.advance(1);
  EXPECT_EQ(view->glassRect().height(), 84);
  view->setPanelOpen({});
  time.advance(1);
  EXPECT_EQ(view->glassRect().height(), 110);
  QMenu menu;
  view->setOpenMenu(&menu);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(view.get(), &leave);
  time.advance(1);
  EXPECT_EQ(view->glassRect().height(), 110);

  QList<qsizetype> chosen;
  QObject::connect(view.get(), &DockView::tabActivated, [&](qsizetype tab) { chosen << tab; });
  const QPointF onTabs(view->glassRect().left() + 20, view->glassRect().top() + 18);
  wheel(*view, onTabs, {0, -60});
  EXPECT_TRUE(chosen.isEmpty());
  wheel(*view, onTabs, {0, -60});
  wheel(*view, onTabs, {0, 120});
  EXPECT_EQ(chosen, (QList<qsizetype>{2, 0}));

  view->setOpenMenu(nullptr);
  time.advance(1);
  EXPECT_EQ(view->glassRect().height(), 84);
}

TEST(Profiles, ADragAcrossEmptyRoomSwitches) {
  struct Case {
    const char* what;
    double distance;
    quint64 milliseconds;
    int tab;  ///< -1 for none.
  };
  const std::vector<Case> cases = {{"far to the left", -60, 2000, 1},        {"far to the right", 61, 2000, 2},
                                   {"not far enough", -59, 2000, -1},        {"a flick", 24, 50, 2},
                                   {"a flick that is too slow", 24, 80, -1}, {"hardly moved", -4, 5, -1}};
  for (const Case& expected : cases) {
    const auto view = makeView(profiles(3));
    int tab = -1;
    QObject::connect(view.get(), &DockView::tabActivated, [&](qsizetype chosen) { tab = static_cast<int>(chosen); });
    const auto swipe = [&] {
      tab = -1;
      const QPointF at(view->glassRect().center().x(), view->glassRect().bottom() - 4);
      mouse(*view, QEvent::MouseButtonPress, at, Qt::LeftButton, 1000);
      for (int step = 1; step <= 10; ++step)
        mouse(*view, QEvent::MouseMove, at + QPointF(expected.distance * step / 10, 0), Qt::LeftButton,
              1000 + expected.milliseconds * static_cast<quint64>(step) / 10);
      mouse(*view, QEvent::MouseButtonRelease, at + QPointF(expected.distance, 0), Qt::LeftButton,
            1000 + expected.milliseconds);
      return tab;
    };
    EXPECT_EQ(swipe(), expected.tab) << expected.what;
    view->setSwitchGuard([] { return true; });
    EXPECT_EQ(swipe(), -1) << "while a panel is open";
    view->setSwitchGuard({});
    DockRow row = view->row();
    row.swipes = false;
    view->setRow(row);
    EXPECT_EQ(swipe(), -1) << "where it is switched off";
    row.swipes = row.floats = true;
    view->setRow(row);
    QPoint moved;
    int finished = 0;
    QObject::connect(view.get(), &DockView::moveRequested, [&](const QPoint& delta) { moved += delta; });
    QObject::connect(view.get(), &DockView::moveFinished, [&] { ++finished; });
    EXPECT_EQ(swipe(), -1) << "a floating dock is moved instead";
    const bool moves = std::abs(expected.distance) >= 6;
    EXPECT_EQ(moved.x(), moves ? expected.distance : 0);
    EXPECT_EQ(finished, moves ? 1 : 0);
  }
}

TEST(Floating, AMoveEndsWithTheDockThatIsMoved) {
  DockRow row = starterRow();
  row.floats = true;
  const auto view = makeView(row);
  view->show();
  QStringList reported;
  QObject::connect(view.get(), &DockView::moveFinished, [&] { reported << u"finished"_s; });
  QObject::connect(view.get(), &DockView::released, [&] { reported << (view->isHeld() ? u"held"_s : u"left"_s); });
  const QPointF between = view->itemRect(0).topRight() + QPointF(3, 30);
  mouse(*view, QEvent::MouseButtonPress, between);
  mouse(*view, QEvent::MouseMove, between + QPointF(20, 0));
  view->hide();
  EXPECT_EQ(reported, (QStringList{u"finished"_s, u"left"_s}));
}

TEST(Profiles, TheRowSlidesAndComesToRest) {
  const auto view = makeView(profiles(3));
  view->show();
  QCoreApplication::processEvents();
  view->clearFocus();
  DockRow next = view->row();
  next.widgets = {widget(u"digitalClock"_s), widget(u"cpu"_s)};
  next.activeTab = 1;
  view->setRow(next);
  EXPECT_TRUE(view->isMoving());
  EXPECT_TRUE(view->rest());
  const auto still = makeView(next, static_cast<int>(view->rect().width()) - 48);
  EXPECT_EQ(paintedBy(*view), paintedBy(*still)) << "nothing is left of the old row";
}

TEST(Starting, PulsesForAWhileAndStopsByItself) {
  DockRow row = starterRow();
  row.runningApps = runningApps();
  const auto view = makeView(row);
  view->show();
  EXPECT_FALSE(view->isMoving());
  row.runningApps[2].launching = true;
  view->setRow(row);
  EXPECT_TRUE(view->isMoving());
  row.runningApps[2].launching = false;
  view->setRow(row);
  EXPECT_FALSE(view->isMoving());
  row.reduceMotion = true;
  view->setRow(row);
  const QImage quiet = paintedBy(*view);
  row.runningApps[2].launching = true;
  view->setRow(row);
  EXPECT_FALSE(view->isMoving()) << "not where motion is reduced";
  EXPECT_NE(paintedBy(*view), quiet) << "which shows it all the same";
  row.reduceMotion = false;
  view->setRow(row);
  view->beat(9.8);
  EXPECT_TRUE(view->isMoving());
  view->beat(0.4);
  EXPECT_FALSE(view->isMoving());
  view->refresh(morning());
  EXPECT_FALSE(view->isMoving()) << "ten seconds are long enough";
  // One that starts after another pulses as long as that did, and ends with its window.
  row.runningApps[3].launching = true;
  view->setRow(row);
  row.runningApps[2].launching = false;
  view->setRow(row);
  view->beat(9.8);
  EXPECT_TRUE(view->isMoving());
  row.runningApps[3].launching = false;
  view->setRow(row);
  EXPECT_FALSE(view->isMoving());
}

TEST(Loading, MovesWhileItIsSeenUnlessMotionIsReduced) {
  DockRow row = starterRow();
  DockWidget connected = widget(u"analyticsPlausible"_s);
  connected.options.insert(u"endpoint"_s, u"https://numbers.example/"_s);
  row.widgets = {connected};
  const auto view = makeView(row);
  view->show();
  const auto load = [&](bool isLoading) {
    TileSources sources = morning();
    RemoteReading reading;
    reading.value.value = u"3,184"_s;
    reading.isLoading = isLoading;
    sources.remote.set(connected.id, reading);
    view->refresh(sources);
  };
  load(true);
  EXPECT_TRUE(view->isMoving());
  const QImage before = paintedBy(*view);
  view->beat(0.5);
  EXPECT_NE(paintedBy(*view), before);
  view->hide();
  EXPECT_FALSE(view->isMoving()) << "nobody sees it";
  view->show();
  EXPECT_TRUE(view->isMoving());
  row.reduceMotion = true;
  view->setRow(row);
  EXPECT_FALSE(view->isMoving());
  row.reduceMotion = false;
  view->setRow(row);
  EXPECT_TRUE(view->isMoving());
  load(false);
  EXPECT_FALSE(view->isMoving());
}

TEST(UndoBubbles, LiveForEightSecondsOfNobodyPointing) {
  test::TestScheduler scheduler;
  UndoBubble bubble(scheduler, u"CPU was removed."_s);
  bubble.resize(bubble.sizeHint());
  int undone = 0;
  int gone = 0;
  QObject::connect(&bubble, &MessageBubble::actionRequested, [&] { ++undone; });
  QObject::connect(&bubble, &MessageBubble::dismissed, [&] { ++gone; });
  const QRect body = bubble.outlineRegion().boundingRect();
  click(bubble, QPointF(body.right() - 22 - 40, body.center().y()));
  EXPECT_EQ(undone, 1);
  press(bubble, Qt::Key_Return);
  EXPECT_EQ(undone, 2);
  scheduler.advance(7);
  QEnterEvent enter(body.center(), body.center(), body.center());
  QCoreApplication::sendEvent(&bubble, &enter);
  scheduler.advance(20);
  EXPECT_EQ(gone, 0);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&bubble, &leave);
  scheduler.advance(7.9);
  EXPECT_EQ(gone, 0);
  scheduler.advance(0.2);
  EXPECT_EQ(gone, 1);
}

}  // namespace tarnwick::testing
