#pragma once

#include <QByteArray>
#include <optional>

#include "base/SecretBytes.h"

namespace tarnwick {

/// What is sent of a secret.
struct EncryptedSecret {
  QByteArray vector;  ///< With which the encryption began.
  QByteArray bytes;
};

/// One end of an encrypted session with a keyring: Diffie-Hellman over the second Oakley group, HKDF with SHA-256 and
/// AES-128 in CBC mode. Lives in a module of its own, for the library that it needs. Used by one thread at a time.
class SecretCipher {
 public:
  /// As the keyring's interface calls it.
  static constexpr const char* kAlgorithm = "dh-ietf1024-sha256-aes128-cbc-pkcs7";

  SecretCipher() = default;
  SecretCipher(const SecretCipher&) = delete;
  SecretCipher& operator=(const SecretCipher&) = delete;
  virtual ~SecretCipher() = default;

  /// What the other end needs; empty where there are no random numbers.
  virtual QByteArray publicKey() const = 0;
  /// Takes the other end's; false for one that is no key of this group. Before the first secret.
  virtual bool agree(const QByteArray& theirs) = 0;
  virtual std::optional<EncryptedSecret> encrypt(const SecretBytes& secret) const = 0;
  /// Absent where that was not encrypted in this session.
  virtual std::optional<SecretBytes> decrypt(const EncryptedSecret& secret) const = 0;
};

/// The module and its entry point; the caller owns what it gives.
constexpr const char* kSecretModule = "tarnwick-secret.so";
constexpr const char* kSecretDoor = "tarnwickSecretCipher";
using MakeSecretCipher = SecretCipher* (*)();

}  // namespace tarnwick
