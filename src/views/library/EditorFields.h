#pragma once

#include <QList>
#include <QString>
#include <QUrl>
#include <functional>
#include <optional>

#include "config/DockWidget.h"
#include "views/panels/WidgetOption.h"

namespace tarnwick {

/// One line of the form of a widget, in the user's language.
struct EditorField {
  QString key;  ///< The option.
  FieldShape shape = FieldShape::Line;
  QString label;
  QString placeholder;  ///< Of a folder the one that an absent option means.
  QString help;
  QString value;  ///< What a switch writes; of a choice its values, joined by ",".
  QString words;  ///< Of a choice, joined by ",".
  int usual = 0;  ///< What an absent option means: of steps their number, of a choice the place of a value.
  int least = 0;
  int most = 0;
  bool isLater = false;           ///< Nothing reads it yet, as `help` says: it is shown out of use.
  QString fault;                  ///< The sentence of a failed save that belongs to this line.
  std::optional<QString> onlyIn;  ///< The `connectionMode` in which the line is there; absent for all.
  /// Of a page, which one belongs to what stands in the form; invalid for none.
  std::function<QUrl(const DockWidget& edited)> pageOf = {};
};

/// What the form of each kind holds beside the title: the options that its room declares, and where it has a service
/// those of its provider.
struct EditorFields {
  /// Empty where there is nothing to set.
  static QList<EditorField> of(const QString& kind);
  /// Whether there is a form at all: not for what only parts tiles.
  static bool isEditable(const QString& kind);
};

}  // namespace tarnwick
