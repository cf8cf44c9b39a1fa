#include "views/families/clipboard/ClipboardTabs.h"

#include <QHBoxLayout>

#include "views/controls/Buttons.h"
#include "views/controls/ChoiceGroup.h"
#include "views/controls/ControlAccessible.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"
#include "views/panels/PanelWords.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"

namespace tarnwick {

namespace {

constexpr int kSignPadding = 9;  ///< Around the symbol of a tab without its word: seven have to fit.
constexpr int kSignWidth = theme::kIconButtonSymbol + kSignPadding * 2;

class GroupTab final : public PaintedButton {
 public:
  explicit GroupTab(ClipboardGroup group)
      : PaintedButton(ClipboardGroups::label(group)), symbol_(ClipboardGroups::symbol(group)) {
    setCheckable(true);
    setAutoExclusive(true);
    setToolTip(label());
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(this, &QAbstractButton::toggled, this, [this] { updateGeometry(); });
  }

  QSize sizeHint() const override {
    if (!isChecked()) return {kSignWidth, theme::kControlHeight};
    constexpr int symbol = theme::kIconButtonSymbol + theme::kButtonPadding * 2;
    return {symbol + theme::kButtonSymbolGap + QFontMetrics(buttonFont()).horizontalAdvance(label()) + 1,
            theme::kControlHeight};
  }
  /// A long word loses letters before anything is pushed out of the panel.
  QSize minimumSizeHint() const override { return {kSignWidth, theme::kControlHeight}; }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    prepare(painter);
    const Mirroring mirror(*this);
    const Palette& palette = look().palette;
    if (isChecked())
      drawRounded(painter, rect(), theme::kButtonCorner, faded(look().accentColor(), theme::kChosenShare));
    else if (underMouse() || isDown())
      drawRounded(painter, rect(), theme::kButtonCorner, ground());
    if (showsFocus()) drawFocusLine(painter, rect(), theme::kButtonCorner, look());
    const QColor ink = isChecked() ? palette.accentWord(look().accent) : palette.secondary;
    constexpr int side = theme::kIconButtonSymbol;
    const QRectF place(isChecked() ? theme::kButtonPadding : kSignPadding, (height() - side) / 2.0, side, side);
    drawControlSymbol(painter, symbol_, mirror(place), ink);
    if (!isChecked()) return;
    painter.setFont(buttonFont());
    painter.setPen(ink);
    const double left = place.right() + theme::kButtonSymbolGap;
    const double space = width() - left - theme::kButtonPadding + 1;
    painter.drawText(mirror(QRectF(left, 0, width() - left, height())),
                     static_cast<int>(Qt::AlignVCenter | mirror.reading() | Qt::AlignAbsolute | Qt::TextSingleLine),
                     painter.fontMetrics().elidedText(label(), Qt::ElideRight, static_cast<int>(space)));
  }

 private:
  QString symbol_;
};

}  // namespace

ClipboardTabs::ClipboardTabs() {
  setAccessibleRole(*this, QAccessible::Grouping);
  setAccessibleName(PanelWords::tr("Show"));
  setFixedHeight(theme::kControlHeight);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  for (const auto& [group, name] : RawValues<ClipboardGroup>::table) {
    auto* tab = new GroupTab(group);
    group_.addButton(tab, static_cast<int>(group));
    row->addWidget(tab);
  }
  row->addStretch();
  connect(&group_, &QButtonGroup::idClicked, this, [this](int id) {
    if (chosen) chosen(static_cast<ClipboardGroup>(id));
  });
}

void ClipboardTabs::set(const QList<ClipboardGroup>& groups, ClipboardGroup shown) {
  for (QAbstractButton* tab : group_.buttons()) {
    const auto group = static_cast<ClipboardGroup>(group_.id(tab));
    tab->setVisible(groups.contains(group));
    if (group == shown) tab->setChecked(true);
  }
  enterAtChosen(group_.buttons());
}

}  // namespace tarnwick
