#include "platform/dbus/DesktopContrastPreference.h"

#include <QColor>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kContrastNamespace = "org.freedesktop.appearance"_L1;
constexpr auto kContrast = "contrast"_L1;
constexpr uint kHigher = 1;
constexpr auto kAccessibilitySettings = "org.gnome.desktop.a11y.interface"_L1;
constexpr auto kHighContrast = "high-contrast"_L1;
constexpr auto kPlasmaSettings = "org.kde.KGlobalSettings"_L1;
constexpr double kLeastContrast = 15;

bool isPlasma() { return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':').contains(u"KDE"_s); }

/// A colour as Plasma writes it: three numbers from 0 to 255.
std::optional<QColor> colorOf(const QVariant& value) {
  const QStringList parts = value.toStringList();
  if (parts.size() < 3) return std::nullopt;
  int rgb[3];
  for (int i = 0; i < 3; ++i) {
    bool isNumber = false;
    rgb[i] = parts[i].trimmed().toInt(&isNumber);
    if (!isNumber || rgb[i] < 0 || rgb[i] > 255) return std::nullopt;
  }
  return QColor(rgb[0], rgb[1], rgb[2]);
}

/// Relative luminance, as the guidelines for accessible pages define it.
double luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

}  // namespace

QString DesktopContrastPreference::plasmaColors() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/kdeglobals"_L1;
}

DesktopContrastPreference::DesktopContrastPreference(const QDBusConnection& session, const QString& colors,
                                                     QObject* parent)
    : session_(session), colors_(colors), portal_(session, kContrastNamespace, kContrast) {
  setParent(parent);
  connect(&portal_, &PortalSetting::answered, this, &DesktopContrastPreference::readPortal);
  if (isPlasma()) {
    // Programs that apply a scheme announce it under this name, from a connection of their own.
    session_.connect({}, u"/KGlobalSettings"_s, kPlasmaSettings, u"notifyChange"_s, this, SLOT(readScheme()));
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, &DesktopContrastPreference::readScheme);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &DesktopContrastPreference::readScheme);
    readScheme();
  }
}

void DesktopContrastPreference::readPortal() {
  portal_.value().isValid() ? setting_.reset() : readSetting();
  weigh();
}

void DesktopContrastPreference::readSetting() {
  if (setting_ || isPlasma()) return;
  setting_ = std::make_unique<GSettingsKey>(session_, kAccessibilitySettings, kHighContrast);
  connect(setting_.get(), &GSettingsKey::changed, this, &DesktopContrastPreference::weigh);
}

bool DesktopContrastPreference::isHighContrastScheme(const QString& file) {
  const QSettings settings(file, QSettings::IniFormat);
  const auto text = colorOf(settings.value("Colors:Window/ForegroundNormal"_L1));
  const auto ground = colorOf(settings.value("Colors:Window/BackgroundNormal"_L1));
  if (!text || !ground) return false;
  // Plasma's own dark scheme is as strong, and chosen by nobody for its contrast.
  const QString name = settings.value("ColorScheme"_L1).toString();
  if (name.startsWith("Breeze"_L1) && !name.contains("HighContrast"_L1)) return false;
  constexpr double flare = 0.05;
  const auto [darker, lighter] = std::minmax({luminance(*text), luminance(*ground)});
  return (lighter + flare) / (darker + flare) >= kLeastContrast;
}

/// By its name: what bears it may be another file by now. One that is not there is waited for in its folder.
void DesktopContrastPreference::watchScheme() {
  const QString folder = QFileInfo(colors_).path();
  if (!watcher_.files().isEmpty()) watcher_.removePath(colors_);
  const bool isWatched = QFile::exists(colors_) && watcher_.addPath(colors_);
  if (!isWatched)
    watcher_.addPath(folder);
  else if (!watcher_.directories().isEmpty())
    watcher_.removePath(folder);
}

void DesktopContrastPreference::readScheme() {
  watchScheme();
  schemeSays_ = isHighContrastScheme(colors_);
  weigh();
}

void DesktopContrastPreference::weigh() {
  const bool wants =
      portal_.value().toUInt() == kHigher || schemeSays_ || (setting_ && setting_->value() == std::optional(u"true"_s));
  if (std::exchange(wants_, wants) != wants) Q_EMIT changed();
}

}  // namespace tarnwick
