#include "config/DockWidget.h"

#include "base/Text.h"

namespace tarnwick {

double DockWidget::number(const QString& key, double otherwise) const {
  const auto option = options.constFind(key);
  return option == options.constEnd() ? otherwise : Text::number(*option).value_or(otherwise);
}

}  // namespace tarnwick
