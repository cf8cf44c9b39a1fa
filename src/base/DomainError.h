#pragma once

#include <QString>
#include <exception>

namespace tarnwick {

/// A failure whose message is a finished sentence for the user and is shown as it stands.
/// Lower layers throw it; it is caught once, where an operation of the store, a mode of the command line or a slot begins.
class DomainError : public std::exception {
 public:
  static DomainError invalid(const QString& message) { return DomainError(message); }

  const QString& message() const noexcept { return message_; }
  const char* what() const noexcept override { return utf8_.constData(); }

 private:
  explicit DomainError(const QString& message) : message_(message), utf8_(message.toUtf8()) {}

  QString message_;
  QByteArray utf8_;
};

}  // namespace tarnwick
