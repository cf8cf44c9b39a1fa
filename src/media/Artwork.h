#pragma once

#include <QByteArray>
#include <QImage>
#include <QUrl>
#include <optional>

namespace tarnwick {

/// Covers: where one may come from, and what counts as one.
struct Artwork {
  static constexpr qint64 kMostBytes = 8'000'000;
  /// Of the picture that is kept, on its longer side.
  static constexpr int kPixels = 512;

  /// The one host on the net that is asked for covers.
  static bool mayFetch(const QUrl& address);
  static bool isLocal(const QUrl& address);

  /// The bytes of a picture, and what is painted of it; absent for what is none, or too large. Takes its time.
  struct Picture {
    QByteArray bytes;
    QImage image;
  };
  static std::optional<Picture> decode(const QByteArray& bytes);
  /// The same of a file. Never waits for one that is no file.
  static std::optional<Picture> read(const QUrl& file);
};

}  // namespace tarnwick
