#include "platform/linux/NettleCrypto.h"

#include <gtest/gtest.h>

namespace talnik::test {

TEST(NettleCrypto, KnowsTheAnswersOfThePublishedVectors) {
  const NettleCrypto crypto;
  EXPECT_EQ(crypto.Md5("").toHex(), "d41d8cd98f00b204e9800998ecf8427e");
  EXPECT_EQ(crypto.Md5("abc").toHex(), "900150983cd24fb0d6963f7d28e17f72");
  const struct {
    QByteArray key, text, crypted;
  } cases[] = {
      {"Key", "Plaintext", "bbf316e8d940af0ad3"},
      {"Wiki", "pedia", "1021bf0420"},
      {"Secret", "Attack at dawn", "45a01f645fc35b383552544b9bf5"},
  };
  for (const auto& known : cases) {
    EXPECT_EQ(crypto.Rc4(known.key, known.text)->toHex(), known.crypted) << known.key.constData();
  }
  EXPECT_FALSE(crypto.Rc4("", "text"));
  EXPECT_FALSE(crypto.Rc4(QByteArray(257, 'k'), "text"));
}

TEST(NettleCrypto, TakesOnlyItsOwnSignature) {
  NettleCrypto crypto;
  const QByteArray digest = crypto.Md5("Návštěva u lékaře");
  EXPECT_FALSE(crypto.Sign(digest)) << "no keys yet";
  ASSERT_TRUE(crypto.MakeKeys());
  const QByteArray signature = *crypto.Sign(digest);
  EXPECT_TRUE(crypto.Verify(digest, signature));
  EXPECT_FALSE(crypto.Verify(crypto.Md5("Návštěva"), signature));
  EXPECT_FALSE(crypto.Verify(digest, signature + 'x'));
  EXPECT_FALSE(crypto.Verify(digest, {}));
  NettleCrypto other;
  ASSERT_TRUE(other.MakeKeys());
  EXPECT_FALSE(other.Verify(digest, signature));
}

}  // namespace talnik::test
