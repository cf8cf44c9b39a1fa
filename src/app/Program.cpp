#include "app/Program.h"

#include <xcb/xcb.h>

#include <QApplication>
#include <QMessageBox>
#include <QTranslator>
#include <cstdio>
#include <cstdlib>

#include "app/Adapters.h"
#include "app/AppDelegate.h"
#include "app/CommandLine.h"
#include "app/FixtureConfig.h"
#include "app/RestoreDock.h"
#include "app/SingleInstance.h"
#include "base/DomainError.h"
#include "config/DataDirectory.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

void say(const QString& sentence) { std::fprintf(stderr, "%s\n", qUtf8Printable(sentence)); }

QStringList argumentsOf(int argc, char** argv) {
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  return arguments;
}

/// The modes that a later version brings. Saying so beats starting a dock that nobody asked for.
int notYet(const CommandLine& line) {
  say(u"This version of Tarnwick does not offer %1 yet."_s.arg(line.argument));
  return 1;
}

/// Variables that are meant for our own toolkit and must be set before the application object is made. Programs that
/// the dock starts get the environment from before.
void prepareToolkit() {
  // Shared-memory pictures cost two more wake-ups for every frame, and a tile is small.
  if (!qEnvironmentVariableIsSet("QT_XCB_NO_MITSHM")) qputenv("QT_XCB_NO_MITSHM", "1");
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "xcb");
}

/// Without a display the toolkit ends the process with a text of its own; a sentence comes first.
bool displayAnswers() {
  if (qgetenv("QT_QPA_PLATFORM") != "xcb") return true;
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool answers = connection && xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return answers;
}

void loadWords(QApplication& application) {
  auto* words = new QTranslator(&application);
  if (words->load(u":/i18n/tarnwick_en.qm"_s)) QCoreApplication::installTranslator(words);
}

/// The toolkit calls exit() when the display goes away; then this is the last chance to keep what was entered.
AppDelegate* running = nullptr;
void saveAtExit() {
  if (running) running->store().save();
}

int runDock(int argc, char** argv, const CommandLine& line) {
  const LaunchEnvironment environment = LaunchEnvironment::ofProcess();
  prepareToolkit();
  if (!displayAnswers()) {
    const QString display = qEnvironmentVariable("DISPLAY");
    say(display.isEmpty() ? u"Tarnwick needs a display, and DISPLAY names none."_s
                          : u"Tarnwick cannot reach the display \"%1\"."_s.arg(display));
    return 1;
  }

  QCoreApplication::setApplicationName(u"tarnwick"_s);
  QCoreApplication::setApplicationVersion(QStringLiteral(TARNWICK_VERSION));
  QGuiApplication::setDesktopFileName(u"com.brindlemoor.Tarnwick"_s);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  QApplication application(argc, argv);
  loadWords(application);

  const ProgramKeys keys = ProgramKeys::besideProgram();
  DataFolderLock lock(QFileInfo(settingsFile(keys)).path());
  SystemScheduler scheduler;
  Adapters adapters(scheduler, environment);
  const auto alert = [](const QString& title, const QString& text) { QMessageBox::warning(nullptr, title, text); };
  if (!SingleInstance::resolve(lock, adapters.session(), QCoreApplication::applicationFilePath(), line, alert)) {
    return 0;
  }

  StoreSetup store = adapters.storeSetup();
  store.keys = keys;
  AppDelegate delegate(std::move(store), adapters.delegateSetup());
  running = &delegate;
  std::atexit(saveAtExit);
  delegate.didFinishLaunching();
  if (line.order && line.order->kind != Order::Kind::Toggle) delegate.perform(*line.order);
  if (!line.files.isEmpty()) delegate.open(line.files);
  const int status = QApplication::exec();
  running = nullptr;
  return status;
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
      case Mode::Run:
        return runDock(argc, argv, line);
      default:
        return notYet(line);
    }
  } catch (const DomainError& failure) {
    say(failure.message());
    return 1;
  }
}

}  // namespace tarnwick
