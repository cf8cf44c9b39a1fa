#include <gtest/gtest.h>

#include <QJsonDocument>

#include "base/DomainError.h"
#include "services/Money.h"
#include "services/providers/ShopifyReport.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QDateTime kTuesday(QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc());

QJsonValue jsonOf(const QByteArray& text) { return QJsonDocument::fromJson(text).object(); }

template <class Work>
QString shopSentence(const Work& work) {
  try {
    work();
  } catch (const DomainError& error) {
    return error.message();
  }
  return {};
}

QByteArray reportOf(const QByteArray& columns, const QByteArray& rows, const QByteArray& errors = "[]") {
  QByteArrayList named;
  for (const QByteArray& column : columns.split(' ')) named << "{\"name\":\"" + column + "\"}";
  return R"({"data":{"shopifyqlQuery":{"parseErrors":)" + errors + R"(,"tableData":{"columns":[)" + named.join(',') +
         R"(],"rows":)" + rows + "}}}}";
}

QByteArray summaryOf(const QByteArray& total, const QByteArray& orders, const QByteArray& average = "\"5.00\"") {
  return reportOf("total_sales net_sales returns orders average_order_value",
                  R"([{"total_sales":)" + total + R"(,"net_sales":"9.5","returns":"-1","orders":)" + orders +
                      R"(,"average_order_value":)" + average + "}]");
}

TEST(Shopify, AddsSumsWithoutRounding) {
  const struct {
    const char* first;
    const char* second;
    QString sum;
  } cases[] = {
      {"0.1", "0.2", u"0.3"_s},
      {"+12.50", "-12.49", u"0.01"_s},
      {"-0.5", "0.25", u"-0.25"_s},
      {"123456789012345678", "0.000000001", u"123456789012345678.000000001"_s},
      {"41.666666666666664000009", "0", u"41.666666666666664"_s},
      {"0", "-0", u"0"_s},
  };
  for (const auto& [first, second, sum] : cases) {
    const auto one = ExactDecimal::read(QString::fromLatin1(first));
    const auto other = ExactDecimal::read(QString::fromLatin1(second));
    ASSERT_TRUE(one && other) << first;
    EXPECT_EQ((*one + *other).text(), sum);
  }
  for (const char* text : {"1e3", "1.", ".5", "", " 1", "1\n", "NaN", "1234567890123456789"})
    EXPECT_FALSE(ExactDecimal::read(QString::fromLatin1(text))) << text;
}

