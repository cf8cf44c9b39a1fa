#include "apps/StandardApplications.h"

#include <algorithm>

#include "apps/DefaultApplication.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// How an application for a purpose is recognised.
struct Signs {
  QStringList types;              ///< What it opens, the most telling first.
  QList<QStringList> categories;  ///< Sets of which one must be there whole, the most telling first.
  QStringList ids;                ///< Well-known ones that have no category of their own.
};

Signs signsOf(StandardApplications::Purpose purpose) {
  using enum StandardApplications::Purpose;
  switch (purpose) {
    case Browser:
      return {{u"x-scheme-handler/https"_s, u"x-scheme-handler/http"_s, u"text/html"_s}, {{u"WebBrowser"_s}}, {}};
    case Mail:
      return {{u"x-scheme-handler/mailto"_s}, {{u"Email"_s}}, {}};
    case Files:
      return {{u"inode/directory"_s}, {{u"FileManager"_s}}, {}};
    case Terminal:
      return {{u"x-scheme-handler/terminal"_s}, {{u"TerminalEmulator"_s}}, {}};
    case Editor:
      return {{u"text/plain"_s}, {{u"TextEditor"_s}}, {}};
    case Music:
      return {{u"audio/mpeg"_s, u"audio/flac"_s, u"audio/ogg"_s, u"audio/x-vorbis+ogg"_s},
              {{u"Music"_s, u"Player"_s}, {u"Audio"_s, u"Player"_s}, {u"Music"_s}},
              {}};
    case Video:
      return {{u"video/mp4"_s, u"video/x-matroska"_s, u"video/webm"_s}, {{u"Video"_s, u"Player"_s}, {u"Video"_s}}, {}};
    case Pictures:
      return {{u"image/jpeg"_s, u"image/png"_s}, {{u"Graphics"_s, u"Viewer"_s}, {u"Photography"_s}}, {}};
    case Calendar:
      return {{u"text/calendar"_s, u"x-scheme-handler/webcal"_s}, {{u"Calendar"_s}}, {}};
    case Software:
      return {{u"x-scheme-handler/appstream"_s}, {{u"PackageManager"_s}}, {}};
    case Settings:
      return {{},
              {{u"Settings"_s, u"DesktopSettings"_s}},
              {u"org.gnome.Settings"_s, u"gnome-control-center"_s, u"systemsettings"_s, u"kdesystemsettings"_s,
               u"xfce-settings-manager"_s, u"cinnamon-settings"_s, u"matecc"_s, u"lxqt-config"_s,
               u"io.elementary.settings"_s, u"budgie-control-center"_s, u"com.system76.CosmicSettings"_s}};
    case Monitor:
      return {{}, {{u"System"_s, u"Monitor"_s}}, {}};
  }
  return {};
}

bool hasAll(const DesktopEntry& entry, const QStringList& categories) {
  return std::all_of(categories.begin(), categories.end(),
                     [&](const QString& category) { return entry.categories.contains(category); });
}

const DesktopEntry* visible(const QString& id, const AppIndex& index) {
  const DesktopEntry* entry = index.byId(id);
  return entry && index.isVisible(*entry) ? entry : nullptr;
}

/// The best of those that belong to a set of categories: what opens the types before the rest, what belongs to this
/// desktop before strangers, what has a window of its own before what needs a terminal, then by name.
const DesktopEntry* fitting(const Signs& signs, const AppIndex& index) {
  for (const QStringList& categories : signs.categories) {
    const DesktopEntry* found = nullptr;
    int foundRank = -1;
    for (const DesktopEntry& entry : index.applications()) {
      if (!index.isVisible(entry) || !hasAll(entry, categories)) continue;
      const bool handles = std::any_of(signs.types.begin(), signs.types.end(), [&](const QString& type) {
        return DefaultApplication::opens(entry, type, index);
      });
      const bool native = std::any_of(index.desktops().begin(), index.desktops().end(), [&](const QString& desktop) {
        return entry.categories.contains(desktop, Qt::CaseInsensitive);
      });
      const int rank = (handles ? 4 : 0) + (native ? 2 : 0) + (entry.terminal ? 0 : 1);
      if (rank <= foundRank) continue;
      found = &entry;
      foundRank = rank;
    }
    if (found) return found;
  }
  return nullptr;
}

}  // namespace

const DesktopEntry* StandardApplications::entryFor(Purpose purpose, const AppIndex& index) {
  const Signs signs = signsOf(purpose);
  if (purpose == Purpose::Terminal)
    for (const QString& id : index.defaults().terminals)
      if (const DesktopEntry* entry = visible(id, index)) return entry;
  for (const QString& type : signs.types)
    if (const DesktopEntry* entry = DefaultApplication::chosen(type, index, true)) return entry;
  for (const QString& id : signs.ids)
    if (const DesktopEntry* entry = visible(id, index)) return entry;
  return fitting(signs, index);
}

QList<StandardApplication> StandardApplications::list(const AppIndex& index) {
  using enum Purpose;
  QList<StandardApplication> result;
  for (const Purpose purpose :
       {Browser, Mail, Files, Terminal, Editor, Music, Video, Pictures, Calendar, Software, Settings}) {
    const DesktopEntry* entry = entryFor(purpose, index);
    if (!entry) continue;
    const StandardApplication application{entry->name, entry->path, entry->iconName};
    if (!result.contains(application)) result << application;
  }
  return result;
}

}  // namespace tarnwick
