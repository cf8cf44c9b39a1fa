#include "app/LoginEntry.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include "base/DomainError.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/TestScheduler.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

struct EntryFile {
  EntryFile() : place{u"/opt/tarnwick"_s, folder.filePath(u"autostart/entry.desktop"_s)} {}
  void write(const QByteArray& text) const {
    QDir().mkpath(QFileInfo(place.file).path());
    QFile out(place.file);
    EXPECT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(text);
  }
  /// "none" where there is no file.
  QByteArray text() const {
    QFile in(place.file);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : "none";
  }
  QTemporaryDir folder;
  Autostart place;
};

TEST(Autostart, WritesAnEntryThatStartsThisProgram) {
  EntryFile entry;
  entry.place.set(false);
  EXPECT_FALSE(QFile::exists(entry.folder.filePath(u"autostart"_s)));
  EXPECT_FALSE(entry.place.isOn());
  entry.place.executable = u"/opt/my $dock%/tarnwick"_s;
  entry.place.set(true);
  EXPECT_TRUE(entry.text().contains("\nExec=\"/opt/my \\\\$dock%%/tarnwick\"\n"));
  EXPECT_TRUE(entry.place.isOn());
  const QByteArray written = entry.text();
  entry.place.executable = u"/opt/another build/tarnwick"_s;
  EXPECT_TRUE(entry.place.isOn()) << "another build of the program is the program";
  entry.place.set(true);
  EXPECT_EQ(entry.text(), written);
  entry.place.set(false);
  EXPECT_EQ(entry.text(), "none");
}

TEST(Autostart, LeavesAloneWhatIsNotItsOwn) {
  const QByteArray ours = "[Desktop Entry]\nType=Application\nName=Mine\nExec=tarnwick --toggle\nX-Mine=1\n";
  const QByteArray foreign = "[Desktop Entry]\nType=Application\nName=Dock\nExec=/home/me/start-my-dock\n";
  const QByteArray actions = "[Desktop Action Hidden]\nHidden=true\n";
  const struct {
    const char* what;
    QByteArray text;
    bool isOn;
    bool isOurs;
    QByteArray switchedOn;
    QByteArray switchedOff;
  } cases[] = {
      {"copied by the user", ours, true, true, ours, "none"},
      {"switched off", ours + "Hidden=true\n" + actions, false, true, ours + actions, ours + "Hidden=true\n" + actions},
      {"switched off, in blanks", "[Desktop Entry]\nHidden = true\nExec=tarnwick", false, true,
       "[Desktop Entry]\nExec=tarnwick", "[Desktop Entry]\nHidden = true\nExec=tarnwick"},
      {"switched off, in a capital", ours + "Hidden=True\n", false, true, ours, ours + "Hidden=True\n"},
      {"switched off by another desktop's tool", ours + "X-GNOME-Autostart-enabled=false\n", false, true, ours,
       ours + "X-GNOME-Autostart-enabled=false\n"},
      {"of another program", foreign, false, false, foreign, foreign},
      {"of another program, switched off", foreign + "Hidden=true\n", false, false, foreign + "Hidden=true\n",
       foreign + "Hidden=true\n"},
      {"no entry at all", "\x01\x02", false, false, "\x01\x02", "\x01\x02"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    for (const bool wanted : {true, false}) {
      EntryFile entry;
      entry.write(each.text);
      EXPECT_EQ(entry.place.isOn(), each.isOn);
      EXPECT_EQ(static_cast<bool>(entry.place.capability()), each.isOurs);
      try {
        entry.place.set(wanted);
        EXPECT_TRUE(each.isOurs);
      } catch (const DomainError& failure) {
        EXPECT_FALSE(each.isOurs);
        EXPECT_EQ(failure.message(), entry.place.capability().reason);
      }
      EXPECT_EQ(entry.text().toStdString(), (wanted ? each.switchedOn : each.switchedOff).toStdString());
    }
  }
}

class LoginEntryTest : public ::testing::Test {
 protected:
  LoginEntryTest() {
    store = std::make_unique<AppStore>(desktop.diagnosticSetup());
    login = std::make_unique<LoginEntry>(*store, file.place);
  }
  void flip(bool on) {
    store->edit([on](DockConfiguration& config) { config.launchAtLogin = on; });
    QCoreApplication::sendPostedEvents();
  }
  bool isOn() const { return store->config().launchAtLogin; }

  TestScheduler scheduler;
  NoDesktop desktop{scheduler};
  EntryFile file;
  std::unique_ptr<AppStore> store;
  std::unique_ptr<LoginEntry> login;
};

TEST_F(LoginEntryTest, TheSwitchShowsTheEntryAndAloneWritesIt) {
  const QByteArray users = "[Desktop Entry]\nType=Application\nExec=tarnwick\nX-Mine=1\n";
  file.write(users);
  login->follow();
  EXPECT_TRUE(isOn());
  store->edit([](DockConfiguration& config) { config.scale = 1.5; });
  EXPECT_EQ(file.text(), users);
  flip(false);
  EXPECT_EQ(file.text(), "none");
  flip(true);
  EXPECT_TRUE(file.place.isOn());
  // What the desktop's own tools did is shown when Settings looks.
  QFile::remove(file.place.file);
  login->follow();
  EXPECT_FALSE(isOn());
  EXPECT_EQ(file.text(), "none");
}

TEST_F(LoginEntryTest, ASwitchThatCannotBeKeptGoesBackWithASentence) {
  const QByteArray foreign = "[Desktop Entry]\nType=Application\nExec=other\n";
  file.write(foreign);
  login->follow();
  flip(true);
  EXPECT_EQ(store->error(), login->capability().reason);
  EXPECT_FALSE(store->error().isEmpty());
  EXPECT_FALSE(isOn());
  EXPECT_EQ(file.text(), foreign);
}

TEST_F(LoginEntryTest, NothingIsWrittenBeforeTheEntryWasReadOrOnceTheProgramGoes) {
  flip(true);
  EXPECT_EQ(file.text(), "none");
  login->follow();
  login->stop();
  flip(true);
  EXPECT_EQ(file.text(), "none");
}

}  // namespace
}  // namespace tarnwick::test
