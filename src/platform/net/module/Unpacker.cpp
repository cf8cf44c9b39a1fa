#include "platform/net/module/Unpacker.h"

namespace tarnwick {

namespace {

/// The largest window, and either of the two forms (gzip, zlib) by what the data begin with.
constexpr int kAnyForm = MAX_WBITS + 32;

}  // namespace

Unpacker::Unpacker() { isDamaged_ = inflateInit2(&stream_, kAnyForm) != Z_OK; }

Unpacker::~Unpacker() { inflateEnd(&stream_); }

void Unpacker::add(const QByteArray& packed) {
  packed_ = packed;
  // The library does not write to it.
  stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed_.constData()));
  stream_.avail_in = static_cast<uInt>(packed_.size());
  hasMore_ = true;
  hasBegun_ = true;
}

QByteArray Unpacker::next(qsizetype most) {
  QByteArray unpacked(most, Qt::Uninitialized);
  qsizetype size = 0;
  while (hasMore() && size < most) {
    if (isComplete_) {
      hasMore_ = stream_.avail_in > 0;
      if (!hasMore_) break;
      // Another part follows, which is a stream of its own.
      isComplete_ = false;
      inflateReset(&stream_);
    }
    const auto room = static_cast<uInt>(most - size);
    stream_.next_out = reinterpret_cast<Bytef*>(unpacked.data() + size);
    stream_.avail_out = room;
    const int result = inflate(&stream_, Z_NO_FLUSH);
    size += room - stream_.avail_out;
    if (result == Z_STREAM_END) {
      isComplete_ = true;
    } else if (result == Z_BUF_ERROR || (result == Z_OK && stream_.avail_in == 0 && stream_.avail_out > 0)) {
      hasMore_ = false;  // It goes on with the next piece.
    } else if (result != Z_OK) {
      isDamaged_ = true;
    }
  }
  unpacked.truncate(size);
  return unpacked;
}

}  // namespace tarnwick
