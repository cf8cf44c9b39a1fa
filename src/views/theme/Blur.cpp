#include "views/theme/Blur.h"

#include <QVector>
#include <cmath>

namespace tarnwick {

namespace {

/// One pass of a box blur along a line of `count` bytes that lie `step` apart.
void blurLine(uchar* line, int count, qsizetype step, int radius, QVector<uchar>& copy) {
  copy.resize(count);
  for (int i = 0; i < count; ++i) copy[i] = line[i * step];
  const int window = radius * 2 + 1;
  int sum = 0;
  for (int i = 0; i <= radius && i < count; ++i) sum += copy[i];
  for (int i = 0; i < count; ++i) {
    line[i * step] = static_cast<uchar>(sum / window);
    if (i + radius + 1 < count) sum += copy[i + radius + 1];
    if (i - radius >= 0) sum -= copy[i - radius];
  }
}

}  // namespace

void blur(QImage& picture, double spread) {
  const int radius = static_cast<int>(std::lround(spread / 4));
  if (radius < 1) return;
  const int channels = picture.depth() / 8;
  QVector<uchar> copy;
  for (int pass = 0; pass < 3; ++pass) {
    for (int y = 0; y < picture.height(); ++y)
      for (int channel = 0; channel < channels; ++channel)
        blurLine(picture.scanLine(y) + channel, picture.width(), channels, radius, copy);
    for (int x = 0; x < picture.width() * channels; ++x)
      blurLine(picture.bits() + x, picture.height(), picture.bytesPerLine(), radius, copy);
  }
}

}  // namespace tarnwick
