#include "views/families/apps/AppsRoom.h"

#include <array>

#include "views/families/apps/AppTiles.h"
#include "views/panels/PanelWords.h"
#include "views/panels/PlainPanel.h"
#include "views/panels/Room.h"
#include "views/tiles/GenericTile.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

using enum FieldShape;

constexpr qsizetype kFolderIcons = 4;

constexpr std::array kLauncherOptions = {
    WidgetOption{.key = option::path, .shape = Application, .label = QT_TRANSLATE_NOOP("Library", "App")},
};
constexpr std::array kFolderOptions = {
    WidgetOption{.key = option::paths, .shape = Applications, .label = QT_TRANSLATE_NOOP("Library", "Apps")},
};

/// A launcher that was given no application yet has only its name to show.
TileContent launcher(const TileRequest& request) {
  if (!request.widget.options.value(option::path).isEmpty()) return makeLauncher(request);
  GenericContent content = makeGeneric(request);
  content.word = TileWords::tr("Choose app");
  content.opensEditor = true;
  return content;
}

PlainWords launcherWords(const TilePanel& panel, const TileSources& sources) {
  const QString opened = sources.applications.value(panel.widget().options.value(option::path)).name;
  const QString button = PanelWords::tr("Choose App…");
  if (!opened.isEmpty()) return {PanelWords::tr("Opens %1.").arg(opened), button};
  return {PanelWords::tr("Choose the app that this widget opens."), button, true};
}

std::unique_ptr<TilePanel> makeLauncherPanel(const PanelContext& context) {
  return makePlainPanel(context, launcherWords);
}

QMap<QString, QString> exampleFolder(const ExampleRequest& request) {
  return {{option::paths, request.applications.mid(0, kFolderIcons).join(u'\n')}};
}
QMap<QString, QString> picturedLauncher(const QDateTime&) {
  return {{option::path, u"/usr/share/applications/browser.desktop"_s}};
}
QMap<QString, QString> picturedFolder(const QDateTime&) {
  return {{option::paths,
           u"/usr/share/applications/mail.desktop\n/usr/share/applications/music.desktop\n"
           u"/usr/share/applications/messages.desktop\n/usr/share/applications/photos.desktop"_s}};
}

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Apps)},
    RoomRow{.of = familyText(Family::Launcher),
            .content = launcher,
            .panel = makeLauncherPanel,
            .options = kLauncherOptions,
            .pictured = picturedLauncher},
};
constexpr std::array kKinds = {
    RoomRow{.of = kind::applications, .content = contentOf<makeApplications>, .panel = makeApplicationsPanel},
    RoomRow{.of = kind::appFolder,
            .content = contentOf<makeAppFolder>,
            .panel = makeAppFolderPanel,
            .options = kFolderOptions,
            .example = exampleFolder,
            .pictured = picturedFolder},
};

}  // namespace

extern const Room kAppsRoom;
constinit const Room kAppsRoom{.name = "apps"_L1,
                               .families = kFamilies,
                               .kinds = kKinds,
                               .picture = pictureApplications,
                               .fillReadings = fillReadingsWithApplications};

}  // namespace tarnwick
