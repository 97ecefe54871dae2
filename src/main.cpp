#include "calendar/frmMain.h"
#include "platform/linux/MakePlatform.h"

#include <QApplication>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(u"talnik"_qs);
  // The program lives on in the tray; it ends only when the main window says so.
  QApplication::setQuitOnLastWindowClosed(false);

  talnik::frmMain main(talnik::MakePlatform(), QApplication::arguments().mid(1));
  QObject::connect(&main, &talnik::frmMain::Ended, &application, [] { QCoreApplication::exit(0); });
  if (!main.Load()) return 0;
  return QApplication::exec();
}
