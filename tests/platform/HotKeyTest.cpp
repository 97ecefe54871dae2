#include "platform/HotKey.h"

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

namespace talnik::test {

namespace {

constexpr int CtrlAltT = HotKeyCtrlBit << 16 | HotKeyAltBit << 16 | 'T';

int MaskOf(const QString& held) {
  return (held.contains(u'S') ? HotKeyShiftBit : 0) | (held.contains(u'C') ? HotKeyCtrlBit : 0) |
         (held.contains(u'A') ? HotKeyAltBit : 0);
}

/// Plays keys: "+T:CA" goes down while Ctrl and Alt are held, "-T" goes up; "c", "a", "s" are the shift keys
/// themselves. A letter for each: "s" swallowed, "S" swallowed and shown, "." let through.
std::string Play(int hotKey, const char* keys) {
  HotKeyWatch watch;
  watch.HotKeyValue = hotKey;
  std::string verdicts;
  for (const QString& key : QString::fromLatin1(keys).split(u' ')) {
    const HotKeyWatch::Verdict verdict = watch.KeyboardProc(
        {.key = key[1].unicode(), .released = key[0] == u'-', .heldShift = MaskOf(key.section(u':', 1))});
    verdicts += verdict.show ? 'S' : verdict.swallow ? 's' : '.';
  }
  return verdicts;
}

}  // namespace

TEST(HotKeyWatch, SwallowsTheCombinationAndShowsAtItsRelease) {
  const struct {
    int hotKey;
    const char* keys;
    const char* verdicts;
  } cases[] = {
      {CtrlAltT, "+c +a:C +T:CA -T -a -c", "..sS.."},
      {CtrlAltT, "+c +a:C +T:CA +T:CA +T:CA -T", "..sssS"},
      {CtrlAltT, "+c +a:C +T:CA -T +T:CA -T", "..sSsS"},
      {CtrlAltT, "+c +a:C +T:CA -a -T -c", "..sS.."},
      {CtrlAltT, "+c +a:C +T:CA +X:CA -X -T", "..s..."},
      {CtrlAltT, "+c +a:C +s:CA +T:CAS -T", "....."},
      {CtrlAltT, "+c +a:C +s:CA -s +T:CA -T", "....sS"},
      {CtrlAltT, "+c +T:C -T +T -T", "....."},
      {'T', "+T -T +c +T:C -T", "sS..."},
      {0, "+c +a:C +T:CA -T", "...."},
      {-CtrlAltT, "+c +a:C +T:CA -T", "...."},
  };
  for (const auto& test : cases) EXPECT_EQ(Play(test.hotKey, test.keys), test.verdicts) << test.keys;
}

}  // namespace talnik::test
