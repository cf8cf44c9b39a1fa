#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

#include "apps/AppEnvironment.h"

namespace tarnwick::test {

using namespace Qt::StringLiterals;

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

/// Runs the event loop until `done` holds, looking whenever `sender` emits. False when that takes far too long.
template <class Sender, class Signal>
bool waitFor(Sender* sender, Signal signal, const std::function<bool()>& done) {
  if (done()) return true;
  QEventLoop loop;
  bool late = false;
  QObject::connect(sender, signal, &loop, [&] {
    if (done()) loop.quit();
  });
  QTimer::singleShot(30000, &loop, [&] {
    late = true;
    loop.quit();
  });
  loop.exec();
  return !late;
}

inline void write(const QString& path, const QString& text) {
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path + ".part"_L1);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
  file.write(text.toUtf8());
  file.close();
  QFile::remove(path);
  ASSERT_TRUE(file.rename(path)) << path.toStdString();
}

inline QString application(const QString& name, const QString& exec, const QString& more = {}) {
  return "[Desktop Entry]\nType=Application\nName=%1\nExec=%2\n%3"_L1.arg(name, exec, more);
}

/// A home with two levels of data folders below a folder that vanishes with the test.
class AppsTest : public testing::Test {
 protected:
  AppsTest() {
    environment.home = root(u"home"_s);
    environment.dataHome = root(u"data"_s);
    environment.dataFolders = QStringList{root(u"system"_s)};
    environment.configHome = root(u"config"_s);
    environment.configFolders = QStringList{root(u"etc"_s)};
    environment.executableFolders = QStringList{root(u"bin"_s)};
    environment.desktops = QStringList{u"Lab"_s, u"GNOME"_s};
    QDir().mkpath(environment.home);
  }

  QString root(const QString& below) const { return folder.path() + u'/' + below; }
  QString own(const QString& file) const { return environment.dataHome + "/applications/"_L1 + file; }
  QString system(const QString& file) const { return root(u"system/applications/"_s) + file; }

  void program(const QString& name, const QString& script) {
    const QString path = root(u"bin/"_s) + name;
    write(path, script);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }

  QTemporaryDir folder;
  AppEnvironment environment;
};

}  // namespace tarnwick::test
