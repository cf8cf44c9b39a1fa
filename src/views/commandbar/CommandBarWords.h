#pragma once

#include <QCoreApplication>

#include "commandbar/CommandItem.h"

namespace tarnwick {

/// What the command bar says.
struct CommandBarWords {
  Q_DECLARE_TR_FUNCTIONS(CommandBar)

 public:
  /// What Return does with a row of a kind, and what else can be done with it.
  static QString hint(CommandItem::Kind kind, bool canReveal);
};

}  // namespace tarnwick
