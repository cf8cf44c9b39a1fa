#include "platform/docks/DockRecord.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QString kDocks = u"docks"_s;
const QString kCheck = u"check"_s;
const QString kDock = u"dock"_s;
const QString kSettings = u"settings"_s;
const QString kPlace = u"place"_s;
const QString kName = u"name"_s;
const QString kValue = u"value"_s;
const QString kOurs = u"ours"_s;

/// The same for equal values, whatever file they are in: keys are sorted.
QString checksum(const QString& key, const QVariantList& docks) {
  const QJsonObject all{{u"key"_s, key}, {kDocks, QJsonArray::fromVariantList(docks)}};
  const QByteArray text = QJsonDocument(all).toJson(QJsonDocument::Compact);
  return QString::fromLatin1(QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex());
}

/// One that is not set has no place in a property list; an empty list stands for it.
QVariant toVariant(const DockValue& value) { return value ? QVariant(*value) : QVariant(QVariantList()); }

/// What is behind a key, as far as it has the one type that may be there; else `ok` becomes false.
template <class T>
T take(QVariantMap& map, const QString& key, bool& ok) {
  const QVariant value = map.take(key);
  ok = ok && value.metaType() == QMetaType::fromType<T>();
  return ok ? value.value<T>() : T();
}

std::optional<DockRecord::Entry> toEntry(const QVariant& value, bool isChecked) {
  bool ok = value.typeId() == QMetaType::QVariantMap;
  QVariantMap map = value.toMap();
  DockRecord::Entry entry;
  entry.setting.place = take<QString>(map, kPlace, ok);
  entry.setting.name = take<QString>(map, kName, ok);
  if (map.contains(kValue)) entry.setting.value = take<QString>(map, kValue, ok);
  if (isChecked) {
    for (const QVariant& ours : take<QVariantList>(map, kOurs, ok)) {
      const bool isSet = ours.typeId() == QMetaType::QString;
      // Bytes have the checksum of the text that they spell.
      ok = ok && (isSet || ours == toVariant(std::nullopt));
      entry.ours << (isSet ? DockValue(ours.toString()) : std::nullopt);
    }
  }
  if (!ok || !map.isEmpty()) return std::nullopt;
  return entry;
}

}  // namespace

QVariant DockRecord::toValue(const QString& key) const {
  QVariantList list;
  for (const Dock& dock : docks) {
    QVariantList settings;
    for (const auto& [setting, ours] : dock.entries) {
      QVariantMap map{{kPlace, setting.place}, {kName, setting.name}};
      if (setting.value) map.insert(kValue, *setting.value);
      QVariantList values;
      for (const DockValue& value : ours) values << toVariant(value);
      map.insert(kOurs, values);
      settings << map;
    }
    list << QVariantMap{{kDock, dock.id}, {kSettings, settings}};
  }
  return QVariantMap{{kDocks, list}, {kCheck, checksum(key, list)}};
}

std::optional<DockRecord> DockRecord::fromValue(const QString& key, const QVariant& value) {
  bool ok = value.typeId() == QMetaType::QVariantMap;
  QVariantMap map = value.toMap();
  const bool isChecked = map.contains(kCheck);
  const auto list = take<QVariantList>(map, kDocks, ok);
  if (isChecked) ok = take<QString>(map, kCheck, ok) == checksum(key, list) && ok;
  if (!ok || !map.isEmpty()) return std::nullopt;
  DockRecord record;
  for (const QVariant& item : list) {
    bool isDock = item.typeId() == QMetaType::QVariantMap;
    QVariantMap dock = item.toMap();
    Dock known{take<QString>(dock, kDock, isDock), {}};
    for (const QVariant& setting : take<QVariantList>(dock, kSettings, isDock)) {
      const auto entry = toEntry(setting, isChecked);
      if (!entry) return std::nullopt;
      known.entries << *entry;
    }
    if (!isDock || !dock.isEmpty()) return std::nullopt;
    record.docks << known;
  }
  return record;
}

}  // namespace tarnwick
