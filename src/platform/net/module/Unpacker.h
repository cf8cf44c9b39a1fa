#pragma once

#include <zlib.h>

#include <QByteArray>

namespace tarnwick {

/// Unpacks a body that comes in pieces, and never more of it than is asked for.
class Unpacker {
 public:
  Unpacker();
  Q_DISABLE_COPY_MOVE(Unpacker)
  ~Unpacker();

  /// What the next piece holds, the first `most` bytes at most; of a piece that held more nothing further is to be
  /// added.
  QByteArray add(const QByteArray& packed, qsizetype most);
  bool isDamaged() const { return isDamaged_; }
  /// Whether it has come to its end.
  bool isComplete() const { return isComplete_; }

 private:
  z_stream stream_{};
  bool isDamaged_ = false;
  bool isComplete_ = false;
};

}  // namespace tarnwick
