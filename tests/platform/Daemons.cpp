#include "platform/Daemons.h"

#include "support/FormDriver.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTcpSocket>

#include <signal.h>

#ifdef __SANITIZE_THREAD__
#include <dlfcn.h>
#include <sched.h>

#include <cstdarg>

/// A child that shares our memory until it runs its program would confuse the checker of threads; it gets a copy.
extern "C" int clone(int (*work)(void*), void* stack, int flags, void* given, ...) {
  va_list more;
  va_start(more, given);
  void* const places[] = {va_arg(more, void*), va_arg(more, void*), va_arg(more, void*)};
  va_end(more);
  static const auto real = reinterpret_cast<decltype(&clone)>(dlsym(RTLD_NEXT, "clone"));
  return real(work, stack, flags & ~(CLONE_VM | CLONE_VFORK), given, places[0], places[1], places[2]);
}
#endif

namespace talnik::test {

Daemon::~Daemon() {
  if (process_.state() == QProcess::NotRunning) return;
  Thaw();
  process_.terminate();
  if (!process_.waitForFinished(3000)) Kill();
}

bool Daemon::Run(const QString& program, const QString& options) {
  process_.setProcessEnvironment(environment_);
  process_.setWorkingDirectory(folder_.path());
  process_.setStandardOutputFile(QProcess::nullDevice());
  process_.setStandardErrorFile(Path(u"stderr"_qs));
  process_.start(QStandardPaths::findExecutable(program), options.split(u' '));
  return process_.waitForStarted();
}

bool Daemon::IsInstalled(const QString& program) {
  return !QStandardPaths::findExecutable(program).isEmpty();
}

void Daemon::Signal(int number) {
  // Number 0 would be this process and its siblings.
  if (process_.processId() > 0) kill(static_cast<pid_t>(process_.processId()), number);
}

void Daemon::Kill() {
  process_.kill();
  process_.waitForFinished();
}

SoundServer::SoundServer(Microphone microphone) : microphone_(microphone), server_("PULSE_SERVER", Address().toUtf8()) {
  environment_.remove(u"PULSE_SERVER"_qs);
  for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "PULSE_RUNTIME_PATH"}) {
    environment_.insert(QString::fromLatin1(name), folder_.path());
  }
}

bool SoundServer::Start() {
  const QByteArray microphone =
      microphone_ == Microphone::None
          ? QByteArray()
          : QByteArray("load-module module-null-sink sink_name=mic norewinds=1\nset-default-source mic.monitor\n");
  // A socket left by a killed server is none of this one.
  QFile::remove(Path(u"native"_qs));
  // Without rewinding the sink sleeps 50 ms at a time, else two seconds.
  WriteFile(Path(u"default.pa"_qs),
            "load-module module-null-sink sink_name=out norewinds=1\n"
            "load-module module-native-protocol-unix auth-anonymous=1 socket=" +
                Path(u"native"_qs).toUtf8() + "\nset-default-sink out\n" + microphone);
  return Run(u"pulseaudio"_qs,
             u"-n -F %1 --daemonize=no --exit-idle-time=-1 --disallow-exit"_qs.arg(Path(u"default.pa"_qs))) &&
         FormDriver::Until([this] { return QFileInfo::exists(Path(u"native"_qs)); });
}

namespace {

constexpr int EarRate = 8000;

}  // namespace

Ear::Ear(const SoundServer& server) {
  const QString options =
      u"--server %1 -d out.monitor --raw --format=s16le --rate=%2 --channels=1 --latency-msec=20"_qs;
  recorder_.start(u"parec"_qs, options.arg(server.Address()).arg(EarRate).split(u' '));
}

Ear::~Ear() {
  recorder_.kill();
  recorder_.waitForFinished();
}

bool Ear::Listen() {
  return FormDriver::Until([this] {
    Hear();
    return heard_ > 0;
  });
}

void Ear::Hear() {
  const QByteArray bytes = recorder_.read(recorder_.bytesAvailable() / 2 * 2);
  for (qsizetype i = 0; i + 1 < bytes.size(); i += 2, ++heard_) {
    const auto sample = static_cast<qint16>(static_cast<uchar>(bytes[i]) | static_cast<uchar>(bytes[i + 1]) << 8);
    if (std::abs(sample) < 100) continue;
    // The crossings of zero between two loud samples sound as well.
    loud_ += std::min<qint64>(heard_ - lastLoud_, EarRate / 200);
    lastLoud_ = heard_;
  }
}

int Ear::LoudMilliseconds() {
  Hear();
  return static_cast<int>(loud_ * 1000 / EarRate);
}

int Ear::QuietMilliseconds() {
  Hear();
  return static_cast<int>((heard_ - lastLoud_) * 1000 / EarRate);
}

SpeechDaemon::SpeechDaemon(const SoundServer& server)
    : address_("SPEECHD_ADDRESS", "unix_socket:" + Path(u"speech.sock"_qs).toUtf8()) {
  environment_.insert(u"PULSE_SERVER"_qs, server.Address());
  environment_.insert(u"HOME"_qs, folder_.path());
}

