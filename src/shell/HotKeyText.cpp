#include "shell/HotKeyText.h"

#include "platform/HotKey.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace talnik {

namespace {

constexpr int VirtualF1 = 0x70;
constexpr int VirtualF24 = 0x87;
constexpr int VirtualNum0 = 0x60;
constexpr int VirtualNum9 = 0x69;

/// The keys whose code is no letter or digit. Their codes are the numbers of other characters, so each is called by
/// its name.
struct NamedKey {
  int virtualKey;
  int key;  ///< Qt::Key
  bool keypad;
  const char* name;  ///< to be translated
};

constexpr NamedKey NamedKeys[] = {
    {0x08, Qt::Key_Backspace, false, "BACKSPACE"},
    {0x09, Qt::Key_Tab, false, "TAB"},
    {0x0d, Qt::Key_Return, false, "ENTER"},
    {0x10, Qt::Key_Shift, false, "SHIFT"},
    {0x11, Qt::Key_Control, false, "CTRL"},
    {0x12, Qt::Key_Alt, false, "ALT"},
    {0x13, Qt::Key_Pause, false, "PAUSE"},
    {0x14, Qt::Key_CapsLock, false, "CAPS LOCK"},
    {0x1b, Qt::Key_Escape, false, "ESCAPE"},
    {0x20, Qt::Key_Space, false, QT_TRANSLATE_NOOP("HotKeyText", "MEZERNÍK")},
    {0x21, Qt::Key_PageUp, false, "PAGE UP"},
    {0x22, Qt::Key_PageDown, false, "PAGE DOWN"},
    {0x23, Qt::Key_End, false, "END"},
    {0x24, Qt::Key_Home, false, "HOME"},
    {0x25, Qt::Key_Left, false, QT_TRANSLATE_NOOP("HotKeyText", "ŠIPKA VLEVO")},
    {0x26, Qt::Key_Up, false, QT_TRANSLATE_NOOP("HotKeyText", "ŠIPKA NAHORU")},
    {0x27, Qt::Key_Right, false, QT_TRANSLATE_NOOP("HotKeyText", "ŠIPKA VPRAVO")},
    {0x28, Qt::Key_Down, false, QT_TRANSLATE_NOOP("HotKeyText", "ŠIPKA DOLŮ")},
    {0x2c, Qt::Key_Print, false, "PRINT SCREEN"},
    {0x2d, Qt::Key_Insert, false, "INSERT"},
    {0x2e, Qt::Key_Delete, false, "DELETE"},
    {0x5d, Qt::Key_Menu, false, "MENU"},
    {0x6a, Qt::Key_Asterisk, true, "NUM *"},
    {0x6b, Qt::Key_Plus, true, "NUM +"},
    {0x6d, Qt::Key_Minus, true, "NUM -"},
    {0x6e, Qt::Key_Period, true, "NUM ."},
    {0x6f, Qt::Key_Slash, true, "NUM /"},
    {0x90, Qt::Key_NumLock, false, "NUM LOCK"},
    {0x91, Qt::Key_ScrollLock, false, "SCROLL LOCK"},
    {0xba, Qt::Key_Semicolon, false, ";"},
    {0xbb, Qt::Key_Equal, false, "="},
    {0xbc, Qt::Key_Comma, false, ","},
    {0xbd, Qt::Key_Minus, false, "-"},
    {0xbe, Qt::Key_Period, false, "."},
    {0xbf, Qt::Key_Slash, false, "/"},
    {0xc0, Qt::Key_QuoteLeft, false, "`"},
    {0xdb, Qt::Key_BracketLeft, false, "["},
    {0xdc, Qt::Key_Backslash, false, "\\"},
    {0xdd, Qt::Key_BracketRight, false, "]"},
    {0xde, Qt::Key_Apostrophe, false, "'"},
};

bool IsLetterOrDigit(int key) {
  return (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9');
}

QString KeyText(int key) {
  if (key >= VirtualF1 && key <= VirtualF24) return u"F"_qs + QString::number(key - VirtualF1 + 1);
  if (key >= VirtualNum0 && key <= VirtualNum9) return u"NUM "_qs + QString::number(key - VirtualNum0);
  const auto* named = std::find_if(std::begin(NamedKeys), std::end(NamedKeys),
                                   [key](const NamedKey& row) { return row.virtualKey == key; });
  if (named != std::end(NamedKeys)) return QCoreApplication::translate("HotKeyText", named->name);
  return QString(QChar(key)).toUpper();
}

}  // namespace

QString HotKeyText(int key, int mask) {
  if (key == 0) return QString();
  QString text;
  if (mask & HotKeyCtrlBit) text += u"CTRL + "_qs;
  if (mask & HotKeyAltBit) text += u"ALT + "_qs;
  if (mask & HotKeyShiftBit) text += u"SHIFT + "_qs;
  return text + KeyText(key);
}

QString HotKeyRefusedText(int hotKey) {
  return QCoreApplication::translate(
             "HotKeyText", "Horkou klávesu %1 nelze použít. Drží ji jiný program, nebo ji prostředí nedovolí.")
      .arg(HotKeyText(LowWord(hotKey), HighWord(hotKey)));
}

int HotKeyMask(Qt::KeyboardModifiers shift) {
  return (shift & Qt::ShiftModifier ? HotKeyShiftBit : 0) | (shift & Qt::ControlModifier ? HotKeyCtrlBit : 0) |
         (shift & Qt::AltModifier ? HotKeyAltBit : 0);
}

int VirtualKeyOf(const Key& key) {
  if (key.keypad && key.code >= Qt::Key_0 && key.code <= Qt::Key_9) return VirtualNum0 + key.code - Qt::Key_0;
  if (IsLetterOrDigit(key.code)) return key.code;
  if (key.code >= Qt::Key_F1 && key.code <= Qt::Key_F24) return VirtualF1 + key.code - Qt::Key_F1;
  const auto isIt = [&key](const NamedKey& row) { return row.key == key.code && row.keypad == key.keypad; };
  const auto* named = std::find_if(std::begin(NamedKeys), std::end(NamedKeys), isIt);
  return named == std::end(NamedKeys) ? 0 : named->virtualKey;
}

}  // namespace talnik
