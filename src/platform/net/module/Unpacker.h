#pragma once

#include <zlib.h>

#include <QByteArray>

namespace tarnwick {

/// Unpacks a body that comes in pieces, and never more of it at a time than is asked for.
class Unpacker {
 public:
  Unpacker();
  Q_DISABLE_COPY_MOVE(Unpacker)
  ~Unpacker();

  /// The next piece, once nothing is left of the one before.
  void add(const QByteArray& packed);
  /// Whether there may be more in the pieces that were added.
  bool hasMore() const { return hasMore_ && !isDamaged_; }
  /// What comes next in them, so many bytes at most.
  QByteArray next(qsizetype most);
  /// Whether anything was added.
  bool hasBegun() const { return hasBegun_; }
  bool isDamaged() const { return isDamaged_; }
  /// Whether it has come to its end.
  bool isComplete() const { return isComplete_; }

 private:
  z_stream stream_{};
  QByteArray packed_;
  bool hasBegun_ = false;
  bool hasMore_ = false;
  bool isDamaged_ = false;
  bool isComplete_ = false;
};

}  // namespace tarnwick
