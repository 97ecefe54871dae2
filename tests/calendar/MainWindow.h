#pragma once

#include "calendar/frmMain.h"
#include "editor/EditorControls.h"
#include "shell/TextControls.h"
#include "support/FakePlatform.h"
#include "support/Files.h"
#include "support/FormDriver.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace talnik::test {

/// The whole main window over a world of fakes, with data of its own. It is 15 January 2024, 8:30, a Monday.
class MainWindow : public ::testing::Test {
 protected:
  MainWindow();

  /// Starts the program and waits until its list has the keyboard.
  void Start(const QStringList& arguments = {});
  void Load(const QStringList& arguments = {});
  /// Puts the list on a day, without leaving anything in what was heard.
  void GoTo(const QString& dateText);
  /// The user goes to another program; offscreen nothing else takes the keyboard from a window that hides.
  void GoElsewhere();
  /// True when the main window gets the keyboard.
  bool ComesToFront();
  /// A record from `start` to `end`, written past the program. An alarm at `alarm` unless it is empty.
  void Add(const QString& text, const QString& start, const QString& end = {}, const QString& alarm = {});
  qint64 RowCount();
  void Execute(const Statement& statement);
  void SetNote(const QString& text, const QString& wav) {
    Execute({u"UPDATE schedule SET wav=? WHERE appointment=?"_qs, {wav, text}});
  }
  /// In the next window the field, if one is named, is filled and the button pressed.
  void ExpectClick(const char* button, const char* field = nullptr, const QString& text = {});
  /// In the next window, which is to have this name, the script is played.
  void ExpectPlay(const char* window, const QString& script);
  /// The next window is the editor, which is closed at once; `field` of it is to hold `text`.
  void ExpectEditor(const char* field, const QString& text) {
    ExpectPlay("frmSchedule", QLatin1String(field) + u':' + text + u" | Escape"_qs);
  }
  void ExpectMessage(const QString& text, const char* button = "cmdYES") { user_.ExpectMessage(text, button); }
  QAction* Menu(const char* name) { return main_->Menu(name); }
  void Choose(const char* name) { Menu(name)->trigger(); }
  QString InData(const char* name) const;
  QString DayAndMonth() const { return main_->List1->Text() + u' ' + main_->Label1->text(); }
  /// What was heard since the last call, one line each.
  std::string Heard() { return world_.Heard().join(u'\n').toStdString(); }
  /// See FormDriver::Play.
  void Play(const QString& script, QWidget* window = nullptr) {
    user_.Play(
        script, [this] { return Heard(); }, true, window);
  }

  QTemporaryDir folder_;
  FakeWorld world_;
  FormDriver user_;
  QWidget elsewhere_;
  std::unique_ptr<frmMain> main_;
  int ended_ = 0;
};

}  // namespace talnik::test
