// What a screen reader finds in an open menu of the dock, and what it can do there.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QCoreApplication>

#include "../support/TestScheduler.h"
#include "DockFixture.h"
#include "support/AccessibleWalk.h"
#include "views/dock/DockMenu.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

QAccessibleInterface* accessibleOf(QObject* object) { return QAccessible::queryAccessibleInterface(object); }

/// The child of that name; null where there is none.
QAccessibleInterface* named(QAccessibleInterface* in, const QString& name) {
  for (int i = 0; in && i < in->childCount(); ++i)
    if (in->child(i)->text(QAccessible::Name) == name) return in->child(i);
  return nullptr;
}

DockRow twoTiles() {
  DockRow row;
  row.widgets = {widget(u"cpu"_s), widget(u"ram"_s)};
  return row;
}

class DockMenuTest : public ::testing::Test {
 protected:
  DockMenuTest() {
    const auto add = [this](QMenu& to, const QString& text) {
      QAction* added = to.addAction(text);
      QObject::connect(added, &QAction::triggered, added, [this, text] { done << text; });
      return added;
    };
    add(menu, u"Cut && Paste"_s);
    menu.addSeparator();
    add(menu, u"Reset Icon"_s)->setEnabled(false);
    QAction* kept = add(menu, u"Keep in Dock"_s);
    kept->setCheckable(true);
    kept->setChecked(true);
    add(*menu.addMenu(u"Windows"_s), u"Letter"_s);
    add(menu, u"Quit Tarnwick"_s);
    view->setOpenMenu(&menu);
  }
  void open() {
    menu.popup({});
    QCoreApplication::processEvents();
  }

  test::TestScheduler time;
  std::unique_ptr<MovedView> view = makeView(twoTiles(), time);
  DockMenu menu{view.get()};
  QAccessibleInterface* dock = accessibleOf(view.get());
  QStringList done;
};

TEST_F(DockMenuTest, IsAChildOfItsDockWhileItIsOpen) {
  EXPECT_EQ(dock->childCount(), 2) << "it is not shown yet";
  open();
  ASSERT_EQ(dock->childCount(), 3);
  QAccessibleInterface* shown = dock->child(2);
  EXPECT_EQ(shown, accessibleOf(&menu));
  EXPECT_EQ(shown->role(), QAccessible::PopupMenu);
  EXPECT_EQ(shown->parent(), dock);
  EXPECT_EQ(dock->indexOfChild(shown), 2);
  EXPECT_FALSE(shown->text(QAccessible::Name).isEmpty());
  EXPECT_EQ(dock->child(0)->role(), QAccessible::Button) << "the tiles stay";

  ASSERT_EQ(shown->childCount(), menu.actions().size());
  for (int i = 0; i < shown->childCount(); ++i) {
    QAccessibleInterface* entry = shown->child(i);
    EXPECT_EQ(entry->parent(), shown);
    EXPECT_EQ(shown->indexOfChild(entry), i);
    EXPECT_EQ(entry->role() == QAccessible::Separator, menu.actions()[i]->isSeparator());
    EXPECT_EQ(shown->childAt(entry->rect().center().x(), entry->rect().center().y()), entry);
  }
  EXPECT_TRUE(named(shown, u"Cut & Paste"_s));
  EXPECT_TRUE(named(shown, u"Reset Icon"_s)->state().disabled);
  EXPECT_TRUE(named(shown, u"Keep in Dock"_s)->state().checked);
  EXPECT_TRUE(named(shown, u"Windows"_s)->state().hasPopup);
  menu.setActiveAction(menu.actions().last());
  EXPECT_EQ(shown->focusChild(), named(shown, u"Quit Tarnwick"_s));

  menu.close();
  EXPECT_EQ(dock->childCount(), 2);
}

TEST_F(DockMenuTest, APressDoesWhatAClickDoesAndCloses) {
  open();
  EXPECT_FALSE(test::doAction(named(accessibleOf(&menu), u"Reset Icon"_s), QAccessibleActionInterface::pressAction()));
  EXPECT_TRUE(
      test::doAction(named(accessibleOf(&menu), u"Quit Tarnwick"_s), QAccessibleActionInterface::pressAction()));
  EXPECT_EQ(done, QStringList{u"Quit Tarnwick"_s});
  EXPECT_FALSE(menu.isVisible());

  open();
  QAccessibleInterface* windows = named(accessibleOf(&menu), u"Windows"_s);
  EXPECT_EQ(windows->childCount(), 0);
  EXPECT_TRUE(test::doAction(windows, QAccessibleActionInterface::showMenuAction()));
  ASSERT_EQ(windows->childCount(), 1);
  QAccessibleInterface* inner = windows->child(0);
  EXPECT_EQ(inner->parent(), windows);
  EXPECT_TRUE(test::doAction(named(inner, u"Letter"_s), QAccessibleActionInterface::pressAction()));
  EXPECT_EQ(done.last(), u"Letter"_s);
  EXPECT_FALSE(menu.isVisible());
}

TEST_F(DockMenuTest, EntriesThatGoAreNobodysAndTheMenuOutlivesItsDock) {
  open();
  QAccessibleInterface* shown = accessibleOf(&menu);
  QAccessibleInterface* quit = named(shown, u"Quit Tarnwick"_s);
  quit->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  delete menu.actions().last();
  QCoreApplication::processEvents();
  EXPECT_TRUE(done.isEmpty());
  EXPECT_FALSE(quit->isValid());
  EXPECT_EQ(named(shown, u"Quit Tarnwick"_s), nullptr);

  view.reset();
  EXPECT_NE(shown->parent(), dock);
  EXPECT_TRUE(test::doAction(named(shown, u"Cut & Paste"_s), QAccessibleActionInterface::pressAction()));
  EXPECT_EQ(done, QStringList{u"Cut && Paste"_s});
}

}  // namespace
}  // namespace tarnwick::testing
