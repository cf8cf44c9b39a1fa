#pragma once

#include <QString>
#include <memory>
#include <optional>

#include "windows/ports/WindowFrames.h"

namespace tarnwick {

/// The adapter by which windows of other programs are moved on this desktop. Needs no application object; belongs to
/// the thread that asks.
std::unique_ptr<WindowFrames> makeWindowFrames();

/// Puts back the windows that a run on this data folder moved, and says what went wrong on standard error.
void putWindowsBack(const QString& directory);

/// The mode of the command line that the guardian uses where nothing else is to be given back. Returns the process's
/// status, always 0.
int restoreWindowsAndExit(int argc, char** argv, const std::optional<QString>& directory);

}  // namespace tarnwick
