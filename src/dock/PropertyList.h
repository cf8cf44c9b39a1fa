#pragma once

#include <QByteArray>
#include <QVariant>

namespace tarnwick {

/// Plain values as a property list: booleans, whole numbers, doubles, texts, bytes, and lists and maps of them.
/// Whatever the bytes are, reading ends with a value or a failure: the file may have been anybody's.
struct PropertyList {
  /// In the binary form. Throws DomainError for a value of another type.
  static QByteArray encode(const QVariant& value);
  /// From the binary or the XML form; whole numbers come back as qlonglong. Throws DomainError for anything else.
  static QVariant decode(const QByteArray& data);
};

}  // namespace tarnwick
