#include "support/FakePlatform.h"

#include <QFile>
#include <QFileInfo>
#include <QTimer>

#include <utility>

namespace talnik::test {

void FakeVoice::Speak(const QString& text, Join join, Urgency urgency) {
  const QString verb = urgency == Urgency::Important ? u"alarm: "_qs : join == Join::Append ? u"and: "_qs : u"say: "_qs;
  transcript_ << verb + text;
}

void FakeVoice::SpeakCharacter(const QString& character, Join) {
  transcript_ << u"char: "_qs + character;
}

void FakeVoice::Stop() {
  transcript_ << u"stop"_qs;
}

void FakeBraille::Show(const QString& text, int cursor) {
  Shown = text;
  Cursor = cursor;
}

void FakeSound::Play(const QString& path, Finished finished) {
  Stop();
  transcript_ << u"sound: "_qs + QFileInfo(path).fileName();
  finished_ = std::move(finished);
  if (Played) Played(path);
  const bool fails = Fails && Fails(path);
  if (fails || !Hold) {
    QTimer::singleShot(0, &alive_, [this, fails] { Finish(fails ? Ending::Failed : Ending::Played); });
  }
}

void FakeSound::Stop() {
  Finish(Ending::Cut);
}

void FakeSound::Finish(Ending ending) {
  if (const auto finished = std::exchange(finished_, nullptr)) finished(ending);
}

void FakeRecorder::Start(const QString& path, const QString& seed, std::function<void(Ending)> ended) {
  transcript_ << u"record"_qs;
  Path = path;
  Seed = seed;
  ended_ = std::move(ended);
  if (Ends) QTimer::singleShot(0, &alive_, [this, ending = *Ends] { End(ending); });
  if (Ends == Ending::Failed) return;
  QFile file(path);
  if (file.open(QFile::WriteOnly)) file.write("recorded");
}

bool FakeRecorder::Stop() {
  if (!std::exchange(ended_, nullptr)) return false;
  transcript_ << u"end of record"_qs;
  return Ends != Ending::Failed;
}

void FakeRecorder::End(Ending ending) {
  if (const auto ended = std::exchange(ended_, nullptr)) ended(ending);
}

void FakeClock::Set(const QDateTime& moment, SetResult done) {
  SetTo = moment;
  if (Answer == Outcome::Done) Moment = moment;
  QTimer::singleShot(0, [done, answer = Answer, description = Description] { done(answer, description); });
}

QVariant FakeRegistry::Value(const QString& key, const QString& name) const {
  const auto found = Values.find(key + u'|' + name);
  return found == Values.end() ? QVariant() : found->second;
}

bool FakeRegistry::SetText(const QString& key, const QString& name, const QString& text) {
  if (Refuse) return false;
  Values[key + u'|' + name] = text;
  return true;
}

bool FakeRegistry::Remove(const QString& key, const QString& name) {
  return Values.erase(key + u'|' + name) > 0;
}

std::optional<QString> FakeProfile::Text(const QString& path, const QString& section, const QString& key) const {
  const auto found = Values.find(path + u'|' + section + u'|' + key);
  return found == Values.end() ? std::nullopt : std::optional(found->second);
}

bool FakeProfile::SectionExists(const QString& path, const QString& section) const {
  const QString head = path + u'|' + section + u'|';
  const auto found = Values.lower_bound(head);
  return found != Values.end() && found->first.startsWith(head);
}

bool FakeProfile::Write(const QString& path, const QList<Entry>& entries) {
  if (Refuse) return false;
  for (const Entry& entry : entries) {
    const QString place = path + u'|' + entry.section + u'|' + entry.key;
    Written << entry.section + u'.' + entry.key + u'=' + entry.text.value_or(u"(deleted)"_qs);
    if (entry.text) {
      Values[place] = *entry.text;
    } else {
      Values.erase(place);
    }
  }
  return true;
}

namespace {

template <class Fake, class Interface, class... Arguments>
Fake& Install(std::unique_ptr<Interface>& place, Arguments&&... arguments) {
  auto fake = std::make_unique<Fake>(std::forward<Arguments>(arguments)...);
  Fake& reference = *fake;
  place = std::move(fake);
  return reference;
}

}  // namespace

FakeWorld::FakeWorld()
    : voice(Install<FakeVoice>(platform.voice, transcript)),
      braille(Install<FakeBraille>(platform.braille)),
      sound(Install<FakeSound>(platform.sound, transcript)),
      recorder(Install<FakeRecorder>(platform.recorder, transcript)),
      clock(Install<FakeClock>(platform.clock)),
      timeZone(Install<FakeTimeZone>(platform.timeZone)),
      registry(Install<FakeRegistry>(platform.registry)),
      profile(Install<FakeProfile>(platform.profile)),
      shell(Install<FakeShell>(platform.shell)),
      trayIcon(Install<FakeTrayIcon>(platform.trayIcon)),
      keyboardHook(Install<FakeKeyboardHook>(platform.keyboardHook)),
      instance(Install<FakeInstance>(platform.instance)),
      codePage(Install<FakeCodePage>(platform.codePage)),
      folders(Install<FakeFolders>(platform.folders)) {}

Transcript FakeWorld::Heard() {
  return std::exchange(transcript, {});
}

}  // namespace talnik::test
