#include "shell/VoiceDialog.h"

#include "shell/frmMsg12.h"

#include <QApplication>

namespace talnik {

namespace {

constexpr int DialogCommand = 7;
constexpr int MessageTag = 806;
constexpr int QuestionTag = 807;

}  // namespace

QString GetField(const QString& text, int n) {
  return n >= 1 ? text.section(u'|', n - 1, n - 1) : QString();
}

int Dialogs::VoiceDialog(int command, const QString& text, Default defaultButton) {
  constexpr int noDialog = -1;
  const int kind = command >> 16;
  if ((command & 0xFFFF) != DialogCommand || kind < 0) return noDialog;
  if (kind < 4) return ShowMessage(kind, text, defaultButton, false);
  if (kind < 8 || kind > 15) return noDialog;
  if (PickFile) return PickFile(kind, text);
  services_.speech.Signal(Speech::Refused);
  return 0;
}

int Dialogs::ShowMessage(int kind, const QString& text, Default defaultButton, bool wait) {
  const bool question = kind >= Question;
  frmMsg12 dialog(services_, QApplication::activeWindow());
  dialog.SetTag(question ? QuestionTag : MessageTag);
  dialog.SetMessage(GetField(text, 1), GetField(text, 2));
  if (!question) dialog.OfferOnlyOK();
  if (question && defaultButton == Default::Second) dialog.AnswerNoByEnter();
  if (wait) dialog.VoiceWait();
  services_.speech.StopSpeech();
  return dialog.Show();
}

}  // namespace talnik
