#include <QUrl>

#include "platform/linux/FileNaming.h"
#include "platform/linux/FileOperations.h"
#include "platform/linux/FileWork.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using Change = FileChange::Kind;

TEST(FileNaming, CountsBeforeTheEndingAndStaysWithinTheLimit) {
  struct Case {
    QString name;
    bool isFolder;
    int attempt;
    QString expected;
  };
  const Case cases[] = {
      {u"a.txt"_s, false, 1, u"a.txt"_s},
      {u"a.txt"_s, false, 2, u"a (2).txt"_s},
      {u"a (2).txt"_s, false, 2, u"a (3).txt"_s},
      {u"back.tar.gz"_s, false, 3, u"back (3).tar.gz"_s},
      {u".profile"_s, false, 2, u".profile (2)"_s},
      {u"v1.2"_s, true, 2, u"v1.2 (2)"_s},
      {u"Letter to Mr. Brown"_s, false, 2, u"Letter to Mr. Brown (2)"_s},
      {u"é"_s.repeated(125) + u".jpeg"_s, false, 2, u"é"_s.repeated(123) + u" (2).jpeg"_s},
      {u"😀"_s.repeated(63), false, 2, u"😀"_s.repeated(62) + u" (2)"_s},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FileNaming::candidate(c.name, c.isFolder, c.attempt), c.expected) << qPrintable(c.name);
  }
}

class FilesTest : public FolderTest {
 protected:
  FilesTest() {
    QDir(folder_.path()).mkpath(u"to"_s);
    QDir(folder_.path()).mkpath(u"data"_s);
  }

