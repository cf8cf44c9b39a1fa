#include <gtest/gtest.h>

#include <QStringList>

#include "platform/net/module/HostGate.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(HostGate, LetsEachHostsFirstThroughAndForgetsWhoLeaves) {
  HostGate gate(2);
  QString entered;
  const auto ask = [&](const QString& host, QChar name) {
    return gate.ask(host, [&entered, name] { entered += name; });
  };
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

}  // namespace
}  // namespace tarnwick
