#include "shell/cStandardEditBox.h"

#include "shell/Form.h"
#include "shell/Texts.h"

#include <QClipboard>
#include <QComboBox>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace talnik {

namespace {

constexpr int CharacterCode = 255;
constexpr int TypeStep = 10;

QString CharacterAt(const QString& text, int position) {
  if (position < 0 || position >= text.size()) return QString();
  return text.mid(position, text[position].isHighSurrogate() ? 2 : 1);
}

QString CharacterBefore(const QString& text, int position) {
  const bool pair = position >= 2 && position <= text.size() && text[position - 1].isLowSurrogate();
  return position >= 1 ? CharacterAt(text, position - (pair ? 2 : 1)) : QString();
}

bool IsCtrlAlone(const Key& key) {
  return key.Is(Qt::Key_Control, Qt::ControlModifier);
}

bool MovesOrDeletes(const Key& key) {
  switch (key.code) {
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_End:
    case Qt::Key_Home:
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_Right:
    case Qt::Key_Down:
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      return true;
    default:
      return false;
  }
}

bool MovesByLines(const Key& key) {
  return key.Is(Qt::Key_Up) || key.Is(Qt::Key_Down) || key.Is(Qt::Key_PageDown) || key.Is(Qt::Key_PageUp);
}

}  // namespace

QString SelectionDelta(const QString& text, int oldStart, int oldLength, int newStart, int newLength) {
  const int oldEnd = oldStart + oldLength;
  const int newEnd = newStart + newLength;
  if (oldStart == newStart && oldLength == newLength) return QString();
  if (oldStart == newStart && newLength > oldLength) return text.mid(oldEnd, newLength - oldLength);
  if (oldStart == newStart) return text.mid(newEnd, oldLength - newLength);
  if (oldEnd == newEnd && newLength > oldLength) return text.mid(newStart, oldStart - newStart);
  if (oldEnd == newEnd) return text.mid(oldStart, newStart - oldStart);
  if (newStart == oldEnd || oldStart == newEnd) return text.mid(std::min(oldStart, newStart), oldLength + newLength);
  return QString();
}

QString WordFrom(const QString& text, int cursor) {
  const QString separators = u" .,:!?\\/\r\n\t"_qs;
  bool behindTheWord = false;
  int end = cursor;
  for (; end < text.size(); ++end) {
    const bool separator = separators.contains(text[end]);
    if (behindTheWord && !separator) break;
    behindTheWord = behindTheWord || separator;
  }
  return text.mid(cursor, end - cursor);
}

cStandardEditBox::cStandardEditBox(std::unique_ptr<EditControl> control, Speech& speech, Output produceOutput)
    : control_(std::move(control)), speech_(speech), produceOutput_(std::move(produceOutput)) {}

void cStandardEditBox::KeyDown(Key& key) {
  if (IsCtrlAlone(key)) return;
  if (IsSingleLine() && (key.Is(Qt::Key_Up) || key.Is(Qt::Key_Down))) return key.Swallow();
  oldStart_ = control_->SelStart();
  oldLength_ = control_->SelLength();
  if (control_->Locked()) return;
  if (key.Is(Qt::Key_Delete)) SpeakDeletion(true);
  if (key.Is(Qt::Key_Backspace) && !(key.shift & Qt::AltModifier)) SpeakDeletion(false);
}

void cStandardEditBox::SpeakDeletion(bool forward) {
  if (oldLength_ > 0) {
    produceOutput_(Speech::SpeakNow, 0, control_->SelText());
  } else {
    const QString text = control_->Text();
    const QString character = forward ? CharacterAt(text, oldStart_) : CharacterBefore(text, oldStart_);
    if (character.isEmpty()) return;
    produceOutput_(Speech::SpeakNow, CharacterCode, character);
  }
  produceOutput_(Speech::SpeakPart, 0, SharedText(TextId::Deleting));
}

void cStandardEditBox::KeyUp(Key& key) {
  SendLineToBraille();
  // What is said, one letter mostly, takes the line; fingers look for the field and its cursor there.
  const auto afterwards = qScopeGuard([this] { SendLineToBraille(); });
  if (IsCtrlAlone(key)) return;
  if (key.Is(Qt::Key_C, Qt::ControlModifier)) {
    produceOutput_(Speech::SpeakNow, 0,
                   QCoreApplication::translate("cStandardEditBox", "do schránky ") + control_->SelText());
  }
  if (key.Is(Qt::Key_V, Qt::ControlModifier)) {
    const QString pasted = QGuiApplication::clipboard()->text();
    produceOutput_(Speech::SpeakNow, 0,
                   QCoreApplication::translate("cStandardEditBox", "ze schránky ") +
                       (control_->Hidden() ? QString(pasted.size(), u'*') : pasted));
  }
  if (!MovesOrDeletes(key)) return;
  if (IsSingleLine() && (key.Is(Qt::Key_Up) || key.Is(Qt::Key_Down))) {
    produceOutput_(Speech::SpeakNow, 0, GetCurrentLine());
    return key.Swallow();
  }
  SpeakMove(key, control_->Text());
}

void cStandardEditBox::SendLineToBraille() {
  int column = 0;
  const QString line = control_->CurrentLine(&column);
  speech_.BrailleShow(line, column);
  if (const int role = std::exchange(brailleRole_, 0); role != 0) speech_.BrailleRole(role);
}

