#pragma once

#include <QColor>
#include <QHash>
#include <QImage>

#include <algorithm>
#include <cmath>

namespace talnik::test {

constexpr double Readable = 7.0;

inline double Luminance(const QColor& color) {
  const auto part = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
  return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

/// From 1 for equal colours to 21 for black and white.
inline double Contrast(const QColor& one, const QColor& other) {
  const auto [dark, light] = std::minmax({Luminance(one), Luminance(other)});
  return (light + 0.05) / (dark + 0.05);
}

/// How well the second most frequent colour of a picture, that of its text, stands out from the most frequent one.
inline double Contrast(const QImage& picture) {
  QHash<QRgb, int> counts;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) ++counts[picture.pixel(x, y)];
  }
  QRgb most[2] = {};
  for (QRgb& color : most) {
    const auto found = std::max_element(counts.cbegin(), counts.cend());
    if (found == counts.cend()) return 1;
    color = found.key();
    counts.remove(color);
  }
  return Contrast(QColor(most[0]), QColor(most[1]));
}

}  // namespace talnik::test
