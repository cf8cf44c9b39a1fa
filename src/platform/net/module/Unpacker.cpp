#include "platform/net/module/Unpacker.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr qsizetype kPiece = 64 * 1024;
/// The largest window, and either of the two forms (gzip, zlib) by what the data begin with.
constexpr int kAnyForm = MAX_WBITS + 32;

}  // namespace

Unpacker::Unpacker() { isDamaged_ = inflateInit2(&stream_, kAnyForm) != Z_OK; }

Unpacker::~Unpacker() { inflateEnd(&stream_); }

QByteArray Unpacker::add(const QByteArray& packed, qsizetype most) {
  QByteArray unpacked;
  QByteArray piece(kPiece, Qt::Uninitialized);
  // The library does not write to it.
  stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.constData()));
  stream_.avail_in = static_cast<uInt>(packed.size());
  while (!isDamaged_ && unpacked.size() < most) {
    if (isComplete_) {
      if (stream_.avail_in == 0) break;
      // Another part follows, which is a stream of its own.
      isComplete_ = false;
      inflateReset(&stream_);
    }
    const auto room = static_cast<uInt>(std::min(kPiece, most - unpacked.size()));
    stream_.next_out = reinterpret_cast<Bytef*>(piece.data());
    stream_.avail_out = room;
    const int result = inflate(&stream_, Z_NO_FLUSH);
    unpacked.append(piece.constData(), room - stream_.avail_out);
    if (result == Z_STREAM_END) {
      isComplete_ = true;
    } else if (result == Z_BUF_ERROR || (result == Z_OK && stream_.avail_in == 0 && stream_.avail_out > 0)) {
      break;  // It goes on with the next piece.
    } else if (result != Z_OK) {
      isDamaged_ = true;
    }
  }
  return unpacked;
}

}  // namespace tarnwick
