#include <QJsonObject>
#include <array>
#include <cmath>

#include "services/Money.h"
#include "services/UsageWords.h"
#include "usage/ClaudeActivity.h"
#include "usage/CodexUsage.h"
#include "usage/GeminiHistory.h"
#include "views/families/services/ServicesRoom.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// What a kind may look like: the texts that its reader gives, and nothing that it does not. Lists are joined by "|", a
/// name and its value by "="; what begins with "$" is an amount and with "#" a count of a reader of this
/// computer, which are written as the locale does.
struct ExampleRow {
  QLatin1StringView kind;
  const char* value = "";
  const char* subtitle = "";
  const char* metrics = "";
  const char* rows = "";
  const char* windows = "";  ///< Name, percent used, minutes to the reset.
  double trend = 0;          ///< The size of the numbers of a series; none for 0. A falling one for less.
  int count = 7;             ///< How many they are.
  const char* detail = "";
};

constexpr const char* kIssues =
    "TRN-214 Panel opens behind the dock=In Progress|TRN-209 Tile loses its caption=Todo|TRN-198 Name the layouts=Todo";
constexpr const char* kNotices =
    "Panel opens behind the dock=tarn/dock|Name the layouts=tarn/dock|Release notes=tarn/pages|Ring clock=tarn/dock";
constexpr const char* kMessages =
    "Translation deadline=Ines Moreau <ines@example.org>|Lunch on Friday?=Sam Okoye <sam@example.org>";
constexpr const char* kCoin = "Bitcoin · USD\nMarket data by CoinGecko";
constexpr const char* kStock = "Acme\nNASDAQ\nAs of 2026-11-24 · Twelve Data";
constexpr const char* kNet =
    "USD payments less refunds, disputes and fees. Payouts, transfers, reserves and top-ups excluded.";

