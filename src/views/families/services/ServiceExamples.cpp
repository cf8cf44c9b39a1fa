#include <QJsonObject>
#include <array>
#include <cmath>

#include "usage/ClaudeActivity.h"
#include "usage/CodexUsage.h"
#include "usage/GeminiHistory.h"
#include "views/families/services/ServicesRoom.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// What a kind may look like. Lists are joined by "|", a name and its value by "=".
struct ExampleRow {
  QLatin1StringView kind;
  const char* value = "";
  const char* subtitle = "";
  const char* metrics = "";
  const char* rows = "";
  const char* windows = "";  ///< Name, percent used, minutes to the reset.
  double trend = 0;          ///< Of a series of numbers; none for 0.
};

constexpr std::array kExamples = {
    ExampleRow{kind::analyticsGitHub, "1,284", "Repository stars"},
    ExampleRow{kind::analyticsGitHubOverview, "7", "Unread notifications", "Unread=7|Open PRs=3|Stars=1,284"},
    ExampleRow{kind::analyticsGitHubContributions, "9", "Contributions today", "7 days=41", "", "", 9},
    ExampleRow{kind::productivityLinear, "6", "Active assigned issues", "Active=6|Overdue=1",
               "TRN-214 Panel opens behind the dock=In Progress|TRN-209 Tile loses its caption=Todo"},
    ExampleRow{kind::productivityLinearOverview, "6", "Active assigned issues", "Active=6|Overdue=1|Done=14",
               "TRN-214 Panel opens behind the dock=In Progress|TRN-209 Tile loses its caption=Todo"},
    ExampleRow{kind::analyticsSupabase, "18,420", "REST requests · 24 hours", "REST=18,420|Auth=731"},
    ExampleRow{kind::analyticsSupabaseOverview, "18,420", "REST requests · 24 hours", "REST=18.4K|Auth=731|Disk=42%"},
    ExampleRow{kind::revenueStripe, "$8,420", "Net revenue · 30 days"},
    ExampleRow{kind::revenuePolar, "$1,206", "Net revenue · 30 days", "", "", "", 1206},
    ExampleRow{kind::revenueDodoPayments, "$640", "Net payments · 30 days"},
    ExampleRow{kind::revenueLemonSqueezy, "$2,310", "Revenue · 30 days"},
    ExampleRow{kind::shopifyRevenue, "$4,180", "Total sales · 7 days"},
    ExampleRow{kind::shopifyOverview, "$642", "Total sales · today", "Sales=$642|Orders=18|Conv.=2.4%"},
    ExampleRow{kind::shopifyTrends, "$4.1K", "Total sales · 7 days", "Orders=126", "", "", 4100},
    ExampleRow{kind::analyticsResend, "214", "Sent today", "Today=214|This month=4,120|Delivered=99.2%"},
    ExampleRow{kind::analyticsResendOverview, "214", "Sent today", "Today=214|Month=4,120|Delivered=99.2%"},
    ExampleRow{kind::analyticsDubOverview, "932", "Clicks · 7 days", "Clicks=932|Links=48"},
    ExampleRow{kind::dubShortener, "48", "Saved links · latest 100", "",
               "example.link/spring=https://example.org/spring-sale|example.link/docs=https://example.org/docs"},
    ExampleRow{kind::analyticsPlausible, "3,184", "Unique visitors · 7 days", "", "", "", 3184},
    ExampleRow{kind::analyticsPlausibleChart, "3,184", "Unique visitors · 7 days", "", "", "", 3184},
    ExampleRow{kind::analyticsSimpleAnalytics, "1,940", "Unique visitors · 7 days", "Pageviews=5,312"},
    ExampleRow{kind::analyticsSimpleAnalyticsChart, "1,940", "Unique visitors · 7 days", "Pageviews=5,312", "", "",
               1940},
    ExampleRow{kind::analyticsDataFast, "862", "Visitors · 7 days", "Page views=2,140|Sessions=1,011"},
    ExampleRow{kind::analyticsDataFastChart, "862", "Visitors · 7 days", "Sessions=1,011", "", "", 862},
    ExampleRow{kind::socialTwitter, "12.4K", "Followers", "Following=318|Posts=2,906"},
    ExampleRow{kind::xStudio, "12.4K", "Followers", "Followers=12.4K|Posts=2,906"},
    ExampleRow{kind::socialTikTok, "8,915", "Followers", "Likes=120K|Videos=64"},
    ExampleRow{kind::socialYouTube, "48.2K", "Subscribers", "Views=3.1M|Videos=212"},
    ExampleRow{kind::youtubeStudio, "48.2K", "Subscribers", "Subs=48.2K|Views=3.1M"},
    ExampleRow{kind::socialInstagram, "5,630", "Followers"},
    ExampleRow{kind::stockQuote, "184.20", "+1.24% · ACME", "Change=+2.26"},
    ExampleRow{kind::stockChart, "184.20", "+1.24% · ACME", "Change=+2.26", "", "", 184.2},
    ExampleRow{kind::stockWatchlist, "184.20", "ACME", "", "ACME=+1.24%|NORD=+0.31%|TARN=-2.08%"},
    ExampleRow{kind::cryptoQuote, "$61,480", "-0.84% · 24h"},
    ExampleRow{kind::cryptoChart, "$61.4K", "-0.84% · 24h", "", "", "", -61480},
    ExampleRow{kind::cryptoWatchlist, "$61,480", "Bitcoin", "", "Bitcoin=-0.84%|Ethereum=+2.10%|Solana=+4.62%"},
    ExampleRow{kind::dropbox, "36", "Folder items", "", "Quarterly summary.pdf=1.2 MB|Floor plan.png=640 KB"},
    ExampleRow{kind::gmailLatest, "Ines Moreau", "Translation deadline", "",
               "Translation deadline=Ines Moreau|Lunch on Friday?=Sam Okoye"},
    ExampleRow{kind::gmailUnreadSummary, "7", "Unread messages", "",
               "Translation deadline=Ines Moreau|Lunch on Friday?=Sam Okoye"},
    ExampleRow{kind::homeAssistant, "21.4 °C", "Living room"},
    ExampleRow{kind::appleHome, "3", "Lights on"},
    ExampleRow{kind::analyticsCursorUsage, "$86.20", "Team usage · 30 days", "Requests=1,912|Tokens=24.6M"},
    ExampleRow{kind::cursorPersonalUsage, "66%", "Remaining · Plan allowance", "", "", "Plan allowance,34,20160"},
    ExampleRow{kind::claudePlanUsage, "58%", "Remaining · 5 hours", "", "", "5 hours,42,128|7 days,68,4000"},
    ExampleRow{kind::claudePlanUsageGauge, "58%", "Remaining · 5 hours", "", "", "5 hours,42,128|7 days,68,4000"},
    ExampleRow{kind::copilotUsage, "62%", "Remaining · Included allowance", "", "", "Included allowance,38,11000"},
    ExampleRow{kind::grokUsage, "79%", "Remaining · Credits", "", "", "Credits,21,9000"},
    ExampleRow{kind::glmUsage, "47%", "Remaining · Token allowance", "", "",
               "Token allowance,53,190|Tool allowance,12,9000"},
    ExampleRow{kind::openCodeUsage, "81%", "Remaining · 5 hours", "", "", "5 hours,19,230|Week,44,5000|Month,51,18000"},
    ExampleRow{kind::antigravityUsage, "70%", "Remaining · 5 hours", "", "", "5 hours,30,200"},
    ExampleRow{kind::perplexityUsage, "284", "Pro remaining", "Pro=284|Research=18|Labs=9"},
};

