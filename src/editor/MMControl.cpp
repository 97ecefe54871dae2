#include "editor/MMControl.h"

#include "shell/Speech.h"

#include <QPointer>

#include <chrono>
#include <utility>

namespace talnik {
namespace {

/// How often the voice is asked whether it has come to its end.
constexpr std::chrono::milliseconds AskInterval(20);

}  // namespace

MMControl::MMControl(Speech& speech, Recorder& recorder, QObject* parent)
    : QObject(parent), speech_(speech), recorder_(recorder) {
  setObjectName(u"MMControl1"_qs);
  quiet_.setInterval(AskInterval);
  connect(&quiet_, &QTimer::timeout, this, &MMControl::StartWhenQuiet);
}

MMControl::~MMControl() {
  Close();
}

void MMControl::Record(const QString& path, const QString& seed) {
  Close();
  path_ = path;
  seed_ = seed;
  mode_ = ModeRecording;
  quiet_.start();
}

void MMControl::StartWhenQuiet() {
  if (speech_.IsSpeaking()) return;
  quiet_.stop();
  speech_.Signal(Speech::EmptyField, [self = QPointer(this), job = job_] {
    if (self && self->job_ == job) self->StartRecording();
  });
}

void MMControl::StartRecording() {
  recorder_.Start(path_, seed_, [this](Recorder::Ending ending) {
    mode_ = ModeOpen;
    ++job_;
    Q_EMIT RecordingEnded(ending);
  });
}

void MMControl::Play(const QString& path) {
  Close();
  mode_ = ModePlaying;
  speech_.PlaySound(path, [self = QPointer(this), job = job_](Sound::Ending ending) {
    if (self && self->job_ == job) self->OnPlayed(ending);
  });
}

void MMControl::OnPlayed(Sound::Ending ending) {
  mode_ = ModeOpen;
  if (ending == Sound::Ending::Failed) Q_EMIT PlayFailed();
}

bool MMControl::Close() {
  ++job_;
  quiet_.stop();
  const int before = std::exchange(mode_, ModeOpen);
  if (before == ModePlaying) speech_.PlaySound(QString());
  return before == ModeRecording && recorder_.Stop();
}

}  // namespace talnik
