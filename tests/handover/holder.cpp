// Stands for the program, without a dock of its own:
// handover_holder DIRECTORY LAYOUT hides the system's dock until it is asked to end;
// handover_holder --restore-dock --restore-dock-directory DIRECTORY is the repair.
#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>

#include "app/RestoreDock.h"
#include "dock/NativeDockState.h"
#include "platform/docks/GuardianProcess.h"
#include "platform/docks/SystemDockPreferences.h"

int main(int argc, char** argv) {
  using namespace tarnwick;
  if (argc == 4) return restoreDockAndExit(argc, argv, QString::fromLocal8Bit(argv[3]));
  ::setpgid(0, 0);
  sigset_t ending;
  sigemptyset(&ending);
  sigaddset(&ending, SIGTERM);
  sigprocmask(SIG_BLOCK, &ending, nullptr);
  const QCoreApplication application(argc, argv);
  const QStringList words = QCoreApplication::arguments();
  if (words.size() != 3) return 2;
  SystemDockPreferences preferences(words[1]);
  SystemScheduler scheduler;
  GuardianProcess guardian(QCoreApplication::applicationFilePath(), scheduler);
  NativeDockState state(words[1], preferences, guardian);
  QSocketNotifier notifier(::signalfd(-1, &ending, SFD_CLOEXEC), QSocketNotifier::Read);
  QObject::connect(&notifier, &QSocketNotifier::activated, [&] {
    state.restore();
    QCoreApplication::quit();
  });
  state.apply(fromRawText<DockLayout>(words[2]).value());
  return QCoreApplication::exec();
}
