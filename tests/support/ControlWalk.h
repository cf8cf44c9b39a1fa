#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QHash>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPointer>
#include <QRegularExpression>
#include <QScrollArea>
#include <QSet>
#include <QTest>
#include <QWindow>
#include <functional>
#include <optional>
#include <vector>

#include "support/AccessibleWalk.h"

namespace tarnwick::test {

/// Closes each question and menu that opens while it lives, and keeps what they were called.
class OpenedWindows final : public QObject {
 public:
  OpenedWindows() { qApp->installEventFilter(this); }

  QStringList names;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* const widget = event->type() == QEvent::Show ? qobject_cast<QWidget*>(watched) : nullptr;
    if (widget && (qobject_cast<QDialog*>(widget) || qobject_cast<QMenu*>(widget))) {
      names << QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->windowTitle();
      // A question without a way out does not let itself be closed.
      if (auto* dialog = qobject_cast<QDialog*>(widget))
        QMetaObject::invokeMethod(dialog, &QDialog::reject, Qt::QueuedConnection);
      else
        QMetaObject::invokeMethod(widget, &QWidget::close, Qt::QueuedConnection);
    }
    return false;
  }
};

/// Uses every control of a place in up to three ways, each time from the same beginning: by what a screen reader is
/// offered, by keys and by the mouse, these two as events of the window. What becomes of it must be the same.
class ControlWalk {
 public:
  enum class Hand { Reader, Keys, Mouse };

  /// Where the controls are.
  class Place {
   public:
    virtual ~Place() = default;
    /// Makes all anew and shows it.
    virtual QWidget& open() = 0;
    /// What became of the document, and what was asked of the program.
    virtual QString outcome() = 0;
  };

  /// Of one class in one place; the rest of hundreds does the same.
  static constexpr int kMostAlike = 40;

  int compared = 0;
  int changing = 0;

  /// One that was compared in another place is left out, by its class and name.
  void run(Place& place, const QString& where) {
    open(place);
    const auto count = static_cast<qsizetype>(uses(*window_).size());
    QHash<QString, int> alike;
    for (qsizetype i = 0; i < count; ++i) {
      const QString name = nameAt(i);
      if (seen_.contains(name) || ++alike[name.section(u' ', 0, 0)] > kMostAlike) continue;
      seen_.insert(name);
      SCOPED_TRACE(testing::Message() << where.toStdString() << ": " << name.toStdString());
      const QString before = outcome(place);
      std::optional<QString> byReader;
      for (const Hand hand : {Hand::Reader, Hand::Keys, Hand::Mouse}) {
        ASSERT_EQ(nameAt(i).toStdString(), name.toStdString()) << "each time from the same beginning";
        const bool can = uses(*window_)[static_cast<std::size_t>(i)].by(hand);
        settle();
        const QString after = outcome(place);
        EXPECT_TRUE(can || hand != Hand::Reader) << "nothing that a reader can do";
        if (can && hand == Hand::Reader) byReader = after;
        if (can && hand != Hand::Reader && byReader) {
          ++compared;
          if (after != before) ++changing;
          EXPECT_EQ(difference(before, *byReader), difference(before, after))
              << (hand == Hand::Keys ? "by keys" : "by the mouse");
        }
        if (after != before) open(place);
      }
    }
  }

 private:
  struct Use {
    QString name;
    /// False where that hand has no way of its own.
    std::function<bool(Hand)> by;
  };

