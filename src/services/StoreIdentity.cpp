#include "services/StoreIdentity.h"

#include <QUuid>

#include "base/DurableFile.h"
#include "base/SmallFile.h"
#include "base/UuidText.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kMostIdentity = 64;

QString identityFile(const QString& folder) { return folder + "/store-id"_L1; }

}  // namespace

QString StoreIdentity::read(const QString& folder) {
  const auto content = SmallFile::read(identityFile(folder), kMostIdentity);
  if (!content) return {};
  const auto id = UuidText::read(QString::fromLatin1(*content).trimmed());
  return id && !id->isNull() ? UuidText::write(*id) : QString();
}

QString StoreIdentity::readOrMake(const QString& folder) {
  if (const QString kept = read(folder); !kept.isEmpty()) return kept;
  const QString made = UuidText::write(QUuid::createUuid());
  // On the disk before the first item has it: an item with a lost identity would be nobody's.
  DurableFile::write(made.toLatin1() + '\n', identityFile(folder));
  return made;
}

}  // namespace tarnwick
