#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// What a dock says, and what it asks beside it.
struct DockWords {
  Q_DECLARE_TR_FUNCTIONS(Dock)
};

}  // namespace tarnwick
