#include "platform/linux/LinuxShell.h"

#include "platform/linux/IniFile.h"
#include "platform/linux/PrivateFiles.h"
#include "platform/linux/UserFolders.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
#include <QUrl>

#include <utility>

namespace talnik {

namespace {

const QString DesktopEntry = QStringLiteral("Desktop Entry");

/// Where the desktops keep what concerns speech and the screen reader.
struct DesktopSettings {
  const char* desktop;  ///< part of XDG_CURRENT_DESKTOP
  const char* program;
  const char* arguments;  ///< one word at most
};

constexpr DesktopSettings kSettings[] = {{"GNOME", "gnome-control-center", "universal-access"},
                                         {"KDE", "systemsettings", "kcm_access"},
                                         {"MATE", "mate-at-properties", ""},
                                         {"XFCE", "xfce4-accessibility-settings", ""},
                                         {"Cinnamon", "cinnamon-settings", "accessibility"}};

QString AutostartFile() {
  const QString folder = ConfigHome();
  return folder.isEmpty() ? QString() : folder + u"/autostart/talnik.desktop";
}

bool Says(const IniText& entry, const QString& key, QStringView word) {
  return entry.Value(DesktopEntry, key).value_or(QString()).compare(word, Qt::CaseInsensitive) == 0;
}

/// Starts a program that outlives this one, and tells when it could not do its work. A viewer that has been open for a
/// while may end as it likes.
void StartWatched(const QString& program, const QStringList& arguments, std::function<void()> failed) {
  constexpr qint64 whileStarting = 10'000;
  auto* process = new QProcess;
  process->setStandardInputFile(QProcess::nullDevice());
  process->setStandardOutputFile(QProcess::nullDevice());
  process->setStandardErrorFile(QProcess::nullDevice());
  QElapsedTimer sinceStart;
  sinceStart.start();
  const auto over = [process, failed = std::move(failed), sinceStart](bool done) {
    process->deleteLater();
    if (!done && failed && sinceStart.elapsed() < whileStarting) failed();
  };
  QObject::connect(process, &QProcess::finished, process, [over](int code, QProcess::ExitStatus status) {
    over(status == QProcess::NormalExit && code == 0);
  });
  QObject::connect(process, &QProcess::errorOccurred, process, [over](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) over(false);
  });
  process->start(program, arguments);
}

}  // namespace

QString ExecWord(const QString& word) {
  // The quoting of the command line comes first, the escapes of a text value around it.
  QString quoted;
  for (const QChar letter : word) {
    if (QStringView(u"\"`$\\").contains(letter)) quoted += u'\\';
    if (letter == u'%') quoted += u'%';
    quoted += letter;
  }
  return u'"' + quoted.replace(u'\\', u"\\\\"_qs) + u'"';
}

LinuxShell::LinuxShell(QString program) : program_(std::move(program)) {}

QString LinuxShell::Program() const {
  return program_.isEmpty() ? QCoreApplication::applicationFilePath() : program_;
}

QString LinuxShell::LocalDataFolder() const {
  return DataHome();
}

QString LinuxShell::InstalledFolder() const {
  const QString beside = QFileInfo(Program()).path();
  const QString installed = QDir::cleanPath(beside + u"/../share/talnik");
  const QString staged = beside + u"/share/talnik";
  return (!QFileInfo(installed).isDir() && QFileInfo(staged).isDir() ? staged : installed) + u'/';
}

bool LinuxShell::AutostartIsOn() const {
  const QString path = AutostartFile();
  if (path.isEmpty()) return false;
  const IniFile file;
  const IniText& entry = file.Read(path);
  const bool named = !entry.Value(DesktopEntry, u"Exec"_qs).value_or(QString()).isEmpty();
  // Desktops switch an entry off by these two, and leave the file.
  return named && !Says(entry, u"Hidden"_qs, u"true") && !Says(entry, u"X-GNOME-Autostart-enabled"_qs, u"false");
}

bool LinuxShell::AutostartOn() {
  const QString path = AutostartFile();
  if (path.isEmpty()) return false;
  const QString entry =
      u"[Desktop Entry]\n"
      "Type=Application\n"
      "Name=Talník\n"
      "Icon="_qs +
      QGuiApplication::desktopFileName() + u"\nTerminal=false\nExec="_qs + ExecWord(Program()) + u" /h\n";
  return ReplacePrivateFile(path, entry.toUtf8());
}

bool LinuxShell::AutostartOff() {
  const QString path = AutostartFile();
  return path.isEmpty() || !QFileInfo::exists(path) || QFile::remove(path);
}

bool LinuxShell::Open(const QString& path, std::function<void()> failed) {
  const bool isAddress = path.contains(u"://"_qs) || path.startsWith(u"mailto:"_qs);
  if (!isAddress && !QFileInfo::exists(path)) return false;
  const QUrl url = isAddress ? QUrl(path) : QUrl::fromLocalFile(path);
  const QString opener = QStandardPaths::findExecutable(u"xdg-open"_qs);
  // Under Wayland only the toolkit can pass the keyboard on to the window that comes up.
  const bool wayland = QGuiApplication::platformName().startsWith(u"wayland"_qs);
  if (opener.isEmpty() || wayland) return QDesktopServices::openUrl(url);
  StartWatched(opener, {url.toString(QUrl::FullyEncoded)}, std::move(failed));
  return true;
}

bool LinuxShell::Start(const QString& program, const QStringList& arguments) {
  return QProcess::startDetached(program, arguments);
}

bool LinuxShell::OpenAccessibilitySettings() {
  const QString desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
  for (const DesktopSettings& settings : kSettings) {
    if (!desktop.contains(QLatin1String(settings.desktop), Qt::CaseInsensitive)) continue;
    const QString program = QStandardPaths::findExecutable(QString::fromLatin1(settings.program));
    const QStringList arguments = QString::fromLatin1(settings.arguments).split(u' ', Qt::SkipEmptyParts);
    if (!program.isEmpty() && QProcess::startDetached(program, arguments)) return true;
  }
  return false;
}

}  // namespace talnik
