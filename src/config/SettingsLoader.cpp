#include "config/SettingsLoader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <functional>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "config/Persistence.h"

namespace tarnwick {
namespace {

struct SettingsLoaderWords {
  Q_DECLARE_TR_FUNCTIONS(SettingsLoader)
};

using namespace Qt::StringLiterals;

const QLatin1StringView kSettings("config-recovery-");
const QLatin1StringView kContent("content-recovery-");

QString recoveryName(QLatin1StringView what, qint64 unixSeconds) {
  return what + QString::number(unixSeconds) + u".json"_s;
}

/// What of it can be used is found out once it is safe.
KeptSettings keptAs(const QString& file, const QByteArray& bytes) {
  try {
    return {file, KeptSettings::decode(bytes).leftOut};
  } catch (const DomainError&) {
    return {};
  }
}

/// `preserve` saves the original under the path that it is given.
SettingsLoader::Result recover(const QString& path, qint64 unixSeconds, const DomainError& failure,
                               const std::function<void(const QString&)>& preserve) {
  const QString name = recoveryName(kSettings, unixSeconds);
  try {
    preserve(QFileInfo(path).path() + u'/' + name);
  } catch (const DomainError& blocked) {
    return {{},
            false,
            SettingsLoaderWords::tr("Settings recovery could not preserve the original file. ") + blocked.message(),
            SettingsLoader::Origin::Recovery};
  }
  return {{},
          true,
          SettingsLoaderWords::tr("Could not load settings. The original file was preserved as ") + name + u". "_s +
              failure.message(),
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
    KeptSettings kept;
    Result recovered = recover(path, unixSeconds, failure, [&](const QString& copy) {
      DurableFile::writeAtomically(*bytes, copy, DurableFile::kPrivate);
      kept = keptAs(copy, *bytes);
    });
    recovered.kept = kept;
    return recovered;
  }
}

bool SettingsLoader::hasKeptAside(const QString& folder) {
  return !QDir(folder).entryList({kSettings + u"*.json"_s}, QDir::Files | QDir::System | QDir::Hidden).isEmpty();
}

QString SettingsLoader::contentName(qint64 unixSeconds) { return recoveryName(kContent, unixSeconds); }

QString SettingsLoader::contentBeside(const QString& recoveryFile) {
  const QFileInfo file(recoveryFile);
  return file.path() + u'/' + file.fileName().replace(kSettings, kContent);
}

}  // namespace tarnwick
