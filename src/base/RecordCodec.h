#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>
#include <QUuid>
#include <concepts>
#include <optional>
#include <tuple>

#include "base/RawValues.h"

/// Records as JSON. A record lists its keys once, and both directions use that list:
///
///     struct Point {
///       double x = 0;
///       std::optional<QString> name;
///       static constexpr auto fields() {
///         return std::tuple(field::required("x", &Point::x), field::optional("name", &Point::name));
///       }
///     };
///     const Point point = RecordCodec::fromBytes<Point>(json);
///
/// Members may be bool, int, quint32, double, QString, QUuid, enumerations with RawValues, records, and QList, QMap by
/// QString, or std::optional of these. Another type joins by a specialisation of JsonCodec. Unknown keys are ignored.
/// Both directions throw DomainError, with a sentence that names the key at fault ("profiles[0].name").
namespace tarnwick {

/// The codec's position in a document: a chain through the frames of the call stack, made text only for a failure.
class JsonPath {
 public:
  JsonPath() = default;
  JsonPath(const JsonPath& parent, QAnyStringView key) : parent_(&parent), key_(key) {}
  JsonPath(const JsonPath& parent, qsizetype index) : parent_(&parent), index_(index) {}
  JsonPath(const JsonPath&) = delete;
  JsonPath& operator=(const JsonPath&) = delete;

  QString text() const;

 private:
  const JsonPath* parent_ = nullptr;
  QAnyStringView key_;
  qsizetype index_ = -1;
};

enum class JsonKind { Boolean, Number, Integer, Text, Uuid, Array, Object, KnownValue };

[[noreturn]] void failMissing(const JsonPath& path);
[[noreturn]] void failKind(const JsonPath& path, JsonKind wanted);

/// An escaped half of a surrogate pair can be read but not written as UTF-8; such halves are replaced once, when read.
QString wellFormed(const QString& text);

/// How one type is represented in JSON: `T decode(const QJsonValue&, const JsonPath&)` and
/// `QJsonValue encode(const T&, const JsonPath&)`, both static.
template <class T>
struct JsonCodec;

namespace field {

enum class Presence { Required, Optional, Defaulted };

template <Presence P, class Record, class Member>
struct Field {
  static constexpr Presence presence = P;
  QLatin1StringView key;
  Member Record::*member;
};

/// Decoding fails without it.
template <size_t N, class Record, class Member>
constexpr auto required(const char (&key)[N], Member Record::*member) {
  return Field<Presence::Required, Record, Member>{QLatin1StringView(key, N - 1), member};
}

/// May be absent or null; left out when it holds nothing.
template <size_t N, class Record, class Value>
constexpr auto optional(const char (&key)[N], std::optional<Value> Record::*member) {
  return Field<Presence::Optional, Record, std::optional<Value>>{QLatin1StringView(key, N - 1), member};
}

/// May be absent or null, and then is what the record's own initialiser says.
template <size_t N, class Record, class Member>
constexpr auto defaulted(const char (&key)[N], Member Record::*member) {
  return Field<Presence::Defaulted, Record, Member>{QLatin1StringView(key, N - 1), member};
}

}  // namespace field

template <class T>
concept Record = requires {
  T::fields();
};

struct RecordCodec {
  template <class T>
  static T fromBytes(const QByteArray& json) {
    return fromValue<T>(parse(json));
  }
  template <class T>
  static T fromValue(const QJsonValue& value) {
    return JsonCodec<T>::decode(value, JsonPath());
  }
  template <class T>
  static QByteArray toBytes(const T& value, QJsonDocument::JsonFormat format = QJsonDocument::Compact) {
    return write(toValue(value), format);
  }
  template <class T>
  static QJsonValue toValue(const T& value) {
    return JsonCodec<T>::encode(value, JsonPath());
  }

