#pragma once

#include <QString>

#include "services/ServiceHTTPError.h"

namespace tarnwick {

/// The credential of a widget that can do without one.
struct MaybeCredential {
  QString value;   ///< Empty where there is none, or none can be read.
  QString unread;  ///< Why it is not known whether there is one, as a finished sentence; empty where that is known.
  bool hasNoKeyring = false;  ///< That is because none runs, so that nothing can have been kept.

  /// A service that refuses what came without a credential may do so because that could not be read: throws DomainError
  /// then, and else returns.
  void explain(const ServiceHTTPError& refusal) const;
};

}  // namespace tarnwick
