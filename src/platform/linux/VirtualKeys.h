#pragma once

#include <cstdint>

namespace talnik {

/// The X key symbol of a virtual key code (letters, digits, function keys and the common others); 0 for none.
std::uint32_t KeySymbol(int virtualKey);
/// The virtual key code of an X key symbol; 0 for none.
int VirtualKeyOfSymbol(std::uint32_t symbol);

}  // namespace talnik
