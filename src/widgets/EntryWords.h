#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// What entries of the library are called.
struct EntryWords {
  Q_DECLARE_TR_FUNCTIONS(LibraryEntry)
};

}  // namespace tarnwick
