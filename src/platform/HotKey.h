#pragma once

namespace talnik {

/// The keys that are held down with a hot key, as bits of its mask.
enum HotKeyShift { HotKeyShiftBit = 1, HotKeyCtrlBit = 2, HotKeyAltBit = 4 };

/// Two words in one number: a hot key is its virtual key code (low) and its mask (high).
constexpr int dw2IntegersToDWORD(int low, int high) {
  return static_cast<int>((static_cast<unsigned>(high) & 0xffffU) << 16 | (static_cast<unsigned>(low) & 0xffffU));
}
constexpr int LowWord(int value) {
  return value & 0xffff;
}
constexpr int HighWord(int value) {
  return value >> 16 & 0xffff;
}

/// Recognises the hot key among all keys that go down and up, whichever program they are for.
class HotKeyWatch {
 public:
  struct KeyRecord {
    int key = 0;  ///< virtual key code
    bool released = false;
    int heldShift = 0;  ///< mask of the shift keys that were down before the key
  };
  struct Verdict {
    bool swallow = false;  ///< the key is not for other programs
    bool show = false;     ///< the program is to come up
  };

  int HotKeyValue = 0;  ///< 0 or less: no hot key

  /// What is to be done with a key.
  Verdict KeyboardProc(const KeyRecord& record);
  /// Forgets what is held.
  void Forget() { HeldMask = HeldKey = 0; }

 private:
  int HeldMask = 0;  ///< collected since the last release
  int HeldKey = 0;   ///< the last key that went down
};

}  // namespace talnik
