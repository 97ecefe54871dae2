#include "platform/linux/RecordingFile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace talnik {

namespace {

/// More than any sound server takes in.
constexpr int HighestRate = 192'000;
constexpr int MostChannels = 8;
/// The size that the head of a WAV file can tell, with room for the head.
constexpr qint64 LargestFile = 0xFFF0'0000;

SF_INFO PlainFormat() {
  SF_INFO plain{};
  plain.samplerate = 44100;
  plain.channels = 1;
  plain.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  return plain;
}

/// The format of a WAV file like the seed, if such a file can be recorded.
SF_INFO FormatOf(const QString& seed) {
  SF_INFO info{};
  // Opening a pipe or a device could wait for ever.
  if (!QFileInfo(seed).isFile()) return PlainFormat();
  const std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(sf_open(QFile::encodeName(seed).constData(), SFM_READ, &info),
                                                         sf_close);
  if (!file || info.samplerate <= 0 || info.samplerate > HighestRate || info.channels > MostChannels) {
    return PlainFormat();
  }
  SF_INFO wanted{};
  wanted.samplerate = info.samplerate;
  wanted.channels = info.channels;
  wanted.format = SF_FORMAT_WAV | (info.format & SF_FORMAT_SUBMASK);
  if (!sf_format_check(&wanted)) wanted.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  return wanted;
}

}  // namespace

RecordingFile::RecordingFile(QString path, QString seed, int longest)
    : path_(std::move(path)), seed_(std::move(seed)), longest_(longest), file_(nullptr, sf_close) {}

RecordingFile::~RecordingFile() {
  Close();
}

void RecordingFile::ReadSeed() {
  info_ = FormatOf(seed_);
}

RecordingFile::State RecordingFile::Append(const float* samples, size_t frames) {
  const std::scoped_lock lock(mutex_);
  if (closed_) return State::Closed;
  if (!file_) {
    const QFileInfo older(path_);
    if (older.exists() && !older.isFile()) return State::Unwritable;
    SF_INFO info = info_;
    file_.reset(sf_open(QFile::encodeName(path_).constData(), SFM_WRITE, &info));
    if (!file_) return State::Unwritable;
    QFile::setPermissions(path_, QFile::ReadOwner | QFile::WriteOwner);
    sf_command(file_.get(), SFC_SET_UPDATE_HEADER_AUTO, nullptr, SF_TRUE);
    sf_command(file_.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
  }
  return Write(samples, frames);
}

RecordingFile::State RecordingFile::Write(const float* samples, size_t frames) {
  const qint64 widestFrame = static_cast<qint64>(sizeof(double)) * info_.channels;
  const qint64 most = std::min<qint64>(qint64{longest_} * info_.samplerate, LargestFile / widestFrame);
  const auto count = static_cast<size_t>(std::clamp<qint64>(most - frames_, 0, static_cast<qint64>(frames)));
  if (!samples) {
    silence_.assign(count * static_cast<size_t>(info_.channels), 0.0F);
    samples = silence_.data();
  }
  const sf_count_t written = sf_writef_float(file_.get(), samples, static_cast<sf_count_t>(count));
  frames_ += std::max<sf_count_t>(written, 0);
  if (written < static_cast<sf_count_t>(count)) return State::Unwritable;
  return frames_ < most ? State::Open : State::TooLong;
}

qint64 RecordingFile::Frames() const {
  const std::scoped_lock lock(mutex_);
  return frames_;
}

bool RecordingFile::Close() {
  const std::scoped_lock lock(mutex_);
  const bool wasMade = file_ != nullptr;
  file_.reset();
  // What holds no sound is no recording.
  if (wasMade && frames_ == 0) QFile::remove(path_);
  closed_ = true;
  return frames_ > 0;
}

}  // namespace talnik
