#include "views/panels/PlaceField.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "services/Connections.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Fields.h"
#include "views/controls/Labels.h"
#include "views/controls/PlainTip.h"
#include "views/controls/Rows.h"
#include "views/panels/PanelWords.h"
#include "views/panels/RowList.h"

namespace tarnwick {

PlaceField::PlaceField(const QString& label, Connections& connections, QWidget* parent)
    : QWidget(parent),
      connections_(connections),
      field_(new SearchField(label)),
      rows_(new RowList),
      message_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(theme::kSectionBelow);
  column->addWidget(field_);
  column->addWidget(rows_);
  column->addWidget(message_);
  rows_->hide();
  message_->hide();
  message_->setWordWrap(true);
  setFocusProxy(field_);
  field_->installEventFilter(this);
  rest_.setSingleShot(true);
  rest_.setInterval(kRestMilliseconds);
  connect(&rest_, &QTimer::timeout, this, &PlaceField::ask);
  // A screen reader sets the text, which the toolkit does not count as an edit.
  connect(field_, &QLineEdit::textChanged, this, [this] {
    if (isQuiet_) return;
    follow();
    Q_EMIT typed();
  });
}

PlaceField::~PlaceField() { drop(); }

QString PlaceField::text() const { return field_->text().trimmed(); }

void PlaceField::setText(const QString& text) {
  if (text == field_->text()) return;
  drop();
  clear();
  isQuiet_ = true;
  field_->setText(text);
  isQuiet_ = false;
}

void PlaceField::clear() {
  found_.clear();
  choices_.clear();
  rows_->setRows({});
  rows_->hide();
  message_->hide();
  field_->setAccessibleDescription({});
}

void PlaceField::follow() {
  drop();
  if (text().size() < kFewestLetters)
    clear();
  else
    rest_.start();
  // What was found for other letters is nobody's choice by Return.
  found_.clear();
}

void PlaceField::drop() {
  rest_.stop();
  stop_.request_stop();
  takesFirst_ = false;
}

void PlaceField::ask() {
  stop_ = std::stop_source();
  const std::stop_token stop = stop_.get_token();
  tellAnswer<Places>(
      connections_.places(text(), stop), [this](const ServiceAnswer<Places>& answer) { offer(answer); }, stop);
}

void PlaceField::offer(const ServiceAnswer<Places>& answer) {
  found_ = answer.value.value_or(Places());
  choices_.clear();
  for (const GeocodeCache::Place& place : std::as_const(found_)) {
    auto* row = new ListRow(place.name);
    row->setClickable(true);
    row->setParted(!choices_.isEmpty());
    row->setValue(place.region, Tone::Secondary);
    setPlainTip(*row, place.region.isEmpty() ? QString() : PanelWords::tr("%1, %2").arg(place.name, place.region));
    row->installEventFilter(this);
    connect(row, &QPushButton::clicked, this, [this, place] { take(place); });
    choices_ << row;
  }
  rows_->setRows(choices_);
  rows_->setVisible(!choices_.isEmpty());
  if (takesFirst_ && !found_.isEmpty()) {
    take(found_.first());
    return;
  }
  takesFirst_ = false;
  message_->setText(answer.sentence.isEmpty() ? PanelWords::tr("No place has this name.") : answer.sentence);
  message_->setVisible(found_.isEmpty());
  field_->setAccessibleDescription(found_.isEmpty() ? message_->text()
                                                    : PanelWords::tr("%n places below", nullptr, int(found_.size())));
  if (!message_->isVisible()) return;
  QAccessibleEvent alert(message_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

/// `place` may be one of those that go with this.
void PlaceField::take(GeocodeCache::Place place) {
  // The rows go; the keyboard stays where a place is chosen.
  field_->setFocus(Qt::OtherFocusReason);
  setText(place.name);
  drop();
  clear();
  Q_EMIT chosen(place);
}

bool PlaceField::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && moveFrom(watched, static_cast<QKeyEvent*>(event)->key())) return true;
  return QWidget::eventFilter(watched, event);
}

bool PlaceField::moveFrom(QObject* from, int key) {
  const qsizetype at = choices_.indexOf(qobject_cast<QWidget*>(from));
  switch (key) {
    case Qt::Key_Down:
      if (at + 1 >= choices_.size()) return at >= 0;
      choices_[at + 1]->setFocus(Qt::TabFocusReason);
      return true;
    case Qt::Key_Up:
      if (at < 0) return false;
      (at == 0 ? static_cast<QWidget*>(field_) : choices_[at - 1])->setFocus(Qt::TabFocusReason);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (at >= 0) return false;
      if (!found_.isEmpty()) {
        take(found_.first());
        return true;
      }
      // The answer is on its way: it is what Return is meant for.
      takesFirst_ = rest_.isActive();
      if (!takesFirst_) return false;
      rest_.stop();
      ask();
      return true;
    default:
      return false;
  }
}

}  // namespace tarnwick
