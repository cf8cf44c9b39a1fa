#include <gtest/gtest.h>

#include <QRegularExpression>
#include <limits>
#include <numeric>

#include "desktop/Edid.h"
#include "desktop/PopupPlacement.h"
#include "desktop/ScreenIdentity.h"
#include "platform/x11/SandboxIdentity.h"
#include "platform/x11/X11Strut.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

void writeDescriptor(QByteArray& block, qsizetype start, char tag, const QByteArray& text) {
  block[start + 3] = tag;
  block.replace(start + 5, 13, text.leftJustified(13, ' ', true));
}

void seal(QByteArray& block) {
  block[127] = 0;
  const int sum = std::accumulate(block.begin(), block.end(), 0,
                                  [](int total, char byte) { return total + static_cast<quint8>(byte); });
  block[127] = static_cast<char>(256 - sum % 256);
}

// "TWK", product 0x1234, serial number 0x01020304.
QByteArray block(const QByteArray& serialText, const QByteArray& model) {
  QByteArray bytes(128, '\0');
  bytes.replace(0, 8, QByteArray("\x00\xff\xff\xff\xff\xff\xff\x00", 8));
  bytes.replace(8, 8, QByteArray("\x52\xeb\x34\x12\x04\x03\x02\x01", 8));
  if (!serialText.isEmpty()) writeDescriptor(bytes, 72, '\xff', serialText);
  if (!model.isEmpty()) writeDescriptor(bytes, 108, '\xfc', model);
  seal(bytes);
  return bytes;
}

TEST(Edid, ReadsWhoTheMonitorIs) {
  const Edid full{.maker = u"TWK"_s, .product = 0x1234, .serial = u"SN-77 A"_s, .model = u"Lake 27"_s};
  EXPECT_EQ(Edid::parse(block("SN-77 A\n", "Lake 27\n")), full);
  EXPECT_EQ(Edid::parse(block("SN-77 A\n", "Lake 27\n") + QByteArray(128, 'x')), full);
  Edid numbered = full;
  numbered.serial = u"16909060"_s;
  EXPECT_EQ(Edid::parse(block({}, "Lake 27\n")), numbered);
  EXPECT_EQ(Edid::parse(block("", "A name of 13."))->model, u"A name of 13."_s);

  // A detailed timing whose fourth byte happens to be a tag is no text.
  QByteArray timing = block({}, {});
  writeDescriptor(timing, 54, '\xff', "not a serial");
  timing[54] = 1;
  seal(timing);
  EXPECT_EQ(Edid::parse(timing)->serial, u"16909060"_s);
}

TEST(Edid, RefusesWhatIsDamaged) {
  const QByteArray good = block("1", "2");
  QByteArray noMaker = good;
  noMaker.replace(8, 2, QByteArray(2, '\0'));
  seal(noMaker);
  QByteArray flipped = good;
  flipped[12] = static_cast<char>(flipped[12] ^ 1);
  QByteArray headless = good;
  headless[0] = 1;
  seal(headless);
  for (const QByteArray& bytes : {QByteArray(), good.left(127), noMaker, flipped, headless}) {
    EXPECT_EQ(Edid::parse(bytes), std::nullopt);
  }
}

TEST(ScreenIdentity, IsTheMonitorsWhereverItIsPluggedIn) {
  const Edid lake{.maker = u"TWK"_s, .product = 1, .serial = u"9"_s, .model = u"Lake"_s};
  Edid other = lake;
  other.serial = u"10"_s;
  const auto assign = [](const QList<ScreenIdentity::Source>& sources) { return ScreenIdentity::assign(sources); };

  const QString alone = assign({{u"DP-1"_s, lake}})[0];
  EXPECT_TRUE(
      QRegularExpression(u"^[0-9A-F]{8}-[0-9A-F]{4}-5[0-9A-F]{3}-[0-9A-F]{4}-[0-9A-F]{12}$"_s).match(alone).hasMatch())
      << alone.toStdString();
  EXPECT_EQ(assign({{u"eDP-1"_s, {}}, {u"HDMI-2"_s, lake}}), (QStringList{u"eDP-1"_s, alone}));
  EXPECT_NE(assign({{u"DP-1"_s, other}})[0], alone);

  // A twin leaves the first one's identity alone, in whatever order they are given.
  const QStringList twins = assign({{u"DP-2"_s, lake}, {u"DP-1"_s, lake}});
  EXPECT_EQ(twins[1], alone);
  EXPECT_NE(twins[0], alone);
  EXPECT_EQ(assign({{u"DP-1"_s, lake}, {u"DP-2"_s, lake}}), (QStringList{twins[1], twins[0]}));
}

