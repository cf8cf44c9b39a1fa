#include "views/onboarding/StateLabel.h"

#include <QPainter>
#include <QStyle>
#include <cmath>

#include "views/controls/ControlLook.h"
#include "views/controls/ControlTheme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kBesideDot = 5;

}  // namespace

StateLabel::StateLabel(bool works, QWidget* parent)
    : QLabel(parent), works_(works), word_(works ? tr("Works") : tr("Not available")) {
  setText(word_);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize StateLabel::sizeHint() const {
  const double word = TextLine(word_, TextStyle::BodyStrong).width();
  return {theme::kButtonSymbol + kBesideDot + static_cast<int>(std::ceil(word)), theme::kControlHeight};
}

void StateLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  const QRect sign(0, (height() - theme::kButtonSymbol) / 2, theme::kButtonSymbol, theme::kButtonSymbol);
  const QRect rest = rect().adjusted(theme::kButtonSymbol + kBesideDot, 0, 0, 0);
  const QColor ink = works_ ? look.palette.accentWord(Accent::Green) : look.palette.secondary;
  drawControlSymbol(painter, works_ ? u"checkmark.circle"_s : u"minus"_s,
                    QStyle::visualRect(layoutDirection(), rect(), sign), ink);
  drawTextIn(painter, QStyle::visualRect(layoutDirection(), rect(), rest), word_, TextStyle::BodyStrong, ink,
             QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft));
}

}  // namespace tarnwick
