#pragma once

#include <QList>
#include <QString>
#include <QUuid>

#include "config/DockWidget.h"

namespace tarnwick {

/// A named set of widgets. One profile is active; a display may be pinned to another.
struct DockProfile {
  QUuid id;
  QString name;
  QList<DockWidget> widgets;

  /// What a new user finds: "Everyday" with seven widgets, every identity fresh.
  static DockProfile initial();

  static constexpr auto fields() {
    return std::tuple(field::required("id", &DockProfile::id), field::required("name", &DockProfile::name),
                      field::required("widgets", &DockProfile::widgets));
  }
  bool operator==(const DockProfile&) const = default;
};

}  // namespace tarnwick
