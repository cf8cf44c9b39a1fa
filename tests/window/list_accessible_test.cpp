// What a screen reader finds in a list, and what it can do there.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QCoreApplication>
#include <QSignalSpy>

#include "support/AccessibleWalk.h"
#include "views/controls/ItemView.h"
#include "views/window/DropDown.h"
#include "views/window/SideList.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

QAccessibleInterface* accessible(QWidget* widget) { return QAccessible::queryAccessibleInterface(widget); }

void act(QWidget* list, int row, const QString& action = QAccessibleActionInterface::pressAction()) {
  accessible(list)->child(row)->actionInterface()->doAction(action);
  QCoreApplication::processEvents();
}

TEST(ListAccessible, ItemsOpenByAPressAndOfferWhatTheirButtonDoes) {
  ItemView list(u"Files"_s, ItemView::Shape::Rows);
  list.setItemAction(u"trash"_s, u"Remove"_s, Qt::Key_Delete);
  list.setItems({{.id = u"a"_s, .title = u"Alpha"_s, .caption = u"today"_s}, {.id = u"b"_s, .title = u"Beta"_s}});
  list.show();
  QSignalSpy opened(&list, &ItemView::opened);
  QSignalSpy removed(&list, &ItemView::actionRequested);
  EXPECT_EQ(accessible(&list)->role(), QAccessible::List);
  EXPECT_EQ(accessible(&list)->text(QAccessible::Name), u"Files"_s);
  ASSERT_EQ(accessible(&list)->childCount(), 2);
  EXPECT_EQ(outOfReach(list), "");
  QAccessibleInterface* first = accessible(&list)->child(0);
  EXPECT_EQ(first->role(), QAccessible::ListItem);
  EXPECT_EQ(first->text(QAccessible::Description), u"today"_s);
  EXPECT_EQ(accessible(&list)->indexOfChild(first), 0);
  EXPECT_EQ(first->parent(), accessible(&list));

  EXPECT_FALSE(accessible(&list)->child(1)->state().selected);
  act(&list, 1);
  ASSERT_EQ(opened.count(), 1);
  EXPECT_EQ(opened.first().first(), u"b"_s);
  EXPECT_TRUE(accessible(&list)->child(1)->state().selected);
  act(&list, 0, u"Remove"_s);
  ASSERT_EQ(removed.count(), 1);
  EXPECT_EQ(removed.first().first(), u"a"_s);
  act(&list, 0, u"No such thing"_s);
  EXPECT_EQ(opened.count() + removed.count(), 2);

  // Between the request and its execution the list has become another one.
  accessible(&list)->child(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  list.setItems({{.id = u"c"_s, .title = u"Gamma"_s}});
  QCoreApplication::processEvents();
  EXPECT_EQ(opened.count(), 1);
  ASSERT_EQ(accessible(&list)->childCount(), 1);
  EXPECT_EQ(accessible(&list)->child(0)->text(QAccessible::Name), u"Gamma"_s);
  EXPECT_EQ(accessible(&list)->child(1), nullptr);

  list.setEnabled(false);
  EXPECT_TRUE(accessible(&list)->child(0)->state().disabled);
  act(&list, 0);
  EXPECT_EQ(opened.count(), 1);
}

TEST(ListAccessible, APressTurnsToASection) {
  SideList list(u"Sections"_s, 30);
  list.setItems({{.id = u"one"_s, .title = u"One"_s, .symbol = {}}, {.id = u"two"_s, .title = u"Two"_s, .symbol = {}}});
  list.show();
  EXPECT_EQ(outOfReach(list), "");
  QSignalSpy chosen(&list, &SideList::chosenChanged);
  act(&list, 1);
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen.first().first(), u"two"_s);
}

TEST(ListAccessible, APressOnAWordOfADropDownIsTheUsersChoice) {
  DropDown box(u"Unit"_s);
  box.addChoice(u"Metre"_s, u"m"_s);
  box.addChoice(u"Foot"_s, u"ft"_s);
  box.chooseValue(u"m"_s);
  box.show();
  EXPECT_EQ(outOfReach(box), "");
  QSignalSpy chosen(&box, &DropDown::valueChosen);
  box.showPopup();
  ASSERT_EQ(accessible(box.view())->childCount(), 2);
  EXPECT_EQ(accessible(box.view())->child(1)->text(QAccessible::Name), u"Foot"_s);
  act(box.view(), 1);
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen.first().first(), u"ft"_s);
  EXPECT_EQ(box.chosenValue(), u"ft"_s);
  EXPECT_FALSE(box.view()->isVisible());
}

}  // namespace
}  // namespace tarnwick::test
