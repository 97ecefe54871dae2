#include "platform/linux/VirtualKeys.h"

#include <X11/keysym.h>

#include <algorithm>
#include <iterator>

namespace talnik {

namespace {

/// Keys whose codes follow each other in both worlds.
struct KeyRun {
  int first;
  int last;
  std::uint32_t symbol;
};

constexpr KeyRun KeyRuns[] = {
    {0x30, 0x39, XK_0},
    {0x41, 0x5a, XK_a},
    {0x60, 0x69, XK_KP_0},
    {0x70, 0x87, XK_F1},
};

struct OtherKey {
  int virtualKey;
  std::uint32_t symbol;
};

constexpr OtherKey OtherKeys[] = {
    {0x08, XK_BackSpace},  {0x09, XK_Tab},          {0x0d, XK_Return},     {0x13, XK_Pause},
    {0x14, XK_Caps_Lock},  {0x1b, XK_Escape},       {0x20, XK_space},      {0x21, XK_Prior},
    {0x22, XK_Next},       {0x23, XK_End},          {0x24, XK_Home},       {0x25, XK_Left},
    {0x26, XK_Up},         {0x27, XK_Right},        {0x28, XK_Down},       {0x2c, XK_Print},
    {0x2d, XK_Insert},     {0x2e, XK_Delete},       {0x5b, XK_Super_L},    {0x5c, XK_Super_R},
    {0x5d, XK_Menu},       {0x6a, XK_KP_Multiply},  {0x6b, XK_KP_Add},     {0x6d, XK_KP_Subtract},
    {0x6e, XK_KP_Decimal}, {0x6f, XK_KP_Divide},    {0x90, XK_Num_Lock},   {0x91, XK_Scroll_Lock},
    {0xba, XK_semicolon},  {0xbb, XK_equal},        {0xbc, XK_comma},      {0xbd, XK_minus},
    {0xbe, XK_period},     {0xbf, XK_slash},        {0xc0, XK_grave},      {0xdb, XK_bracketleft},
    {0xdc, XK_backslash},  {0xdd, XK_bracketright}, {0xde, XK_apostrophe},
};

}  // namespace

std::uint32_t KeySymbol(int virtualKey) {
  for (const KeyRun& run : KeyRuns) {
    if (virtualKey >= run.first && virtualKey <= run.last) {
      return run.symbol + static_cast<std::uint32_t>(virtualKey - run.first);
    }
  }
  const auto* found = std::find_if(std::begin(OtherKeys), std::end(OtherKeys),
                                   [virtualKey](const OtherKey& key) { return key.virtualKey == virtualKey; });
  return found == std::end(OtherKeys) ? 0 : found->symbol;
}

int VirtualKeyOfSymbol(std::uint32_t symbol) {
  for (const KeyRun& run : KeyRuns) {
    const auto length = static_cast<std::uint32_t>(run.last - run.first);
    if (symbol >= run.symbol && symbol - run.symbol <= length) return run.first + static_cast<int>(symbol - run.symbol);
  }
  const auto* found = std::find_if(std::begin(OtherKeys), std::end(OtherKeys),
                                   [symbol](const OtherKey& key) { return key.symbol == symbol; });
  return found == std::end(OtherKeys) ? 0 : found->virtualKey;
}

}  // namespace talnik
