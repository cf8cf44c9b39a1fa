#include "support/Conversations.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>

#include "base/DomainError.h"
#include "services/ProviderTable.h"
#include "services/ServiceHTTPError.h"
#include "support/ScriptedSession.h"

namespace tarnwick::test {

using namespace Qt::StringLiterals;

namespace {

QString jsonText(const QJsonObject& object) {
  return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

}  // namespace

QJsonValue parsed(const QString& text) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
  EXPECT_FALSE(document.isNull()) << text.toStdString() << error.errorString().toStdString();
  return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

QString told(const ServiceCall& call) {
  QString text = (call.body ? u"POST "_s : u"GET "_s) + call.url.toString(QUrl::FullyEncoded);
  if (!call.token.isEmpty()) text += (call.bearer ? u" Bearer "_s : u" raw "_s) + call.token;
  for (const auto& [name, value] : call.headers.asKeyValueRange()) text += u" · %1: %2"_s.arg(name, value);
  if (call.body) text += u' ' + jsonText(*call.body);
  return text;
}

QString told(const RemoteValue& value) {
  QStringList metrics;
  for (const ServiceMetric& metric : value.metrics) metrics << metric.label + u'=' + metric.value;
  QStringList rows;
  for (const ServiceRow& row : value.rows) {
    rows << row.title + (row.subtitle.isEmpty() ? QString() : u" ("_s + row.subtitle + u')') +
                (row.url ? u" → "_s + row.url->toString() : QString());
  }
  QStringList numbers;
  for (qsizetype i = 0; i < value.numbers.size(); ++i) {
    const QString day = value.numberDays.value(i).toString(Qt::ISODate);
    const QString moment = value.numberMoments.value(i).toUTC().toString(Qt::ISODate);
    numbers << QString::number(value.numbers[i]) + (day.isEmpty() ? QString() : u'@' + day) +
                   (moment.isEmpty() ? QString() : u'@' + moment);
  }
  QStringList windows;
  for (const UsageWindow& window : value.usageWindows) {
    windows << u"%1 %2 %3% %4 %5"_s.arg(window.id, window.label)
                   .arg(window.used)
                   .arg(window.durationMinutes.value_or(0))
                   .arg(window.resetsAt ? window.resetsAt->toUTC().toString(Qt::ISODate) : u"never"_s);
  }
  QStringList parts{value.value.value_or(QString()),
                    value.subtitle,
                    value.detail,
                    metrics.join(u", "),
                    rows.join(u", "_s),
                    numbers.join(u' '),
                    windows.join(u", "_s)};
  while (!parts.isEmpty() && parts.last().isEmpty()) parts.removeLast();
  return parts.join(u" | "_s);
}

namespace {

QList<Conversation> ofDevelopers() {
  const QString github = u"https://api.github.com"_s;
  return {
      {u"analyticsGitHubContributions"_s,
       {{u"username"_s, u"octocat"_s}},
       {{u"POST "_s + github +
             u"/graphql Bearer key {\"query\":\"query($login:String!){user(login:$login){contributionsCollection{"
             "contributionCalendar{totalContributions weeks{contributionDays{date "
             "contributionCount}}}}}}\",\"variables\":{\"login\":\"octocat\"}}"_s,
         uR"({"data":{"user":{"contributionsCollection":{"contributionCalendar":{"weeks":[
             {"contributionDays":[{"date":"2026-11-17","contributionCount":9},{"date":"2026-11-23","contributionCount":3}]},
             {"contributionDays":[{"date":"2026-11-24","contributionCount":4}]}]}}}}})"_s}},
       u"4 | Contributions today | 16 in the last year | 7 days=7 |  | 9@2026-11-17 3@2026-11-23 4@2026-11-24"_s},
      {u"analyticsGitHub"_s,
       {},
       {{u"GET "_s + github + u"/notifications?all=false&page=1&per_page=100 Bearer key"_s,
         uR"([{"id":"1","subject":{"title":"Fix"},"repository":{"full_name":"a/b"}},{"id":"2"}])"_s}},
       u"2 | Unread notifications |  |  | Fix (a/b) → https://github.com/notifications, "
       u"Notification → https://github.com/notifications"_s},
      {u"analyticsGitHubOverview"_s,
       {{u"repository"_s, u"a/b"_s}, {u"field"_s, u"forks"_s}},
       {{u"GET "_s + github + u"/notifications?all=false&page=1&per_page=100 Bearer key"_s, uR"([{"id":"1"}])"_s},
        {u"POST "_s + github + u"/graphql Bearer key {\"query\":\"{viewer{pullRequests(states:OPEN){totalCount}}}\"}"_s,
         uR"({"data":{"viewer":{"pullRequests":{"totalCount":5}}}})"_s},
        {u"GET "_s + github + u"/repos/a/b Bearer key"_s, uR"({"stargazers_count":1200})"_s}},
       u"1 | Unread notifications |  | Unread=1, Open PRs=5, Stars=1200 | Notification → "
       u"https://github.com/notifications"_s},
      {u"analyticsGitHub"_s,
       {{u"repository"_s, u"a/b"_s}, {u"field"_s, u"open_issues_count"_s}},
       {{u"GET "_s + github + u"/repos/a/b Bearer key"_s, uR"({"open_issues_count":7})"_s}},
       u"7 | Open issues & pull requests | a/b"_s},
      {u"analyticsGitHub"_s,
       {{u"repository"_s, u"a/b"_s}, {u"field"_s, u"stargazers_count"_s}},
       {{u"GET "_s + github + u"/repos/a/b Bearer key"_s, uR"({"stargazers_count":1200})"_s}},
       u"1200 | Repository stars | a/b"_s},
      {u"analyticsGitHub"_s,
       {{u"repository"_s, u"a/b"_s}, {u"field"_s, u"forks"_s}},
       {{u"GET "_s + github + u"/repos/a/b Bearer key"_s, uR"({"forks":3})"_s}},
       u"3 | Repository forks | a/b"_s},
      {u"productivityLinear"_s,
       {},
       {{u"POST https://api.linear.app/graphql raw key "
         "{\"query\":\"query($after:String){viewer{assignedIssues(first:100,after:$after){nodes{id identifier title "
         "url "
         "dueDate state{name type}}pageInfo{hasNextPage endCursor}}}}\",\"variables\":{\"after\":null}}"_s,
         uR"({"data":{"viewer":{"assignedIssues":{"nodes":[
             {"id":"1","identifier":"T-1","title":"Due","url":"https://linear.app/1","dueDate":"2026-11-23","state":{"name":"Todo","type":"unstarted"}},
             {"id":"2","identifier":"T-2","title":"Done","state":{"name":"Done","type":"completed"}},
             {"id":"3","identifier":"T-3","title":"Today","url":"https://linear.app/3","dueDate":"2026-11-24","state":{"name":"Doing","type":"started"}}],
             "pageInfo":{"hasNextPage":false}}}}})"_s}},
       u"2 | Active assigned issues |  | Active=2, Overdue=1 | T-1 Due (Todo) → https://linear.app/1, "
       u"T-3 Today (Doing) → https://linear.app/3"_s},
      {u"analyticsSupabase"_s,
       {{u"projectRef"_s, u"abcdefghijklmnopqrst"_s}},
       {{u"GET https://api.supabase.com/v1/projects/abcdefghijklmnopqrst/analytics/endpoints/"
         "usage.api-counts?interval=1day Bearer key"_s,
         uR"({"result":[{"total_rest_requests":10,"total_auth_requests":1},{"total_rest_requests":5,"total_auth_requests":2}]})"_s},
        {u"GET https://api.supabase.com/v1/projects/abcdefghijklmnopqrst/config/disk/util Bearer key"_s,
         uR"({"metrics":{"fs_used_bytes":1200000000,"fs_size_bytes":8000000000}})"_s}},
       u"15 | REST requests · 24 hours | 1.20 / 8.00 GB disk used | REST=15, Auth=3"_s},
      {u"analyticsSupabaseOverview"_s,
       {{u"projectRef"_s, u"abcdefghijklmnopqrst"_s}},
       {{u"GET https://api.supabase.com/v1/projects/abcdefghijklmnopqrst/analytics/endpoints/"
         "usage.api-counts?interval=1day Bearer key"_s,
         uR"({"result":[]})"_s},
        {u"GET https://api.supabase.com/v1/projects/abcdefghijklmnopqrst/config/disk/util Bearer key"_s, u"403"_s}},
       u"0 | REST requests · 24 hours | Disk metric: Unavailable | REST=0, Auth=0"_s},
      {u"analyticsSupabase"_s,
       {{u"projectRef"_s, u"abcdefghijklmnopqrst"_s}},
       {{u"GET https://api.supabase.com/v1/projects/abcdefghijklmnopqrst/analytics/endpoints/"
         "usage.api-counts?interval=1day Bearer key"_s,
         uR"({"result":[]})"_s},
        {u"GET https://api.supabase.com/v1/projects/abcdefghijklmnopqrst/config/disk/util Bearer key"_s,
         uR"({"metrics":{"fs_used_bytes":9,"fs_size_bytes":3}})"_s}},
       u"0 | REST requests · 24 hours | Disk metric: Invalid disk usage. | REST=0, Auth=0"_s},
      {u"analyticsResend"_s,
       {},
       {{u"GET https://api.resend.com/emails?limit=100 Bearer key"_s,
         uR"({"has_more":true,"data":[{"id":"1","created_at":"2026-11-24 09:00:00+00","last_event":"delivered"},
             {"id":"2","created_at":"2026-11-20T09:00:00.5Z","last_event":"bounced"}]})"_s},
        {u"GET https://api.resend.com/emails?after=2&limit=100 Bearer key"_s,
         uR"({"has_more":true,"data":[{"id":"3","created_at":"2026-11-02 09:00:00+00","last_event":"opened"},
             {"id":"4","created_at":"2026-10-31 23:59:59+00","last_event":"delivered"}]})"_s}},
       u"1 | Sent today | Delivery includes delivered, opened, clicked and complained states.  | Today=1, This "
       u"month=3, Delivered=66.7%"_s},
      {u"analyticsPlausible"_s,
       {{u"site"_s, u" example.com "_s}},
       {{u"POST https://plausible.io/api/v2/query Bearer key "
         "{\"date_range\":\"7d\",\"metrics\":[\"visitors\"],\"site_id\":\"example.com\"}"_s,
         uR"({"results":[{"metrics":[4210],"dimensions":[]}]})"_s},
        {u"POST https://plausible.io/api/v2/query Bearer key "
         "{\"date_range\":\"7d\",\"dimensions\":[\"time:day\"],\"metrics\":[\"visitors\"],\"site_id\":\"example.com\"}"_s,
         uR"({"results":[{"metrics":[600],"dimensions":["2026-11-23"]},{"metrics":[610],"dimensions":["a day"]}]})"_s}},
       u"4210 | Unique visitors · 7 days |  |  |  | 600@2026-11-23 610"_s},
      {u"analyticsDubOverview"_s,
       {},
       {{u"GET https://api.dub.co/analytics?event=clicks&interval=7d Bearer key"_s, uR"({"clicks":320})"_s}},
       u"320 | Clicks · 7 days"_s},
      {u"dubShortener"_s,
       {},
       {{u"GET https://api.dub.co/links Bearer key"_s,
         uR"([{"id":"l","shortLink":"https://dub.sh/a","url":"https://example.com/long"}])"_s}},
       u"1 | Saved links · latest 100 |  |  | https://dub.sh/a (https://example.com/long) → https://dub.sh/a"_s},
      {u"analyticsSimpleAnalytics"_s,
       {{u"site"_s, u"example.com"_s}},
       {{u"GET https://simpleanalytics.com/example.com.json?fields=visitors%2Cpageviews%2Chistogram&start=2026-11-18&"
         "timezone=UTC&version=6 · Api-Key: key"_s,
         uR"({"status":"success","visitors":70,"pageviews":"95","histogram":[{"date":"2026-11-23","visitors":30},{"date":"2026-11-24","visitors":40}]})"_s}},
       u"70 | Unique visitors · 7 days |  | Pageviews=95 |  | 30@2026-11-23 40@2026-11-24"_s},
      {u"analyticsDataFast"_s,
       {},
       {{u"GET https://datafa.st/api/v1/analytics/overview?endAt=2026-11-24&fields=visitors%2Cpageviews%2Csessions&"
         "startAt=2026-11-18 Bearer key"_s,
         uR"({"data":[{"visitors":12,"pageviews":30,"sessions":14}]})"_s}},
       u"12 | Unique visitors · 7 days |  | Pageviews=30, Sessions=14"_s},
      {u"analyticsDataFastChart"_s,
       {},
       {{u"GET https://datafa.st/api/v1/analytics/overview?endAt=2026-11-24&fields=visitors%2Cpageviews%2Csessions&"
         "startAt=2026-11-18 Bearer key"_s,
         uR"({"data":[{"visitors":12,"pageviews":30,"sessions":14}]})"_s},
        {u"GET https://datafa.st/api/v1/analytics/timeseries?endAt=2026-11-24&fields=visitors&interval=day&"
         "startAt=2026-11-18 Bearer key"_s,
         uR"({"data":[{"visitors":5,"timestamp":"2026-11-23T00:00:00.000Z"},{"visitors":7,"timestamp":"2026-11-24T09:00:00Z"}]})"_s}},
       u"12 | Unique visitors · 7 days |  | Pageviews=30, Sessions=14 |  | 5@2026-11-23 7"_s},
  };
}

