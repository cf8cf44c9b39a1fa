#include "clipboard/ClipboardPicture.h"

#include <QBuffer>
#include <QImageReader>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

// Of the largest picture that is decoded, with eight bytes a pixel.
constexpr int kMostMegabytes = 800;

/// While it lives, a picture of the largest size may be decoded. There is one at a time: pictures are decoded in turn.
class RoomForPictures {
 public:
  RoomForPictures() : before_(QImageReader::allocationLimit()) {
    if (before_ > 0 && before_ < kMostMegabytes) QImageReader::setAllocationLimit(kMostMegabytes);
  }
  Q_DISABLE_COPY_MOVE(RoomForPictures)
  ~RoomForPictures() { QImageReader::setAllocationLimit(before_); }

 private:
  int before_;
};

/// Keeps what is written as long as that is not too much. It refuses nothing, since the library for PNG reports what is
/// refused on the standard error output.
class LimitedBuffer final : public QIODevice {
 public:
  explicit LimitedBuffer(qsizetype most) : most_(most) { open(QIODevice::WriteOnly); }

  /// Absent where it was too much.
  std::optional<QByteArray> bytes() const { return isTooMuch_ ? std::nullopt : std::optional(bytes_); }
  bool isSequential() const override { return true; }

 protected:
  qint64 readData(char*, qint64) override { return -1; }
  qint64 writeData(const char* data, qint64 size) override {
    if (isTooMuch_ || bytes_.size() + size > most_) {
      isTooMuch_ = true;
      bytes_ = {};
    } else {
      bytes_.append(data, size);
    }
    return size;
  }

 private:
  qsizetype most_;
  QByteArray bytes_;
  bool isTooMuch_ = false;
};

}  // namespace

QStringList ClipboardPicture::types() {
  return {u"image/png"_s, u"image/webp"_s, u"image/tiff"_s, u"image/bmp"_s, u"image/jpeg"_s, u"image/gif"_s};
}

ClipboardPicture::Verdict ClipboardPicture::judge(const QByteArray& bytes) {
  QBuffer buffer;
  buffer.setData(bytes);
  QImageReader reader(&buffer);
  // A drawing has no size of its own, and may ask for any amount of work.
  if (!reader.canRead() || reader.format().startsWith("svg")) return Verdict::NoPicture;
  const QSize size = reader.size();
  if (size.isEmpty()) return Verdict::NoPicture;
  return qint64{size.width()} * size.height() > kMostPixels ? Verdict::TooLarge : Verdict::Fine;
}

std::optional<QByteArray> ClipboardPicture::toPng(const QByteArray& bytes, qsizetype most) {
  if (judge(bytes) != Verdict::Fine) return std::nullopt;
  const RoomForPictures room;
  QBuffer buffer;
  buffer.setData(bytes);
  QImageReader reader(&buffer);
  reader.setAutoTransform(true);
  const bool isPng = reader.format() == "png";
  const QImage image = reader.read();
  if (image.isNull()) return std::nullopt;
  if (isPng && bytes.size() <= most) return bytes;
  // Also what is PNG already: some programs hardly compress.
  LimitedBuffer into(most);
  if (!image.save(&into, "PNG")) return std::nullopt;
  return into.bytes();
}

}  // namespace tarnwick
