#pragma once

#include <QList>
#include <QLocale>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <optional>

#include "config/DesktopOptions.h"
#include "config/DockLayout.h"
#include "config/DockProfile.h"
#include "config/TodoItem.h"

namespace tarnwick {

/// Everything that the user has set up, as one value. A new one is what a new user finds.
struct DockConfiguration {
  static constexpr qsizetype kMostProfiles = 20;
  static constexpr qsizetype kMostWidgets = 150;  ///< In one profile.
  static constexpr qsizetype kMostShelved = 500;

  int schema = 1;
  QList<DockProfile> profiles{DockProfile::initial()};
  std::optional<QUuid> activeProfileID;
  bool onboardingComplete = false;
  double scale = 1.0;
  double spacing = 7.0;                         ///< Points between widgets.
  QString style = QStringLiteral("darkGlass");  ///< white, black, transparent, liquidGlass, lightGlass or darkGlass.
  bool tiles = true;                            ///< Whether widgets have a fill.
  std::optional<bool> tileBorders;              ///< Absent: the user has not chosen yet.
  bool monochrome = false;
  QString appAppearance = QStringLiteral("dark");  ///< auto, light or dark; of the program's windows.
  QString overflow = QStringLiteral("scroll");     ///< scroll or fit; when widgets need more than there is.
  DockLayout layout = DockLayout::Fixed;
  QString position = QStringLiteral("bottom");     ///< bottom or top.
  QString alignment = QStringLiteral("center");    ///< left, center or right.
  double edgeGap = 8.0;                            ///< Points between the dock and its edge.
  QString display = QStringLiteral("main");        ///< main, attached, all, or the identity of one display.
  QMap<QString, QList<double>> floatingPositions;  ///< Display identity to [x, y].
  bool liveApps = false;
  bool foldersInFinder = false;
  bool launchAtLogin = false;
  bool clipboardEnabled = false;
  bool notificationsEnabled = false;
  std::optional<QString> rememberedMediaSource;
  std::optional<QStringList> nativeConnections;
  std::optional<QString> temperatureUnit;                           ///< auto, celsius or fahrenheit.
  bool fahrenheit = usesFahrenheit(QLocale().measurementSystem());  ///< The older switch, still the fallback.
  QList<TodoItem> todos;
  QStringList shelf;      ///< File paths.
  QStringList clipboard;  ///< Texts of an older clipboard history.
  QString screenshotFolder;
  DesktopOptions desktop;  ///< What came later; each of it may be missing in a file.

  /// Checks everything that a file or an edit may have got wrong, clamps and repairs what can be, and throws
  /// DomainError for the first fault that can't. Runs on every load and every save. After a throw the value may be
  /// repaired in part.
  void validate();
  /// Whether an option of that key is refused, because what it holds belongs in the keyring.
  static bool isCredential(const QString& key);
  /// A widget as it would leave validation alone in a new configuration. Throws like `validate`.
  static DockWidget validated(const DockWidget& widget);

  const DesktopOptions& desktopOptions() const { return desktop; }
  DeskOptions desk() const { return desktop.deskOptions(); }
  void setDesk(const DeskOptions& desk) { desktop.setDesk(desk); }
  /// The index of the active profile; 0 when it is unknown.
  qsizetype activeIndex() const;
  /// Whether temperatures read in Fahrenheit; `system` is what the user's locale measures in.
  bool weatherUsesFahrenheit(QLocale::MeasurementSystem system = QLocale().measurementSystem()) const;
  static bool usesFahrenheit(QLocale::MeasurementSystem system) { return system == QLocale::ImperialUSSystem; }

  static constexpr auto fields() {
    using C = DockConfiguration;
    return std::tuple(
        field::required("schema", &C::schema), field::required("profiles", &C::profiles),
        field::optional("activeProfileID", &C::activeProfileID),
        field::required("onboardingComplete", &C::onboardingComplete), field::required("scale", &C::scale),
        field::required("spacing", &C::spacing), field::required("style", &C::style),
        field::required("tiles", &C::tiles), field::optional("tileBorders", &C::tileBorders),
        field::required("monochrome", &C::monochrome), field::required("appAppearance", &C::appAppearance),
        field::required("overflow", &C::overflow), field::required("layout", &C::layout),
        field::required("position", &C::position), field::required("alignment", &C::alignment),
        field::required("edgeGap", &C::edgeGap), field::required("display", &C::display),
        field::required("floatingPositions", &C::floatingPositions), field::required("liveApps", &C::liveApps),
        field::required("foldersInFinder", &C::foldersInFinder), field::required("launchAtLogin", &C::launchAtLogin),
        field::required("clipboardEnabled", &C::clipboardEnabled),
        field::required("notificationsEnabled", &C::notificationsEnabled),
        field::optional("rememberedMediaSource", &C::rememberedMediaSource),
        field::optional("nativeConnections", &C::nativeConnections),
        field::optional("temperatureUnit", &C::temperatureUnit), field::required("fahrenheit", &C::fahrenheit),
        field::required("todos", &C::todos), field::required("shelf", &C::shelf),
        field::required("clipboard", &C::clipboard), field::required("screenshotFolder", &C::screenshotFolder),
        field::defaulted("desktop", &C::desktop));
  }
  bool operator==(const DockConfiguration&) const = default;
};

}  // namespace tarnwick
