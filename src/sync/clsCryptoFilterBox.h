#pragma once

#include "platform/Crypto.h"

#include <QString>

namespace talnik {

/// Hashes, signs and encrypts a short text. An operation reports only through the fields: whatever fails leaves the
/// result empty and `Status` at 1. Bytes are held as text, one character of the 8-bit code page each.
class clsCryptoFilterBox {
 public:
  /// How the operation ended.
  enum : int { Running = 0, Finished = 1, SignatureIsGood = 2 };

  explicit clsCryptoFilterBox(Crypto& crypto);

  QString InBuffer;
  QString OutBuffer;
  QString Password;
  QString Signature;
  int Status = Finished;

  void GetHash();
  void Sign();
  /// `Status` is SignatureIsGood if `Signature` is that of `InBuffer`.
  void Validate();
  void Encrypt();
  void Decrypt();

 private:
  bool EnsureKeyContainer();
  void Crypt();

  Crypto& crypto_;
  bool hasKeys_;
};

}  // namespace talnik
