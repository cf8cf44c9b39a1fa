#include "services/StoreIdentity.h"

#include <QUuid>

#include "base/DurableFile.h"
#include "base/UuidText.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostIdentity = 64;

QString identityFile(const QString& folder) { return folder + "/store-id"_L1; }

/// Null where there is no such file, empty where it holds something else.
QString identityIn(const QString& path) {
  // A file that cannot be read now may be read later: another in its place would make all older items nobody's.
  const auto content = DurableFile::readIfPresent(path);
  if (!content) return {};
  const auto id =
      content->size() > kMostIdentity ? std::nullopt : UuidText::read(QString::fromLatin1(*content).trimmed());
  return id && !id->isNull() ? UuidText::write(*id) : u""_s;
}

}  // namespace

QString StoreIdentity::read(const QString& folder) { return identityIn(identityFile(folder)); }

QString StoreIdentity::readOrMake(const QString& folder) {
  const QString path = identityFile(folder);
  const QString kept = identityIn(path);
  if (!kept.isEmpty()) return kept;
  if (!kept.isNull()) DurableFile::rename(path, path + "-damaged"_L1);
  const QString made = UuidText::write(QUuid::createUuid());
  // On the disk before the first item has it: an item with a lost identity would be nobody's.
  DurableFile::write(made.toLatin1() + '\n', path);
  return made;
}

}  // namespace tarnwick
