#include <cmath>
#include <limits>

#include "base/RecordCodec.h"
#include "base/UuidText.h"
#include "support/FileTest.h"

namespace tarnwick {

enum class Colour { Red, Blue };

template <>
struct RawValues<Colour> {
  static constexpr std::array<RawValue<Colour>, 2> table{{{Colour::Red, "red"}, {Colour::Blue, "deep blue"}}};
};

namespace {

using namespace Qt::StringLiterals;

struct Inner {
  QString name;
  QList<int> days;
  static constexpr auto fields() {
    return std::tuple(field::required("name", &Inner::name), field::required("days", &Inner::days));
  }
  bool operator==(const Inner&) const = default;
};

struct Outer {
  bool on = false;
  int whole = 0;
  double real = 0;
  QUuid id;
  Colour colour = Colour::Red;
  QList<Inner> inner;
  QMap<QString, QList<double>> places;
  std::optional<QString> note;
  std::optional<Inner> extra;
  quint32 mask = 7;
  QStringList words{u"one"_s};

  static constexpr auto fields() {
    using O = Outer;
    return std::tuple(
        field::required("on", &O::on), field::required("whole", &O::whole), field::required("real", &O::real),
        field::required("id", &O::id), field::required("colour", &O::colour), field::required("inner", &O::inner),
        field::required("places", &O::places), field::optional("note", &O::note), field::optional("extra", &O::extra),
        field::defaulted("mask", &O::mask), field::defaulted("words", &O::words));
  }
  bool operator==(const Outer&) const = default;
};

const QByteArray kFull = R"({
  "on": true, "whole": -3, "real": 0.1, "id": "0a1B2c3d-0000-4000-8000-00000000ABCD", "colour": "deep blue",
  "inner": [{"name": "a", "days": [1, 7]}, {"name": "", "days": []}],
  "places": {"B": [1e3, -0.5], "A": []}, "note": "n", "extra": {"name": "e", "days": [2]},
  "mask": 4294967295, "words": []
})";

QByteArray with(const char* old, const char* replacement) {
  QByteArray json = kFull;
  EXPECT_TRUE(json.contains(old)) << old;
  return json.replace(old, replacement);
}

Outer decoded(const QByteArray& json) { return RecordCodec::fromBytes<Outer>(json); }

TEST(RecordCodec, CarriesEveryTypeBothWays) {
  const auto outer = decoded(kFull);
  EXPECT_EQ(outer.inner, (QList<Inner>{{u"a"_s, {1, 7}}, {u""_s, {}}}));
  EXPECT_EQ(outer.places, (QMap<QString, QList<double>>{{u"A"_s, {}}, {u"B"_s, {1000, -0.5}}}));
  EXPECT_EQ(outer.extra, (Inner{u"e"_s, {2}}));
  EXPECT_TRUE(outer.colour == Colour::Blue && outer.words.isEmpty());
  EXPECT_EQ(RecordCodec::toBytes(outer),
            R"({"colour":"deep blue","extra":{"days":[2],"name":"e"},"id":"0A1B2C3D-0000-4000-8000-00000000ABCD",)"
            R"("inner":[{"days":[1,7],"name":"a"},{"days":[],"name":""}],"mask":4294967295,"note":"n","on":true,)"
            R"("places":{"A":[],"B":[1000,-0.5]},"real":0.1,"whole":-3,"words":[]})");
}

TEST(RecordCodec, TellsOptionalAndDefaultedKeysApart) {
  EXPECT_FALSE(decoded(with(R"(, "note": "n")", "")).note || decoded(with(R"("note": "n")", R"("note": null)")).note);
  for (const char* words : {"", R"(, "words": null)"}) {
    EXPECT_EQ(decoded(with(R"(, "words": [])", words)).words, QStringList{u"one"_s});
  }
  const QByteArray bare = RecordCodec::toBytes(Outer());
  EXPECT_FALSE(bare.contains("note") || bare.contains("extra")) << bare.constData();
  EXPECT_TRUE(bare.contains(R"("mask":7)"));
}

TEST(RecordCodec, NamesTheKeyAtFault) {
  const struct {
    QByteArray json;
    const char* message;
  } cases[] = {
      {with(R"("on": true, )", ""), "The value of “on” is missing."},
      {with(R"("on": true)", R"("on": null)"), "The value of “on” is not true or false."},
      {with(R"("name": "a", )", ""), "The value of “inner[0].name” is missing."},
      {with("[1, 7]", "[1, 7.5]"), "The value of “inner[0].days[1]” is not a whole number in its range."},
      {with("[1, 7]", "{}"), "The value of “inner[0].days” is not a list."},
      {with("-3", "2147483648"), "The value of “whole” is not a whole number in its range."},
      {with("-3", "true"), "The value of “whole” is not a whole number in its range."},
      {with("4294967295", "4294967296"), "The value of “mask” is not a whole number in its range."},
      {with("4294967295", "-1"), "The value of “mask” is not a whole number in its range."},
      {with("[1e3, -0.5]", R"([1e3, "x"])"), "The value of “places.B[1]” is not a number."},
      {with("deep blue", "Red"), "The value of “colour” is unknown."},
      {with(R"("n")", "5"), "The value of “note” is not a text."},
      {with(R"("extra": {)", R"("extra": [], "x": {)"), "The value of “extra” is not an object."},
      {with("0a1B2c3d-", "{0a1B2c3d-"), "The value of “id” is not an identity."},
      {"[]", "The document is not in the expected format."},
  };
  for (const auto& c : cases) EXPECT_EQ(failureOf([&] { decoded(c.json); }), c.message);
  for (const QByteArray& json : {QByteArray(), QByteArray("{"), QByteArray("5"), QByteArray("{\"a\":\"\xff\"}"),
                                 QByteArray("{\"a\":1e999}"), QByteArray(100'000, '['), kFull + "x"}) {
    EXPECT_NE(failureOf([&] { decoded(json); }), "") << json.left(40).constData();
  }
}

TEST(RecordCodec, WritesOnlyWhatItCanRead) {
  Outer outer;
  outer.places = {{u"d"_s, {0, std::numeric_limits<double>::infinity()}}};
  EXPECT_EQ(failureOf([&] { RecordCodec::toBytes(outer); }), "The value of “places.d[1]” is not a number.");

  const auto halves = decoded(with(R"("note": "n")", R"("note": "a\ud800b\u0000")"));
  EXPECT_EQ(halves.note, u"a?b"_s + QChar(u'\0'));
  EXPECT_EQ(decoded(RecordCodec::toBytes(halves)), halves);
}

TEST(UuidText, ReadsOnlyTheBareForm) {
  EXPECT_EQ(UuidText::read(u"0a1b2c3d-4E5f-4000-8000-00000000ABcd"),
            QUuid(u"{0a1b2c3d-4e5f-4000-8000-00000000abcd}"_s));
  for (const auto text : {u"", u"{0a1b2c3d-4e5f-4000-8000-00000000abcd}", u"0a1b2c3d4e5f40008000-00000000abcd",
                          u"0a1b2c3d-4e5f-4000-8000-00000000abc", u"0a1b2c3d-4e5f-4000-8000-00000000abcg",
                          u"0a1b2c3d-4e5f-4000-800-000000000abcd", u"0a1b2c3d-4e5f-4000-8000-00000000abc١"}) {
    EXPECT_FALSE(UuidText::read(text)) << QString::fromUtf16(text).toStdString();
  }
}

}  // namespace
}  // namespace tarnwick
