#pragma once

#include <QWidget>
#include <optional>

#include "views/controls/ControlLook.h"
#include "views/panels/PanelContext.h"
#include "views/tiles/WeatherReading.h"

namespace tarnwick {

class ListRow;

/// The weather of a widget that is about something else, as one row of its panel. A click opens all of it.
class WeatherRow final : public QWidget {
  Q_OBJECT
 public:
  /// What it says of a widget without a place.
  enum class Placeless { Nothing, Invitation };

  WeatherRow(const PanelContext& context, Placeless placeless);

  /// Shows the weather at the place of the widget, or why none of it was ever read. Hides where there is nothing to
  /// say; gives whether it is to be seen.
  bool show(const DockWidget& widget, const TileSources& sources);

 private:
  std::optional<WeatherReading> readingOf(const DockWidget& widget, const TileSources& sources) const;
  void fill();

  Placeless placeless_;
  ListRow* row_;
  std::optional<WeatherReading> reading_;
  ControlLook painted_;
};

}  // namespace tarnwick
