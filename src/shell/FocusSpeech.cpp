#include "shell/FocusSpeech.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QCoreApplication>

#include <utility>

namespace talnik {
namespace {

QString CheckState(bool checked) {
  return checked ? QCoreApplication::translate("FocusSpeech", "zaškrtnuto")
                 : QCoreApplication::translate("FocusSpeech", "nezaškrtnuto");
}

}  // namespace

void OpeningTitle::FocusRead(Speech& speech, const QString& prefix, const QString& text, int selLength) {
  const QString title = std::exchange(title_, QString());
  if (!title.isEmpty()) speech.SayPart(0, title);
  speech.FocusRead(prefix, text, 0, selLength, title.isEmpty());
}

void LetButtonSpeak(QAbstractButton* button, ControlEvents& events, Speech& speech, OpeningTitle& title) {
  const bool hasState = qobject_cast<QCheckBox*>(button) != nullptr;
  events.GotFocus(button, [button, hasState, &speech, &title] {
    const QString caption = button->text().remove(u'&');
    title.FocusRead(speech, QString(), hasState ? QString(caption + u' ' + CheckState(button->isChecked())) : caption);
  });
  if (!hasState) return;
  QObject::connect(button, &QAbstractButton::toggled, button, [button, &speech](bool checked) {
    if (button->hasFocus()) speech.Say(CheckState(checked));
  });
}

}  // namespace talnik
