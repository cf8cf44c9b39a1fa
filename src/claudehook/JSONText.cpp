#include "claudehook/JSONText.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace tarnwick {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendUtf8(std::string& out, char32_t code) {
  const auto byte = [&out](char32_t value) { out.push_back(static_cast<char>(static_cast<unsigned char>(value))); };
  if (code < 0x80) {
    byte(code);
  } else if (code < 0x800) {
    byte(0xC0 | (code >> 6));
    byte(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    byte(0xE0 | (code >> 12));
    byte(0x80 | ((code >> 6) & 0x3F));
    byte(0x80 | (code & 0x3F));
  } else {
    byte(0xF0 | (code >> 18));
    byte(0x80 | ((code >> 12) & 0x3F));
    byte(0x80 | ((code >> 6) & 0x3F));
    byte(0x80 | (code & 0x3F));
  }
}

bool isSurrogate(char32_t code) { return code >= 0xD800 && code <= 0xDFFF; }

/// How many bytes of valid UTF-8 the character at the beginning has; 0 where it is none.
std::size_t utf8Length(std::string_view text) {
  const auto at = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = at(0);
  if (first < 0x80) return 1;
  const std::size_t length = first >= 0xF0 && first <= 0xF4 ? 4 : first >= 0xE0 ? 3 : first >= 0xC2 ? 2 : 0;
  if (first > 0xF4 || length == 0 || text.size() < length) return 0;
  char32_t code = first & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((at(i) & 0xC0) != 0x80) return 0;
    code = (code << 6) | (at(i) & 0x3F);
  }
  constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
  return code < least[length] || isSurrogate(code) || code > 0x10FFFF ? 0 : length;
}

/// The value of four hexadecimal digits; absent where there are none.
std::optional<char32_t> hexOf(std::string_view digits) {
  if (digits.size() < 4) return std::nullopt;
  char32_t code = 0;
  for (const char digit : digits.substr(0, 4)) {
    const char lower = static_cast<char>(digit | 0x20);
    if (digit >= '0' && digit <= '9')
      code = code * 16 + static_cast<char32_t>(digit - '0');
    else if (lower >= 'a' && lower <= 'f')
      code = code * 16 + static_cast<char32_t>(lower - 'a' + 10);
    else
      return std::nullopt;
  }
  return code;
}

/// What a text says that was found to be written well.
std::string said(std::string_view written) {
  std::string out;
  std::string_view rest = written.substr(1, written.size() - 2);
  while (!rest.empty()) {
    if (rest.front() != '\\') {
      out.push_back(rest.front());
      rest.remove_prefix(1);
      continue;
    }
    const char escape = rest[1];
    rest.remove_prefix(2);
    switch (escape) {
      case 'b':
        out.push_back('\b');
        break;
      case 'f':
        out.push_back('\f');
        break;
      case 'n':
        out.push_back('\n');
        break;
      case 'r':
        out.push_back('\r');
        break;
      case 't':
        out.push_back('\t');
        break;
      case 'u': {
        char32_t code = hexOf(rest).value_or(kReplacement);
        rest.remove_prefix(4);
        if (code >= 0xD800 && code < 0xDC00 && rest.starts_with("\\u")) {
          const char32_t low = hexOf(rest.substr(2)).value_or(0);
          if (low >= 0xDC00 && low <= 0xDFFF) {
            code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
            rest.remove_prefix(6);
          }
        }
        appendUtf8(out, isSurrogate(code) ? kReplacement : code);
        break;
      }
      default:
        out.push_back(escape);
    }
  }
  return out;
}

class Parser {
 public:
  Parser(std::string_view text, const JSONLimits& limits) : rest_(text), limits_(limits) {}

  std::optional<JSONNode> whole() {
    JSONNode node;
    skipBlanks();
    if (!read(node, 0)) return std::nullopt;
    skipBlanks();
    return rest_.empty() ? std::optional(std::move(node)) : std::nullopt;
  }

