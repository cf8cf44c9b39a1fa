#include "app/RestoreDock.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>

#include "base/ProgramKeys.h"
#include "config/DataDirectory.h"
#include "dock/NativeDockState.h"
#include "platform/docks/SystemDockPreferences.h"

namespace tarnwick {
namespace {

QString words(const char* sentence) { return QCoreApplication::translate("RestoreDock", sentence); }

/// Whether saved values were put back; says what became of them.
bool replaySaved(const QString& directory, DockPreferenceAccess& preferences,
                 const std::function<void(const QString&)>& say) {
  try {
    // Its creation restores; the second call reports a failure of the first.
    NativeDockState state(directory, preferences);
    state.restore();
    say(words(
        QT_TRANSLATE_NOOP("RestoreDock", "Restored the macOS Dock settings saved before Tarnwick changed them.")));
    return true;
  } catch (const std::exception& error) {
    say(words(QT_TRANSLATE_NOOP("RestoreDock", "Saved settings could not be replayed: ")) +
        QString::fromUtf8(error.what()));
    return false;
  }
}

}  // namespace

void RestoreDock::run(const QString& directory, DockPreferenceAccess& preferences,
                      const std::function<void(const QString&)>& say, Asker asker) {
  const QFileInfo saved(NativeDockState::recoveryFile(directory));
  if (saved.exists() && replaySaved(directory, preferences, say)) return;
  if (asker == Asker::Guardian) return;
  if (NativeDockState::resetToSystemDefaults(preferences)) {
    say(words(QT_TRANSLATE_NOOP(
        "RestoreDock", "No saved settings were available. The macOS Dock has been reset to system defaults.")));
  } else {
    say(words(QT_TRANSLATE_NOOP(
        "RestoreDock", "The macOS Dock preferences could not be changed. Try again after unlocking the Mac.")));
  }
}

int restoreDockAndExit(int argc, char** argv, const std::optional<QString>& directory) {
  const QCoreApplication application(argc, argv);
  const QString folder = directory.value_or(defaultStorageDirectory(ProgramKeys::besideProgram()));
  const bool guardian = qEnvironmentVariableIsSet("TARNWICK_RESTORE_SAVED_ONLY");
  SystemDockPreferences preferences(folder);
  RestoreDock::run(
      folder, preferences, [](const QString& line) { std::printf("%s\n", qUtf8Printable(line)); },
      guardian ? RestoreDock::Asker::Guardian : RestoreDock::Asker::User);
  return 0;
}

}  // namespace tarnwick
