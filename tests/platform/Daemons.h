#pragma once

#include "platform/Places.h"

#include <QLocalServer>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <csignal>
#include <memory>

class QLocalSocket;

namespace talnik::test {

/// A daemon of the test's own: stopped, gone on or killed as the test likes, and gone with it.
class Daemon {
 public:
  virtual ~Daemon();

  /// False when it did not come up.
  virtual bool Start() = 0;
  /// The daemon keeps its sockets and answers nobody.
  void Freeze() { Signal(SIGSTOP); }
  void Thaw() { Signal(SIGCONT); }
  void Kill();

  static bool IsInstalled(const QString& program);

 protected:
  /// `options` are separated by blanks.
  bool Run(const QString& program, const QString& options);
  QString Path(const QString& name) const { return folder_.filePath(name); }

  QTemporaryDir folder_;
  QProcessEnvironment environment_ = QProcessEnvironment::systemEnvironment();

 private:
  void Signal(int number);

  QProcess process_;
};

/// A PulseAudio server that plays in silence. The program under test finds it by the environment.
class SoundServer : public Daemon {
 public:
  /// A silent microphone hears what is played into the sink "mic".
  enum class Microphone { None, Silent };

  explicit SoundServer(Microphone microphone = Microphone::None);
  bool Start() override;
  QString Address() const { return u"unix:"_qs + Path(u"native"_qs); }

 private:
  Microphone microphone_;
  Variable server_;
};

/// Listens to what the sound server plays.
class Ear {
 public:
  explicit Ear(const SoundServer& server);
  ~Ear();
  /// Waits for the first news of the server; false when none come.
  bool Listen();
  /// How long something sounded so far.
  int LoudMilliseconds();
  /// How long nothing has sounded now.
  int QuietMilliseconds();

 private:
  void Hear();

  QProcess recorder_;
  qint64 heard_ = 0;
  qint64 loud_ = 0;
  qint64 lastLoud_ = 0;
};

/// speech-dispatcher with espeak-ng, speaking into the sound server. The program under test finds it by the
/// environment.
class SpeechDaemon : public Daemon {
 public:
  explicit SpeechDaemon(const SoundServer& server);
  ~SpeechDaemon() override;
  bool Start() override;
  static bool IsInstalled();

  /// What it did since the last call: "say: text", "char: a", "end" when it was heard to its end, "cut".
  QStringList News();
  QByteArray Log() const { return ReadFile(Path(u"speech-dispatcher.log"_qs)); }

 private:
  Variable address_;
  qint64 read_ = 0;
};

/// brltty with a display of 40 cells that is this object. The program under test finds it by the environment.
class BrailleDaemon : public Daemon {
 public:
  BrailleDaemon();
  ~BrailleDaemon() override;
  bool Start() override;

  /// What the line shows, without the blanks behind.
  QString Shown() const { return visual_.isEmpty() ? QString() : visual_.constLast(); }
  /// All that it has shown, in order.
  QStringList Visual() const { return visual_; }
  /// The cell of the cursor counted from 1, 0 for none.
  int CursorCell() const { return cursorCell_; }
  /// A key of the display, by its name ("FWINRT").
  void Press(const QByteArray& key);

 private:
  void OnLine(const QString& line);

  int port_;
  Variable host_;
  Variable authorization_;
  QLocalServer display_;
  QLocalSocket* wire_ = nullptr;
  QStringList visual_;
  int cursorCell_ = 0;
};

}  // namespace talnik::test
