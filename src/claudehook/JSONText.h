#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// A JSON text taken apart so that it can be put together again with every value as it was written: numbers keep their
/// digits and texts their escapes. Standard library alone, for the hook program has no toolkit.
struct JSONNode {
  enum class Kind { Null, Boolean, Number, Text, Array, Object };
  struct Member;

  Kind kind = Kind::Null;
  std::string written;  ///< Of what is no array and no object: as it stands in the source, quotes included.
  std::vector<JSONNode> items;
  std::vector<Member> members;  ///< In the order of the source.

  static JSONNode text(std::string_view value);
  static JSONNode object() { return {Kind::Object, {}, {}, {}}; }
  static JSONNode array() { return {Kind::Array, {}, {}, {}}; }

  /// Null where it is no object or has no such member.
  const JSONNode* find(std::string_view name) const;
  /// Puts a member in the place of the one of that name, or behind the last.
  void set(std::string_view name, JSONNode value);
  void remove(std::string_view name);
  /// What a text says, in UTF-8; absent for every other kind. A half of a surrogate pair becomes U+FFFD.
  std::optional<std::string> value() const;
  /// A number as the nearest one that can be had; absent for every other kind.
  std::optional<double> number() const;
};

struct JSONNode::Member {
  std::string name;     ///< What it says.
  std::string written;  ///< How it is written, quotes included.
  JSONNode node;
};

struct JSONLimits {
  int depth = 512;     ///< Of arrays and objects in each other; what is deeper is refused.
  int kept = 512;      ///< What is deeper than this is checked and left out: its array or object stays empty.
  bool unique = true;  ///< Whether an object that names a member twice is refused.
};

/// Absent for everything that is not exactly one JSON value in valid UTF-8 with white space around it.
std::optional<JSONNode> parseJSON(std::string_view text, const JSONLimits& limits = {});

/// In lines, two blanks for each depth, the members of objects sorted by their names, with a line break at the end.
std::string prettyJSON(const JSONNode& node);

/// A text as JSON writes it, quotes included.
std::string quotedJSON(std::string_view text);

}  // namespace tarnwick
