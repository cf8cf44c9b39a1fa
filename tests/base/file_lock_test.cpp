#include "base/FileLock.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <functional>
#include <memory>
#include <thread>

#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using enum FileLock::Taking;
using namespace std::chrono_literals;

class FileLocks : public FolderTest {
 protected:
  QString path() const { return at(u"lock"_s); }
};

TEST_F(FileLocks, AreHeldByOneUntilItLetsGo) {
  auto first = std::make_unique<FileLock>(path());
  FileLock second(path());
  EXPECT_EQ(first->take(), Held);
  EXPECT_EQ(first->take(), Held);
  EXPECT_EQ(second.take(5ms), OthersHave);
  EXPECT_EQ(mode(u"lock"_s), 0600u);
  first->release();
  EXPECT_EQ(second.take(), Held);
  EXPECT_EQ(first->take(), OthersHave);
  second.release();
  EXPECT_EQ(first->take(), Held);
  first.reset();
  EXPECT_EQ(second.take(), Held);
}

TEST_F(FileLocks, AreWaitedFor) {
  FileLock first(path());
  FileLock second(path());
  ASSERT_EQ(first.take(), Held);
  FileLock::Taking taken = Impossible;
  std::thread waiting([&] { taken = second.take(FileLock::kEndless); });
  first.release();
  waiting.join();
  EXPECT_EQ(taken, Held);
}

TEST_F(FileLocks, GoWithTheirProcess) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    FileLock lock(path());
    const char byte = lock.take() == Held ? 'y' : 'n';
    [[maybe_unused]] const auto written = ::write(ends[1], &byte, 1);
    ::pause();
    ::_exit(0);
  }
  char byte = 0;
  ASSERT_EQ(::read(ends[0], &byte, 1), 1);
  EXPECT_EQ(byte, 'y');
  FileLock lock(path());
  EXPECT_EQ(lock.take(), OthersHave);
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  EXPECT_EQ(lock.take(), Held);
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST_F(FileLocks, OnAFileThatLostItsNameKeepNobodyOut) {
  FileLock first(path());
  FileLock second(path());
  ASSERT_EQ(first.take(), Held);
  ASSERT_EQ(second.take(), OthersHave);
  QFile::remove(path());
  EXPECT_EQ(second.take(100ms), Held);
  EXPECT_TRUE(QFile::exists(path()));
}

TEST_F(FileLocks, AreOnlyHadOnAFileOfTheirOwn) {
  put(u"precious"_s, "content");
  const struct {
    const char* name;
    std::function<void()> make;
    int error;
  } cases[] = {
      {"link", [&] { QFile::link(at(u"precious"_s), path()); }, ELOOP},
      {"dangling link", [&] { QFile::link(at(u"nothing"_s), path()); }, ELOOP},
      {"folder", [&] { QDir(folder_.path()).mkdir(u"lock"_s); }, EISDIR},
      {"pipe", [&] { ::mkfifo(encoded(u"lock"_s).constData(), 0600); }, EINVAL},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    c.make();
    FileLock lock(path());
    EXPECT_EQ(lock.take(), Impossible);
    EXPECT_EQ(lock.error(), c.error);
    EXPECT_EQ(content(u"precious"_s), "content");
    EXPECT_FALSE(QFile::exists(at(u"nothing"_s)));
    QFile::remove(path());
    QDir(folder_.path()).rmdir(u"lock"_s);
  }
  FileLock nowhere(at(u"no folder/lock"_s));
  EXPECT_EQ(nowhere.take(), Impossible);
  EXPECT_EQ(nowhere.error(), ENOENT);
}

}  // namespace
}  // namespace tarnwick
