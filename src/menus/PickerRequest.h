#pragma once

#include "shell/Texts.h"

#include <QString>

#include <optional>

namespace talnik {

/// What a file dialog is asked for.
struct PickerRequest {
  int tag = 0;  ///< the window's number
  TextId button = TextId::Open;
  bool saves = false;         ///< the file need not exist; one that does is asked about
  bool choosesFilter = true;  ///< the filter is the user's to change
  bool plays = false;         ///< sounds, which are heard
  QString filter;             ///< masks, separated by ";"
  QString fileName;
  QString startFolder;
  QString caption;
};

/// The request of a kind of dialog from 8 to 15, with its fields separated by "|"; nothing for another kind.
std::optional<PickerRequest> ReadPickerRequest(int kind, const QString& text);

}  // namespace talnik
