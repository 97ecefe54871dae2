#pragma once

#include "shell/ControlEvents.h"

#include <QString>

namespace talnik {

/// A hot key as it is shown: "CTRL + ", "ALT + ", "SHIFT + " as far as the mask has them, then the key. Empty for no
/// key.
QString HotKeyText(int key, int mask);

/// What the user is told of a hot key that cannot be had.
QString HotKeyRefusedText(int hotKey);

/// The mask of the shift keys that are held.
int HotKeyMask(Qt::KeyboardModifiers shift);

/// The virtual key code of a key by what it types; 0 for a key that has none.
int VirtualKeyOf(const Key& key);

}  // namespace talnik
