#include "platform/HotKey.h"

namespace talnik {

/// The program comes up at the release, so that this key does not reach the window that gets the keyboard next.
HotKeyWatch::Verdict HotKeyWatch::KeyboardProc(const KeyRecord& record) {
  if (HotKeyValue <= 0) return {};
  if (!record.released) {
    HeldMask |= record.heldShift;
    HeldKey = record.key;
  }
  const bool matches = dw2IntegersToDWORD(HeldKey, HeldMask) == HotKeyValue;
  if (record.released) Forget();
  return {.swallow = matches, .show = matches && record.released};
}

}  // namespace talnik