  static void settle() {
    for (int i = 0; i < 3; ++i) {
      QCoreApplication::processEvents();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  }

  void open(Place& place) {
    opened_.names.clear();
    window_ = &place.open();
    QApplication::setActiveWindow(window_);
    settle();
  }

  QString nameAt(qsizetype index) const {
    const std::vector<Use> all = window_ ? uses(*window_) : std::vector<Use>();
    return index < static_cast<qsizetype>(all.size()) ? all[static_cast<std::size_t>(index)].name : QString();
  }

  /// All that is to be seen there and what became of it, without identities that are made up anew each time.
  QString outcome(Place& place) const {
    // What a row shows only while it has the keyboard is no outcome.
    if (QWidget* focused = window_ ? window_->focusWidget() : nullptr) focused->clearFocus();
    settle();
    QStringList lines = place.outcome().split(u'\n');
    lines << opened_.names;
    if (window_ && window_->isVisible())
      describe(QAccessible::queryAccessibleInterface(window_.data()), lines);
    else
      lines << QStringLiteral("closed");
    const QString said = lines.join(u'\n');
    static const QRegularExpression identity(
        QStringLiteral("[0-9A-Fa-f]{8}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{12}"));
    QHash<QString, qsizetype> known;
    QString text;
    qsizetype from = 0;
    for (auto matches = identity.globalMatch(said); matches.hasNext();) {
      const QRegularExpressionMatch match = matches.next();
      const QString id = match.captured().toLower();
      if (!known.contains(id)) known.insert(id, known.size());
      text += said.sliced(from, match.capturedStart() - from) + QStringLiteral("identity %1").arg(known.value(id));
      from = match.capturedEnd();
    }
    text += said.sliced(from);
    return text;
  }

  static void describe(QAccessibleInterface* from, QStringList& lines) {
    if (!from || !from->isValid() || from->state().invisible) return;
    const auto* widget = qobject_cast<QWidget*>(from->object());
    // What only the pointer brings is no outcome.
    const bool isPassing = widget && widget->focusPolicy() == Qt::NoFocus && from->role() == QAccessible::Button;
    if (!isPassing)
      lines << QStringLiteral("%1 %2 %3 %4")
                   .arg(int(from->role()))
                   .arg(from->text(QAccessible::Name), from->text(QAccessible::Value))
                   .arg(from->state().checked ? 1 : 0);
    for (int i = 0; i < from->childCount(); ++i) describe(from->child(i), lines);
  }

  static std::string difference(const QString& before, const QString& after) {
    const QStringList old = before.split(u'\n');
    const QStringList now = after.split(u'\n');
    const QSet<QString> oldLines(old.begin(), old.end());
    const QSet<QString> nowLines(now.begin(), now.end());
    QStringList said;
    for (const QString& line : old)
      if (!nowLines.contains(line)) said << QStringLiteral("- ") + line;
    for (const QString& line : now)
      if (!oldLines.contains(line)) said << QStringLiteral("+ ") + line;
    if (said.isEmpty() && old != now) said << QStringLiteral("another order: ") + after;
    return said.join(u'\n').toStdString();
  }

  // The hands.

  static bool click(QWidget& control, const QPoint& at, bool twice = false) {
    for (QWidget* each = control.parentWidget(); each; each = each->parentWidget())
      if (auto* area = qobject_cast<QScrollArea*>(each)) area->ensureWidgetVisible(&control, 0, 0);
    QCoreApplication::processEvents();
    QWidget* const window = control.window();
    const QPoint place = control.mapTo(window, at);
    if (!window->rect().contains(place)) return false;
    if (twice)
      QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, place);
    else
      QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, place);
    return true;
  }

  static bool press(QWidget& control, const QList<Qt::Key>& keys) {
    control.setFocus(Qt::TabFocusReason);
    QWidget* const window = control.window();
    if (window->focusWidget() != &control) return false;
    for (const Qt::Key key : keys) QTest::keyClick(window->windowHandle(), key);
    return true;
  }

  static bool setValue(QWidget& control, int by) {
    QAccessibleValueInterface* value = QAccessible::queryAccessibleInterface(&control)->valueInterface();
    if (!value) return false;
    value->setCurrentValue(value->currentValue().toInt() + by);
    return true;
  }

  static std::function<bool(Hand)> of(QAbstractButton& button) {
    return [&button](Hand hand) {
      if (hand == Hand::Reader) return pressOrToggle(button);
      if (hand == Hand::Mouse) return click(button, button.rect().center());
      if (button.focusPolicy() == Qt::NoFocus && !button.isCheckable()) return false;
      return press(button, {Qt::Key_Space});
    };
  }

  static std::function<bool(Hand)> of(QAbstractSlider& slider) {
    return [&slider](Hand hand) {
      const int way = slider.value() < slider.maximum() ? 1 : -1;
      if (hand == Hand::Reader) return setValue(slider, way * slider.singleStep());
      if (hand == Hand::Mouse) return false;  // No place is one step away.
      return press(slider, {way > 0 ? Qt::Key_Right : Qt::Key_Left});
    };
  }

  static std::function<bool(Hand)> of(QComboBox& box) {
    return [&box](Hand hand) {
      const int row = box.currentIndex() + 1 < box.count() ? box.currentIndex() + 1 : box.currentIndex() - 1;
      if (row < 0) return true;  // There is nothing to choose.
      if (hand == Hand::Keys) return press(box, {row > box.currentIndex() ? Qt::Key_Down : Qt::Key_Up});
      if (hand == Hand::Mouse) {
        // The list takes no release right after the press that opened it.
        const int interval = QApplication::doubleClickInterval();
        QApplication::setDoubleClickInterval(0);
        const bool clicked = click(box, box.rect().center());
        QApplication::setDoubleClickInterval(interval);
        QCoreApplication::processEvents();
        if (!clicked || !box.view()->isVisible()) return false;
        const QPoint place = box.view()->visualRect(box.model()->index(row, box.modelColumn())).center();
        QTest::mouseMove(box.view()->viewport(), place);
        const bool chosen = click(*box.view()->viewport(), place);
        box.hidePopup();
        return chosen;
      }
      box.showPopup();
      QAccessibleInterface* list = QAccessible::queryAccessibleInterface(box.view());
      return doAction(list->child(row), QAccessibleActionInterface::pressAction());
    };
  }

  static std::function<bool(Hand)> of(QLineEdit& field) {
    return [&field](Hand hand) {
      if (hand == Hand::Reader) {
        // The keyboard is elsewhere.
        QAccessible::queryAccessibleInterface(&field)->setText(QAccessible::Value, field.text() + u'1');
        return true;
      }
      if (hand == Hand::Mouse && !click(field, QPoint(field.width() / 4, field.height() / 2))) return false;
      if (!press(field, {Qt::Key_End})) return false;
      QTest::keyClick(field.window()->windowHandle(), '1');
      field.clearFocus();
      return true;
    };
  }

  static std::function<bool(Hand)> of(QListView& list, int row) {
    return [&list, row](Hand hand) {
      const QModelIndex index = list.model()->index(row, 0, list.rootIndex());
      if (hand == Hand::Reader)
        return doAction(QAccessible::queryAccessibleInterface(&list)->child(row),
                        QAccessibleActionInterface::pressAction());
      if (hand == Hand::Mouse) {
        list.scrollTo(index);
        // In the library and in lists that are put in order a click only chooses.
        const QByteArrayView kind(list.metaObject()->className());
        const bool twice = kind.endsWith("LibraryView") || kind.endsWith("OrderList");
        return click(*list.viewport(), list.visualRect(index).center(), twice);
      }
      QList<Qt::Key> keys{Qt::Key_Home};
      keys.insert(1, row, list.flow() == QListView::LeftToRight ? Qt::Key_Right : Qt::Key_Down);
      if (!press(list, keys) || list.currentIndex() != index) return false;
      QTest::keyClick(list.window()->windowHandle(), Qt::Key_Return);
      return true;
    };
  }

  /// A number whose two buttons are its children.
  static std::function<bool(Hand)> ofNumber(QWidget& number) {
    return [&number](Hand hand) {
      const QList<QAbstractButton*> buttons = number.findChildren<QAbstractButton*>();
      const bool up = buttons.last()->isEnabled();
      QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&number);
      if (hand == Hand::Reader)
        return doAction(accessible, up ? QAccessibleActionInterface::increaseAction()
                                       : QAccessibleActionInterface::decreaseAction());
      if (hand == Hand::Keys) return press(number, {up ? Qt::Key_Up : Qt::Key_Down});
      QAbstractButton& button = up ? *buttons.last() : *buttons.first();
      return click(button, button.rect().center());
    };
  }

  static std::vector<Use> uses(QWidget& window) {
    std::vector<Use> found;
    for (QWidget* each : window.findChildren<QWidget*>()) {
      if (!each->isVisible() || !each->isEnabled() || each->window() != &window) continue;
      QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(each);
      if (!accessible) continue;
      const QString name =
          QString::fromLatin1(each->metaObject()->className()) + u' ' + accessible->text(QAccessible::Name);
      const QWidget* parent = each->parentWidget();
      QAccessibleInterface* above = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(parent));
      if (auto* button = qobject_cast<QAbstractButton*>(each)) {
        const QAccessible::Role role = accessible->role();
        const bool isUsed = role == QAccessible::Button || role == QAccessible::CheckBox ||
                            role == QAccessible::RadioButton || role == QAccessible::ListItem;
        const bool isPart = above && above->role() == QAccessible::SpinBox;
        if (isUsed && !isPart && !button->testAttribute(Qt::WA_TransparentForMouseEvents) &&
            (role != QAccessible::ListItem || button->focusPolicy() != Qt::NoFocus))
          found.push_back({name, of(*button)});
      } else if (auto* slider = qobject_cast<QAbstractSlider*>(each);
                 slider && accessible->role() == QAccessible::Slider) {
        found.push_back({name, of(*slider)});
      } else if (auto* box = qobject_cast<QComboBox*>(each)) {
        found.push_back({name, of(*box)});
      } else if (auto* field = qobject_cast<QLineEdit*>(each); field && !field->isReadOnly()) {
        found.push_back({name, of(*field)});
      } else if (auto* list = qobject_cast<QListView*>(each); list && list->model()) {
        for (int row = 0; row < std::min(3, list->model()->rowCount(list->rootIndex())); ++row)
          found.push_back({name + u' ' + QString::number(row), of(*list, row)});
      } else if (accessible->role() == QAccessible::SpinBox) {
        found.push_back({name, ofNumber(*each)});
      }
    }
    return found;
  }

  QSet<QString> seen_;
  QPointer<QWidget> window_;
  OpenedWindows opened_;
};

}  // namespace tarnwick::test