QList<Conversation> ofMoneyAndMarkets() {
  const QString coins = u"https://api.coingecko.com/api/v3"_s;
  const QString price =
      u"&include_24hr_change=true&include_last_updated_at=true&vs_currencies=usd · "
      u"x-cg-demo-api-key: key"_s;
  return {
      {u"revenueStripe"_s,
       {},
       {{u"GET https://api.stripe.com/v1/balance_transactions?created%5Bgte%5D=1792923840&created%5Blte%5D=1795515840&"
         "limit=100 Bearer key"_s,
         uR"({"has_more":false,"data":[{"id":"1","reporting_category":"charge","currency":"usd","net":10050},
             {"id":"2","reporting_category":"fee","currency":"usd","net":-50},{"id":"3","reporting_category":"payout","currency":"usd","net":-9000},
             {"id":"4","reporting_category":"charge","currency":"eur","net":700}]})"_s}},
       u"$100.00 | Net revenue · 30 days | USD payments less refunds, disputes and fees. Payouts, transfers, reserves "
       u"and top-ups excluded."_s},
      {u"revenuePolar"_s,
       {},
       {{u"GET https://api.polar.sh/v1/metrics/?end_date=2026-11-24&interval=day&start_date=2026-10-25&timezone=UTC "
         "Bearer key"_s,
         uR"({"totals":{"net_revenue":123456},"periods":[{"net_revenue":100,"timestamp":"2026-11-23T00:00:00Z"},{"net_revenue":250}]})"_s}},
       u"$1,234.56 | Net revenue · 30 days |  |  |  | 1@2026-11-23 2.5"_s},
      {u"revenueDodoPayments"_s,
       {{u"currency"_s, u"JPY"_s}},
       {{u"GET https://live.dodopayments.com/balances/ledger?created_at_gte=2026-10-25T10%3A24%3A00Z&created_at_lte="
         "2026-11-24T10%3A24%3A00Z&currency=JPY&page_number=0&page_size=100 Bearer key"_s,
         uR"({"items":[{"currency":"jpy","event_type":"payment","is_credit":true,"amount":5000},
             {"currency":"JPY","event_type":"refund","is_credit":false,"amount":500},
             {"currency":"JPY","event_type":"payout","amount":"x"},{"currency":"USD"}]})"_s}},
       u"¥4,500 | Net payments · 30 days | Payments less refunds, disputes and related fees; payouts/transfers "
       u"excluded. 4 ledger entries read."_s},
      {u"shopifyTrends"_s,
       {{u"shop"_s, u"tarn.myshopify.com"_s}, {u"periodDays"_s, u"1"_s}},
       {{u"POST https://tarn.myshopify.com/admin/api/2026-10/graphql.json · X-Shopify-Access-Token: key {\"query\":\"query($report:String!){shop{currencyCode}shopifyqlQuery(query:$report){parseErrors tableData{columns{name}rows}}}\",\"variables\":{\"report\":\"FROM sales SHOW total_sales, net_sales, returns, orders, average_order_value SINCE 2026-11-24 UNTIL 2026-11-24\"}}"_s,
         uR"({"data":{"shop":{"currencyCode":"EUR"},"shopifyqlQuery":{"parseErrors":[],"tableData":{"columns":[{"name":"total_sales"},{"name":"net_sales"},{"name":"returns"},{"name":"orders"},{"name":"average_order_value"}],
             "rows":[{"total_sales":"1234.5","net_sales":"1200","returns":"-34.5","orders":3,"average_order_value":"411.5"}]}}}})"_s},
        {u"POST https://tarn.myshopify.com/admin/api/2026-10/graphql.json · X-Shopify-Access-Token: key {\"query\":\"query($report:String!){shop{currencyCode}shopifyqlQuery(query:$report){parseErrors tableData{columns{name}rows}}}\",\"variables\":{\"report\":\"FROM sales SHOW total_sales TIMESERIES day SINCE 2026-11-24 UNTIL 2026-11-24 ORDER BY day ASC\"}}"_s,
         uR"({"data":{"shopifyqlQuery":{"tableData":{"columns":[{"name":"day"},{"name":"total_sales"}],"rows":[{"day":"2026-11-24","total_sales":"1234.5"}]}}}})"_s}},
       u"€1,234.50 | Total sales · today |  | Net sales=€1,200.00, Returns=-€34.50, Orders=3, Average order=€411.50 |  "
       u"| "
       u"1234.5@2026-11-24"_s},
      {u"shopifyRevenue"_s,
       {{u"shop"_s, u"tarn.myshopify.com"_s}, {u"shopifyReportMode"_s, u"orders"_s}},
       {{u"POST https://tarn.myshopify.com/admin/api/2026-10/graphql.json · X-Shopify-Access-Token: key "
         "{\"query\":\"query($first:Int!,$after:String,$filter:String){shop{currencyCode}orders(first:$first,after:$"
         "after,query:$filter,"
         "sortKey:CREATED_AT,reverse:true){nodes{id createdAt currentTotalPriceSet{shopMoney{amount "
         "currencyCode}}}pageInfo{hasNextPage "
         "endCursor}}}\",\"variables\":{\"after\":null,\"filter\":\"created_at:>='2026-11-"
         "11T00:00:00Z' AND (financial_status:paid OR financial_status:partially_refunded)\",\"first\":250}}"_s,
         uR"({"data":{"orders":{"nodes":[{"id":"1","createdAt":"2026-11-24T09:00:00Z","currentTotalPriceSet":{"shopMoney":{"amount":"30.0","currencyCode":"USD"}}},
             {"id":"2","createdAt":"2026-11-12T09:00:00Z","currentTotalPriceSet":{"shopMoney":{"amount":"20.0","currencyCode":"USD"}}}],"pageInfo":{"hasNextPage":false}}}})"_s}},
       u"$30.00 | Total sales · 7 days | Paid orders by their current total. | Orders=1, Average order=$30.00, "
       u"Change=+50.0% |  | 0@2026-11-18 0@2026-11-19 0@2026-11-20 0@2026-11-21 0@2026-11-22 0@2026-11-23 30@2026-11-24"_s},
      {u"cryptoQuote"_s,
       {},
       {{u"GET "_s + coins +
             u"/simple/price?ids=bitcoin"
             "&include_24hr_change=true&include_last_updated_at=true&vs_currencies=usd · x-cg-demo-api-key: key"_s,
         uR"({"bitcoin":{"usd":98765.4,"usd_24h_change":-1.234}})"_s}},
       u"$98,765.40 | -1.23% · 24h | Bitcoin · USD\nMarket data by CoinGecko"_s},
      {u"cryptoChart"_s,
       {},
       {{u"GET "_s + coins + u"/simple/price?ids=bitcoin"_s + price,
         uR"({"bitcoin":{"usd":98765.4,"usd_24h_change":2}})"_s},
        {u"GET "_s + coins + u"/coins/bitcoin/market_chart?days=7&vs_currency=usd · x-cg-demo-api-key: key"_s,
         uR"({"prices":[[1795510800000,98000],[1795514400000,98765.4]]})"_s}},
       u"$98,765.40 | +2.00% · 24h | Bitcoin · USD\nMarket data by CoinGecko |  |  | 98000@2026-11-24T09:00:00Z 98765.4@2026-11-24T10:00:00Z"_s},
      {u"cryptoChart"_s,
       {{u"coin"_s, u"shiba-inu"_s}},
       {{u"GET "_s + coins +
             u"/simple/price?ids=shiba-inu&include_24hr_change=true&include_last_updated_at=true&vs_currencies=usd · "
             "x-cg-demo-api-key: key"_s,
         uR"({"shiba-inu":{"usd":0.0000123456}})"_s},
        {u"GET "_s + coins + u"/coins/shiba-inu/market_chart?days=7&vs_currency=usd · x-cg-demo-api-key: key"_s,
         uR"({"prices":[[1795510800000,1],[1795514400000,3]]})"_s}},
       u"$0.00001235 | 24-hour change unavailable | Shiba Inu · USD\nMarket data by CoinGecko |  |  | 1@2026-11-24T09:00:00Z 3@2026-11-24T10:00:00Z"_s},
      {u"cryptoWatchlist"_s,
       {{u"coin"_s, u"bitcoin, , solana"_s}},
       {{u"GET "_s + coins + u"/simple/price?ids=bitcoin%2Csolana"_s + price,
         uR"({"bitcoin":{"usd":2,"usd_24h_change":3},"solana":{"usd":null}})"_s}},
       u"2 | Coins | Coins · USD\nMarket data by CoinGecko |  | Bitcoin ($2.00 · +3.00% · 24h) → "
       u"https://www.coingecko.com/en/coins/bitcoin, Solana (—) → https://www.coingecko.com/en/coins/solana"_s},
      {u"stockQuote"_s,
       {},
       {{u"GET https://api.twelvedata.com/quote?apikey=key&symbol=AAPL"_s,
         uR"({"close":"231.5","percent_change":"-0.5","currency":"USD","name":"Apple","exchange":"NASDAQ","datetime":"2026-11-24"})"_s}},
       u"$231.50 | -0.50% · AAPL | Apple\nNASDAQ\nAs of 2026-11-24 · Twelve Data"_s},
      {u"stockWatchlist"_s,
       {{u"symbols"_s, u"AAPL,ZZZZ"_s}},
       {{u"GET https://api.twelvedata.com/quote?apikey=key&symbol=AAPL%2CZZZZ"_s,
         uR"({"AAPL":{"close":"2","percent_change":"1"},"ZZZZ":{"code":404,"status":"error"}})"_s}},
       u"2 | Stocks | Twelve Data |  | AAPL ($2.00 · +1.00%), ZZZZ (—)"_s},
      {u"stockWatchlist"_s,
       {{u"symbols"_s, u"ZZZZ"_s}},
       {{u"GET https://api.twelvedata.com/quote?apikey=key&symbol=ZZZZ"_s, uR"({"code":404,"status":"error"})"_s}},
       u"1 | Stocks | Twelve Data |  | ZZZZ (—)"_s},
      {u"stockChart"_s,
       {},
       {{u"GET https://api.twelvedata.com/time_series?apikey=key&interval=1day&outputsize=30&symbol=AAPL"_s,
         uR"({"meta":{"currency":"EUR"},"values":[{"close":"110","datetime":"2026-11-24"},{"close":"100"}]})"_s}},
       u"€110.00 | +10.00% · AAPL | As of 2026-11-24 · Twelve Data |  |  | 100 110@2026-11-24"_s},
  };
}

