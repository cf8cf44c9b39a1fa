#include "dock/PropertyList.h"

#include <QCoreApplication>
#include <QString>
#include <QXmlStreamReader>
#include <algorithm>
#include <bit>

#include "base/DomainError.h"

namespace tarnwick {
namespace {

struct PropertyListWords {
  Q_DECLARE_TR_FUNCTIONS(PropertyList)
};

using namespace Qt::StringLiterals;

// The binary form: a magic word, the objects, a table of their offsets, and a trailer that says where that is. An
// object begins with a byte of its kind and, in the lower half, its size.

constexpr int kDeepest = 32;
/// More than any record of ours holds; lists that contain each other cannot grow beyond it.
constexpr int kMostValues = 10'000;
constexpr QByteArrayView kMagic = "bplist";
constexpr QByteArrayView kVersion = "00";
constexpr qsizetype kTrailer = 32;

enum Kind : quint8 { Plain = 0, Whole = 1, Real = 2, Bytes = 4, Latin = 5, Utf16 = 6, List = 0xA, Map = 0xD };
constexpr quint8 kFalse = 0x08;
constexpr quint8 kTrue = 0x09;
/// As a size: the size follows, as a whole number of its own.
constexpr quint8 kSizeFollows = 0xF;

[[noreturn]] void unknownType() {
  throw DomainError::invalid(PropertyListWords::tr("A property list cannot hold one of the values."));
}

[[noreturn]] void unreadable() {
  throw DomainError::invalid(PropertyListWords::tr("The data is not a property list."));
}

// --- Reading --------------------------------------------------------------------------------------------------------

class BinaryReader {
 public:
  explicit BinaryReader(const QByteArray& data) : data_(data) {
    if (data.size() < kMagic.size() + kVersion.size() + kTrailer) unreadable();
    const qsizetype trailer = data.size() - kTrailer;
    offsetSize_ = byte(trailer + 6);
    indexSize_ = byte(trailer + 7);
    count_ = number(trailer + 8, 8);
    const quint64 top = number(trailer + 16, 8);
    table_ = number(trailer + 24, 8);
    const auto isSize = [](qsizetype size) { return size >= 1 && size <= 8; };
    const auto space = static_cast<quint64>(trailer);
    if (!isSize(offsetSize_) || !isSize(indexSize_) || table_ > space || top >= count_) unreadable();
    if (count_ > (space - table_) / static_cast<quint64>(offsetSize_)) unreadable();
    value_ = read(top, 0);
  }
  const QVariant& value() const { return value_; }

 private:
  struct Object {
    quint8 kind;
    qsizetype size;
    qsizetype at;  // Where its content begins.
  };

  quint8 byte(qsizetype at) const {
    if (at < 0 || at >= data_.size()) unreadable();
    return static_cast<quint8>(data_[at]);
  }
  quint64 number(qsizetype at, qsizetype size) const {
    quint64 value = 0;
    for (qsizetype i = 0; i < size; ++i) value = value << 8 | byte(at + i);
    return value;
  }
  QByteArrayView bytes(qsizetype at, qsizetype size) const {
    if (at < 0 || size < 0 || size > data_.size() - at) unreadable();
    return QByteArrayView(data_).sliced(at, size);
  }
  /// A size or a place, which must lie within the data.
  qsizetype within(quint64 value) const {
    if (value > static_cast<quint64>(data_.size())) unreadable();
    return static_cast<qsizetype>(value);
  }

  Object object(quint64 index) const {
    if (index >= count_) unreadable();
    const qsizetype at = within(number(within(table_) + static_cast<qsizetype>(index) * offsetSize_, offsetSize_));
    const quint8 first = byte(at);
    Object object{static_cast<quint8>(first >> 4), first & 0xF, at + 1};
    const bool hasSize = object.kind != Plain && object.kind != Whole && object.kind != Real;
    if (hasSize && object.size == kSizeFollows) {
      const quint8 size = byte(object.at);
      if (size >> 4 != Whole || (size & 0xF) > 3) unreadable();
      const qsizetype width = 1 << (size & 0xF);
      object.size = within(number(object.at + 1, width));
      object.at += 1 + width;
    }
    return object;
  }

