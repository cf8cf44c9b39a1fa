#include "views/families/windows/WindowsRoom.h"

#include <QPainter>

#include "apps/RunningApp.h"
#include "windows/WindowService.h"

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

/// What a window could look like: a bar, a heading and lines of text.
QImage pageOf(QRgb ground, QRgb ink) {
  QImage page(360, 220, QImage::Format_ARGB32_Premultiplied);
  page.fill(ground);
  QPainter painter(&page);
  painter.fillRect(0, 0, 360, 22, QColor::fromRgba(ink).darker(140));
  painter.fillRect(24, 44, 180, 14, QColor::fromRgba(ink));
  QColor text = QColor::fromRgba(ink);
  text.setAlphaF(0.45F);
  for (int line = 0; line < 8; ++line) painter.fillRect(24, 76 + line * 16, line % 3 == 2 ? 210 : 310, 6, text);
  return page;
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
  for (const RunningApp& app : running()) sources.running.append({app.identity, app.name, app.iconName, app.active});
}

void fillStoreWithRunning(AppStore& store, const QDateTime&) { store.apply(running()); }

void fillReadingsWithWindows(const PicturedParts& parts) {
  parts.readings.windows.list = windows();
  parts.readings.running = running();
  // The one that is minimized was never seen.
  parts.readings.windowService.setFixedPreviews({{10, pageOf(0xFFF6F3EC, 0xFF2B6CB0)},
                                                 {11, pageOf(0xFFE9F1F8, 0xFFD97706)},
                                                 {20, pageOf(0xFF1E2430, 0xFF7DD3A8)},
                                                 {30, pageOf(0xFF101418, 0xFFB9C2CC)}});
}

}  // namespace tarnwick
