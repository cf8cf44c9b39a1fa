#pragma once

#include <QList>
#include <QString>
#include <QUrl>

namespace tarnwick {

/// What a start is about, beside the application itself.
struct LaunchRequest {
  QList<QUrl> urls{};         ///< Files and addresses to open.
  QString action{};           ///< The id of one of the entry's actions; empty for the application itself.
  QString startupId{};        ///< Of a startup notification that was announced already; otherwise one is made up.
  QString activationToken{};  ///< With which a Wayland compositor lets the new window come to the front.
  quint32 userTime = 0;       ///< The X server's time of the click or key that caused it; 0 where unknown.
};

}  // namespace tarnwick
