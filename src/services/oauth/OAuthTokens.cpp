#include "services/oauth/OAuthTokens.h"

#include <QCoroTask>
#include <QHash>
#include <exception>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "base/OneShotEvent.h"
#include "services/ServiceHTTPError.h"
#include "services/ServiceWords.h"
#include "services/oauth/OAuthContract.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

/// Shared by all copies and by what is under way.
struct OAuthTokenState {
  /// A refresh under way, and who waits for it.
  struct Refresh {
    quint64 stamp = 0;  ///< Of the credential that is refreshed.
    QList<OneShotEvent> waiting;
    QString token;
    std::exception_ptr failure;
    bool isOver = false;

    void end() {
      isOver = true;
      for (const OneShotEvent& event : std::exchange(waiting, {})) event.happen();
    }
  };
  struct Unsaved {
    quint64 stamp = 0;
    OAuthRecord record;

    bool operator==(const Unsaved&) const = default;
  };

  explicit OAuthTokenState(const Keychain& kept) : keychain(kept) {}

  /// What the keyring did not take, as long as it counts.
  std::optional<Unsaved> unsavedOf(const QString& account) {
    const auto found = unsaved.constFind(account);
    if (found == unsaved.constEnd()) return std::nullopt;
    if (found->stamp == keychain.stamp(account)) return *found;
    unsaved.erase(found);
    return std::nullopt;
  }
  /// The refresh of the credential that counts.
  std::shared_ptr<Refresh> refreshOf(const QString& account) const {
    const auto found = refreshing.value(account);
    return found && found->stamp == keychain.stamp(account) ? found : nullptr;
  }

  Keychain keychain;
  QHash<QString, std::shared_ptr<Refresh>> refreshing;  ///< By account.
  QHash<QString, Unsaved> unsaved;
};

