#include "timetools/TimeFieldPair.h"

#include "shell/Form.h"

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QRegularExpressionValidator>

#include <utility>

namespace talnik {
namespace {

constexpr std::array<int, 2> Maximum{23, 59};

bool IsDigit(const QString& text) {
  return text.size() == 1 && text[0] >= u'0' && text[0] <= u'9';
}

/// Control characters are the keys that edit and confirm; everything else would be written into the field.
bool IsWritten(const QString& text) {
  return !text.isEmpty() && text[0].category() != QChar::Other_Control;
}

/// "hodin:" and "minut:", the names of the two fields.
QString TimeFieldName(int field) {
  return field == TimeFields::Hours ? QCoreApplication::translate("TimeFieldPair", "hodin:")
                                    : QCoreApplication::translate("TimeFieldPair", "minut:");
}

}  // namespace

void MakeTimeFields(QWidget* form, const QString& labelName, std::array<QLabel*, 2>& labels,
                    std::array<QLineEdit*, 2>& fields) {
  for (const int field : {TimeFields::Hours, TimeFields::Minutes}) {
    QLabel*& label = labels.at(static_cast<std::size_t>(field));
    QLineEdit*& edit = fields.at(static_cast<std::size_t>(field));
    label = new QLabel(TimeFieldName(field), form);
    edit = new QLineEdit(form);
    label->setBuddy(edit);
    NameControl(label, labelName + u"(%1)"_qs.arg(field));
    NameControl(edit, u"Text1(%1)"_qs.arg(field), label->text());
  }
}

TimeFieldPair::TimeFieldPair(std::array<QLineEdit*, 2> fields, ControlEvents& events, Speech& speech,
                             OpeningTitle& title, SpinSpeech spinSpeech)
    : fields_(fields), speech_(speech), title_(title), spinSpeech_(spinSpeech) {
  for (const int field : {TimeFields::Hours, TimeFields::Minutes}) {
    Field(field)->setMaxLength(2);
    // What is pasted passes by the keys.
    Field(field)->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), Field(field)));
    Connect(field, events);
  }
}

void TimeFieldPair::Connect(int field, ControlEvents& events) {
  events.GotFocus(Field(field), [this, field] { GotFocus(field); });
  events.KeyDown(Field(field), [this, field](Key& key) { KeyDown(field, key); });
  events.KeyPress(Field(field), [this, field](Key& key) { KeyPress(field, key); });
  events.KeyUp(Field(field), [this, field](Key& key) { KeyUp(field, key); });
}

QString TimeFieldPair::Hours() const {
  return Field(TimeFields::Hours)->text().trimmed();
}

QString TimeFieldPair::Minutes() const {
  return Field(TimeFields::Minutes)->text().trimmed();
}

void TimeFieldPair::Set(const QString& hours, const QString& minutes) {
  Field(TimeFields::Hours)->setText(hours);
  Field(TimeFields::Minutes)->setText(minutes);
}

void TimeFieldPair::Set(const Date& time) {
  Set(QString::number(time.Hour()).rightJustified(2, u'0'), QString::number(time.Minute()).rightJustified(2, u'0'));
}

void TimeFieldPair::SetFocus(int field) {
  Field(field)->setFocus();
}

void TimeFieldPair::GotFocus(int field) {
  if (std::exchange(movedByDigit_, false)) return;
  const QString text = Field(field)->text();
  title_.FocusRead(speech_, TimeFieldName(field), text, static_cast<int>(text.size()));
  Field(field)->selectAll();
}

void TimeFieldPair::KeyDown(int field, Key& key) {
  const int step = SpinStep(key);
  if (step == 0) return;
  key.Swallow();
  Field(field)->setText(SpinTimeField(Field(field)->text(), step, 0, Maximum.at(static_cast<std::size_t>(field))));
  if (spinSpeech_ == SpinSpeech::AtEachChange) speech_.Say(Field(field)->text());
}

void TimeFieldPair::KeyPress(int field, Key& key) {
  const bool isCommand = key.shift & (Qt::ControlModifier | Qt::AltModifier);
  if (isCommand || !IsWritten(key.text)) return;
  key.Swallow();
  if (IsDigit(key.text)) {
    TypeDigit(field, key.text[0]);
  } else {
    speech_.Signal(Speech::Refused);
  }
}

void TimeFieldPair::TypeDigit(int field, QChar digit) {
  const QLineEdit* edit = Field(field);
  TimeFields before{{Field(TimeFields::Hours)->text(), Field(TimeFields::Minutes)->text()}, field};
  before.selStart = edit->hasSelectedText() ? edit->selectionStart() : edit->cursorPosition();
  before.selLength = edit->selectionLength();
  const TimeFields typed = TypeTimeDigit(before, digit);
  if (typed == before) return speech_.Signal(Speech::Refused);

  Set(typed.text[TimeFields::Hours], typed.text[TimeFields::Minutes]);
  if (typed.field != field) {
    movedByDigit_ = true;
    SetFocus(typed.field);
  }
  Field(typed.field)->setCursorPosition(typed.selStart);
  speech_.Say(digit);
}

void TimeFieldPair::KeyUp(int field, Key& key) {
  if (SpinStep(key) != 0) {
    if (spinSpeech_ == SpinSpeech::AtRelease) speech_.Say(Field(field)->text());
    return;
  }
  switch (key.code) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
      return SayCharacterAtCaret(field);
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
      if (Field(field)->text().isEmpty()) return speech_.Signal(Speech::EmptyField);
      return speech_.Say(Field(field)->text());
    default:
      return;
  }
}

void TimeFieldPair::SayCharacterAtCaret(int field) {
  const QString character = Field(field)->text().mid(Field(field)->cursorPosition(), 1);
  // Behind the last digit there is no character, so that the key is not without an answer the end is told.
  if (character.isEmpty()) return speech_.Signal(Speech::EndOfList);
  speech_.Say(character);
}

}  // namespace talnik
