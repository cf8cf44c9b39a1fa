#include "app/RestoreDock.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QThread>
#include <atomic>
#include <memory>

#include "app/InstanceSocket.h"
#include "base/FileDescriptor.h"
#include "base/HandoverLock.h"
#include "dock/NativeDockState.h"
#include "dock/PropertyList.h"
#include "handover/FakeDock.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QString kRestored = u"Restored the macOS Dock settings saved before Tarnwick changed them."_s;
const QString kReplayFailed =
    u"Saved settings could not be replayed: The original macOS Dock settings could not be restored. "
    "The recovery file remains available for the next launch."_s;
const QString kReset = u"No saved settings were available. The macOS Dock has been reset to system defaults."_s;
const QString kLocked = u"The macOS Dock preferences could not be changed. Try again after unlocking the Mac."_s;

TEST(RestoreDockTest, SaysWhatItDid) {
  enum Asker { User, Guardian };
  enum File { None, Valid, Invalid };
  enum Then { UsersValues, Defaults, AsBefore };
  const struct {
    const char* name;
    File file;
    QList<bool> answers;
    Asker asker;
    QStringList lines;
    Then then;
    bool fileStays;
  } cases[] = {
      {"saved", Valid, {}, User, {kRestored}, UsersValues, false},
      // Creation fails, the call after it goes through.
      {"second attempt", Valid, {false}, User, {kRestored}, UsersValues, false},
      {"not replayed", Valid, {false, false}, User, {kReplayFailed, kReset}, Defaults, true},
      {"nothing goes", Valid, {false, false, false}, User, {kReplayFailed, kLocked}, Defaults, true},
      {"invalid", Invalid, {}, User, {kRestored}, AsBefore, true},
      {"none", None, {}, User, {kReset}, Defaults, false},
      {"none and locked", None, {false}, User, {kLocked}, Defaults, false},
      {"guardian", Valid, {}, Guardian, {kRestored}, UsersValues, false},
      {"guardian, not replayed", Valid, {false, false}, Guardian, {kReplayFailed}, UsersValues, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const QTemporaryDir folder;
    FakeDock dock(folder.filePath(u"dock.json"_s));
    const QVariantMap changed{{u"autohide"_s, true}, {u"autohide-delay"_s, 1000.0}, {u"tilesize"_s, 48.0}};
    dock.setValues(changed);
    dock.answers = c.answers;
    QFile file(NativeDockState::recoveryFile(folder.path()));
    if (c.file != None) {
      ASSERT_TRUE(file.open(QIODevice::WriteOnly));
      file.write(c.file == Invalid
                     ? QByteArray("nonsense")
                     : PropertyList::encode(QVariantMap{{u"autohide"_s, u"__absent__"_s}, {u"autohide-delay"_s, 0.5}}));
      file.close();
    }
    QStringList lines;
    const FileDescriptor handedOver(::open(QFile::encodeName(file.fileName()).constData(), O_RDONLY | O_CLOEXEC));
    RestoreDock::Terms terms;
    if (c.asker == Guardian) terms.guardedFile = handedOver.number();
    RestoreDock::run(
        folder.path(), dock, [&](const QString& line) { lines << line; }, terms);
    EXPECT_EQ(lines, c.lines);
    const QVariantMap defaults{{u"tilesize"_s, 48.0}};
    const QVariantMap users{{u"autohide-delay"_s, 0.5}, {u"tilesize"_s, 48.0}};
    EXPECT_EQ(dock.values(), c.then == UsersValues ? users : c.then == Defaults ? defaults : changed);
    EXPECT_EQ(file.exists(), c.fileStays);
  }
}

/// The socket of a copy that runs, on a thread of its own as the copy is a process of its own.
class InstanceSocketThread {
 public:
  InstanceSocketThread(const QString& directory, InstanceSocket::Answer answer) {
    worker_.moveToThread(&thread_);
    thread_.start();
    QMetaObject::invokeMethod(
        &worker_,
        [&] {
          socket_ = std::make_unique<InstanceSocket>(directory);
          ASSERT_TRUE(socket_->listen(std::move(answer)));
        },
        Qt::BlockingQueuedConnection);
  }
  ~InstanceSocketThread() {
    QMetaObject::invokeMethod(
        &worker_, [this] { socket_.reset(); }, Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
  }

 private:
  QThread thread_;
  QObject worker_;
  std::unique_ptr<InstanceSocket> socket_;
};

class RepairTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dock.setValues({{u"autohide"_s, true}, {u"autohide-delay"_s, 1000.0}});
    save(0.5);
  }
  void save(double delay) const {
    QFile out(file());
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(PropertyList::encode(QVariantMap{{u"autohide"_s, u"__absent__"_s}, {u"autohide-delay"_s, delay}}));
  }
  QString file() const { return NativeDockState::recoveryFile(folder.path()); }
  QStringList run(const RestoreDock::Terms& terms) {
    QStringList lines;
    RestoreDock::run(
        folder.path(), dock, [&](const QString& line) { lines << line; }, terms);
    return lines;
  }

  QTemporaryDir folder;
  FakeDock dock{folder.filePath(u"dock.json"_s)};
};

