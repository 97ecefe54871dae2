#pragma once

#include "platform/Crypto.h"

#include <memory>

namespace talnik {

class NettleCrypto : public Crypto {
 public:
  NettleCrypto();
  ~NettleCrypto() override;

  QByteArray Md5(const QByteArray& text) const override;
  std::optional<QByteArray> Rc4(const QByteArray& key, const QByteArray& text) const override;
  bool MakeKeys() override;
  std::optional<QByteArray> Sign(const QByteArray& digest) const override;
  bool Verify(const QByteArray& digest, const QByteArray& signature) const override;

 private:
  struct Keys;
  std::unique_ptr<Keys> keys_;  ///< empty until they are made
};

}  // namespace talnik
