#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "clipboard/ClipboardEntry.h"

namespace tarnwick {

/// What was read of one state of the clipboard, before the history has taken it in.
struct ClipboardCapture {
  ClipboardEntry::Kind kind = ClipboardEntry::Kind::Text;
  QString value;                        ///< As ClipboardEntry::value.
  std::optional<QByteArray> imageData;  ///< A picture as PNG.

  bool operator==(const ClipboardCapture&) const = default;

  /// A copied text, which is a colour, a link or plain by what it is without the blanks around it. Absent for an empty
  /// one.
  static std::optional<ClipboardCapture> ofText(const QString& text);
  static ClipboardEntry::Kind kindOfText(const QString& text);

  /// Whether a text, without blanks around it, is written like a colour: "#" and 3, 4, 6 or 8 hexadecimal digits, or
  /// rgb(), rgba(), hsl(), hsla() with numbers in them. Whether the numbers make sense is not asked.
  static bool isColor(QStringView text);
  /// Whether a text, without blanks around it, is a web address.
  static bool isLink(const QString& text);
};

}  // namespace tarnwick
