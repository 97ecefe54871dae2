#pragma once

#include "platform/Recorder.h"
#include "platform/Sound.h"

#include <QObject>
#include <QString>
#include <QTimer>

namespace talnik {

class Speech;

/// Values of MMControl::Mode.
enum MMControlMode {
  ModeOpen = 524,  ///< nothing under way
  ModePlaying = 526,
  ModeRecording = 527  ///< or about to
};

/// The recorder and player of voice notes: one of both at a time, and nothing waits for it.
class MMControl : public QObject {
  Q_OBJECT

 public:
  MMControl(Speech& speech, Recorder& recorder, QObject* parent);
  ~MMControl() override;

  int Mode() const { return mode_; }

  /// Records into `path` in the format of the file `seed` as soon as the program is quiet and the cue has sounded.
  void Record(const QString& path, const QString& seed);
  /// Plays the file from its start.
  void Play(const QString& path);
  /// Ends whatever is under way; a recording is saved. True when that was a recording and it holds something.
  bool Close();

 Q_SIGNALS:
  /// The recording ended without a Close.
  void RecordingEnded(Recorder::Ending ending);
  void PlayFailed();

 private:
  void StartWhenQuiet();
  void StartRecording();
  void OnPlayed(Sound::Ending ending);

  Speech& speech_;
  Recorder& recorder_;
  int mode_ = ModeOpen;
  int job_ = 0;  ///< counts what was begun, to tell late news from those of today
  QString path_;
  QString seed_;
  QTimer quiet_;
};

}  // namespace talnik