QStringList partsOf(const char* text, QChar by) { return QString::fromUtf8(text).split(by, Qt::SkipEmptyParts); }

/// A curve that looks like what happened, and is the same each time. A negative trend falls.
QList<double> series(double trend) {
  QList<double> values;
  constexpr int days = 138;
  const double size = std::abs(trend);
  for (int i = 0; i < days; ++i) {
    const double at = trend > 0 ? i : days - i;
    const double wave = std::sin(at * 0.9) * 0.5 + std::sin(at * 0.37) * 0.6 + std::sin(at * 2.3) * 0.3;
    values << std::max(0.0, std::round(size * (0.45 + 0.35 * at / days + 0.22 * wave)));
  }
  return values;
}

/// What was done on each of them: on some of them nothing.
QList<double> days(double most) {
  QList<double> values = series(most);
  for (qsizetype i = 0; i < values.size(); ++i) {
    const double chance = std::abs(std::sin(static_cast<double>(i) * 12.9898) * 43758.5453);
    values[i] = std::floor(std::max(0.0, (chance - std::floor(chance)) * 1.7 - 0.7) * most);
  }
  values.last() = most;
  return values;
}

RemoteReading exampleOf(const ExampleRow& row, const QDateTime& now) {
  RemoteReading reading;
  reading.goodAt = now;
  RemoteValue& value = reading.value;
  value.value = QString::fromUtf8(row.value);
  value.subtitle = QString::fromUtf8(row.subtitle);
  value.updated = now;
  for (const QString& metric : partsOf(row.metrics, u'|'))
    value.metrics << ServiceMetric{metric.section(u'=', 0, 0), metric.section(u'=', 1)};
  for (const QString& each : partsOf(row.rows, u'|'))
    value.rows << ServiceRow{each, each.section(u'=', 0, 0), each.section(u'=', 1), QUrl(u"https://example.org/"_s)};
  for (const QString& each : partsOf(row.windows, u'|')) {
    const QStringList parts = each.split(u',');
    value.usageWindows << UsageWindow{parts[0], parts[0], parts[1].toDouble(), std::nullopt,
                                      now.addSecs(parts[2].toLongLong() * 60)};
  }
  if (row.trend != 0)
    value.numbers = row.kind == kind::analyticsGitHubContributions ? days(row.trend) : series(row.trend);
  // A week or two of most, more of days that are squares and of prices.
  if (row.kind != kind::analyticsGitHubContributions && value.numbers.size() > 0)
    value.numbers = value.numbers.last(row.kind == kind::analyticsSimpleAnalyticsChart ? 8 : 28);
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

QHash<QString, RemoteReading> serviceExamples(const QDateTime& now) {
  QHash<QString, RemoteReading> examples;
  for (const ExampleRow& row : kExamples) examples.insert(row.kind, exampleOf(row, now));
  for (const auto& [kind, read] : kReadExamples) {
    RemoteReading reading;
    reading.value = read(now);
    reading.goodAt = now;
    examples.insert(kind, reading);
  }
  return examples;
}

}  // namespace tarnwick
