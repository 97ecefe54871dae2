#pragma once

#include "platform/Platform.h"
#include "support/FakeFolders.h"

#include <QObject>
#include <QStringList>

#include <map>
#include <optional>

namespace talnik::test {

/// What the outside world heard, in order: "say: text", "char: a", "stop", "sound: space.wav", "braille: text",
/// "record", "end of record".
/// Appended speech is "and: text"; important speech "alarm: text".
using Transcript = QStringList;

class FakeVoice : public Voice {
 public:
  explicit FakeVoice(Transcript& transcript) : transcript_(transcript) {}
  void Speak(const QString& text, Join join, Urgency urgency) override;
  void SpeakCharacter(const QString& character, Join join) override;
  void Stop() override;
  bool IsSpeaking() const override { return Speaking; }
  Support Supported() const override { return Found; }
  bool Speaking = false;
  Support Found = Support::There;

 private:
  Transcript& transcript_;
};

class FakeBraille : public Braille {
 public:
  bool IsPresent() const override { return Present; }
  void Show(const QString& text, int cursor) override;
  void SetActive(bool active) override { Active = active; }
  bool Present = false;
  bool Active = false;
  QString Shown;
  int Cursor = NoCursor;
};

/// A sound takes no time unless Hold is set; then it plays until Finish or Stop. It fails where Fails says so.
class FakeSound : public Sound {
 public:
  explicit FakeSound(Transcript& transcript) : transcript_(transcript) {}
  void Play(const QString& path, Finished finished) override;
  void Stop() override;
  void Finish(Ending ending = Ending::Played);
  bool IsPlaying() const { return static_cast<bool>(finished_); }
  bool Hold = false;
  std::function<void(const QString& path)> Played;  ///< runs as a sound begins
  std::function<bool(const QString& path)> Fails;

 private:
  Transcript& transcript_;
  Finished finished_;
  QObject alive_;  ///< holds back an end that comes after this sound's own
};

/// A recording writes the word "recorded" as its first sound, unless Ends gives it an ending of its own.
class FakeRecorder : public Recorder {
 public:
  explicit FakeRecorder(Transcript& transcript) : transcript_(transcript) {}
  void Start(const QString& path, const QString& seed, std::function<void(Ending)> ended) override;
  bool Stop() override;
  bool IsRecording() const override { return static_cast<bool>(ended_); }
  /// Ends the recording by itself.
  void End(Ending ending);
  std::optional<Ending> Ends;  ///< how the next recordings end as soon as the event loop goes on
  QString Path, Seed;          ///< of the last recording

 private:
  Transcript& transcript_;
  std::function<void(Ending)> ended_;
  QObject alive_;
};

class FakeClock : public Clock {
 public:
  QDateTime Now() const override { return Moment; }
  void Set(const QDateTime& moment, SetResult done) override;
  QDateTime Moment = QDateTime(QDate(2024, 1, 15), QTime(8, 30));
  QDateTime SetTo;  ///< the last moment asked for
  Outcome Answer = Outcome::Done;
  QString Description;
};

class FakeTimeZone : public TimeZone {
 public:
  ZoneBiases Biases() const override { return Zone; }
  ZoneBiases Zone{-60, 0, -60, false};  ///< Prague in winter
};

class FakeRegistry : public Registry {
 public:
  QVariant Value(const QString& key, const QString& name) const override;
  bool SetText(const QString& key, const QString& name, const QString& text) override;
  bool Remove(const QString& key, const QString& name) override;
  std::map<QString, QVariant> Values;  ///< under "key|name"
  bool Refuse = false;                 ///< no text is kept
};

class FakeProfile : public Profile {
 public:
  std::optional<QString> Text(const QString& path, const QString& section, const QString& key) const override;
  bool SectionExists(const QString& path, const QString& section) const override;
  bool Write(const QString& path, const QList<Entry>& entries) override;
  std::map<QString, QString> Values;  ///< under "path|section|key"
  QStringList Written;                ///< "section.key=text" in order
  bool Refuse = false;
};

class FakeShell : public Shell {
 public:
  QString LocalDataFolder() const override { return LocalData; }
  QString InstalledFolder() const override { return Installed; }
  bool AutostartIsOn() const override { return Autostart; }
  bool AutostartOn() override { return SetAutostart(true); }
  bool AutostartOff() override { return SetAutostart(false); }
  bool Open(const QString& path, std::function<void()> failed = {}) override {
    Opened << path;
    OpenFailed = std::move(failed);
    return Opens;
  }
  bool Start(const QString& program, const QStringList& arguments) override {
    Started << program + u' ' + arguments.join(u' ');
    return Starts;
  }
  QString LocalData;
  QString Installed;
  QStringList Started;
  bool Starts = true;
  bool Autostart = false;
  bool KeepsAutostart = false;  ///< its entry cannot be written
  QStringList Opened;
  bool Opens = true;
  std::function<void()> OpenFailed;  ///< of what was opened last

 private:
  bool SetAutostart(bool on) {
    if (!KeepsAutostart) Autostart = on;
    return !KeepsAutostart;
  }
};

class FakeTrayIcon : public TrayIcon {
 public:
  void Add(const QIcon&, const QString& tip) override {
    There = true;
    Tip = tip;
  }
  void SetTip(const QString& tip) override { Tip = tip; }
  void Delete() override { There = false; }
  bool IsThere() const override { return There; }
  bool There = false;
  QString Tip;
};

class FakeKeyboardHook : public KeyboardHook {
 public:
  bool Watch(int hotKey) override {
    Watched = hotKey == Taken ? 0 : hotKey;
    return hotKey != Taken;
  }
  int Watched = -1;
  int Taken = -1;  ///< another program has it
};

class FakeInstance : public Instance {
 public:
  bool Acquire() override { return !Taken; }
  bool Tell(const QString& word) override {
    Said << word;
    return true;
  }
  bool Taken = false;
  QStringList Said;
};

class FakeCodePage : public CodePage {
 public:
  QString Decode(const QByteArray& bytes) const override { return QString::fromUtf8(bytes); }
  QByteArray Encode(const QString& text) const override { return text.toUtf8(); }
};

/// A whole outside world of fakes. `platform` owns them until a test hands it to the program; the references stay good
/// for as long as the platform lives.
struct FakeWorld {
  FakeWorld();

  Transcript transcript;
  Platform platform;
  FakeVoice& voice;
  FakeBraille& braille;
  FakeSound& sound;
  FakeRecorder& recorder;
  FakeClock& clock;
  FakeTimeZone& timeZone;
  FakeRegistry& registry;
  FakeProfile& profile;
  FakeShell& shell;
  FakeTrayIcon& trayIcon;
  FakeKeyboardHook& keyboardHook;
  FakeInstance& instance;
  FakeCodePage& codePage;
  FakeFolders& folders;

  /// What was heard since the last call.
  Transcript Heard();
};

}  // namespace talnik::test
