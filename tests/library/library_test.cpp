#include <gtest/gtest.h>

#include <QAccessible>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

#include "library/LibraryFixture.h"
#include "support/AccessibleWalk.h"
#include "views/library/AddedNote.h"
#include "views/library/CardLayout.h"
#include "views/library/LibraryView.h"
#include "views/window/DropDown.h"
#include "views/window/SideList.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

QList<LibraryShelf> shelves() {
  return LibraryShelves::all({{u"Letters"_s, u"/usr/share/applications/writer.desktop"_s, {}}},
                             {.applications = u"/usr/share/applications"_s,
                              .downloads = u"/home/robin/Downloads"_s,
                              .documents = {},
                              .desktop = {},
                              .pictures = {},
                              .movies = u"/home/robin/Videos"_s,
                              .music = {},
                              .home = QDir::homePath()});
}

TEST(LibraryShelvesTest, HoldEveryKindInTheOrderOfTheCatalog) {
  QStringList names{Catalog::categories().first()};
  QSet<QString> kinds;
  for (const LibraryShelf& shelf : shelves()) {
    names << shelf.name;
    for (const LibraryItem& item : shelf.items) kinds << item.kind;
  }
  EXPECT_EQ(names, Catalog::categories());
  for (const WidgetDefinition& definition : Catalog::items())
    EXPECT_TRUE(kinds.contains(definition.id)) << definition.id.toStdString();
}

TEST(LibraryShelvesTest, AreSearchedByNameGroupAndKind) {
  struct Case {
    QString section, search;
    QStringList found;
  };
  const auto all = Catalog::categories().first();
  for (const auto& [section, search, found] : QList<Case>{
           {all, u"POMO"_s, {u"Pomodoro"_s}},
           {all, u"worldClockCity"_s, {u"World Time"_s}},
           {all, u"  contacts phone "_s, {u"Quick Contacts"_s}},
           {all, u"clock analog dark"_s, {Catalog::find(u"analogClassicDark"_s).name}},
           {all, u"létters"_s, {u"Letters"_s}},
           {u"Clocks"_s, u"letters"_s, {}},
           {u"Photos"_s, {}, {u"Recent Photo"_s, u"Wallpaper"_s}},
           {u"Clocks"_s,
            u"timezone"_s,
            {Catalog::find(u"worldClockList"_s).name, Catalog::find(u"worldClockCity"_s).name}},
           {all, u"kitchen"_s, {u"Timer"_s}},
           {all, u"disk"_s, {u"Storage"_s}},
           {all, u"uptime"_s, {u"CPU"_s}},
           {all, u"brightness"_s, {u"Quick Toggles"_s}},
           {all, u"desktop picture"_s, {u"Wallpaper"_s}},
           {u"Media"_s,
            u"spotify"_s,
            {u"Now Playing"_s, u"Now Playing Mini"_s, u"Now Playing Bar"_s, u"YouTube Video"_s}},
           {all, u"memory"_s, {u"RAM"_s, u"RAM Chart"_s, u"CPU + RAM Chart"_s}},
           {all, u"movies"_s, {u"Videos"_s}},
           {all, u"folders home"_s, {u"Home"_s}},
           {all, u"no such thing"_s, {}},
       }) {
    QStringList titles;
    for (const LibraryShelf& shelf : LibraryShelves::fitting(shelves(), section, search))
      for (const LibraryItem& item : shelf.items) titles << item.title();
    EXPECT_EQ(titles, found) << search.toStdString();
  }
}

TEST(CardLayoutTest, CardsKeepApartWithinAnyWidthAndArrowsReachThemAll) {
  const QList<QList<int>> widths{{150, 70, 64, 280, 150, 90, 400}, {180, 70}, {120, 120, 120, 120, 120, 120, 120}};
  for (const int width : {300, 520, 1000, 2400}) {
    const CardLayout layout = CardLayout::make(widths, width);
    ASSERT_EQ(layout.cards.size(), 16);
    for (int i = 0; i < layout.cards.size(); ++i) {
      const QRect& card = layout.cards[i];
      EXPECT_GE(card.left(), CardLayout::kMargin);
      EXPECT_LT(card.right(), width - CardLayout::kMargin + 1) << width;
      EXPECT_EQ(layout.cardAt(card.center()), i);
      for (int j = 0; j < i; ++j) EXPECT_FALSE(card.intersects(layout.cards[j])) << i << " and " << j;
    }
    EXPECT_LT(layout.cards.last().bottom(), layout.height);
    int at = 0;
    for (int next = layout.beside(at, 1); next != at; next = layout.beside(at, 1)) {
      EXPECT_GT(layout.cards[next].top(), layout.cards[at].top());
      at = next;
    }
    EXPECT_EQ(layout.cards[at].top(), layout.cards.last().top()) << "down leads to the last row";
  }
}

