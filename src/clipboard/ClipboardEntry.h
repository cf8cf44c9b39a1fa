#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>
#include <array>

#include "base/RawValues.h"
#include "base/RecordCodec.h"

namespace tarnwick {

/// One thing that was copied, as the history keeps it.
struct ClipboardEntry {
  enum class Kind { Text, Link, Color, File, Image };

  QUuid id;
  Kind kind = Kind::Text;
  QString value;      ///< The text as it was, untrimmed; the path of a file; empty for a picture.
  QString imageFile;  ///< The name of the picture's file in the history's folder; empty for all else.
  QDateTime added;    ///< When it was copied last. Files hold it to the second.
  bool favourite = false;

  static constexpr auto fields();
  bool operator==(const ClipboardEntry&) const = default;
};

template <>
struct RawValues<ClipboardEntry::Kind> {
  static constexpr std::array<RawValue<ClipboardEntry::Kind>, 5> table{{
      {ClipboardEntry::Kind::Text, "text"},
      {ClipboardEntry::Kind::Link, "link"},
      {ClipboardEntry::Kind::Color, "color"},
      {ClipboardEntry::Kind::File, "file"},
      {ClipboardEntry::Kind::Image, "image"},
  }};
};

/// Moments as ISO 8601, in UTC: "2026-11-24T10:24:00Z".
template <>
struct JsonCodec<QDateTime> {
  static QDateTime decode(const QJsonValue& value, const JsonPath& path) {
    const QDateTime moment = QDateTime::fromString(JsonCodec<QString>::decode(value, path), Qt::ISODate);
    // What could not be written again is not taken either, such as the first hours of the year 10000.
    if (encode(moment, path).toString().isEmpty()) failKind(path, JsonKind::KnownValue);
    return moment;
  }
  static QJsonValue encode(const QDateTime& moment, const JsonPath&) { return moment.toUTC().toString(Qt::ISODate); }
};

constexpr auto ClipboardEntry::fields() {
  using E = ClipboardEntry;
  return std::tuple(field::required("id", &E::id), field::required("kind", &E::kind),
                    field::required("value", &E::value), field::required("imageFile", &E::imageFile),
                    field::required("added", &E::added), field::required("favourite", &E::favourite));
}

}  // namespace tarnwick
