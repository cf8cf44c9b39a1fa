#include "services/providers/ShopifyReport.h"

#include <QSet>
#include <algorithm>
#include <cmath>

#include "services/providers/ProviderRow.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

ExactDecimal amountOf(const QJsonValue& value) {
  require(!value.isNull() && !value.isUndefined(),
          ServiceWords::tr("Shopify Analytics returned an unavailable amount."));
  const auto amount = value.isString() ? ExactDecimal::read(value.toString()) : std::nullopt;
  require(amount.has_value(), ServiceWords::tr("Shopify Analytics returned an invalid amount."));
  return *amount;
}

qint64 ordersOf(const QJsonValue& value) {
  bool isNumber = value.isDouble();
  const double count = value.isString() ? value.toString().toDouble(&isNumber) : value.toDouble();
  require(isNumber && std::isfinite(count) && count >= 0 && std::floor(count) == count && count < 9e15,
          ServiceWords::tr("Shopify Analytics returned an invalid order count."));
  return static_cast<qint64>(count);
}

/// The total of each day, in the order of the days.
QList<double> dailyOf(const QList<QJsonObject>& rows, const ShopifyReportPeriod& period) {
  QList<double> daily(period.days);
  QSet<QDate> seen;
  const QString incomplete =
      ServiceWords::tr("Shopify Analytics returned an incomplete daily series. Refresh to retry.");
  for (const QJsonObject& row : rows) {
    const QDate day = QDate::fromString(row[u"day"].toString().left(10), Qt::ISODate);
    require(day.isValid() && !row[u"total_sales"].isNull(), incomplete);
    const bool isNew = day >= period.first && day <= period.last && !seen.contains(day);
    require(isNew, ServiceWords::tr("Shopify Analytics returned duplicate or out-of-period dates."));
    seen << day;
    daily[period.first.daysTo(day)] = amountOf(row[u"total_sales"]).value();
  }
  require(seen.size() == period.days, incomplete);
  return daily;
}

}  // namespace

ShopifyReportMode selectedReportMode(const DockWidget& widget) {
  const QString mode = widget.options.value(option::shopifyReportMode);
  if (mode == "orders"_L1) return ShopifyReportMode::Orders;
  OptionRules::require(option::shopifyReportMode, mode.isEmpty() || mode == "analytics"_L1,
                       ServiceWords::tr("Choose Shopify Analytics or paid-order totals."));
  return ShopifyReportMode::Analytics;
}

ShopifyReportPeriod::ShopifyReportPeriod(int count, const QDateTime& now)
    : last(now.date()), zone(now.timeZone()), days(count) {
  require(days == 1 || days == 7 || days == 30, ServiceWords::tr("Choose a period of 1, 7, or 30 days."));
  first = last.addDays(1 - days);
  previousFirst = first.addDays(-days);
  require(previousFirst.isValid() && beginOf(previousFirst).isValid(),
          ServiceWords::tr("The reporting period could not be calculated."));
}

QList<QDate> ShopifyReportPeriod::each() const {
  QList<QDate> all;
  for (int i = 0; i < days; ++i) all << first.addDays(i);
  return all;
}

QString ShopifyReportPeriod::summaryQuery() const {
  return u"FROM sales SHOW total_sales, net_sales, returns, orders, average_order_value SINCE %1 UNTIL %2"_s.arg(
      first.toString(Qt::ISODate), last.toString(Qt::ISODate));
}

QString ShopifyReportPeriod::trendQuery() const {
  return u"FROM sales SHOW total_sales TIMESERIES day SINCE %1 UNTIL %2 ORDER BY day ASC"_s.arg(
      first.toString(Qt::ISODate), last.toString(Qt::ISODate));
}

