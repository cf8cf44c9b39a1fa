#include "views/families/windows/WindowsRoom.h"

#include "apps/RunningApp.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QList<RunningApp> running() {
  QList<RunningApp> apps;
  quint64 number = 0;
  for (const QString& name : {u"Browser"_s, u"Editor"_s, u"Terminal"_s, u"Mail"_s}) {
    ++number;
    RunningApp app;
    app.identity = number;
    app.name = name;
    app.desktopId = name.toLower();
    app.iconName = app.desktopId;
    app.path = u"/usr/share/applications/%1.desktop"_s.arg(app.desktopId);
    app.windows = {number * 10};
    app.active = number == 1;
    apps.append(app);
  }
  apps.first().windows.append(11);
  return apps;
}

QList<ClientWindow> windows() {
  QList<ClientWindow> windows;
  const auto add = [&windows](quint64 id, const QString& title) {
    ClientWindow window;
    window.id = id;
    window.title = title;
    windows.append(window);
  };
  add(10, u"Release notes"_s);
  add(11, u"Weather in Kendal"_s);
  add(20, u"tiles.cpp"_s);
  add(30, u"robin@kendal: ~"_s);
  add(40, u"Inbox"_s);
  windows.first().active = true;
  windows.last().minimised = true;
  return windows;
}

}  // namespace

void pictureRunning(TileSources& sources) {
  for (const RunningApp& app : running())
    sources.running.append({app.identity, app.name, app.iconName, app.active});
}

void fillStoreWithRunning(AppStore& store, const QDateTime&) { store.apply(running()); }

void fillReadingsWithWindows(const PicturedParts& parts) { parts.readings.windows.list = windows(); }

}  // namespace tarnwick
