#pragma once

#include "shell/Form.h"

#include <QStringList>
#include <QTimer>

#include <array>

class QLabel;
class QScrollArea;

namespace talnik {

/// A list of choices over the whole screen, of which the user takes one.
class frmAction : public Form {
  Q_OBJECT

 public:
  static constexpr int LabelCount = 13;

  explicit frmAction(FormServices& services, QWidget* parent = nullptr);

  /// Shows title and choices, separated by ";", and returns when one is taken or the list is left.
  void InitActions(const QString& text);
  /// What the speech component is told when the choice `index`, counted from 1, is accepted; 0 for nothing.
  void ActionOnShortCut(int index, int action);
  /// A letter accepts its choice, silently, when it is released.
  void BlockOnAction() { blockOnActionMode_ = true; }

  int ChosenAction = -1;     ///< counted from 1; -1 for none
  QString ChosenActionText;  ///< empty for none

  QTimer FocusTimer;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLabel* Label(int index) const { return labels_.at(static_cast<std::size_t>(index - 1)); }
  void LayOut();
  int ChoiceSize() const;
  void HandleKeys();
  void ListKeyDown(Key& key);
  void ListKeyUp(Key& key);
  void GoToLetter(const Key& key);
  void Move(int by);
  void Select(int choice, bool speak);
  void Accept();
  void Activate();
  void KeepFocus();

  std::array<QLabel*, LabelCount> labels_{};
  QScrollArea* area_;
  QString title_;
  QStringList choices_;
  std::array<int, LabelCount + 1> shortCutActions_{};
  int choiceCount_ = 0;
  int currentChoice_ = 1;
  int choiceSize_ = 0;
  bool speakChanges_ = false;
  bool blockOnActionMode_ = false;
  bool pendingAction_ = false;
};

}  // namespace talnik
