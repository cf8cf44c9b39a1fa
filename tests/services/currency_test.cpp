#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QJsonObject>
#include <limits>

#include "base/DomainError.h"
#include "services/CurrencyRates.h"
#include "services/ServiceHTTPError.h"
#include "support/ScriptedSession.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

QJsonObject rate(const QJsonValue& value) {
  return {{u"date"_s, u"2026-11-24"_s}, {u"base"_s, u"EUR"_s}, {u"quote"_s, u"USD"_s}, {u"rate"_s, value}};
}

TEST(CurrencyQuote, IsARateAboveNothingOfThePairThatWasAskedFor) {
  const CurrencyQuote quote = CurrencyQuote::decode(rate(1.0842), u"EUR"_s, u"USD"_s);
  EXPECT_EQ(quote, (CurrencyQuote{u"EUR"_s, u"USD"_s, 1.0842, QDate(2026, 11, 24)}));
  QJsonObject bare{{u"rate"_s, 1.5}};
  EXPECT_EQ(CurrencyQuote::decode(bare, u"EUR"_s, u"USD"_s), (CurrencyQuote{u"EUR"_s, u"USD"_s, 1.5, {}}));

  QJsonObject other = rate(1.5);
  other[u"quote"_s] = u"GBP"_s;
  const QJsonValue refused[] = {rate(0),
                                rate(-1.08),
                                rate(u"1.08"_s),
                                rate(QJsonValue::Null),
                                rate(std::numeric_limits<double>::infinity()),
                                rate(std::numeric_limits<double>::quiet_NaN()),
                                QJsonObject(),
                                QJsonValue::Null,
                                u"1.08"_s,
                                other};
  for (const QJsonValue& each : refused) {
    try {
      CurrencyQuote::decode(each, u"EUR"_s, u"USD"_s);
      ADD_FAILURE() << each.toVariant().toString().toStdString();
    } catch (const DomainError& error) {
      EXPECT_EQ(error.message(), u"Invalid rate response"_s);
    }
  }
  for (const auto& [text, isCode] : {std::pair{u"EUR"_s, true},
                                     {u"eur"_s, false},
                                     {u"EURO"_s, false},
                                     {u"KM"_s, false},
                                     {u"ÄÖÜ"_s, false},
                                     {u"E/R"_s, false}})
    EXPECT_EQ(CurrencyQuote::isCode(text), isCode) << text.toStdString();
}

struct CurrencyRatesTest : ::testing::Test {
  JobHandle ask(const QString& base = u"EUR"_s, const QString& quote = u"USD"_s) {
    told.clear();
    JobHandle job = rates.ask(
        base, quote, [this](const CurrencyQuote& got) { told << QString::number(got.rate); },
        [this](const QString& sentence) { told << sentence; });
    EXPECT_TRUE(told.isEmpty());
    QCoreApplication::processEvents();
    return job;
  }

  std::shared_ptr<test::ScriptedSession> session = std::make_shared<test::ScriptedSession>();
  CurrencyRates rates{session, QUrl(u"https://rates.example/"_s)};
  QStringList told;
};

TEST_F(CurrencyRatesTest, KeepARateForADay) {
  int changes = 0;
  QObject::connect(&rates, &CurrencyRates::changed, &rates, [&] { ++changes; });
  const JobHandle job = ask();
  EXPECT_EQ(session->asked.constLast()->call.url, QUrl(u"https://rates.example/v2/rate/eur/usd"_s));
  EXPECT_TRUE(session->asked.constLast()->call.token.isEmpty());
  session->answer(rate(1.0842));
  EXPECT_EQ(told, QStringList{u"1.0842"_s});
  EXPECT_EQ(changes, 1);
  const QDateTime asked = session->time;
  const auto isKeptAt = [&](qint64 seconds) {
    session->time = asked.addSecs(seconds);
    return rates.kept(u"EUR"_s, u"USD"_s).has_value();
  };
  EXPECT_TRUE(isKeptAt(0));
  EXPECT_TRUE(isKeptAt(CurrencyRates::kKeptSeconds - 1));
  EXPECT_FALSE(isKeptAt(CurrencyRates::kKeptSeconds));
  EXPECT_FALSE(isKeptAt(-1)) << "the clock was set back";
  EXPECT_FALSE(rates.kept(u"USD"_s, u"EUR"_s).has_value()) << "is a pair of its own";
}

TEST_F(CurrencyRatesTest, SayWhyThereIsNone) {
  JobHandle job = ask();
  session->answer(rate(0));
  EXPECT_EQ(told, QStringList{u"Invalid rate response"_s});
  job = ask();
  session->fail(ServiceHTTPError(404, std::nullopt));
  EXPECT_EQ(told, QStringList{u"The requested account or resource was not found. Check the connection fields."_s});
  EXPECT_FALSE(rates.kept(u"EUR"_s, u"USD"_s).has_value());
}

TEST_F(CurrencyRatesTest, TellNothingThatIsNotWantedAnyMore) {
  JobHandle job = ask();
  session->isDeaf = true;
  job.reset();
  session->answer(rate(1.5));
  EXPECT_TRUE(told.isEmpty());
  EXPECT_FALSE(rates.kept(u"EUR"_s, u"USD"_s).has_value());
  job = rates.ask(u"EUR"_s, u"USD"_s, {}, {});
  job.reset();
  QCoreApplication::processEvents();
  EXPECT_EQ(session->asked.size(), 1) << "it was not even asked";

  job = ask();
  QObject::connect(&rates, &CurrencyRates::changed, &rates, [&] { job.reset(); });
  session->answer(rate(1.5));
  EXPECT_TRUE(told.isEmpty()) << "whoever follows the rates ended it";
}

}  // namespace
}  // namespace tarnwick
