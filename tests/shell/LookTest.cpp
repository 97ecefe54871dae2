#include "shell/Form.h"
#include "shell/TextControls.h"
#include "shell/frmProgress.h"
#include "support/Contrast.h"
#include "support/FormWorld.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QVBoxLayout>

namespace talnik::test {
namespace {

TEST(Look, UnavailableControlsStayReadable) {
  for (const auto& [fore, back] : {std::pair(QColor(255, 255, 0), QColor(0, 0, 0)),
                                   {Qt::black, Qt::yellow},
                                   {Qt::white, Qt::blue},
                                   {Qt::darkBlue, Qt::white}}) {
    EXPECT_GE(Contrast(SubduedColor(fore, back), back), Readable) << fore.name().toStdString();
  }
  EXPECT_EQ(SubduedColor(Qt::gray, Qt::white), QColor(Qt::gray));
}

/// One control of every kind.
struct Gallery : Form {
  explicit Gallery(FormServices& services) : Form(services, u"frmGallery"_qs, 1799) {
    auto* column = new QVBoxLayout(this);
    const QString text = u"Návštěva"_qs;
    auto* list = new ListBox;
    list->addItem(text);
    list->SetListIndex(0);
    auto* choice = new QComboBox;
    choice->addItem(text);
    auto* group = new QGroupBox(text);
    (new QVBoxLayout(group))->addWidget(new QLabel(text));
    auto* tabs = new QTabBar;
    for (int tab = 0; tab < 2; ++tab) tabs->addTab(text);
    framed = {new QPushButton(text), new QLineEdit(text), new QPlainTextEdit(text), list, choice, group};
    options = {new QCheckBox(text), new QRadioButton(text)};
    for (QWidget* control : {static_cast<QWidget*>(new QLabel(text)), static_cast<QWidget*>(tabs)}) {
      column->addWidget(control);
    }
    for (const auto& controls : {framed, options}) {
      for (QWidget* control : controls) column->addWidget(control);
    }
  }
  QList<QWidget*> framed;
  QList<QWidget*> options;
};

/// The text of a control, and its frame at the left.
void ExpectToStandOut(QWidget* control, bool framed, const std::string& state) {
  const QImage picture = control->grab().toImage();
  constexpr int depth = 8;
  constexpr int length = 30;
  EXPECT_GE(Contrast(picture), Readable) << state;
  const QRect frame(0, (picture.height() - length) / 2, depth, length);
  if (framed) {
    EXPECT_GE(Contrast(picture.copy(frame)), Readable) << "frame " << state;
  }
}

TEST(Look, EveryStateOfEveryControlStandsOut) {
  FormWorld w;
  Gallery form(w.services);
  form.show();
  form.activateWindow();
  ASSERT_TRUE(FormDriver::Until([&] { return form.isActiveWindow(); }));
  for (QWidget* control : form.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    const std::string name = control->metaObject()->className();
    const bool framed = form.framed.contains(control);
    form.setFocus();
    const QSize size = control->sizeHint();
    ExpectToStandOut(control, framed, name);
    control->setFocus();
    FormDriver::Settle();
    ExpectToStandOut(control, framed || form.options.contains(control), name + " with the focus");
    EXPECT_EQ(control->sizeHint(), size) << name;
    if (auto* field = qobject_cast<QLineEdit*>(control)) field->selectAll();
    if (auto* note = qobject_cast<QPlainTextEdit*>(control)) note->selectAll();
    if (auto* option = qobject_cast<QAbstractButton*>(control)) option->setChecked(true);
    ExpectToStandOut(control, framed, name + " selected");
    control->setEnabled(false);
    ExpectToStandOut(control, framed, name + " unavailable");
  }
}

TEST(Look, TheBarOfProgressStandsOut) {
  FormWorld w;
  frmProgress form(w.services, u"Průběh"_qs);
  form.Open(Qt::NonModal);
  for (const int percent : {0, 50}) {
    form.SetShape(percent, 100);
    ExpectToStandOut(form.Shape1->parentWidget(), percent == 0, std::to_string(percent) + " percent");
  }
}

}  // namespace
}  // namespace talnik::test
