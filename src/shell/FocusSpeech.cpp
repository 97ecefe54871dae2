#include "shell/FocusSpeech.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QRadioButton>

#include <memory>
#include <utility>

namespace talnik {
namespace {

QString CheckState(bool checked) {
  return checked ? QCoreApplication::translate("FocusSpeech", "zaškrtnuto")
                 : QCoreApplication::translate("FocusSpeech", "nezaškrtnuto");
}

/// A key that does not leave or change an option is answered too: the blank by the caption, an arrow at either end of
/// the group by the cue.
void AnswerKeysOfOption(QRadioButton* option, ControlEvents& events, Speech& speech) {
  const auto isArrow = [](const Key& key) {
    return key.Is(Qt::Key_Up) || key.Is(Qt::Key_Down) || key.Is(Qt::Key_Left) || key.Is(Qt::Key_Right);
  };
  const auto stays = std::make_shared<bool>(false);
  events.GotFocus(option, [stays] { *stays = false; });
  events.KeyDown(option, [stays, isArrow](Key& key) { *stays = isArrow(key); });
  events.KeyUp(option, [stays, isArrow, option, &speech](Key& key) {
    if (key.Is(Qt::Key_Space)) speech.Say(option->text().remove(u'&'));
    if (isArrow(key) && std::exchange(*stays, false) && option->hasFocus()) speech.Signal(Speech::EndOfList);
  });
}

/// Left to itself, Tab goes to the next option, which would be taken for chosen.
void LeadTabToChosen(QRadioButton* option) {
  const auto obey = [option](bool checked) { option->setFocusPolicy(checked ? Qt::StrongFocus : Qt::ClickFocus); };
  obey(option->isChecked());
  QObject::connect(option, &QRadioButton::toggled, option, obey);
}

bool MovesInList(const Key& key) {
  switch (key.code) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      return true;
    default:
      return false;
  }
}

}  // namespace

void OpeningTitle::FocusRead(Speech& speech, const QString& prefix, const QString& text, int selLength) {
  const QString title = std::exchange(title_, QString());
  if (!title.isEmpty()) speech.SayPart(0, title);
  speech.FocusRead(prefix, text, 0, selLength, title.isEmpty());
}

void LetOptionAnswer(QRadioButton* option, ControlEvents& events, Speech& speech) {
  AnswerKeysOfOption(option, events, speech);
  LeadTabToChosen(option);
}

void LetButtonSpeak(QAbstractButton* button, ControlEvents& events, Speech& speech, OpeningTitle& title) {
  const bool hasState = qobject_cast<QCheckBox*>(button) != nullptr;
  events.GotFocus(button, [button, hasState, &speech, &title] {
    const QString caption = button->text().remove(u'&');
    title.FocusRead(speech, QString(), hasState ? QString(caption + u' ' + CheckState(button->isChecked())) : caption);
  });
  if (auto* option = qobject_cast<QRadioButton*>(button)) LetOptionAnswer(option, events, speech);
  if (!hasState) return;
  QObject::connect(button, &QAbstractButton::toggled, button, [button, &speech](bool checked) {
    if (button->hasFocus()) speech.Say(CheckState(checked));
  });
}

void LetListSpeak(QComboBox* list, const QLabel* label, ControlEvents& events, Speech& speech, OpeningTitle& title) {
  const auto say = [&speech](const QString& line) {
    if (!line.isEmpty()) speech.Say(line);
  };
  const auto before = std::make_shared<int>(-1);
  events.GotFocus(list, [list, label, &speech, &title] {
    title.FocusRead(speech, label ? label->text() : QString(), list->currentText());
  });
  QObject::connect(list, &QComboBox::textHighlighted, list, say);
  QObject::connect(list, &QComboBox::currentTextChanged, list, [list, say](const QString& line) {
    if (list->hasFocus()) say(line);
  });
  events.KeyDown(list, [list, before](Key&) { *before = list->currentIndex(); });
  events.KeyUp(list, [list, before, say, &speech](Key& key) {
    if (list->currentIndex() != *before || key.shift != Qt::NoModifier) return;
    if (MovesInList(key)) return speech.Signal(Speech::EndOfList);
    if (!key.text.trimmed().isEmpty()) say(list->currentText());
  });
}

}  // namespace talnik
