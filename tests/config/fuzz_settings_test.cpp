#include <gtest/gtest.h>

#include <array>
#include <random>

#include "base/DomainError.h"
#include "config/Persistence.h"
#include "config/document.h"

namespace tarnwick {
namespace {

constexpr int kDocuments = 100'000;

/// Spoils documents. What it does follows from its seed alone.
class Mutator {
 public:
  QByteArray spoil(QByteArray json) {
    for (size_t rounds = 1 + below(3); rounds > 0; --rounds) spoilOnce(json);
    return json;
  }

 private:
  // Not std::uniform_int_distribution, whose results differ between libraries.
  size_t below(size_t limit) { return random_() % limit; }
  qsizetype length(size_t most) { return static_cast<qsizetype>(below(most)); }
  qsizetype place(const QByteArray& json) { return length(static_cast<size_t>(json.size()) + 1); }

  QByteArray token() {
    // clang-format off
    static const std::array<QByteArray, 24> tokens{
        "null", "true", "0", "-1", "-0.0", "1e308", "1e309", "-1e999", "99999999999999999999", "0.1e-400", "4294967296",
        "\"\"", "\"x\"", "\"1e12\"", "\"\\ud800\"", "\"\\u0000\"", "\"\xff\"", "\"\xed\xa0\x80\"", "\"\xc0\x80\"",
        "[]", "[1,2]", "[[[]]]", "{}", "{\"token\":\"x\"}"};
    // clang-format on
    return below(40) == 0 ? QByteArray(2000, below(2) ? '[' : '{') : tokens[below(tokens.size())];
  }

  /// From a colon to where its value ends, roughly: enough to swap a value's type and stay JSON.
  void swapValue(QByteArray& json) {
    const qsizetype colon = json.indexOf(':', place(json));
    if (colon < 0) return;
    qsizetype end = colon + 1;
    bool quoted = false;
    for (int depth = 0; end < json.size(); ++end) {
      const char c = json[end];
      if (c == '"' && json[end - 1] != '\\') quoted = !quoted;
      if (quoted) continue;
      if (c == '{' || c == '[') ++depth;
      if (c == '}' || c == ']') --depth;
      if (depth < 0 || (depth == 0 && c == ',')) break;
    }
    json.replace(colon + 1, end - colon - 1, token());
  }

  void spoilOnce(QByteArray& json) {
    if (json.isEmpty()) return;
    const qsizetype at = place(json);
    const size_t way = below(8);
    if (way == 0 && at < json.size()) json[at] = static_cast<char>(json[at] ^ (1 << below(8)));
    if (way == 1) json.insert(at, token());
    if (way == 2) json.remove(at, length(30));
    if (way == 3) json.insert(at, json.mid(place(json), length(60)));
    if (way == 4) json.truncate(at);
    if (way > 4) swapValue(json);
  }

  std::mt19937 random_{20240229};
};

/// Whether a document is accepted. One that is must survive being written and read again.
bool accepts(const QByteArray& json) {
  std::optional<DockConfiguration> read;
  try {
    read = Persistence::decode(json);
  } catch (const DomainError& failure) {
    EXPECT_FALSE(failure.message().trimmed().isEmpty()) << json.constData();
    return false;
  }
  EXPECT_EQ(Persistence::decode(Persistence::encode(*read)), *read) << json.constData();
  return true;
}

TEST(Fuzz, SettingsAreAcceptedWholeOrRefusedWithASentence) {
  Mutator mutator;
  int accepted = 0;
  for (int i = 0; i < kDocuments && !HasFailure(); ++i) accepted += accepts(mutator.spoil(kDocument)) ? 1 : 0;
  // Both ways must have been taken often, or the mutations are too mild or too wild to tell anything.
  EXPECT_GT(accepted, kDocuments / 50);
  EXPECT_LT(accepted, kDocuments / 2);
}

}  // namespace
}  // namespace tarnwick