class LibraryWindowTest : public testing::Test {
 protected:
  LibraryFixture fixture_;
  std::unique_ptr<LibraryWindow> window_ = fixture_.library();
  LibraryView& view_ = *window_->findChild<LibraryView*>();
  QLineEdit& field_ = *window_->findChild<QLineEdit*>();

  QModelIndex indexOf(const QString& title) const {
    for (int row = 0; row < view_.model()->rowCount(); ++row)
      if (view_.model()->index(row, 0).data().toString() == title) return view_.model()->index(row, 0);
    return {};
  }
  QPushButton* addButton() const {
    for (auto* button : window_->findChildren<QPushButton*>())
      if (button->isVisible() && button->accessibleName().startsWith("Add "_L1)) return button;
    return nullptr;
  }
  QString note() const {
    const auto* note = window_->findChild<AddedNote*>();
    return note->isVisible() ? note->accessibleName() : QString();
  }
  QStringList kinds(int profile) {
    QStringList kinds;
    for (const DockWidget& widget : fixture_.profile(profile).widgets) kinds << widget.kind;
    return kinds;
  }
};

TEST_F(LibraryWindowTest, AddsByKeyboardAloneAndTakesItBack) {
  const QStringList before = kinds(0);
  QTest::keyClick(&field_, Qt::Key_Return);
  EXPECT_EQ(kinds(0), before) << "nothing is chosen before something was looked for";
  QTest::keyClicks(&field_, u"pomodoro"_s);
  EXPECT_EQ(view_.model()->rowCount(), 1);
  QTest::keyClick(&field_, Qt::Key_Return);
  EXPECT_EQ(kinds(0), before + QStringList{u"pomodoro"_s});
  EXPECT_EQ(note(), u"“Pomodoro” was added to “Everyday”."_s);
  EXPECT_TRUE(indexOf(u"Pomodoro"_s).data(Qt::AccessibleDescriptionRole).toString().endsWith(u"On dock"_s));
  EXPECT_EQ(fixture_.undo().latest()->sentence, QString()) << "the window itself has said it";
  QTest::keyClicks(&field_, u"x"_s);
  for (const char* newest : {"x", "the widget"}) {
    EXPECT_EQ(kinds(0).size(), before.size() + 1) << newest;
    QTest::keyClick(&field_, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(field_.text(), u"pomodoro"_s) << newest;
  }
  EXPECT_EQ(kinds(0), before);
  EXPECT_EQ(note(), QString()) << "it tells of nothing that is no more";
  EXPECT_EQ(indexOf(u"Pomodoro"_s).data(Qt::AccessibleDescriptionRole).toString(), u"Clocks"_s);
}

TEST_F(LibraryWindowTest, EscapeEndsASearchAndThenClosesTheWindowWhereverTheKeyboardIs) {
  for (QWidget* place : QList<QWidget*>{&view_, window_->findChild<SideList*>(), &field_}) {
    SCOPED_TRACE(place->metaObject()->className());
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->show();
    field_.setText(u"clock"_s);
    place->setFocus();
    QTest::keyClick(place, Qt::Key_Escape);
    EXPECT_EQ(field_.text(), QString());
    EXPECT_TRUE(window_->isVisible());
    QTest::keyClick(place, Qt::Key_Escape);
    EXPECT_FALSE(window_->isVisible());
  }
}

TEST_F(LibraryWindowTest, OneMessageTellsOfACardThatIsDropped) {
  const auto mouse = [this](QEvent::Type type, QPoint at) {
    const bool moves = type == QEvent::MouseMove;
    QMouseEvent event(type, at, view_.viewport()->mapToGlobal(at), moves ? Qt::NoButton : Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view_.viewport(), &event);
  };
  QStringList bubbles;
  QObject::connect(&fixture_.undo(), &UndoStack::pushed,
                   [&](quint64, const QString& sentence) { bubbles << sentence; });
  const auto drop = [&](const QUuid& id) {
    const QList<DockWidget> added = fixture_.store().addWidgets({{id, u"pomodoro"_s, {}, {}}}, fixture_.profile(0).id);
    ASSERT_EQ(added.size(), 1);
    fixture_.undo().push(u"It was added."_s, [] {});
  };
  window_->show();
  window_->activateWindow();
  QCoreApplication::processEvents();
  drop(QUuid::createUuid());
  EXPECT_EQ(bubbles.takeLast(), u"It was added."_s) << "no card of this window";
  EXPECT_EQ(note(), QString());

  view_.scrollTo(indexOf(u"Pomodoro"_s));
  const QPoint seen = view_.visualRect(indexOf(u"Pomodoro"_s)).center();
  mouse(QEvent::MouseButtonPress, seen);
  mouse(QEvent::MouseMove, seen + QPoint(40, 0));
  mouse(QEvent::MouseMove, seen + QPoint(80, 0));
  ASSERT_FALSE(view_.carried().isNull());
  drop(view_.carried());
  EXPECT_EQ(bubbles.takeLast(), QString());
  EXPECT_EQ(note(), u"It was added."_s);
  fixture_.undo().undo();
  EXPECT_EQ(note(), QString());
}

TEST_F(LibraryWindowTest, AScreenReaderAddsCardsAndTurnsToSections) {
  EXPECT_EQ(outOfReach(*window_), "");
  const auto press = [](QWidget* list, const QString& name) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(list);
    for (int i = 0; i < accessible->childCount(); ++i) {
      if (accessible->child(i)->text(QAccessible::Name) != name) continue;
      accessible->child(i)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
      QCoreApplication::processEvents();
      return true;
    }
    return false;
  };
  auto* sections = window_->findChild<SideList*>();
  const int all = view_.model()->rowCount();
  ASSERT_TRUE(press(sections, u"Clocks"_s));
  EXPECT_LT(view_.model()->rowCount(), all);
  const QStringList before = kinds(0);
  ASSERT_TRUE(press(&view_, u"Pomodoro"_s));
  EXPECT_EQ(kinds(0), before + QStringList{u"pomodoro"_s});
  EXPECT_TRUE(QAccessible::queryAccessibleInterface(&view_)->child(view_.currentIndex().row())->state().selected);

  // Of the words of a list that opens, a press chooses one.
  auto* target = window_->findChild<DropDown*>();
  QSignalSpy chosen(target, &DropDown::valueChosen);
  ASSERT_TRUE(press(target->view(), fixture_.profile(1).name));
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen.first().first().toString(), fixture_.profile(1).id.toString());
}

