#include <gtest/gtest.h>

#include <array>
#include <random>

#include "base/DomainError.h"
#include "config/Persistence.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr int kDocuments = 100'000;

/// A small document that has a value of every kind.
DockConfiguration original() {
  DockConfiguration c;
  c.profiles = {{QUuid::createUuid(), u"Wörk"_s, {}}, {QUuid::createUuid(), u"Home"_s, {}}};
  c.profiles[0].widgets = {{QUuid::createUuid(), u"cpu"_s, u"T"_s, {{u"minutes"_s, u"25"_s}}},
                           {QUuid::createUuid(), u"notesLatest"_s, {}, {{u"text"_s, u"a\n\"b\""_s}}}};
  c.profiles[1].widgets = {{QUuid::createUuid(), u"ram"_s, {}, {}}};
  c.floatingPositions.insert(u"D"_s, {1.5, -2});
  c.todos = {{QUuid::createUuid(), u"milk"_s, true}};
  c.shelf = {u"/a"_s};
  c.tileBorders = true;
  c.desktop.emplace().profileRules = {
      {QUuid::createUuid(), c.profiles[0].id, ProfileRule::Trigger::Schedule, true, {1, 2}, 0, 60, {}}};
  return c;
}

/// Spoils documents. What it does follows from its seed alone.
class Mutator {
 public:
  explicit Mutator(unsigned seed) : random_(seed) {}

  QByteArray spoil(QByteArray json) {
    for (size_t rounds = 1 + below(3); rounds > 0; --rounds) spoilOnce(json);
    return json;
  }

 private:
  // Not std::uniform_int_distribution, whose results differ between libraries.
  size_t below(size_t limit) { return random_() % limit; }
  qsizetype place(const QByteArray& json) {
    return static_cast<qsizetype>(below(static_cast<size_t>(json.size()) + 1));
  }

  QByteArray token() {
    // clang-format off
    static const std::array<QByteArray, 24> tokens{
        "null", "true", "0", "-1", "-0.0", "1e308", "1e309", "-1e999", "99999999999999999999", "0.1e-400", "4294967296",
        "\"\"", "\"x\"", "\"1e12\"", "\"\\ud800\"", "\"\\u0000\"", "\"\xff\"", "\"\xed\xa0\x80\"", "\"\xc0\x80\"",
        "[]", "[1,2]", "[[[]]]", "{}", "{\"token\":\"x\"}"};
    // clang-format on
    if (below(40) == 0) return QByteArray(2000, below(2) ? '[' : '{');
    return tokens[below(tokens.size())];
  }

  /// From a colon or a list's element to where that value ends, roughly: enough to swap a value's type and stay JSON.
  void swapValue(QByteArray& json) {
    const qsizetype colon = json.indexOf(':', place(json));
    if (colon < 0) return;
    qsizetype end = colon + 1;
    bool quoted = false;
    int depth = 0;
    for (; end < json.size(); ++end) {
      const char c = json[end];
      if (c == '"' && json[end - 1] != '\\') quoted = !quoted;
      if (quoted) continue;
      if (c == '{' || c == '[') ++depth;
      if (c == '}' || c == ']') --depth;
      if (depth < 0 || (depth == 0 && c == ',')) break;
    }
    json.replace(colon + 1, end - colon - 1, token());
  }

  void doubleKey(QByteArray& json) {
    const qsizetype brace = json.indexOf('{', place(json));
    const qsizetype from = json.indexOf('"', place(json));
    const qsizetype to = from < 0 ? -1 : json.indexOf('"', from + 1);
    if (brace < 0 || to < 0) return;
    json.insert(brace + 1, json.sliced(from, to - from + 1) + ':' + token() + ',');
  }

  void spoilOnce(QByteArray& json) {
    if (json.isEmpty()) return;
    const qsizetype at = place(json);
    const auto length = [this](size_t most) { return static_cast<qsizetype>(below(most)); };
    const size_t way = below(8);
    if (way == 0 && at < json.size()) json[at] = static_cast<char>(json[at] ^ (1 << below(8)));
    if (way == 1) json.insert(at, token());
    if (way == 2) json.remove(at, length(30));
    if (way == 3) json.insert(at, json.mid(place(json), length(60)));
    if (way == 4) json.truncate(at);
    if (way == 5) doubleKey(json);
    if (way > 5) swapValue(json);
  }

  std::mt19937 random_;
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
  const QByteArray written = Persistence::encode(*read);
  EXPECT_EQ(Persistence::decode(written), *read) << json.constData();
  return true;
}

TEST(Fuzz, SettingsAreAcceptedWholeOrRefusedWithASentence) {
  const QByteArray json = RecordCodec::toBytes(original());
  Mutator mutator(20240229);
  int accepted = 0;
  for (int i = 0; i < kDocuments && !HasFailure(); ++i) accepted += accepts(mutator.spoil(json)) ? 1 : 0;
  // Both ways must have been taken often, or the mutations are too mild or too wild to tell anything.
  EXPECT_GT(accepted, kDocuments / 50);
  EXPECT_LT(accepted, kDocuments / 2);
}

}  // namespace
}  // namespace tarnwick
