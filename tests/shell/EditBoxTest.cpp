#include "shell/cStandardEditBox.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"

#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

std::string Heard(FakeWorld& world) {
  return world.Heard().join(u"; "_qs).toStdString();
}

struct EditWindow : QDialog {
  explicit EditWindow(int flags = 2) : events(this), speech(&world.voice, world.braille, world.sound, u"/s/"_qs) {
    auto* all = new QVBoxLayout(this);
    all->addWidget(&line);
    all->addWidget(&text);
    all->addWidget(&combo);
    combo.setEditable(true);
    MakeTextBox(&line, flags, events, speech);
    MakeTextBox(&text, flags, events, speech);
    MakeComboBox(&combo, events, speech);
    resize(600, 400);
    show();
    FormDriver::Until([this] { return isActiveWindow(); });
  }

  /// The field with its text, cursor and anchor as told, and nothing heard yet.
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
    world.Heard();
  }

  std::string Hear(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    driver.Press(key, modifiers, this);
    return Heard(world);
  }

  FakeWorld world;
  ControlEvents events;
  Speech speech;
  FormDriver driver;
  QLineEdit line;
  QPlainTextEdit text;
  QComboBox combo;
};

TEST(SelectionDelta, EveryCaseOfTheTable) {
  struct Case {
    int oldStart, oldLength, newStart, newLength;
    const char* expected;
  };
  for (const Case& test :
       {Case{2, 3, 2, 3, ""}, Case{2, 1, 2, 3, "de"}, Case{2, 3, 2, 1, "de"}, Case{4, 2, 1, 5, "bcd"},
        Case{1, 5, 4, 2, "bcd"}, Case{2, 2, 4, 3, "cdefg"}, Case{4, 3, 2, 2, "cdefg"}, Case{0, 1, 5, 1, ""},
        Case{3, 0, 3, 1, "d"}, Case{3, 1, 3, 0, "d"}}) {
    EXPECT_EQ(
        SelectionDelta(u"abcdefghij"_qs, test.oldStart, test.oldLength, test.newStart, test.newLength).toStdString(),
        test.expected)
        << test.oldStart << '+' << test.oldLength << " to " << test.newStart << '+' << test.newLength;
  }
}

TEST(WordFrom, GoesThroughTheSeparatorsBehindTheWord) {
  const QString text = u"ráno, v 8:30\\x\tkonec"_qs;
  EXPECT_EQ(WordFrom(text, 0).toStdString(), "ráno, ");
  EXPECT_EQ(WordFrom(text, 4).toStdString(), ", ");
  EXPECT_EQ(WordFrom(text, 8).toStdString(), "8:");
  EXPECT_EQ(WordFrom(text, 10).toStdString(), "30\\");
  EXPECT_EQ(WordFrom(text, 13).toStdString(), "x\t");
  EXPECT_EQ(WordFrom(text, 15).toStdString(), "konec");
  EXPECT_EQ(WordFrom(text, 20).toStdString(), "");
}

TEST(EditBox, EachKeyInALineSaysWhatItCrossed) {
  struct Case {
    int anchor, cursor, key;
    Qt::KeyboardModifiers modifiers;
    const char* heard;
  };
  EditWindow window;
  const std::vector<Case> cases = {
      {0, 0, Qt::Key_Right, {}, "char: b"},
      {2, 2, Qt::Key_Left, {}, "char: b"},
      {0, 0, Qt::Key_Left, {}, "sound: empty.wav; char: a"},
      {1, 1, Qt::Key_Left, {}, "sound: empty.wav; char: a"},
      {6, 6, Qt::Key_Right, {}, "sound: end.wav; say: "},
      {0, 0, Qt::Key_Right, Qt::ControlModifier, "say: ef"},
      {6, 6, Qt::Key_Left, Qt::ControlModifier, "say: ef"},
      {0, 0, Qt::Key_Right, Qt::ShiftModifier, "char: a"},
      {0, 2, Qt::Key_Left, Qt::ShiftModifier, "sound: empty.wav; char: b"},
      {0, 0, Qt::Key_End, Qt::ShiftModifier, "say: abc ef"},
      {2, 2, Qt::Key_Home, {}, "char: a"},
      {2, 2, Qt::Key_End, {}, "char: f"},
      {2, 2, Qt::Key_Up, {}, "say: abc ef"},
      {2, 2, Qt::Key_Down, {}, "say: abc ef"},
      {1, 1, Qt::Key_Delete, {}, "char: b; and: Mažu"},
      {1, 1, Qt::Key_Backspace, {}, "char: a; and: Mažu"},
      {1, 1, Qt::Key_Backspace, Qt::AltModifier, ""},
      {0, 3, Qt::Key_Delete, {}, "say: abc; and: Mažu"},
      {0, 3, Qt::Key_Backspace, {}, "say: abc; and: Mažu"},
      {6, 6, Qt::Key_Delete, {}, ""},
      {0, 0, Qt::Key_Backspace, {}, ""},
      {0, 0, Qt::Key_Control, {}, ""},
      {0, 2, Qt::Key_C, Qt::ControlModifier, "say: do schránky ab"},
  };
  for (const Case& test : cases) {
    window.Put(window.line, u"abc ef"_qs, test.anchor, test.cursor);
    EXPECT_EQ(window.Hear(test.key, test.modifiers), test.heard)
        << test.key << " at " << test.anchor << ".." << test.cursor;
  }
  QGuiApplication::clipboard()->setText(u"zkouška"_qs);
  EXPECT_EQ(window.Hear(Qt::Key_V, Qt::ControlModifier), "say: ze schránky zkouška");
}