  QVariant read(quint64 index, int depth) {
    if (depth > kDeepest || ++values_ > kMostValues) unreadable();
    const Object at = object(index);
    switch (at.kind) {
      case Plain:
        if (at.size != kTrue && at.size != kFalse) unreadable();
        return at.size == kTrue;
      case Whole:
        return whole(at);
      case Real:
        return real(at);
      case Bytes:
        return bytes(at.at, at.size).toByteArray();
      case Latin:
      case Utf16:
        return text(at);
      case List: {
        QVariantList list;
        for (qsizetype i = 0; i < at.size; ++i) list << read(member(at, i), depth + 1);
        return list;
      }
      case Map: {
        QVariantMap map;
        for (qsizetype i = 0; i < at.size; ++i) {
          const Object key = object(member(at, i));
          if (key.kind != Latin && key.kind != Utf16) unreadable();
          map.insert(text(key), read(member(at, at.size + i), depth + 1));
        }
        if (map.size() != at.size) unreadable();  // A key that is there twice says two things.
        return map;
      }
      default:
        unreadable();
    }
  }
  quint64 member(const Object& at, qsizetype i) const { return number(at.at + i * indexSize_, indexSize_); }

  QVariant whole(const Object& at) const {
    // Up to four bytes have no sign; sixteen are an unsigned number that eight cannot hold.
    if (at.size > 3) unreadable();
    return static_cast<qlonglong>(number(at.at, 1 << at.size));
  }
  QVariant real(const Object& at) const {
    if (at.size == 2) return static_cast<double>(std::bit_cast<float>(static_cast<quint32>(number(at.at, 4))));
    if (at.size == 3) return std::bit_cast<double>(number(at.at, 8));
    unreadable();
  }
  QString text(const Object& at) const {
    if (at.kind == Latin) return QString::fromLatin1(bytes(at.at, at.size));
    if (at.size > data_.size() / 2) unreadable();
    QString text;
    for (qsizetype i = 0; i < at.size; ++i) text += QChar(static_cast<char16_t>(number(at.at + 2 * i, 2)));
    if (!text.isValidUtf16()) unreadable();
    return text;
  }

  QByteArray data_;
  qsizetype offsetSize_ = 0;
  qsizetype indexSize_ = 0;
  quint64 count_ = 0;
  quint64 table_ = 0;
  int values_ = 0;
  QVariant value_;
};

/// The form that a person can read and edit.
class XmlReader {
 public:
  explicit XmlReader(const QByteArray& data) : xml_(data) {
    if (!xml_.readNextStartElement() || xml_.name() != "plist"_L1 || !xml_.readNextStartElement()) unreadable();
    value_ = read(0);
    if (xml_.readNextStartElement() || xml_.hasError()) unreadable();
  }
  const QVariant& value() const { return value_; }

 private:
  QVariant read(int depth) {
    if (depth > kDeepest) unreadable();
    const QString kind = xml_.name().toString();
    if (kind == "dict"_L1) return map(depth);
    if (kind == "array"_L1) {
      QVariantList list;
      while (xml_.readNextStartElement()) list << read(depth + 1);
      return list;
    }
    const QString text = xml_.readElementText();
    bool ok = true;
    QVariant value;
    if (kind == "true"_L1 || kind == "false"_L1) {
      value = kind == "true"_L1;
    } else if (kind == "integer"_L1) {
      value = text.toLongLong(&ok);
    } else if (kind == "real"_L1) {
      value = text.toDouble(&ok);
    } else if (kind == "string"_L1) {
      value = text;
    } else if (kind == "data"_L1) {
      value = QByteArray::fromBase64(text.toLatin1());
    } else {
      ok = false;
    }
    if (!ok || xml_.hasError()) unreadable();
    return value;
  }
  QVariant map(int depth) {
    QVariantMap map;
    while (xml_.readNextStartElement()) {
      if (xml_.name() != "key"_L1) unreadable();
      const QString key = xml_.readElementText();
      if (map.contains(key) || !xml_.readNextStartElement()) unreadable();
      map.insert(key, read(depth + 1));
    }
    return map;
  }

