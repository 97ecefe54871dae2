#pragma once

#include "platform/Places.h"

#include <QByteArray>
#include <QDataStream>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

namespace talnik::test {

struct WaveFormat {
  int rate = 8000;
  int channels = 1;
  int bits = 16;
  double hertz = 640;
};

/// A WAV file of a steady tone.
inline QByteArray WaveFile(const WaveFormat& format, int milliseconds) {
  const int frame = format.channels * format.bits / 8;
  const int frames = format.rate * milliseconds / 1000;
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out.setByteOrder(QDataStream::LittleEndian);
  out.writeRawData("RIFF", 4);
  out << quint32(36 + frames * frame);
  out.writeRawData("WAVEfmt ", 8);
  out << quint32(16) << quint16(1) << quint16(format.channels) << quint32(format.rate) << quint32(format.rate * frame)
      << quint16(frame) << quint16(format.bits);
  out.writeRawData("data", 4);
  out << quint32(frames * frame);
  for (int i = 0; i < frames * format.channels; ++i) {
    const double tone = std::sin(i / format.channels * 2 * 3.14159265358979 * format.hertz / format.rate) / 4;
    if (format.bits == 8) {
      out << quint8(128 + 127 * tone);
    } else {
      out << qint16(32767 * tone);
    }
  }
  return bytes;
}

/// A WAV file as read back; the samples are those of 16 bits and one channel.
struct Wave {
  int rate = 0;
  int channels = 0;
  int bits = 0;
  int frames = 0;
  std::vector<qint16> samples;

  int Milliseconds() const { return rate > 0 ? frames * 1000 / rate : 0; }
  /// From the first loud sample to the last one.
  int LoudMilliseconds() const { return rate > 0 ? static_cast<int>((End() - Begin()) * 1000) / rate : 0; }
  /// Of the loud part, by the usual time from one rise through zero to the next; a pause of a busy machine is passed
  /// over.
  double Hertz() const {
    std::vector<int> periods;
    int last = Begin();
    for (int i = last + 1, end = End(); i < end; ++i) {
      if (samples[static_cast<size_t>(i - 1)] >= 0 || samples[static_cast<size_t>(i)] < 0) continue;
      periods.push_back(i - std::exchange(last, i));
    }
    if (periods.empty()) return 0;
    const auto middle = periods.begin() + static_cast<std::ptrdiff_t>(periods.size() / 2);
    std::nth_element(periods.begin(), middle, periods.end());
    return static_cast<double>(rate) / *middle;
  }

 private:
  static bool IsLoud(qint16 sample) { return std::abs(sample) > 1000; }
  int Begin() const { return static_cast<int>(std::find_if(samples.begin(), samples.end(), IsLoud) - samples.begin()); }
  int End() const { return static_cast<int>(samples.rend() - std::find_if(samples.rbegin(), samples.rend(), IsLoud)); }
};

/// Empty when the file is no whole WAV file.
inline Wave ReadWave(const QString& path) {
  Wave wave;
  const QByteArray bytes = ReadFile(path);
  QDataStream in(bytes);
  in.setByteOrder(QDataStream::LittleEndian);
  QByteArray riff(12, '\0');
  in.readRawData(riff.data(), 12);
  if (!riff.startsWith("RIFF") || !riff.endsWith("WAVE")) return wave;
  while (!in.atEnd()) {
    QByteArray name(4, '\0');
    quint32 size = 0;
    in.readRawData(name.data(), 4);
    in >> size;
    const qint64 next = in.device()->pos() + size + size % 2;
    if (name == "fmt ") {
      quint16 tag = 0, channels = 0, frame = 0, bits = 0;
      quint32 rate = 0, bytesPerSecond = 0;
      in >> tag >> channels >> rate >> bytesPerSecond >> frame >> bits;
      wave.rate = static_cast<int>(rate);
      wave.channels = channels;
      wave.bits = bits;
    }
    if (name == "data" && wave.channels > 0) {
      if (next > bytes.size() + 1) return Wave();
      wave.frames = static_cast<int>(size) / (wave.channels * wave.bits / 8);
      for (int i = 0; wave.bits == 16 && i < wave.frames; ++i) {
        qint16 sample = 0;
        in >> sample;
        wave.samples.push_back(sample);
      }
    }
    if (!in.device()->seek(next)) break;
  }
  return wave;
}

}  // namespace talnik::test
