#include "views/families/apps/AppsRoom.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<const AppIndex> installed() {
  QList<DesktopEntry> entries;
  for (const QString& name : {u"Browser"_s,
                              u"Calculator"_s,
                              u"Calendar"_s,
                              u"Camera"_s,
                              u"Documents"_s,
                              u"Editor"_s,
                              u"Files"_s,
                              u"Fonts"_s,
                              u"Mail"_s,
                              u"Maps"_s,
                              u"Messages"_s,
                              u"Music"_s,
                              u"Photos"_s,
                              u"Player"_s,
                              u"Settings"_s,
                              u"Software"_s,
                              u"System Monitor"_s,
                              u"Terminal"_s,
                              u"Text to Speech and Dictation"_s,
                              u"Weather"_s}) {
    DesktopEntry entry;
    entry.id = name.toLower();
    entry.path = u"/usr/share/applications/%1.desktop"_s.arg(entry.id);
    entry.name = name;
    entry.iconName = entry.id;
    entries.append(entry);
  }
  return std::make_shared<AppIndex>(AppEnvironment(), entries, QHash<QString, DesktopEntry>(), MimeDefaults());
}

}  // namespace

void pictureApplications(TileSources& sources) {
  ApplicationFacts browser;
  browser.name = u"Browser"_s;
  browser.icon = u"browser"_s;
  browser.marks.running = true;
  sources.applications.insert(u"/usr/share/applications/browser.desktop"_s, browser);
  for (const QString& name : {u"Mail"_s, u"Music"_s, u"Messages"_s, u"Photos"_s})
    sources.applications.insert(u"/usr/share/applications/%1.desktop"_s.arg(name.toLower()),
                                {name, name.toLower(), 0, {}});
}

void fillReadingsWithApplications(const PicturedParts& parts) { parts.readings.apps.setFixed(installed()); }

}  // namespace tarnwick
