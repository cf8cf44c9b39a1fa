#pragma once

#include <QPixmap>
#include <QString>

namespace tarnwick {

/// How the icons of applications are painted in a dock.
enum class IconStyle { Own, Dark, Monochrome };

/// The style of a settings value such as "dark"; the icons' own for a word that is not known. "auto" is dark in a dock
/// that is dark.
IconStyle iconStyleNamed(const QString& name, bool dockIsDark);

/// An icon in a style: dark takes the light from what is pale and leaves colours be, monochrome takes the colours.
QPixmap styledIcon(const QPixmap& icon, IconStyle style);

}  // namespace tarnwick
