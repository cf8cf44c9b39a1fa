#include "platform/secret/SecretPrompt.h"

#include <memory>

#include "base/Cancelled.h"

namespace tarnwick {

using namespace Qt::StringLiterals;
using namespace secretservice;

/// Takes the question back.
struct SecretPrompt::Withdrawal {
  QDBusConnection bus;
  QString path;
  OneShotEvent ended;

  void operator()() const {
    auto dismissal = QDBusMessage::createMethodCall(kName, path, kPrompt, u"Dismiss"_s);
    dismissal.setAutoStartService(false);
    bus.send(dismissal);
    ended.happen();
  }
};

SecretPrompt::SecretPrompt(const QDBusConnection& bus, const QString& owner, const QString& path)
    : bus_(bus), path_(path) {
  bus_.connect(owner, path, kPrompt, u"Completed"_s, this, SLOT(completed(bool, QDBusVariant)));
  bus_.connect(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"NameOwnerChanged"_s,
               {QString(kName)}, QString(), this, SLOT(ownerChanged(QString, QString, QString)));
  bus_.connect(QString(), u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s, this,
               SLOT(busLost()));
}

QCoro::Task<> SecretPrompt::show(SecretTalk talk, QString owner, QString path, std::stop_token stop) {
  if (isNowhere(path)) co_return;
  throwIfStopped(stop);
  const std::unique_ptr<SecretPrompt, DeleteLater> prompt(new SecretPrompt(talk.bus, owner, path));
  // It has no window of ours to stand before.
  const QVariantList noWindow{QString()};
  co_await secretCall(talk, path, kPrompt, "Prompt"_L1, noWindow);
  const Withdrawal withdrawal{talk.bus, path, prompt->ended_};
  const std::stop_callback<Withdrawal> withdraw(stop, withdrawal);
  co_await prompt->ended_.happened();
  throwIfStopped(stop);
  if (prompt->failure_) throw SecretFailure(*prompt->failure_);
}

void SecretPrompt::end(std::optional<SecretFailure::Status> failure) {
  if (ended_.isOver()) return;
  failure_ = failure;
  ended_.happen();
}

void SecretPrompt::completed(bool dismissed, const QDBusVariant& result) {
  Q_UNUSED(result)
  end(dismissed ? std::optional(SecretFailure::Dismissed) : std::nullopt);
}

void SecretPrompt::ownerChanged(const QString& name, const QString& before, const QString& after) {
  Q_UNUSED(name)
  Q_UNUSED(before)
  Q_UNUSED(after)
  // Whoever comes in its place knows nothing of the question.
  end(SecretFailure::NoService);
}

void SecretPrompt::busLost() { end(SecretFailure::NoService); }

}  // namespace tarnwick
