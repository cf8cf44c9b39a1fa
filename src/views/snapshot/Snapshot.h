#pragma once

#include <QList>
#include <QLocale>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

namespace tarnwick {

/// A window of the program that is pictured, made anew for each picture.
struct SnapshotWindow {
  QString name;
  std::function<std::unique_ptr<QWidget>(bool dark)> make;
};

class GlassPane;

/// A pane of glass that is pictured, made anew for each picture.
struct SnapshotPane {
  /// Gives a pane the look of the picture.
  using Look = std::function<void(GlassPane& pane)>;

  QString name;
  std::function<std::unique_ptr<GlassPane>(const Look& look)> make;
};

struct SnapshotOptions {
  QString folder{};
  bool tiles = true;
  bool panels = true;
  bool docks = true;
  bool windows = true;
  bool bars = true;
  QList<double> densities{1, 2};
  std::optional<QLocale> locale{};     ///< Where absent, that of the fixture.
  QList<SnapshotWindow> windowList{};  ///< What `windows` pictures.
  QList<SnapshotPane> barList{};       ///< What `bars` pictures.
};

/// Writes pictures of everything that the program paints, with fixed data: a picture of each kind's tile and panel in
/// dark, a contact sheet of each group in light, dark and monochrome, each dock style, each window, the command bar in
/// each look; all at every density. Needs an application object and no display. Returns the files, below the folder.
/// Throws DomainError.
QStringList takeSnapshot(const SnapshotOptions& options);

}  // namespace tarnwick