SpeechDaemon::~SpeechDaemon() = default;

bool SpeechDaemon::IsInstalled() {
  return Daemon::IsInstalled(u"speech-dispatcher"_qs) && Daemon::IsInstalled(u"pulseaudio"_qs) &&
         QFileInfo::exists(u"/etc/speech-dispatcher/modules/espeak-ng.conf"_qs);
}

bool SpeechDaemon::Start() {
  QDir(folder_.path()).mkpath(u"modules"_qs);
  QFile::copy(u"/etc/speech-dispatcher/modules/espeak-ng.conf"_qs, Path(u"modules/espeak-ng.conf"_qs));
  // The level at which the log holds the texts.
  WriteFile(Path(u"speechd.conf"_qs),
            "LogLevel 5\nDefaultLanguage \"en\"\nAudioOutputMethod \"pulse\"\n"
            "AddModule \"espeak-ng\" \"sd_espeak-ng\" \"espeak-ng.conf\"\n"
            "DefaultModule \"espeak-ng\"\nDisableAutoSpawn\n");
  for (const char* left : {"speech.sock", "speech.pid", "speech-dispatcher.log"}) {
    QFile::remove(Path(QString::fromLatin1(left)));
  }
  read_ = 0;
  const auto isListening = [this] {
    QLocalSocket socket;
    socket.connectToServer(Path(u"speech.sock"_qs));
    return socket.waitForConnected(0);
  };
  return Run(u"speech-dispatcher"_qs,
             u"-s -C %1 -S %1/speech.sock -P %1/speech.pid -L %1 -t 0"_qs.arg(folder_.path())) &&
         FormDriver::Until(isListening);
}

QStringList SpeechDaemon::News() {
  static const QRegularExpression deed(
      u"output module: \\|<speak>(?<say>.*?)</speak>\\||output module: \\|(?<char>[^|\\n]+)\\| \\(0\\)|"
      "^(?<end>702 END)|^(?<cut>703 CANCELED)"_qs,
      QRegularExpression::MultilineOption);
  QByteArray lines = Log().mid(read_);
  lines.truncate(lines.lastIndexOf('\n') + 1);
  read_ += lines.size();
  const QString log = QString::fromUtf8(lines);
  QStringList news;
  for (auto found = deed.globalMatch(log); found.hasNext();) {
    const QRegularExpressionMatch match = found.next();
    const QString name = deed.namedCaptureGroups()[match.lastCapturedIndex()];
    const bool isText = name == u"say"_qs || name == u"char"_qs;
    news << (isText ? QString(name + u": "_qs + match.captured(name)) : name);
  }
  return news;
}

BrailleDaemon::BrailleDaemon()
    : port_(static_cast<int>(QCoreApplication::applicationPid() % 20000) + 100),
      host_("BRLAPI_HOST", "127.0.0.1:" + QByteArray::number(port_)),
      authorization_("BRLAPI_AUTH", "none") {
  QObject::connect(&display_, &QLocalServer::newConnection, &display_, [this] {
    wire_ = display_.nextPendingConnection();
    wire_->write("Cells 40\n");
    QObject::connect(wire_, &QLocalSocket::readyRead, wire_, [this] {
      while (wire_->canReadLine()) OnLine(QString::fromUtf8(wire_->readLine()).trimmed());
    });
  });
}

BrailleDaemon::~BrailleDaemon() = default;

bool BrailleDaemon::Start() {
  if (!display_.isListening() && !display_.listen(Path(u"display.sock"_qs))) return false;
  visual_.clear();
  constexpr int firstPort = 4101;
  const auto isListening = [this] {
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_qs, static_cast<quint16>(firstPort + port_));
    return socket.waitForConnected(100) && !visual_.isEmpty();
  };
  const QString options =
      u"-n -e -q -f /dev/null -b vr -d client:%1/display.sock -x no -s no -t cs -A auth=none,host=127.0.0.1:%2 "
      "-P %1/brltty.pid -W %1 -U %1 -F %1/preferences"_qs;
  return Run(u"brltty"_qs, options.arg(folder_.path()).arg(port_)) && FormDriver::Until(isListening);
}

void BrailleDaemon::Press(const QByteArray& key) {
  if (wire_) wire_->write(key + "\n");
}

void BrailleDaemon::OnLine(const QString& line) {
  const QString value = line.section(u'"', 1).chopped(line.endsWith(u'"') ? 1 : 0);
  if (line.startsWith(u"Visual"_qs)) {
    QString shown = value;
    while (shown.endsWith(u' ')) shown.chop(1);
    visual_ << shown;
  }
  if (!line.startsWith(u"Braille"_qs)) return;
  // The cursor is drawn with the two lowest dots, which the letters of our texts do not have.
  cursorCell_ = 0;
  const QStringList cells = value.split(u'|');
  for (qsizetype i = 0; i < cells.size(); ++i) {
    if (cells[i].endsWith(u"78"_qs)) cursorCell_ = static_cast<int>(i) + 1;
  }
}

}  // namespace talnik::test
