#include "calendar/frmMain.h"
#include "platform/linux/EndSignals.h"
#include "platform/linux/MakePlatform.h"
#include "platform/linux/XcbKeyboardHook.h"
#include "shell/ControlEvents.h"
#include "shell/FieldForReader.h"
#include "shell/ReaderEvents.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(u"talnik"_qs);
  QApplication::setApplicationVersion(QStringLiteral(TALNIK_VERSION));
  QApplication::setDesktopFileName(QStringLiteral(TALNIK_ID));
  // The program lives on in the tray; it ends only when the main window says so.
  QApplication::setQuitOnLastWindowClosed(false);

  // Our own texts are Czech as they stand. Where the user's language is another one, what is there in it is taken.
  QTranslator texts;
  if (texts.load(QLocale(), u"talnik"_qs, u"_"_qs, u":/i18n"_qs)) QApplication::installTranslator(&texts);
  // Those of the toolkit follow ours where they are installed.
  QTranslator toolkit;
  if (toolkit.load(u"qtbase_cs"_qs, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QApplication::installTranslator(&toolkit);
  }
  talnik::ShowFieldsToReaders();
  talnik::TidyEventsForReaders();
  talnik::EnableDetectableAutoRepeat();
  talnik::ControlEvents::AskKeyboard(talnik::IsKeyHeld);

  talnik::frmMain main(talnik::MakePlatform(), QApplication::arguments().mid(1));
  QObject::connect(&main, &talnik::frmMain::Ended, &application, [] { QCoreApplication::exit(0); });
  const talnik::EndSignals session([&main] { main.EndSession(); });
  if (!main.Load()) return 0;
  return QApplication::exec();
}
