#include "apps/AppMatching.h"
#include "apps/DesktopExec.h"
#include "apps/RunningAppOrder.h"
#include "apps_fixture.h"

namespace tarnwick::test {
namespace {

DesktopEntry entry(const QString& id, const QString& exec, const QString& windowClass = {}) {
  DesktopEntry result;
  result.id = id;
  result.name = id;
  result.exec = exec;
  result.startupWmClass = windowClass;
  if (exec.startsWith("flatpak run "_L1)) result.flatpakId = exec.section(u' ', 2, 2);
  if (exec.startsWith("/snap/bin/"_L1)) result.snapInstanceName = exec.section(u'/', 3);
  return result;
}

AppIndex index() {
  DesktopEntry handler = entry(u"code-url-handler"_s, u"/usr/share/code/code --open-url %U"_s, u"Code"_s);
  handler.noDisplay = true;
  DesktopEntry inTerminal = entry(u"python3.11"_s, u"/usr/bin/python3.11"_s);
  inTerminal.terminal = true;
  QList<DesktopEntry> entries{handler, inTerminal};
  const std::tuple<QString, QString, QString> rows[] = {
      {u"org.gnome.Nautilus"_s, u"nautilus --new-window %U"_s, {}},
      {u"gimp"_s, u"gimp-2.10 %U"_s, u"Gimp-2.10"_s},
      {u"code"_s, u"/usr/share/code/code %F"_s, u"Code"_s},
      {u"google-chrome"_s, u"/usr/bin/google-chrome-stable %U"_s, u"Google-chrome"_s},
      {u"chrome-abcd-Default"_s, u"/opt/google/chrome/google-chrome-stable --app-id=abcd"_s, u"crx_abcd"_s},
      {u"debian-xterm"_s, u"xterm"_s, u"XTerm"_s},
      {u"debian-uxterm"_s, u"uxterm"_s, u"UXTerm"_s},
      {u"org.mozilla.Thunderbird"_s, u"thunderbird %u"_s, {}},
      {u"sublime-text"_s, u"/opt/sublime_text/sublime_text %F"_s, {}},
      {u"org.chromium.Chromium"_s, u"flatpak run org.chromium.Chromium"_s, {}},
      {u"org.chromium.Chromium.flextop.chrome-efgh"_s, u"flatpak run org.chromium.Chromium"_s, u"crx_efgh"_s},
      {u"md.obsidian.Obsidian"_s, u"flatpak run md.obsidian.Obsidian"_s, {}},
      {u"firefox_firefox"_s, u"/snap/bin/firefox"_s, {}},
      {u"office_writer"_s, u"/snap/bin/office"_s, {}},
      {u"office_office"_s, u"/snap/bin/office"_s, {}},
      {u"first"_s, u"twins --a"_s, {}},
      {u"second"_s, u"twins --b"_s, {}},
      {u"plain"_s, u"/opt/mode/run"_s, {}},
      {u"moded"_s, u"/opt/mode/run --kiosk"_s, {}},
  };
  for (const auto& [id, exec, windowClass] : rows) entries << entry(id, exec, windowClass);
  return AppIndex({}, entries, {}, {});
}

TEST(AppMatching, FindsTheEntryOfAWindow) {
  const AppIndex apps = index();
  const struct {
    QString applicationId;
    QString instance;
    QString sandboxId;
    QString executable;
    QString expected;  ///< Empty: no entry.
  } cases[] = {
      // What the program announces.
      {u"org.gnome.Nautilus"_s, {}, {}, {}, u"org.gnome.Nautilus"_s},
      {u"org.gnome.Nautilus.desktop"_s, {}, {}, {}, u"org.gnome.Nautilus"_s},
      // The window class of the entry: class, then instance, in any case; helpers that no list shows come last.
      {u"Gimp-2.10"_s, u"gimp-2.10"_s, {}, {}, u"gimp"_s},
      {u"Other"_s, u"gImp-2.10"_s, {}, {}, u"gimp"_s},
      {u"Code"_s, u"code"_s, {}, {}, u"code"_s},
      {u"UXTerm"_s, u"xterm"_s, {}, {}, u"debian-uxterm"_s},
      {u"XTerm"_s, u"xterm"_s, {}, {}, u"debian-xterm"_s},
      // Web applications of a browser, installed and not.
      {u"Google-chrome"_s, u"crx_abcd"_s, {}, {}, u"chrome-abcd-Default"_s},
      {u"Google-chrome"_s, u"crx_none"_s, {}, {}, u"google-chrome"_s},
      {u"chrome-abcd-Default"_s, {}, {}, {}, u"chrome-abcd-Default"_s},
      // The id itself, whole or its last part.
      {u"SUBLIME TEXT"_s, {}, {}, {}, u"sublime-text"_s},
      {u"thunderbird"_s, u"Mail"_s, {}, {}, u"org.mozilla.Thunderbird"_s},
      {u"Nautilus"_s, {}, {}, {}, u"org.gnome.Nautilus"_s},
      // Sandboxes go first; within one that has several entries the class decides.
      {u"obsidian"_s, u"obsidian"_s, u"md.obsidian.Obsidian"_s, {}, u"md.obsidian.Obsidian"_s},
      {u"gimp"_s, u"gimp"_s, u"md.obsidian.Obsidian"_s, {}, u"md.obsidian.Obsidian"_s},
      {u"Chromium"_s, u"crx_efgh"_s, u"org.chromium.Chromium"_s, {}, u"org.chromium.Chromium.flextop.chrome-efgh"_s},
      {u"Chromium"_s, u"chromium"_s, u"org.chromium.Chromium"_s, {}, u"org.chromium.Chromium"_s},
      {u"Navigator"_s, {}, u"firefox"_s, {}, u"firefox_firefox"_s},
      {u"Navigator"_s, {}, u"snap.firefox.firefox"_s, {}, u"firefox_firefox"_s},
      {u"soffice"_s, {}, u"office"_s, {}, u"office_office"_s},
      {u"code"_s, {}, u"org.unknown.Sandbox"_s, {}, u"code"_s},
      // The program, where it leaves no doubt.
      {u"strange"_s, {}, {}, u"sublime_text"_s, u"sublime-text"_s},
      {u"strange"_s, {}, {}, u"run"_s, u"plain"_s},
      {u"strange"_s, {}, {}, u"twins"_s, {}},
      {u"strange"_s, {}, {}, u"python3.11"_s, {}},
      {u"strange"_s, u"stranger"_s, {}, u"nothing"_s, {}},
      {{}, {}, {}, {}, {}},
  };
  for (const auto& each : cases) {
    ClientWindow window;
    window.applicationId = each.applicationId;
    window.instance = each.instance;
    window.sandboxId = each.sandboxId;
    window.pid = 7;
    const DesktopEntry* found = AppMatching::entryFor(window, apps, [&] { return each.executable; });
    EXPECT_EQ(found ? found->id : QString(), each.expected)
        << each.applicationId.toStdString() << " / " << each.instance.toStdString();
  }
}

TEST(AppMatching, NamesStrangersAfterTheirClass) {
  const auto named = [](const QString& id, const QString& title) {
    ClientWindow window;
    window.id = 3;
    window.applicationId = id;
    window.title = title;
    return std::pair{AppMatching::fallbackName(window), AppMatching::fallbackKey(window)};
  };
  EXPECT_EQ(named(u"myTool"_s, u"x"_s), std::pair(u"MyTool"_s, u"class:mytool"_s));
  EXPECT_EQ(named(u"org.example.editor"_s, u"x"_s), std::pair(u"Editor"_s, u"class:org.example.editor"_s));
  EXPECT_EQ(named({}, u"hello"_s), std::pair(u"Hello"_s, u"window:3"_s));
}

TEST(RunningAppOrder, KeepsPlacesForAsLongAsTheyRun) {
  RunningAppOrder order;
  EXPECT_EQ(order.ordered({30, 10, 20}), (QList<quint64>{30, 10, 20}));
  EXPECT_EQ(order.ordered({10, 20, 30}), (QList<quint64>{30, 10, 20}));
  EXPECT_EQ(order.ordered({20, 5, 10}), (QList<quint64>{10, 20, 5}));
  EXPECT_EQ(order.ordered({30, 10, 20, 5}), (QList<quint64>{10, 20, 5, 30}));
}

}  // namespace
}  // namespace tarnwick::test
