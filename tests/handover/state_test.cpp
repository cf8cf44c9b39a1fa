#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QTemporaryDir>

#include "base/DomainError.h"
#include "dock/NativeDockState.h"
#include "dock/PropertyList.h"
#include "handover/FakeDock.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kInvalid = "The saved macOS Dock recovery file is invalid. It has been preserved.";
constexpr auto kNotSaved =
    "macOS Dock preferences could not be saved. Recovery data was retained if restoration failed.";
constexpr auto kNotRestored =
    "The original macOS Dock settings could not be restored. The recovery file remains available for the next launch.";

const QList<QVariantMap> kUsers{
    {},
    {{u"autohide-delay"_s, 0.5}},
    {{u"autohide"_s, true}},
    {{u"autohide"_s, false}, {u"autohide-delay"_s, 0.25}, {u"tilesize"_s, 48.0}},
};

class StateTest : public ::testing::Test {
 protected:
  QString file() const { return NativeDockState::recoveryFile(directory()); }
  QString directory() const { return folder.filePath(u"data/Tarnwick"_s); }
  bool hasFile() const { return QFile::exists(file()); }
  QByteArray saved() const {
    QFile in(file());
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
  }
  void save(const QByteArray& bytes) const {
    QDir().mkpath(directory());
    QFile out(file());
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(bytes);
  }
  QStringList takeJournal() { return std::exchange(dock.journal, {}); }

  QTemporaryDir folder;
  FakeDock dock{folder.filePath(u"dock.json"_s)};
};

std::optional<double> delayOf(DockLayout layout) {
  switch (layout) {
    case DockLayout::Swap:
      return 0.0;
    case DockLayout::Replace:
    case DockLayout::ReplaceAutoHide:
      return 1000.0;
    default:
      return std::nullopt;
  }
}

TEST_F(StateTest, EveryChangeOfLayoutLeavesWhatItSaysAndGivesBackWhatWas) {
  for (const QVariantMap& user : kUsers) {
    for (const DockLayout from : kDockLayouts) {
      for (const DockLayout to : kDockLayouts) {
        SCOPED_TRACE(::testing::Message() << rawText(from).data() << " to " << rawText(to).data());
        dock.setValues(user);
        const QByteArray before = dock.bytes();
        NativeDockState state(directory(), dock, dock);
        state.apply(from);
        EXPECT_EQ(hasFile(), delayOf(from).has_value());
        state.apply(to);
        EXPECT_EQ(state.current(), to);
        EXPECT_EQ(hasFile(), delayOf(to).has_value());
        EXPECT_EQ(state.original().has_value(), hasFile());
        if (const auto delay = delayOf(to)) {
          QVariantMap expected = user;
          expected.insert(u"autohide"_s, true);
          expected.insert(u"autohide-delay"_s, *delay);
          EXPECT_EQ(dock.values(), expected);
        } else {
          EXPECT_EQ(dock.bytes(), before);
        }
        takeJournal();
        state.apply(to);
        EXPECT_EQ(dock.journal, QStringList());
        state.restore();
        EXPECT_EQ(dock.bytes(), before);
        EXPECT_FALSE(hasFile());
        EXPECT_EQ(state.current(), delayOf(to) ? std::nullopt : std::optional(to));
      }
    }
  }
}

TEST_F(StateTest, TheStepsComeInTheirOrder) {
  dock.setValues({{u"autohide-delay"_s, 0.5}});
  NativeDockState state(directory(), dock, dock);
  state.apply(DockLayout::Fixed);
  EXPECT_EQ(takeJournal(), QStringList());
  EXPECT_FALSE(QFile::exists(directory()));

  dock.before = [&](const QString& call) { EXPECT_EQ(hasFile(), !call.startsWith(u"read"_s)) << qPrintable(call); };
  state.apply(DockLayout::Swap);
  EXPECT_EQ(takeJournal(),
            QStringList({u"read autohide"_s, u"read autohide-delay"_s, u"watch"_s, u"write autohide true"_s,
                         u"write autohide-delay 0"_s, u"synchronize"_s, u"restart"_s}));
  EXPECT_TRUE(saved().startsWith("bplist"));
  EXPECT_EQ(PropertyList::decode(saved()),
            QVariant(QVariantMap{{u"autohide"_s, u"__absent__"_s}, {u"autohide-delay"_s, 0.5}}));
  struct stat status {};
  ::stat(QFile::encodeName(file()).constData(), &status);
  EXPECT_EQ(status.st_mode & 0777, 0600u);

  // The user's first values are kept, not ours.
  state.apply(DockLayout::Replace);
  EXPECT_EQ(takeJournal(), QStringList({u"watch"_s, u"write autohide true"_s, u"write autohide-delay 1000"_s,
                                        u"synchronize"_s, u"restart"_s}));
  dock.before = [](const QString&) {};
  state.apply(DockLayout::Floating);
  EXPECT_EQ(takeJournal(), QStringList({u"write autohide nothing"_s, u"write autohide-delay 0.5"_s, u"synchronize"_s,
                                        u"release"_s, u"restart"_s}));
}

