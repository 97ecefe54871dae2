#pragma once

#include <QString>

namespace talnik {

/// The speech of the machine. No call waits for the speech itself or for the daemon behind it.
class Voice {
 public:
  enum class Join {
    Cut,    ///< what is being said ends at once
    Append  ///< heard after what is being said
  };
  enum class Urgency { Text, Important };
  enum class Support { Unknown, There, Missing };
  /// Who speaks, as the user chooses: this program, the screen reader, or the screen reader while one is running.
  enum class Speaker { Own, Reader, Automatic };

  virtual ~Voice() = default;

  /// Speaks `text`; an empty text with Join::Cut only ends what is being said.
  virtual void Speak(const QString& text, Join join, Urgency urgency) = 0;

  /// Speaks one character by its name, as in spelling ("a", "mezera", "tečka").
  virtual void SpeakCharacter(const QString& character, Join join) = 0;

  virtual void Stop() = 0;

  /// Whether there is anything that can speak; unknown for as long as it is being looked for.
  virtual Support Supported() const = 0;

  /// True from the call of Speak until the text has been said to its end, cut or given up.
  virtual bool IsSpeaking() const = 0;

  /// A voice that knows of no screen reader speaks by itself, whatever is chosen.
  virtual void ChooseSpeaker(Speaker /*speaker*/) {}
};

}  // namespace talnik
