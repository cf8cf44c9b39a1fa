#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <array>

#include "Desk.h"
#include "platform/wayland/WaylandPasteboard.h"
#include "support/FakeWindows.h"
#include "support/TestScheduler.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;
using End = PasteboardContent::End;

/// What a program sees of the clipboard. Two of them are two programs to the compositor's selection.
struct Copier {
  Copier(const WaylandSession& session, Scheduler& clock) : pasteboard(session, windows, clock) {
    QObject::connect(&pasteboard, &Pasteboard::changed, [this](PasteboardChange change) { changes.append(change); });
  }
  bool sees(const QList<PasteboardChange>& wanted) {
    const bool seen = VirtualDisplay::waitUntil([&] { return changes.size() >= wanted.size(); });
    return seen && std::exchange(changes, {}) == wanted;
  }
  PasteboardContent read(quint64 change, const QString& type, qint64 most = 64 << 20) {
    std::optional<PasteboardContent> content;
    pasteboard.readContent(change, type, {most}, &context, [&](const PasteboardContent& answer) { content = answer; });
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return content.has_value(); }));
    return content.value_or(PasteboardContent());
  }
  std::optional<QStringList> types(quint64 change) {
    std::optional<std::optional<QStringList>> found;
    pasteboard.readTypes(change, &context, [&](const auto& answer) { found = answer; });
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return found.has_value(); }));
    return found.value_or(std::nullopt);
  }
  bool confirms(quint64 change) {
    std::optional<bool> holds;
    pasteboard.confirm(change, &context, [&](bool answer) { holds = answer; });
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return holds.has_value(); }));
    return holds.value_or(false);
  }

  QObject context;
  test::FakeWindows windows;
  WaylandPasteboard pasteboard;
  QList<PasteboardChange> changes;
};

TEST(WaylandClipboard, GoesFromOneProgramToAnother) {
  Desk desk;
  test::TestScheduler clock;
  Copier one(desk.session, clock);
  Copier other(desk.session, clock);
  ASSERT_TRUE(one.pasteboard.capability());
  EXPECT_FALSE(one.pasteboard.endOfOwners());
  desk.settle();
  EXPECT_EQ(one.changes, QList<PasteboardChange>()) << "what was there is no change";

  one.windows.open(1, u"writer"_s);
  one.windows.windows.first().active = true;
  other.pasteboard.set(PasteboardOffer::text(u"grün"_s));
  ASSERT_TRUE(one.sees({PasteboardChange::Taken}));
  ASSERT_TRUE(other.sees({PasteboardChange::Taken}));
  const quint64 text = one.pasteboard.changeCount();
  EXPECT_EQ(one.pasteboard.owner().applicationId, u"writer"_s);
  ASSERT_TRUE(one.types(text));
  EXPECT_TRUE(one.types(text)->contains(u"text/plain;charset=utf-8"_s));
  EXPECT_EQ(one.read(text, u"UTF8_STRING"_s).bytes, "grün");
  EXPECT_EQ(other.read(other.pasteboard.changeCount(), u"text/plain"_s).bytes, "grün") << "our own";
  EXPECT_TRUE(one.confirms(text));

  QByteArray large(3'000'001, 'x');
  large[2'000'000] = 'y';
  other.pasteboard.set(PasteboardOffer::picture(large));
  ASSERT_TRUE(one.sees({PasteboardChange::Taken}));
  const quint64 picture = one.pasteboard.changeCount();
  EXPECT_EQ(one.read(picture, u"image/png"_s).bytes, large);
  EXPECT_EQ(one.read(picture, u"image/png"_s, 3'000'001).end, End::Whole);
  EXPECT_EQ(one.read(picture, u"image/png"_s, 3'000'000).end, End::TooLarge);
  EXPECT_EQ(one.read(text, u"image/png"_s).end, End::Changed);
  EXPECT_EQ(one.types(text), std::nullopt);
  EXPECT_FALSE(one.confirms(text));

  other.pasteboard.clear();
  ASSERT_TRUE(one.sees({PasteboardChange::Cleared}));
  EXPECT_TRUE(one.pasteboard.isEmpty());
}

TEST(WaylandClipboard, AReadingThatStallsEnds) {
  test::TestScheduler clock;
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  const FileDescriptor writer(ends[1]);
  QObject context;
  std::optional<PasteboardContent> content;
  const PipeReading reading(FileDescriptor{ends[0]}, clock, 100, &context,
                            [&](const PasteboardContent& answer) { content = answer; });
  clock.advance(4);
  EXPECT_FALSE(reading.hasEnded());
  clock.advance(1);
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return content.has_value(); }));
  EXPECT_EQ(content->end, End::TooSlow);
}

TEST(WaylandClipboard, AReadingThatGoesOnForEverEnds) {
  const struct {
    const char* what;
    double pause;  ///< Seconds between two pieces.
    QByteArray piece;
    int pieces;  ///< After so many it has ended.
    End end;
  } cases[] = {
      {"a drip", 1, "x", 20, End::TooSlow},
      {"a flood", 0, QByteArray(40, 'x'), 3, End::TooLarge},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    test::TestScheduler clock;
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    const FileDescriptor writer(ends[1]);
    QObject context;
    std::optional<PasteboardContent> content;
    PipeReading reading(FileDescriptor{ends[0]}, clock, 100, &context,
                        [&](const PasteboardContent& answer) { content = answer; });
    for (int piece = 0; piece < each.pieces; ++piece) {
      EXPECT_FALSE(reading.hasEnded()) << piece;
      ASSERT_EQ(::write(writer.number(), each.piece.constData(), static_cast<std::size_t>(each.piece.size())),
                each.piece.size());
      const auto isTaken = [&] {
        int left = 0;
        return ::ioctl(writer.number(), FIONREAD, &left) != 0 || left == 0;
      };
      ASSERT_TRUE(VirtualDisplay::waitUntil(isTaken));
      clock.advance(each.pause);
    }
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return content.has_value(); }));
    EXPECT_EQ(content->end, each.end);
    EXPECT_TRUE(reading.hasEnded());
  }
}

TEST(WaylandClipboard, AReaderThatWentAwayHarmsNobody) {
  test::TestScheduler clock;
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  ::close(ends[0]);
  const PipeWriting writing(FileDescriptor{ends[1]}, "bytes", clock);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return writing.hasEnded(); }));
}

}  // namespace
}  // namespace tarnwick::testing