  /// The object or array that a text holds.
  static QJsonValue parse(const QByteArray& json);
  /// Keys come out sorted.
  static QByteArray write(const QJsonValue& value, QJsonDocument::JsonFormat format);
};

template <>
struct JsonCodec<bool> {
  static bool decode(const QJsonValue& value, const JsonPath& path);
  static QJsonValue encode(bool value, const JsonPath&) { return value; }
};

template <>
struct JsonCodec<int> {
  static int decode(const QJsonValue& value, const JsonPath& path);
  static QJsonValue encode(int value, const JsonPath&) { return value; }
};

template <>
struct JsonCodec<quint32> {
  static quint32 decode(const QJsonValue& value, const JsonPath& path);
  static QJsonValue encode(quint32 value, const JsonPath&) { return static_cast<qint64>(value); }
};

/// Finite in both directions: JSON has no other numbers.
template <>
struct JsonCodec<double> {
  static double decode(const QJsonValue& value, const JsonPath& path);
  static QJsonValue encode(double value, const JsonPath& path);
};

template <>
struct JsonCodec<QString> {
  static QString decode(const QJsonValue& value, const JsonPath& path);
  static QJsonValue encode(const QString& value, const JsonPath&) { return value; }
};

template <>
struct JsonCodec<QUuid> {
  static QUuid decode(const QJsonValue& value, const JsonPath& path);
  static QJsonValue encode(const QUuid& value, const JsonPath&);
};

template <RawEnum E>
struct JsonCodec<E> {
  static E decode(const QJsonValue& value, const JsonPath& path) {
    const auto known = fromRawText<E>(JsonCodec<QString>::decode(value, path));
    if (!known) failKind(path, JsonKind::KnownValue);
    return *known;
  }
  static QJsonValue encode(E value, const JsonPath&) { return rawText(value); }
};

template <class T>
struct JsonCodec<QList<T>> {
  static QList<T> decode(const QJsonValue& value, const JsonPath& path) {
    if (!value.isArray()) failKind(path, JsonKind::Array);
    const QJsonArray array = value.toArray();
    QList<T> list;
    list.reserve(array.size());
    for (qsizetype i = 0; i < array.size(); ++i) list.append(JsonCodec<T>::decode(array.at(i), JsonPath(path, i)));
    return list;
  }
  static QJsonValue encode(const QList<T>& list, const JsonPath& path) {
    QJsonArray array;
    for (qsizetype i = 0; i < list.size(); ++i) array.append(JsonCodec<T>::encode(list[i], JsonPath(path, i)));
    return array;
  }
};

template <class T>
struct JsonCodec<QMap<QString, T>> {
  static QMap<QString, T> decode(const QJsonValue& value, const JsonPath& path) {
    if (!value.isObject()) failKind(path, JsonKind::Object);
    const QJsonObject object = value.toObject();
    QMap<QString, T> map;
    for (auto entry = object.constBegin(); entry != object.constEnd(); ++entry) {
      const QString key = wellFormed(entry.key());
      map.insert(key, JsonCodec<T>::decode(entry.value(), JsonPath(path, key)));
    }
    return map;
  }
  static QJsonValue encode(const QMap<QString, T>& map, const JsonPath& path) {
    QJsonObject object;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
      object.insert(entry.key(), JsonCodec<T>::encode(entry.value(), JsonPath(path, entry.key())));
    }
    return object;
  }
};

template <class T>
struct JsonCodec<std::optional<T>> {
  static std::optional<T> decode(const QJsonValue& value, const JsonPath& path) {
    if (value.isNull()) return std::nullopt;
    return JsonCodec<T>::decode(value, path);
  }
  static QJsonValue encode(const std::optional<T>& value, const JsonPath& path) {
    return value ? JsonCodec<T>::encode(*value, path) : QJsonValue();
  }
};

template <Record R>
struct JsonCodec<R> {
  static R decode(const QJsonValue& value, const JsonPath& path) {
    if (!value.isObject()) failKind(path, JsonKind::Object);
    const QJsonObject object = value.toObject();
    R record{};
    std::apply([&](const auto&... fields) { (read(object, record, fields, path), ...); }, R::fields());
    return record;
  }
  static QJsonValue encode(const R& record, const JsonPath& path) {
    QJsonObject object;
    std::apply([&](const auto&... fields) { (write(object, record, fields, path), ...); }, R::fields());
    return object;
  }

 private:
  template <field::Presence P, class Member>
  static void read(const QJsonObject& object, R& record, const field::Field<P, R, Member>& field,
                   const JsonPath& path) {
    const QJsonValue value = object.value(field.key);
    const JsonPath here(path, field.key);
    if constexpr (P == field::Presence::Required) {
      if (value.isUndefined()) failMissing(here);
    } else {
      if (value.isUndefined() || value.isNull()) return;
    }
    record.*field.member = JsonCodec<Member>::decode(value, here);
  }

  template <field::Presence P, class Member>
  static void write(QJsonObject& object, const R& record, const field::Field<P, R, Member>& field,
                    const JsonPath& path) {
    const Member& member = record.*field.member;
    if constexpr (P == field::Presence::Optional) {
      if (!member) return;
    }
    object.insert(field.key, JsonCodec<Member>::encode(member, JsonPath(path, field.key)));
  }
};

}  // namespace tarnwick
