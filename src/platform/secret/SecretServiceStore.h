#pragma once

#include <QDBusConnection>
#include <chrono>

#include "services/ports/SecretStore.h"

namespace tarnwick {

/// The Secret Service of the session, whichever program is it. Secrets travel encrypted. Between two operations nothing
/// is kept: no session, no path, no value.
class SecretServiceStore final : public SecretStore {
 public:
  static constexpr std::chrono::seconds kPatience{5};

  explicit SecretServiceStore(const QDBusConnection& session, std::chrono::milliseconds patience = kPatience);

  QCoro::Task<std::optional<SecretBytes>> read(SecretAttributes which) override;
  QCoro::Task<> write(SecretAttributes which, QString label, SecretBytes value, Asking asking,
                      std::stop_token stop) override;
  QCoro::Task<QList<SecretAttributes>> list(SecretAttributes which) override;
  QCoro::Task<> remove(SecretAttributes which) override;
  QCoro::Task<> unlock(std::stop_token stop) override;
  QCoro::Task<bool> isLocked() override;

 private:
  QDBusConnection session_;
  std::chrono::milliseconds patience_;
};

}  // namespace tarnwick
