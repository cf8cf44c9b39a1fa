#include "platform/secret/module/AgreedKeyCipher.h"

#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/kdf.h>
#include <openssl/params.h>
#include <openssl/rand.h>

#include <array>
#include <limits>

namespace tarnwick {

namespace {

constexpr BN_ULONG kGenerator = 2;
constexpr std::size_t kKeyBytes = 16;
constexpr int kBlockBytes = 16;

template <auto free>
struct Freeing {
  template <class T>
  void operator()(T* object) const {
    free(object);
  }
};
using Context = std::unique_ptr<BN_CTX, Freeing<BN_CTX_free>>;
using Kdf = std::unique_ptr<EVP_KDF, Freeing<EVP_KDF_free>>;
using KdfContext = std::unique_ptr<EVP_KDF_CTX, Freeing<EVP_KDF_CTX_free>>;
using Cipher = std::unique_ptr<EVP_CIPHER_CTX, Freeing<EVP_CIPHER_CTX_free>>;

/// HKDF with SHA-256, without salt and purpose; empty where the library refuses.
SecretBytes derived(SecretBytes& shared) {
  const Kdf kdf(EVP_KDF_fetch(nullptr, OSSL_KDF_NAME_HKDF, nullptr));
  const KdfContext context(kdf ? EVP_KDF_CTX_new(kdf.get()) : nullptr);
  if (!context) return {};
  std::array digest{'S', 'H', 'A', '2', '5', '6', '\0'};
  const std::array parameters{OSSL_PARAM_construct_utf8_string(OSSL_KDF_PARAM_DIGEST, digest.data(), 0),
                              OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_KEY, shared.data(), shared.size()),
                              OSSL_PARAM_construct_end()};
  SecretBytes key(kKeyBytes);
  if (EVP_KDF_derive(context.get(), key.data(), key.size(), parameters.data()) != 1) return {};
  return key;
}

const unsigned char* bytesOf(const QByteArray& bytes) {
  return reinterpret_cast<const unsigned char*>(bytes.constData());
}
unsigned char* bytesOf(QByteArray& bytes) { return reinterpret_cast<unsigned char*>(bytes.data()); }

/// OpenSSL counts in int.
bool isShort(std::size_t size) { return size <= static_cast<std::size_t>(std::numeric_limits<int>::max()) / 2; }

}  // namespace

AgreedKeyCipher::AgreedKeyCipher() : prime_(BN_get_rfc2409_prime_1024(nullptr)), ours_(BN_secure_new()) {
  if (!prime_ || !ours_ || BN_priv_rand_range(ours_.get(), prime_.get()) != 1) {
    ours_.reset();
    return;
  }
  BN_set_flags(ours_.get(), BN_FLG_CONSTTIME);
}

AgreedKeyCipher::Number AgreedKeyCipher::power(const BIGNUM* base) const {
  const Context context(BN_CTX_secure_new());
  Number result(BN_secure_new());
  if (!ours_ || !context || !result) return nullptr;
  if (BN_mod_exp(result.get(), base, ours_.get(), prime_.get(), context.get()) != 1) return nullptr;
  return result;
}

QByteArray AgreedKeyCipher::publicKey() const {
  const Number generator(BN_new());
  if (!generator || BN_set_word(generator.get(), kGenerator) != 1) return {};
  const Number key = power(generator.get());
  if (!key) return {};
  QByteArray bytes(BN_num_bytes(prime_.get()), '\0');
  BN_bn2binpad(key.get(), bytesOf(bytes), static_cast<int>(bytes.size()));
  return bytes;
}

bool AgreedKeyCipher::agree(const QByteArray& theirs) {
  if (theirs.isEmpty() || !prime_ || theirs.size() > BN_num_bytes(prime_.get())) return false;
  const Number base(BN_bin2bn(bytesOf(theirs), static_cast<int>(theirs.size()), nullptr));
  // The numbers at the ends would give a key that everybody knows.
  const Number last(BN_dup(prime_.get()));
  if (!base || !last || BN_sub_word(last.get(), 1) != 1) return false;
  if (BN_is_zero(base.get()) || BN_is_one(base.get()) || BN_cmp(base.get(), last.get()) >= 0) return false;
  const Number common = power(base.get());
  if (!common) return false;
  // Both ends derive from as many bytes as the prime has, zeros in front included.
  SecretBytes shared(static_cast<std::size_t>(BN_num_bytes(prime_.get())));
  if (BN_bn2binpad(common.get(), shared.data(), static_cast<int>(shared.size())) < 0) return false;
  key_ = derived(shared);
  return !key_.isEmpty();
}

std::optional<EncryptedSecret> AgreedKeyCipher::encrypt(const SecretBytes& secret) const {
  const Cipher cipher(EVP_CIPHER_CTX_new());
  if (!cipher || key_.isEmpty() || !isShort(secret.size())) return std::nullopt;
  EncryptedSecret made{QByteArray(kBlockBytes, '\0'),
                       QByteArray(static_cast<qsizetype>(secret.size()) + kBlockBytes, '\0')};
  int first = 0;
  int rest = 0;
  if (RAND_bytes(bytesOf(made.vector), kBlockBytes) != 1 ||
      EVP_EncryptInit_ex2(cipher.get(), EVP_aes_128_cbc(), key_.data(), bytesOf(made.vector), nullptr) != 1 ||
      EVP_EncryptUpdate(cipher.get(), bytesOf(made.bytes), &first, secret.data(), static_cast<int>(secret.size())) !=
          1 ||
      EVP_EncryptFinal_ex(cipher.get(), bytesOf(made.bytes) + first, &rest) != 1)
    return std::nullopt;
  made.bytes.truncate(first + rest);
  return made;
}

std::optional<SecretBytes> AgreedKeyCipher::decrypt(const EncryptedSecret& secret) const {
  const Cipher cipher(EVP_CIPHER_CTX_new());
  const auto size = static_cast<std::size_t>(secret.bytes.size());
  if (!cipher || key_.isEmpty() || secret.vector.size() != kBlockBytes || !isShort(size)) return std::nullopt;
  SecretBytes clear(size + kBlockBytes);
  int first = 0;
  int rest = 0;
  if (EVP_DecryptInit_ex2(cipher.get(), EVP_aes_128_cbc(), key_.data(), bytesOf(secret.vector), nullptr) != 1 ||
      EVP_DecryptUpdate(cipher.get(), clear.data(), &first, bytesOf(secret.bytes), static_cast<int>(size)) != 1 ||
      EVP_DecryptFinal_ex(cipher.get(), clear.data() + first, &rest) != 1)
    return std::nullopt;
  clear.shorten(static_cast<std::size_t>(first + rest));
  return clear;
}

}  // namespace tarnwick
