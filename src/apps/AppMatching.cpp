#include "apps/AppMatching.h"

#include <algorithm>
#include <tuple>

#include "apps/DesktopExec.h"
#include "base/ForeignText.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

using Entries = QList<const DesktopEntry*>;

/// Smaller is better: what the user can see before helpers, the entry named like the window, the plain command before
/// one with arguments (those are modes and web applications of the same program).
std::tuple<bool, bool, qsizetype> rank(const DesktopEntry& entry, const AppIndex& index, const QString& hint) {
  const auto words = DesktopExec::split(entry.exec);
  qsizetype count = 0;
  if (words)
    count = std::count_if(words->begin(), words->end(), [](const auto& word) { return !word.text.startsWith(u'%'); });
  return {!index.isVisible(entry), entry.id.compare(hint, Qt::CaseInsensitive) != 0, count};
}

const DesktopEntry* best(const Entries& entries, const AppIndex& index, const QString& hint, bool unambiguous = false) {
  const DesktopEntry* found = nullptr;
  bool tie = false;
  for (const DesktopEntry* entry : entries) {
    if (!found) {
      found = entry;
      continue;
    }
    const auto left = rank(*entry, index, hint);
    const auto right = rank(*found, index, hint);
    if (left < right) found = entry;
    tie = left == right || (tie && !(left < right));
  }
  return unambiguous && tie ? nullptr : found;
}

QString plainId(const QString& id) { return id.endsWith(".desktop"_L1) ? id.chopped(8) : id; }

/// Ids cannot hold blanks, so that programs with a blank in their class have a dash there.
QString dashed(const QString& name) { return QString(name).replace(u' ', u'-'); }

Entries announcingExactly(const AppIndex& index, const QString& name) {
  Entries result = index.find(AppIndex::Key::WindowClass, name);
  result.removeIf([&](const DesktopEntry* entry) { return entry->startupWmClass != name; });
  return result;
}

const DesktopEntry* byClass(const ClientWindow& window, const AppIndex& index, const Entries& among) {
  const auto pick = [&](Entries entries, const QString& hint) {
    if (!among.isEmpty()) entries.removeIf([&](const DesktopEntry* entry) { return !among.contains(entry); });
    return best(entries, index, hint);
  };
  const QString id = plainId(window.applicationId);
  if (const DesktopEntry* entry = index.byId(id); entry && (among.isEmpty() || among.contains(entry))) return entry;
  // A browser gives the windows of its web applications its own class and distinguishes them by the instance alone.
  if (const auto* entry = pick(announcingExactly(index, window.instance), window.instance)) return entry;
  for (const QString& name : {id, window.instance})
    if (const auto* entry = pick(index.find(AppIndex::Key::WindowClass, name), name)) return entry;
  for (const auto key : {AppIndex::Key::Id, AppIndex::Key::LastComponent})
    for (const QString& name : {dashed(id), dashed(window.instance)})
      if (const auto* entry = pick(index.find(key, name), name)) return entry;
  return nullptr;
}

/// Snap's confinement calls a program snap.NAME.COMMAND.
QString sandboxName(const QString& sandboxId) {
  return sandboxId.startsWith("snap."_L1) && sandboxId.count(u'.') >= 2 ? sandboxId.section(u'.', 1, 1)
                                                                        : plainId(sandboxId);
}

const DesktopEntry* bySandbox(const ClientWindow& window, const AppIndex& index) {
  if (window.sandboxId.isEmpty()) return nullptr;
  const QString name = sandboxName(window.sandboxId);
  Entries entries = index.find(AppIndex::Key::Sandbox, name);
  if (entries.isEmpty()) return index.byId(name);
  if (entries.size() == 1) return entries.constFirst();
  if (const DesktopEntry* entry = byClass(window, index, entries)) return entry;
  if (const DesktopEntry* entry = index.byId(name + u'_' + name)) return entry;
  return best(entries, index, name);
}

QString className(const ClientWindow& window) {
  return window.applicationId.isEmpty() ? window.instance : plainId(window.applicationId);
}

}  // namespace

const DesktopEntry* AppMatching::entryFor(const ClientWindow& window, const AppIndex& index,
                                          const Executable& executable) {
  if (const DesktopEntry* entry = bySandbox(window, index)) return entry;
  if (const DesktopEntry* entry = byClass(window, index, {})) return entry;
  if (!executable || window.pid <= 0) return nullptr;
  const QString program = executable();
  return best(index.find(AppIndex::Key::Executable, program), index, program, true);
}

QString AppMatching::fallbackKey(const ClientWindow& window) {
  if (const QString name = className(window); !name.isEmpty()) return "class:"_L1 + name.toLower();
  if (window.pid > 0) return "process:"_L1 + QString::number(window.pid);
  return "window:"_L1 + QString::number(window.id);
}

QString AppMatching::fallbackName(const ClientWindow& window) {
  QString name = className(window);
  // Of a name such as org.example.Editor people know the last part; "Navigator 4.0" is no such name.
  if (name.count(u'.') >= 2 && !name.contains(u' ') && !name.endsWith(u'.')) name = name.section(u'.', -1);
  if (name.isEmpty()) name = window.title;
  name = ForeignText::line(name);
  if (!name.isEmpty()) name[0] = name[0].toUpper();
  return name;
}

QString AppMatching::fallbackIcon(const ClientWindow& window) { return dashed(className(window)).toLower(); }

}  // namespace tarnwick
