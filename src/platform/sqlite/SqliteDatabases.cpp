#include "platform/sqlite/SqliteDatabases.h"

#include <fcntl.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <array>
#include <cstring>
#include <iterator>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/FileDescriptor.h"
#include "base/ModuleLoader.h"
#include "base/SmallFile.h"
#include "platform/sqlite/SqlReader.h"

namespace tarnwick {

namespace {

struct DatabaseWords {
  Q_DECLARE_TR_FUNCTIONS(LocalUsage)

 public:
  static QString busy() {
    return tr(
        "The usage database is busy, changed, or exceeded the read limit. Refresh after the active response finishes.");
  }
};

QString sentenceOf(SqlFailure failure) {
  switch (failure) {
    case SqlFailure::NotOpened:
      return DatabaseWords::tr("The selected usage database cannot be opened read-only.");
    case SqlFailure::Schema:
      return DatabaseWords::tr("This usage database has an unsupported schema. No partial total is shown.");
    case SqlFailure::TooManyRows:
      return DatabaseWords::tr("The usage history exceeds the refresh limit. No partial total is shown.");
    case SqlFailure::TooMuchText:
      return DatabaseWords::tr("Usage metadata exceeds the refresh limit.");
    case SqlFailure::Busy:
    case SqlFailure::None:
      break;
  }
  return DatabaseWords::busy();
}

/// What tells that somebody wrote: the database and the journal of what is not in it yet.
struct Stamps {
  explicit Stamps(const QString& path)
      : database(DurableFile::stamp(path)), journal(DurableFile::stamp(path + QStringLiteral("-wal"))) {}

  bool operator==(const Stamps&) const = default;

  std::optional<DurableFile::Stamp> database;
  std::optional<DurableFile::Stamp> journal;
};

/// How a database stands, by what lies beside it.
enum class Standing {
  Still,   ///< All is in the file itself.
  Shared,  ///< Its owner writes into a journal that others may read along.
  Amidst,  ///< What it is cannot be known without its owner: it writes for itself alone, or was cut off while it did.
};

/// The file is changed in place while a journal of what it was before is there. One that is done with is gone, empty,
/// or has no beginning.
bool isChangedInPlace(const QString& path) {
  static constexpr std::array<unsigned char, 8> mark{0xd9, 0xd5, 0x05, 0xf9, 0x20, 0xa1, 0x63, 0xd7};
  const QByteArray journal = QFile::encodeName(path + QStringLiteral("-journal"));
  const FileDescriptor file(::open(journal.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  std::array<char, mark.size()> beginning{};
  return file && SmallFile::readAt(file.number(), 0, beginning.data(), beginning.size()) == std::ssize(mark) &&
         std::memcmp(beginning.data(), mark.data(), mark.size()) == 0;
}

Standing standingOf(const QString& path, const Stamps& stamps) {
  if (isChangedInPlace(path)) return Standing::Amidst;
  if (QFileInfo::exists(path + QStringLiteral("-shm"))) return stamps.journal ? Standing::Shared : Standing::Still;
  // The library would make that file.
  return stamps.journal && stamps.journal->size > 0 ? Standing::Amidst : Standing::Still;
}

class SqliteDatabase final : public UsageDatabase {
 public:
  SqliteDatabase(const QString& path, double seconds, std::stop_token stop, MakeSqlReader make)
      : path_(path), stop_(stop), before_(path), standing_(standingOf(path, before_)), reader_(make()) {
    if (standing_ == Standing::Amidst) check(SqlFailure::Busy);
    check(reader_->open(QFile::encodeName(path), standing_ == Standing::Still, seconds, std::move(stop)));
  }

  QList<Row> rows(const QString& sql) override {
    QList<Row> found;
    check(reader_->rows(sql.toUtf8(), found));
    return found;
  }

  void confirmUnchanged() override {
    // What is read while a journal is there is one moment of it, whatever is written meanwhile.
    const Stamps after(path_);
    const bool isSame = standing_ == Standing::Shared ? after.database.has_value() : after == before_;
    const bool isWhole = standing_ == Standing::Shared || standingOf(path_, after) == Standing::Still;
    if (!isSame || !isWhole) throw DomainError::invalid(DatabaseWords::busy());
  }

 private:
  void check(SqlFailure failure) const {
    throwIfStopped(stop_);
    if (failure != SqlFailure::None) throw DomainError::invalid(sentenceOf(failure));
  }

  QString path_;
  std::stop_token stop_;
  Stamps before_;
  Standing standing_;
  std::unique_ptr<SqlReader> reader_;
};

}  // namespace

std::unique_ptr<UsageDatabase> SqliteDatabases::open(const QString& path, std::stop_token stop) {
  const auto unavailable = [] {
    return DomainError::invalid(DatabaseWords::tr("The selected usage database is unavailable."));
  };
  const QFileInfo file(path);
  if (file.isSymLink() || !file.isFile()) throw unavailable();
  if (file.size() > UsageDatabase::kMostBytes)
    throw DomainError::invalid(DatabaseWords::tr("Choose a local usage database smaller than 2 GB."));
  // The file itself is not followed; the folders on the way to it may be links.
  const QString folder = QFileInfo(file.absolutePath()).canonicalFilePath();
  const auto make =
      reinterpret_cast<MakeSqlReader>(ModuleLoader::function(QString::fromLatin1(kSqliteModule), kSqliteDoor));
  if (folder.isEmpty()) throw unavailable();
  if (!make) throw DomainError::invalid(sentenceOf(SqlFailure::NotOpened));
  return std::make_unique<SqliteDatabase>(folder + QLatin1Char('/') + file.fileName(), seconds_, std::move(stop), make);
}

}  // namespace tarnwick
