#include "services/Keychain.h"

#include <QHash>
#include <QSet>
#include <QUrl>
#include <functional>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "base/OneShotEvent.h"
#include "base/UuidText.h"
#include "services/ServiceWords.h"
#include "services/StoreIdentity.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;
using QCoro::Task;

/// Shared by all copies and by what is under way.
struct KeychainState {
  std::shared_ptr<SecretStore> secrets;
  QString folder;
  QString identity;   ///< Of the folder; empty until it is known.
  QSet<QUuid> saved;  ///< Widgets for which something was saved: no sweep that began before counts them as gone.
  QHash<QString, quint64> stamps;               ///< By account, of those that somebody asked for.
  QHash<QString, QList<OneShotEvent>> writing;  ///< Accounts that are written now, and who waits to do so.
};

namespace {

using Shared = std::shared_ptr<KeychainState>;

DomainError unavailable(const SecretFailure& failure) {
  return DomainError::invalid(ServiceWords::tr("Keychain access unavailable (%1).").arg(failure.status()));
}

QString labelOf(const QString& serviceName) { return u"Tarnwick · "_s + serviceName; }

SecretAttributes itemOf(const QString& account, const QString& store = {}) {
  return {.service = Keychain::kService, .account = account, .store = store};
}

/// The right to write to an account, which one has at a time.
class Turn {
 public:
  Turn(Shared state, const QString& account) : state_(std::move(state)), account_(account) {}
  Q_DISABLE_COPY_MOVE(Turn)
  ~Turn() {
    QList<OneShotEvent>& waiting = state_->writing[account_];
    if (waiting.isEmpty())
      state_->writing.remove(account_);
    else
      waiting.takeFirst().happen();
  }

 private:
  Shared state_;
  QString account_;
};

Task<std::shared_ptr<Turn>> turnOf(Shared state, QString account) {
  if (!state->writing.contains(account)) {
    state->writing.insert(account, {});
  } else {
    const OneShotEvent mine;
    state->writing[account].append(mine);
    co_await mine.happened();
  }
  co_return std::make_shared<Turn>(state, account);
}

/// The identity of the folder, empty where it has none and none is to be made. The disk is waited for elsewhere.
Task<QString> identityOf(Shared state, bool isMade) {
  // A copy: what is returned is moved.
  const QString known = state->identity;
  if (!known.isEmpty()) co_return known;
  struct Found {
    QString identity;
    std::optional<DomainError> failure;
  };
  const auto found = std::make_shared<Found>();
  const OneShotEvent done = OneShotEvent::ofWork([found, folder = state->folder, isMade] {
    try {
      found->identity = isMade ? StoreIdentity::readOrMake(folder) : StoreIdentity::read(folder);
    } catch (const DomainError& failure) {
      found->failure = failure;
    }
  });
  co_await done.happened();
  if (found->failure) throw *found->failure;
  state->identity = found->identity;
  co_return std::move(found->identity);
}

Task<std::optional<QString>> readFrom(Shared state, QString account, std::stop_token stop) {
  throwIfStopped(stop);
  const SecretAttributes item = itemOf(account);
  std::optional<SecretBytes> value;
  try {
    value = co_await state->secrets->read(item);
  } catch (const SecretFailure& failure) {
    throwIfStopped(stop);
    throw unavailable(failure);
  }
  throwIfStopped(stop);
  co_return value ? value->text() : std::nullopt;
}

Task<MaybeCredential> readIfAnyFrom(Shared state, QString account, std::stop_token stop) {
  throwIfStopped(stop);
  const SecretAttributes item = itemOf(account);
  MaybeCredential found;
  try {
    const std::optional<SecretBytes> value = co_await state->secrets->read(item);
    if (value) found.value = value->text().value_or(QString());
  } catch (const SecretFailure& failure) {
    throwIfStopped(stop);
    if (failure.isKept()) throw unavailable(failure);
    found.unread = unavailable(failure).message();
    found.hasNoKeyring = failure.status() == SecretFailure::NoService;
  }
  throwIfStopped(stop);
  co_return found;
}

/// With a stamp only as long as that is the account's.
Task<> saveIn(Shared state, SecretBytes value, QString account, QString label, SecretStore::Asking asking,
              std::optional<quint64> stamp, std::stop_token stop) {
  const std::shared_ptr<Turn> turn = co_await turnOf(state, account);
  const QString store = co_await identityOf(state, true);
  throwIfStopped(stop);
  if (stamp && state->stamps.value(account) != *stamp) throw Cancelled();
  if (const auto widget = Keychain::widgetIdentity(account)) state->saved.insert(*widget);
  const SecretAttributes item = itemOf(account, store);
  try {
    const Task<> writing = state->secrets->write(item, label, std::move(value), asking, stop);
    co_await writing;
  } catch (const SecretFailure& failure) {
    throw DomainError::invalid(ServiceWords::tr("Keychain could not save the credential (%1).").arg(failure.status()));
  }
  if (!stamp) ++state->stamps[account];
}

Task<> removeAt(Shared state, QString account) {
  ++state->stamps[account];
  const std::shared_ptr<Turn> turn = co_await turnOf(state, account);
  const SecretAttributes item = itemOf(account);
  try {
    co_await state->secrets->remove(item);
  } catch (const SecretFailure&) {
    // What is not there is removed, and what is there shows itself.
  }
}

Task<QStringList> accountsOf(Shared state) {
  const QString store = co_await identityOf(state, false);
  // Whoever saved nothing yet has nothing there, and need not ask.
  if (store.isEmpty()) co_return QStringList();
  const SecretAttributes ours = itemOf({}, store);
  QList<SecretAttributes> items;
  try {
    items = co_await state->secrets->list(ours);
  } catch (const SecretFailure& failure) {
    throw unavailable(failure);
  }
  QStringList accounts;
  for (const SecretAttributes& item : std::as_const(items)) {
    if (item.store == store && !item.account.isEmpty()) accounts.append(item.account);
  }
  co_return accounts;
}

/// Removes what the folder keeps for the widgets that `isWanted` names; how many items went.
Task<int> removeOf(Shared state, std::function<bool(const QUuid& widget)> isWanted) {
  const QStringList accounts = co_await accountsOf(state);
  int removed = 0;
  for (const QString& account : accounts) {
    const std::shared_ptr<Turn> turn = co_await turnOf(state, account);
    // Asked for each when its turn comes: one may have been saved since.
    const auto widget = Keychain::widgetIdentity(account);
    if (!widget || !isWanted(*widget)) continue;
    const SecretAttributes item = itemOf(account, state->identity);
    try {
      co_await state->secrets->remove(item);
      ++removed;
    } catch (const SecretFailure&) {
      // It stays until the next sweep.
    }
  }
  co_return removed;
}

Task<> deleteFrom(Shared state, QSet<QUuid> widgets) {
  const std::function<bool(const QUuid&)> isTheirs = [widgets](const QUuid& widget) {
    return widgets.contains(widget);
  };
  const auto isTheirAccount = [&isTheirs](const QString& account) {
    const auto widget = Keychain::widgetIdentity(account);
    return widget && isTheirs(*widget);
  };
  for (const auto& [account, stamp] : state->stamps.asKeyValueRange())
    if (isTheirAccount(account)) ++stamp;
  // What is on its way into the keyring can only be found there afterwards.
  const QStringList written = state->writing.keys();
  for (const QString& account : written) {
    if (!isTheirAccount(account)) continue;
    const std::shared_ptr<Turn> turn = co_await turnOf(state, account);
  }
  co_await removeOf(state, isTheirs);
}

Task<> unlockOf(Shared state, std::stop_token stop) {
  try {
    co_await state->secrets->unlock(stop);
  } catch (const SecretFailure& failure) {
    throw unavailable(failure);
  }
}

Task<Capability> capabilityOf(Shared state) {
  try {
    co_await state->secrets->isLocked();
  } catch (const SecretFailure& failure) {
    if (failure.status() == SecretFailure::NoService) co_return Capability::no(ServiceWords::noKeyring());
  }
  co_return Capability::yes();
}

}  // namespace

