#pragma once

#include <QLatin1StringView>

/// Names on the session bus that more than one file talks to.
namespace tarnwick::bus {

/// The interface through which any object has its properties read.
inline constexpr QLatin1StringView kProperties{"org.freedesktop.DBus.Properties"};

inline constexpr QLatin1StringView kPortal{"org.freedesktop.portal.Desktop"};
inline constexpr QLatin1StringView kPortalPath{"/org/freedesktop/portal/desktop"};
inline constexpr QLatin1StringView kPortalSettings{"org.freedesktop.portal.Settings"};
inline constexpr QLatin1StringView kPortalRequest{"org.freedesktop.portal.Request"};

/// Service and interface in one.
inline constexpr QLatin1StringView kNotifications{"org.freedesktop.Notifications"};
inline constexpr QLatin1StringView kNotificationsPath{"/org/freedesktop/Notifications"};

}  // namespace tarnwick::bus
