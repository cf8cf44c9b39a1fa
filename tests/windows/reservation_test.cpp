#include <gtest/gtest.h>

#include <QFile>
#include <map>

#include "base/DomainError.h"
#include "support/FileTest.h"
#include "windows/WindowKeeper.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr int kPid = 500;
constexpr qint64 kLaunch = 170'000'000'025;
const QRectF kDisplay(0, 0, 1920, 1080);
/// A dock at the bottom, and one at the top.
const QRectF kBottom(600, 980, 720, 90);
const QRectF kTop(600, 10, 720, 90);

TEST(ReservedSpace, KeepsWindowsClear) {
  struct Case {
    const char* what;
    QRectF dock;
    QRectF visible;
    QRectF window;
    std::optional<QRectF> clear;
    double scale = 1;
  };
  const std::optional<QRectF> stays;
  for (const Case& each : {
           Case{"beside it", kBottom, kDisplay, {0, 900, 600, 180}, stays},
           Case{"moved up", kBottom, kDisplay, {700, 700, 400, 300}, QRectF(700, 672, 400, 300)},
           Case{"shrunk", kBottom, kDisplay, {700, 0, 400, 1080}, QRectF(700, 0, 400, 972)},
           Case{"moved down", kTop, kDisplay, {700, 0, 400, 300}, QRectF(700, 108, 400, 300)},
           Case{"out at the side", kBottom, kDisplay, {-300, 900, 1000, 170}, QRectF(0, 802, 1000, 170)},
           Case{"in the middle counts as below",
                {600, 495, 720, 90},
                kDisplay,
                {700, 400, 400, 300},
                QRectF(700, 187, 400, 300)},
           Case{"as narrow as it may be", kBottom, kDisplay, {700, 700, 100, 300}, stays},
           Case{"one wider", kBottom, kDisplay, {700, 700, 101, 300}, QRectF(700, 672, 101, 300)},
           Case{"no room", kBottom, {0, 793, 1920, 287}, {700, 900, 400, 150}, stays},
           Case{"just room", kBottom, {0, 792, 1920, 288}, {700, 900, 400, 150}, QRectF(700, 822, 400, 150)},
           Case{"two pixels a point", kBottom, kDisplay, {700, 700, 400, 300}, QRectF(700, 664, 400, 300), 2},
           Case{"small at two pixels a point", kBottom, kDisplay, {700, 700, 200, 300}, stays, 2},
       })
    EXPECT_EQ((ReservedSpace{each.dock, each.visible, each.scale}.clear(each.window)), each.clear) << each.what;
}

WindowReservation record(quint32 number, const QRectF& original = {0, 0, 400, 300},
                         const QRectF& adjusted = {0, 0, 400, 200}) {
  return {kPid, kLaunch, number, original, adjusted};
}

