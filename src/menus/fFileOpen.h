#pragma once

#include "menus/FolderSearch.h"
#include "menus/PickerRequest.h"
#include "platform/Folders.h"
#include "shell/FocusSpeech.h"
#include "shell/Form.h"

#include <QStringList>
#include <QTimer>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace talnik {

class FolderView;
class ListBox;

/// Lets the user walk through drives and folders, type a name or search, and choose a file.
class fFileOpen : public Form {
  Q_OBJECT

 public:
  fFileOpen(FormServices& services, Folders& folders, const PickerRequest& request, QWidget* parent = nullptr);

  /// Shows the window modally, in the folder of the request or the nearest one to it that can be read, else in
  /// `otherFolder`. Gives the full path of what was chosen; empty for Storno.
  QString Pick(const QString& otherFolder);

  /// The folder that is shown.
  const QString& Folder() const { return folder_; }

  ListBox* drvList = nullptr;
  FolderView* dirList = nullptr;
  QComboBox* cbFilter = nullptr;
  QStringList lstMask;  ///< the masks behind the lines of cbFilter
  QLineEdit* Text1 = nullptr;
  QLineEdit* txtFind = nullptr;
  QPushButton* cmdFind = nullptr;
  QPushButton* Command1 = nullptr;
  QPushButton* cmdCancel = nullptr;
  QLabel* lblDrives = nullptr;
  QLabel* lblFolder = nullptr;
  QLabel* lblFilter = nullptr;
  QLabel* lblName = nullptr;
  QLabel* lblFind = nullptr;

 protected:
  /// The line under the cursor has just been said.
  virtual void LineWasSaid() {}
  /// The full path of the file under the cursor; empty when it is none.
  QString FileOfLine() const;

 private:
  using Answer = Folders::Answer;
  using Outcome = Folders::Outcome;
  enum class Reach { NearestReadable, NearestLeft };

  // Controls and keys (fFileOpenControls.cpp).
  void BuildControls();
  void BuildFilter();
  void LayOut();
  QLabel* AddLabel(const char* name, const QString& caption, QWidget* buddy);
  void ConnectButtons();
  void ConnectFields();
  void ConnectDrives();
  void ConnectFilter();
  void ConnectFolder();
  void ListPlaces();
  void FolderKeyDown(const Key& key);
  void FolderKeyPress(Key& key);
  void FindLetters(const QString& letters);
  void SayWhere();

  // Walking (fFileOpen.cpp).
  void Read(const QString& path, std::function<void(const Answer&)> then);
  void Begin(const QString& otherFolder);
  void Walk(QStringList paths, const QString& cursorAt, Reach reach);
  void ShowFolder(const QString& path, const Answer& answer, const QString& cursorAt);
  void ListFolder(const QString& cursorAt);
  void GoUp();
  void EnterLine();
  void GoToDrive();
  void ShowHeading(const QString& prefix);
  void FocusList();
  void ReadList();
  QString LineText() const;
  NameFilter Filter() const;
  void MirrorLine();
  QString PathOfLine() const;

  // Choosing (fFileOpen.cpp).
  void Command1_Click();
  void Accept(const QString& path);
  void Judge(const QString& path, Outcome outcome);
  void Finish(const QString& path);

  // Searching (fFileOpenSearch.cpp).
  void cmdFind_Click();
  void StartSearch();
  void EndSearch();
  void ShowFound();
  void SayProgress();

  Folders& folders_;
  PickerRequest request_;
  FolderSearch search_;
  OpeningTitle title_;
  QTimer slow_;      ///< until a reading that is under way is spoken of
  QTimer progress_;  ///< of the search
  QTimer typing_;    ///< until letters begin a new word
  QString typed_;
  QList<Folders::Place> places_;
  QString folder_;  ///< empty until the first one has been read
  QList<Folders::Entry> entries_;
  QString heading_;  ///< what the list shows, as it is said
  bool showsFound_ = false;
  bool focusIsTaken_ = false;  ///< the list takes the focus when it has been filled
  QString chosen_;
};

}  // namespace talnik
