#pragma once

#include <QString>

#include <sndfile.h>

#include <memory>
#include <mutex>
#include <vector>

namespace talnik {

/// The file of one recording. It is made by the first sound and is a whole WAV file behind each, so that even a
/// program that breaks off leaves what was said. Writing and closing may come from different threads.
class RecordingFile {
 public:
  enum class State { Open, Unwritable, TooLong, Closed };

  /// `longest` is in seconds.
  RecordingFile(QString path, QString seed, int longest);
  ~RecordingFile();

  /// Takes the format of the seed, or a plain one. To be called before what follows.
  void ReadSeed();
  int Rate() const { return info_.samplerate; }
  int Channels() const { return info_.channels; }

  /// Adds so many frames of sound, of silence when `samples` is null.
  State Append(const float* samples, size_t frames);
  /// How many frames the file holds.
  qint64 Frames() const;
  /// No more sound is taken. False when there was none.
  bool Close();

 private:
  State Write(const float* samples, size_t frames);

  const QString path_;
  const QString seed_;
  const int longest_;
  SF_INFO info_{};

  mutable std::mutex mutex_;
  std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file_;
  qint64 frames_ = 0;
  bool closed_ = false;
  std::vector<float> silence_;
};

}  // namespace talnik
