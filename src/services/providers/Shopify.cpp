#include "services/Money.h"
#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "services/providers/ShopifyReport.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

const QString kAdminPath = u"/admin/api/2026-10/graphql.json"_s;

/// The store is the user's own: it is what the credential belongs to.
void normaliseShopify(DockWidget& widget) {
  OptionRules options(widget);
  const QString shop = options.trimmed(option::shop);
  OptionRules::require(option::shop, OptionRules::matches(shop, "[a-z0-9][a-z0-9-]*\\.myshopify\\.com"),
                       ServiceWords::tr("Enter the store’s exact Shopify domain, such as your-store.myshopify.com."));
  options.set(option::endpoint, "https://"_L1 + shop);
  options.set(option::dashboard, "https://"_L1 + shop + "/admin"_L1);
  options.trimmed(option::shopifyReportMode, u"analytics"_s);
  selectedReportMode(widget);
  const QString days = options.trimmed(option::periodDays, u"7"_s);
  OptionRules::require(option::periodDays, OptionRules::matches(days, "1|7|30"),
                       ServiceWords::tr("Choose a period of 1, 7, or 30 days."));
}

ServiceCall adminCall(const ProviderRequest& request, const QString& query, const QJsonObject& variables) {
  ServiceCall call = request.keyed(u"X-Shopify-Access-Token"_s, kAdminPath);
  call.body = QJsonObject{{u"query"_s, query}, {u"variables"_s, variables}};
  return call;
}

ServiceCall reportCall(const ProviderRequest& request, const QString& query) {
  return adminCall(request,
                   u"query($report:String!){shop{currencyCode}shopifyqlQuery(query:$report){parseErrors "
                   u"tableData{columns{name}rows}}}"_s,
                   {{u"report"_s, query}});
}

ServiceCall ordersCall(const ProviderRequest& request, const ShopifyReportPeriod& period, const QString& cursor) {
  const QString since = period.beginOf(period.previousFirst).toUTC().toString(Qt::ISODate);
  return adminCall(
      request,
      u"query($first:Int!,$after:String,$filter:String){shop{currencyCode}orders(first:$first,after:$after,query:$"
      u"filter,"
      u"sortKey:CREATED_AT,reverse:true){nodes{id createdAt currentTotalPriceSet{shopMoney{amount currencyCode}}}"
      u"pageInfo{hasNextPage endCursor}}}"_s,
      {{u"first"_s, request.limits.pageSize},
       {u"after"_s, cursor.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(cursor)},
       {u"filter"_s,
        u"created_at:>='%1' AND (financial_status:paid OR financial_status:partially_refunded)"_s.arg(since)}});
}

/// In which the store counts. No sum is shown in one that nobody named.
QString currencyOf(const QJsonValue& answer) {
  const QString code = answer[u"data"][u"shop"][u"currencyCode"].toString();
  require(OptionRules::matches(code, "[A-Z]{3}"), ProviderRow::unexpected());
  return code;
}

QString periodWords(int days) {
  return days == 1 ? ServiceWords::tr("Total sales · today") : ServiceWords::tr("Total sales · %1 days").arg(days);
}

QCoro::Task<RemoteValue> fetchReport(ProviderRequest request, ShopifyReportPeriod period, std::stop_token stop) {
  const ServiceCall first = reportCall(request, period.summaryQuery());
  const QJsonValue summary = co_await request.answer(first, stop);
  const ServiceCall second = reportCall(request, period.trendQuery());
  const QJsonValue trend = co_await request.answer(second, stop);
  const ShopifyAnalyticsReport report = ShopifyAnalyticsReport::decode(summary, trend, period);
  const QString currency = currencyOf(summary);
  const auto money = [&currency](const ExactDecimal& amount) { return Money::text(amount, currency); };
  RemoteValue value = request.shown(money(report.total), periodWords(period.days));
  value.metrics = {{ServiceWords::tr("Net sales"), money(report.net)},
                   {ServiceWords::tr("Returns"), money(report.returns)},
                   {ServiceWords::tr("Orders"), QString::number(report.orders)}};
  if (report.average) value.metrics << ServiceMetric{ServiceWords::tr("Average order"), money(*report.average)};
  value.numbers = report.daily;
  value.numberDays = period.each();
  co_return value;
}