TEST_F(LibraryWindowTest, ArrowsChooseCardsAndTypingInThemSearches) {
  QTest::keyClick(&field_, Qt::Key_Down);
  ASSERT_TRUE(view_.currentIndex().isValid());
  const QRect first = view_.visualRect(view_.currentIndex());
  QTest::keyClick(&field_, Qt::Key_Right);
  EXPECT_GT(view_.visualRect(view_.currentIndex()).left(), first.left());
  view_.setFocus();
  QTest::keyClick(&view_, Qt::Key_End);
  EXPECT_EQ(view_.currentIndex().row(), view_.model()->rowCount() - 1);
  EXPECT_TRUE(view_.viewport()->rect().contains(view_.visualRect(view_.currentIndex())));
  QTest::keyClick(&view_, Qt::Key_M);
  EXPECT_EQ(field_.text(), u"m"_s);
}

TEST_F(LibraryWindowTest, TabLeadsThroughTheCardsAndTheSectionsAndBack) {
  const QList<QWidget*> way{&field_, window_->findChild<DropDown*>(), &view_, window_->findChild<SideList*>()};
  field_.setFocus();
  for (int at : {1, 2, 3, 0}) {
    QTest::keyClick(window_->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window_->focusWidget(), way[at]) << at;
  }
  for (int at : {3, 2, 1, 0}) {
    QTest::keyClick(window_->focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(window_->focusWidget(), way[at]) << at;
  }
}

TEST_F(LibraryWindowTest, AddsManuallyToTheProfileThatIsChosen) {
  auto* target = window_->findChild<DropDown*>();
  const QString work = fixture_.profile(1).id.toString();
  target->chooseValue(work);
  Q_EMIT target->valueChosen(work);
  const QStringList before = kinds(0);

  window_->showCategory(u"Weather"_s);
  const QModelIndex forecast = indexOf(u"Forecast"_s);
  const QPoint middle = view_.visualRect(forecast).center();
  QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, middle);
  EXPECT_EQ(kinds(1), QStringList{u"weatherForecast"_s});
  ASSERT_TRUE(addButton());
  EXPECT_EQ(addButton()->accessibleName(), u"Add Forecast"_s);
  addButton()->click();
  EXPECT_EQ(kinds(1).size(), 2);
  EXPECT_NE(fixture_.profile(1).widgets[0].id, fixture_.profile(1).widgets[1].id);
  EXPECT_EQ(kinds(0), before);
  EXPECT_EQ(note(), u"“Forecast” was added to “Work”."_s);

  // The profile goes while it is chosen.
  fixture_.store().deleteProfile(fixture_.profile(1).id);
  EXPECT_EQ(target->chosenValue(), fixture_.profile(0).id.toString());
}

