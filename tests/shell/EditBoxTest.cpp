#include "shell/FieldForReader.h"
#include "shell/cStandardEditBox.h"
#include "support/FormWorld.h"

#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace talnik::test {
namespace {

struct EditWindow : QDialog, FormWorld {
  explicit EditWindow(int flags = 2) : events(this) {
    auto* all = new QVBoxLayout(this);
    for (QWidget* field : std::initializer_list<QWidget*>{&line, &text, &combo}) all->addWidget(field);
    combo.setEditable(true);
    MakeTextBox(&line, flags, events, speech);
    MakeTextBox(&text, flags, events, speech);
    MakeComboBox(&combo, events, speech);
    resize(600, 400);
    show();
    FormDriver::Until([this] { return isActiveWindow(); });
  }

  /// The field with its text, cursor and anchor as told.
  void Put(QWidget& field, const QString& content, int anchor, int cursor) {
    field.setFocus();
    if (&field == &line) {
      line.setText(content);
      line.setSelection(anchor, cursor - anchor);
    } else {
      text.setPlainText(content);
      QTextCursor at = text.textCursor();
      at.setPosition(anchor);
      at.setPosition(cursor, QTextCursor::KeepAnchor);
      text.setTextCursor(at);
    }
  }

  ControlEvents events;
  QLineEdit line;
  QPlainTextEdit text;
  QComboBox combo;
};

TEST(FieldForReader, AnswersForEveryPlaceUpToTheEnd) {
  ShowFieldsToReaders();
  QLineEdit field(u"dva listy"_qs);
  auto* reader = QAccessible::queryAccessibleInterface(&field);
  auto* text = reader->textInterface();
  const struct {
    int offset;
    QAccessible::TextBoundaryType boundary;
    const char* expected;
  } cases[] = {{1, QAccessible::WordBoundary, "dva"},       {9, QAccessible::WordBoundary, "listy"},
               {-1, QAccessible::WordBoundary, "listy"},    {9, QAccessible::SentenceBoundary, "dva listy"},
               {9, QAccessible::LineBoundary, "dva listy"}, {8, QAccessible::CharBoundary, "y"},
               {9, QAccessible::CharBoundary, ""}};
  int from = 0;
  int to = 0;
  for (const auto& [offset, boundary, expected] : cases) {
    EXPECT_EQ(text->textAtOffset(offset, boundary, &from, &to).toStdString(), expected) << offset << ' ' << boundary;
  }
  text->attributes(0, &from, &to);
  EXPECT_EQ(from, 0);
  EXPECT_EQ(to, 9) << "the reader puts the text together from these";
  reader->editableTextInterface()->replaceText(4, -1, u"knihy"_qs);
  EXPECT_EQ(field.text(), u"dva knihy"_qs);
  field.setEchoMode(QLineEdit::Password);
  EXPECT_FALSE(text->text(0, -1).contains(u"dva"_qs) || reader->text(QAccessible::Value).contains(u"dva"_qs));
}

TEST(SelectionDelta, EveryCaseOfTheTable) {
  const struct {
    int oldStart, oldLength, newStart, newLength;
    const char* expected;
  } cases[] = {{2, 3, 2, 3, ""},    {2, 1, 2, 3, "de"},    {2, 3, 2, 1, "de"},    {4, 2, 1, 5, "bcd"},
               {1, 5, 4, 2, "bcd"}, {2, 2, 4, 3, "cdefg"}, {4, 3, 2, 2, "cdefg"}, {0, 1, 5, 1, ""},
               {3, 0, 3, 1, "d"},   {3, 1, 3, 0, "d"}};
  for (const auto& [oldStart, oldLength, newStart, newLength, expected] : cases) {
    EXPECT_EQ(SelectionDelta(u"abcdefghij"_qs, oldStart, oldLength, newStart, newLength).toStdString(), expected)
        << oldStart << '+' << oldLength << " to " << newStart << '+' << newLength;
  }
}

TEST(WordFrom, GoesThroughTheSeparatorsBehindTheWord) {
  for (const auto& [cursor, word] :
       {std::pair(0, "ráno, "), {4, ", "}, {8, "8:"}, {10, "30\\"}, {13, "x\t"}, {15, "konec"}, {20, ""}}) {
    EXPECT_EQ(WordFrom(u"ráno, v 8:30\\x\tkonec"_qs, cursor).toStdString(), word);
  }
}

TEST(EditBox, EachKeyInALineSaysWhatItCrossed) {
  const struct {
    int anchor, cursor;
    const char* play;
  } cases[] = {
      {0, 0, "Right > char: b"},
      {2, 2, "Left > char: b"},
      {0, 0, "Left > sound: empty.wav; char: a"},
      {1, 1, "Left > sound: empty.wav; char: a"},
      {6, 6, "Right > sound: end.wav; say: "},
      {0, 0, "Ctrl+Right > say: ef"},
      {6, 6, "Ctrl+Left > say: ef"},
      {0, 0, "Shift+Right > char: a"},
      {0, 2, "Shift+Left > sound: empty.wav; char: b"},
      {0, 0, "Shift+End > say: abc ef"},
      {2, 2, "Home > char: a"},
      {2, 2, "End > char: f"},
      {2, 2, "Up > say: abc ef | Down > say: abc ef"},
      {1, 1, "Del > char: b; and: Mažu"},
      {1, 1, "Backspace > char: a; and: Mažu"},
      {1, 1, "Alt+Backspace > "},
      {0, 3, "Del > say: abc; and: Mažu"},
      {0, 3, "Backspace > say: abc; and: Mažu"},
      {6, 6, "Del > "},
      {0, 0, "Backspace > "},
      {0, 2, "Ctrl+C > say: do schránky ab | Ctrl+V > say: ze schránky ab"},
  };
  EditWindow window;
  for (const auto& [anchor, cursor, play] : cases) {
    window.Put(window.line, u"abc ef"_qs, anchor, cursor);
    window.Play(play);
  }
  window.driver.Press(Qt::Key_Control);
  EXPECT_EQ(window.Heard(), "");
}

TEST(EditBox, LinesOfALongTextAreSaidWhole) {
  const std::pair<int, const char*> cases[] = {{2, "Up > sound: empty.wav; say: první řádek"},
                                               {2, "Down > say: prázdný řádek | Down > say: třetí"},
                                               {13, "Up > say: prázdný řádek"},
                                               {15, "Home > char: t | End > char: í"},
                                               {12, "Home > say: "}};
  EditWindow window;
  for (const auto& [cursor, play] : cases) {
    window.Put(window.text, u"první řádek\n\ntřetí"_qs, cursor, cursor);
    window.Play(play);
  }
  window.Put(window.text, u"slovo "_qs.repeated(200), 0, 0);
  window.Heard();
  window.Press("Down");
  const std::string wrapped = window.Heard();
  EXPECT_TRUE(wrapped.starts_with("say: slovo slovo") && wrapped.size() < 400) << wrapped << ": as it is on the screen";
  window.text.setReadOnly(true);
  window.Put(window.text, u"první"_qs, 0, 3);
  window.Play("Del > ");
}

TEST(EditBox, ALetterOfTwoUnitsIsOneCharacter) {
  EditWindow window;
  window.Put(window.line, u"a😀b"_qs, 1, 1);
  window.Play("Del > char: 😀; and: Mažu");
  window.Put(window.line, u"a😀"_qs, 3, 3);
  window.Play("Backspace > char: 😀; and: Mažu");
}

TEST(EditBox, AHiddenTextIsNeverSaid) {
  EditWindow window;
  window.line.setEchoMode(QLineEdit::Password);
  QGuiApplication::clipboard()->setText(u"QWX9"_qs);
  for (const char* key : {"Right", "Up", "Del", "Home", "End", "Ctrl+C", "Ctrl+V"}) {
    window.Put(window.line, u"QWX9"_qs, 1, 1);
    window.Heard();
    window.Press(key);
    EXPECT_EQ(window.Heard().find_first_of("QWX9"), std::string::npos) << key;
  }
}

TEST(EditBox, FlagsTellWhatFocusAndCtrlPlusDo) {
  for (const int flags : {0, 1, 2, 3}) {
    EditWindow window(flags);
    window.line.setText(u"abc"_qs);
    window.text.setFocus();
    window.line.setCursorPosition(1);
    window.line.setFocus();
    EXPECT_EQ(window.line.selectionLength(), flags == 0 ? 3 : 0) << flags;
    QFont font = window.line.font();
    font.setPointSize(20);
    window.line.setFont(font);
    const bool resizes = flags & 1;
    window.Play(resizes ? "Ctrl+Num++ > say: Větší" : "Ctrl+Num++ > ");
    EXPECT_EQ(window.line.font().pointSize(), resizes ? 30 : 20);
    window.Play(resizes ? "Ctrl+Num+- > say: menší | Ctrl+Num+- > say: menší | Ctrl+Num+- > " : "Ctrl+Num+- > ");
    EXPECT_EQ(window.line.font().pointSize(), resizes ? 10 : 20);
  }
}

TEST(EditBox, TheBrailleLineFollowsTheCursor) {
  EditWindow window;
  window.world.braille.Present = true;
  window.Put(window.line, u"abc"_qs, 1, 1);
  for (const auto& [key, cursor] : {std::pair("F9", 1), {"Right", 2}, {"Home", 0}}) {
    window.Press(key);
    EXPECT_EQ(window.world.braille.Shown.toStdString(), "abc") << key << ": the field, not the letter that was said";
    EXPECT_EQ(window.world.braille.Cursor, cursor) << key;
  }
}

TEST(ComboBox, ATypedOneSpeaksButForTheKeysOfItsList) {
  EditWindow window;
  window.combo.addItems({u"x"_qs, u"y"_qs});
  window.combo.setFocus();
  window.combo.lineEdit()->setText(u"abc"_qs);
  window.combo.lineEdit()->setCursorPosition(0);
  window.Play("Right > char: b | Down >  | Up >  | PgDown >  | PgUp > ");
}

}  // namespace
}  // namespace talnik::test
