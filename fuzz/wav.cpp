#include "Fuzz.h"
#include "platform/linux/PulsePlayback.h"
#include "platform/linux/RecordingFile.h"

#include <QFileInfo>

using namespace talnik;

/// A file in the place of a note that is played, and of the one whose format a recording takes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::File file;
  static const fuzz::File note;
  file.Write(fuzz::Bytes(data, size));
  PulsePlayback playback(nullptr);
  if (playback.Open(file.Path())) fuzz::Require(playback.Milliseconds() >= 0, "a sound has a length");
  fuzz::Require(playback.HasEnded() == playback.HasFailed(), "only a file that is no sound has ended");

  QFile::remove(note.Path());
  RecordingFile recording(note.Path(), file.Path(), 1);
  recording.ReadSeed();
  fuzz::Require(recording.Rate() > 0 && recording.Channels() > 0, "every seed gives a format");
  const auto state = recording.Append(nullptr, 64);
  fuzz::Require(state == RecordingFile::State::Open || state == RecordingFile::State::TooLong,
                "a recording can be made after any seed");
  fuzz::Require(recording.Close() && QFileInfo::exists(note.Path()), "what was recorded is there");
  return 0;
}