QString Keychain::account(const DockWidget& widget) {
  const QUrl address(widget.options.value(option::endpoint));
  return UuidText::write(widget.id) + u':' + address.host(QUrl::FullyEncoded).toLower();
}

std::optional<QUuid> Keychain::widgetIdentity(QStringView account) {
  const qsizetype colon = account.indexOf(u':');
  return UuidText::read(colon < 0 ? account : account.first(colon));
}

Keychain::Keychain(std::shared_ptr<SecretStore> secrets, const QString& folder)
    : state_(std::make_shared<KeychainState>()) {
  state_->secrets = std::move(secrets);
  state_->folder = folder;
}

Task<std::optional<QString>> Keychain::read(const QString& account, std::stop_token stop) const {
  return readFrom(state_, account, stop);
}

Task<MaybeCredential> Keychain::readIfAny(const QString& account, std::stop_token stop) const {
  return readIfAnyFrom(state_, account, stop);
}

Task<> Keychain::save(const QString& value, const QString& account, const QString& serviceName,
                      SecretStore::Asking asking, std::stop_token stop) const {
  if (value.isEmpty()) return removeAt(state_, account);
  return saveIn(state_, SecretBytes(value), account, labelOf(serviceName), asking, std::nullopt, stop);
}

quint64 Keychain::stamp(const QString& account) const { return state_->stamps[account]; }

quint64 Keychain::renewStamp(const QString& account) const { return ++state_->stamps[account]; }

Task<> Keychain::renew(const QString& value, const QString& account, const QString& serviceName,
                       SecretStore::Asking asking, quint64 stamp, std::stop_token stop) const {
  return saveIn(state_, SecretBytes(value), account, labelOf(serviceName), asking, stamp, stop);
}

Task<QStringList> Keychain::accounts() const { return accountsOf(state_); }

Task<> Keychain::deleteAll(const QList<QUuid>& widgets) const {
  return deleteFrom(state_, {widgets.begin(), widgets.end()});
}

Task<int> Keychain::removeOrphans(const QList<QUuid>& keeping) const {
  return removeOf(state_, [state = state_, kept = QSet<QUuid>(keeping.begin(), keeping.end())](const QUuid& widget) {
    return !kept.contains(widget) && !state->saved.contains(widget);
  });
}

Task<> Keychain::unlock(std::stop_token stop) const { return unlockOf(state_, stop); }

Task<Capability> Keychain::capability() const { return capabilityOf(state_); }

}  // namespace tarnwick
