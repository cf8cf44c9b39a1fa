#include "app/MovedWindows.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>

#include "base/BuildSettings.h"
#include "base/FileLock.h"
#include "config/DataDirectory.h"
#include "platform/kwin/KWinWindowFrames.h"
#include "platform/linux/ProcessLaunch.h"
#include "platform/x11/X11WindowFrames.h"
#include "windows/WindowKeeper.h"

namespace tarnwick {

std::unique_ptr<WindowFrames> makeWindowFrames() {
  // KWin is there on X11 too, where it is a window manager like others.
  if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && KWinScript::isOffered())
    return std::make_unique<KWinWindowFrames>();
  return std::make_unique<X11WindowFrames>();
}

void putWindowsBack(const QString& directory) {
  using namespace std::chrono_literals;
  if (!QFileInfo::exists(directory + u'/' + WindowReservationJournal::kFileName)) return;
  // A copy that runs has put back what was left when it began, and what it moves is its own.
  {
    // Only asked, and given back at once: a start must not take this for a running copy.
    FileLock instance(directory + QStringLiteral("/tarnwick.lock"));
    if (instance.take() == FileLock::Taking::OthersHave) return;
  }
  WindowReservationJournal journal(directory, 10s);
  const auto frames = makeWindowFrames();
  WindowKeeper keeper(*frames, journal, &processLaunch, QCoreApplication::applicationPid());
  const QString failure = keeper.restore();
  if (!failure.isEmpty()) std::fprintf(stderr, "%s\n", qUtf8Printable(failure));
}

int restoreWindowsAndExit(int argc, char** argv, const std::optional<QString>& directory) {
  const QCoreApplication application(argc, argv);
  putWindowsBack(directory.value_or(defaultStorageDirectory(BuildSettings::besideProgram())));
  return 0;
}

}  // namespace tarnwick
