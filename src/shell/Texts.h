#pragma once

#include <QString>

namespace talnik {

/// Numbers of the texts that all windows share.
enum class TextId {
  OK = 200,
  Storno = 201,
  Yes = 202,
  No = 203,
  Larger = 501,
  Smaller = 502,
  Deleting = 504,
  EmptyLine = 505,
  Open = 805,
  Save = 806,
};

/// The text of a number, in the language of the interface.
QString SharedText(TextId id);

}  // namespace talnik
