#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tarnwick {

/// What is kept of the latest event of one session of Claude Code: all that ever leaves it. One file each, named after
/// the session, in the activity folder.
struct ClaudeActivityRecord {
  std::string session;  ///< SHA-256 of the session's identifier, 64 lower-case hexadecimal digits.
  std::string state;    ///< A word of `claudeActivityStates`.
  std::string tool;     ///< At most kMostToolCharacters; empty where the event tells none.
  double time = 0;      ///< Of the event, in seconds since the beginning of 2001 (UTC).

  static constexpr std::size_t kMostToolCharacters = 100;
  static constexpr std::size_t kMostFileBytes = 9999;
  static constexpr double kReferenceDate = 978307200;  ///< That beginning, in seconds since 1970.

  bool operator==(const ClaudeActivityRecord&) const = default;

  /// Of what a hook gets to read; absent for what is no event of the table.
  static std::optional<ClaudeActivityRecord> ofEvent(std::string_view json, double now);
  /// Of a file's content; absent for what was not written by `encoded`.
  static std::optional<ClaudeActivityRecord> decoded(std::string_view json);
  std::string encoded() const;
  /// Whether a file of this name (without a folder) could be the session's.
  static bool isFileName(std::string_view name);
};

/// The events that the hooks subscribe to, sorted, and the state that each leads to.
inline constexpr std::array<std::pair<std::string_view, std::string_view>, 9> kClaudeActivityStates = {{
    {"PermissionRequest", "permission"},
    {"PostToolUse", "thinking"},
    {"PostToolUseFailure", "thinking"},
    {"PreToolUse", "tool"},
    {"SessionEnd", "ended"},
    {"SessionStart", "idle"},
    {"Stop", "idle"},
    {"StopFailure", "idle"},
    {"UserPromptSubmit", "thinking"},
}};

}  // namespace tarnwick
