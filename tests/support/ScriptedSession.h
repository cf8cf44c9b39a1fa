#pragma once

#include <QCoroTask>
#include <QTimeZone>
#include <coroutine>
#include <exception>
#include <memory>
#include <utility>

#include "base/Cancelled.h"
#include "services/ServiceSession.h"

namespace tarnwick::test {

/// A service, and a keyring, that answer when the test says so. All that is asked is recorded in `asked`, the
/// credential included.
class ScriptedSession final : public ServiceSession {
 public:
  struct Turn {
    ServiceCall call;  ///< Without a url for a credential.
    QJsonValue answer;
    std::exception_ptr fault;
    bool isOver = false;
    std::coroutine_handle<> waiting;

    void end() {
      isOver = true;
      if (waiting) std::exchange(waiting, {}).resume();
    }
  };

  QList<std::shared_ptr<Turn>> asked;
  /// Ignores that it is asked to stop, as a service in the middle of its answer.
  bool isDeaf = false;
  /// Why the keyring cannot be asked for a credential that nobody needs.
  QString unread;
  bool hasNoKeyring = false;
  QDateTime time{QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc()};

  QCoro::Task<QJsonValue> json(ServiceCall call, std::stop_token stop) override {
    throwIfStopped(stop);
    const auto turn = std::make_shared<Turn>();
    turn->call = std::move(call);
    asked << turn;
    const std::stop_callback wake(stop, [this, turn] {
      if (!isDeaf) turn->end();
    });
    const End end{turn};
    co_await end;
    throwIfStopped(stop);
    if (turn->fault) std::rethrow_exception(turn->fault);
    co_return turn->call.pick ? turn->call.pick(turn->answer) : turn->answer;
  }
  QCoro::Task<QString> credential(DockWidget, std::stop_token stop) override {
    ServiceCall none;
    const QJsonValue kept = co_await json(std::move(none), stop);
    co_return kept.toString();
  }
  QCoro::Task<MaybeCredential> credentialIfAny(DockWidget widget, std::stop_token stop) override {
    MaybeCredential found;
    found.unread = unread;
    found.hasNoKeyring = hasNoKeyring;
    if (unread.isEmpty()) found.value = co_await credential(std::move(widget), stop);
    co_return found;
  }
  QDateTime now() const override { return time; }

  /// The last that was asked is answered, or fails.
  void answer(const QJsonValue& value) {
    const auto turn = asked.constLast();
    turn->answer = value;
    turn->end();
  }
  template <class Error>
  void fail(const Error& error) {
    const auto turn = asked.constLast();
    turn->fault = std::make_exception_ptr(error);
    turn->end();
  }

 private:
  /// Awaited: the end of a turn. The compiler may keep a copy of what is awaited, so it holds nothing of its own.
  struct End {
    std::shared_ptr<Turn> turn;

    bool await_ready() const noexcept { return turn->isOver; }
    void await_suspend(std::coroutine_handle<> coroutine) const { turn->waiting = coroutine; }
    void await_resume() const noexcept {}
  };
};

}  // namespace tarnwick::test
