#pragma once

#include <QImage>
#include <vector>

namespace tarnwick {

/// Makes a picture smaller while its rows come one after the other, so that it is never in memory at full size. Each
/// pixel is the mean of those that it stands for. Pixels have four bytes, whichever of them is which colour.
class RowShrinker {
 public:
  /// Neither size may be empty.
  RowShrinker(const QSize& from, const QSize& to, QImage::Format format);

  /// The next row, from the top: as many pixels as `from` is wide.
  void add(const uchar* row);
  /// Null before the last row came.
  QImage picture() const { return filled_ == picture_.height() ? picture_ : QImage(); }

 private:
  void fillRow();

  const QSize from_;
  QImage picture_;
  std::vector<quint32> sums_;  ///< Of the row that is being made, four of each pixel.
  int rows_ = 0;               ///< In the sums.
  int read_ = 0;
  int filled_ = 0;
};

}  // namespace tarnwick
