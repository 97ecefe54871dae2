#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace talnik {

/// What Alt+F4 does to the program.
struct ExitDecision {
  bool cancel = false;                ///< nothing happens at all
  std::optional<bool> HideOnClose{};  ///< the new value
  bool exitWithoutHide = false;       ///< the program ends whatever HideOnClose says
  bool stopSpeech = false;
  std::optional<int> ExitMode{};  ///< the new setting

  bool operator==(const ExitDecision&) const = default;
};

/// Decides by the setting; where it is to be asked, `choose` shows the list of choices and returns the number of the
/// chosen one counted from 1, or -1.
ExitDecision DecideExit(int exitMode, const std::function<int()>& choose);

/// The title and the choices of the question, separated by ";".
QString ExitChoices(const QString& caption);

}  // namespace talnik