TEST_F(LibraryWindowTest, OnlyWhatIsSeenIsAskedAndEveryItemHasAName) {
  EXPECT_FALSE(fixture_.asked.isEmpty());
  EXPECT_FALSE(fixture_.asked.contains(u"notesLatest"_s)) << "stands far below";
  window_->showCategory(u"Clocks"_s);
  QTest::qWait(0);
  view_.viewport()->grab();
  Q_EMIT fixture_.store().ticked();
  fixture_.asked.clear();
  for (int i = 0; i < 3; ++i) Q_EMIT fixture_.store().ticked();
  EXPECT_TRUE(fixture_.asked.isEmpty()) << "what nobody announced is what it was";
  fixture_.announce({Family::Clock});
  EXPECT_FALSE(fixture_.asked.isEmpty());
  window_->hide();
  fixture_.asked.clear();
  fixture_.announce({Family::Clock});
  Q_EMIT fixture_.store().ticked();
  EXPECT_TRUE(fixture_.asked.isEmpty()) << "a window that is not seen costs nothing";
  window_->show();
  Q_EMIT fixture_.store().ticked();
  EXPECT_FALSE(fixture_.asked.isEmpty()) << "it catches up";
  window_->showCategory(Catalog::categories().first());
  EXPECT_EQ(QAccessible::queryAccessibleInterface(window_.get())->role(), QAccessible::Window);
  const QAccessibleInterface* access = QAccessible::queryAccessibleInterface(&view_);
  ASSERT_TRUE(access);
  EXPECT_EQ(access->role(), QAccessible::List);
  EXPECT_EQ(access->childCount(), view_.model()->rowCount());
  for (int i = 0; i < access->childCount(); ++i) ASSERT_FALSE(access->child(i)->text(QAccessible::Name).isEmpty()) << i;
}

TEST_F(LibraryWindowTest, ACardSaysWhetherItsPictureIsASampleOrItsWidgetComesLater) {
  fixture_.hasSensor = false;
  struct Case {
    QString section, title, mark;
  };
  for (const auto& [section, title, mark] : QList<Case>{{u"Weather"_s, u"Forecast"_s, u"Sample"_s},
                                                        {u"Photos"_s, u"Recent Photo"_s, u"Later"_s},
                                                        {u"Clocks"_s, u"Flip Clock"_s, {}},
                                                        {u"System"_s, u"Temperature"_s, u"Sample"_s},
                                                        {u"Productivity"_s, u"Drink Water"_s, u"Sample"_s},
                                                        {u"System"_s, u"CPU"_s, {}}}) {
    window_->showCategory(section);
    QTest::qWait(0);
    view_.viewport()->grab();
    const QString said = indexOf(title).data(Qt::AccessibleTextRole).toString();
    EXPECT_EQ(said, mark.isEmpty() ? title : title + u", "_s + mark);
  }
}