QList<QJsonObject> ShopifyAnalyticsReport::table(const QJsonValue& value, const QString& name,
                                                 const QStringList& columns) {
  const QJsonValue report = value[u"data"][u"shopifyqlQuery"];
  require(report.isObject(),
          ServiceWords::tr("Shopify Analytics did not return the %1 report. Check read_reports and protected customer "
                           "data access.")
              .arg(name));
  ProviderData::object(value);
  const QJsonValue errors = report[u"parseErrors"];
  const bool isParsed = errors.isUndefined() || errors.isNull() || (errors.isArray() && errors.toArray().isEmpty());
  require(isParsed, ServiceWords::tr("Shopify Analytics could not parse the %1 report. Verify this store supports "
                                     "the current reporting API.")
                        .arg(name));
  const QString incomplete = ServiceWords::tr("Shopify Analytics returned an incomplete %1 report.").arg(name);
  QStringList names;
  for (const QJsonValue& column : ProviderData::list(report, u"tableData.columns"_s, incomplete))
    names << column[u"name"].toString();
  require(std::ranges::all_of(columns, [&](const QString& column) { return names.contains(column); }), incomplete);
  QList<QJsonObject> rows;
  for (const QJsonValue& row : ProviderData::list(report, u"tableData.rows"_s, incomplete)) {
    QJsonObject byName = row.toObject();
    // A row may also be the list of its values.
    for (qsizetype i = 0; row.isArray() && i < names.size(); ++i) byName[names[i]] = row[i];
    require(std::ranges::all_of(columns, [&](const QString& column) { return byName.contains(column); }), incomplete);
    rows << byName;
  }
  return rows;
}

ShopifyAnalyticsReport ShopifyAnalyticsReport::decode(const QJsonValue& summary, const QJsonValue& trend,
                                                      const ShopifyReportPeriod& period) {
  const QList<QJsonObject> totals = table(
      summary, u"summary"_s, {u"total_sales"_s, u"net_sales"_s, u"returns"_s, u"orders"_s, u"average_order_value"_s});
  require(totals.size() == 1, ServiceWords::tr("Shopify Analytics did not return one period total."));
  const QJsonObject& row = totals.first();
  ShopifyAnalyticsReport report;
  report.total = amountOf(row[u"total_sales"]);
  report.net = amountOf(row[u"net_sales"]);
  report.returns = amountOf(row[u"returns"]);
  report.orders = ordersOf(row[u"orders"]);
  // Without an order there is no average.
  if (report.orders > 0) report.average = amountOf(row[u"average_order_value"]);
  report.daily = dailyOf(table(trend, u"trend"_s, {u"day"_s, u"total_sales"_s}), period);
  return report;
}

OrderMetric OrderMetric::decode(const QJsonValue& node) {
  const QJsonValue money = node[u"currentTotalPriceSet"][u"shopMoney"];
  const auto created = ProviderData::date(node[u"createdAt"].toString());
  const QJsonValue amount = money[u"amount"];
  bool isNumber = amount.isDouble();
  const double sum = amount.isString() ? amount.toString().toDouble(&isNumber) : amount.toDouble();
  const OrderMetric order{node[u"id"].toString(), created.value_or(QDateTime()), sum,
                          money[u"currencyCode"].toString()};
  require(!order.id.isEmpty() && created && isNumber && !order.currency.isEmpty(),
          ServiceWords::tr("Shopify returned an incomplete order metric."));
  return order;
}

OrderSummary OrderSummary::aggregate(const QList<OrderMetric>& orders, const QDate& first, int days,
                                     const QTimeZone& zone) {
  OrderSummary summary;
  summary.daily.resize(days);
  for (const OrderMetric& order : orders) {
    const qint64 day = first.daysTo(order.created.toTimeZone(zone).date());
    if (day < 0 || day >= days) continue;
    require(summary.currency.isEmpty() || summary.currency == order.currency,
            ServiceWords::tr("The order response contains mixed shop currencies; no combined total is shown."));
    summary.currency = order.currency;
    summary.daily[day] += order.amount;
    summary.total += order.amount;
    ++summary.count;
  }
  require(std::isfinite(summary.total), ServiceWords::tr("The order total is invalid."));
  if (summary.count > 0) summary.average = summary.total / static_cast<double>(summary.count);
  return summary;
}

QString OrderSummary::comparison(const OrderSummary& current, const OrderSummary& previous) {
  if (previous.total == 0) return ServiceWords::tr("No previous sales");
  return QString::asprintf("%+.1f%%", (current.total - previous.total) / previous.total * 100);
}

}  // namespace tarnwick
