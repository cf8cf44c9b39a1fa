#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <optional>
#include <utility>

#include "platform/wayland/WaylandPasteboard.h"
#include "platform/wayland/WaylandQueue.h"
#include "support/FakeWindows.h"
#include "support/TestScheduler.h"
#include "support/VirtualDisplay.h"

namespace tarnwick::testing {

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

/// Waits until the compositor has seen all that the program did, and the program what came of it.
inline void settle(const WaylandSession& session) {
  EXPECT_TRUE(WaylandQueue(session.display()).waitForAnswers());
  QCoreApplication::processEvents();
}

/// What holds whatever protocol the compositor speaks.
inline void goesFromOneProgramToAnother(const WaylandSession& session) {
  using namespace Qt::StringLiterals;
  using End = PasteboardContent::End;
  test::TestScheduler clock;
  Copier one(session, clock);
  Copier other(session, clock);
  ASSERT_TRUE(one.pasteboard.capability());
  EXPECT_FALSE(one.pasteboard.endOfOwners());
  settle(session);
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

}  // namespace tarnwick::testing
