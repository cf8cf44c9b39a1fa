#include "services/ServiceHTTPError.h"

#include <QCoreApplication>
#include <QLocale>

namespace tarnwick {

namespace {

QString words(const char* source) { return QCoreApplication::translate("Services", source); }

QString rateLimit(const std::optional<QDateTime>& retryAt) {
  const QString reached = words(QT_TRANSLATE_NOOP("Services", "The service rate limit was reached."));
  if (!retryAt) return reached + words(QT_TRANSLATE_NOOP("Services", " Try again later."));
  return reached + words(QT_TRANSLATE_NOOP("Services", " Retry after %1."))
                       .arg(QLocale().toString(retryAt->toLocalTime().time(), QLocale::ShortFormat));
}

QString describe(int status, const std::optional<QDateTime>& retryAt) {
  if (status >= 300 && status <= 399)
    return words(QT_TRANSLATE_NOOP("Services",
                                   "The service redirected this request. Update the connection address; credentials "
                                   "were not forwarded."));
  if (status >= 500 && status <= 599)
    return words(QT_TRANSLATE_NOOP("Services", "The service is temporarily unavailable (HTTP %1). Try again later."))
        .arg(status);
  switch (status) {
    case 401:
      return words(QT_TRANSLATE_NOOP(
          "Services", "The service credential expired or was rejected. Reconnect in Connection Settings."));
    case 403:
      return words(QT_TRANSLATE_NOOP(
          "Services", "This credential cannot read the requested data. Check its scopes and your account plan."));
    case 404:
      return words(QT_TRANSLATE_NOOP(
          "Services", "The requested account or resource was not found. Check the connection fields."));
    case 429:
      return rateLimit(retryAt);
    default:
      return words(QT_TRANSLATE_NOOP("Services", "Service returned HTTP %1. Check the connection settings."))
          .arg(status);
  }
}

}  // namespace

ServiceHTTPError::ServiceHTTPError(int status, std::optional<QDateTime> retryAt)
    : status_(status),
      retryAt_(std::move(retryAt)),
      description_(describe(status_, retryAt_)),
      utf8_(description_.toUtf8()) {}

}  // namespace tarnwick
