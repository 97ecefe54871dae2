#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

/// Without a window manager nobody activates the window under a dialog that has closed; this does.
class Activator : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* window = qobject_cast<QWidget*>(watched);
    if (window && window->isWindow() && event->type() == QEvent::Hide && window->parentWidget()) {
      QTimer::singleShot(0, window->parentWidget()->window(), [parent = window->parentWidget()->window()] {
        if (parent->isVisible()) parent->activateWindow();
      });
    }
    return false;
  }
};

}  // namespace

/// Small texts that the speech library loses when no daemon answers, the stack ends in its allocator; what the font
/// library keeps of a letter that no font has; what the bus and the Braille library still hold of a call that was under
/// way when its connection was closed.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libspeechd\nleak:libglib-2.0\nleak:libfontconfig\nleak:libQt6DBus\nleak:libdbus-1\nleak:libbrlapi\n";
}

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  Activator activator;
  application.installEventFilter(&activator);
  return RUN_ALL_TESTS();
}
