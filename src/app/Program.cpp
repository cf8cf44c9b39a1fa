#include "app/Program.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "app/Adapters.h"
#include "app/AppDelegate.h"
#include "app/CommandLine.h"
#include "app/FixtureConfig.h"
#include "app/MovedWindows.h"
#include "app/Orders.h"
#include "app/RestoreDock.h"
#include "app/SingleInstance.h"
#include "app/SnapshotMode.h"
#include "app/WindowSystem.h"
#include "app/Words.h"
#include "apps/InstalledApps.h"
#include "base/DesktopId.h"
#include "base/DomainError.h"
#include "claudehook/Hook.h"
#include "commandbar/CommandBarLatency.h"
#include "config/DataDirectory.h"
#include "config/Persistence.h"
#include "platform/dbus/DBusSessionApplication.h"
#include "platform/net/LoadedTransport.h"
#include "services/NetworkDiagnose.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

void say(const QString& sentence) { std::fprintf(stderr, "%s\n", qUtf8Printable(sentence)); }

QStringList argumentsOf(int argc, char** argv) {
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  return arguments;
}

int print(const QString& text) {
  std::fputs(qUtf8Printable(text), stdout);
  return 0;
}

/// The modes that a later version brings. Saying so is better than starting a dock that was not asked for.
int notYet(const CommandLine& line) {
  say(u"This version of Tarnwick does not offer %1 yet."_s.arg(line.argument));
  return 1;
}

int measureCommandBar(int argc, char** argv, const CommandLine& line) {
  QCoreApplication application(argc, argv);
  loadWords(application);
  const auto clock = [] {
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
  };
  return CommandBarLatency::run(InstalledApps::enumerate(AppEnvironment::ofProcess()),
                                line.iterations.value_or(CommandBarLatency::kIterations),
                                {.clock = clock, .print = print});
}

int diagnoseNetwork(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  loadWords(application);
  SystemScheduler scheduler;
  const auto transport = std::make_shared<LoadedTransport>(NetworkSetup{&scheduler, {}});
  return NetworkDiagnose::run(transport, BaseAddresses::shipped(), print);
}

/// The toolkit calls exit() when the display goes away; then this is the last chance to keep what was entered and to
/// give back what was borrowed.
class LastChance {
 public:
  explicit LastChance(AppDelegate& delegate) {
    // What saving needs of static data must be made before the handler is known, or it is gone before the handler runs.
    Persistence::encode(DockConfiguration());
    running = &delegate;
    std::atexit([] {
      if (running) running->willTerminateWithoutDisplay();
    });
  }
  ~LastChance() { running = nullptr; }
  LastChance(const LastChance&) = delete;
  LastChance& operator=(const LastChance&) = delete;

 private:
  static inline AppDelegate* running = nullptr;
};

/// What is settled before anything is made that needs a display.
struct Start {
  BuildSettings build;
  std::unique_ptr<DataFolderLock> lock;
  QStringList urls;
  QStringList missing;        ///< Sentences about files that are not there.
  std::optional<int> status;  ///< To end with, when another copy runs.
  bool replaces = false;      ///< Another copy ran, and has ended.
  QString obstacle;           ///< Why there can be no window; found while the user's translations are loaded.
  QString alertTitle;
  QString alertText;
};

void resolve(Start& start, const CommandLine& line) {
  // The shared connection belongs to the application object that may come next, so this one is of its own.
  DBusSessionApplication session(u"hand-over"_s);
  const auto alert = [&](const QString& title, const QString& text) {
    start.alertTitle = title;
    start.alertText = text;
  };
  start.status = SingleInstance::resolve(*start.lock, session, QCoreApplication::applicationFilePath(), line,
                                         {.say = say, .alert = alert});
  start.replaces = !start.status;
}

Start begin(int argc, char** argv, const CommandLine& line) {
  QCoreApplication application(argc, argv);
  loadWords(application);
  Start start;
  start.build = BuildSettings::besideProgram();
  start.urls = SingleInstance::urls(line.files, QDir::currentPath());
  start.missing = SingleInstance::missing(line.files, QDir::currentPath());
  start.lock = std::make_unique<DataFolderLock>(QFileInfo(settingsFile(start.build)).path());
  if (start.lock->take() != DataFolderLock::Taking::Held) resolve(start, line);
  start.obstacle = WindowSystem::obstacle();
  return start;
}

