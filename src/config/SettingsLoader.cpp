#include "config/SettingsLoader.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <functional>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "config/Persistence.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// `preserve` saves the original under the path that it is given.
SettingsLoader::Result recover(const QString& path, qint64 unixSeconds, const DomainError& failure,
                               const std::function<void(const QString&)>& preserve) {
  const QString name = u"config-recovery-%1.json"_s.arg(unixSeconds);
  try {
    preserve(QFileInfo(path).path() + u'/' + name);
  } catch (const DomainError& blocked) {
    return {{},
            false,
            QCoreApplication::translate("SettingsLoader", "Settings recovery could not preserve the original file. ") +
                blocked.message(),
            SettingsLoader::Origin::Recovery};
  }
  return {
      {},
      true,
      QCoreApplication::translate("SettingsLoader", "Could not load settings. The original file was preserved as ") +
          name + u". "_s + failure.message(),
      SettingsLoader::Origin::Recovery};
}

}  // namespace

SettingsLoader::Result SettingsLoader::load(const QString& path, qint64 unixSeconds) {
  std::optional<QByteArray> bytes;
  try {
    bytes = DurableFile::readIfPresent(path);
  } catch (const DomainError& failure) {
    // What can't be read can't be copied either, but a rename needs no reading.
    return recover(path, unixSeconds, failure, [&](const QString& aside) { DurableFile::rename(path, aside); });
  }
  if (!bytes) return {{}, true, {}, Origin::FirstRun};
  try {
    return {Persistence::decode(*bytes), true, {}, Origin::File};
  } catch (const DomainError& failure) {
    return recover(path, unixSeconds, failure,
                   [&](const QString& copy) { DurableFile::writeAtomically(*bytes, copy, DurableFile::kPrivate); });
  }
}

}  // namespace tarnwick
