#include "views/families/calendar/AgendaRow.h"

#include <QHBoxLayout>
#include <algorithm>

#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"
#include "views/controls/PlainTip.h"
#include "views/families/calendar/EventWords.h"
#include "views/panels/PanelWords.h"
#include "views/theme/Glass.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kLeastColumn = 34;
constexpr double kBarGap = 10;
constexpr double kBarWidth = 3;
constexpr double kBarHeight = 30;
constexpr double kUpper = 0.34;  ///< Where the upper line's middle is.
constexpr double kLower = 0.69;
constexpr double kLine = 20;

}  // namespace

AgendaRow::AgendaRow(const Words& words, double column, std::function<void()> join, bool primary)
    : words_(words), column_(column) {
  setFixedHeight(theme::kTallRowHeight);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  QStringList spoken{words.title, words.begin, words.end, words.place};
  spoken.removeAll(QString());
  setAccessibleName(spoken.join(u", "_s));
  setPlainTip(*this, spoken.join(u", "_s));
  if (!join) return;
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addStretch();
  join_ = new Button(PanelWords::tr("Join"), primary ? Button::Role::Primary : Button::Role::Plain);
  join_->setAccessibleName(PanelWords::tr("Join %1").arg(words.title));
  connect(join_, &QPushButton::clicked, this, [join = std::move(join)] { join(); });
  row->addWidget(join_, 0, Qt::AlignVCenter);
}

void AgendaRow::setParted(bool parted) {
  parted_ = parted;
  update();
}

double AgendaRow::columnOf(const Words& words) {
  return std::max({kLeastColumn, TextLine(words.begin, TextStyle::BodyStrong).width(),
                   TextLine(words.end, TextStyle::Caption).width()});
}

QSize AgendaRow::sizeHint() const { return {200, theme::kTallRowHeight}; }

void AgendaRow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  const Palette& palette = look.palette;
  if (parted_) painter.fillRect(QRectF(0, 0, width(), hairline(painter)), palette.hairline);
  const QColor ink = words_.past ? palette.secondary : palette.primary;
  const Mirroring mirror(*this);
  const auto line = [&](double left, double right, double share, const QString& text, TextStyle style,
                        const QColor& color, Qt::Alignment alignment) {
    const QRectF box(left, height() * share - kLine / 2, std::max(0.0, right - left), kLine);
    drawTextIn(painter, mirror(box), text, style, color, alignment);
  };
  const double begin = words_.end.isEmpty() ? 0.5 : kUpper;
  line(0, column_, begin, words_.begin, TextStyle::BodyStrong, ink, mirror.ending());
  line(0, column_, kLower, words_.end, TextStyle::Caption, palette.secondary, mirror.ending());
  const QRectF bar(column_ + kBarGap, (height() - kBarHeight) / 2, kBarWidth, kBarHeight);
  QColor mark = EventWords::colour(words_.colour, palette, look.accent);
  if (words_.past) mark = faded(mark, 0.5);
  drawRounded(painter, mirror(bar), kBarWidth / 2, mark);
  const double left = bar.right() + kBarGap;
  const double right = join_ ? width() - join_->width() - theme::kRowGap : width();
  line(left, right, words_.place.isEmpty() ? 0.5 : kUpper, words_.title, TextStyle::BodyStrong, ink, mirror.reading());
  line(left, right, kLower, words_.place, TextStyle::Caption, palette.secondary, mirror.reading());
}

}  // namespace tarnwick
