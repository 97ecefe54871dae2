#include "sync/clsCryptoFilterBox.h"

#include "platform/Windows1250.h"

namespace talnik {

clsCryptoFilterBox::clsCryptoFilterBox(Crypto& crypto) : crypto_(crypto), hasKeys_(EnsureKeyContainer()) {}

bool clsCryptoFilterBox::EnsureKeyContainer() {
  return crypto_.MakeKeys();
}

void clsCryptoFilterBox::GetHash() {
  Status = Running;
  OutBuffer.clear();
  if (const auto text = ToWindows1250(InBuffer)) OutBuffer = FromWindows1250(crypto_.Md5(*text));
  Status = Finished;
}

void clsCryptoFilterBox::Sign() {
  Status = Running;
  Signature.clear();
  const auto text = ToWindows1250(InBuffer);
  if (text && hasKeys_) {
    if (const auto signature = crypto_.Sign(crypto_.Md5(*text))) Signature = FromWindows1250(*signature);
  }
  Status = Finished;
}

void clsCryptoFilterBox::Validate() {
  Status = Running;
  const auto text = ToWindows1250(InBuffer);
  const auto signature = ToWindows1250(Signature);
  const bool good = text && signature && crypto_.Verify(crypto_.Md5(*text), *signature);
  Status = good ? SignatureIsGood : Finished;
}

void clsCryptoFilterBox::Encrypt() {
  Crypt();
}

void clsCryptoFilterBox::Decrypt() {
  Crypt();
}

/// The stream cipher is its own inverse.
void clsCryptoFilterBox::Crypt() {
  Status = Running;
  OutBuffer.clear();
  const auto password = ToWindows1250(Password);
  const auto text = ToWindows1250(InBuffer);
  if (password && text) {
    if (const auto crypted = crypto_.Rc4(crypto_.Md5(*password), *text)) OutBuffer = FromWindows1250(*crypted);
  }
  Status = Finished;
}

}  // namespace talnik