QList<Conversation> ofAccountsAndPlans() {
  return {
      {u"youtubeStudio"_s,
       {{u"channel"_s, u"@tarn"_s}},
       {{u"GET https://www.googleapis.com/youtube/v3/channels?forHandle=%40tarn&part=snippet%2Cstatistics · "
         "X-Goog-Api-Key: key"_s,
         uR"({"items":[{"snippet":{"title":"Tarn"},"statistics":{"subscriberCount":"10","hiddenSubscriberCount":true,"viewCount":"99","videoCount":"3"}}]})"_s}},
       u"Hidden | Subscribers | Tarn | Subscribers=Hidden, Views=99, Videos=3"_s},
      {u"socialYouTube"_s,
       {{u"channel"_s, u"@tarn"_s}},
       {{u"GET https://www.googleapis.com/youtube/v3/channels?forHandle=%40tarn&part=snippet%2Cstatistics · "
         "X-Goog-Api-Key: key"_s,
         uR"({"items":[{"snippet":{"title":"Tarn"},"statistics":{"subscriberCount":"48200","viewCount":"99","videoCount":"3"}}]})"_s}},
       u"48200 | Subscribers | Tarn | Subscribers=48200, Views=99, Videos=3"_s},
      {u"socialTwitter"_s,
       {{u"username"_s, u"@tarn"_s}},
       {{u"GET https://api.x.com/2/users/by/username/tarn?user.fields=public_metrics Bearer key"_s,
         uR"({"data":{"name":"Tarn","public_metrics":{"followers_count":5,"following_count":6,"tweet_count":7}}})"_s}},
       u"5 | Followers | Tarn | Following=6, Posts=7"_s},
      {u"gmailUnreadSummary"_s,
       {},
       {{u"GET https://gmail.googleapis.com/gmail/v1/users/me/labels/INBOX Bearer key"_s,
         uR"({"messagesUnread":3,"messagesTotal":40})"_s}},
       u"3 | Unread in inbox |  | Unread=3, Total=40"_s},
      {u"gmailLatest"_s,
       {},
       {{u"GET https://gmail.googleapis.com/gmail/v1/users/me/labels/INBOX Bearer key"_s,
         uR"({"messagesUnread":3,"messagesTotal":40})"_s},
        {u"GET https://gmail.googleapis.com/gmail/v1/users/me/messages?labelIds=INBOX&maxResults=10 Bearer key"_s,
         uR"({"messages":[{"id":"m0"},{"id":"m1"},{"id":"../x"}]})"_s},
        {u"GET https://gmail.googleapis.com/gmail/v1/users/me/messages/m0?format=metadata Bearer key"_s, u"404"_s},
        {u"GET https://gmail.googleapis.com/gmail/v1/users/me/messages/m1?format=metadata Bearer key"_s,
         uR"({"payload":{"headers":[{"name":"Subject","value":"Hello"},{"name":"FROM","value":"a@b.example"}]}})"_s}},
       u"40 | Inbox messages |  | Unread=3, Total=40 | Hello (a@b.example) → "
       u"https://mail.google.com/mail/u/0/#inbox/m1"_s},
      {u"dropbox"_s,
       {{u"dropboxPath"_s, u"/Pro jects"_s}},
       {{u"POST https://api.dropboxapi.com/2/files/list_folder Bearer key "
         "{\"include_deleted\":false,\"limit\":100,\"path\":\"/Pro jects\",\"recursive\":false}"_s,
         uR"({"has_more":true,"cursor":"c1","entries":[{".tag":"file","id":"1","name":"a.txt","path_display":"/Pro jects/a.txt"},{".tag":"deleted"}]})"_s},
        {u"POST https://api.dropboxapi.com/2/files/list_folder/continue Bearer key {\"cursor\":\"c1\"}"_s,
         uR"({"has_more":false,"entries":[]})"_s}},
       u"1 | Folder items |  |  | a.txt (/Pro jects/a.txt) → https://www.dropbox.com/home/Pro jects/a.txt"_s},
      {u"socialTikTok"_s,
       {},
       {{u"GET "
         u"https://open.tiktokapis.com/v2/user/info/?fields=open_id%2Cdisplay_name%2Cfollower_count%2Clikes_count%2C"
         "video_count Bearer key"_s,
         uR"({"error":{"code":"ok"},"data":{"user":{"display_name":"Tarn","follower_count":5,"likes_count":6,"video_count":7}}})"_s}},
       u"5 | Followers | Tarn | Likes=6, Videos=7"_s},
      {u"homeAssistant"_s,
       {{u"server"_s, u"https://home.example:8123/"_s}, {u"entity"_s, u"sensor.attic"_s}},
       {{u"GET https://home.example:8123/api/states/sensor.attic Bearer key"_s,
         uR"({"entity_id":"sensor.attic","state":"21.5","attributes":{"friendly_name":"Attic","unit_of_measurement":"°C"}})"_s}},
       u"21.5 °C | Attic"_s},
      {u"claudePlanUsage"_s,
       {},
       {{u"GET https://api.anthropic.com/api/oauth/usage Bearer key · anthropic-beta: oauth-2025-04-20"_s,
         uR"({"five_hour":{"utilization":100,"resets_at":"2026-11-24T12:00:00Z"},"seven_day":null,"seven_day_opus":{"utilization":12.4}})"_s}},
       u"0% | Remaining · 5 hours | 5 hours · 100% used · resets Nov 24, 2026, 12:00 PM\nOpus · 7 days · 12% used · "
       u"reset unavailable | 5 hours=0% left, Opus · 7 days=88% left |  |  | claude.five_hour 5 hours 100% 300 "
       u"2026-11-24T12:00:00Z, claude.seven_day_opus Opus · 7 days 12.4% 10080 never"_s},
      {u"openCodeUsage"_s,
       {},
       {{u"GET https://opencode.ai/zen/go/v1/usage Bearer key"_s, uR"({"usage":{"weekly":{"percent":40}}})"_s}},
       u"60% | Remaining · Week | Week · 40% used · reset unavailable | Week=60% left |  |  | opencode.weekly Week 40% "
       u"10080 never"_s},
      {u"glmUsage"_s,
       {{u"region"_s, u"china"_s}},
       {{u"GET https://open.bigmodel.cn/api/monitor/usage/quota/limit Bearer key"_s,
         uR"({"data":{"limits":[{"type":"TOKENS_LIMIT","percentage":3,"nextResetTime":1795521600000}]}})"_s}},
       u"97% | Remaining · Token allowance | Token allowance · 3% used · resets Nov 24, 2026, 12:00 PM | Token "
       u"allowance=97% left |  |  | glm.TOKENS_LIMIT Token allowance 3% 0 2026-11-24T12:00:00Z"_s},
      {u"glmUsage"_s,
       {},
       {{u"GET https://api.z.ai/api/monitor/usage/quota/limit Bearer key"_s,
         uR"({"data":{"limits":[{"type":"TIME_LIMIT","percentage":10},{"type":"OTHER","percentage":20}]}})"_s}},
       u"90% | Remaining · Tool allowance | Tool allowance · 10% used · reset unavailable\nQuota · 20% used · reset "
       u"unavailable | Tool allowance=90% left, Quota=80% left |  |  | glm.TIME_LIMIT Tool allowance 10% 0 never, "
       u"glm.OTHER Quota 20% 0 never"_s},
      {u"copilotUsage"_s,
       {},
       {{u"GET https://api.github.com/copilot_internal/user Bearer key"_s,
         uR"({"quota_snapshots":{"chat":{"unlimited":true},"premium_interactions":{"percent_remaining":62}}})"_s}},
       u"62% | Remaining · Included allowance | Included allowance · 38% used · reset unavailable | Included "
       u"allowance=62% left |  |  | copilot.premium_interactions Included allowance 38% 0 never"_s},
      {u"copilotUsage"_s,
       {},
       {{u"GET https://api.github.com/copilot_internal/user Bearer key"_s,
         uR"({"quota_snapshots":{"chat":{"unlimited":true}}})"_s}},
       u"Unlimited | Included allowance"_s},
      {u"cursorPersonalUsage"_s,
       {},
       {{u"GET https://cursor.com/api/usage-summary · Cookie: WorkosCursorSessionToken=key"_s,
         uR"({"individualUsage":{"plan":{"used":50,"limit":200}}})"_s}},
       u"75% | Remaining · Plan allowance | Plan allowance · 25% used · reset unavailable | Plan allowance=75% left |  "
       u"|  | cursor.plan Plan allowance 25% 0 never"_s},
      {u"analyticsCursorUsage"_s,
       {},
       {{u"POST https://api.cursor.com/teams/filtered-usage-events raw Basic a2V5Og== "
         "{\"endDate\":1795515840000,\"page\":1,\"pageSize\":100,\"startDate\":1792923840000}"_s,
         uR"({"pagination":{"hasNextPage":false},"usageEvents":[{"isTokenBasedCall":true,"tokenUsage":{"inputTokens":5,"outputTokens":7},"chargedCents":250},
             {"isTokenBasedCall":false,"chargedCents":900}]})"_s}},
       u"$2.50 | Team usage · 30 days | Charged cost reported by Cursor. Included subscription allowances are "
       u"separate. "
       u"| Requests=2, Tokens=12"_s},
      {u"grokUsage"_s,
       {},
       {{u"GET https://cli-chat-proxy.grok.com/v1/billing?format=credits Bearer key · X-XAI-Token-Auth: key"_s,
         uR"({"creditUsagePercent":12})"_s}},
       u"88% | Remaining · Credits | Credits · 12% used · reset unavailable | Credits=88% left |  |  | grok.credits "
       u"Credits 12% 0 never"_s},
  };
}

}  // namespace

RemoteValue outcomeOf(const Conversation& conversation) {
  const auto session = std::make_shared<ScriptedSession>();
  const Provider* provider = providerFor(conversation.kind);
  if (!provider) throw std::invalid_argument("nobody serves " + conversation.kind.toStdString());
  const DockWidget widget{QUuid::createUuid(), conversation.kind, {}, conversation.options};
  RemoteValue value;
  const auto run = [&]() -> QCoro::Task<> {
    try {
      value = co_await fetchFrom(*provider, widget, session, {});
    } catch (const DomainError& error) {
      ADD_FAILURE() << conversation.kind.toStdString() << error.message().toStdString();
    }
  };
  const QCoro::Task<> task = run();
  session->answer(u"key"_s);
  for (const Exchange& exchange : conversation.exchanges) {
    if (const int status = exchange.answer.toInt())
      session->fail(ServiceHTTPError(status));
    else
      session->answer(parsed(exchange.answer));
  }
  return value;
}

QList<Conversation> conversations() { return ofDevelopers() + ofMoneyAndMarkets() + ofAccountsAndPlans(); }

}  // namespace tarnwick::test
