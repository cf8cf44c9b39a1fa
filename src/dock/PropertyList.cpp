#include "dock/PropertyList.h"

#include <plist/plist.h>

#include <QCoreApplication>
#include <QString>
#include <cstdlib>
#include <memory>

#include "base/DomainError.h"

namespace tarnwick {
namespace {

constexpr int kDeepest = 32;

struct FreeNode {
  void operator()(void* node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, FreeNode>;

[[noreturn]] void unknownType() {
  throw DomainError::invalid(
      QCoreApplication::translate("PropertyList", "A property list cannot hold one of the values."));
}

[[noreturn]] void unreadable() {
  throw DomainError::invalid(QCoreApplication::translate("PropertyList", "The data is not a property list."));
}

/// The library ends a text at its first null, which would lose the rest.
QByteArray textBytes(const QString& text) {
  if (text.contains(QChar::Null)) unknownType();
  return text.toUtf8();
}

Node toNode(const QVariant& value);

Node toNode(const QVariantList& list) {
  Node node(plist_new_array());
  for (const QVariant& item : list) plist_array_append_item(node.get(), toNode(item).release());
  return node;
}

Node toNode(const QVariantMap& map) {
  Node node(plist_new_dict());
  for (auto it = map.cbegin(); it != map.cend(); ++it) {
    plist_dict_set_item(node.get(), textBytes(it.key()).constData(), toNode(it.value()).release());
  }
  return node;
}

Node toNode(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool:
      return Node(plist_new_bool(value.toBool()));
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
      // The library knows no sign; the binary form is two's complement.
      return Node(plist_new_uint(static_cast<uint64_t>(value.toLongLong())));
    case QMetaType::Double:
      return Node(plist_new_real(value.toDouble()));
    case QMetaType::QString:
      return Node(plist_new_string(textBytes(value.toString()).constData()));
    case QMetaType::QByteArray: {
      const QByteArray bytes = value.toByteArray();
      return Node(plist_new_data(bytes.constData(), static_cast<uint64_t>(bytes.size())));
    }
    case QMetaType::QVariantList:
      return toNode(value.toList());
    case QMetaType::QVariantMap:
      return toNode(value.toMap());
    default:
      unknownType();
  }
}

QVariant toValue(plist_t node, int depth);

QVariant toMap(plist_t node, int depth) {
  plist_dict_iter walker = nullptr;
  plist_dict_new_iter(node, &walker);
  const std::unique_ptr<void, decltype(&std::free)> owner(walker, &std::free);
  QVariantMap map;
  for (uint32_t left = plist_dict_get_size(node); left > 0; --left) {
    char* key = nullptr;
    plist_t item = nullptr;
    plist_dict_next_item(node, walker, &key, &item);
    const std::unique_ptr<char, decltype(&std::free)> keyOwner(key, &std::free);
    if (!key) unreadable();
    map.insert(QString::fromUtf8(key), toValue(item, depth + 1));
  }
  return map;
}

QVariant toList(plist_t node, int depth) {
  QVariantList list;
  const uint32_t count = plist_array_get_size(node);
  for (uint32_t i = 0; i < count; ++i) list << toValue(plist_array_get_item(node, i), depth + 1);
  return list;
}

QVariant toValue(plist_t node, int depth) {
  if (depth > kDeepest) unreadable();
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      uint8_t value = 0;
      plist_get_bool_val(node, &value);
      return value != 0;
    }
    case PLIST_UINT: {
      uint64_t value = 0;
      plist_get_uint_val(node, &value);
      return static_cast<qlonglong>(value);
    }
    case PLIST_REAL: {
      double value = 0;
      plist_get_real_val(node, &value);
      return value;
    }
    case PLIST_STRING: {
      uint64_t length = 0;
      const char* text = plist_get_string_ptr(node, &length);
      return QString::fromUtf8(text, static_cast<qsizetype>(length));
    }
    case PLIST_DATA: {
      uint64_t length = 0;
      const char* bytes = plist_get_data_ptr(node, &length);
      return QByteArray(bytes, static_cast<qsizetype>(length));
    }
    case PLIST_ARRAY:
      return toList(node, depth);
    case PLIST_DICT:
      return toMap(node, depth);
    default:
      unknownType();
  }
}

}  // namespace

QByteArray PropertyList::encode(const QVariant& value) {
  const Node node = toNode(value);
  char* bytes = nullptr;
  uint32_t length = 0;
  plist_to_bin(node.get(), &bytes, &length);
  const std::unique_ptr<char, decltype(&plist_to_bin_free)> owner(bytes, &plist_to_bin_free);
  if (!bytes) unknownType();
  return QByteArray(bytes, static_cast<qsizetype>(length));
}

QVariant PropertyList::decode(const QByteArray& data) {
  plist_t parsed = nullptr;
  const auto length = static_cast<uint32_t>(data.size());
  if (data.startsWith("bplist")) {
    plist_from_bin(data.constData(), length, &parsed);
  } else if (data.trimmed().startsWith('<')) {
    plist_from_xml(data.constData(), length, &parsed);
  }
  const Node node(parsed);
  if (!node) unreadable();
  return toValue(node.get(), 0);
}

}  // namespace tarnwick
