#include "apps/AppIcons.h"

#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QImageReader>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "apps/KeyFile.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kLargestIcon = 1024;
constexpr int kLargestPicture = 8192;
// The theme that every other one falls back to; alone it holds what applications install and nothing else.
constexpr QLatin1StringView kFallbackTheme("hicolor");

QStringList installedThemes() {
  QStringList result;
  for (const QString& path : QIcon::themeSearchPaths()) {
    if (path.startsWith(u':')) continue;
    for (const QString& name : QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
      if (QFileInfo::exists(path + u'/' + name + "/index.theme"_L1)) result << name;
  }
  return result;
}

QString configuredTheme(const AppEnvironment& environment) {
  for (const QLatin1StringView version : {"gtk-4.0"_L1, "gtk-3.0"_L1}) {
    const QString path = environment.configHome + u'/' + version + "/settings.ini"_L1;
    const QString name = KeyFile::read(path).string(u"Settings"_s, u"gtk-icon-theme-name"_s);
    if (!name.isEmpty()) return name;
  }
  return {};
}

QImage readPicture(const QString& path, int pixels) {
  if (!QFileInfo(path).isFile()) return {};
  QImageReader reader(path);
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  if (size.width() > kLargestPicture || size.height() > kLargestPicture) return {};
  const bool vector = reader.format() == "svg" || reader.format() == "svgz";
  if (!size.isEmpty() && (vector || size.width() > pixels || size.height() > pixels))
    reader.setScaledSize(size.scaled(pixels, pixels, Qt::KeepAspectRatio));
  return reader.read();
}

/// In the middle of a square of exactly that many pixels, as large as fits.
QPixmap squared(const QPixmap& picture, int pixels) {
  if (picture.isNull() || picture.size() == QSize(pixels, pixels)) return picture;
  QPixmap result(pixels, pixels);
  result.fill(Qt::transparent);
  QPainter painter(&result);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QSize size = picture.size().scaled(pixels, pixels, Qt::KeepAspectRatio);
  painter.drawPixmap(QRect(QPoint((pixels - size.width()) / 2, (pixels - size.height()) / 2), size), picture);
  return result;
}

}  // namespace

AppIcons::AppIcons(AppEnvironment environment) : environment_(std::move(environment)), cache_(kCacheKilobytes) {}

void AppIcons::ensureTheme() {
  const QString current = QIcon::themeName();
  if (current.isEmpty() || current == kFallbackTheme) {
    const QString theme = chooseTheme(current, configuredTheme(environment_), installedThemes());
    if (!theme.isEmpty() && theme != current) QIcon::setThemeName(theme);
  }
  if (QIcon::fallbackThemeName().isEmpty()) QIcon::setFallbackThemeName(kFallbackTheme);
  theme_ = QIcon::themeName();
}

QString AppIcons::chooseTheme(const QString& current, const QString& configured, const QStringList& installed) {
  if (!current.isEmpty() && current != kFallbackTheme) return current;
  if (installed.contains(configured)) return configured;
  for (const QLatin1StringView theme : {"breeze"_L1, "Papirus"_L1, "Adwaita"_L1, kFallbackTheme})
    if (installed.contains(theme)) return theme;
  return {};
}

QPixmap AppIcons::pixmap(const QString& iconName, int size, double pixelRatio) {
  if (iconName.isEmpty() || size <= 0 || !std::isfinite(pixelRatio) || pixelRatio <= 0) return {};
  if (theme_.isEmpty()) ensureTheme();
  if (const QString theme = QIcon::themeName(); theme != theme_) {
    theme_ = theme;
    clear();
  }
  const int pixels = static_cast<int>(std::lround(std::clamp(size * pixelRatio, 1.0, double{kLargestIcon})));
  const QString key = u"%1/%2/%3"_s.arg(pixels).arg(size).arg(iconName);
  if (const QPixmap* known = cache_.object(key)) return *known;
  QPixmap picture = squared(load(iconName, pixels), pixels);
  if (!picture.isNull()) picture.setDevicePixelRatio(static_cast<double>(pixels) / size);
  cache_.insert(key, new QPixmap(picture), picture.isNull() ? 1 : 1 + pixels * pixels * 4 / 1024);
  return picture;
}

QPixmap AppIcons::load(const QString& iconName, int pixels) const {
  if (QDir::isAbsolutePath(iconName)) return QPixmap::fromImage(readPicture(iconName, pixels));
  QString name = iconName;
  for (const QLatin1StringView suffix : {".png"_L1, ".svg"_L1, ".xpm"_L1})
    if (name.endsWith(suffix)) name.chop(suffix.size());
  // Asked for in pixels, since a picture for a ratio above one may come from an icon with less detail.
  const QPixmap themed = QIcon::fromTheme(name).pixmap(QSize(pixels, pixels), 1.0);
  return themed.isNull() ? QPixmap::fromImage(readPicture(pictureFile(name), pixels)) : themed;
}

/// The folders in which applications left their icons before there were themes.
QString AppIcons::pictureFile(const QString& name) const {
  if (name.contains(u'/')) return {};
  for (const QString& data : QStringList{environment_.dataHome} + environment_.dataFolders)
    for (const QLatin1StringView folder : {"/pixmaps/"_L1, "/icons/"_L1})
      for (const QLatin1StringView suffix : {".svg"_L1, ".png"_L1, ".xpm"_L1})
        if (const QString path = data + folder + name + suffix; QFileInfo::exists(path)) return path;
  return {};
}

}  // namespace tarnwick
