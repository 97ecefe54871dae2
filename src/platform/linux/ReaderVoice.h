#pragma once

#include "platform/Voice.h"
#include "platform/linux/ReaderFocus.h"

#include <QDeadlineTimer>
#include <QTimer>

#include <functional>

namespace talnik {

/// Speech through the screen reader. It says by itself what the focus is on, so only what it leaves out is handed to
/// it, behind the events of the focus that belong to the same key.
class ReaderVoice : public Voice {
 public:
  ReaderVoice(std::function<ReaderFocus()> look, std::function<void(const QString&)> tell);

  void Speak(const QString& text, Join join, Urgency urgency) override;
  void SpeakCharacter(const QString& character, Join join) override;
  void Stop() override;
  Support Supported() const override { return Support::There; }
  /// The reader does not say when it has finished; this is how long the text takes at an easy pace.
  bool IsSpeaking() const override { return waiting_.isActive() || !said_.hasExpired(); }

 private:
  void Flush();
  QString Untold(const ReaderFocus& focus) const;

  std::function<ReaderFocus()> look_;
  std::function<void(const QString&)> tell_;
  QTimer waiting_;
  QString text_;
  bool isImportant_ = false;
  bool isOnTheMove_ = false;  ///< the text waits for the window that gets the keyboard
  ReaderFocus before_;
  QDeadlineTimer said_;
};

}  // namespace talnik
