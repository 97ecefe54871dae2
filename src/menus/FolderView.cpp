#include "menus/FolderView.h"

#include "shell/LineDelegate.h"

namespace talnik {

int FolderModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

QVariant FolderModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= lines_.size()) return {};
  const Folders::Entry& line = lines_[index.row()];
  if (role == Qt::DisplayRole) return line.isFolder ? QString(line.name + u'/') : line.name;
  if (role == Qt::AccessibleTextRole) return SpokenEntry(line);
  return {};
}

void FolderModel::Show(const QList<Folders::Entry>& lines) {
  beginResetModel();
  lines_ = lines;
  endResetModel();
}

FolderView::FolderView(QWidget* parent) : QListView(parent), model_(this) {
  setModel(&model_);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setWordWrap(true);
  setResizeMode(Adjust);
  setItemDelegate(new LineDelegate(this));
}

void FolderView::Show(const QList<Folders::Entry>& lines, int row) {
  showing_ = true;
  model_.Show(lines);
  SetRow(row);
  showing_ = false;
}

const Folders::Entry* FolderView::Line() const {
  return currentIndex().isValid() ? &model_.Lines()[Row()] : nullptr;
}

void FolderView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QListView::currentChanged(current, previous);
  if (!showing_ && current.isValid()) Q_EMIT Moved();
}

}  // namespace talnik
