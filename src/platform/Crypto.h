#pragma once

#include <QByteArray>

#include <optional>

namespace talnik {

/// The digests, ciphers and signatures of the system.
class Crypto {
 public:
  virtual ~Crypto() = default;

  /// The 16 bytes of the MD5 digest.
  virtual QByteArray Md5(const QByteArray& text) const = 0;

  /// RC4 with a key of 1 to 256 bytes, both ways. Nothing for another key.
  virtual std::optional<QByteArray> Rc4(const QByteArray& key, const QByteArray& text) const = 0;

  /// Makes a pair of keys for signatures, which lives as long as this object. False if there is no randomness.
  virtual bool MakeKeys() = 0;

  /// The RSA signature of an MD5 digest; nothing without keys.
  virtual std::optional<QByteArray> Sign(const QByteArray& digest) const = 0;

  /// True if the signature was made of that digest with these keys.
  virtual bool Verify(const QByteArray& digest, const QByteArray& signature) const = 0;
};

}  // namespace talnik