TEST_F(RepairTest, TheGuardiansTouchesNoFileButTheOneItWasGiven) {
  const FileDescriptor given(::open(QFile::encodeName(file()).constData(), O_RDONLY | O_CLOEXEC));
  // Another start has given back and hidden the dock again.
  ASSERT_TRUE(QFile::remove(file()));
  save(0.5);
  const QVariantMap before = dock.values();
  run({.guardedFile = given.number()});
  EXPECT_EQ(dock.values(), before);
  EXPECT_TRUE(QFile::exists(file()));
}

TEST_F(RepairTest, OfAUserGivesUpAfterAWhileAndTheGuardiansNever) {
  const FileDescriptor given(::open(QFile::encodeName(file()).constData(), O_RDONLY | O_CLOEXEC));
  const QVariantMap before = dock.values();
  HandoverLock others(folder.path());
  auto held = others.take({});
  EXPECT_EQ(run({.patience = std::chrono::milliseconds(20)}), QStringList{kLocked});
  EXPECT_EQ(dock.values(), before);
  EXPECT_TRUE(QFile::exists(file()));

  const std::unique_ptr<QThread> guardians(
      QThread::create([&] { run({.guardedFile = given.number(), .patience = {}}); }));
  guardians->start();
  held.reset();
  guardians->wait();
  EXPECT_FALSE(QFile::exists(file()));
}

TEST_F(RepairTest, WhatAnotherGaveBackMeanwhileIsNotReset) {
  HandoverLock others(folder.path());
  auto held = others.take({});
  // Found before the wait, gone after it: the other one has given back.
  QStringList lines;
  std::atomic<bool> asks = false;
  InstanceSocketThread door(folder.path(), [&](const QJsonObject&) {
    asks = true;
    return QJsonObject{{u"held"_s, false}};
  });
  const std::unique_ptr<QThread> repair(QThread::create([&] { lines = run({}); }));
  repair->start();
  while (!asks) QThread::yieldCurrentThread();
  dock.setValues({{u"autohide-delay"_s, 0.5}});
  QFile::remove(file());
  held.reset();
  repair->wait();
  EXPECT_EQ(lines, QStringList{kRestored});
  EXPECT_EQ(dock.values(), (QVariantMap{{u"autohide-delay"_s, 0.5}}));
}

TEST_F(RepairTest, IsLeftToACopyThatRunsAndHoldsTheValues) {
  const QVariantMap before = dock.values();
  const struct {
    const char* name;
    QJsonObject answer;
    QStringList lines;
    bool isRepaired;  // Whether the repair went its own way.
  } cases[] = {
      {"given back", {{u"held"_s, true}}, {kRestored}, false},
      {"not given back",
       {{u"held"_s, true}, {u"failure"_s, u"No answer."_s}},
       {u"Saved settings could not be replayed: No answer."_s, kLocked},
       false},
      {"nothing held", {{u"held"_s, false}}, {kRestored}, true},
      {"an older copy", {}, {kRestored}, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    SetUp();
    QJsonObject asked;
    const InstanceSocketThread door(folder.path(), [&](const QJsonObject& request) {
      asked = request;
      return c.answer;
    });
    EXPECT_EQ(run({}), c.lines);
    EXPECT_EQ(asked, (QJsonObject{{u"ask"_s, u"restore-dock"_s}}));
    EXPECT_EQ(QFile::exists(file()), !c.isRepaired);
    EXPECT_EQ(dock.values() != before, c.isRepaired);
  }
}

TEST_F(RepairTest, GoesItsOwnWayWhereTheCopyThatRunsDoesNotAnswer) {
  std::atomic<bool> over = false;
  const InstanceSocketThread door(folder.path(), [&](const QJsonObject&) {
    while (!over) QThread::yieldCurrentThread();
    return QJsonObject{{u"held"_s, true}};
  });
  EXPECT_EQ(run({.answer = std::chrono::milliseconds(20)}), QStringList{kRestored});
  EXPECT_FALSE(QFile::exists(file()));
  over = true;
}

}  // namespace
}  // namespace tarnwick
