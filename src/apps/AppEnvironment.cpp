#include "apps/AppEnvironment.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// A list of absolute folders; relative ones must be ignored. Each is listed once.
QStringList folders(const QString& list, const QStringList& otherwise) {
  QStringList result;
  for (const QString& folder : list.split(u':', Qt::SkipEmptyParts)) {
    if (!QDir::isAbsolutePath(folder)) continue;
    const QString clean = QDir::cleanPath(folder);
    if (!result.contains(clean)) result << clean;
  }
  return result.isEmpty() ? otherwise : result;
}

QString folder(const QString& value, const QString& otherwise) {
  return QDir::isAbsolutePath(value) ? QDir::cleanPath(value) : otherwise;
}

/// "de_AT.UTF-8@euro" reads keys for "de_AT@euro", "de_AT", "de@euro" and "de", in this order.
void appendLocale(QStringList& result, const QString& locale) {
  if (locale.isEmpty() || locale == "C"_L1 || locale == "POSIX"_L1 || locale.startsWith("C."_L1)) return;
  const QString modifier = locale.contains(u'@') ? locale.section(u'@', 1) : QString();
  const QString territory = locale.section(u'@', 0, 0).section(u'.', 0, 0);
  for (const QString& base : {territory, territory.section(u'_', 0, 0)}) {
    if (!modifier.isEmpty()) result << base + u'@' + modifier;
    result << base;
  }
}

QStringList locales(const QProcessEnvironment& variables) {
  QString messages;
  for (const QString& name : {u"LC_ALL"_s, u"LC_MESSAGES"_s, u"LANG"_s}) {
    messages = variables.value(name);
    if (!messages.isEmpty()) break;
  }
  QStringList result;
  appendLocale(result, messages);
  if (result.isEmpty()) return {};  // The plain locale overrides a list of languages.
  QStringList preferred;
  for (const QString& language : variables.value(u"LANGUAGE"_s).split(u':', Qt::SkipEmptyParts))
    appendLocale(preferred, language);
  preferred += result;
  preferred.removeDuplicates();
  return preferred;
}

}  // namespace

QStringList AppEnvironment::applicationFolders() const {
  QStringList result{dataHome + "/applications"_L1};
  for (const QString& data : dataFolders) result << data + "/applications"_L1;
  return result;
}

QString AppEnvironment::desktopIdOf(const QString& path) const {
  const QString clean = QDir::cleanPath(path);
  if (!clean.endsWith(".desktop"_L1)) return {};
  for (const QString& root : applicationFolders()) {
    if (!clean.startsWith(root + u'/')) continue;
    QString id = clean.mid(root.size() + 1);
    id.chop(8);
    return id.replace(u'/', u'-');
  }
  return {};
}

QString AppEnvironment::findExecutable(const QString& program) const {
  if (program.isEmpty()) return {};
  if (program.contains(u'/')) {
    const QFileInfo file(program);
    return file.isFile() && file.isExecutable() ? program : QString();
  }
  return executableFolders.isEmpty() ? QString() : QStandardPaths::findExecutable(program, executableFolders);
}

AppEnvironment AppEnvironment::fromVariables(const QProcessEnvironment& variables) {
  AppEnvironment result;
  result.home = folder(variables.value(u"HOME"_s), QDir::homePath());
  result.dataHome = folder(variables.value(u"XDG_DATA_HOME"_s), result.home + "/.local/share"_L1);
  result.dataFolders = folders(variables.value(u"XDG_DATA_DIRS"_s), {u"/usr/local/share"_s, u"/usr/share"_s});
  result.dataFolders.removeAll(result.dataHome);
  result.configHome = folder(variables.value(u"XDG_CONFIG_HOME"_s), result.home + "/.config"_L1);
  result.configFolders = folders(variables.value(u"XDG_CONFIG_DIRS"_s), {u"/etc/xdg"_s});
  result.executableFolders = folders(variables.value(u"PATH"_s), {u"/usr/local/bin"_s, u"/usr/bin"_s, u"/bin"_s});
  result.desktops = variables.value(u"XDG_CURRENT_DESKTOP"_s).split(u':', Qt::SkipEmptyParts);
  result.locales = tarnwick::locales(variables);
  result.terminal = variables.value(u"TERMINAL"_s).trimmed();
  return result;
}

AppEnvironment AppEnvironment::ofProcess() {
  AppEnvironment result = fromVariables(QProcessEnvironment::systemEnvironment());
  // Sessions that do not read the profile scripts lack these, and with them every sandboxed application.
  for (const QString& exported : {result.dataHome + "/flatpak/exports/share"_L1, u"/var/lib/flatpak/exports/share"_s,
                                  u"/var/lib/snapd/desktop"_s})
    if (!result.dataFolders.contains(exported)) result.dataFolders << exported;
  return result;
}

}  // namespace tarnwick