void cStandardEditBox::SpeakMove(const Key& key, const QString& text) {
  const int start = control_->SelStart();
  const int length = control_->SelLength();
  const bool atTheEnd = start == text.size() || start + length == text.size();
  if (key.Is(Qt::Key_Right) && atTheEnd) speech_.Signal(Speech::EndOfList);
  if (key.Is(Qt::Key_Left) && start == 0) speech_.Signal(Speech::EmptyField);
  if (key.shift & Qt::ShiftModifier) {
    const QString delta = SelectionDelta(text, oldStart_, oldLength_, start, length);
    if (!delta.isEmpty()) return produceOutput_(Speech::SpeakNow, 0, delta);
  }
  if (key.Is(Qt::Key_Left) || key.Is(Qt::Key_Right)) {
    const bool byWords = key.shift & Qt::ControlModifier;
    produceOutput_(Speech::SpeakNow, byWords ? 0 : CharacterCode,
                   byWords ? WordFrom(text, start) : CharacterAt(text, start));
  }
  const QString line = GetCurrentLine();
  if (key.Is(Qt::Key_Home)) produceOutput_(Speech::SpeakNow, CharacterCode, CharacterAt(line, 0));
  if (key.Is(Qt::Key_End)) {
    produceOutput_(Speech::SpeakNow, CharacterCode, CharacterBefore(line, static_cast<int>(line.size())));
  }
  if (!IsSingleLine() && MovesByLines(key)) {
    if (start == oldStart_) speech_.Signal(Speech::EmptyField);
    produceOutput_(Speech::SpeakNow, 0, line.isEmpty() ? SharedText(TextId::EmptyLine) : line);
  }
}

QString cStandardEditBox::GetCurrentLine() const {
  return control_->CurrentLine(nullptr);
}

cStandardTextBox::cStandardTextBox(QLineEdit* edit, int flags, ControlEvents& events, Speech& speech)
    : QObject(edit), Flags(flags), speech_(speech) {
  Initialize(MakeEditControl(edit), events);
}

cStandardTextBox::cStandardTextBox(QPlainTextEdit* edit, int flags, ControlEvents& events, Speech& speech)
    : QObject(edit), Flags(flags), speech_(speech) {
  // Without these a read-only text has no cursor to read by, and Tab would stay in the text.
  if (edit->isReadOnly()) edit->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
  edit->setTabChangesFocus(true);
  Initialize(MakeEditControl(edit), events);
}

void cStandardTextBox::Initialize(std::unique_ptr<EditControl> control, ControlEvents& events) {
  QWidget* widget = control->Widget();
  my_EditBox_ = std::make_unique<cStandardEditBox>(
      std::move(control), speech_,
      [this](int kind, int code, const QString& text) { my_EditBox_ProduceOutput(kind, code, text); });
  events.GotFocus(widget, [this, &events] {
    EditControl& edit = my_EditBox_->Control();
    if (Flags == 0 && !events.ComingBack()) edit.Select(0, static_cast<int>(edit.Text().size()));
  });
  events.KeyDown(widget, [this](Key& key) {
    ResizeType(key);
    my_EditBox_->KeyDown(key);
  });
  events.KeyUp(widget, [this](Key& key) { my_EditBox_->KeyUp(key); });
}

void cStandardTextBox::ResizeType(const Key& key) {
  constexpr int sizeBit = 1;
  if (!(Flags & sizeBit) || key.shift != Qt::ControlModifier) return;
  QWidget* widget = my_EditBox_->Control().Widget();
  const int points = widget->font().pointSize();
  if (key.NumericPlus()) {
    speech_.Say(SharedText(TextId::Larger));
    SetTypeSize(widget, points + TypeStep);
  } else if (key.NumericMinus() && points > TypeStep) {
    speech_.Say(SharedText(TextId::Smaller));
    SetTypeSize(widget, std::max(1, points - TypeStep));
  }
}

cStandardTextBox* MakeTextBox(QLineEdit* edit, int flags, ControlEvents& events, Speech& speech) {
  return new cStandardTextBox(edit, flags, events, speech);
}

cStandardTextBox* MakeTextBox(QPlainTextEdit* edit, int flags, ControlEvents& events, Speech& speech) {
  return new cStandardTextBox(edit, flags, events, speech);
}

cStandardComboBox::cStandardComboBox(QComboBox* combo, ControlEvents& events, Speech& speech)
    : QObject(combo), speech_(speech) {
  if (!combo->isEditable()) return;
  my_EditBox_ = std::make_unique<cStandardEditBox>(
      MakeEditControl(combo->lineEdit()), speech,
      [this](int kind, int code, const QString& text) { my_EditBox_ProduceOutput(kind, code, text); });
  events.KeyDown(combo, [this](Key& key) {
    if (!MovesByLines(key)) my_EditBox_->KeyDown(key);
  });
  events.KeyUp(combo, [this](Key& key) {
    if (!MovesByLines(key)) my_EditBox_->KeyUp(key);
  });
}

cStandardComboBox* MakeComboBox(QComboBox* combo, ControlEvents& events, Speech& speech) {
  return new cStandardComboBox(combo, events, speech);
}

}  // namespace talnik
