#include "config/Persistence.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/RecordSize.h"

namespace tarnwick {
namespace {

struct PersistenceWords {
  Q_DECLARE_TR_FUNCTIONS(Persistence)
};

QByteArray written(const DockConfiguration& configuration) {
  return RecordCodec::toBytes(configuration, QJsonDocument::Indented);
}

}  // namespace

QByteArray Persistence::encode(const DockConfiguration& configuration) {
  DockConfiguration valid = configuration;
  valid.validate();
  QByteArray json = written(valid);
  if (json.size() > DurableFile::kMostBytes) {
    throw DomainError::invalid(PersistenceWords::tr("They would be larger than 64 MB and could not be read again."));
  }
  return json;
}

bool Persistence::isTooLarge(const DockConfiguration& configuration) {
  return RecordSize::atMost(configuration) > DurableFile::kMostBytes &&
         written(configuration).size() > DurableFile::kMostBytes;
}

DockConfiguration Persistence::decode(const QByteArray& json) {
  auto configuration = RecordCodec::fromBytes<DockConfiguration>(json);
  configuration.validate();
  return configuration;
}

DockConfiguration Persistence::read(const QString& path) { return decode(DurableFile::read(path)); }

void Persistence::save(const DockConfiguration& configuration, const QString& path) {
  save(encode(configuration), path);
}

void Persistence::save(const QByteArray& json, const QString& path) {
  DurableFile::makeParent(path);
  DurableFile::writeAtomically(json, path, DurableFile::kPrivate);
}

}  // namespace tarnwick