  QXmlStreamReader xml_;
  QVariant value_;
};

// --- Writing --------------------------------------------------------------------------------------------------------

class BinaryWriter {
 public:
  explicit BinaryWriter(const QVariant& value) {
    data_ = kMagic.toByteArray() + kVersion.toByteArray();
    const quint64 top = write(value, 0);
    const auto table = static_cast<quint64>(data_.size());
    for (const quint64 offset : offsets_) number(offset, kWidth);
    data_.append(6, '\0');
    data_ += static_cast<char>(kWidth);
    data_ += static_cast<char>(kWidth);
    number(static_cast<quint64>(offsets_.size()), 8);
    number(top, 8);
    number(table, 8);
  }
  const QByteArray& data() const { return data_; }

 private:
  static constexpr int kWidth = 4;  // Of offsets and indices.

  void number(quint64 value, int size) {
    for (int i = size - 1; i >= 0; --i) data_ += static_cast<char>(value >> (8 * i));
  }
  quint64 begin(quint8 kind, qsizetype size) {
    offsets_ << static_cast<quint64>(data_.size());
    const bool fits = size < kSizeFollows;
    data_ += static_cast<char>(kind << 4 | (fits ? static_cast<quint8>(size) : kSizeFollows));
    if (!fits) {
      data_ += static_cast<char>(Whole << 4 | 2);
      number(static_cast<quint64>(size), 4);
    }
    return static_cast<quint64>(offsets_.size()) - 1;
  }
  quint64 eightBytes(Kind kind, quint64 value) {
    const quint64 index = begin(kind, 3);
    number(value, 8);
    return index;
  }
  quint64 text(const QString& text) {
    // The null that ends a text elsewhere would cut this one off for other readers.
    if (text.contains(QChar::Null)) unknownType();
    const bool plain = std::ranges::all_of(text, [](QChar c) { return c.unicode() < 0x80; });
    const quint64 index = begin(plain ? Latin : Utf16, text.size());
    if (plain) {
      data_ += text.toLatin1();
    } else {
      for (const QChar c : text) number(c.unicode(), 2);
    }
    return index;
  }
  quint64 collection(Kind kind, qsizetype size, const QList<quint64>& members) {
    const quint64 index = begin(kind, size);
    for (const quint64 member : members) number(member, kWidth);
    return index;
  }

  /// The value's index. What a collection holds is before it.
  quint64 write(const QVariant& value, int depth) {
    if (depth > kDeepest) unknownType();
    switch (value.typeId()) {
      case QMetaType::Bool:
        return begin(Plain, value.toBool() ? kTrue : kFalse);
      case QMetaType::Int:
      case QMetaType::UInt:
      case QMetaType::LongLong:
        return eightBytes(Whole, static_cast<quint64>(value.toLongLong()));
      case QMetaType::Double:
        return eightBytes(Real, std::bit_cast<quint64>(value.toDouble()));
      case QMetaType::QString:
        return text(value.toString());
      case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        const quint64 index = begin(Bytes, bytes.size());
        data_ += bytes;
        return index;
      }
      case QMetaType::QVariantList: {
        QList<quint64> members;
        for (const QVariant& item : value.toList()) members << write(item, depth + 1);
        return collection(List, members.size(), members);
      }
      case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        QList<quint64> members;
        for (const QString& key : map.keys()) members << text(key);
        for (const QVariant& item : map) members << write(item, depth + 1);
        return collection(Map, map.size(), members);
      }
      default:
        unknownType();
    }
  }

  QByteArray data_;
  QList<quint64> offsets_;
};

}  // namespace

QByteArray PropertyList::encode(const QVariant& value) { return BinaryWriter(value).data(); }

QVariant PropertyList::decode(const QByteArray& data) {
  if (data.startsWith(kMagic)) return BinaryReader(data).value();
  if (data.trimmed().startsWith('<')) return XmlReader(data).value();
  unreadable();
}

}  // namespace tarnwick
