// Displays that end under the real executable, each in the ways that displays end. On Wayland the toolkit ends the
// process there and then. What was entered must be there at the next start all the same.
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <signal.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <chrono>
#include <ostream>

#include "config/Persistence.h"
#include "desktop/Program.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/HeadlessKWin.h"
#include "support/HeadlessSway.h"
#include "support/TestScheduler.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

enum class Key { Return, N, O, T, E };

/// A display of the test's own with a keyboard.
class EndingDesk {
 public:
  virtual ~EndingDesk() = default;
  virtual void tap(Key key) = 0;
  virtual void end(const QString& way) = 0;
};

class EndingX11 final : public EndingDesk {
 public:
  void tap(Key key) override {
    static const QStringList names{u"Return"_s, u"n"_s, u"o"_s, u"t"_s, u"e"_s};
    display_.execute({u"xdotool"_s, u"key"_s, names[static_cast<int>(key)]});
  }
  void end(const QString&) override { display_.killServer(); }

 private:
  VirtualDisplay display_{{.size = {1280, 800}}};
  SessionBus bus_;
};

class EndingSway final : public EndingDesk {
 public:
  void tap(Key key) override {
    static const QStringList names{u"Return"_s, u"n"_s, u"o"_s, u"t"_s, u"e"_s};
    sway_.type({u"-k"_s, names[static_cast<int>(key)]});
  }
  void end(const QString& way) override {
    if (way == u"exit"_s) {
      sway_.order(u"exit"_s);
    } else {
      sway_.signal(way == u"SIGTERM"_s ? SIGTERM : SIGKILL);
    }
  }

 private:
  HeadlessSway sway_{HeadlessSway::Kind::Plain};
  SessionBus bus_;
};

/// KWin speaks on the session's bus, so that comes first.
struct Session {
  Session() {
    for (const char* name : {"HOME", "XDG_RUNTIME_DIR"}) qputenv(name, folder.path().toLocal8Bit());
    bus.emplace();
  }
  QTemporaryDir folder;
  std::optional<SessionBus> bus;
};

class EndingKWin final : public EndingDesk {
 public:
  void tap(Key key) override {
    constexpr std::uint32_t codes[] = {KEY_ENTER, KEY_N, KEY_O, KEY_T, KEY_E};
    kwin_.tap(codes[static_cast<int>(key)]);
  }
  void end(const QString&) override { kwin_.kill(); }

 private:
  Session session_;
  HeadlessKWin kwin_;
};

std::unique_ptr<EndingDesk> makeDesk(const QString& system) {
  if (system == u"X11"_s) return std::make_unique<EndingX11>();
  if (system == u"KWin"_s) return std::make_unique<EndingKWin>();
  return std::make_unique<EndingSway>();
}

struct End {
  const char* name;
  const char* system;
  const char* way;
};
void PrintTo(const End& end, std::ostream* to) { *to << end.name; }

class Ends : public ::testing::TestWithParam<End> {
 protected:
  QString home() const { return folder.path(); }
  QString file() const { return home() + u"/Tarnwick/config.json"_s; }
  static QString textOf(const DockConfiguration& config) {
    return config.profiles.first().widgets.first().options.value(u"text"_s);
  }
  QString savedText() const { return textOf(Persistence::read(file())); }
  /// As the next start finds it.
  QString textAtTheNextStart() const {
    test::TestScheduler time;
    NoDesktop desktop(time);
    StoreSetup setup = desktop.storeSetup();
    setup.storage = file();
    return textOf(AppStore(std::move(setup)).config());
  }
  /// For as long as the promise is about.
  static void let(std::chrono::milliseconds time) {
    const QDeadlineTimer end(time);
    VirtualDisplay::waitUntil([&] { return end.hasExpired(); });
  }
  /// Opens the panel of the only tile and types until a letter has been saved: the first of a note that rests is saved
  /// at once, with its mark of when it was changed.
  static bool writeInto(EndingDesk& desk, const QString& home, const std::function<QString()>& saved) {
    for (int attempt = 0; attempt < 20 && saved().isEmpty(); ++attempt) {
      if (runToEnd(home, {u"--focus"_s}).status != 0) continue;
      desk.tap(Key::Return);
      for (int letter = 0; letter < 5 && saved().isEmpty(); ++letter) {
        let(400ms);
        desk.tap(Key::N);
        let(400ms);
      }
    }
    return !saved().isEmpty();
  }

  QTemporaryDir folder;
};

TEST_P(Ends, KeepWhatWasTypedAMomentAgo) {
  DockConfiguration config;
  config.onboardingComplete = true;
  config.profiles[0].widgets.resize(1);
  config.profiles[0].widgets[0].kind = u"scratchNote"_s;
  Persistence::save(config, file());
  const auto desk = makeDesk(QString::fromLatin1(GetParam().system));
  Program program(home());
  // Before it answers there, an order would begin a program of its own.
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return QFile::exists(home() + u"/Tarnwick/tarnwick.socket"_s); }))
      << qPrintable(program.standardError());
  ASSERT_TRUE(writeInto(*desk, home(), [this] { return savedText(); })) << qPrintable(program.standardError());

  for (const Key key : {Key::N, Key::O, Key::T, Key::E}) desk->tap(key);
  let(1500ms);
  ASSERT_FALSE(savedText().endsWith(u"note"_s)) << "it waits for its ten seconds, or this shows nothing";
  desk->end(QString::fromLatin1(GetParam().way));
  program.end();
  EXPECT_FALSE(program.isRunning());
  EXPECT_TRUE(textAtTheNextStart().endsWith(u"note"_s)) << qPrintable(textAtTheNextStart());
}

INSTANTIATE_TEST_SUITE_P(OfDisplays, Ends,
                         ::testing::Values(End{"XServerKilled", "X11", "SIGKILL"}, End{"SwayKilled", "Sway", "SIGKILL"},
                                           End{"SwayTerminated", "Sway", "SIGTERM"}, End{"SwayExits", "Sway", "exit"},
                                           End{"KWinKilled", "KWin", "SIGKILL"}),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace tarnwick::testing

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  const QCoreApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