constexpr std::array kExamples = {
    ExampleRow{kind::analyticsGitHub, "4", "Unread notifications", "", kNotices},
    ExampleRow{kind::analyticsGitHubOverview, "4", "Unread notifications", "Unread=4|Open PRs=3|Stars=1284", kNotices},
    ExampleRow{kind::analyticsGitHubContributions, "9", "Contributions today", "7 days=41", "", "", 9, 371,
               "1,284 in the last year"},
    ExampleRow{kind::productivityLinear, "3", "Active assigned issues", "Active=3|Overdue=1", kIssues},
    ExampleRow{kind::productivityLinearOverview, "3", "Active assigned issues", "Active=3|Overdue=1", kIssues},
    ExampleRow{kind::analyticsSupabase, "18420", "REST requests · 24 hours", "REST=18420|Auth=731", "", "", 0, 0,
               "1.20 / 8.00 GB disk used"},
    ExampleRow{kind::analyticsSupabaseOverview, "18420", "REST requests · 24 hours", "REST=18420|Auth=731", "", "", 0,
               0, "1.20 / 8.00 GB disk used"},
    ExampleRow{kind::revenueStripe, "$8420.65", "Net revenue · 30 days", "", "", "", 0, 0, kNet},
    ExampleRow{kind::revenuePolar, "$1206.40", "Net revenue · 30 days", "", "", "", 60, 31},
    ExampleRow{kind::revenueDodoPayments, "$640.00", "Net payments · 30 days", "", "", "", 0, 0,
               "Payments less refunds, disputes and related fees; payouts/transfers excluded. 58 ledger entries read."},
    ExampleRow{kind::revenueLemonSqueezy, "$2,310", "Revenue · 30 days"},
    ExampleRow{kind::shopifyRevenue, "$4180.50", "Total sales · 7 days",
               "Net sales=$4020.50|Returns=$-64.00|Orders=126|Average order=$33.18", "", "", 780},
    ExampleRow{kind::shopifyOverview, "$642.30", "Total sales · today",
               "Net sales=$618.30|Returns=$-24.00|Orders=18|Average order=$35.68", "", "", 642, 1},
    ExampleRow{kind::shopifyTrends, "$4180.50", "Total sales · 7 days",
               "Net sales=$4020.50|Returns=$-64.00|Orders=126|Average order=$33.18", "", "", 780},
    ExampleRow{kind::analyticsResend, "214", "Sent today", "Today=214|This month=4120|Delivered=99.2%", "", "", 0, 0,
               "Delivery includes delivered, opened, clicked and complained states. "},
    ExampleRow{kind::analyticsResendOverview, "214", "Sent today", "Today=214|This month=4120|Delivered=99.2%", "", "",
               0, 0, "Delivery includes delivered, opened, clicked and complained states. "},
    ExampleRow{kind::analyticsDubOverview, "932", "Clicks · 7 days"},
    ExampleRow{kind::dubShortener, "2", "Saved links · latest 100", "",
               "https://example.link/spring=https://example.org/spring-sale|https://example.link/docs=https://"
               "example.org/docs"},
    ExampleRow{kind::analyticsPlausible, "3184", "Unique visitors · 7 days", "", "", "", 620},
    ExampleRow{kind::analyticsPlausibleChart, "3184", "Unique visitors · 7 days", "", "", "", 620},
    ExampleRow{kind::analyticsSimpleAnalytics, "1940", "Unique visitors · 7 days", "Pageviews=5312", "", "", 370},
    ExampleRow{kind::analyticsSimpleAnalyticsChart, "1940", "Unique visitors · 7 days", "Pageviews=5312", "", "", 370},
    ExampleRow{kind::analyticsDataFast, "862", "Unique visitors · 7 days", "Pageviews=2140|Sessions=1011"},
    ExampleRow{kind::analyticsDataFastChart, "862", "Unique visitors · 7 days", "Pageviews=2140|Sessions=1011", "", "",
               170},
    ExampleRow{kind::socialTwitter, "12430", "Followers", "Following=318|Posts=2906", "", "", 0, 0, "Tarn"},
    ExampleRow{kind::xStudio, "12430", "Followers", "Following=318|Posts=2906", "", "", 0, 0, "Tarn"},
    ExampleRow{kind::socialTikTok, "8915", "Followers", "Likes=120400|Videos=64", "", "", 0, 0, "Tarn"},
    ExampleRow{kind::socialYouTube, "48200", "Subscribers", "Subscribers=48200|Views=3104200|Videos=212", "", "", 0, 0,
               "Tarn"},
    ExampleRow{kind::youtubeStudio, "48200", "Subscribers", "Subscribers=48200|Views=3104200|Videos=212", "", "", 0, 0,
               "Tarn"},
    ExampleRow{kind::socialInstagram, "5,630", "Followers"},
    ExampleRow{kind::stockQuote, "$184.20", "+1.24% · ACME", "", "", "", 0, 0, kStock},
    ExampleRow{kind::stockChart, "$184.20", "+1.24% · ACME", "", "", "", 184.2, 30, "As of 2026-11-24 · Twelve Data"},
    ExampleRow{kind::stockWatchlist, "3", "Stocks", "",
               "ACME=$184.20 · +1.24%|NORD=$96.05 · +0.31%|TARN=$412.80 · -2.08%", "", 0, 0, "Twelve Data"},
    ExampleRow{kind::cryptoQuote, "$61480.25", "-0.84% · 24h", "", "", "", 0, 0, kCoin},
    ExampleRow{kind::cryptoChart, "$61480.25", "-0.84% · 24h", "", "", "", -61480.25, 168, kCoin},
    ExampleRow{kind::cryptoWatchlist, "3", "Coins", "",
               "Bitcoin=$61480.25 · -0.84% · 24h|Ethereum=$3412.70 · +2.10% · 24h|Solana=$148.32 · +4.62% · 24h", "", 0,
               0, "Coins · USD\nMarket data by CoinGecko"},
    ExampleRow{kind::dropbox, "2", "Folder items", "",
               "Quarterly summary.pdf=/Reports/Quarterly summary.pdf|Floor plan.png=/Reports/Floor plan.png"},
    ExampleRow{kind::gmailLatest, "240", "Inbox messages", "Unread=7|Total=240", kMessages},
    ExampleRow{kind::gmailUnreadSummary, "7", "Unread in inbox", "Unread=7|Total=240"},
    ExampleRow{kind::homeAssistant, "21.4 °C", "Living room"},
    ExampleRow{kind::appleHome, "3", "Lights on"},
    ExampleRow{kind::analyticsCursorUsage, "$86.20", "Team usage · 30 days", "Requests=1912|Tokens=24600000", "", "", 0,
               0, "Charged cost reported by Cursor. Included subscription allowances are separate."},
    ExampleRow{kind::cursorPersonalUsage, "66%", "Remaining · Plan allowance", "", "", "Plan allowance,34,20160"},
    ExampleRow{kind::claudePlanUsage, "58%", "Remaining · 5 hours", "", "", "5 hours,42,128|7 days,68,4000"},
    ExampleRow{kind::claudePlanUsageGauge, "58%", "Remaining · 5 hours", "", "", "5 hours,42,128|7 days,68,4000"},
    ExampleRow{kind::copilotUsage, "62%", "Remaining · Included allowance", "", "", "Included allowance,38,11000"},
    ExampleRow{kind::grokUsage, "79%", "Remaining · Credits", "", "", "Credits,21,9000"},
    ExampleRow{kind::glmUsage, "47%", "Remaining · Token allowance", "", "",
               "Token allowance,53,190|Tool allowance,12,9000"},
    ExampleRow{kind::openCodeUsage, "81%", "Remaining · 5 hours", "", "", "5 hours,19,230|Week,44,5000|Month,51,18000"},
    ExampleRow{kind::antigravityUsage, "70%", "Remaining · 5 hours"},
    ExampleRow{kind::perplexityUsage, "284", "Pro remaining", "Pro=284|Research=18|Labs=9"},
};

