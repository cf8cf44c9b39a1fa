#pragma once

#include "base/DomainError.h"

namespace tarnwick {

/// No answer came: the service could not be reached, or was silent for too long. Apart from others because it may be
/// the network's fault and not the service's.
class ServiceUnreachable final : public DomainError {
 public:
  explicit ServiceUnreachable(const QString& sentence) : DomainError(DomainError::invalid(sentence)) {}
};

}  // namespace tarnwick
