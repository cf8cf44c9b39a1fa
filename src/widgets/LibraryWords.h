#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// Translates what the library and the widget editor say: LibraryWords::tr("…").
class LibraryWords {
  Q_DECLARE_TR_FUNCTIONS(Library)
};

}  // namespace tarnwick
