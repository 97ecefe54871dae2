#include "platform/linux/NettleCrypto.h"
#include "sync/clsCryptoFilterBox.h"

#include <gtest/gtest.h>

namespace talnik::test {

TEST(CryptoFilterBox, HidesSignsAndFailsInSilence) {
  NettleCrypto crypto;
  clsCryptoFilterBox box(crypto);
  const QString text = u"Příliš žluťoučký kůň"_qs;
  for (const QString& password : {QString(), u"heslo"_qs}) {
    box.Password = password;
    box.InBuffer = text;
    box.Encrypt();
    EXPECT_NE(box.OutBuffer, text);
    box.InBuffer = box.OutBuffer;
    box.Decrypt();
    EXPECT_EQ(box.OutBuffer, text);
    box.Password = u"jiné"_qs;
    box.Decrypt();
    EXPECT_NE(box.OutBuffer, text);
    EXPECT_EQ(box.Status, clsCryptoFilterBox::Finished);
  }
  box.InBuffer = text;
  box.Sign();
  box.Validate();
  EXPECT_EQ(box.Status, clsCryptoFilterBox::SignatureIsGood);
  box.InBuffer += u'.';
  box.Validate();
  EXPECT_EQ(box.Status, clsCryptoFilterBox::Finished);
  box.GetHash();
  EXPECT_EQ(box.OutBuffer.size(), 16);
  box.InBuffer = u"Ω"_qs;  // not in the code page
  box.GetHash();
  EXPECT_EQ(box.OutBuffer, QString());
}

}  // namespace talnik::test
