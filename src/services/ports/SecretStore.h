#pragma once

#include <QCoroTask>
#include <QList>
#include <QString>
#include <exception>
#include <optional>
#include <stop_token>

#include "base/SecretBytes.h"

namespace tarnwick {

/// By what an item of a keyring is found. An empty one is not asked for.
struct SecretAttributes {
  QString service;  ///< The program.
  QString account;  ///< Whose the secret is, in the program's own words.
  QString store;    ///< The folder of settings that it belongs to.

  bool operator==(const SecretAttributes&) const = default;
};

/// Why a keyring did nothing.
class SecretFailure : public std::exception {
 public:
  enum Status {
    NoService = -1,  ///< None runs, and none can be started.
    Locked = -2,
    NoAnswer = -3,   ///< Within five seconds.
    Dismissed = -4,  ///< The user closed the keyring's own question.
    Refused = -5     ///< All others.
  };

  explicit SecretFailure(Status status, bool isKept = false) : status_(status), isKept_(isKept) {}
  Status status() const { return status_; }
  /// Whether it is known all the same that what was asked for is there.
  bool isKept() const { return isKept_; }
  const char* what() const noexcept override { return "The keyring did nothing."; }

 private:
  Status status_;
  bool isKept_;
};

/// The keyring of the desktop. Each operation throws SecretFailure, ends within five seconds (but for the time in which
/// the user is asked) and may outlive this object. Main thread only.
class SecretStore {
 public:
  /// Whether the user may be asked to unlock the keyring, which only a press of theirs allows.
  enum class Asking { Never, Allowed };

  SecretStore() = default;
  Q_DISABLE_COPY_MOVE(SecretStore)
  virtual ~SecretStore() = default;

  /// Absent where there is no such item.
  virtual QCoro::Task<std::optional<SecretBytes>> read(SecretAttributes which) = 0;
  /// Makes an item that has `label` in the eyes of the user. One with the same service and account gets the new value
  /// instead, and keeps its other attributes. Throws Cancelled once `stop` is requested while the user is asked.
  virtual QCoro::Task<> write(SecretAttributes which, QString label, SecretBytes value, Asking asking,
                              std::stop_token stop) = 0;
  /// What can be found, never a secret. A keyring that is locked fails.
  virtual QCoro::Task<QList<SecretAttributes>> list(SecretAttributes which) = 0;
  /// Removes every such item; that there is none is no failure. Never asks.
  virtual QCoro::Task<> remove(SecretAttributes which) = 0;
  /// Asks the user to unlock it, where it is locked. Throws Cancelled like `write`.
  virtual QCoro::Task<> unlock(std::stop_token stop) = 0;
  /// Asks nobody but the keyring. Throws NoService where there is none.
  virtual QCoro::Task<bool> isLocked() = 0;
};

}  // namespace tarnwick