TEST_F(StateTest, ACopyOfTheValuesThatCannotBeKeptChangesNothing) {
  dock.setValues(kUsers[3]);
  const QByteArray before = dock.bytes();
  NativeDockState state(directory(), dock);
  QFile inTheWay(folder.filePath(u"data"_s));
  ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
  EXPECT_NE(failureOf([&] { state.apply(DockLayout::Swap); }), "");
  EXPECT_EQ(takeJournal(), QStringList({u"read autohide"_s, u"read autohide-delay"_s}));
  inTheWay.remove();

  dock.before = [](const QString& call) {
    if (call == u"read autohide-delay"_s) throw DomainError::invalid(u"No answer."_s);
  };
  EXPECT_EQ(failureOf([&] { state.apply(DockLayout::Swap); }), "No answer.");
  EXPECT_FALSE(hasFile());
  EXPECT_EQ(dock.bytes(), before);
  EXPECT_FALSE(state.original() || state.current());

  dock.before = [](const QString&) {};
  state.apply(DockLayout::Swap);
  EXPECT_EQ(dock.values().value(u"autohide-delay"_s), 0.0);
}

TEST_F(StateTest, AFailureAtAnyCallLosesNothing) {
  // Every call of a change and of giving back fails once; the next attempt goes through.
  for (const QVariantMap& user : kUsers) {
    for (int failing = 0;; ++failing) {
      dock.setValues(user);
      const QByteArray before = dock.bytes();
      NativeDockState state(directory(), dock, dock);
      takeJournal();
      bool failed = false;
      dock.before = [&](const QString&) {
        if (dock.journal.size() != failing || failed) return;
        failed = true;
        throw DomainError::invalid(u"Broken."_s);
      };
      const auto attempt = [&](const std::function<void()>& work) {
        if (failureOf(work).empty()) return;
        EXPECT_TRUE(hasFile() || dock.bytes() == before);
        work();
      };
      attempt([&] { state.apply(DockLayout::Replace); });
      EXPECT_EQ(dock.values().value(u"autohide-delay"_s), 1000.0);
      attempt([&] { state.apply(DockLayout::Fixed); });
      EXPECT_EQ(dock.bytes(), before);
      EXPECT_FALSE(hasFile());
      dock.before = [](const QString&) {};
      if (!failed) break;
    }
  }
}

TEST_F(StateTest, SettingsThatDoNotReachTheDisk) {
  dock.setValues(kUsers[1]);
  const QByteArray before = dock.bytes();
  NativeDockState state(directory(), dock);
  dock.answers = {false};
  EXPECT_EQ(failureOf([&] { state.apply(DockLayout::Swap); }), kNotSaved);
  EXPECT_EQ(dock.bytes(), before);
  EXPECT_FALSE(hasFile() || state.original() || state.current());

  dock.answers = {false, false};
  EXPECT_EQ(failureOf([&] { state.apply(DockLayout::Swap); }), kNotSaved);
  EXPECT_TRUE(hasFile() && state.original());
  EXPECT_FALSE(state.current());

  // Giving back works only at the third attempt; the layout of the moment is kept until then.
  state.apply(DockLayout::Replace);
  dock.answers = {false, false};
  takeJournal();
  EXPECT_EQ(failureOf([&] { state.restore(); }), kNotRestored);
  EXPECT_EQ(failureOf([&] { state.apply(DockLayout::Fixed); }), kNotRestored);
  EXPECT_FALSE(dock.journal.contains(u"restart"_s));
  EXPECT_EQ(state.current(), DockLayout::Replace);
  EXPECT_TRUE(hasFile() && state.original());
  state.restore();
  EXPECT_EQ(dock.bytes(), before);
  EXPECT_FALSE(hasFile());
}

