#include "app/InstanceSocket.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <memory>

#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// Asks from a thread of its own, while this one answers.
std::optional<QJsonObject> ask(const QString& directory, const QJsonObject& request) {
  std::optional<QJsonObject> answer;
  const std::unique_ptr<QThread> asking(
      QThread::create([&] { answer = InstanceSocket::ask(directory, request, 20'000).answer; }));
  asking->start();
  EXPECT_TRUE(waitFor([&] { return asking->isFinished(); }));
  return answer;
}

QJsonObject echo(const QJsonObject& request) { return {{u"heard"_s, request}}; }

TEST(InstanceSocketTest, AnswersEachRequestOnce) {
  QTemporaryDir folder;
  const QString deep = folder.filePath(QString(90, u'd') + u'/' + QString(90, u'd'));
  for (const QString& directory : {folder.path(), deep}) {
    QDir().mkpath(directory);
    const QString path = directory + u"/tarnwick.socket"_s;
    EXPECT_FALSE(ask(directory, {}));
    {
      InstanceSocket door(directory);
      ASSERT_TRUE(door.listen(&echo));
      struct stat status = {};
      ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0);
      EXPECT_EQ(status.st_mode & 0777, 0600u);
      for (const QJsonObject& request :
           {QJsonObject{{u"ask"_s, u"open"_s}}, QJsonObject{{u"x"_s, QString(30'000, u'ä')}}, QJsonObject()}) {
        EXPECT_EQ(ask(directory, request), echo(request));
      }
      EXPECT_FALSE(ask(directory, {{u"x"_s, QString(70'000, u'a')}})) << "too long";
    }
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_FALSE(ask(directory, {}));
  }
}

TEST(InstanceSocketTest, TakesThePlaceOfOneThatIsGoneButOfNothingElse) {
  const QTemporaryDir folder;
  const QTemporaryDir runtime;
  const QString path = folder.filePath(u"tarnwick.socket"_s);
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
  const mode_t mask = ::umask(0);
  ASSERT_EQ(::mknod(QFile::encodeName(path).constData(), S_IFSOCK | 0600, 0), 0);
  ::umask(mask);
  InstanceSocket door(folder.path());
  ASSERT_TRUE(door.listen(&echo));
  EXPECT_EQ(ask(folder.path(), {}), echo({}));
  door.close();

  // A file of somebody's: then the runtime folder has it.
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("content");
  file.close();
  ASSERT_TRUE(door.listen(&echo));
  EXPECT_EQ(ask(folder.path(), {}), echo({}));
  EXPECT_EQ(QFile(path).size(), 7);
  EXPECT_EQ(QDir(runtime.path()).entryList(QDir::System | QDir::Files).size(), 1);
  door.close();
  EXPECT_TRUE(QDir(runtime.path()).isEmpty(QDir::System | QDir::Files));
}

TEST(InstanceSocketTest, WhatIsAskedOfACopyThatIsBusyIsDoneOnceLater) {
  const QTemporaryDir folder;
  EXPECT_FALSE(InstanceSocket::ask(folder.path(), {}, 0).isAwaited) << "nobody runs";
  InstanceSocket door(folder.path());
  QList<QJsonObject> requests;
  ASSERT_TRUE(door.listen([&](const QJsonObject& request) {
    requests << request;
    return echo(request);
  }));
  // Nobody runs the event loop meanwhile.
  const auto [answer, isAwaited] = InstanceSocket::ask(folder.path(), {{u"n"_s, 1}}, 0);
  EXPECT_TRUE(isAwaited && !answer);
  EXPECT_EQ(ask(folder.path(), {{u"n"_s, 2}}), echo({{u"n"_s, 2}}));
  EXPECT_EQ(requests, (QList<QJsonObject>{{{u"n"_s, 1}}, {{u"n"_s, 2}}}));
}

}  // namespace
}  // namespace tarnwick
