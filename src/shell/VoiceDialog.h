#pragma once

#include "shell/FormServices.h"

#include <QString>

#include <functional>

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
  enum Kind { Warning = 0, Notice = 1, Question = 2, OpenFile = 8, SaveFile = 10, SoundFile = 14 };
  enum class Default { First, Second };

  /// Shows the file dialog of a kind from 8 to 15; the text is that of VoiceDialog. Returns 1 when a file was chosen,
  /// whose path waits for TakeSelectedFile, else 0.
  using FilePicker = std::function<int(int kind, const QString& text)>;

  explicit Dialogs(FormServices& services) : services_(services) {}

  /// Set by the room that has the file dialogs; without it they are refused.
  FilePicker PickFile;

  /// Shows the dialog of the command's kind and returns its result: 1 for yes, OK or a chosen file, else 0; -1 for a
  /// command or kind that has no dialog.
  int VoiceDialog(int command, const QString& text, Default defaultButton = Default::First);

  /// A message dialog (kinds 0 to 3); `wait` lets it close by itself when it has been read.
  int ShowMessage(int kind, const QString& text, Default defaultButton, bool wait);

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
