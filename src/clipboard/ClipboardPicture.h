#pragma once

#include <QByteArray>
#include <QStringList>
#include <optional>

namespace tarnwick {

/// Pictures as other programs put them on the clipboard.
struct ClipboardPicture {
  /// More is not decoded, whatever the file says of itself otherwise.
  static constexpr qint64 kMostPixels = 100'000'000;

  enum class Verdict { Fine, TooLarge, NoPicture };

  /// The MIME types that are read, the one that loses least first.
  static QStringList types();
  /// What the first bytes say. Decodes nothing.
  static Verdict judge(const QByteArray& bytes);
  /// The picture as PNG of at most so many bytes; the same bytes where it is one already. Absent for what cannot be
  /// decoded, or does not fit. Takes its time.
  static std::optional<QByteArray> toPng(const QByteArray& bytes, qsizetype most);
};

}  // namespace tarnwick
