#pragma once

#include "editor/EditorState.h"
#include "store/Recordset.h"

#include <memory>
#include <optional>

namespace talnik {

/// The statement of the list that the editor is to browse; nothing for a mode that has none.
std::optional<Statement> ListStatement(const EditorState& state, const Date& now);

/// Puts a fresh list on the record that the mode asks for. False when that record is not there.
bool PlaceOnRecord(Recordset& list, EditorState& state, const Date& now);

}  // namespace talnik