int end(int argc, char** argv, const Start& start) {
  if (start.alertText.isEmpty()) return *start.status;
  if (!start.obstacle.isEmpty()) {
    say(start.alertText);
    return *start.status;
  }
  const QApplication application(argc, argv);
  QMessageBox::warning(nullptr, start.alertTitle, start.alertText);
  return WindowSystem::end(*start.status);
}

int runUntilQuit(const Start& start, const CommandLine& line, const LaunchEnvironment& environment) {
  SystemScheduler scheduler;
  Adapters adapters(scheduler, environment, QFileInfo(settingsFile(start.build)).path());
  StoreSetup store = adapters.storeSetup();
  store.build = start.build;
  DelegateSetup setup = adapters.delegateSetup();
  setup.replaces = start.replaces;
  AppDelegate delegate(std::move(store), adapters.services(), std::move(setup));
  const LastChance lastChance(delegate);
  delegate.didFinishLaunching();
  // Behind the dock's own coming up, which waits for the event loop as well.
  const auto orders = [&] {
    // A user who toggles a dock that does not run wants to see it.
    if (line.order && line.order->kind == Order::Kind::Toggle)
      delegate.dock().show();
    else if (line.order)
      delegate.orders().perform(*line.order);
    if (!start.urls.isEmpty()) delegate.orders().open(start.urls);
    if (!start.missing.isEmpty()) delegate.store().setError(start.missing.last());
  };
  QMetaObject::invokeMethod(&delegate, orders, Qt::QueuedConnection);
  return QApplication::exec();
}

int runDock(int argc, char** argv, const CommandLine& line) {
  for (const QString& remark : line.remarks) say(remark);
  const LaunchEnvironment environment = LaunchEnvironment::ofProcess();
  WindowSystem::prepare();
  QCoreApplication::setApplicationName(u"tarnwick"_s);
  QCoreApplication::setApplicationVersion(QStringLiteral(TARNWICK_VERSION));
  const Start start = begin(argc, argv, line);
  if (start.status) return end(argc, argv, start);
  if (!start.obstacle.isEmpty()) {
    say(start.obstacle);
    return 1;
  }

  QGuiApplication::setDesktopFileName(kDesktopId);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  QApplication application(argc, argv);
  loadWords(application);
  return WindowSystem::end(runUntilQuit(start, line, environment));
}

}  // namespace

int runProgram(int argc, char** argv) {
  const CommandLine line = CommandLine::parse(argumentsOf(argc, argv));
  try {
    switch (line.mode) {
      case Mode::WriteFixtureConfig:
        return writeFixtureConfig(line.path);
      case Mode::RestoreDock:
        return restoreDockAndExit(argc, argv, line.directory);
      case Mode::RestoreWindows:
        return restoreWindowsAndExit(argc, argv, line.directory);
      case Mode::Snapshot:
        return runSnapshot(argumentsOf(argc, argv));
      case Mode::ClaudeHook:
        runClaudeHook(argc, argv);
        return 0;
      case Mode::NetworkDiagnose:
        return diagnoseNetwork(argc, argv);
      case Mode::CommandBarLatency:
        return measureCommandBar(argc, argv, line);
      case Mode::Help:
        return print(CommandLine::help());
      case Mode::Version:
        return print(u"tarnwick %1\n"_s.arg(QStringLiteral(TARNWICK_VERSION)));
      case Mode::Run:
        return runDock(argc, argv, line);
      default:
        return notYet(line);
    }
  } catch (const DomainError& failure) {
    say(failure.message());
  } catch (const std::exception& failure) {
    say(u"Tarnwick had to end: %1"_s.arg(QString::fromLocal8Bit(failure.what())));
  } catch (...) {
    say(u"Tarnwick had to end for an unknown reason."_s);
  }
  return 1;
}

}  // namespace tarnwick
