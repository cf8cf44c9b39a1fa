// What a screen reader does to a control is what a click does.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QPointer>
#include <QTest>

#include "settings/SettingsFixture.h"
#include "support/AccessibleWalk.h"
#include "views/controls/Slider.h"
#include "views/window/DropDown.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

class SettingsAccessibleTest : public testing::Test, public SettingsFixture {
 protected:
  template <class Control>
  QList<Control*> controls() {
    QList<Control*> found;
    for (Control* each : window().findChildren<Control*>())
      if (each->isVisible() && each->isEnabled()) found << each;
    return found;
  }
  /// What the document is after that was done; it is then as it was before.
  DockConfiguration after(const std::function<void()>& action) {
    const DockConfiguration before = config();
    action();
    settle();
    DockConfiguration changed = config();
    store().edit([&](DockConfiguration& document) { document = before; });
    settle();
    return changed;
  }
  static void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  /// The first of the actions that a reader offers; empty where it has none.
  static QString press(QObject* control) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(control);
    QAccessibleActionInterface* actions = accessible ? accessible->actionInterface() : nullptr;
    const QString name = actions ? actions->actionNames().value(0) : QString();
    if (name == QAccessibleActionInterface::toggleAction() || name == QAccessibleActionInterface::pressAction())
      actions->doAction(name);
    else
      return {};
    return accessible->text(QAccessible::Name);
  }
};

constexpr const char* kSections[] = {"general",    "appearance", "layout",    "profiles",    "widgets", "runningApps",
                                     "commandBar", "shortcuts",  "clipboard", "connections", "privacy"};

TEST_F(SettingsAccessibleTest, WhatCanBeCheckedDoesTheSameByItsActionAndByAClick) {
  qsizetype changing = 0;
  for (const char* section : kSections) {
    turnTo(section);
    for (qsizetype i = 0; i < controls<QAbstractButton>().size(); ++i) {
      QAbstractButton* const button = controls<QAbstractButton>()[i];
      if (!button->isCheckable()) continue;
      SCOPED_TRACE(qPrintable(QString::fromLatin1(section) + u": "_s + button->accessibleName() + button->text()));
      const DockConfiguration clicked = after([button] { button->click(); });
      ASSERT_LT(i, controls<QAbstractButton>().size());
      const DockConfiguration acted = after([this, i] { press(controls<QAbstractButton>()[i]); });
      EXPECT_EQ(acted, clicked);
      if (clicked != config()) ++changing;
    }
  }
  EXPECT_GT(changing, 25);
}

TEST_F(SettingsAccessibleTest, ValuesAndChoicesAreSetAsByKeys) {
  qsizetype changing = 0;
  const auto compare = [&](const DockConfiguration& keyed, const DockConfiguration& acted) {
    EXPECT_EQ(acted, keyed);
    if (keyed != config()) ++changing;
  };
  for (const char* section : kSections) {
    turnTo(section);
    EXPECT_EQ(outOfReach(window()), "") << section;
    for (qsizetype i = 0; i < controls<Slider>().size(); ++i) {
      SCOPED_TRACE(qPrintable(controls<Slider>()[i]->accessibleName()));
      const int way = controls<Slider>()[i]->value() < controls<Slider>()[i]->maximum() ? 1 : -1;
      const Qt::Key key = way > 0 ? Qt::Key_Right : Qt::Key_Left;
      const DockConfiguration keyed = after([&] { QTest::keyClick(controls<Slider>()[i], key); });
      const DockConfiguration acted = after([&] {
        QAccessibleValueInterface* value =
            QAccessible::queryAccessibleInterface(controls<Slider>()[i])->valueInterface();
        value->setCurrentValue(value->currentValue().toInt() + way);
      });
      compare(keyed, acted);
    }
    for (qsizetype i = 0; i < controls<DropDown>().size(); ++i) {
      SCOPED_TRACE(qPrintable(controls<DropDown>()[i]->accessibleName()));
      const int row = controls<DropDown>()[i]->currentIndex();
      const int way = row + 1 < controls<DropDown>()[i]->count() ? 1 : -1;
      if (controls<DropDown>()[i]->count() < 2) continue;
      const Qt::Key key = way > 0 ? Qt::Key_Down : Qt::Key_Up;
      const DockConfiguration keyed = after([&] { QTest::keyClick(controls<DropDown>()[i], key); });
      const DockConfiguration acted = after([&] {
        DropDown* box = controls<DropDown>()[i];
        box->showPopup();
        EXPECT_TRUE(doAction(QAccessible::queryAccessibleInterface(box->view())->child(row + way),
                             QAccessibleActionInterface::pressAction()));
      });
      compare(keyed, acted);
    }
  }
  EXPECT_GE(changing, 7);
}

TEST_F(SettingsAccessibleTest, EachButtonIsNamedAndPressedOnce) {
  for (const char* section : kSections) {
    turnTo(section);
    QList<QPointer<QAbstractButton>> buttons;
    for (QAbstractButton* each : controls<QAbstractButton>()) buttons << each;
    for (const QPointer<QAbstractButton>& button : buttons) {
      if (!button || !button->isEnabled() || !button->isVisible()) continue;
      SCOPED_TRACE(qPrintable(QString::fromLatin1(section) + u": "_s + button->accessibleName() + button->text()));
      // What it leads to is not wanted here.
      QObject::disconnect(button.data(), &QAbstractButton::clicked, nullptr, nullptr);
      if (QAccessible::queryAccessibleInterface(button.data())->role() == QAccessible::ListItem) continue;
      int clicks = 0;
      const QMetaObject::Connection counting =
          QObject::connect(button.data(), &QAbstractButton::clicked, button.data(), [&clicks] { ++clicks; });
      EXPECT_FALSE(press(button.data()).isEmpty());
      settle();
      EXPECT_EQ(clicks, 1);
      QObject::disconnect(counting);
    }
  }
}

}  // namespace
}  // namespace tarnwick::test
