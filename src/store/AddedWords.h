#pragma once

#include <QString>
#include <QUuid>

namespace tarnwick {

struct DockConfiguration;

/// Says of a widget by its name that it was added to a profile; who has but one calls that the dock.
QString addedSentence(const QString& name, const DockConfiguration& config, const QUuid& profile);

}  // namespace tarnwick
