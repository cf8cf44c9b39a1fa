#include "services/MaybeCredential.h"

#include "base/DomainError.h"

namespace tarnwick {

void MaybeCredential::explain(const ServiceHTTPError& refusal) const {
  constexpr int unauthorised = 401;
  constexpr int forbidden = 403;
  constexpr int notFound = 404;
  const int status = refusal.status();
  if (unread.isEmpty() || (status != unauthorised && status != forbidden && status != notFound)) return;
  throw DomainError::invalid(unread);
}

}  // namespace tarnwick
