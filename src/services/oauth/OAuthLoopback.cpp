#include "services/oauth/OAuthLoopback.h"

#include <QCoroTask>
#include <variant>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "base/OneShotEvent.h"
#include "services/ServiceWords.h"
#include "services/oauth/OAuthContract.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

/// Shared with who waits.
struct OAuthLoopbackState {
  explicit OAuthLoopbackState(Scheduler& some) : scheduler(some) {}

  /// The first result counts. Whoever waits goes on in a turn of its own, so that the browser gets its answer before.
  void complete(std::variant<QString, std::exception_ptr> result) {
    if (completed) return;
    completed = true;
    pending = std::move(result);
    if (listener) listener->close();
    timeout = scheduler.after(0, [event = waiting] { event.happen(); });
  }
  QByteArray answer(const std::optional<QByteArray>& head);

  Scheduler& scheduler;
  std::unique_ptr<LoopbackServer> listener;
  OneShotEvent waiting;
  JobHandle timeout;  ///< The limit of time; once completed, the turn in which that is told.
  QString expectedState;
  quint16 port = 0;
  std::variant<QString, std::exception_ptr> pending;
  bool completed = false;
};

namespace {

constexpr QLatin1StringView kAddress{"127.0.0.1"};
constexpr QByteArrayView kReceived{"Sign-in received. You can close this tab and return to Tarnwick."};
constexpr QByteArrayView kRefused{"This sign-in callback was not accepted. Return to Tarnwick and try again."};

QByteArray reply(QByteArrayView status, QByteArrayView text) {
  return "HTTP/1.1 " + status.toByteArray() +
         "\r\nContent-Type: text/plain; charset=utf-8\r\nCache-Control: no-store\r\nContent-Length: " +
         QByteArray::number(text.size()) + "\r\nConnection: close\r\n\r\n" + text.toByteArray();
}

DomainError invalidCallback() { return DomainError::invalid(ServiceWords::tr("Invalid sign-in callback.")); }

/// What the browser asks for. Throws for a request that is none of ours: a page that reaches this port by another name
/// says so in the line that names the host.
QString targetOf(const QByteArray& head, quint16 port) {
  const QByteArrayList lines = head.split('\n');
  const QByteArrayList words = lines.first().trimmed().split(' ');
  if (words.size() < 2 || words.first() != "GET") throw invalidCallback();
  const QByteArray host = QString(kAddress + u':' + QString::number(port)).toLatin1();
  int hosts = 0;
  for (const QByteArray& line : lines.sliced(1)) {
    if (!line.toLower().startsWith("host:")) continue;
    if (line.mid(5).trimmed() != host || ++hosts > 1) throw invalidCallback();
  }
  if (hosts == 0) throw invalidCallback();
  return QString::fromLatin1(words.at(1));
}

QCoro::Task<QString> codeOf(std::shared_ptr<OAuthLoopbackState> state, std::stop_token stop) {
  const OneShotEvent event = state->waiting;
  {
    const std::stop_callback wake(stop, [event] { event.happen(); });
    co_await event.happened();
  }
  throwIfStopped(stop);
  if (const auto* error = std::get_if<std::exception_ptr>(&state->pending)) std::rethrow_exception(*error);
  co_return std::get<QString>(state->pending);
}

}  // namespace

QByteArray OAuthLoopbackState::answer(const std::optional<QByteArray>& head) {
  const QByteArray refused = reply("400 Bad Request", kRefused);
  if (!head || completed) return refused;
  try {
    complete(OAuthContract::callback(targetOf(*head, port), expectedState));
  } catch (const OAuthDeclined&) {
    complete(std::current_exception());
    return refused;
  } catch (const DomainError&) {
    return refused;  // A stray request spoils no attempt.
  }
  return reply("200 OK", kReceived);
}

OAuthLoopback::OAuthLoopback(const MakeLoopbackServer& make, Scheduler& scheduler)
    : state_(std::make_shared<OAuthLoopbackState>(scheduler)) {
  if (make) state_->listener = make();
}

OAuthLoopback::~OAuthLoopback() {
  state_->listener.reset();
  if (state_->completed) return;
  state_->completed = true;
  state_->pending = std::make_exception_ptr(Cancelled());
  state_->timeout.reset();
  state_->waiting.happen();
}

QString OAuthLoopback::redirect(quint16 port) { return "http://%1:%2/callback"_L1.arg(kAddress).arg(port); }

QString OAuthLoopback::start(quint16 port, const QString& state) {
  state_->expectedState = state;
  const auto answer = [shared = state_.get()](const std::optional<QByteArray>& head) { return shared->answer(head); };
  const std::optional<quint16> found = state_->listener ? state_->listener->listen(port, answer) : std::nullopt;
  if (!found) {
    throw DomainError::invalid(ServiceWords::tr(
        "The local sign-in port is unavailable. Close the other connection or choose a different port."));
  }
  state_->port = *found;
  return redirect(*found);
}

QCoro::Task<QString> OAuthLoopback::code(std::stop_token stop) {
  if (!state_->completed) {
    const auto expire = [shared = state_.get()] {
      shared->complete(std::make_exception_ptr(
          DomainError::invalid(ServiceWords::tr("Sign-in timed out. Connect again when you’re ready."))));
    };
    state_->timeout = state_->scheduler.after(kSeconds, expire);
  }
  return codeOf(state_, std::move(stop));
}

void OAuthLoopback::stop(const std::exception_ptr& error) { state_->complete(error); }

}  // namespace tarnwick
