#pragma once

#include "menus/FolderList.h"

#include <QAbstractListModel>
#include <QListView>

namespace talnik {

/// The lines of a folder as the toolkit and screen readers see them; nothing is made for a line that is not looked at.
class FolderModel : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;

  void Show(const QList<Folders::Entry>& lines);
  const QList<Folders::Entry>& Lines() const { return lines_; }

 private:
  QList<Folders::Entry> lines_;
};

/// A list of folders and files, with a line under the cursor unless it is empty.
class FolderView : public QListView {
  Q_OBJECT

 public:
  explicit FolderView(QWidget* parent = nullptr);

  /// Shows the lines, with the cursor on a row of them; that is no move.
  void Show(const QList<Folders::Entry>& lines, int row = 0);
  const QList<Folders::Entry>& Lines() const { return model_.Lines(); }
  int Row() const { return currentIndex().row(); }
  void SetRow(int row) { setCurrentIndex(model_.index(row)); }
  /// The line under the cursor; empty when there is none. It holds until the next Show.
  const Folders::Entry* Line() const;

  /// Letters are the window's business.
  void keyboardSearch(const QString&) override {}

 Q_SIGNALS:
  /// The cursor has moved to another line.
  void Moved();

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  FolderModel model_;
  bool showing_ = false;
};

}  // namespace talnik