QStringList partsOf(const char* text, QChar by) { return QString::fromUtf8(text).split(by, Qt::SkipEmptyParts); }

/// Neither a quote of a stock nor a session on this computer has a page.
bool opensPages(QLatin1StringView kind) {
  return kind != kind::stockWatchlist && kind != kind::analyticsClaudeCodeStatus;
}

/// A text as its reader writes it: "$-64.00" is an amount, and all else is plain.
QString written(const QString& text, const QLocale& locale) {
  QStringList parts = text.split(u" · "_s);
  for (QString& part : parts) {
    bool isAmount = false;
    const double amount = part.startsWith(u'$') && !part.contains(u',') ? part.sliced(1).toDouble(&isAmount) : 0;
    if (part.startsWith(u'#')) part = locale.toString(part.sliced(1).toInt());
    if (isAmount) part = Money::text(amount, u"USD"_s, locale);
  }
  return parts.join(u" · "_s);
}

/// A curve that looks like what happened, and is the same each time. A negative trend falls.
QList<double> series(double trend, int count) {
  QList<double> values;
  const double size = std::abs(trend);
  for (int i = 0; i < count; ++i) {
    const double at = 28.0 * (trend > 0 ? i : count - i) / count;
    const double wave = std::sin(at * 0.9) * 0.5 + std::sin(at * 0.37) * 0.6 + std::sin(at * 2.3) * 0.3;
    values << std::round(size * (0.75 + 0.2 * at / 28 + 0.1 * wave));
  }
  return values;
}

/// Prices, the last of which is the one that is told.
QList<double> prices(double trend, int count) {
  QList<double> values = series(trend * 100, count);
  const double last = values.last();
  for (double& value : values) value *= std::abs(trend) / last;
  return values;
}

/// What was done on each of them: on some of them nothing.
QList<double> days(double most, int count) {
  QList<double> values = series(most, count);
  for (qsizetype i = 0; i < values.size(); ++i) {
    const double chance = std::abs(std::sin(static_cast<double>(i) * 12.9898) * 43758.5453);
    values[i] = std::floor(std::max(0.0, (chance - std::floor(chance)) * 1.7 - 0.7) * most);
  }
  values.last() = most;
  return values;
}

QList<double> numbersOf(const ExampleRow& row) {
  if (row.trend == 0) return {};
  if (row.kind == kind::analyticsGitHubContributions) return days(row.trend, row.count);
  if (row.kind == kind::stockChart || row.kind == kind::cryptoChart) return prices(row.trend, row.count);
  return series(row.trend, row.count);
}