class Journal : public FolderTest {
 protected:
  WindowReservationJournal open() const { return WindowReservationJournal(folder_.path(), 0ms); }
  QByteArray content() const {
    QFile file(at(u"window-recovery.json"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
};

TEST_F(Journal, KeepsWhereAWindowStoodFirst) {
  auto journal = open();
  ASSERT_FALSE(journal.error());
  struct Step {
    const char* what;
    QRectF from;
    QRectF to;
    QRectF stored;
  };
  for (const Step& each : {
           Step{"first", {0, 0, 400, 300}, {0, 0, 400, 200}, {0, 0, 400, 300}},
           Step{"again from where we left it", {1.9, 0, 400, 200}, {0, 0, 400, 150}, {0, 0, 400, 300}},
           Step{"put back, and again", {0, 1.9, 400, 300}, {0, 0, 400, 200}, {0, 0, 400, 300}},
           Step{"moved by its user", {2, 0, 400, 300}, {2, 0, 400, 200}, {2, 0, 400, 300}},
       }) {
    EXPECT_EQ(journal.prepare(record(1, each.from, each.to)).original, each.stored) << each.what;
    EXPECT_EQ(journal.records().size(), 1) << each.what;
  }
  // On the disk, in the form that every version reads.
  EXPECT_EQ(
      content(),
      R"([{"adjusted":[[2,0],[400,200]],"launch":721692800.25,"number":1,"original":[[2,0],[400,300]],"pid":500}])");
  EXPECT_EQ(open().records(), journal.records());
  EXPECT_EQ(journal.records().first().key(), u"500:1700000000.25:1"_s);
  // Another process adds one.
  open().prepare(record(2));
  journal.prepare(record(3));
  EXPECT_EQ(open().records().size(), 3);
}

TEST_F(Journal, IsNotTouchedWhereItCannotBeUnderstood) {
  const QByteArray good = RecordCodec::toBytes(QList{record(1)});
  const auto changed = [&good](const char* from, const char* to) { return QByteArray(good).replace(from, to); };
  QList<WindowReservation> many;
  for (quint32 number = 1; number <= 501; ++number) many.append(record(number));
  const std::string invalid = "Invalid window recovery journal.";
  struct Case {
    QByteArray content;
    std::string error;  ///< Empty for any.
  };
  for (const Case& each : {
           Case{QByteArray(1'000'001, ' '), "Window recovery journal is too large."},
           Case{RecordCodec::toBytes(many), invalid},
           Case{RecordCodec::toBytes(QList{record(1), record(1)}), invalid},
           Case{changed(":500", ":0"), invalid},
           Case{changed("\"number\":1", "\"number\":0"), invalid},
           Case{changed("[400,300]", "[0,300]"), invalid},
           Case{changed("[400,300]", "[400,-1]"), invalid},
           Case{changed("[400,300]", "[400]"), ""},
           Case{changed("[400,300]", "[NaN,300]"), ""},
           Case{changed("721692800.25", "1e300"), ""},
           Case{good.chopped(1), ""},
           Case{"{}", ""},
           Case{"", ""},
       }) {
    put(u"window-recovery.json"_s, each.content);
    auto journal = open();
    ASSERT_TRUE(journal.error()) << each.content.left(200).toStdString();
    const std::string error = journal.error()->toStdString();
    EXPECT_EQ(error, each.error.empty() ? error : each.error);
    EXPECT_EQ(failureOf([&] { journal.prepare(record(9)); }), error);
    EXPECT_EQ(failureOf([&] { journal.recover({}, {}); }), error);
    EXPECT_EQ(content(), each.content);
  }
}

/// A window system of its own: windows do what the test says.
struct FakeFrames final : WindowFrames {
  enum class Will { Obeys, Refuses, Insists };  ///< The last puts its old frame back.

  Capability capability() override { return able ? Capability::yes() : Capability::no(u"No."_s); }
  std::optional<QList<Window>> all(std::chrono::milliseconds) override {
    return tells ? std::optional(list) : std::nullopt;
  }
  std::optional<QRectF> frame(quint32 number, std::chrono::milliseconds) override {
    const Window* found = window(number);
    return found ? std::optional(found->frame) : std::nullopt;
  }
  QRectF accepted(quint32, const QRectF& wanted) override {
    return {wanted.x(), wanted.y(), wanted.width(), wanted.height() - std::fmod(wanted.height(), increment)};
  }
  bool setFrame(quint32 number, const QRectF& frame, std::chrono::milliseconds) override {
    ++moves;
    Window* found = window(number);
    if (!found || wills.value(number, Will::Obeys) == Will::Refuses) return false;
    if (wills.value(number, Will::Obeys) == Will::Obeys) found->frame = frame;
    return true;
  }
  Window* window(quint32 number) {
    const auto found = std::ranges::find(list, number, &Window::number);
    return found == list.end() ? nullptr : &*found;
  }
  void add(quint32 number, const QRectF& frame, int pid = kPid) { list.append({number, pid, frame, list.isEmpty()}); }

  bool able = true;
  bool tells = true;
  double increment = 1;
  int moves = 0;
  QList<Window> list;
  QHash<quint32, Will> wills;
};

class Keeper : public FolderTest {
 protected:
  const QRectF over_{700, 700, 400, 300};   ///< In the dock's way.
  const QRectF clear_{700, 672, 400, 300};  ///< Beside it.
  const QList<ReservedSpace> spaces_{{kBottom, kDisplay, 1}};

  QRectF frame(quint32 number) { return frames_.window(number)->frame; }
  /// As after the end of the process: nothing is remembered but the file.
  void startAgain() {
    journal_ = std::make_unique<WindowReservationJournal>(folder_.path(), 0ms);
    keeper_ = std::make_unique<WindowKeeper>(
        frames_, *journal_, [this](int pid) { return pid == kPid ? std::optional(launch_) : std::nullopt; }, 1,
        [this] { return now_; });
  }
  void SetUp() override { startAgain(); }

  FakeFrames frames_;
  qint64 launch_ = kLaunch;
  std::chrono::steady_clock::time_point now_;
  std::unique_ptr<WindowReservationJournal> journal_;
  std::unique_ptr<WindowKeeper> keeper_;
};

TEST_F(Keeper, MovesWhatIsInFrontAndPutsItBack) {
  frames_.add(1, over_);
  frames_.add(2, over_);
  frames_.add(3, over_, 501);
  for (const quint32 state : {4, 5, 6}) frames_.add(state, over_);
  frames_.window(4)->minimised = frames_.window(5)->maximised = frames_.window(6)->fullscreen = true;
  EXPECT_EQ(keeper_->reserve(spaces_), QString());
  for (const quint32 moved : {1, 2}) EXPECT_EQ(frame(moved), clear_);
  for (const quint32 left : {3, 4, 5, 6}) EXPECT_EQ(frame(left), over_) << left;
  // The user moves one of them by three points, another program's window takes the place of a third.
  frames_.window(2)->frame.translate(3, 0);
  startAgain();
  EXPECT_EQ(keeper_->restore(), QString());
  EXPECT_EQ(frame(1), over_);
  EXPECT_EQ(frame(2), clear_.translated(3, 0));
  EXPECT_TRUE(journal_->records().isEmpty());

  keeper_->reserve(spaces_);
  launch_ = kLaunch + 1;
  EXPECT_EQ(keeper_->restore(), QString());
  EXPECT_EQ(frame(1), clear_) << "of another process";
  EXPECT_TRUE(journal_->records().isEmpty());
}

TEST_F(Keeper, WhatTheWindowManagerMovedItselfComesBackToo) {
  const QRectF aside = clear_.translated(0, 20);  // Still a little in the way.
  for (const quint32 number : {1, 2, 3, 4}) frames_.add(number, aside);
  for (const quint32 number : {1, 2}) frames_.window(number)->before = over_;
  frames_.window(2)->frame = clear_;                      // Not any more.
  frames_.window(3)->before = over_.translated(0, -300);  // Was nowhere near.
  frames_.window(4)->before = over_.translated(10, 0);    // Its user moved it.
  EXPECT_EQ(keeper_->reserve(spaces_), QString());
  EXPECT_EQ(journal_->records().size(), 4);
  for (const quint32 number : {1, 2, 3, 4}) EXPECT_EQ(frame(number), clear_) << number;
  EXPECT_TRUE(keeper_->plan(spaces_).windows.isEmpty()) << "it is written down once";
  startAgain();
  EXPECT_EQ(keeper_->restore(), QString());
  for (const quint32 number : {1, 2}) EXPECT_EQ(frame(number), over_) << number;
  for (const quint32 number : {3, 4}) EXPECT_EQ(frame(number), aside) << number;
}

TEST_F(Keeper, LeavesAloneWhatItMustNotOrCannotMove) {
  const auto reserve = [this] {
    EXPECT_EQ(keeper_->reserve(spaces_), QString());
    return frame(1) == over_ && journal_->records().isEmpty();
  };
  frames_.add(1, over_);
  frames_.able = false;
  EXPECT_TRUE(reserve());
  frames_.able = true;
  frames_.window(1)->active = false;
  EXPECT_TRUE(reserve()) << "nothing is in front";
  frames_.window(1)->active = true;
  frames_.window(1)->pid = 1;
  EXPECT_TRUE(reserve()) << "our own";
  frames_.window(1)->pid = 0;
  EXPECT_TRUE(reserve()) << "nobody knows whose";
  frames_.window(1)->pid = kPid;
  frames_.increment = 1000;
  EXPECT_TRUE(reserve()) << "never so small";
  frames_.increment = 7;
  EXPECT_FALSE(reserve());
  EXPECT_EQ(frame(1), QRectF(700, 672, 400, 294)) << "as it grows";
}

TEST_F(Keeper, GivesUpAfterOneTry) {
  for (const auto will : {FakeFrames::Will::Refuses, FakeFrames::Will::Insists}) {
    frames_.list.clear();
    frames_.add(1, over_);
    frames_.wills[1] = will;
    frames_.moves = 0;
    for (int i = 0; i < 3; ++i) keeper_->reserve(spaces_);
    EXPECT_EQ(frames_.moves, 2) << "there, and what may have come of it back";
    // Somewhere else it is another matter.
    frames_.wills[1] = FakeFrames::Will::Obeys;
    frames_.window(1)->frame.translate(10, 0);
    keeper_->reserve(spaces_);
    EXPECT_EQ(frame(1), clear_.translated(10, 0));
    keeper_->restore();
  }
  // One that goes back by itself, and one that its user puts there again later.
  keeper_->reserve(spaces_);
  frames_.window(1)->frame = over_.translated(10, 0);
  now_ += 1s;
  keeper_->reserve(spaces_);
  EXPECT_EQ(frame(1), over_.translated(10, 0));
  keeper_->restore();
  keeper_->reserve(spaces_);
  frames_.window(1)->frame = over_.translated(10, 0);
  now_ += 3s;
  keeper_->reserve(spaces_);
  EXPECT_EQ(frame(1), clear_.translated(10, 0));
}

TEST_F(Keeper, KeepsWhatItCannotPutBackNow) {
  frames_.add(1, over_);
  keeper_->reserve(spaces_);
  const auto before = journal_->records();
  frames_.tells = false;
  EXPECT_EQ(keeper_->restore(), QString());
  EXPECT_EQ(journal_->records(), before) << "nobody tells";
  frames_.tells = true;
  frames_.wills[1] = FakeFrames::Will::Refuses;
  EXPECT_EQ(keeper_->restore(), QString());
  EXPECT_EQ(journal_->records(), before) << "refused";
  frames_.wills.clear();
  {
    const AsFullDisk full(0);
    EXPECT_TRUE(keeper_->restore().startsWith(u"Window recovery will be retried: "_s));
    frames_.add(2, over_);
    EXPECT_TRUE(keeper_->reserve(spaces_).startsWith(u"Could not preserve window recovery data: "_s));
    EXPECT_EQ(frame(2), over_) << "without a record none is moved";
  }
  EXPECT_EQ(frame(1), over_) << "it is back all the same";
  startAgain();
  EXPECT_EQ(keeper_->restore(), QString());
  EXPECT_TRUE(journal_->records().isEmpty());
  EXPECT_EQ(frame(1), over_);
}

TEST_F(Keeper, LosesNoWindowWhereverItIsKilled) {
  // What is on the disk after each step, as a process that is killed there leaves it.
  for (const int steps : {0, 1, 2}) {
    frames_.list.clear();
    frames_.add(1, over_);
    if (steps > 0) journal_->prepare({kPid, kLaunch, 1, over_, clear_});
    if (steps > 1) frames_.window(1)->frame = clear_;
    startAgain();
    EXPECT_EQ(keeper_->restore(), QString());
    EXPECT_EQ(frame(1), over_);
    EXPECT_TRUE(journal_->records().isEmpty());
  }
}

}  // namespace
}  // namespace tarnwick
