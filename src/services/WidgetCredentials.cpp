#include "services/WidgetCredentials.h"

#include "base/DomainError.h"

namespace tarnwick {

namespace {

QCoro::Task<> removeAndTell(Keychain keychain, QList<QUuid> widgets, CredentialKeeping::Failed failed,
                            std::stop_token stop) {
  QString message;
  try {
    co_await keychain.deleteAll(widgets);
  } catch (const DomainError& failure) {
    message = failure.message();
  }
  if (!message.isEmpty() && !stop.stop_requested()) failed(message);
}

QCoro::Task<> sweepSilently(Keychain keychain, QList<QUuid> keeping) {
  try {
    co_await keychain.removeOrphans(keeping);
  } catch (const DomainError&) {
    // A keyring that is locked or not there yet is swept at another start.
  }
}

}  // namespace

WidgetCredentials::WidgetCredentials(const Keychain& keychain, std::shared_ptr<PerplexityUsage> perplexity)
    : keychain_(keychain), perplexity_(std::move(perplexity)) {}

WidgetCredentials::~WidgetCredentials() { stop_.request_stop(); }

void WidgetCredentials::remove(const QList<QUuid>& widgets, Failed failed) {
  if (!widgets.isEmpty()) removeAndTell(keychain_, widgets, std::move(failed), stop_.get_token());
}

void WidgetCredentials::removeOrphans(const QList<QUuid>& keeping) { sweepSilently(keychain_, keeping); }

void WidgetCredentials::endSession() {
  if (perplexity_) perplexity_->forget();
}

}  // namespace tarnwick
