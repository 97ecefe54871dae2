#include "menus/PickerRequest.h"

#include "shell/VoiceDialog.h"

#include <array>

namespace talnik {

namespace {

struct PickerKind {
  int kind;  ///< the even one of a pair; both behave alike
  int tag;
  TextId button;
  bool hasFileName;
  bool saves;
  bool choosesFilter;
  bool plays;
};

// A sound is chosen among those that exist, whatever its button says.
constexpr std::array PickerKinds = {
    PickerKind{8, 1701, TextId::Open, false, false, true, false},
    PickerKind{10, 1704, TextId::Save, true, true, true, false},
    PickerKind{12, 1705, TextId::OK, false, false, false, false},
    PickerKind{14, 1702, TextId::Save, true, false, true, true},
};

}  // namespace

std::optional<PickerRequest> ReadPickerRequest(int kind, const QString& text) {
  for (const PickerKind& entry : PickerKinds) {
    if (kind != entry.kind && kind != entry.kind + 1) continue;
    PickerRequest request{entry.tag, entry.button, entry.saves, entry.choosesFilter, entry.plays, {}, {}, {}, {}};
    int field = 0;
    request.filter = GetField(text, ++field);
    if (entry.hasFileName) request.fileName = GetField(text, ++field);
    request.startFolder = GetField(text, ++field);
    request.caption = GetField(text, ++field);
    return request;
  }
  return std::nullopt;
}

}  // namespace talnik
