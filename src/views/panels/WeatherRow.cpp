#include "views/panels/WeatherRow.h"

#include <QPainter>
#include <QPixmap>
#include <QVBoxLayout>

#include "views/controls/ControlTheme.h"
#include "views/controls/PlainTip.h"
#include "views/controls/Rows.h"
#include "views/panels/PanelWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

WeatherRow::WeatherRow(const PanelContext& context, Placeless placeless)
    : placeless_(placeless), row_(new ListRow({})) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(row_);
  row_->setClickable(true);
  connect(row_, &QPushButton::clicked, this,
          [&commands = context.commands, display = context.display, widget = context.widget] {
            commands.openWeather(display, widget);
          });
}

std::optional<WeatherReading> WeatherRow::readingOf(const DockWidget& widget, const TileSources& sources) const {
  if (auto read = WeatherReading::of(widget, sources)) return read;
  WeatherReading missing;
  missing.place = WeatherReading::placeOf(widget);
  missing.picture = WeatherPicture::Cloud;
  if (!missing.place.isEmpty()) missing.problem = WeatherReading::problemOf(sources.weather.of(widget.id), sources);
  if (placeless_ == Placeless::Nothing && missing.problem.isEmpty()) return std::nullopt;
  if (missing.place.isEmpty()) {
    missing.place = PanelWords::tr("Weather");
    missing.problem = PanelWords::tr("Choose a place to see its weather here.");
  } else if (missing.problem.isEmpty()) {
    missing.problem = PanelWords::tr("Waiting for the weather…");
  }
  return missing;
}

bool WeatherRow::show(const DockWidget& widget, const TileSources& sources) {
  const auto reading = readingOf(widget, sources);
  setVisible(reading.has_value());
  if (!reading || (reading == reading_ && lookOf(*this) == painted_)) return reading.has_value();
  reading_ = reading;
  painted_ = lookOf(*this);
  fill();
  return true;
}

void WeatherRow::fill() {
  constexpr int size = theme::kRowPicture;
  QPixmap picture(QSize(size, size) * devicePixelRatioF());
  picture.setDevicePixelRatio(devicePixelRatioF());
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  drawWeather(painter, reading_->picture, {}, size, painted_.palette);
  painter.end();
  row_->setPicture(picture);
  const bool named = !reading_->condition.isEmpty();
  QStringList facts{named ? reading_->place : reading_->problem, reading_->age};
  facts.removeAll(QString());
  row_->setTitle(named ? reading_->condition : reading_->place);
  row_->setCaption(facts.join(u" · "_s));
  // A sentence may be longer than the row.
  setPlainTip(*row_, reading_->problem);
  row_->setValue(reading_->temperature, reading_->isFailed ? Tone::Secondary : Tone::Primary);
}

}  // namespace tarnwick
