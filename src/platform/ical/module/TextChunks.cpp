#include "platform/ical/module/TextChunks.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace tarnwick {
namespace {

// No sane part of a calendar is larger; what is may be an attachment or an attack.
constexpr std::size_t kLargestChunk = std::size_t{2} << 20;

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

/// Whether a line is this property, with or without parameters.
bool isProperty(std::string_view line, std::string_view name) {
  if (line.size() <= name.size() || (line[name.size()] != ':' && line[name.size()] != ';')) return false;
  return std::equal(name.begin(), name.end(), line.begin(), [](char a, char b) { return a == upper(b); });
}

std::string_view valueOf(std::string_view line) {
  // A colon within quotes belongs to a parameter.
  bool isQuoted = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line[at] == '"') isQuoted = !isQuoted;
    if (line[at] == ':' && !isQuoted) return line.substr(at + 1);
  }
  return {};
}

bool isValue(std::string_view line, std::string_view wanted) {
  std::string_view value = valueOf(line);
  while (!value.empty() && value.back() == ' ') value.remove_suffix(1);
  return std::ranges::equal(value, wanted, [](char a, char b) { return upper(a) == b; });
}

int dayOf(std::string_view line) {
  constexpr std::size_t kDigits = 8;
  const auto value = valueOf(line);
  int day = 0;
  if (value.size() < kDigits) return 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + kDigits, day);
  return error == std::errc() && end == value.data() + kDigits && day > 0 ? day : 0;
}

void note(std::string_view line, TextChunks::Chunk& chunk) {
  // One letter decides about most lines.
  switch (upper(line.front())) {
    case 'D':
      if (isProperty(line, "DTSTART")) chunk.start = dayOf(line);
      if (isProperty(line, "DTEND") || isProperty(line, "DUE")) chunk.end = dayOf(line);
      if (isProperty(line, "DURATION")) chunk.hasLength = true;
      break;
    case 'R':
      if (isProperty(line, "RRULE") || isProperty(line, "RDATE")) chunk.isSeries = true;
      if (isProperty(line, "RECURRENCE-ID")) chunk.isException = true;
      break;
    case 'U':
      if (isProperty(line, "UID")) chunk.uid = valueOf(line);
      break;
    case 'C':
      if (isProperty(line, "COMPLETED")) chunk.completed = dayOf(line);
      break;
    case 'S':
      if (isProperty(line, "STATUS")) chunk.isDone = isValue(line, "COMPLETED");
      break;
    default:
      break;
  }
}

TextChunks::Kind kindOf(std::string_view beginLine) {
  if (isValue(beginLine, "VEVENT")) return TextChunks::Kind::Event;
  if (isValue(beginLine, "VTODO")) return TextChunks::Kind::Todo;
  if (isValue(beginLine, "VTIMEZONE")) return TextChunks::Kind::Zone;
  return TextChunks::Kind::Other;
}

void noteCalendar(std::string_view line, TextChunks& into) {
  if (isProperty(line, "X-WR-CALNAME") || (isProperty(line, "NAME") && into.name.empty())) into.name = valueOf(line);
  if (isProperty(line, "X-APPLE-CALENDAR-COLOR") || (isProperty(line, "COLOR") && into.colour.empty())) {
    into.colour = valueOf(line);
  }
}

}  // namespace

TextChunks TextChunks::of(std::string_view text) {
  TextChunks found;
  int depth = 0;  // 1 within the calendar, 2 within a part of it
  std::size_t begin = 0;
  bool isUid = false;
  Chunk chunk;
  for (std::size_t at = 0; at < text.size();) {
    const auto newLine = text.find('\n', at);
    const std::size_t next = newLine == std::string_view::npos ? text.size() : newLine + 1;
    std::string_view line = text.substr(at, next - at);
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.remove_suffix(1);
    const std::size_t lineStart = std::exchange(at, next);
    if (line.empty()) continue;
    if (line.front() == ' ' || line.front() == '\t') {
      // Long identities often differ only in what was folded onto the next line.
      if (isUid) chunk.uid += line.substr(1);
      continue;
    }
    isUid = depth == 2 && isProperty(line, "UID");

    if (isProperty(line, "BEGIN")) {
      if (isValue(line, "VCALENDAR")) {
        // A calendar within a part means that the part before was cut off; several calendars may follow each other.
        found.isCutOff = found.isCutOff || depth > 1;
        found.isCalendar = true;
        depth = 1;
      } else if (depth > 0 && ++depth == 2) {
        chunk = {};
        chunk.kind = kindOf(line);
        begin = lineStart;
      }
    } else if (isProperty(line, "END")) {
      const bool isOuter = isValue(line, "VCALENDAR");
      // An end without its beginning, or the calendar's within a part.
      found.isCutOff = found.isCutOff || (depth > 0 && isOuter != (depth == 1));
      if (depth == 2 && !isOuter) {
        chunk.text = text.substr(begin, next - begin);
        const bool isTooLarge = chunk.text.size() > kLargestChunk;
        found.isCutOff = found.isCutOff || isTooLarge;
        if (!isTooLarge) found.chunks.append(chunk);
      }
      if (isOuter) depth = 0;
      if (depth > 1) --depth;
    } else if (depth == 2) {
      note(line, chunk);
    } else if (depth == 1) {
      noteCalendar(line, found);
    }
  }
  found.isCutOff = found.isCutOff || depth > 1;
  return found;
}

}  // namespace tarnwick