TEST(X11Strut, KeepsAnEdgeOfOneDisplay) {
  const QSize root(3200, 1200);
  const QRect left(0, 0, 1920, 1200);
  const QRect right(1920, 0, 1280, 1024);
  const QRect below(1920, 1024, 1280, 176);
  const auto bottom = X11Strut::along(Edge::Bottom, 60, right, {left, right}, root);
  EXPECT_EQ(bottom, (X11Strut{.bottom = 236, .bottomStart = 1920, .bottomEnd = 3199}));
  EXPECT_EQ(X11Strut::along(Edge::Top, 60, right, {left, right}, root),
            (X11Strut{.top = 60, .topStart = 1920, .topEnd = 3199}));
  EXPECT_EQ(X11Strut::along(Edge::Bottom, 60, right, {left, right, below}, root), std::nullopt);
  EXPECT_EQ(X11Strut::along(Edge::Top, 60, below, {left, right, below}, root), std::nullopt);
  EXPECT_EQ(X11Strut::along(Edge::Bottom, 0, right, {left, right}, root), std::nullopt);
}

TEST(X11Strut, LeavesTheRestUsable) {
  const QSize root(3200, 1200);
  const QRect left(0, 0, 1920, 1200);
  const QRect right(1920, 0, 1280, 1024);
  constexpr quint32 kFar = std::numeric_limits<quint32>::max();
  const struct {
    const char* what;
    QList<X11Strut> struts;
    QRect onLeft;
    QRect onRight;
  } rows[] = {
      {"none", {}, left, right},
      {"a bar above the left", {{.top = 30, .topStart = 0, .topEnd = 1919}}, QRect(0, 30, 1920, 1170), right},
      {"a plain one above all", {{.top = 30, .topEnd = kFar}}, QRect(0, 30, 1920, 1170), QRect(1920, 30, 1280, 994)},
      {"below the shorter display",
       {{.bottom = 226, .bottomStart = 1920, .bottomEnd = 3199}},
       left,
       QRect(1920, 0, 1280, 974)},
      {"in the dead corner below it", {{.bottom = 100, .bottomStart = 1920, .bottomEnd = 3199}}, left, right},
      {"left of the right display",
       {{.left = 1970, .leftStart = 0, .leftEnd = 1023}},
       left,
       QRect(1970, 0, 1230, 1024)},
      {"two on one edge and one right",
       {{.top = 30, .topEnd = 1919}, {.top = 50, .topEnd = 99}, {.right = 40, .rightEnd = 1023}},
       QRect(0, 50, 1920, 1150),
       QRect(1920, 0, 1240, 1024)},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(X11Strut::usable(left, row.struts, root), row.onLeft) << row.what;
    EXPECT_EQ(X11Strut::usable(right, row.struts, root), row.onRight) << row.what;
  }
  const X11Strut full{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  const auto words = full.words();
  EXPECT_EQ(X11Strut::read(QList<quint32>(words.begin(), words.end()), {}), full);
  EXPECT_EQ(X11Strut::read({}, {0, 0, 30, 0})->topEnd, kFar);
  EXPECT_EQ(X11Strut::read(QList<quint32>(12, 0), {0, 0, 30, 0}), std::nullopt);
}

TEST(SandboxIdentity, NamesTheFlatpakOrSnap) {
  EXPECT_EQ(SandboxIdentity::fromFlatpakInfo("[Runtime]\nname=wrong\n[Application]\nname=org.example.Pond\n"),
            u"org.example.Pond"_s);
  EXPECT_EQ(SandboxIdentity::fromFlatpakInfo("[Runtime]\nname=wrong\n"), QString());
  EXPECT_EQ(SandboxIdentity::fromControlGroups("0::/user.slice/user-1000.slice/app.slice/snap.pond.view-1f2e.scope\n"),
            u"pond"_s);
  EXPECT_EQ(SandboxIdentity::fromControlGroups("0::/user.slice/snapd.service\n1:x:/init.scope\n"), QString());
}

TEST(PopupPlacement, StaysBesideAndWithin) {
  const QRect usable(0, 30, 1000, 770);
  const struct {
    QRect beside;
    QSize wanted;
    QRect outline;
  } rows[] = {
      {{480, 740, 40, 50}, {200, 300}, {400, 430, 200, 300}},  // a dock at the bottom
      {{480, 40, 40, 50}, {200, 300}, {400, 100, 200, 300}},   // at the top
      {{0, 740, 40, 50}, {200, 300}, {8, 430, 200, 300}},      // in a corner
      {{960, 740, 40, 50}, {200, 300}, {792, 430, 200, 300}},  // in the other
      {{480, 740, 40, 50}, {2000, 2000}, {0, 30, 1000, 700}},  // too large
      {{480, 820, 40, 50}, {200, 300}, {400, 500, 200, 300}},  // hidden beyond the edge
      {{480, 0, 40, 10}, {200, 300}, {400, 30, 200, 300}},     // under a bar
      {{0, 0, 1000, 1600}, {200, 300}, {400, 30, 200, 1}},     // no space at all
  };
  for (const auto& row : rows) {
    EXPECT_EQ(PopupPlacement::outline(row.beside, row.wanted, 10, usable), row.outline) << row.beside.y();
  }
}

}  // namespace
}  // namespace tarnwick
