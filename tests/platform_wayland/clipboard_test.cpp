#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <array>

#include "Copier.h"
#include "Desk.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;
using End = PasteboardContent::End;

TEST(WaylandClipboard, GoesFromOneProgramToAnother) {
  const Desk desk;
  goesFromOneProgramToAnother(desk.session);
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
