#include "app/RestoreDock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cstdio>
#include <thread>

#include "app/InstanceSocket.h"
#include "app/MovedWindows.h"
#include "base/BuildSettings.h"
#include "base/DomainError.h"
#include "base/HandoverLock.h"
#include "config/DataDirectory.h"
#include "dock/NativeDockState.h"
#include "platform/docks/SystemDockPreferences.h"

namespace tarnwick {
namespace {

using namespace std::chrono_literals;
using Say = std::function<void(const QString&)>;

// How often the guardian's repair tries to reach a dock that does not answer.
constexpr auto kFirstPause = 1s;
constexpr auto kLongestPause = 30s;
constexpr auto kLongestRepair = 1h;

struct RestoreWords {
  Q_DECLARE_TR_FUNCTIONS(RestoreDock)
};

QString restored() {
  return RestoreWords::tr(
      QT_TRANSLATE_NOOP("RestoreDock", "Restored the macOS Dock settings saved before Tarnwick changed them."));
}

QString notReplayed(const QString& why) { return RestoreWords::tr("Saved settings could not be replayed: ") + why; }

QString notChanged() {
  return RestoreWords::tr("The macOS Dock preferences could not be changed. Try again after unlocking the Mac.");
}

/// Whether a copy that runs takes care of it; says what it did.
bool leftToTheRunningCopy(const QString& directory, const RestoreDock::Terms& terms, const Say& say) {
  const QJsonObject request{{QStringLiteral("ask"), QLatin1StringView(RestoreDock::kRequest)}};
  const auto answer = InstanceSocket::ask(directory, request, static_cast<int>(terms.answer.count())).answer;
  if (!answer || !answer->value(QLatin1StringView(RestoreDock::kHeld)).toBool()) return false;
  const QJsonValue failure = answer->value(QLatin1StringView(RestoreDock::kFailure));
  if (failure.isUndefined()) {
    say(restored());
  } else {
    // It keeps what it has to give back; unsetting that behind its back would lose it.
    say(notReplayed(failure.toString()));
    say(notChanged());
  }
  return true;
}

enum class Replay { Done, Failed, Unreachable };

/// Says what became of the saved values. Those of a dock that cannot be reached may go back later.
Replay replaySaved(const QString& directory, DockPreferenceAccess& preferences, const NativeDockState::Terms& terms,
                   const Say& say) {
  // Its creation restores; the second call reports a failure of the first.
  NativeDockState state(directory, preferences, NoGuard::shared(), terms);
  try {
    state.restore();
    say(restored());
    return Replay::Done;
  } catch (const std::exception& error) {
    say(notReplayed(QString::fromUtf8(error.what())));
    return state.original() ? Replay::Unreachable : Replay::Failed;
  }
}

/// The descriptor by which the guardian passes on its file; -1 without one. Nobody else has this file open under this
/// number by chance.
int guardedFile(const QString& directory) {
  constexpr int kInheritedDescriptor = STDERR_FILENO + 1;
  struct stat given = {};
  if (::fstat(kInheritedDescriptor, &given) != 0 || !S_ISREG(given.st_mode)) return -1;
  QString name = QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(kInheritedDescriptor));
  // Once it has no name any more there is nothing to give back, which the repair finds out by itself.
  const QLatin1StringView gone(" (deleted)");
  if (name.endsWith(gone)) name.chop(gone.size());
  const QFileInfo file(NativeDockState::recoveryFile(directory));
  return name == QFileInfo(file.path()).canonicalFilePath() + u'/' + file.fileName() ? kInheritedDescriptor : -1;
}

}  // namespace

bool RestoreDock::run(const QString& directory, DockPreferenceAccess& preferences, const Say& say, const Terms& terms) {
  const bool isGuardian = terms.guardedFile >= 0;
  // Before anything is waited for: what others give back meanwhile is given back too.
  const bool wasSaved = QFileInfo::exists(NativeDockState::recoveryFile(directory));
  if (!isGuardian && leftToTheRunningCopy(directory, terms, say)) return true;
  HandoverLock lock(directory);
  std::optional<HandoverLock::Hold> held;
  try {
    held = lock.take(isGuardian ? FileLock::kEndless : terms.patience);
  } catch (const DomainError& failure) {
    say(failure.message());
  }
  if (!held) {
    say(notChanged());
    return true;
  }
  const NativeDockState::Terms repair{.patience = {}, .file = terms.guardedFile, .lock = &lock};
  const Replay replay = wasSaved ? replaySaved(directory, preferences, repair, say) : Replay::Failed;
  if (replay == Replay::Done) return true;
  if (isGuardian) return replay == Replay::Failed;
  if (NativeDockState::resetToSystemDefaults(preferences)) {
    say(RestoreWords::tr("No saved settings were available. The macOS Dock has been reset to system defaults."));
  } else {
    say(notChanged());
  }
  return true;
}

int restoreDockAndExit(int argc, char** argv, const std::optional<QString>& directory) {
  // Asked first, while no number can have been given to anything of our own.
  const int inherited = ::fcntl(STDERR_FILENO + 1, F_GETFD);
  const QCoreApplication application(argc, argv);
  const QString folder = directory.value_or(defaultStorageDirectory(BuildSettings::besideProgram()));
  RestoreDock::Terms terms;
  if (inherited >= 0) terms.guardedFile = guardedFile(folder);
  const auto say = [](const QString& line) { std::printf("%s\n", qUtf8Printable(line)); };
  bool hasWindows = false;  // They do not wait for a dock that hangs.
  const QDeadlineTimer end(kLongestRepair);
  for (auto pause = kFirstPause;; pause = std::min(pause * 2, kLongestPause)) {
    SystemDockPreferences preferences(folder);
    const bool isDone = RestoreDock::run(folder, preferences, say, terms);
    if (!std::exchange(hasWindows, true)) putWindowsBack(folder);
    if (isDone) break;
    // Once the session is over there is no dock any more that could be reached.
    if (end.hasExpired() || !SystemDockPreferences::sessionGoesOn()) break;
    std::this_thread::sleep_for(pause);
  }
  return 0;
}

}  // namespace tarnwick
