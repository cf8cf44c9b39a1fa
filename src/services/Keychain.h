#pragma once

#include <QCoroTask>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <memory>
#include <optional>
#include <stop_token>

#include "config/DockWidget.h"
#include "desktop/Capability.h"
#include "services/MaybeCredential.h"
#include "services/ports/SecretStore.h"

namespace tarnwick {

struct KeychainState;

/// The credentials of connected widgets, each bound to one widget and one host. They are in the keyring of the desktop
/// and nowhere else; nothing is kept of them between two readings. What is written and removed of one account happens
/// in the order in which it was asked for. Every failure is a DomainError with a finished sentence. Copies are the same
/// keychain, and what is under way may outlive them. Main thread only.
class Keychain {
 public:
  /// The program, as the keyring knows it.
  static constexpr QLatin1StringView kService{"com.brindlemoor.Tarnwick.secrets"};

  /// The account of a widget at the host of its `endpoint`: its identity, a colon, the host. Without an address nothing
  /// follows the colon.
  static QString account(const DockWidget& widget);
  /// The widget of an account; absent where it was not made by `account`.
  static std::optional<QUuid> widgetIdentity(QStringView account);

  /// `folder` is that of the settings: what is listed and removed is its own alone.
  Keychain(std::shared_ptr<SecretStore> secrets, const QString& folder);

  /// Absent where none is kept, or what is kept is no text. Never asks the user. Throws Cancelled too.
  QCoro::Task<std::optional<QString>> read(const QString& account, std::stop_token stop = {}) const;
  /// The same for whoever can do without: a keyring that cannot be read fails only where it is known to keep one.
  QCoro::Task<MaybeCredential> readIfAny(const QString& account, std::stop_token stop = {}) const;
  /// Keeps `value` in the place of what is there; an empty one removes that, without failing. `serviceName` is how the
  /// keyring's own window names it. Asks the user to unlock the keyring where `asking` allows it, which then throws
  /// Cancelled once `stop` is requested.
  QCoro::Task<> save(const QString& value, const QString& account, const QString& serviceName,
                     SecretStore::Asking asking, std::stop_token stop = {}) const;
  QCoro::Task<QStringList> accounts() const;
  /// A number that is another once the credential of an account was replaced or removed, or is about to be.
  quint64 stamp(const QString& account) const;
  /// Makes it another, and gives that: what was kept until now counts no more.
  quint64 renewStamp(const QString& account) const;
  /// Keeps the same credential anew, unless its stamp is another by then: that throws Cancelled.
  QCoro::Task<> renew(const QString& value, const QString& account, const QString& serviceName,
                      SecretStore::Asking asking, quint64 stamp, std::stop_token stop = {}) const;
  /// Removes all that is kept for these widgets, at whatever host.
  QCoro::Task<> deleteAll(const QList<QUuid>& widgets) const;
  /// Removes what is kept for widgets other than these, but for what was saved since the program started. Gives how
  /// many items went.
  QCoro::Task<int> removeOrphans(const QList<QUuid>& keeping) const;

  /// Asks the user to unlock the keyring, where it is locked.
  QCoro::Task<> unlock(std::stop_token stop = {}) const;
  /// Whether there is a keyring at all, locked or not; otherwise a sentence that says what to install.
  QCoro::Task<Capability> capability() const;

 private:
  std::shared_ptr<KeychainState> state_;
};

}  // namespace tarnwick