TEST_F(LibraryWindowTest, TheMarkOfAPictureStaysWhateverItsNameIsJoinedBy) {
  window_->showCategory(u"Weather"_s);
  window_->show();
  QTest::qWait(0);
  const auto mark = [&](const QString& title) {
    const QRect box = view_.markRect(indexOf(title).row());
    // Less its round ends, beside which the card is seen.
    return view_.viewport()->grab(box.adjusted(box.height() / 2, 1, -box.height() / 2, -1)).toImage();
  };
  const QModelIndex forecast = indexOf(u"Forecast"_s);
  ASSERT_TRUE(forecast.isValid());
  const QRect card = view_.visualRect(forecast);
  constexpr int tileText = CardLayout::kPadding + 8;
  const QRect box = view_.markRect(forecast.row());
  EXPECT_TRUE(card.adjusted(0, -CardLayout::kGap, 0, 0).contains(box)) << "none of another card";
  EXPECT_LT(box.bottom(), card.top() + tileText) << "it hides what the tile says";
  const QImage before = mark(u"Forecast"_s);
  QImage empty = before;
  empty.fill(before.pixelColor(0, 0));
  EXPECT_NE(before, empty) << "it is written";
  view_.choose(forecast.row());
  EXPECT_TRUE(addButton()) << "in the row of the name";
  EXPECT_EQ(mark(u"Forecast"_s), before);
  view_.choose(-1);
  fixture_.store().addWidget({{}, u"weatherForecast"_s, {}, {}}, fixture_.profile(0).id);
  EXPECT_TRUE(indexOf(u"Forecast"_s).data(Qt::AccessibleDescriptionRole).toString().endsWith(u"On dock"_s));
  EXPECT_EQ(mark(u"Forecast"_s), before);
  window_->showCategory(u"Clocks"_s);
  EXPECT_TRUE(view_.markRect(indexOf(u"Flip Clock"_s).row()).isEmpty());
}

TEST_F(LibraryWindowTest, ACardHasSpaceForAllThatIsEverSaidBesideItsName) {
  const double mark = 12 + 6 + TextLine(u"On dock"_s, TextStyle::Caption).width();
  for (int row = 0; row < view_.model()->rowCount(); ++row) {
    const QModelIndex index = view_.model()->index(row, 0);
    if (!index.flags().testFlag(Qt::ItemIsDragEnabled)) continue;  // What opens a choice is never on the dock.
    const QString name = index.data(Qt::DisplayRole).toString();
    EXPECT_GE(view_.visualRect(index).width() - CardLayout::kPadding * 2,
              TextLine(name, TextStyle::Body).width() + 10 + mark)
        << qPrintable(name);
  }
}

TEST_F(LibraryWindowTest, ASectionShowsItsShelfAlone) {
  auto* side = window_->findChild<SideList*>();
  window_->showCategory(u"Clocks"_s);
  ASSERT_EQ(view_.shelves().size(), 1);
  EXPECT_EQ(view_.shelves().first().items.size(), 19);
  QTest::keyClicks(&field_, u"cpu"_s);
  EXPECT_EQ(side->chosen(), u"All Widgets"_s) << "a search goes over everything";
  EXPECT_FALSE(view_.shelves().isEmpty());
  window_->showCategory(u"No such section"_s);
  EXPECT_EQ(view_.shelves().size(), Catalog::categories().size());
  EXPECT_EQ(view_.shelves().first().items.size(), 12) << "a few to try, while nothing is searched";
}

TEST_F(LibraryWindowTest, TheNextWordAfterAnAdditionIsANewSearch) {
  QTest::keyClicks(&field_, u"pomodoro"_s);
  QTest::keyClick(&field_, Qt::Key_Return);
  EXPECT_FALSE(note().isEmpty());
  QTest::keyClicks(&field_, u"cpu"_s);
  EXPECT_EQ(field_.text(), u"cpu"_s);
  view_.setFocus();
  for (const Qt::Key key : {Qt::Key_F, Qt::Key_A}) {
    view_.setFocus();
    QTest::keyClick(&view_, key, Qt::ControlModifier);
    EXPECT_TRUE(field_.hasFocus());
    EXPECT_EQ(field_.selectedText(), u"cpu"_s);
  }
}

}  // namespace
}  // namespace tarnwick::test
