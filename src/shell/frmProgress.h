#pragma once

#include "shell/FocusSpeech.h"
#include "shell/Form.h"

class QFrame;
class QLabel;
class QLineEdit;

namespace talnik {

/// The progress of a long job, which goes on while the window stands: a bar that sounds, a line of status that can be
/// read, and a button to give up. The job calls SetShape, which lets events through, and looks at Cancelled behind it.
class frmProgress : public Form {
  Q_OBJECT

 public:
  frmProgress(FormServices& services, const QString& caption, QWidget* parent = nullptr);

  /// Shows the window and returns. Under a modal one the rest of the program takes no keys.
  void Open(Qt::WindowModality modality);
  /// The end of the job; this is no cancelling.
  void Unload();

  /// Only while the window is visible: the bar and its sound stand at `step` of `total`. Lets events through.
  void SetShape(qint64 step, qint64 total);
  /// The line of status, shown without a word.
  void ShowStatus(const QString& status);

  /// The user has pressed "Storno" or Escape or has closed the window.
  bool Cancelled() const { return cancelled_; }

  /// SetShape also says each ten percent when nothing else is being said, and shows it as the status.
  bool SayPercent = false;

  QLabel* Label1;    ///< the phase
  QLineEdit* Text1;  ///< the last line of status
  QWidget* Shape1;   ///< the bar
  QPushButton* cmdCancel;

 public Q_SLOTS:
  /// Every way in which the user closes the window.
  void done(int result) override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void BuildControls();
  void DrawBar();
  void TellTens();

  QFrame* frame_;  ///< the full length of the bar
  int percent_ = 0;
  int saidTens_ = 0;
  OpeningTitle title_;
  bool cancelled_ = false;
};

}  // namespace talnik
