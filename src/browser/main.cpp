#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QFile>
#include <QSocketNotifier>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "browser/PageReading.h"
#include "browser/Sandbox.h"
#include "browser/SignInWindow.h"

// tarnwick-browser read HOME FOLDER
// tarnwick-browser sign-in HOME FOLDER TITLE
//
// Started by the dock, which holds the other end of its standard input: it ends when that is closed. A text that was
// read is all that it ever writes on its standard output.

namespace tarnwick {
namespace {

/// What would take the sandbox off, open a door for debugging or load a program of somebody else's.
void closeDoors() {
  for (const char* name :
       {"QTWEBENGINE_DISABLE_SANDBOX", "QTWEBENGINE_CHROMIUM_FLAGS", "QTWEBENGINE_REMOTE_DEBUGGING",
        "QTWEBENGINEPROCESS_PATH", "QTWEBENGINE_RESOURCES_PATH", "QTWEBENGINE_LOCALES_PATH", "SSLKEYLOGFILE"})
    ::unsetenv(name);
  ::umask(077);
}

/// Keeps standard output for the text: what libraries print goes to standard error.
int takeOutput() {
  const int output = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  ::dup2(STDERR_FILENO, STDOUT_FILENO);
  return output;
}

bool writeAll(int output, const QByteArray& text) {
  for (qsizetype done = 0; done < text.size();) {
    const ssize_t count = ::write(output, text.constData() + done, static_cast<size_t>(text.size() - done));
    if (count <= 0) return false;
    done += count;
  }
  return true;
}

void leaveWith(BrowserExit exit) { QCoreApplication::exit(static_cast<int>(exit)); }

int run(int argc, char** argv) {
  if (argc < 4) return static_cast<int>(BrowserExit::Unanswered);
  if (!isSandboxAvailable()) return static_cast<int>(BrowserExit::Unsafe);
  closeDoors();
  const int output = takeOutput();
  // The engine takes arguments of its own from the application's: it gets none.
  int one = 1;
  std::array<char*, 2> none{argv[0], nullptr};
  const bool isReading = qstrcmp(argv[1], "read") == 0;
  if (isReading) ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  QApplication application(one, none.data());
  QGuiApplication::setDesktopFileName(QStringLiteral("com.brindlemoor.Tarnwick"));

  const QUrl home = QUrl::fromEncoded(argv[2], QUrl::StrictMode);
  const auto profile = makeServiceProfile(QFile::decodeName(argv[3]));
  QSocketNotifier line(STDIN_FILENO, QSocketNotifier::Read);
  QObject::connect(&line, &QSocketNotifier::activated, &application, [&line] {
    char byte = 0;
    if (::read(STDIN_FILENO, &byte, 1) > 0) return;
    line.setEnabled(false);
    leaveWith(BrowserExit::Unanswered);
  });
  if (!isReading) {
    SignInWindow window(home, argc > 4 ? QString::fromUtf8(argv[4]) : home.host(), *profile);
    window.show();
    return QApplication::exec();
  }
  PageReading reading(home, *profile, [output](BrowserExit exit, const QString& text) {
    const bool isWritten = exit != BrowserExit::Answered || writeAll(output, text.toUtf8());
    leaveWith(isWritten ? exit : BrowserExit::Unanswered);
  });
  reading.start();
  return QApplication::exec();
}

}  // namespace
}  // namespace tarnwick

int main(int argc, char** argv) { return tarnwick::run(argc, argv); }
