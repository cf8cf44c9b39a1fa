// A widget is connected to a server through its form, by the keyboard alone, on every window system alike; and what
// becomes of it when the server dies or wants to be left alone.
#include <QPushButton>
#include <algorithm>
#include <atomic>

#include "desktop/ConnectionScenario.h"
#include "views/library/AnswerTree.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;
using test::TestCertificates;
using test::TestReply;
using test::TestRequest;
using test::TestServer;

class ConnectedTile : public ConnectionScenario {
 protected:
  /// Writes over what stands in the address and saves.
  void changeAddress(const QString& address) {
    ASSERT_NO_FATAL_FAILURE(openForm());
    ASSERT_TRUE(tabTo<QLineEdit>(u"Address"_s));
    ASSERT_TRUE(write(address));
    desk.tap(KEY_ENTER);
    ASSERT_TRUE(comesTrue([&] { return !form(); })) << said();
  }
};

TEST_F(ConnectedTile, ATileIsConnectedByKeysAndKeepsItsValueThroughWhatItsServerDoes) {
  std::atomic<bool> isBusy = false;
  const auto answer = [&isBusy](const TestRequest&) {
    return isBusy ? TestReply::of(429, {}, "Retry-After: 600\r\n")
                  : TestReply::of(200, R"({"visitors": {"page": "home", "today": 3184}})");
  };
  auto first = std::make_unique<TestServer>(TestCertificates::all().good, answer);
  DockConfiguration config;
  config.profiles[0].widgets = {{QUuid::createUuid(), u"revenueLemonSqueezy"_s, u"Visitors"_s, {}}};
  startShown(config);

  ASSERT_NO_FATAL_FAILURE(openForm());
  ASSERT_TRUE(tabTo<QLineEdit>(u"Address"_s));
  ASSERT_TRUE(write(addressOf(*first)));
  ASSERT_TRUE(tabTo<QPushButton>(u"Try It"_s));
  desk.tap(KEY_ENTER);
  const auto* tree = form()->findChild<AnswerTree*>();
  ASSERT_TRUE(comes([&] { return tree->isVisible(); })) << said();
  ASSERT_TRUE(tabTo<AnswerTree>(tree->accessibleName()));
  desk.tap(KEY_END);
  desk.tap(KEY_ENTER);
  ASSERT_TRUE(tabTo<QLineEdit>(u"Field"_s));
  desk.tap(KEY_ENTER);
  ASSERT_TRUE(comesTrue([&] { return !form(); }));
  EXPECT_EQ(store().widgets().first().options.value(option::field), u"visitors.today"_s);
  EXPECT_TRUE(comes([&] { return reading().value.value == u"3184"_s && !reading().isLoading; }));
  EXPECT_EQ(first->received().size(), 2) << "once by trying, once by saving";

  // The server dies: its number stays, under the sentence.
  first.reset();
  store().refresh(store().widgets().first());
  EXPECT_TRUE(comes([&] { return reading().value.failed; }));
  EXPECT_EQ(reading().value.value, u"3184"_s);
  EXPECT_EQ(reading().value.subtitle,
            u"The service could not be reached. Check your connection and service address."_s);

  // Another one wants to be left alone, until the widget is edited.
  isBusy = true;
  const TestServer second(TestCertificates::all().good, answer);
  ASSERT_NO_FATAL_FAILURE(changeAddress(addressOf(second)));
  ASSERT_TRUE(comes([&] { return reading().pausedUntil.has_value(); }));
  EXPECT_EQ(reading().value.value, u"3184"_s);
  store().refreshAll();
  time.advance(0);
  desk.settle();
  EXPECT_EQ(second.received().size(), 1) << "it is not asked while it is paused";
  isBusy = false;
  ASSERT_NO_FATAL_FAILURE(changeAddress(addressOf(second) + u'a'));
  EXPECT_TRUE(comes([&] { return !reading().value.failed && !reading().isLoading; }));
  EXPECT_FALSE(reading().pausedUntil);
  EXPECT_EQ(second.received().size(), 2);
}

TEST_F(ConnectionScenario, MoneyIsConvertedInThePanelByKeys) {
  const TestServer rates(TestCertificates::all().good, [](const TestRequest&) {
    return TestReply::of(200, R"({"date": "2026-11-27", "rate": 1.25})");
  });
  addresses.set(ServiceHost::ExchangeRates, QUrl(addressOf(rates)));
  DockConfiguration config;
  config.profiles[0].widgets = {
      {QUuid::createUuid(), u"converter"_s, {}, {{option::from, u"EUR"_s}, {option::to, u"USD"_s}}}};
  startShown(config);
  desk.settle();
  dock().focus();
  ASSERT_TRUE(
      inTime([&] { return view().hasFocus() && view().window()->isActiveWindow() && view().focusedItem() == 0; }));
  desk.tap(KEY_ENTER);
  const auto field = [] { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); };
  ASSERT_TRUE(inTime([&] { return field() && field()->window()->isActiveWindow(); }));
  const QWidget* panel = field()->window();
  desk.settle();
  ASSERT_TRUE(write(u"20"_s));
  EXPECT_TRUE(comes([&] {
    const QList<QWidget*> parts = panel->findChildren<QWidget*>();
    return std::ranges::any_of(
        parts, [&](const QWidget* part) { return part->isVisible() && part->accessibleName() == u"25 USD"_s; });
  }));
  // The rate is that of the pair, whatever the value.
  ASSERT_EQ(rates.received().size(), 1);
  EXPECT_EQ(QString::fromLatin1(rates.received().first().path), u"/v2/rate/eur/usd"_s);
}

}  // namespace
}  // namespace tarnwick::testing
