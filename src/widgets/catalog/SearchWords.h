#pragma once

#include <QString>

namespace tarnwick {

struct WidgetDefinition;

/// What people call a kind besides its name, in the user's language: words between blanks for a search to look into.
QString searchWords(const WidgetDefinition& definition);

}  // namespace tarnwick