namespace {

constexpr int kBadRequest = 400;
constexpr int kUnauthorized = 401;

using SharedTokens = std::shared_ptr<OAuthTokenState>;
using Refresh = OAuthTokenState::Refresh;
using Unsaved = OAuthTokenState::Unsaved;

/// Everything that a refresh needs to go on when whoever began it is gone.
struct RefreshWork {
  SharedTokens state;
  QString account;
  Unsaved old;
  OAuthProvider provider;
  std::shared_ptr<ServiceSession> session;
};

/// What is kept of an account: a sign-in, or another text.
struct KeptCredential {
  std::optional<OAuthRecord> record;
  QString text;
};

QCoro::Task<> saveRecord(SharedTokens state, QString account, Unsaved fresh, QString name, SecretStore::Asking asking,
                         std::stop_token stop) {
  co_await state->keychain.renew(fresh.record.encoded(), account, name, asking, fresh.stamp, stop);
  // A later one may have come meanwhile.
  if (state->unsaved.value(account) == fresh) state->unsaved.remove(account);
}

/// Throws where the keyring does not take the new sign-in, which then is kept here.
QCoro::Task<QString> refreshed(RefreshWork work) {
  const OAuthRecord& old = work.old.record;
  QMap<QString, QString> fields{{u"grant_type"_s, u"refresh_token"_s},
                                {u"refresh_token"_s, old.refreshToken},
                                {work.provider.clientField, old.clientID}};
  if (!old.clientSecret.isEmpty()) fields.insert(u"client_secret"_s, old.clientSecret);
  QJsonValue answer;
  try {
    answer = co_await OAuthContract::post(work.session, work.provider, fields, std::stop_token());
  } catch (const ServiceHTTPError& error) {
    // So a grant is refused that has expired or was taken back.
    if (error.status() == kBadRequest) throw ServiceHTTPError(kUnauthorized);
    throw;
  }
  const Unsaved fresh{work.old.stamp, OAuthContract::record(answer, work.provider, old.clientID, old.clientSecret, old,
                                                            work.session->now())};
  if (work.state->keychain.stamp(work.account) != fresh.stamp) throw Cancelled();
  // The service may take back the old refresh token now: the new one must not get lost.
  work.state->unsaved.insert(work.account, fresh);
  co_await saveRecord(work.state, work.account, fresh, work.provider.name, SecretStore::Asking::Never,
                      std::stop_token());
  co_return fresh.record.accessToken;
}

QCoro::Task<> runRefresh(RefreshWork work, std::shared_ptr<Refresh> refresh) {
  try {
    refresh->token = co_await refreshed(work);
  } catch (...) {
    refresh->failure = std::current_exception();
  }
  if (work.state->refreshing.value(work.account) == refresh) work.state->refreshing.remove(work.account);
  refresh->end();
}

QCoro::Task<> endOf(std::shared_ptr<Refresh> refresh, std::stop_token stop) {
  if (!refresh->isOver) {
    const OneShotEvent event;
    refresh->waiting << event;
    const std::stop_callback wake(stop, [event] { event.happen(); });
    co_await event.happened();
  }
  throwIfStopped(stop);
}

QCoro::Task<KeptCredential> keptOf(SharedTokens state, QString account, std::stop_token stop) {
  KeptCredential kept;
  if (const auto unsaved = state->unsavedOf(account)) {
    kept.record = unsaved->record;
    co_return kept;
  }
  const std::optional<QString> text = co_await state->keychain.read(account, stop);
  throwIfStopped(stop);
  kept.text = text.value_or(QString());
  kept.record = OAuthRecord::decode(kept.text);
  co_return kept;
}

QCoro::Task<> offerAgain(SharedTokens state, QString account, QString name) {
  const auto unsaved = state->unsavedOf(account);
  if (!unsaved || state->refreshOf(account)) co_return;
  try {
    co_await saveRecord(state, account, *unsaved, name, SecretStore::Asking::Never, std::stop_token());
  } catch (const DomainError&) {
    // It was said when it happened; the sign-in is good as long as the program runs.
  } catch (const Cancelled&) {
    // Another took its place.
  }
}

QCoro::Task<QString> tokenOf(SharedTokens state, DockWidget widget, OAuthProvider provider,
                             std::shared_ptr<ServiceSession> session, std::stop_token stop) {
  const QString account = Keychain::account(widget);
  co_await offerAgain(state, account, provider.name);
  while (true) {
    const quint64 stamp = state->keychain.stamp(account);
    auto refresh = state->refreshOf(account);
    if (!refresh) {
      const KeptCredential kept = co_await keptOf(state, account, stop);
      throwIfStopped(stop);
      if (state->keychain.stamp(account) != stamp) continue;
      if (!kept.record) co_return kept.text;
      if (kept.record->provider != provider.id)
        throw DomainError::invalid(ServiceWords::tr("This saved sign-in belongs to a different provider."));
      if (kept.record->isFresh(session->now())) co_return kept.record->accessToken;
      refresh = state->refreshOf(account);
      if (!refresh) {
        refresh = std::make_shared<Refresh>();
        refresh->stamp = stamp;
        state->refreshing.insert(account, refresh);
        const RefreshWork work{state, account, {stamp, *kept.record}, provider, session};
        runRefresh(work, refresh);
      }
    }
    co_await endOf(refresh, stop);
    // What was replaced or removed meanwhile is nobody's any more.
    if (state->keychain.stamp(account) != stamp) continue;
    if (refresh->failure) std::rethrow_exception(refresh->failure);
    // A copy: what is returned is moved, and others wait for the same.
    const QString token = refresh->token;
    co_return token;
  }
}

QCoro::Task<> takeOver(SharedTokens state, QString account, OAuthRecord record, QString name, std::stop_token stop) {
  const Unsaved fresh{state->keychain.renewStamp(account), record};
  state->unsaved.insert(account, fresh);
  try {
    co_await saveRecord(state, account, fresh, name, SecretStore::Asking::Allowed, stop);
  } catch (const Cancelled&) {
    if (state->unsaved.value(account) == fresh) state->unsaved.remove(account);
    throw;
  }
}

QCoro::Task<std::optional<OAuthRecord>> recordOf(SharedTokens state, QString account, std::stop_token stop) {
  const KeptCredential kept = co_await keptOf(state, account, stop);
  co_return kept.record;
}

}  // namespace

OAuthTokens::OAuthTokens(const Keychain& keychain) : state_(std::make_shared<OAuthTokenState>(keychain)) {}

QCoro::Task<QString> OAuthTokens::token(DockWidget widget, OAuthProvider provider,
                                        std::shared_ptr<ServiceSession> session, std::stop_token stop) const {
  return tokenOf(state_, std::move(widget), std::move(provider), std::move(session), stop);
}

QCoro::Task<> OAuthTokens::keep(DockWidget widget, OAuthRecord record, QString serviceName,
                                std::stop_token stop) const {
  return takeOver(state_, Keychain::account(widget), std::move(record), std::move(serviceName), stop);
}

QCoro::Task<std::optional<OAuthRecord>> OAuthTokens::record(DockWidget widget, std::stop_token stop) const {
  return recordOf(state_, Keychain::account(widget), stop);
}

}  // namespace tarnwick
