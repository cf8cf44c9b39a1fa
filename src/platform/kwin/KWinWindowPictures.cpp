#include "platform/kwin/KWinWindowPictures.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDeadlineTimer>
#include <QVariantMap>
#include <algorithm>
#include <cerrno>
#include <optional>
#include <vector>

#include "base/FileDescriptor.h"
#include "platform/kwin/KWinCalls.h"
#include "platform/kwin/RowShrinker.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// For KWin to paint the window and to send what it painted.
constexpr int kPatienceMs = 2000;
/// What a window that was meant to be seen never has.
constexpr int kMostPixels = 16'384;
/// So that KWin need not wait for us after every few rows.
constexpr int kPipeBytes = 1 << 20;

/// How the pixels come.
struct Layout {
  QSize size;
  int stride = 0;
  QImage::Format format = QImage::Format_Invalid;

  static std::optional<Layout> of(const QVariantMap& facts) {
    const auto number = [&facts](const QString& fact) { return facts.value(fact).toInt(); };
    const Layout layout{{number(u"width"_s), number(u"height"_s)},
                        number(u"stride"_s),
                        static_cast<QImage::Format>(number(u"format"_s))};
    const auto isBetween = [&layout](QImage::Format first, QImage::Format last) {
      return layout.format >= first && layout.format <= last;
    };
    // Those of four bytes a pixel.
    const bool isKnown = isBetween(QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied) ||
                         isBetween(QImage::Format_RGBX8888, QImage::Format_RGBA8888_Premultiplied);
    const bool fits = !layout.size.isEmpty() && layout.size.width() <= kMostPixels &&
                      layout.size.height() <= kMostPixels && layout.stride >= 4 * layout.size.width() &&
                      layout.stride <= 8 * kMostPixels;
    return facts.value(u"type"_s).toString() == u"raw"_s && isKnown && fits ? std::optional(layout) : std::nullopt;
  }
};

/// Has KWin make the picture; it is sent through the pipe afterwards.
std::optional<Layout> ordered(const QString& window, const FileDescriptor& writing) {
  // Both hold the pipe open, which would then never come to its end.
  QDBusPendingCall pending =
      QDBusConnection::sessionBus().asyncCall(KWinCalls::picture(window, writing.number()), kPatienceMs);
  pending.waitForFinished();
  if (pending.isError()) return std::nullopt;
  return Layout::of(qdbus_cast<QVariantMap>(pending.reply().arguments().value(0)));
}

bool readRow(const FileDescriptor& pipe, std::vector<uchar>& row, const QDeadlineTimer& end) {
  for (std::size_t got = 0; got < row.size();) {
    pollfd waited{pipe.number(), POLLIN, 0};
    const int ready = ::poll(&waited, 1, static_cast<int>(end.remainingTime()));
    if (ready == 0 || (ready < 0 && errno != EINTR)) return false;
    if (ready < 0) continue;
    const ssize_t count = ::read(pipe.number(), row.data() + got, row.size() - got);
    if (count == 0 || (count < 0 && errno != EINTR)) return false;
    if (count > 0) got += static_cast<std::size_t>(count);
  }
  return true;
}

}  // namespace

QImage KWinWindowPictures::take(quint64 window) {
  const QImage picture = capture(table_->idOf(window));
  if (picture.isNull()) {
    shown_.remove(window);
    return {};
  }
  Shown& shown = shown_[window];
  const int pause = shown.picture == picture ? std::min(2 * shown.pause + 1, kMostPause) : 0;
  shown = {picture, pause, pause};
  return picture;
}

bool KWinWindowPictures::hasChanged(quint64 window) {
  const auto shown = shown_.find(window);
  if (shown == shown_.end() || shown->left == 0) return true;
  --shown->left;
  return false;
}

QImage KWinWindowPictures::capture(const QString& id) const {
  int ends[2];
  if (id.isEmpty() || ::pipe2(ends, O_CLOEXEC) != 0) return {};
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  ::fcntl(reading.number(), F_SETPIPE_SZ, kPipeBytes);
  const auto layout = ordered(id, writing);
  writing.reset();
  if (!layout) return {};
  RowShrinker shrinker(layout->size, sizeFor(layout->size), layout->format);
  std::vector<uchar> row(static_cast<std::size_t>(layout->stride));
  const QDeadlineTimer end(kPatienceMs);
  for (int y = 0; y < layout->size.height(); ++y) {
    if (!readRow(reading, row, end)) return {};
    shrinker.add(row.data());
  }
  return shrinker.picture().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

}  // namespace tarnwick
