#pragma once

#include <string>

namespace tarnwick {

/// What Claude Code starts at each event: reads the event from a descriptor until its end and leaves its record in the
/// folder, which is made where it is missing, for its owner alone. The record of the session's event before is
/// replaced at once. Says nothing and never fails: whatever goes wrong leaves no record, and the caller's other work is
/// never disturbed.
void recordClaudeEvent(int input, const std::string& folder);

/// The hook as a whole: the folder is what stands behind "--claude-hook" among the arguments.
void runClaudeHook(int count, const char* const* arguments);

}  // namespace tarnwick
