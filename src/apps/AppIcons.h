#pragma once

#include <QCache>
#include <QPixmap>
#include <QString>
#include <QStringList>

#include "apps/AppEnvironment.h"
#include "apps/DesktopEntry.h"

namespace tarnwick {

/// Pictures of applications, from the icon theme or from files. Main thread only; the application object must exist.
/// A theme in vector form needs Qt's SVG plug-ins at run time; where the desktop set none, the first picture chooses one.
class AppIcons {
 public:
  explicit AppIcons(AppEnvironment environment);

  /// A square picture of `size` device-independent pixels for a display of that pixel ratio, whatever the size of the
  /// icon that was found. Null when there is none: the caller draws a stand-in.
  /// `iconName`: a name in the icon theme, or the absolute path of a picture.
  QPixmap pixmap(const QString& iconName, int size, double pixelRatio);
  QPixmap pixmap(const DesktopEntry& entry, int size, double pixelRatio) {
    return pixmap(entry.iconName, size, pixelRatio);
  }

  /// Forgets all pictures: to be called when applications came or went. A change of the theme is noticed by itself.
  void clear() { cache_.clear(); }

  /// What the cache may hold, in kilobytes of pixels.
  static constexpr int kCacheKilobytes = 6 * 1024;

  /// The theme to use: the one set already, if it is a real one, else the one that the user wrote down, else the best
  /// of those that are installed. Empty when there is none at all.
  static QString chooseTheme(const QString& current, const QString& configured, const QStringList& installed);

 private:
  void ensureTheme();
  QPixmap load(const QString& iconName, int pixels) const;
  QString pictureFile(const QString& name) const;

  AppEnvironment environment_;
  QString theme_;
  QCache<QString, QPixmap> cache_;
};

}  // namespace tarnwick
