#include "app/RestoreDock.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

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
  using Asker = RestoreDock::Asker;
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
      {"saved", Valid, {}, Asker::User, {kRestored}, UsersValues, false},
      // Creation fails, the call after it goes through.
      {"second attempt", Valid, {false}, Asker::User, {kRestored}, UsersValues, false},
      {"not replayed", Valid, {false, false}, Asker::User, {kReplayFailed, kReset}, Defaults, true},
      {"nothing goes", Valid, {false, false, false}, Asker::User, {kReplayFailed, kLocked}, Defaults, true},
      {"invalid", Invalid, {}, Asker::User, {kRestored}, AsBefore, true},
      {"none", None, {}, Asker::User, {kReset}, Defaults, false},
      {"none and locked", None, {false}, Asker::User, {kLocked}, Defaults, false},
      {"guardian", Valid, {}, Asker::Guardian, {kRestored}, UsersValues, false},
      {"guardian, not replayed", Valid, {false, false}, Asker::Guardian, {kReplayFailed}, UsersValues, true},
      {"guardian, none", None, {}, Asker::Guardian, {}, AsBefore, false},
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
    RestoreDock::run(
        folder.path(), dock, [&](const QString& line) { lines << line; }, c.asker);
    EXPECT_EQ(lines, c.lines);
    const QVariantMap defaults{{u"tilesize"_s, 48.0}};
    const QVariantMap users{{u"autohide-delay"_s, 0.5}, {u"tilesize"_s, 48.0}};
    EXPECT_EQ(dock.values(), c.then == UsersValues ? users : c.then == Defaults ? defaults : changed);
    EXPECT_EQ(file.exists(), c.fileStays);
  }
}

}  // namespace
}  // namespace tarnwick
