#pragma once

#include <stop_token>

#include "facilities/StoreCalls.h"
#include "services/Keychain.h"
#include "services/PerplexityUsage.h"

namespace tarnwick {

/// What the store does with the credentials of widgets that go. Nothing waits for the keyring: what the end of the
/// program cuts off is left to the sweep of the next start.
class WidgetCredentials final : public CredentialKeeping {
 public:
  /// `perplexity` may be null.
  explicit WidgetCredentials(const Keychain& keychain, std::shared_ptr<PerplexityUsage> perplexity = nullptr);
  ~WidgetCredentials() override;

  void remove(const QList<QUuid>& widgets, Failed failed) override;
  void removeOrphans(const QList<QUuid>& keeping) override;
  void endSession() override;

 private:
  Keychain keychain_;
  std::shared_ptr<PerplexityUsage> perplexity_;
  std::stop_source stop_;  ///< From its request on nobody is told anything.
};

}  // namespace tarnwick
