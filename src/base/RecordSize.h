#pragma once

#include <type_traits>

#include "base/RecordCodec.h"

namespace tarnwick {

/// How many bytes a record needs as indented JSON at most, computed from the lengths of its texts without writing it.
/// Knows the same types as RecordCodec.
struct RecordSize {
  template <class Value>
  requires std::is_arithmetic_v<Value> || RawEnum<Value>
  static qint64 atMost(const Value&) { return kPlain; }
  static qint64 atMost(const QUuid&) { return kPlain; }
  /// No character needs more than six bytes.
  static qint64 atMost(const QString& text) { return kPlain + 6 * text.size(); }
  template <class Value>
  static qint64 atMost(const std::optional<Value>& value) {
    return value ? atMost(*value) : kPlain;
  }
  template <class Value>
  static qint64 atMost(const QList<Value>& list) {
    qint64 sum = kPlain;
    for (const Value& value : list) sum += atMost(value);
    return sum;
  }
  template <class Value>
  static qint64 atMost(const QMap<QString, Value>& map) {
    qint64 sum = kPlain;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) sum += atMost(entry.key()) + atMost(entry.value());
    return sum;
  }
  template <Record R>
  static qint64 atMost(const R& record) {
    const auto sum = [&record](const auto&... fields) { return (kPlain + ... + atMost(record.*fields.member)); };
    return std::apply(sum, R::fields());
  }

 private:
  /// A number, an identity or an empty text on a line of its own, with its key, deep within others.
  static constexpr qint64 kPlain = 200;
};

}  // namespace tarnwick
