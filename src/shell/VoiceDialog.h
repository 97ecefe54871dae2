#pragma once

#include "shell/FormServices.h"

#include <QString>

class QWidget;

namespace talnik {

/// Low word 7, high word the kind of the dialog.
constexpr int MakeCommand(int low, int high) {
  return (high << 16) | low;
}

/// The n-th field of a text whose fields are separated by "|", counted from 1; empty when it is missing.
QString GetField(const QString& text, int n);

/// Every message, question and file dialog of the program.
class Dialogs {
 public:
  enum Kind { Warning = 0, Notice = 1, Question = 2, OpenFile = 8, SaveFile = 10 };
  enum class Default { First, Second };

  explicit Dialogs(FormServices& services) : services_(services) {}

  /// Shows the dialog of the command's kind and returns its result: 1 for yes, OK or a chosen file, else 0; -1 for a
  /// command or kind that has no dialog.
  int VoiceDialog(int command, const QString& text, Default defaultButton = Default::First);

  /// A warning (kind 0) or a notice (kind 1) with its OK button.
  void Warn(const QString& message) { VoiceDialog(MakeCommand(7, Warning), message); }
  void Tell(const QString& message) { VoiceDialog(MakeCommand(7, Notice), message); }
  /// Yes or no; true for yes.
  bool Ask(const QString& question, Default defaultButton = Default::First) {
    return VoiceDialog(MakeCommand(7, Question), question, defaultButton) == 1;
  }

 private:
  FormServices& services_;
};

}  // namespace talnik
