#include "recurrence/frmDeleteRecurrentEvent.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace talnik {

namespace {

constexpr int kDeleteTag = 1732;

}  // namespace

frmDeleteRecurrentEvent::frmDeleteRecurrentEvent(FormServices& services, int& recurrChoice, QWidget* parent)
    : Form(services, u"frmDeleteRecurrentEvent"_qs, kDeleteTag, parent), recurrChoice_(recurrChoice) {
  setWindowTitle(tr("Smazat opakovanou událost"));
  auto* column = new QVBoxLayout(this);
  const auto add = [&](const QString& name, const QString& caption, int choice) {
    auto* button = new QPushButton(caption, this);
    NameControl(button, name);
    LetButtonSpeak(button, events(), speech(), title_);
    connect(button, &QPushButton::clicked, this, [this, choice] { Answer(choice); });
    column->addWidget(button);
    return button;
  };
  cmdDelSingle = add(u"cmdDelSingle"_qs, tr("Pouze tuto"), RecurrOnlyThis);
  cmdAll = add(u"cmdAll"_qs, tr("Všechny"), RecurrAll);
  cmdCancel = add(u"cmdCancel"_qs, tr("Storno"), RecurrNone);
  // Only the frame of the window leaves the answer as it was.
  events().FormKeyDown([this](Key& key) {
    if (!key.Is(Qt::Key_Escape)) return;
    key.Swallow();
    Answer(RecurrNone);
  });
}

void frmDeleteRecurrentEvent::SetCaptionForEdit() {
  setWindowTitle(tr("Upravit opakovanou událost"));
}

void frmDeleteRecurrentEvent::Run() {
  title_.Set(windowTitle());
  cmdDelSingle->setFocus();
  ShowModal();
}

void frmDeleteRecurrentEvent::Answer(int choice) {
  recurrChoice_ = choice;
  accept();
}

}  // namespace talnik
