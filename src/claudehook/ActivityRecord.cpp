#include "claudehook/ActivityRecord.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "claudehook/Digest.h"
#include "claudehook/JSONText.h"

namespace tarnwick {

namespace {

constexpr std::size_t kDigestLength = 64;
constexpr std::string_view kEnding = ".json";

bool isDigest(std::string_view text) {
  return text.size() == kDigestLength && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/// Code points: what a user perceives as one character may have any number of them, and the file must stay small.
std::string beginning(std::string text, std::size_t most) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool starts = (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80;
    if (starts && ++count > most) return text.substr(0, at);
  }
  return text;
}

std::optional<std::string> textOf(const JSONNode& object, std::string_view name) {
  const JSONNode* node = object.find(name);
  return node ? node->value() : std::nullopt;
}

bool isState(std::string_view state) {
  return std::ranges::any_of(kClaudeActivityStates, [state](const auto& each) { return each.second == state; });
}

}  // namespace

std::optional<ClaudeActivityRecord> ClaudeActivityRecord::ofEvent(std::string_view json, double now) {
  // Only the event's own members are looked at; of two of one name the first counts.
  const auto event = parseJSON(json, {.depth = 512, .kept = 1, .unique = false});
  if (!event || event->kind != JSONNode::Kind::Object) return std::nullopt;
  const auto session = textOf(*event, "session_id");
  const auto name = textOf(*event, "hook_event_name");
  if (!session || session->empty() || !name) return std::nullopt;
  const auto state = std::ranges::find(kClaudeActivityStates, *name, [](const auto& each) { return each.first; });
  if (state == kClaudeActivityStates.end()) return std::nullopt;
  return ClaudeActivityRecord{sha256Hex(*session), std::string(state->second),
                              beginning(textOf(*event, "tool_name").value_or(""), kMostToolCharacters),
                              now - kReferenceDate};
}

std::optional<ClaudeActivityRecord> ClaudeActivityRecord::decoded(std::string_view json) {
  if (json.size() > kMostFileBytes) return std::nullopt;
  const auto object = parseJSON(json, {.depth = 8, .kept = 1, .unique = true});
  if (!object || object->kind != JSONNode::Kind::Object) return std::nullopt;
  const auto session = textOf(*object, "session");
  const auto state = textOf(*object, "state");
  auto tool = textOf(*object, "tool");
  const JSONNode* time = object->find("time");
  const double seconds = time ? time->number().value_or(NAN) : NAN;
  if (!session || !isDigest(*session) || !state || !isState(*state) || !tool) return std::nullopt;
  if (!std::isfinite(seconds)) return std::nullopt;
  return ClaudeActivityRecord{*session, *state, beginning(*std::move(tool), kMostToolCharacters), seconds};
}

std::string ClaudeActivityRecord::encoded() const {
  char seconds[64];
  std::snprintf(seconds, sizeof seconds, "%.6f", time);
  return "{\"session\":" + quotedJSON(session) + ",\"state\":" + quotedJSON(state) + ",\"time\":" + seconds +
         ",\"tool\":" + quotedJSON(tool) + "}";
}

bool ClaudeActivityRecord::isFileName(std::string_view name) {
  return name.ends_with(kEnding) && isDigest(name.substr(0, name.size() - kEnding.size()));
}

}  // namespace tarnwick
