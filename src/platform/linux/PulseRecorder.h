#pragma once

#include "platform/Recorder.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace talnik {

class CaptureLoop;
class RecordingFile;
class Worker;

/// Records from PulseAudio (or what stands in for it) through libsndfile on a worker thread. A server that falls silent
/// for a few seconds counts as gone.
class PulseRecorder : public QObject, public Recorder {
  Q_OBJECT

 public:
  /// A recording that nobody ends is ended after so many seconds.
  static constexpr int Longest = 2 * 60 * 60;

  explicit PulseRecorder(int longest = Longest);
  ~PulseRecorder() override;

  void Start(const QString& path, const QString& seed, std::function<void(Ending)> ended) override;
  bool Stop() override;
  bool IsRecording() const override { return file_ != nullptr; }

 private:
  void Listen();
  void OnEnd(const std::shared_ptr<RecordingFile>& file, Ending ending);

  const int longest_;
  std::shared_ptr<CaptureLoop> loop_;
  std::unique_ptr<Worker> worker_;
  std::shared_ptr<RecordingFile> file_;  ///< of the recording that runs
  std::function<void(Ending)> ended_;
  QTimer watch_;
  qint64 framesBefore_ = 0;
};

}  // namespace talnik
