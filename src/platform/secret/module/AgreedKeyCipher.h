#pragma once

#include <openssl/bn.h>

#include <memory>

#include "platform/secret/SecretCipher.h"

namespace tarnwick {

/// OpenSSL's. Numbers and keys are overwritten when they go.
class AgreedKeyCipher final : public SecretCipher {
 public:
  AgreedKeyCipher();

  QByteArray publicKey() const override;
  bool agree(const QByteArray& theirs) override;
  std::optional<EncryptedSecret> encrypt(const SecretBytes& secret) const override;
  std::optional<SecretBytes> decrypt(const EncryptedSecret& secret) const override;

 private:
  struct FreeNumber {
    void operator()(BIGNUM* number) const { BN_clear_free(number); }
  };
  using Number = std::unique_ptr<BIGNUM, FreeNumber>;

  /// base^ours modulo the prime; null where that cannot be computed.
  Number power(const BIGNUM* base) const;

  Number prime_;
  Number ours_;      ///< Null where there are no random numbers.
  SecretBytes key_;  ///< Empty until it is agreed on.
};

}  // namespace tarnwick
