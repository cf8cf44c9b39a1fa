#include "commandbar/CommandUsageStore.h"

#include <QMap>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/RecordCodec.h"
#include "base/SmallFile.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 kLargestUsageFile = 16 * 1024 * 1024;

struct UsageFile {
  QMap<QString, CommandUsage::Record> records;

  static constexpr auto fields() { return std::tuple(field::required("records", &UsageFile::records)); }
};

bool writeUsage(const CommandUsage& usage, const QString& path) {
  try {
    UsageFile file;
    for (auto record = usage.records.cbegin(); record != usage.records.cend(); ++record)
      file.records.insert(record.key(), *record);
    const QByteArray json = RecordCodec::toBytes(file);
    DurableFile::makeParent(path);
    DurableFile::writeQuickly(json, path, DurableFile::kPrivate);
    return true;
  } catch (const DomainError&) {
    return false;
  }
}

}  // namespace

QString CommandUsageStore::fileIn(const QString& folder) { return folder + "/command-usage.json"_L1; }

CommandUsage CommandUsageStore::load(const QString& folder) {
  CommandUsage usage;
  const auto json = SmallFile::read(fileIn(folder), kLargestUsageFile);
  if (!json) return usage;
  try {
    const auto file = RecordCodec::fromBytes<UsageFile>(*json);
    for (auto record = file.records.cbegin(); record != file.records.cend(); ++record)
      usage.records.insert(record.key(), *record);
  } catch (const DomainError&) {
    // Use is only a preference: it is learned again.
  }
  return usage;
}

void CommandUsageStore::save(const CommandUsage& usage, const QString& folder) {
  work_.start([usage, path = fileIn(folder)] { return writeUsage(usage, path); }, [](bool) {});
}

}  // namespace tarnwick
