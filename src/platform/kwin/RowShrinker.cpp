#include "platform/kwin/RowShrinker.h"

#include <algorithm>

namespace tarnwick {
namespace {

constexpr int kBytes = 4;

}  // namespace

RowShrinker::RowShrinker(const QSize& from, const QSize& to, QImage::Format format)
    : from_(from), picture_(to, format), sums_(static_cast<std::size_t>(to.width()) * kBytes) {}

void RowShrinker::add(const uchar* row) {
  const int width = picture_.width();
  for (int x = 0; x < width; ++x) {
    const int begin = static_cast<int>(qint64{x} * from_.width() / width);
    const int end = std::max(begin + 1, static_cast<int>(qint64{x + 1} * from_.width() / width));
    quint32 of[kBytes] = {};
    for (int at = begin; at < end; ++at)
      for (int byte = 0; byte < kBytes; ++byte) of[byte] += row[at * kBytes + byte];
    for (int byte = 0; byte < kBytes; ++byte)
      sums_[static_cast<std::size_t>(x) * kBytes + byte] += of[byte] / static_cast<quint32>(end - begin);
  }
  ++rows_;
  ++read_;
  // Where the picture grows, one row is several.
  const auto isWhole = [this] { return qint64{read_} * picture_.height() >= qint64{filled_ + 1} * from_.height(); };
  if (filled_ == picture_.height() || !isWhole()) return;
  do fillRow();
  while (filled_ < picture_.height() && isWhole());
  std::ranges::fill(sums_, 0);
  rows_ = 0;
}

void RowShrinker::fillRow() {
  uchar* const line = picture_.scanLine(filled_++);
  for (std::size_t at = 0; at < sums_.size(); ++at)
    line[at] = static_cast<uchar>(sums_[at] / static_cast<quint32>(rows_));
}

}  // namespace tarnwick
