#include "platform/linux/NettleCrypto.h"

#include <QRandomGenerator>

#include <nettle/arcfour.h>
#include <nettle/bignum.h>
#include <nettle/md5.h>
#include <nettle/rsa.h>

#include <algorithm>
#include <cstdint>

namespace talnik {

namespace {

constexpr unsigned KeyBits = 2048;

const std::uint8_t* Bytes(const QByteArray& text) {
  return reinterpret_cast<const std::uint8_t*>(text.constData());
}

std::uint8_t* Bytes(QByteArray& text) {
  return reinterpret_cast<std::uint8_t*>(text.data());
}

void RandomBytes(void*, std::size_t length, std::uint8_t* bytes) {
  std::generate(bytes, bytes + length,
                [] { return static_cast<std::uint8_t>(QRandomGenerator::system()->generate() & 0xFFu); });
}

struct Number {
  Number() { mpz_init(value); }
  ~Number() { mpz_clear(value); }
  Number(const Number&) = delete;
  Number& operator=(const Number&) = delete;

  mpz_t value;
};

}  // namespace

struct NettleCrypto::Keys {
  Keys() {
    rsa_public_key_init(&open);
    rsa_private_key_init(&secret);
  }
  ~Keys() {
    rsa_public_key_clear(&open);
    rsa_private_key_clear(&secret);
  }
  Keys(const Keys&) = delete;
  Keys& operator=(const Keys&) = delete;

  rsa_public_key open{};
  rsa_private_key secret{};
};

NettleCrypto::NettleCrypto() = default;
NettleCrypto::~NettleCrypto() = default;

QByteArray NettleCrypto::Md5(const QByteArray& text) const {
  md5_ctx context;
  md5_init(&context);
  md5_update(&context, static_cast<std::size_t>(text.size()), Bytes(text));
  QByteArray digest(MD5_DIGEST_SIZE, Qt::Uninitialized);
  md5_digest(&context, MD5_DIGEST_SIZE, Bytes(digest));
  return digest;
}

std::optional<QByteArray> NettleCrypto::Rc4(const QByteArray& key, const QByteArray& text) const {
  if (key.size() < ARCFOUR_MIN_KEY_SIZE || key.size() > ARCFOUR_MAX_KEY_SIZE) return std::nullopt;
  arcfour_ctx context;
  arcfour_set_key(&context, static_cast<std::size_t>(key.size()), Bytes(key));
  QByteArray crypted(text.size(), Qt::Uninitialized);
  arcfour_crypt(&context, static_cast<std::size_t>(text.size()), Bytes(crypted), Bytes(text));
  return crypted;
}

bool NettleCrypto::MakeKeys() {
  auto keys = std::make_unique<Keys>();
  mpz_set_ui(keys->open.e, 65537);
  if (rsa_generate_keypair(&keys->open, &keys->secret, nullptr, RandomBytes, nullptr, nullptr, KeyBits, 0) == 0) {
    return false;
  }
  keys_ = std::move(keys);
  return true;
}

std::optional<QByteArray> NettleCrypto::Sign(const QByteArray& digest) const {
  if (!keys_ || digest.size() != MD5_DIGEST_SIZE) return std::nullopt;
  Number number;
  if (rsa_md5_sign_digest_tr(&keys_->open, &keys_->secret, nullptr, RandomBytes, Bytes(digest), number.value) == 0) {
    return std::nullopt;
  }
  QByteArray signature(static_cast<qsizetype>(keys_->open.size), Qt::Uninitialized);
  nettle_mpz_get_str_256(keys_->open.size, Bytes(signature), number.value);
  return signature;
}

bool NettleCrypto::Verify(const QByteArray& digest, const QByteArray& signature) const {
  if (!keys_ || digest.size() != MD5_DIGEST_SIZE) return false;
  Number number;
  nettle_mpz_set_str_256_u(number.value, static_cast<std::size_t>(signature.size()), Bytes(signature));
  return rsa_md5_verify_digest(&keys_->open, Bytes(digest), number.value) != 0;
}

}  // namespace talnik
