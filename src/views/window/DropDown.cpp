#include "views/window/DropDown.h"

#include <QApplication>
#include <QListView>
#include <QPainter>
#include <QPointer>
#include <QProxyStyle>
#include <QStyledItemDelegate>
#include <QWheelEvent>
#include <algorithm>

#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/ListAccessible.h"
#include "views/controls/Mirroring.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kChevron = 12;
constexpr int kListRow = 30;
constexpr int kMark = 14;  // Of the chosen word in the list.
constexpr int kLeastWidth = 96;
constexpr int kMostWidth = 260;

/// The rows of the list that opens.
class ChoicePainter final : public QStyledItemDelegate {
 public:
  explicit ChoicePainter(DropDown& box) : QStyledItemDelegate(&box), box_(box) {}

  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override {
    const QString word = index.data().toString();
    const int width = static_cast<int>(std::ceil(TextLine(word, TextStyle::Body).width()));
    return {width + theme::kRowGap * 3 + kMark, kListRow};
  }
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const ControlLook& look = lookOf(box_);
    const bool under = option.state.testFlag(QStyle::State_Selected);
    const QRectF row = QRectF(option.rect).adjusted(2, 1, -2, -1);
    if (under) drawRounded(*painter, row, theme::kSegmentCorner, look.palette.selection);
    const bool mirrored = box_.layoutDirection() == Qt::RightToLeft;
    const auto place = [&](int x, int width) {
      return QRectF(QStyle::visualRect(box_.layoutDirection(), option.rect,
                                       QRect(option.rect.left() + x, option.rect.top(), width, option.rect.height())));
    };
    if (index.row() == box_.currentIndex()) {
      QRectF mark(0, 0, kMark, kMark);
      mark.moveCenter(place(theme::kRowGap, kMark).center());
      drawControlSymbol(*painter, u"checkmark"_s, mark, look.accentColor());
    }
    constexpr int text = theme::kRowGap * 2 + kMark - 4;
    drawTextIn(*painter, place(text, std::max(0, option.rect.width() - text - theme::kRowGap / 2)),
               index.data().toString(), TextStyle::Body, look.palette.primary,
               mirrored ? Qt::AlignRight : Qt::AlignLeft);
    painter->restore();
  }

 private:
  DropDown& box_;
};

/// Opens the list below the field, where the toolkit's own style lays it over it.
class ListBelow final : public QProxyStyle {
 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    return hint == SH_ComboBox_Popup ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
  }
};

QStyle* listBelow() {
  static const QPointer<QStyle> style = [] {
    auto* made = new ListBelow;
    made->setParent(qApp);
    return made;
  }();
  return style;
}

}  // namespace

DropDown::DropDown(const QString& label, QWidget* parent) : QComboBox(parent) {
  setAccessibleName(label);
  setStyle(listBelow());
  setFixedHeight(theme::kControlHeight);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  setSizeAdjustPolicy(QComboBox::AdjustToContents);
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setMaxVisibleItems(14);
  setItemDelegate(new ChoicePainter(*this));
  installListAccessibility();
  connect(this, &QComboBox::activated, this, [this] { Q_EMIT valueChosen(chosenValue()); });
}

void DropDown::addChoice(const QString& word, const QString& value) {
  addItem(word, value);
  if (count() == 1) setCurrentIndex(-1);
}

void DropDown::chooseValue(const QString& value) {
  const QSignalBlocker quiet(this);
  setCurrentIndex(findData(value));
  update();
}

QSize DropDown::sizeHint() const {
  int widest = 0;
  const QFontMetrics measure(buttonFont());
  for (int i = 0; i < count(); ++i) widest = std::max(widest, measure.horizontalAdvance(itemText(i)));
  const int width = widest + theme::kButtonPadding * 2 + kChevron + theme::kButtonSymbolGap;
  return {std::clamp(width, kLeastWidth, kMostWidth), theme::kControlHeight};
}

void DropDown::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(disabledOpacity(lookOf(*this)));
  const ControlLook& look = lookOf(*this);
  const QColor ground = underMouse() && isEnabled() ? look.palette.buttonHover : look.palette.button;
  drawRounded(painter, rect(), theme::kButtonCorner, ground);
  if (hasFocus()) drawFocusLine(painter, rect(), theme::kButtonCorner, look);
  const auto place = [this](int x, int width) {
    return QRectF(QStyle::visualRect(layoutDirection(), rect(), QRect(x, 0, width, height())));
  };
  const QRectF chevron = place(width() - theme::kButtonPadding - kChevron, kChevron);
  drawControlSymbol(painter, u"chevron.down"_s, QRectF(chevron.left(), (height() - kChevron) / 2.0, kChevron, kChevron),
                    look.palette.secondary);
  painter.setFont(buttonFont());
  painter.setPen(look.palette.primary);
  const int space = width() - theme::kButtonPadding * 2 - kChevron - theme::kButtonSymbolGap;
  const QString word = painter.fontMetrics().elidedText(currentText(), Qt::ElideMiddle, space + 1);
  runAsWritten(painter, word);
  painter.drawText(place(theme::kButtonPadding, space + 1),
                   static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter)) |
                       Qt::TextSingleLine,
                   word);
}

void DropDown::showPopup() {
  view()->setMinimumWidth(std::max(width(), view()->sizeHintForColumn(0)));
  QComboBox::showPopup();
}

void DropDown::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace tarnwick
