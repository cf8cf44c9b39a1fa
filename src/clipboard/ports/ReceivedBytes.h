#pragma once

#include <QByteArray>
#include <utility>

namespace tarnwick {

/// What another program sends bit by bit. Much is never copied to make space for more.
class ReceivedBytes {
 public:
  explicit ReceivedBytes(qint64 most) : most_(most) {}

  bool isEmpty() const { return bytes_.isEmpty(); }
  /// Whether there may be so many more.
  bool hasSpaceFor(qint64 size) const { return bytes_.size() + size <= most_; }
  void add(const char* data, qsizetype size) {
    // Memory that nothing is written into costs nothing.
    const bool isMuch = bytes_.size() + size > kMuch;
    if (isMuch && bytes_.capacity() < most_) bytes_.reserve(static_cast<qsizetype>(most_));
    bytes_.append(data, size);
  }
  QByteArray take() { return std::exchange(bytes_, {}); }

 private:
  static constexpr qsizetype kMuch = 1 << 20;

  qint64 most_;
  QByteArray bytes_;
};

}  // namespace tarnwick
