#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

#include "config/DockWidget.h"
#include "desktop/Panels.h"
#include "dock/rules/Magnification.h"
#include "views/theme/Palette.h"
#include "views/tiles/AppMarks.h"

namespace tarnwick {

/// A running application that the dock shows without the user having put it there.
struct DockApp {
  quint64 id = 0;  ///< Opaque; valid while the application runs.
  QString name;
  QString icon;  ///< What the provider of icons knows it by.
  bool front = false;
  bool urgent = false;               ///< It asks for attention.
  std::optional<double> progress{};  ///< From 0 to 1.
  std::optional<qint64> count{};     ///< Of unread things.
  bool launching = false;            ///< It was started again, and no window has come of that yet.
  qsizetype windows = 1;

  AppMarks marks() const { return {windows > 0, front, urgent, launching, progress, count, windows}; }
  bool operator==(const DockApp&) const = default;
};

/// Where running applications are among the tiles.
enum class RunningAppsPlacement { None, Left, BeforeApps, AfterApps, Right };
/// The placement of a settings value such as "beforeApps"; right for a word that is not known.
RunningAppsPlacement runningAppsPlacementNamed(const QString& name);

/// A picture of the user's on the glass of a dock.
struct DockPicture {
  QString file;     ///< Empty for none.
  double blur = 0;  ///< Units.
  double dim = 0;   ///< From 0, as it is, to 1, nothing of it left.

  bool operator==(const DockPicture&) const = default;
};

/// An app in the row: a widget that starts it, or one that runs and has none.
struct DockAppItem {
  QUuid widget;
  quint64 application = 0;  ///< Of one without a widget.

  bool operator==(const DockAppItem&) const = default;
};

/// Everything that decides what a dock looks like, less what its tiles show at the moment.
struct DockRow {
  QList<DockWidget> widgets;
  QList<DockApp> runningApps;
  RunningAppsPlacement placement = RunningAppsPlacement::Right;

  DockStyle style = DockStyle::DarkGlass;
  bool tiles = true;        ///< Whether tiles have a ground.
  bool tileBorders = true;  ///< Whether the ground of a tile has a thin line inside its edge.
  bool monochrome = false;
  QString iconStyle = QStringLiteral("default");  ///< Of applications; see iconStyleNamed.
  bool reduceTransparency = false;  ///< Whether nothing of what lies behind may be seen through the glass.
  DockPicture picture;
  double scale = 1;
  double spacing = 7;

  Edge edge = Edge::Bottom;  ///< Of the screen; the tabs are on the other side.
  bool composited = true;
  bool blurred = false;
  bool reduceMotion = false;
  bool highContrast = false;
  double swelling = Magnification::kMost;  ///< By how much a tile grows at most under the pointer.

  QStringList tabs;  ///< The names of the profiles; space is kept for them when there are two or more.
  qsizetype activeTab = 0;
  bool tabsOnHover = true;   ///< Whether the pointer brings the tabs.
  bool swipes = true;        ///< Whether a sideways drag of empty space switches profiles.
  bool floats = false;       ///< Whether a drag of empty space moves the dock instead.
  bool sendsNearby = false;  ///< Whether files can be sent to devices nearby, so that the tile for that takes some.

  Backdrop backdrop() const { return !composited ? Backdrop::Opaque : blurred ? Backdrop::Blurred : Backdrop::Plain; }
  bool keepsSpaceForTabs() const { return tabs.size() > 1; }
  bool offersTabs() const { return tabsOnHover && keepsSpaceForTabs(); }
  bool operator==(const DockRow&) const = default;
};

}  // namespace tarnwick
