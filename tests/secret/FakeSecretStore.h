#pragma once

#include <optional>

#include "base/OneShotEvent.h"
#include "services/ports/SecretStore.h"

namespace tarnwick::test {

/// A keyring in memory, which answers at once or fails as it is told.
class FakeSecretStore final : public SecretStore {
 public:
  struct Kept {
    SecretAttributes which;
    QString label;
    QByteArray value;
  };
  QList<Kept> items;
  std::optional<SecretFailure::Status> failure;
  bool isKept = false;               ///< Whether it is known all the same that there is an item.
  SecretAttributes stubborn;         ///< Cannot be removed.
  std::optional<OneShotEvent> slow;  ///< What a write waits for, once it was asked for.
  int asked = 0;

  QCoro::Task<std::optional<SecretBytes>> read(SecretAttributes which) override {
    fail();
    for (const Kept& item : std::as_const(items)) {
      if (matches(item, which)) co_return bytesOf(item.value);
    }
    co_return std::nullopt;
  }
  QCoro::Task<> write(SecretAttributes which, QString label, SecretBytes value, Asking, std::stop_token) override {
    fail();
    if (slow) co_await slow->happened();
    items.removeIf([&](const Kept& item) { return matches(item, {which.service, which.account, {}}); });
    items.append({which, label, value.view().toByteArray()});
    co_return;
  }
  QCoro::Task<QList<SecretAttributes>> list(SecretAttributes which) override {
    fail();
    QList<SecretAttributes> found;
    for (const Kept& item : std::as_const(items)) {
      if (matches(item, which)) found.append(item.which);
    }
    co_return found;
  }
  QCoro::Task<> remove(SecretAttributes which) override {
    fail();
    if (which == stubborn) throw SecretFailure(SecretFailure::Refused);
    items.removeIf([&](const Kept& item) { return matches(item, which); });
    co_return;
  }
  QCoro::Task<> unlock(std::stop_token) override {
    fail();
    co_return;
  }
  QCoro::Task<bool> isLocked() override {
    fail();
    co_return false;
  }

 private:
  void fail() {
    ++asked;
    if (failure) throw SecretFailure(*failure, isKept);
  }
  static bool matches(const Kept& item, const SecretAttributes& which) {
    const auto agrees = [](const QString& one, const QString& wanted) { return wanted.isEmpty() || one == wanted; };
    return agrees(item.which.service, which.service) && agrees(item.which.account, which.account) &&
           agrees(item.which.store, which.store);
  }
  static SecretBytes bytesOf(const QByteArray& value) {
    SecretBytes bytes(static_cast<std::size_t>(value.size()));
    std::copy(value.begin(), value.end(), bytes.data());
    return bytes;
  }
};

}  // namespace tarnwick::test