QCoro::Task<RemoteValue> fetchOrders(ProviderRequest request, ShopifyReportPeriod period, std::stop_token stop) {
  QList<OrderMetric> orders;
  QJsonObject answer;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    const ServiceCall call = ordersCall(request, period, pages.cursor());
    const QJsonObject body = co_await request.object(call, stop);
    answer = body;
    const QJsonValue list = body[u"data"][u"orders"];
    for (const QJsonValue& node : ProviderData::list(list, u"nodes"_s, ProviderRow::unexpected())) {
      OrderMetric order = OrderMetric::decode(node);
      // Here, a page at a time: the days of thousands at the end would take long.
      order.created = order.created.toTimeZone(period.zone);
      orders << order;
    }
    const QJsonValue info = list[u"pageInfo"];
    require(info[u"hasNextPage"].isBool(), ProviderRow::unexpected());
    pages.goOn(info[u"hasNextPage"].toBool(), info[u"endCursor"].toString(), ProviderRow::unexpected());
  }
  const OrderSummary current = OrderSummary::aggregate(orders, period.first, period.days, period.zone);
  const OrderSummary previous = OrderSummary::aggregate(orders, period.previousFirst, period.days, period.zone);
  require(current.currency.isEmpty() || previous.currency.isEmpty() || current.currency == previous.currency,
          ServiceWords::tr("The order response contains mixed shop currencies; no combined total is shown."));
  QString currency = current.currency.isEmpty() ? previous.currency : current.currency;
  if (currency.isEmpty()) currency = currencyOf(answer);
  // The newest come first: a list that was cut short before the period began has all of it.
  const bool isCut = pages.isPartial() && (orders.isEmpty() || orders.last().created >= period.beginOf(period.first));
  const QString total = Money::text(current.total, currency);
  RemoteValue value = request.shown(isCut ? ServiceWords::tr("Partial · ") + total : total, periodWords(period.days));
  value.metrics = {{ServiceWords::tr("Orders"), QString::number(current.count)}};
  if (current.average)
    value.metrics << ServiceMetric{ServiceWords::tr("Average order"), Money::text(*current.average, currency)};
  // Of a list that was cut short the earlier days are missing.
  if (!pages.isPartial())
    value.metrics << ServiceMetric{ServiceWords::tr("Change"), OrderSummary::comparison(current, previous)};
  value.numbers = current.daily;
  value.numberDays = period.each();
  value.detail = ServiceWords::tr("Paid orders by their current total.");
  if (isCut) value.detail += ServiceWords::tr(" More than 5,000 orders; this is not a complete total.");
  co_return value;
}

QCoro::Task<RemoteValue> fetchSales(ProviderRequest request, std::stop_token stop) {
  const ShopifyReportPeriod period(request.option(option::periodDays).toInt(), request.now());
  if (selectedReportMode(request.widget) == ShopifyReportMode::Orders)
    return fetchOrders(std::move(request), period, stop);
  return fetchReport(std::move(request), period, stop);
}

}  // namespace

Provider shopify() {
  return {
      .id = u"shopify"_s,
      .name = u"Shopify"_s,
      .credential = {.label = ServiceWords::tr("Admin API access token"),
                     .placeholder = u"shpat_…"_s,
                     .explanation = ServiceWords::tr("A token of a custom app of the store with “read_reports” or "
                                                     "“read_orders”."),
                     .page = QUrl(u"https://admin.shopify.com"_s),
                     .missing = ProviderRow::addProviderCredential()},
      .limits = {.pages = 20, .pageSize = 250},
      .normalise = normaliseShopify,
      .topics =
          {{.kinds = {{kind::shopifyRevenue}, {kind::shopifyOverview}, {kind::shopifyTrends}},
            .explanation = ServiceWords::tr("Sales of a store, by its own analytics or as the sum of its paid orders."),
            .fields = {{option::shop, ServiceWords::tr("Store domain"), u"your-store.myshopify.com"_s},
                       {.key = option::shopifyReportMode,
                        .label = ServiceWords::tr("Report"),
                        .values = {u"analytics"_s, u"orders"_s},
                        .words = {ServiceWords::tr("Analytics"), ServiceWords::tr("Paid orders")}},
                       {.key = option::periodDays,
                        .label = ServiceWords::tr("Period"),
                        .values = {u"1"_s, u"7"_s, u"30"_s},
                        .words = {ServiceWords::tr("Today"), ServiceWords::tr("7 days"), ServiceWords::tr("30 days")},
                        .usual = 1}},
            .fetch = fetchSales}},
  };
}

}  // namespace tarnwick
