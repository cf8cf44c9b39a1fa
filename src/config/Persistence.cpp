#include "config/Persistence.h"

#include <QJsonDocument>

#include "base/DurableFile.h"

namespace tarnwick {

QByteArray Persistence::encode(const DockConfiguration& configuration) {
  DockConfiguration valid = configuration;
  valid.validate();
  return RecordCodec::toBytes(valid, QJsonDocument::Indented);
}

DockConfiguration Persistence::decode(const QByteArray& json) {
  auto configuration = RecordCodec::fromBytes<DockConfiguration>(json);
  configuration.validate();
  return configuration;
}

DockConfiguration Persistence::read(const QString& path) { return decode(DurableFile::read(path)); }

void Persistence::save(const DockConfiguration& configuration, const QString& path) {
  const QByteArray json = encode(configuration);
  DurableFile::makeParent(path);
  DurableFile::writeAtomically(json, path, DurableFile::kPrivate);
}

}  // namespace tarnwick