TEST_F(StateTest, AFileThatCannotBeRemovedIsReported) {
  NativeDockState state(directory(), dock);
  state.apply(DockLayout::Replace);
  // A folder of that name: root cannot unlink it either.
  QFile::remove(file());
  QDir().mkpath(file());
  EXPECT_NE(failureOf([&] { state.restore(); }).find("native-dock-recovery.plist"), std::string::npos);
  EXPECT_TRUE(state.original());
  QDir().rmdir(file());
  state.restore();
  EXPECT_FALSE(state.original());
}

TEST_F(StateTest, AStartRepairsWhatTheLastRunLeft) {
  for (const QVariantMap& user : kUsers) {
    QVariantMap record;
    for (const QString& key : {u"autohide"_s, u"autohide-delay"_s}) record[key] = user.value(key, u"__absent__"_s);
    save(PropertyList::encode(record));
    QVariantMap changed = user;
    changed.insert(u"autohide"_s, true);
    changed.insert(u"autohide-delay"_s, 1000.0);
    dock.setValues(changed);

    dock.answers = {false};
    NativeDockState blocked(directory(), dock);
    EXPECT_EQ(blocked.recoveryError().value_or(QString()).toStdString(), kNotRestored);
    EXPECT_EQ(failureOf([&] { blocked.apply(DockLayout::Swap); }), kNotRestored);
    EXPECT_TRUE(hasFile());
    // The menu's order tries again.
    blocked.restore();
    EXPECT_FALSE(blocked.recoveryError());
    blocked.apply(DockLayout::Fixed);

    save(PropertyList::encode(record));
    dock.setValues(changed);
    const NativeDockState state(directory(), dock);
    EXPECT_EQ(dock.values(), user);
    EXPECT_FALSE(state.recoveryError() || state.original() || state.current() || hasFile());
  }
}

TEST_F(StateTest, AFileThatIsNoRecordIsKeptAndBlocks) {
  const QVariant record = true;
  const auto map = [&](const QStringList& keys) {
    QVariantMap values;
    for (const QString& key : keys) values.insert(key, record);
    return PropertyList::encode(values);
  };
  const struct {
    QByteArray bytes;
    const char* sentence;  // Nothing: a sentence of the reader's own.
  } cases[] = {
      {map({u"autohide"_s, u"autohide-delay"_s, u"tilesize"_s}), kInvalid},
      {map({u"autohide"_s}), kInvalid},
      {map({u"autohide"_s, u"Autohide-delay"_s}), kInvalid},
      {map({}), kInvalid},
      {PropertyList::encode(QVariantList{u"autohide"_s, u"autohide-delay"_s}), kInvalid},
      {PropertyList::encode(u"autohide"_s), kInvalid},
      {"", nullptr},
      {"bplist00", nullptr},
      {map({u"autohide"_s, u"autohide-delay"_s}).chopped(12), nullptr},
      {"{\"autohide\": true}", nullptr},
      // Keys with a null in them, and of nulls alone.
      {map({u"autohide"_s, u"autohide-delayX"_s}).replace("delayX", QByteArray("delay\0", 6)), kInvalid},
      {map({u"autohide"_s, u"autohide-delay"_s}).replace("autohide-delay", QByteArray(14, '\0')), kInvalid},
      {map({u"autohide"_s, u"autohide-delay"_s, u"more"_s}).replace("more", QByteArray(4, '\0')), kInvalid},
  };
  for (const auto& [bytes, sentence] : cases) {
    SCOPED_TRACE(bytes.toPercentEncoding().constData());
    save(bytes);
    NativeDockState state(directory(), dock, dock);
    ASSERT_TRUE(state.recoveryError());
    EXPECT_EQ(state.recoveryError()->toStdString(), sentence ? sentence : state.recoveryError()->toStdString());
    EXPECT_FALSE(state.recoveryError()->isEmpty());
    for (const DockLayout layout : kDockLayouts) {
      EXPECT_EQ(failureOf([&] { state.apply(layout); }), state.recoveryError()->toStdString());
    }
    state.restore();
    EXPECT_TRUE(state.recoveryError());
    EXPECT_EQ(saved(), bytes);
    EXPECT_EQ(dock.journal, QStringList());
  }
}

