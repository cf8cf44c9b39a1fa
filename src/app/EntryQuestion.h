#pragma once

#include "apps/TrustedEntries.h"
#include "views/panels/QuestionPane.h"

namespace tarnwick {

/// Asks whether a desktop entry from outside the folders of applications may run, with what would run.
Question entryQuestion(const ForeignEntry& entry, const QString& action);

}  // namespace tarnwick
