#include "apps/RunningApplications.h"

#include <algorithm>
#include <limits>

#include "apps/DesktopExec.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

bool saysTheSame(const ClientWindow& left, const ClientWindow& right) {
  return left.applicationId == right.applicationId && left.instance == right.instance &&
         left.sandboxId == right.sandboxId && left.pid == right.pid;
}

}  // namespace

struct RunningApplications::Group {
  QString key;
  RunningApp app;
};

RunningApplications::RunningApplications(ClientWindows& windows, InstalledApps& apps, Self self,
                                         CommandLine commandLine, QObject* parent)
    : QObject(parent), windows_(windows), apps_(apps), self_(std::move(self)), commandLine_(std::move(commandLine)) {}

void RunningApplications::start() {
  if (running_) return;
  running_ = true;
  connect(&windows_, &ClientWindows::changed, this, &RunningApplications::refresh);
  connect(&apps_, &InstalledApps::changed, this, &RunningApplications::refresh);
  apps_.load();
  refresh();
}

void RunningApplications::stop() {
  running_ = false;
  windows_.disconnect(this);
  apps_.disconnect(this);
}

std::optional<RunningApp> RunningApplications::byIdentity(quint64 identity) const {
  for (const RunningApp& app : list_)
    if (app.identity == identity) return app;
  return {};
}

std::optional<RunningApp> RunningApplications::byPath(const QString& path) const {
  if (path.isEmpty()) return {};
  const QString id = apps_.environment().desktopIdOf(path);
  for (const RunningApp& app : list_)
    if (app.path == path || (!id.isEmpty() && app.desktopId == id)) return app;
  return {};
}

void RunningApplications::refresh() {
  if (!running_ || !apps_.loaded()) return;
  if (const auto index = apps_.index(); index != index_) {
    for (Known& known : known_) known.matched = false;  // Entries live in the index that goes.
    index_ = index;
  }
  const QList<ClientWindow> windows = windows_.all();
  remember(windows);
  QList<Group> found = groups(windows);
  identify(found);

  QList<quint64> present;
  for (const Group& group : found) present << group.app.identity;
  QList<RunningApp> list;
  for (const quint64 identity : order_.ordered(present)) {
    const auto group =
        std::find_if(found.begin(), found.end(), [&](const Group& each) { return each.app.identity == identity; });
    list << group->app;
  }
  if (list == list_) return;
  list_ = list;
  Q_EMIT changed();
}

void RunningApplications::remember(const QList<ClientWindow>& windows) {
  QSet<quint64> present;
  for (const ClientWindow& window : windows) {
    present.insert(window.id);
    if (!window.active) continue;
    recent_.removeAll(window.id);
    recent_.prepend(window.id);
  }
  recent_.removeIf([&](quint64 id) { return !present.contains(id); });
  known_.removeIf([&](const auto& each) { return !present.contains(each.key()); });
}

QList<RunningApplications::Group> RunningApplications::groups(const QList<ClientWindow>& windows) {
  QList<Group> result;
  QHash<QString, qsizetype> places;
  for (const ClientWindow& window : windows) {
    if (!window.inTaskbar || isOurs(window)) continue;
    const DesktopEntry* entry = entryFor(window);
    if (entry && entry->id == self_.desktopId) continue;
    const QString key = entry ? "entry:"_L1 + entry->id : AppMatching::fallbackKey(window);
    const qsizetype place = places.value(key, result.size());
    if (place == result.size()) {
      places.insert(key, place);
      RunningApp app;
      app.name = entry ? entry->name : AppMatching::fallbackName(window);
      app.iconName = entry ? entry->iconName : AppMatching::fallbackIcon(window);
      if (entry) {
        app.desktopId = entry->id;
        app.path = entry->path;
      }
      result << Group{key, app};
    }
    RunningApp& app = result[place].app;
    app.windows.prepend(window.id);
    app.places.insert(window.id, {window.elsewhere, window.minimised ? QStringList() : window.screens});
    app.active = app.active || window.active;
    app.urgent = app.urgent || window.urgent;
  }
  const auto age = [this](quint64 id) {
    const qsizetype place = recent_.indexOf(id);
    return place < 0 ? std::numeric_limits<qsizetype>::max() : place;
  };
  for (Group& group : result)
    std::stable_sort(group.app.windows.begin(), group.app.windows.end(),
                     [&](quint64 left, quint64 right) { return age(left) < age(right); });
  return result;
}

/// An application keeps its identity when only what we know of it changes: its entry was installed or removed
/// meanwhile.
void RunningApplications::identify(QList<Group>& groups) {
  QHash<QString, quint64> identities;
  QSet<quint64> taken;
  for (Group& group : groups) {
    group.app.identity = identities_.value(group.key, 0);
    if (group.app.identity) taken.insert(group.app.identity);
  }
  for (Group& group : groups) {
    for (const quint64 window : group.app.windows) {
      if (group.app.identity) break;
      const quint64 before = known_.value(window).identity;
      if (before && !taken.contains(before)) group.app.identity = before;
    }
    if (!group.app.identity) group.app.identity = ++lastIdentity_;
    taken.insert(group.app.identity);
    identities.insert(group.key, group.app.identity);
    for (const quint64 window : group.app.windows) known_[window].identity = group.app.identity;
  }
  identities_ = identities;
}

bool RunningApplications::isOurs(const ClientWindow& window) const {
  return (self_.pid > 0 && window.pid == self_.pid) ||
         (!self_.desktopId.isEmpty() && window.applicationId.compare(self_.desktopId, Qt::CaseInsensitive) == 0);
}

const DesktopEntry* RunningApplications::entryFor(const ClientWindow& window) {
  Known& known = known_[window.id];
  if (known.matched && saysTheSame(known.window, window)) return known.entry;
  if (known.window.pid != window.pid) known.executable.reset();
  known.window = window;
  known.matched = true;
  known.entry = AppMatching::entryFor(window, *index_, [&] {
    if (!known.executable && commandLine_) known.executable = DesktopExec::executableName(commandLine_(window.pid));
    return known.executable.value_or(QString());
  });
  return known.entry;
}

}  // namespace tarnwick