TEST_F(StateTest, ADockThatComesUpLaterIsHiddenToo) {
  dock.canHide = false;
  NativeDockState state(directory(), dock);
  int calls = 0;
  state.setNeedsApply([&] { ++calls; });
  state.apply(DockLayout::Fixed);
  EXPECT_FALSE(state.takeNotice());
  dock.appear();
  EXPECT_EQ(calls, 0);

  state.apply(DockLayout::Swap);
  EXPECT_EQ(state.takeNotice(), u"No dock."_s);
  state.apply(DockLayout::Replace);
  EXPECT_EQ(state.takeNotice(), u"No dock."_s) << "another wish";
  dock.appear();
  EXPECT_EQ(calls, 1);
  EXPECT_FALSE(state.current() || hasFile());
  state.apply(DockLayout::Replace);
  EXPECT_FALSE(state.takeNotice()) << "said already";

  // What cannot be given back is reported by the next attempt; the new dock is part of the record that follows.
  dock.answers = {false, false};
  dock.appear();
  EXPECT_EQ(calls, 2);
  EXPECT_TRUE(hasFile() && !state.current());
  EXPECT_EQ(failureOf([&] { state.apply(DockLayout::Replace); }), kNotRestored);
  takeJournal();
  state.apply(DockLayout::Replace);
  EXPECT_TRUE(dock.journal.contains(u"read autohide"_s));
  EXPECT_EQ(state.current(), DockLayout::Replace);
}

TEST_F(StateTest, WaitsForOthersThatAreAtIt) {
  dock.setValues(kUsers[1]);
  QDir().mkpath(directory());
  HandoverLock others(directory());
  const auto busy = [&] { return others.take({}); };
  const std::string said = "Another process is restoring the system dock right now.";
  const NativeDockState::Terms atOnce{.patience = {}};

  auto held = busy();
  NativeDockState state(directory(), dock, dock, atOnce);
  EXPECT_EQ(state.recoveryError().value_or(QString()).toStdString(), said);
  EXPECT_TRUE(state.othersAreAtIt());
  EXPECT_EQ(failureOf([&] { state.apply(DockLayout::Replace); }), said);
  // What an earlier run left is found once they are done.
  save(PropertyList::encode(QVariantMap{{u"autohide"_s, u"__absent__"_s}, {u"autohide-delay"_s, 0.75}}));
  EXPECT_EQ(dock.journal, QStringList());
  held.reset();
  state.apply(DockLayout::Fixed);
  EXPECT_FALSE(hasFile() || state.recoveryError() || state.othersAreAtIt());
  EXPECT_EQ(dock.values(), (QVariantMap{{u"autohide-delay"_s, 0.75}}));

  takeJournal();
  held = busy();
  EXPECT_EQ(failureOf([&] { state.apply(DockLayout::Replace); }), said);
  EXPECT_TRUE(state.othersAreAtIt());
  EXPECT_EQ(dock.journal, QStringList());
  held.reset();
  state.apply(DockLayout::Replace);
  held = busy();
  EXPECT_EQ(failureOf([&] { state.restore(); }), said);
  EXPECT_EQ(failureOf([&] { state.apply(DockLayout::Swap); }), said);
  EXPECT_TRUE(hasFile());
  held.reset();
  state.restore();
  EXPECT_FALSE(hasFile());
}

TEST_F(StateTest, HoldsTheLockFromTheFirstReadToTheLastWrite) {
  HandoverLock others(directory());
  bool free = false;
  dock.before = [&](const QString&) { free = free || others.take({}); };
  NativeDockState state(directory(), dock, dock);
  state.apply(DockLayout::Swap);
  state.apply(DockLayout::Replace);
  state.restore();
  EXPECT_FALSE(free);
  EXPECT_TRUE(others.take({}));
}

TEST_F(StateTest, SomethingElseUnderTheLocksNameStopsEverything) {
  QDir().mkpath(directory());
  QFile::link(folder.filePath(u"elsewhere"_s), directory() + u"/native-dock-recovery.lock"_s);
  NativeDockState state(directory(), dock);
  EXPECT_NE(failureOf([&] { state.apply(DockLayout::Swap); }).find("native-dock-recovery.lock"), std::string::npos);
  EXPECT_EQ(dock.journal, QStringList());
  EXPECT_FALSE(QFile::exists(folder.filePath(u"elsewhere"_s)));
}

