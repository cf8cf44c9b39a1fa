#pragma once

#include <QMap>
#include <QString>
#include <QUuid>

#include "base/RecordCodec.h"

namespace tarnwick {

/// One tile of the dock. Everything that is set for it, and everything that it counts while it runs, is a text in
/// `options`, numbers included.
struct DockWidget {
  QUuid id;
  QString kind;   ///< An identifier of the catalog.
  QString title;  ///< Empty for the catalog's title.
  QMap<QString, QString> options;

  /// The option `key` as a number; `otherwise` when it is absent, isn't a number as a whole, or isn't finite.
  double number(const QString& key, double otherwise) const;

  static constexpr auto fields() {
    return std::tuple(field::required("id", &DockWidget::id), field::required("kind", &DockWidget::kind),
                      field::required("title", &DockWidget::title), field::required("options", &DockWidget::options));
  }
  bool operator==(const DockWidget&) const = default;
};

}  // namespace tarnwick
