#include <gtest/gtest.h>

#include <QStringList>

#include "platform/net/module/HostGate.h"
#include "support/TestScheduler.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct HostGateTest : ::testing::Test {
  std::unique_ptr<HostGate::Pass> ask(const QString& host, QChar name, int port = 443) {
    return gate.ask(host, port, [this, name](HostGate::Connection connection) {
      entered += connection == HostGate::Connection::Kept ? name : name.toUpper();
    });
  }
  test::TestScheduler time;
  HostGate gate{2, 40, time};
  QString entered;  ///< In capitals those whose connections are closed.
};

TEST_F(HostGateTest, LetsEachHostsFirstThroughAndForgetsWhoLeaves) {
  auto a = ask(u"x"_s, u'a');
  auto b = ask(u"x"_s, u'b');
  auto c = ask(u"x"_s, u'c');
  auto d = ask(u"x"_s, u'd');
  auto e = ask(u"x"_s, u'e');
  auto other = ask(u"y"_s, u'o');
  EXPECT_EQ(entered, u"abo"_s);
  d.reset();
  EXPECT_EQ(entered, u"abo"_s);
  b.reset();
  EXPECT_EQ(entered, u"aboc"_s);
  a.reset();
  EXPECT_EQ(entered, u"aboce"_s) << "one that had left came in";
  c.reset();
  e.reset();
  auto f = ask(u"x"_s, u'f');
  auto g = ask(u"x"_s, u'g');
  auto h = ask(u"x"_s, u'h');
  EXPECT_EQ(entered, u"abocefg"_s);
}

TEST_F(HostGateTest, CountsWhatIsKeptForAnotherPort) {
  auto a = ask(u"x"_s, u'a');
  auto b = ask(u"x"_s, u'b');
  a.reset();
  b.reset();
  auto c = ask(u"x"_s, u'c');
  EXPECT_EQ(entered, u"abc"_s) << "what is kept is used";
  auto other = ask(u"x"_s, u'o', 8443);
  auto d = ask(u"x"_s, u'd');
  EXPECT_EQ(entered, u"abc"_s) << "nobody comes before who was there first";
  c.reset();
  time.advance(39);
  EXPECT_EQ(entered, u"abc"_s);
  time.advance(1);
  EXPECT_EQ(entered, u"abcOD"_s);
  // From now on nothing is kept, and nobody waits for it.
  other.reset();
  auto e = ask(u"x"_s, u'e');
  d.reset();
  auto f = ask(u"x"_s, u'f', 8443);
  EXPECT_EQ(entered, u"abcODEF"_s);
}

TEST_F(HostGateTest, WhatIsKeptIsClosedForAnotherPortOnceNobodyUsesAny) {
  int closed = 0;
  HostGate closing(2, 40, time, [&closed] { ++closed; });
  const auto into = [&](const QString& host, QChar name, int port = 443) {
    return closing.ask(host, port, [this, name](HostGate::Connection) { entered += name; });
  };
  auto a = into(u"x"_s, u'a');
  auto b = into(u"x"_s, u'b');
  auto elsewhere = into(u"y"_s, u'e');
  a.reset();
  b.reset();
  auto other = into(u"x"_s, u'o', 8443);
  EXPECT_EQ(entered, u"abe"_s) << "another host's connection is in use";
  EXPECT_EQ(closed, 0);
  elsewhere.reset();
  EXPECT_EQ(entered, u"abeo"_s);
  EXPECT_EQ(closed, 1);
}

}  // namespace
}  // namespace tarnwick
