#include "ServiceScript.h"

#include <QDateTime>
#include <atomic>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kLarge = 4'999'000;

/// In `frame` `@rows` stands for so many rows and `@id` for an identity that no other answer has; in a row likewise.
/// `filler` bytes of text are what a real row has besides.
struct Answer {
  const char* host;
  const char* path;  ///< With which it begins.
  const char* frame;
  const char* row = "";
  int rows = 0;
  int filler = 0;
};

// The first that fits answers.
const Answer kAnswers[] = {
    {"api.anthropic.com", "/",
     R"({"five_hour":{"utilization":40,"resets_at":"2030-11-24T12:00:00Z"},"seven_day":{"utilization":12.4}})"},
    {"opencode.ai", "/", R"({"usage":{"weekly":{"percent":40}}})"},
    {"api.z.ai", "/", R"({"data":{"limits":[{"type":"TOKENS_LIMIT","percentage":3,"nextResetTime":1995521600000}]}})"},
    {"api.github.com", "/copilot_internal", R"({"quota_snapshots":{"chat":{"unlimited":true}}})"},
    {"api.github.com", "/notifications", "[@rows]",
     R"({"id":"@id","subject":{"title":"A change that waits"},"repository":{"full_name":"a/b"},"url":"@filler"})", 100,
     4000},
    {"api.github.com", "/graphql", R"({"data":{"viewer":{"pullRequests":{"totalCount":5}}}})"},
    {"api.github.com", "/repos", R"({"stargazers_count":1200})"},
    {"cursor.com", "/", R"({"individualUsage":{"plan":{"used":50,"limit":200}}})"},
    {"api.cursor.com", "/", R"({"pagination":{"hasNextPage":true},"usageEvents":[@rows]})",
     R"({"isTokenBasedCall":true,"tokenUsage":{"inputTokens":5,"outputTokens":7},"chargedCents":250,"model":"@filler"})",
     100, 300},
    {"cli-chat-proxy.grok.com", "/", R"({"creditUsagePercent":12})"},
    {"api.polar.sh", "/", R"({"totals":{"net_revenue":123456},"periods":[@rows]})",
     R"({"net_revenue":100,"filler":"@filler"})", 31, 800},
    {"live.dodopayments.com", "/", R"({"items":[@rows]})",
     R"({"id":"@id","currency":"USD","event_type":"payment","is_credit":true,"amount":5000,"description":"@filler"})",
     100, 300},
    {"api.dub.co", "/", "[@rows]",
     R"({"id":"@id","shortLink":"https://dub.sh/@id","url":"https://example.com/long","filler":"@filler"})", 100, 1500},
    {"simpleanalytics.com", "/", R"({"status":"success","visitors":70,"pageviews":95,"histogram":[@rows]})",
     R"({"visitors":30})", 7},
    {"datafa.st", "/api/v1/analytics/overview", R"({"data":[{"visitors":12,"pageviews":30,"sessions":14}]})"},
    {"datafa.st", "/", R"({"data":[@rows]})", R"({"visitors":5})", 7},
    {"www.googleapis.com", "/",
     R"({"items":[{"snippet":{"title":"Tarn"},"statistics":{"subscriberCount":"10","viewCount":"99","videoCount":"3"}}]})"},
    {"api.x.com", "/",
     R"({"data":{"name":"Tarn","public_metrics":{"followers_count":5,"following_count":6,"tweet_count":7}}})"},
    {"home.example", "/",
     R"({"entity_id":"sensor.attic","state":"21.5","attributes":{"friendly_name":"Attic","unit_of_measurement":"°C"}})"},
    {"gmail.googleapis.com", "/gmail/v1/users/me/labels", R"({"messagesUnread":3,"messagesTotal":40})"},
    {"gmail.googleapis.com", "/gmail/v1/users/me/messages/",
     R"({"payload":{"headers":[{"name":"Subject","value":"Hello"},{"name":"From","value":"a@b.example"},@rows]}})",
     R"({"name":"X-Header","value":"@filler"})", 40, 120},
    {"gmail.googleapis.com", "/", R"({"messages":[@rows]})", R"({"id":"m@id"})", 10},
    {"api.dropboxapi.com", "/", R"({"has_more":true,"cursor":"c@id","entries":[@rows]})",
     R"({".tag":"file","id":"@id","name":"@id.txt","path_display":"/@id.txt","content_hash":"@filler"})", 100, 300},
    {"open.tiktokapis.com", "/",
     R"({"error":{"code":"ok"},"data":{"user":{"display_name":"Tarn","follower_count":5,"likes_count":6,"video_count":7}}})"},
    {"tarn.myshopify.com", "/",
     R"({"data":{"orders":{"nodes":[@rows],"pageInfo":{"hasNextPage":true,"endCursor":"c@id"}}}})",
     R"({"id":"@id","createdAt":"@now","currentTotalPriceSet":{"shopMoney":{"amount":"30.00","currencyCode":"USD"}}})",
     250},
    {"api.twelvedata.com", "/", R"({"meta":{"currency":"EUR"},"values":[@rows]})",
     R"({"close":"110.5","open":"109.1","high":"111","low":"108","volume":"1000","datetime":"2026-11-24"})", 30},
    {"api.linear.app", "/",
     R"({"data":{"viewer":{"assignedIssues":{"nodes":[@rows],"pageInfo":{"hasNextPage":true,"endCursor":"c@id"}}}}})",
     R"({"id":"@id","identifier":"T-@id","title":"Something to do","url":"https://linear.app/@id","dueDate":"2026-11-23","state":{"name":"Todo","type":"unstarted"}})",
     100},
    {"api.supabase.com", "/v1/projects/abcdefghijklmnopqrst/analytics", R"({"result":[@rows]})",
     R"({"total_rest_requests":10,"total_auth_requests":1})", 24},
    {"api.supabase.com", "/", R"({"metrics":{"fs_used_bytes":1200000000,"fs_size_bytes":8000000000}})"},
    {"api.resend.com", "/", R"({"has_more":true,"data":[@rows]})",
     R"({"id":"@id","created_at":"@now","last_event":"delivered","subject":"@filler"})", 100, 300},
    {"plausible.io", "/", R"({"results":[@rows]})", R"({"metrics":[600],"dimensions":["2026-11-24"]})", 7},
    {"api.stripe.com", "/", R"({"object":"list","has_more":true,"data":[@rows]})",
     R"({"id":"@id","object":"balance_transaction","reporting_category":"charge","currency":"usd","net":100,"fee_details":[{"amount":30,"type":"stripe_fee"}],"description":"@filler"})",
     100, 500},
    {"api.coingecko.com", "/api/v3/simple", R"({"bitcoin":{"usd":98765.4,"usd_24h_change":-1.234}})"},
    {"api.coingecko.com", "/", R"({"prices":[@rows],"market_caps":[@rows],"total_volumes":[@rows]})",
     "[1795515840000,98765.4321]", 168},
    {"one.example", "/", R"({"status":{"counts":[1,42,3],"text":"@filler"}})", "", 0, 2000},
    {"two.example", "/", R"({"status":{"counts":[1,42,3],"text":"@filler"}})", "", 0, 2000},
    {"three.example", "/", R"({"status":{"counts":[1,42,3],"text":"@filler"}})", "", 0, 2000},
    {"four.example", "/", R"({"status":{"counts":[1,42,3],"text":"@filler"}})", "", 0, 2000},
};

constexpr QLatin1StringView kLargeHost{"large.example"};

QByteArray identity() {
  static std::atomic<int> last = 100'000'000;
  return QByteArray::number(++last);
}

QByteArray filled(QByteArray text, int filler) {
  text.replace("@filler", QByteArray(filler, 'x'));
  text.replace("@now", QDateTime::currentDateTimeUtc().toString(Qt::ISODate).toLatin1());
  qsizetype at = 0;
  const QByteArray id = identity();
  while ((at = text.indexOf("@id", at)) >= 0) text.replace(at, 3, id);
  return text;
}

QByteArray bodyOf(const Answer& answer) {
  QByteArrayList rows;
  for (int i = 0; i < answer.rows; ++i) rows << filled(answer.row, answer.filler);
  QByteArray frame = filled(answer.frame, answer.filler);
  return frame.replace("@rows", rows.join(','));
}

/// So many bytes of a document that begins and ends like this, with something in between again and again.
QByteArray repeated(const QByteArray& begin, const QByteArray& each, const QByteArray& end) {
  QByteArray body = begin;
  body.reserve(kLarge);
  while (body.size() + each.size() + end.size() < kLarge) body += each;
  return body + end;
}

QByteArray largeBody(const QByteArray& path) {
  static const QByteArray kObjects =
      repeated("{\"count\":7,\"rows\":[",
               R"({"id":12345,"name":"A name of some length","price":12.75,"tags":["a","b"]},)", "0]}");
  static const QByteArray kText = repeated("{\"count\":7,\"rows\":\"", "A long text, and nothing else in it. ", "\"}");
  static const QByteArray kLists = repeated("{\"count\":7,\"rows\":[", "[1],", "0]}");
  if (path.startsWith("/text")) return kText;
  return path.startsWith("/lists") ? kLists : kObjects;
}

QByteArray http(const QByteArray& body, const QByteArray& headers = {}) {
  return "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\n" + headers +
         "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

}  // namespace

const QList<ServiceScript::Kind>& ServiceScript::providers() {
  static const QList<Kind> kKinds = {
      {u"claudePlanUsage"_s, {}},
      {u"openCodeUsage"_s, {}},
      {u"glmUsage"_s, {}},
      {u"copilotUsage"_s, {}},
      {u"cursorPersonalUsage"_s, {}},
      {u"analyticsCursorUsage"_s, {}},
      {u"grokUsage"_s, {}},
      {u"revenuePolar"_s, {}},
      {u"revenueDodoPayments"_s, {{u"currency"_s, u"USD"_s}}},
      {u"dubShortener"_s, {}},
      {u"analyticsSimpleAnalytics"_s, {{u"site"_s, u"example.com"_s}}},
      {u"analyticsDataFastChart"_s, {}},
      {u"youtubeStudio"_s, {{u"channel"_s, u"@tarn"_s}}},
      {u"socialTwitter"_s, {{u"username"_s, u"tarn"_s}}},
      {u"homeAssistant"_s, {{u"server"_s, u"https://home.example"_s}, {u"entity"_s, u"sensor.attic"_s}}},
      {u"gmailLatest"_s, {}},
      {u"dropbox"_s, {}},
      {u"socialTikTok"_s, {}},
      {u"shopifyRevenue"_s, {{u"shop"_s, u"tarn.myshopify.com"_s}, {u"shopifyReportMode"_s, u"orders"_s}}},
      {u"stockChart"_s, {}},
      {u"analyticsGitHubOverview"_s, {{u"repository"_s, u"a/b"_s}}},
      {u"productivityLinear"_s, {}},
      {u"analyticsSupabaseOverview"_s, {{u"projectRef"_s, u"abcdefghijklmnopqrst"_s}}},
      {u"analyticsResend"_s, {}},
      {u"analyticsPlausible"_s, {{u"site"_s, u"example.com"_s}}},
      {u"revenueStripe"_s, {}},
      {u"cryptoChart"_s, {}},
  };
  return kKinds;
}

QStringList ServiceScript::smallAddresses() {
  return {u"https://one.example/status.json"_s, u"https://two.example/status.json"_s,
          u"https://three.example/status.json"_s, u"https://four.example/status.json"_s};
}

QList<ServiceScript::Large> ServiceScript::largeAddresses() {
  const auto at = [](const QString& path) { return u"https://"_s + kLargeHost + path; };
  return {{u"objects"_s, at(u"/objects"_s), u"count"_s},
          {u"objects, packed"_s, at(u"/objects?packed"_s), u"count"_s},
          {u"lists, packed"_s, at(u"/lists?packed"_s), u"count"_s},
          {u"one text"_s, at(u"/text"_s), u"rows"_s},
          {u"one text, packed"_s, at(u"/text?packed"_s), u"rows"_s}};
}

QStringList ServiceScript::hosts() {
  QStringList found{kLargeHost};
  for (const Answer& each : kAnswers) {
    const QString host = QString::fromLatin1(each.host);
    if (!found.contains(host)) found << host;
  }
  return found;
}

QByteArray ServiceScript::answer(const QString& host, const QByteArray& path) {
  if (host == kLargeHost) {
    const QByteArray body = largeBody(path);
    if (!path.contains("packed")) return http(body);
    return http(qCompress(body).mid(4), "Content-Encoding: deflate\r\n");
  }
  for (const Answer& each : kAnswers) {
    if (host == QLatin1StringView(each.host) && path.startsWith(each.path)) return http(bodyOf(each));
  }
  return "HTTP/1.1 404 None\r\nContent-Length: 0\r\n\r\n";
}

}  // namespace tarnwick