TEST_F(StateTest, OnlyTheFileThatWasReplayedGoes) {
  for (const QByteArray& content : {QByteArray("another"), QByteArray()}) {
    SCOPED_TRACE(content.constData());
    dock.setValues(kUsers[1]);
    NativeDockState state(directory(), dock);
    state.apply(DockLayout::Replace);
    const QByteArray ours = saved();
    // Kept under another name, so that the new one cannot get its number.
    const QString old = folder.filePath(u"old"_s);
    QFile::remove(old);
    ASSERT_TRUE(QFile::rename(file(), old));
    save(content.isEmpty() ? ours : content);
    state.restore();
    EXPECT_EQ(dock.values(), kUsers[1]);
    EXPECT_EQ(saved(), content.isEmpty() ? ours : content);
    QFile::remove(file());
  }
}

TEST_F(StateTest, TheUsersValuesAreOnTheDiskBeforeAChangeWhateverBecameOfTheFile) {
  enum Became { Removed, GivenBack, OfAnother };
  for (const Became became : {Removed, GivenBack, OfAnother}) {
    SCOPED_TRACE(became);
    dock.setValues(kUsers[1]);
    NativeDockState state(directory(), dock, dock);
    state.apply(DockLayout::Replace);
    switch (became) {
      case Removed:
        QFile::remove(file());
        break;
      case GivenBack: {
        const NativeDockState repair(directory(), dock);
        ASSERT_FALSE(hasFile());
        break;
      }
      case OfAnother:
        QFile::remove(file());
        save(PropertyList::encode(QVariantMap{{u"autohide"_s, u"__absent__"_s}, {u"autohide-delay"_s, 0.5}}));
        break;
    }
    dock.before = [&](const QString& call) {
      // Ours are written only while the user's are in the file.
      if (!call.startsWith(u"write autohide true"_s)) return;
      ASSERT_TRUE(hasFile());
      EXPECT_EQ(PropertyList::decode(saved()),
                QVariant(QVariantMap{{u"autohide"_s, u"__absent__"_s}, {u"autohide-delay"_s, 0.5}}));
    };
    takeJournal();
    state.apply(DockLayout::Swap);
    EXPECT_TRUE(dock.journal.contains(u"watch"_s));
    EXPECT_EQ(dock.values().value(u"autohide-delay"_s), 0.0);
    dock.before = [](const QString&) {};
    EXPECT_TRUE(hasFile());
    state.restore();
    EXPECT_EQ(dock.values(), kUsers[1]);
    EXPECT_FALSE(hasFile());
  }
}

TEST_F(StateTest, WhoAskedForItBackKeepsItUntilTheLayoutChanges) {
  dock.setValues(kUsers[1]);
  NativeDockState state(directory(), dock);
  state.apply(DockLayout::Replace);
  state.restoreUntilChanged(DockLayout::Replace);
  EXPECT_EQ(dock.values(), kUsers[1]);
  takeJournal();
  state.apply(DockLayout::Replace);
  dock.appear();
  state.apply(DockLayout::Replace);
  EXPECT_EQ(dock.journal, QStringList());
  state.apply(DockLayout::Fixed);
  state.apply(DockLayout::Replace);
  EXPECT_EQ(dock.values().value(u"autohide-delay"_s), 1000.0);
  state.restoreUntilChanged(DockLayout::Replace);
  state.apply(DockLayout::Swap);
  EXPECT_EQ(dock.values().value(u"autohide-delay"_s), 0.0);
  // The menu's order holds only until the next attempt.
  state.restore();
  state.apply(DockLayout::Swap);
  EXPECT_TRUE(hasFile());
}

TEST_F(StateTest, AValueThatIsNoWholeRecordOfTheDocksIsRefused) {
  save(PropertyList::encode(QVariantMap{{u"autohide"_s, true}, {u"autohide-delay"_s, 0.5}}));
  const QByteArray before = saved();
  dock.refuses = u"autohide-delay"_s;
  const NativeDockState state(directory(), dock);
  EXPECT_EQ(state.recoveryError().value_or(QString()).toStdString(), kInvalid);
  EXPECT_EQ(saved(), before);
  EXPECT_EQ(dock.journal, QStringList());
}

}  // namespace
}  // namespace tarnwick
