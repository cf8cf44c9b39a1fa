#include "apps/MimeDefaults.h"

#include <QFileInfo>

#include "apps/KeyFile.h"
#include "base/SmallFile.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString withoutSuffix(QString id) {
  if (id.endsWith(".desktop"_L1)) id.chop(8);
  return id;
}

QHash<QString, QStringList> choices(const KeyFile& file, const QString& group) {
  QHash<QString, QStringList> result;
  for (const QString& type : file.keys(group)) {
    QStringList ids;
    for (const QString& id : file.list(group, type)) ids << withoutSuffix(id);
    result.insert(type, ids);
  }
  return result;
}

MimeDefaults::Choices choicesOf(const KeyFile& file) {
  return {choices(file, u"Default Applications"_s), choices(file, u"Added Associations"_s),
          choices(file, u"Removed Associations"_s)};
}

QStringList inFolders(const QStringList& folders, const QStringList& desktops, const QString& name) {
  QStringList result;
  for (const QString& folder : folders) {
    for (const QString& desktop : desktops) result << folder + u'/' + desktop.toLower() + u'-' + name;
    result << folder + u'/' + name;
  }
  return result;
}

constexpr qint64 kLargestList = 64 * 1024;

QStringList terminalsIn(const QString& path) {
  QStringList result;
  const QByteArray bytes = SmallFile::read(path, kLargestList).value_or(QByteArray());
  for (const QString& line : QString::fromUtf8(bytes).split(u'\n')) {
    // An id may be followed by the action to use; lines that begin with a sign are rules, not terminals.
    const QString id = line.trimmed().section(u':', 0, 0);
    if (!id.isEmpty() && id.front().isLetterOrNumber()) result << withoutSuffix(id);
  }
  return result;
}

}  // namespace

MimeDefaults::Choices MimeDefaults::parse(QByteArrayView utf8) { return choicesOf(KeyFile::parse(utf8)); }

QStringList MimeDefaults::files(const AppEnvironment& environment) {
  const QStringList folders =
      QStringList{environment.configHome} + environment.configFolders + environment.applicationFolders();
  return inFolders(folders, environment.desktops, u"mimeapps.list"_s);
}

QStringList MimeDefaults::terminalFiles(const AppEnvironment& environment) {
  return inFolders(QStringList{environment.configHome} + environment.configFolders, environment.desktops,
                   u"xdg-terminals.list"_s);
}

MimeDefaults MimeDefaults::read(const AppEnvironment& environment) {
  MimeDefaults result;
  for (const QString& path : files(environment))
    if (QFileInfo::exists(path)) result.lists << choicesOf(KeyFile::read(path));
  for (const QString& path : terminalFiles(environment)) result.terminals += terminalsIn(path);
  result.terminals.removeDuplicates();
  return result;
}

}  // namespace tarnwick
