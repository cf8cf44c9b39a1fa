#include "apps/DesktopEntry.h"

#include "apps/KeyFile.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

std::optional<DesktopEntry::Type> typeNamed(const QString& name) {
  if (name == "Application"_L1) return DesktopEntry::Type::Application;
  if (name == "Link"_L1) return DesktopEntry::Type::Link;
  if (name == "Directory"_L1) return DesktopEntry::Type::Directory;
  return {};
}

QList<DesktopAction> actionsOf(const KeyFile& file, const QStringList& ids, bool dbusActivatable) {
  QList<DesktopAction> result;
  for (const QString& id : ids) {
    const QString group = "Desktop Action "_L1 + id;
    DesktopAction action{id, file.string(group, u"Name"_s), file.string(group, u"Icon"_s),
                         file.string(group, u"Exec"_s)};
    if (!action.name.isEmpty() && (dbusActivatable || !action.exec.isEmpty())) result << action;
  }
  return result;
}

std::optional<DesktopEntry> entryOf(const KeyFile& file) {
  const QString group = u"Desktop Entry"_s;
  if (!file.hasGroup(group)) return {};
  DesktopEntry entry;
  entry.hidden = file.flag(group, u"Hidden"_s);
  entry.name = file.string(group, u"Name"_s);
  entry.untranslatedName = file.untranslated(group, u"Name"_s);
  const auto type = typeNamed(file.string(group, u"Type"_s));
  if (entry.hidden && !type) return entry;
  if (!type || (entry.name.isEmpty() && !entry.hidden)) return {};
  entry.type = *type;
  entry.genericName = file.string(group, u"GenericName"_s);
  entry.comment = file.string(group, u"Comment"_s);
  entry.iconName = file.string(group, u"Icon"_s);
  entry.exec = file.string(group, u"Exec"_s);
  entry.tryExec = file.string(group, u"TryExec"_s);
  entry.workingDirectory = file.string(group, u"Path"_s);
  entry.url = file.string(group, u"URL"_s);
  entry.startupWmClass = file.string(group, u"StartupWMClass"_s);
  entry.categories = file.list(group, u"Categories"_s);
  entry.keywords = file.list(group, u"Keywords"_s);
  entry.mimeTypes = file.list(group, u"MimeType"_s);
  entry.onlyShowIn = file.list(group, u"OnlyShowIn"_s);
  entry.notShowIn = file.list(group, u"NotShowIn"_s);
  entry.restrictsDesktops = file.has(group, u"OnlyShowIn"_s);
  entry.flatpakId = file.string(group, u"X-Flatpak"_s);
  entry.snapInstanceName = file.string(group, u"X-SnapInstanceName"_s);
  entry.noDisplay = file.flag(group, u"NoDisplay"_s);
  entry.terminal = file.flag(group, u"Terminal"_s);
  entry.dbusActivatable = file.flag(group, u"DBusActivatable"_s);
  entry.startupNotify = file.flag(group, u"StartupNotify"_s);
  entry.actions = actionsOf(file, file.list(group, u"Actions"_s), entry.dbusActivatable);

  if (entry.hidden) return entry;
  if (entry.type == DesktopEntry::Type::Application && entry.exec.isEmpty() && !entry.dbusActivatable) return {};
  if (entry.type == DesktopEntry::Type::Link && entry.url.isEmpty()) return {};
  return entry;
}

}  // namespace

std::optional<DesktopEntry> DesktopEntry::parse(QByteArrayView utf8, const QStringList& locales) {
  return entryOf(KeyFile::parse(utf8, locales));
}

std::optional<DesktopEntry> DesktopEntry::read(const QString& path, const QStringList& locales) {
  auto entry = entryOf(KeyFile::read(path, locales));
  if (entry) entry->path = path;
  return entry;
}

bool DesktopEntry::shownIn(const QStringList& desktops) const {
  for (const QString& desktop : desktops) {
    if (onlyShowIn.contains(desktop)) return true;
    if (notShowIn.contains(desktop)) return false;
  }
  return !restrictsDesktops;
}

std::optional<DesktopAction> DesktopEntry::action(const QString& actionId) const {
  for (const DesktopAction& candidate : actions)
    if (candidate.id == actionId) return candidate;
  return {};
}

}  // namespace tarnwick