TEST(Shopify, ShowsSumsAsTheyAreWritten) {
  const QLocale american(QLocale::English, QLocale::UnitedStates);
  const QLocale german(QLocale::German, QLocale::Germany);
  const struct {
    const char* sum;
    QString currency;
    QLocale locale;
    QString shown;
  } cases[] = {
      {"123456789012345678.99", u"USD"_s, american, u"$123,456,789,012,345,678.99"_s},
      {"1234.5", u"eur"_s, american, u"€1,234.50"_s},
      {"1234.5", u"EUR"_s, german, u"1.234,50\u00a0€"_s},
      {"1.005", u"USD"_s, american, u"$1.01"_s},
      {"-1.005", u"USD"_s, american, u"-$1.01"_s},
      {"-0.004", u"USD"_s, american, u"$0.00"_s},
      {"999.999", u"USD"_s, american, u"$1,000.00"_s},
      {"2.5", u"JPY"_s, american, u"¥3"_s},
      {"1.2345", u"KWD"_s, american, u"KWD\u00a01.235"_s},
      {"7", u"SEK"_s, german, u"7,00\u00a0SEK"_s},
  };
  for (const auto& [sum, currency, locale, shown] : cases) {
    EXPECT_EQ(Money::text(*ExactDecimal::read(QString::fromLatin1(sum)), currency, locale).toStdString(),
              shown.toStdString());
  }
  EXPECT_EQ(Money::ofMinor(-9'007'199'254'740'993, u"USD"_s, american), u"-$90,071,992,547,409.93"_s);
}

TEST(Shopify, ReadsAWholeReportOrSaysWhatIsMissing) {
  const ShopifyReportPeriod period(1, kTuesday);
  EXPECT_EQ(period.trendQuery(),
            u"FROM sales SHOW total_sales TIMESERIES day SINCE 2026-11-24 UNTIL 2026-11-24 ORDER BY day ASC"_s);
  const QByteArray trend = reportOf("day total_sales", R"([["2026-11-24","10.5"]])");
  const ShopifyAnalyticsReport report =
      ShopifyAnalyticsReport::decode(jsonOf(summaryOf("\"10.5\"", "2")), jsonOf(trend), period);
  EXPECT_EQ(report.total.text() + u' ' + report.net.text() + u' ' + report.returns.text(), u"10.5 9.5 -1"_s);
  EXPECT_EQ(report.orders, 2);
  EXPECT_EQ(report.average->text(), u"5"_s);
  EXPECT_EQ(report.daily, QList<double>{10.5});
  EXPECT_FALSE(ShopifyAnalyticsReport::decode(jsonOf(summaryOf("\"0\"", "0", "null")), jsonOf(trend), period).average);

  const QByteArray good = summaryOf("\"1\"", "1");
  const QString duplicate = u"Shopify Analytics returned duplicate or out-of-period dates."_s;
  const struct {
    QByteArray summary;
    QByteArray trend;
    QString sentence;
  } cases[] = {
      {"{}", trend,
       u"Shopify Analytics did not return the summary report. Check read_reports and protected customer data access."_s},
      {reportOf("total_sales", "[]", R"(["no"])"), trend,
       u"Shopify Analytics could not parse the summary report. Verify this store supports the current reporting API."_s},
      {reportOf("total_sales", "[]"), trend, u"Shopify Analytics returned an incomplete summary report."_s},
      {reportOf("total_sales net_sales returns orders average_order_value", "[]"), trend,
       u"Shopify Analytics did not return one period total."_s},
      {summaryOf("null", "1"), trend, u"Shopify Analytics returned an unavailable amount."_s},
      {summaryOf("\"1e3\"", "1"), trend, u"Shopify Analytics returned an invalid amount."_s},
      {summaryOf("\"1\"", "1.5"), trend, u"Shopify Analytics returned an invalid order count."_s},
      {good, reportOf("day total_sales", "[]"),
       u"Shopify Analytics returned an incomplete daily series. Refresh to retry."_s},
      {good, reportOf("day total_sales", R"([["2026-11-24","1"],["2026-11-24","1"]])"), duplicate},
      {good, reportOf("day total_sales", R"([["2026-11-23","1"]])"), duplicate},
      {good, reportOf("day", "[]"), u"Shopify Analytics returned an incomplete trend report."_s},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(shopSentence([&] { ShopifyAnalyticsReport::decode(jsonOf(each.summary), jsonOf(each.trend), period); }),
              each.sentence);
  }
  for (const int days : {0, 2, 31})
    EXPECT_EQ(shopSentence([&] { ShopifyReportPeriod(days, kTuesday); }), u"Choose a period of 1, 7, or 30 days."_s);
  EXPECT_EQ(shopSentence([] { ShopifyReportPeriod(7, QDateTime()); }),
            u"The reporting period could not be calculated."_s);
}

TEST(Shopify, SumsOrdersByTheDayOfTheStoresClock) {
  const auto order = [](const char* created, double amount, const QString& currency = u"USD"_s) {
    return OrderMetric{u"id"_s, QDateTime::fromString(QString::fromLatin1(created), Qt::ISODate), amount, currency};
  };
  const QTimeZone berlin("Europe/Berlin");
  const QDate first(2026, 11, 18);
  const QList<OrderMetric> orders{order("2026-11-17T23:30:00Z", 10), order("2026-11-24T10:00:00Z", 5),
                                  order("2026-11-17T22:30:00Z", 8), order("2026-11-11T12:00:00Z", 2)};
  const OrderSummary current = OrderSummary::aggregate(orders, first, 7, berlin);
  EXPECT_EQ(current.daily, (QList<double>{10, 0, 0, 0, 0, 0, 5}));
  EXPECT_EQ(current.average, 7.5);
  const OrderSummary previous = OrderSummary::aggregate(orders, first.addDays(-7), 7, berlin);
  EXPECT_EQ(previous.total, 10);
  EXPECT_EQ(OrderSummary::comparison(current, previous), u"+50.0%"_s);
  EXPECT_EQ(OrderSummary::comparison(current, {}), u"No previous sales"_s);
  EXPECT_FALSE(OrderSummary::aggregate({}, first, 7, berlin).average);
  EXPECT_EQ(shopSentence([&] {
              OrderSummary::aggregate({orders[1], order("2026-11-24T11:00:00Z", 1, u"EUR"_s)}, first, 7, berlin);
            }),
            u"The order response contains mixed shop currencies; no combined total is shown."_s);
  EXPECT_EQ(shopSentence([&] { OrderMetric::decode(jsonOf(R"({"id":"1","createdAt":"2026-11-24T10:00:00Z"})")); }),
            u"Shopify returned an incomplete order metric."_s);
}

}  // namespace
}  // namespace tarnwick
