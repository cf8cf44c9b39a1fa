#include "views/controls/Segments.h"

#include <QHBoxLayout>

#include "views/controls/Buttons.h"
#include "views/controls/ChoiceGroup.h"
#include "views/controls/ControlAccessible.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"

namespace tarnwick {

namespace {

class Segment final : public PaintedButton {
 public:
  explicit Segment(const QString& word) : PaintedButton(word) {
    setCheckable(true);
    setAutoExclusive(true);  // Screen readers then know that it is one of several.
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  }
  QSize sizeHint() const override {
    return {QFontMetrics(buttonFont()).horizontalAdvance(label()) + theme::kButtonPadding * 2,
            theme::kControlHeight - theme::kSegmentPadding * 2};
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    prepare(painter);
    const Palette& palette = look().palette;
    if (isChecked() || isDown()) {
      drawRounded(painter, rect(), theme::kSegmentCorner, palette.light ? look().knob() : palette.tab);
      if (palette.light) drawInnerLine(painter, rect(), theme::kSegmentCorner, hairline(painter), palette.hairline);
    }
    if (showsFocus()) drawFocusLine(painter, rect(), theme::kSegmentCorner, look());
    painter.setFont(buttonFont());
    painter.setPen(isChecked() || underMouse() ? palette.primary : palette.secondary);
    const int space = width() - theme::kSegmentPadding * 2;
    runAsWritten(painter, label());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(label(), Qt::ElideRight, space));
  }
};

}  // namespace

Segments::Segments(const QString& label, const QStringList& words, QWidget* parent) : QWidget(parent) {
  setAccessibleRole(*this, QAccessible::Grouping);
  setAccessibleName(label);
  setFixedHeight(theme::kControlHeight);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(theme::kSegmentPadding, theme::kSegmentPadding, theme::kSegmentPadding,
                          theme::kSegmentPadding);
  row->setSpacing(theme::kSegmentPadding);
  for (qsizetype i = 0; i < words.size(); ++i) {
    auto* segment = new Segment(words[i]);
    row->addWidget(segment);
    group_.addButton(segment, static_cast<int>(i));
  }
  setChosen(0);
  connect(&group_, &QButtonGroup::idClicked, this, &Segments::chosenChanged);
}

void Segments::setChosen(int index) {
  if (QAbstractButton* button = group_.button(index)) button->setChecked(true);
  enterAtChosen(group_.buttons());
}

void Segments::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  drawRounded(painter, rect(), theme::kButtonCorner, lookOf(*this).palette.buttonPressed);
}

}  // namespace tarnwick
