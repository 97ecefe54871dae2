#pragma once

#include <QFile>
#include <QString>

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace talnik::test {

/// What a WAV file holds; the samples are those of its first channel, from -1 to 1.
struct Wave {
  int rate = 8000;
  int channels = 1;
  int format = SF_FORMAT_PCM_16;
  std::vector<float> samples = {};

  /// A steady tone.
  static Wave Tone(Wave wave, int milliseconds, double hertz = 640) {
    wave.samples.resize(static_cast<size_t>(wave.rate * milliseconds / 1000));
    for (size_t i = 0; i < wave.samples.size(); ++i) {
      wave.samples[i] = static_cast<float>(std::sin(static_cast<double>(i) * 2 * M_PI * hertz / wave.rate) / 4);
    }
    return wave;
  }

  void Write(const QString& path) const {
    SF_INFO info{0, rate, channels, SF_FORMAT_WAV | format, 0, 0};
    SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    for (const float sample : samples) {
      const std::vector<float> frame(static_cast<size_t>(channels), sample);
      sf_writef_float(file, frame.data(), 1);
    }
    sf_close(file);
  }

  /// Without samples when the file is no whole WAV file.
  static Wave Read(const QString& path) {
    SF_INFO info{};
    SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &info);
    Wave wave{info.samplerate, info.channels, info.format & SF_FORMAT_SUBMASK, {}};
    std::vector<float> frame(static_cast<size_t>(info.channels));
    while (sf_readf_float(file, frame.data(), 1) == 1) wave.samples.push_back(frame[0]);
    sf_close(file);
    return wave;
  }

  int Milliseconds() const { return static_cast<int>(samples.size()) * 1000 / rate; }
  /// From the first loud sample to the last one.
  int LoudMilliseconds() const { return static_cast<int>(End() - Begin()) * 1000 / rate; }
  /// Of the loud part, by the usual time from one rise through zero to the next: a pause of a busy machine is passed
  /// over.
  double Hertz() const {
    std::vector<size_t> periods;
    size_t last = Begin();
    for (size_t i = last + 1, end = End(); i < end; ++i) {
      if (samples[i - 1] < 0 && samples[i] >= 0) periods.push_back(i - std::exchange(last, i));
    }
    std::sort(periods.begin(), periods.end());
    return periods.empty() ? 0 : rate / static_cast<double>(periods[periods.size() / 2]);
  }

 private:
  static bool IsLoud(float sample) { return std::abs(sample) > 0.03F; }
  size_t Begin() const {
    return static_cast<size_t>(std::find_if(samples.begin(), samples.end(), IsLoud) - samples.begin());
  }
  size_t End() const {
    return static_cast<size_t>(samples.rend() - std::find_if(samples.rbegin(), samples.rend(), IsLoud));
  }
};

}  // namespace talnik::test
