#pragma once

#include <QDateTime>
#include <QString>
#include <exception>
#include <optional>

namespace tarnwick {

/// A service answered with a status that is no success. Apart from DomainError because who fetches also asks for the
/// status and the pause.
class ServiceHTTPError : public std::exception {
 public:
  explicit ServiceHTTPError(int status, std::optional<QDateTime> retryAt = std::nullopt);

  int status() const noexcept { return status_; }
  /// Until when the service wants to be left alone; absent when it did not say.
  const std::optional<QDateTime>& retryAt() const noexcept { return retryAt_; }

  /// A finished sentence for the user. It names neither the host nor anything of the request or the answer.
  const QString& errorDescription() const noexcept { return description_; }
  const char* what() const noexcept override { return utf8_.constData(); }

 private:
  int status_;
  std::optional<QDateTime> retryAt_;
  QString description_;
  QByteArray utf8_;
};

}  // namespace tarnwick
