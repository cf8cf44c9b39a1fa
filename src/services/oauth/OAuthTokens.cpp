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
    QList<OneShotEvent> waiting;
    QString token;
    std::exception_ptr failure;
    bool isOver = false;

    void end() {
      isOver = true;
      for (const OneShotEvent& event : std::exchange(waiting, {})) event.happen();
    }
  };

  explicit OAuthTokenState(const Keychain& kept) : keychain(kept) {}

  Keychain keychain;
  QHash<QString, std::shared_ptr<Refresh>> refreshing;  ///< By account.
  QHash<QString, OAuthRecord> unsaved;                  ///< What the keyring did not take.
};

namespace {

constexpr int kBadRequest = 400;
constexpr int kUnauthorized = 401;

using SharedTokens = std::shared_ptr<OAuthTokenState>;
using Refresh = OAuthTokenState::Refresh;

/// Everything that a refresh needs to go on when whoever began it is gone.
struct RefreshWork {
  SharedTokens state;
  QString account;
  OAuthRecord record;
  OAuthProvider provider;
  std::shared_ptr<ServiceSession> session;
};

QCoro::Task<> saveRecord(SharedTokens state, QString account, OAuthRecord record, QString name) {
  co_await state->keychain.save(record.encoded(), account, name, SecretStore::Asking::Never);
  // A later one may have come meanwhile.
  if (state->unsaved.value(account) == record) state->unsaved.remove(account);
}

/// Throws where the keyring does not take the new sign-in, which then is kept here.
QCoro::Task<QString> refreshed(RefreshWork work) {
  QMap<QString, QString> fields{{u"grant_type"_s, u"refresh_token"_s},
                                {u"refresh_token"_s, work.record.refreshToken},
                                {work.provider.clientField, work.record.clientID}};
  if (!work.record.clientSecret.isEmpty()) fields.insert(u"client_secret"_s, work.record.clientSecret);
  QJsonValue answer;
  try {
    answer = co_await OAuthContract::post(work.session, work.provider, fields, {});
  } catch (const ServiceHTTPError& error) {
    // So a grant is refused that has expired or was taken back.
    if (error.status() == kBadRequest) throw ServiceHTTPError(kUnauthorized);
    throw;
  }
  const OAuthRecord fresh = OAuthContract::record(answer, work.provider, work.record.clientID, work.record.clientSecret,
                                                  work.record, work.session->now());
  // The service may take back the old refresh token now: the new one must not get lost.
  work.state->unsaved.insert(work.account, fresh);
  co_await saveRecord(work.state, work.account, fresh, work.provider.name);
  co_return fresh.accessToken;
}

QCoro::Task<> runRefresh(RefreshWork work, std::shared_ptr<Refresh> refresh) {
  try {
    refresh->token = co_await refreshed(work);
  } catch (...) {
    refresh->failure = std::current_exception();
  }
  work.state->refreshing.remove(work.account);
  refresh->end();
}

QCoro::Task<QString> resultOf(std::shared_ptr<Refresh> refresh, std::stop_token stop) {
  if (!refresh->isOver) {
    const OneShotEvent event;
    refresh->waiting << event;
    const std::stop_callback wake(stop, [event] { event.happen(); });
    co_await event.happened();
  }
  throwIfStopped(stop);
  if (refresh->failure) std::rethrow_exception(refresh->failure);
  co_return refresh->token;
}

QCoro::Task<QString> tokenOf(SharedTokens state, DockWidget widget, OAuthProvider provider,
                             std::shared_ptr<ServiceSession> session, std::stop_token stop) {
  const QString account = Keychain::account(widget);
  if (const auto running = state->refreshing.value(account)) {
    const QString token = co_await resultOf(running, stop);
    co_return token;
  }
  std::optional<OAuthRecord> record;
  if (state->unsaved.contains(account)) {
    record = state->unsaved.value(account);
    try {
      co_await saveRecord(state, account, *record, provider.name);
    } catch (const DomainError&) {
      // It was said when it happened; the sign-in is good as long as the program runs.
    }
  } else {
    const std::optional<QString> kept = co_await state->keychain.read(account, stop);
    if (!kept) co_return QString();
    record = OAuthRecord::decode(*kept);
    if (!record) co_return *kept;
  }
  throwIfStopped(stop);
  if (record->provider != provider.id)
    throw DomainError::invalid(ServiceWords::tr("This saved sign-in belongs to a different provider."));
  if (record->isFresh(session->now())) co_return record->accessToken;
  auto refresh = state->refreshing.value(account);
  if (!refresh) {
    refresh = std::make_shared<Refresh>();
    state->refreshing.insert(account, refresh);
    runRefresh({state, account, *record, provider, session}, refresh);
  }
  const QString token = co_await resultOf(refresh, stop);
  co_return token;
}

}  // namespace

OAuthTokens::OAuthTokens(const Keychain& keychain) : state_(std::make_shared<OAuthTokenState>(keychain)) {}

QCoro::Task<QString> OAuthTokens::token(DockWidget widget, OAuthProvider provider,
                                        std::shared_ptr<ServiceSession> session, std::stop_token stop) const {
  return tokenOf(state_, std::move(widget), std::move(provider), std::move(session), stop);
}

}  // namespace tarnwick