TEST(EditBox, LinesOfALongTextAreSaidWhole) {
  EditWindow window;
  const QString text = u"první řádek\n\ntřetí"_qs;
  struct Case {
    int cursor, key;
    const char* heard;
  };
  for (const Case& test :
       {Case{2, Qt::Key_Up, "sound: empty.wav; say: první řádek"}, Case{2, Qt::Key_Down, "say: prázdný řádek"},
        Case{12, Qt::Key_Down, "say: třetí"}, Case{13, Qt::Key_Up, "say: prázdný řádek"},
        Case{15, Qt::Key_Home, "char: t"}, Case{15, Qt::Key_End, "char: í"}, Case{12, Qt::Key_Home, "say: "}}) {
    window.Put(window.text, text, test.cursor, test.cursor);
    EXPECT_EQ(window.Hear(test.key), test.heard) << test.key << " at " << test.cursor;
  }
  window.text.setReadOnly(true);
  window.Put(window.text, text, 0, 3);
  EXPECT_EQ(window.Hear(Qt::Key_Delete), "");
}

TEST(EditBox, AWrappedLineIsSaidAsItStandsOnTheScreen) {
  EditWindow window;
  window.Put(window.text, u"slovo "_qs.repeated(200), 0, 0);
  const QString heard = QString::fromStdString(window.Hear(Qt::Key_Down));
  EXPECT_TRUE(heard.startsWith(u"say: slovo slovo"_qs)) << heard.toStdString();
  EXPECT_LT(heard.size(), 400);
}

TEST(EditBox, ALetterOfTwoUnitsIsOneCharacter) {
  EditWindow window;
  window.Put(window.line, u"a😀b"_qs, 1, 1);
  EXPECT_EQ(window.Hear(Qt::Key_Delete), "char: 😀; and: Mažu");
  window.Put(window.line, u"a😀"_qs, 3, 3);
  EXPECT_EQ(window.Hear(Qt::Key_Backspace), "char: 😀; and: Mažu");
}

TEST(EditBox, AHiddenTextIsNeverSaid) {
  EditWindow window;
  window.line.setEchoMode(QLineEdit::Password);
  for (const int key : {Qt::Key_Right, Qt::Key_Up, Qt::Key_Delete, Qt::Key_Home, Qt::Key_End}) {
    window.Put(window.line, u"heslo"_qs, 1, 1);
    EXPECT_EQ(window.Hear(key).find_first_of("hesl", 5), std::string::npos) << key;
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
    window.world.Heard();
    const auto numericCtrl = Qt::ControlModifier | Qt::KeypadModifier;
    const bool resizes = flags & 1;
    EXPECT_EQ(window.Hear(Qt::Key_Plus, numericCtrl), resizes ? "say: Větší" : "") << flags;
    EXPECT_EQ(window.line.font().pointSize(), resizes ? 30 : 20);
    EXPECT_EQ(window.Hear(Qt::Key_Minus, numericCtrl), resizes ? "say: menší" : "") << flags;
    window.Hear(Qt::Key_Minus, numericCtrl);
    EXPECT_EQ(window.line.font().pointSize(), resizes ? 10 : 20);
    EXPECT_EQ(window.Hear(Qt::Key_Minus, numericCtrl), "") << flags;
  }
}

TEST(EditBox, TheBrailleLineFollowsTheCursor) {
  EditWindow window;
  window.world.braille.Present = true;
  window.Put(window.line, u"abc"_qs, 1, 1);
  window.Hear(Qt::Key_F9);
  EXPECT_EQ(window.world.braille.Shown.toStdString(), "abc");
  EXPECT_EQ(window.world.braille.Cursor, 1);
}

TEST(ComboBox, ATypedOneSpeaksButForTheKeysOfItsList) {
  EditWindow window;
  window.combo.addItems({u"x"_qs, u"y"_qs});
  window.combo.setFocus();
  window.combo.lineEdit()->setText(u"abc"_qs);
  window.combo.lineEdit()->setCursorPosition(0);
  window.world.Heard();
  EXPECT_EQ(window.Hear(Qt::Key_Right), "char: b");
  for (const int key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp}) EXPECT_EQ(window.Hear(key), "");
}

}  // namespace
}  // namespace talnik::test
