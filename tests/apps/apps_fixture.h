#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QProcessEnvironment>
#include <QSaveFile>
#include <QTemporaryDir>

#include "apps/AppEnvironment.h"
#include "support/Wait.h"

namespace tarnwick::test {

using namespace Qt::StringLiterals;

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

/// Puts a file in its place at once, so that whoever watches the folder never sees half of it.
inline void write(const QString& path, const QString& text) {
  QDir().mkpath(QFileInfo(path).path());
  QSaveFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
  file.write(text.toUtf8());
  ASSERT_TRUE(file.commit()) << path.toStdString();
}

inline QProcessEnvironment variables(std::initializer_list<std::pair<const char*, const char*>> values) {
  QProcessEnvironment result;
  for (const auto& [name, value] : values) result.insert(QString::fromLatin1(name), QString::fromLatin1(value));
  return result;
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
