#include "services/ServiceHTTPError.h"

#include <QLocale>

#include "services/ServiceWords.h"

namespace tarnwick {

namespace {

QString rateLimit(const std::optional<QDateTime>& retryAt) {
  const QString reached = ServiceWords::tr("The service rate limit was reached.");
  if (!retryAt) return reached + ServiceWords::tr(" Try again later.");
  return reached + ServiceWords::tr(" Retry after %1.")
                       .arg(QLocale().toString(retryAt->toLocalTime().time(), QLocale::ShortFormat));
}

QString describe(int status, const std::optional<QDateTime>& retryAt) {
  if (status >= 300 && status <= 399)
    return ServiceWords::tr(
        "The service redirected this request. Update the connection address; credentials "
        "were not forwarded.");
  if (status >= 500 && status <= 599)
    return ServiceWords::tr("The service is temporarily unavailable (HTTP %1). Try again later.").arg(status);
  switch (status) {
    case 401:
      return ServiceWords::tr("The service credential expired or was rejected. Reconnect in Connection Settings.");
    case 403:
      return ServiceWords::tr(
          "This credential cannot read the requested data. Check its scopes and your account plan.");
    case 404:
      return ServiceWords::tr("The requested account or resource was not found. Check the connection fields.");
    case 429:
      return rateLimit(retryAt);
    default:
      return ServiceWords::tr("Service returned HTTP %1. Check the connection settings.").arg(status);
  }
}

}  // namespace

ServiceHTTPError::ServiceHTTPError(int status, std::optional<QDateTime> retryAt)
    : status_(status),
      retryAt_(std::move(retryAt)),
      description_(describe(status_, retryAt_)),
      utf8_(description_.toUtf8()) {}

}  // namespace tarnwick
