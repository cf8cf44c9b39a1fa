#include "services/Money.h"
#include "services/Paging.h"
#include "services/UsageReport.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kTeamDays = 30;
constexpr qint64 kMostEvents = 3000;

struct TeamUsage {
  qint64 requests = 0;
  double tokens = 0;
  double cents = 0;
};

QString noTeamUsage() { return ServiceWords::tr("Cursor did not return paginated team usage."); }

double figureOf(const QJsonValue& value) {
  require(value.isDouble() && value.toDouble() >= 0, noTeamUsage());
  return value.toDouble();
}

void countEvents(const QJsonArray& events, TeamUsage& usage) {
  for (const QJsonValue& event : events) {
    ++usage.requests;
    require(event[u"isTokenBasedCall"].isBool(), noTeamUsage());
    if (!event[u"isTokenBasedCall"].toBool()) continue;
    const QJsonValue tokens = event[u"tokenUsage"];
    require(tokens.isObject(), noTeamUsage());
    for (const auto key : {u"inputTokens", u"outputTokens", u"cacheWriteTokens", u"cacheReadTokens"}) {
      const QJsonValue count = tokens[QStringView(key)];
      if (!count.isUndefined()) usage.tokens += figureOf(count);
    }
    usage.cents += figureOf(event[u"chargedCents"]);
  }
}

QCoro::Task<RemoteValue> fetchTeam(ProviderRequest request, std::stop_token stop) {
  const QDateTime now = request.now();
  const QByteArray key = request.credential.toUtf8() + ':';
  TeamUsage usage;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    ServiceCall call = request.call(u"/teams/filtered-usage-events"_s);
    call.bearer = false;
    call.token = "Basic "_L1 + QString::fromLatin1(key.toBase64());
    call.body = QJsonObject{{u"startDate"_s, now.addDays(-kTeamDays).toMSecsSinceEpoch()},
                            {u"endDate"_s, now.toMSecsSinceEpoch()},
                            {u"page"_s, pages.page()},
                            {u"pageSize"_s, request.limits.pageSize}};
    const QJsonObject body = co_await request.object(call, stop);
    const QJsonValue hasNext = body[u"pagination"][u"hasNextPage"];
    require(hasNext.isBool(), noTeamUsage());
    countEvents(ProviderData::list(body, u"usageEvents"_s, noTeamUsage()), usage);
    if (hasNext.toBool() && usage.requests >= kMostEvents) break;
    pages.goOn(hasNext.toBool());
  }
  const QString charged = Money::text(usage.cents / 100, u"USD"_s);
  RemoteValue value = request.shown(pages.marked(charged), ServiceWords::tr("Team usage · 30 days"));
  value.detail = ServiceWords::tr("Charged cost reported by Cursor. Included subscription allowances are separate.");
  if (pages.isPartial())
    value.detail += u' ' + ServiceWords::tr("More than 3,000 events; this is not a complete period.");
  value.metrics = {{ServiceWords::tr("Requests"), QString::number(usage.requests)},
                   {ServiceWords::tr("Tokens"), QString::number(usage.tokens, 'f', 0)}};
  co_return value;
}

}  // namespace

Provider cursorTeam() {
  const QString key = ServiceWords::tr("Cursor Team Admin API key");
  return {
      .id = u"cursor-team"_s,
      .name = u"Cursor"_s,
      .address = ProviderRow::at(ServiceHost::CursorTeam),
      .page = u"https://cursor.com/dashboard"_s,
      .credential = {.label = key,
                     .placeholder = u"key_…"_s,
                     .explanation = ServiceWords::tr("An Admin API key of the team."),
                     .page = QUrl(u"https://cursor.com/dashboard?tab=settings"_s),
                     .missing = UsageReport::missing(key),
                     .isOneWord = true},
      .limits = {.pages = 30, .pageSize = 100},
      .topics = {{.kinds = {{kind::analyticsCursorUsage}},
                  .explanation = ServiceWords::tr("What a Cursor team was charged in the last 30 days."),
                  .fetch = fetchTeam}},
  };
}

}  // namespace tarnwick