  TrashCan can() const {
    return {at(u"data"_s), [this] { return volumes; }};
  }
  FileWork work() const { return {can(), stop.get_token()}; }
  FilesOutcome bring(const QStringList& names, FileTransfer how) const {
    QStringList paths;
    for (const QString& name : names) paths << (name.startsWith(u'/') ? name : at(name));
    return work().bringInto(at(u"to"_s), paths, how);
  }
  QStringList in(const QString& name) const {
    return QDir(at(name)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }

  QStringList volumes;
  std::stop_source stop;
};

TEST_F(FilesTest, MovesCopiesAndLinksBesideWhatIsThereAndTakesItBack) {
  put(u"a.txt"_s, "new");
  put(u"to/a.txt"_s, "old");
  put(u"tree/deep/b"_s, "b");
  setMode(u"tree/deep/b"_s, 0640);
  QFile::link(u"nowhere"_s, at(u"tree/dangling"_s));
  const FilesOutcome moved = bring({u"a.txt"_s, u"tree/"_s}, FileTransfer::Natural);
  EXPECT_EQ(moved.error, QString());
  ASSERT_EQ(moved.changes.size(), 2);
  EXPECT_EQ(moved.changes[0], (FileChange{Change::Moved, at(u"a.txt"_s), at(u"to/a (2).txt"_s)}));
  EXPECT_EQ(content(u"to/a.txt"_s), "old");

  // Its own folder is no place to move to, but a copy may lie beside it.
  EXPECT_TRUE(bring({u"to/a.txt"_s}, FileTransfer::Move).changes.isEmpty());
  const FilesOutcome copied = bring({u"to/tree"_s}, FileTransfer::Copy);
  ASSERT_EQ(copied.changes.size(), 1);
  EXPECT_EQ(content(u"to/tree (2)/deep/b"_s), "b");
  EXPECT_EQ(mode(u"to/tree (2)/deep/b"_s), 0640u);
  EXPECT_TRUE(QFileInfo(at(u"to/tree (2)/dangling"_s)).isSymLink());
  const FilesOutcome linked = bring({u"to/tree"_s}, FileTransfer::Link);
  EXPECT_EQ(QFileInfo(at(u"to/tree (3)"_s)).symLinkTarget(), at(u"to/tree"_s));

  EXPECT_EQ(work().takeBack(linked.changes + copied.changes).error, QString());
  EXPECT_EQ(in(u"data/Trash/files"_s), QStringList{u"tree (2)"_s}) << "a copy may have been worked on";
  put(u"a.txt"_s, "another");
  EXPECT_EQ(work().takeBack(moved.changes).error, QString());
  EXPECT_EQ(content(u"a.txt"_s), "another");
  EXPECT_EQ(content(u"a (2).txt"_s), "new");
  EXPECT_EQ(content(u"tree/deep/b"_s), "b");
  EXPECT_EQ(in(u"to"_s), QStringList{u"a.txt"_s});
}

TEST_F(FilesTest, RefusesWhatWouldLoseOrNeverEnd) {
  put(u"a"_s, "a");
  put(u"locked/b"_s, "b");
  const std::string itself = "“to” cannot be put into itself.";
  QFile::link(at(u"to"_s), at(u"alias"_s));
  EXPECT_EQ(work().bringInto(at(u"alias"_s), {at(u"to"_s)}, FileTransfer::Move).error.toStdString(), itself);
  QDir().mkpath(at(u"to/below"_s));
  EXPECT_EQ(work().bringInto(at(u"to/below"_s), {at(u"to"_s)}, FileTransfer::Copy).error.toStdString(), itself);
  ASSERT_EQ(::mkfifo(encoded(u"pipe"_s).constData(), 0600), 0);
  EXPECT_EQ(bring({u"pipe"_s}, FileTransfer::Copy).error.toStdString(),
            "“pipe” could not be copied: Operation not supported.");
  // What failed does not keep the rest from being done.
  const FilesOutcome rest = bring({u"gone"_s, u"a"_s}, FileTransfer::Move);
  EXPECT_EQ(rest.error.toStdString(), "“gone” could not be moved: No such file or directory.");
  EXPECT_EQ(rest.changes.size(), 1);
  {
    setMode(u"to"_s, 0555);
    const AsPlainUser plain(folder_.path());
    EXPECT_EQ(bring({u"locked/b"_s}, FileTransfer::Move).error.toStdString(),
              "“b” could not be moved: Permission denied.");
  }
  setMode(u"to"_s, 0755);
  EXPECT_EQ(in(u"to"_s), (QStringList{u"a"_s, u"below"_s}));
}

TEST_F(FilesTest, ACopyThatCannotEndLeavesNothing) {
  put(u"tree/small"_s, "fits");
  put(u"tree/too large"_s, QByteArray(4096, 'x'));
  {
    const AsFullDisk full(1024);
    EXPECT_EQ(bring({u"tree"_s}, FileTransfer::Copy).error.toStdString(),
              "“tree” could not be copied: File too large.");
  }
  EXPECT_TRUE(in(u"to"_s).isEmpty());
  stop.request_stop();
  const FilesOutcome stopped = bring({u"tree"_s}, FileTransfer::Copy);
  EXPECT_TRUE(stopped.changes.isEmpty());
  EXPECT_EQ(stopped.error, QString());
}

TEST_F(FilesTest, CrossesFileSystems) {
  QTemporaryDir other(u"/dev/shm/tarnwick-test-XXXXXX"_s);
  struct stat here = {};
  struct stat there = {};
  ::stat(QFile::encodeName(folder_.path()).constData(), &here);
  if (!other.isValid() || ::stat(QFile::encodeName(other.path()).constData(), &there) != 0 ||
      here.st_dev == there.st_dev) {
    GTEST_SKIP() << "one file system only";
  }
  writeFile(other.filePath(u"tree/a"_s), "a");
  writeFile(other.filePath(u"b"_s), "b");
  EXPECT_EQ(bring({other.filePath(u"tree"_s)}, FileTransfer::Natural).changes.value(0).kind, Change::Copied);
  EXPECT_TRUE(QFile::exists(other.filePath(u"tree/a"_s)));
  const FilesOutcome moved = bring({other.filePath(u"tree"_s), other.filePath(u"b"_s)}, FileTransfer::Move);
  EXPECT_EQ(moved.changes.size(), 2);
  EXPECT_FALSE(QFile::exists(other.filePath(u"tree"_s)));
  EXPECT_EQ(content(u"to/tree (2)/a"_s), "a");
  EXPECT_EQ(work().takeBack(moved.changes).error, QString());
  EXPECT_TRUE(QFile::exists(other.filePath(u"tree/a"_s)));
  EXPECT_EQ(in(u"to"_s), QStringList{u"tree"_s});
}

TEST_F(FilesTest, TheTrashKeepsWhereThingsCameFrom) {
  const QString odd = u"50 % é\n.txt"_s;
  put(odd, "1");
  put(u"sub/"_s + odd, "2");
  put(u"x"_s.repeated(255), "long");
  QFile::link(u"nowhere"_s, at(u"dangling"_s));
  const QStringList paths{at(odd), at(u"sub/"_s + odd), at(u"dangling"_s), at(u"x"_s.repeated(255)), at(u"gone"_s)};
  const FilesOutcome trashed = work().moveToTrash(paths);
  EXPECT_EQ(trashed.error.toStdString(), "“gone” could not be moved to the trash: No such file or directory.");
  ASSERT_EQ(trashed.changes.size(), 4);
  EXPECT_EQ(mode(u"data/Trash"_s), 0700u);
  EXPECT_EQ(trashed.changes[1].to, at(u"data/Trash/files/50 % é\n (2).txt"_s));
  const QString path = QString::fromLatin1(QFile::encodeName(at(odd)).toPercentEncoding("/"));
  EXPECT_TRUE(content(u"data/Trash/info/"_s + odd + u".trashinfo"_s)
                  .starts_with("[Trash Info]\nPath=" + path.toStdString() + "\nDeletionDate=2"));
  // What lies there already is not thrown away once more.
  EXPECT_TRUE(work().moveToTrash({trashed.changes[0].to}).changes.isEmpty());

  QDir(at(u"sub"_s)).removeRecursively();
  EXPECT_EQ(work().takeBack(trashed.changes).error, QString());
  EXPECT_EQ(content(u"sub/"_s + odd), "2");
  EXPECT_TRUE(QFileInfo(at(u"dangling"_s)).isSymLink());
  EXPECT_TRUE(in(u"data/Trash/info"_s).isEmpty());

  work().moveToTrash({at(odd), at(u"sub"_s)});
  EXPECT_EQ(work().emptyTrash().error, QString());
  EXPECT_TRUE(in(u"data/Trash/files"_s).isEmpty());
  EXPECT_TRUE(in(u"data/Trash/info"_s).isEmpty());
}

TEST_F(FilesTest, WorksBehindTheMainThreadAndWatchesTheTrash) {
  put(u"a"_s, "a");
  put(u"b"_s, "b");
  FileOperations files(can(), [] { return QDBusConnection(u"no such bus"_s); });
  int emissions = 0;
  QObject::connect(&files, &Files::trashChanged, [&] { ++emissions; });
  EXPECT_EQ(files.trashCount(), 0);

  QObject context;
  QHash<QString, Files::Kind> kinds;
  QFile::link(u"nowhere"_s, at(u"dangling"_s));
  files.look({at(u"a"_s), at(u"to"_s), at(u"gone"_s), at(u"dangling"_s)}, &context,
             [&](const auto& found) { kinds = found; });
  ASSERT_TRUE(waitFor([&] { return kinds.size() == 4; }));
  EXPECT_EQ(kinds.value(at(u"a"_s)), Files::Kind::File);
  EXPECT_EQ(kinds.value(at(u"to"_s)), Files::Kind::Folder);
  EXPECT_EQ(kinds.value(at(u"gone"_s)), Files::Kind::Missing);
  EXPECT_EQ(kinds.value(at(u"dangling"_s)), Files::Kind::File);

  auto short_ = std::make_unique<QObject>();
  bool called = false;
  files.trash({at(u"a"_s)}, short_.get(), [&](const FilesOutcome&) { called = true; });
  short_.reset();
  ASSERT_TRUE(waitFor([&] { return files.trashCount() == 1; }));
  EXPECT_FALSE(called) << "nobody is left to be told";
  // By another program, in a folder that came into being only now.
  ASSERT_TRUE(QFile::rename(at(u"b"_s), at(u"data/Trash/files/b"_s)));
  ASSERT_TRUE(waitFor([&] { return files.trashCount() == 2; }));
  files.emptyTrash(&context, {});
  ASSERT_TRUE(waitFor([&] { return files.trashCount() == 0; }));
  EXPECT_GE(emissions, 3);

  std::optional<bool> shown;
  files.reveal({at(u"to"_s)}, &context, [&](bool done) { shown = done; });
  ASSERT_TRUE(waitFor([&] { return shown.has_value(); }));
  EXPECT_FALSE(*shown);
}

TEST_F(FilesTest, AsksTheFileManagerToShowFiles) {
  PrivateBus bus;
  FakeService manager(bus.connection(), u"org.freedesktop.FileManager1"_s);
  QStringList asked;
  manager.answer(u"ShowItems"_s, [&](const QDBusMessage& message) {
    asked = message.arguments()[0].toStringList();
    return QVariantList();
  });
  FileOperations files(can(), [connection = bus.connection()] { return connection; });
  QObject context;
  std::optional<bool> shown;
  files.reveal({u"/tmp/a b#c"_s}, &context, [&](bool done) { shown = done; });
  ASSERT_TRUE(waitFor([&] { return shown.has_value(); }));
  EXPECT_TRUE(*shown);
  EXPECT_EQ(asked, QStringList{u"file:///tmp/a%20b%23c"_s});
}

}  // namespace
}  // namespace tarnwick
