#include "views/library/ZoneFields.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include "base/LocalFigures.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Fields.h"
#include "views/controls/Labels.h"
#include "views/controls/Rows.h"
#include "views/library/FieldRows.h"
#include "widgets/ClockWords.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostMatches = 5;

}  // namespace

ZoneField::ZoneField(bool several, const QString& placeholder)
    : several_(several),
      chosen_(FieldRows::column()),
      field_(new SearchField(several ? LibraryWords::tr("Add a city or time zone")
                                     : LibraryWords::tr("Choose a city or time zone"))),
      matches_(FieldRows::column()),
      message_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(theme::kSectionBelow);
  column->addLayout(chosen_);
  column->addWidget(field_);
  column->addLayout(matches_);
  column->addWidget(message_);
  message_->hide();
  if (!placeholder.isEmpty()) field_->setPlaceholderText(placeholder);
  setFocusProxy(field_);
  field_->installEventFilter(this);
  connect(field_, &QLineEdit::textChanged, this, &ZoneField::search);
  showZones();
}

void ZoneField::setValue(const QString& value) {
  // A list that nothing is set for shows the zones that its tile shows.
  const QStringList zones = several_ ? worldZones(value) : value.split(u',', Qt::SkipEmptyParts);
  if (zones == zones_) return;
  zones_ = zones;
  showZones();
}

void ZoneField::showZones() {
  FieldRows::clear(*chosen_);
  if (zones_.isEmpty()) {
    auto* row = new ListRow(LibraryWords::tr("Local"));
    row->setCaption(LibraryWords::tr("The time of this computer"));
    chosen_->addWidget(row);
  }
  for (const QString& zone : std::as_const(zones_)) {
    auto* row = new ListRow(ClockWords::city(zone));
    row->setCaption(zone);
    row->setParted(chosen_->count() > 0);
    const QString city = ClockWords::city(zone);
    if (!several_ || zones_.size() > 1)
      FieldRows::addRemoval(*row,
                            several_ ? LibraryWords::tr("Remove %1").arg(city) : LibraryWords::tr("Use local time"),
                            [this, zone] { leave(zone); });
    chosen_->addWidget(row);
  }
}

void ZoneField::search() {
  found_ = ZoneSearch::find(field_->text(), kMostMatches);
  FieldRows::clear(*matches_);
  for (const ZoneMatch& match : std::as_const(found_)) {
    auto* row = new ListRow(match.city);
    row->setClickable(true);
    row->setParted(matches_->count() > 0);
    QStringList words{match.country, match.zone};
    words.removeAll(QString());
    row->setCaption(words.join(u" · "_s));
    connect(row, &QPushButton::clicked, this, [this, match] { take(match); });
    matches_->addWidget(row);
  }
  const bool nothing = found_.isEmpty() && !field_->text().trimmed().isEmpty();
  message_->setText(LibraryWords::tr("No city or time zone has this name."));
  message_->setVisible(nothing);
}

void ZoneField::take(const ZoneMatch& match) {
  const bool full = several_ && !zones_.contains(match.zone) && zones_.size() >= kMostZones;
  if (!full) {
    before_ = value();
    if (!several_) zones_.clear();
    if (!zones_.contains(match.zone)) zones_.append(match.zone);
    city_ = match.city;
  }
  field_->clear();
  message_->setText(
      LibraryWords::tr("A world clock shows at most %1 time zones.").arg(LocalFigures::number(kMostZones)));
  message_->setVisible(full);
  field_->setFocus(Qt::OtherFocusReason);
  if (full) return;
  showZones();
  Q_EMIT changed();
}

void ZoneField::leave(const QString& zone) {
  before_ = value();
  zones_.removeAll(zone);
  city_.clear();
  showZones();
  field_->setFocus(Qt::OtherFocusReason);
  Q_EMIT changed();
}

bool ZoneField::eventFilter(QObject* watched, QEvent* event) {
  // Return takes what was found; only in a field without a search it saves the form.
  if (watched == field_ && event->type() == QEvent::KeyPress && !field_->text().trimmed().isEmpty()) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      if (!found_.isEmpty()) take(ZoneMatch(found_.first()));
      return true;
    }
  }
  return FieldControl::eventFilter(watched, event);
}

}  // namespace tarnwick
