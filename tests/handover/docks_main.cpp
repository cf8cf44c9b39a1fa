#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <csignal>

#include "desktop/Program.h"
#include "handover/Docks.h"

namespace {

/// The dock extension as a user installs it: its schema is in its own folder.
void installExtension() {
  const QString folder =
      QDir::homePath() + QStringLiteral("/.local/share/gnome-shell/extensions/dash-to-dock@micxgx.gmail.com/schemas");
  QDir().mkpath(folder);
  const QString file = QStringLiteral("/org.gnome.shell.extensions.dash-to-dock.gschema.xml");
  const QString ours = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath() + QStringLiteral("/schemas");
  QFile::copy(ours + file, folder + file);
  tarnwick::testing::output({QStringLiteral("glib-compile-schemas"), folder});
}

}  // namespace

int main(int argc, char** argv) {
  using tarnwick::testing::VirtualDisplay;
  const VirtualDisplay::Options options{.size = {1280, 800}, .compositor = true};
  return VirtualDisplay::run(argc, argv, options, [](int& count, char** arguments) {
    // Services that the bus starts inherit its environment: all of it is set before the bus runs.
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "GSETTINGS_BACKEND"}) {
      qunsetenv(name);
    }
    installExtension();
    const QCoreApplication application(count, arguments);
    const tarnwick::testing::SessionBus bus;
    const int result = RUN_ALL_TESTS();
    // GIO ends a process whose bus goes away by SIGTERM, and the bus goes before this process does.
    ::signal(SIGTERM, SIG_IGN);
    return result;
  });
}