 private:
  void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size())); }
  bool take(char wanted) {
    if (rest_.empty() || rest_.front() != wanted) return false;
    rest_.remove_prefix(1);
    return true;
  }
  std::string_view cut(std::size_t length) {
    const std::string_view part = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return part;
  }

  bool read(JSONNode& node, int depth) {
    if (rest_.empty()) return false;
    switch (rest_.front()) {
      case '{':
        return depth < limits_.depth && readObject(node, depth);
      case '[':
        return depth < limits_.depth && readArray(node, depth);
      case '"':
        node.kind = JSONNode::Kind::Text;
        return readText(node.written);
      case 't':
        return readWord("true", JSONNode::Kind::Boolean, node);
      case 'f':
        return readWord("false", JSONNode::Kind::Boolean, node);
      case 'n':
        return readWord("null", JSONNode::Kind::Null, node);
      default:
        return readNumber(node);
    }
  }

  bool readWord(std::string_view word, JSONNode::Kind kind, JSONNode& node) {
    if (!rest_.starts_with(word)) return false;
    node.kind = kind;
    node.written = cut(word.size());
    return true;
  }

  bool readNumber(JSONNode& node) {
    std::size_t at = 0;
    const auto digits = [&] {
      const std::size_t before = at;
      while (at < rest_.size() && rest_[at] >= '0' && rest_[at] <= '9') ++at;
      return at - before;
    };
    const auto is = [&](char sign) { return at < rest_.size() && rest_[at] == sign; };
    if (is('-')) ++at;
    const bool zero = is('0');
    const std::size_t whole = digits();
    if (whole == 0 || (zero && whole > 1)) return false;
    if (is('.')) {
      ++at;
      if (digits() == 0) return false;
    }
    if (is('e') || is('E')) {
      ++at;
      if (is('+') || is('-')) ++at;
      if (digits() == 0) return false;
    }
    node.kind = JSONNode::Kind::Number;
    node.written = cut(at);
    return true;
  }

  bool readText(std::string& written) {
    std::size_t at = 1;
    while (at < rest_.size() && rest_[at] != '"') {
      if (static_cast<unsigned char>(rest_[at]) < 0x20) return false;
      if (rest_[at] == '\\') {
        if (at + 1 >= rest_.size()) return false;
        const char escape = rest_[at + 1];
        if (std::string_view("\"\\/bfnrtu").find(escape) == std::string_view::npos) return false;
        if (escape == 'u' && !hexOf(rest_.substr(at + 2))) return false;
        at += escape == 'u' ? 6 : 2;
        continue;
      }
      const std::size_t length = utf8Length(rest_.substr(at));
      if (length == 0) return false;
      at += length;
    }
    if (at >= rest_.size()) return false;
    written = cut(at + 1);
    return true;
  }

  bool readArray(JSONNode& node, int depth) {
    node.kind = JSONNode::Kind::Array;
    take('[');
    skipBlanks();
    if (take(']')) return true;
    do {
      skipBlanks();
      JSONNode item;
      if (!read(item, depth + 1)) return false;
      if (depth < limits_.kept) node.items.push_back(std::move(item));
      skipBlanks();
    } while (take(','));
    return take(']');
  }

  bool readObject(JSONNode& node, int depth) {
    node.kind = JSONNode::Kind::Object;
    take('{');
    skipBlanks();
    if (take('}')) return true;
    do {
      skipBlanks();
      JSONNode::Member member;
      if (rest_.empty() || rest_.front() != '"' || !readText(member.written)) return false;
      member.name = said(member.written);
      skipBlanks();
      if (!take(':')) return false;
      skipBlanks();
      if (!read(member.node, depth + 1)) return false;
      if (depth < limits_.kept) node.members.push_back(std::move(member));
      skipBlanks();
    } while (take(','));
    return take('}') && (!limits_.unique || isUnique(node));
  }

  static bool isUnique(const JSONNode& node) {
    std::vector<std::string_view> names;
    names.reserve(node.members.size());
    for (const JSONNode::Member& member : node.members) names.emplace_back(member.name);
    std::ranges::sort(names);
    return std::ranges::adjacent_find(names) == names.end();
  }

  std::string_view rest_;
  JSONLimits limits_;
};

void write(const JSONNode& node, std::size_t depth, std::string& out) {
  const auto line = [&out](std::size_t deep) {
    out.push_back('\n');
    out.append(deep * 2, ' ');
  };
  if (node.kind == JSONNode::Kind::Array) {
    if (node.items.empty()) {
      out += "[]";
      return;
    }
    out.push_back('[');
    for (const JSONNode& item : node.items) {
      if (&item != &node.items.front()) out.push_back(',');
      line(depth + 1);
      write(item, depth + 1, out);
    }
    line(depth);
    out.push_back(']');
    return;
  }
  if (node.kind != JSONNode::Kind::Object) {
    out += node.written;
    return;
  }
  if (node.members.empty()) {
    out += "{}";
    return;
  }
  std::vector<const JSONNode::Member*> sorted;
  sorted.reserve(node.members.size());
  for (const JSONNode::Member& member : node.members) sorted.push_back(&member);
  std::ranges::sort(sorted, {}, [](const JSONNode::Member* member) -> const std::string& { return member->name; });
  out.push_back('{');
  for (const JSONNode::Member* member : sorted) {
    if (member != sorted.front()) out.push_back(',');
    line(depth + 1);
    out += member->written;
    out += ": ";
    write(member->node, depth + 1, out);
  }
  line(depth);
  out.push_back('}');
}

}  // namespace

JSONNode JSONNode::text(std::string_view value) { return {Kind::Text, quotedJSON(value), {}, {}}; }

const JSONNode* JSONNode::find(std::string_view name) const {
  const auto found = std::ranges::find(members, name, &Member::name);
  return found == members.end() ? nullptr : &found->node;
}

void JSONNode::set(std::string_view name, JSONNode value) {
  const auto found = std::ranges::find(members, name, &Member::name);
  if (found != members.end())
    found->node = std::move(value);
  else
    members.push_back({std::string(name), quotedJSON(name), std::move(value)});
}

void JSONNode::remove(std::string_view name) {
  std::erase_if(members, [name](const Member& member) { return member.name == name; });
}

std::optional<std::string> JSONNode::value() const {
  return kind == Kind::Text ? std::optional(said(written)) : std::nullopt;
}

std::optional<double> JSONNode::number() const {
  return kind == Kind::Number ? std::optional(std::strtod(written.c_str(), nullptr)) : std::nullopt;
}

std::optional<JSONNode> parseJSON(std::string_view text, const JSONLimits& limits) {
  return Parser(text, limits).whole();
}

std::string prettyJSON(const JSONNode& node) {
  std::string out;
  write(node, 0, out);
  out.push_back('\n');
  return out;
}

std::string quotedJSON(std::string_view text) {
  std::string out = "\"";
  for (const char letter : text) {
    const auto byte = static_cast<unsigned char>(letter);
    if (letter == '"' || letter == '\\') {
      out.push_back('\\');
      out.push_back(letter);
    } else if (byte < 0x20) {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\u%04x", byte);
      out += escaped;
    } else {
      out.push_back(letter);
    }
  }
  out.push_back('"');
  return out;
}

}  // namespace tarnwick
