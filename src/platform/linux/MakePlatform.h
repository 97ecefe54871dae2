#pragma once

#include "platform/Platform.h"

namespace talnik {

/// The outside world of this machine. Call it when the application exists. TALNIK_VOICE, TALNIK_BRAILLE and
/// TALNIK_SOUND (recording too) with the value "none" in the environment leave these out.
Platform MakePlatform();

}  // namespace talnik
