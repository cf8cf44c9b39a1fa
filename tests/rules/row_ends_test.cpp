#include <gtest/gtest.h>

#include <QString>

#include "dock/rules/RowEnds.h"

namespace tarnwick {
namespace {

/// Entries 50 wide, 10 apart, in a glass that keeps 10 free at its ends: an "a" is an app, a "w" a widget.
QList<RowEnds::Entry> rowOf(const QString& letters) {
  QList<RowEnds::Entry> entries;
  for (const QChar letter : letters) entries << RowEnds::Entry{letter == u'a', 50};
  return entries;
}

TEST(RowEnds, TheRunsOfAppsAtTheEndsStayUnlessTheyTakeTooMuch) {
  struct Case {
    const char* row;
    double glass;
    RowEnds expected;
  };
  const Case cases[] = {
      {"", 600, {}},
      {"www", 600, {}},
      {"waaw", 600, {}},
      {"aawww", 600, {2, 0}},
      {"wwwaaa", 600, {0, 3}},
      {"aawwa", 600, {2, 1}},
      {"awaawaa", 600, {1, 2}},
      {"aaaa", 600, {}},
      // Three apps and the gap beside each take 180, the two insets 20: two thirds of 300.
      {"awwaa", 300, {1, 2}},
      {"awwaa", 299, {}},
      // With one end there is one inset.
      {"aaaww", 285, {3, 0}},
      {"aaaww", 284, {}},
  };
  for (const Case& c : cases)
    EXPECT_EQ(RowEnds::of(rowOf(QString::fromLatin1(c.row)), 10, 10, c.glass), c.expected) << c.row << ' ' << c.glass;
}

TEST(RowEnds, WhatIsHeldBreaksNoRunAndJoinsTheOneItIsIn) {
  struct Case {
    const char* row;
    qsizetype held;
    RowEnds expected;
  };
  const Case cases[] = {
      {"awawwa", 1, {3, 1}},  // A widget between two apps.
      {"wawwwa", 0, {2, 1}},  // Before all.
      {"aawwwa", 2, {2, 1}},  // Beside the run, where a widget scrolls,
      {"aaawwa", 2, {3, 1}},  // but an app would stay,
      {"awwwaa", 4, {1, 2}},  // at both ends.
      {"awwwaw", 5, {1, 2}}, {"awawwa", 2, {1, 1}}, {"awa", 1, {}},
  };
  for (const Case& c : cases)
    EXPECT_EQ(RowEnds::of(rowOf(QString::fromLatin1(c.row)), 10, 10, 900, c.held), c.expected)
        << c.row << ' ' << c.held;
}

}  // namespace
}  // namespace tarnwick