RemoteReading exampleOf(const ExampleRow& row, const QDateTime& now, const QLocale& locale) {
  RemoteReading reading;
  reading.goodAt = now;
  RemoteValue& value = reading.value;
  value.value = written(QString::fromUtf8(row.value), locale);
  value.subtitle = QString::fromUtf8(row.subtitle);
  value.detail = QString::fromUtf8(row.detail);
  value.updated = now;
  for (const QString& metric : partsOf(row.metrics, u'|'))
    value.metrics << ServiceMetric{metric.section(u'=', 0, 0), written(metric.section(u'=', 1), locale)};
  for (const QString& each : partsOf(row.rows, u'|'))
    value.rows << ServiceRow{each, each.section(u'=', 0, 0), written(each.section(u'=', 1), locale),
                             opensPages(row.kind) ? std::optional(QUrl(u"https://example.org/"_s)) : std::nullopt};
  for (const QString& each : partsOf(row.windows, u'|')) {
    const QStringList parts = each.split(u',');
    value.usageWindows << UsageWindow{parts[0], parts[0], parts[1].toDouble(), std::nullopt,
                                      now.addSecs(parts[2].toLongLong() * 60)};
    value.metrics << ServiceMetric{parts[0], UsageWords::leftWords(value.usageWindows.last())};
  }
  value.numbers = numbersOf(row);
  const bool isHourly = row.kind == kind::cryptoChart;
  for (qsizetype before = value.numbers.size() - 1; before >= 0; --before) {
    if (isHourly)
      value.numberMoments << now.addSecs(-before * 3600);
    else
      value.numberDays << now.date().addDays(-before);
  }
  return reading;
}

// What is read on this computer, as it is read.

RemoteValue claudeSessions(const QDateTime& now) {
  const double present = static_cast<double>(now.toSecsSinceEpoch()) - ClaudeActivityRecord::kReferenceDate;
  return ClaudeActivity::value({{std::string(64, 'a'), "tool", "Bash", present - 20},
                                {std::string(64, 'b'), "permission", "Edit", present - 4 * 60},
                                {std::string(64, 'c'), "thinking", "", present - 11 * 60},
                                {std::string(64, 'd'), "idle", "", present - 130 * 60}},
                               now, QLocale());
}

RemoteValue geminiTokens(const QDateTime& now) {
  return GeminiHistory::shown({{u"a"_s, now.addSecs(-60), 48'120}, {u"b"_s, now.addDays(-1), 1'236'180}}, 12, now);
}

RemoteValue codexPlan(const QDateTime& now) {
  const auto window = [&now](int percent, int minutes, int left) {
    return QJsonObject{{u"usedPercent"_s, percent},
                       {u"windowDurationMins"_s, minutes},
                       {u"resetsAt"_s, now.addSecs(left * 60).toSecsSinceEpoch()}};
  };
  const QJsonObject limit{{u"primary"_s, window(91, 300, 48)}, {u"secondary"_s, window(35, 10080, 5200)}};
  return CodexUsageData::value({{u"rateLimits"_s, limit}}, now);
}

using ReadExample = RemoteValue (*)(const QDateTime& now);
constexpr std::pair<QLatin1StringView, ReadExample> kReadExamples[] = {
    {kind::analyticsClaudeCodeStatus, claudeSessions},
    {kind::geminiAPIUsage, geminiTokens},
    {kind::codexUsage, codexPlan},
    {kind::codexUsageGauge, codexPlan},
};

}  // namespace

QHash<QString, RemoteReading> serviceExamples(const QDateTime& now, const QLocale& locale) {
  QHash<QString, RemoteReading> examples;
  for (const ExampleRow& row : kExamples) examples.insert(row.kind, exampleOf(row, now, locale));
  for (const auto& [kind, read] : kReadExamples) {
    RemoteReading reading;
    reading.value = read(now);
    reading.goodAt = now;
    examples.insert(kind, reading);
  }
  return examples;
}

}  // namespace tarnwick
