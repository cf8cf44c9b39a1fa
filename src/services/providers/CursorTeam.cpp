#include <QCoroTask>

#include "services/Money.h"
#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "services/providers/UsageReport.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kTeamDays = 30;

QString teamMissing() { return UsageReport::missing(ServiceWords::tr("Cursor Team Admin API key")); }

QString explainTeam(QStringView) { return ServiceWords::tr("What a Cursor team was charged in the last 30 days."); }

QList<ProviderField> teamFields(QStringView) { return {}; }

void normaliseTeam(DockWidget& widget) {
  OptionRules(widget).set(option::dashboard, u"https://cursor.com/dashboard"_s);
}

struct TeamUsage {
  qint64 requests = 0;
  double tokens = 0;
  double cents = 0;
};

QString noTeamUsage() { return ServiceWords::tr("Cursor did not return paginated team usage."); }

double figureOf(const QJsonValue& value) {
  OptionRules::require(value.isDouble(), noTeamUsage());
  return value.toDouble();
}

void countEvents(const QJsonArray& events, TeamUsage& usage) {
  for (const QJsonValue& event : events) {
    ++usage.requests;
    OptionRules::require(event[u"isTokenBasedCall"].isBool(), noTeamUsage());
    if (!event[u"isTokenBasedCall"].toBool()) continue;
    const QJsonObject tokens = event[u"tokenUsage"].toObject();
    for (const auto key : {u"inputTokens", u"outputTokens", u"cacheWriteTokens", u"cacheReadTokens"}) {
      const QJsonValue count = tokens[QStringView(key)];
      if (!count.isUndefined()) usage.tokens += figureOf(count);
    }
    usage.cents += figureOf(event[u"chargedCents"]);
  }
}

QCoro::Task<RemoteValue> fetchTeam(ProviderRequest request, std::stop_token stop) {
  const QDateTime now = request.session->now();
  const QByteArray key = UsageReport::token(request, teamMissing()).toUtf8() + ':';
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
    const QJsonValue body = co_await request.session->json(std::move(call), stop);
    const QJsonArray events = ProviderData::list(body, u"usageEvents"_s, noTeamUsage());
    const QJsonValue hasNext = body[u"pagination"][u"hasNextPage"];
    OptionRules::require(hasNext.isBool(), noTeamUsage());
    countEvents(events, usage);
    if (!hasNext.toBool()) pages.finish();
  }
  const QString sum = Money::text(usage.cents / 100, u"USD"_s);
  RemoteValue value = request.shown(pages.isPartial() ? ServiceWords::tr("Partial · ") + sum : sum,
                                    ServiceWords::tr("Team usage · 30 days"));
  value.detail = ServiceWords::tr("Charged cost reported by Cursor. Included subscription allowances are separate.");
  if (pages.isPartial())
    value.detail += u' ' + ServiceWords::tr("More than 3,000 events; this is not a complete period.");
  value.metrics = {{ServiceWords::tr("Requests"), QString::number(usage.requests)},
                   {ServiceWords::tr("Tokens"), QString::number(usage.tokens, 'f', 0)}};
  co_return value;
}

}  // namespace

Provider cursorTeam() {
  Provider row =
      ProviderRow::of(u"cursor-team"_s, u"Cursor"_s, ServiceHost::CursorTeam, {{kind::analyticsCursorUsage}});
  row.explanation = explainTeam;
  row.fields = teamFields;
  row.credential = {.label = ServiceWords::tr("Cursor Team Admin API key"),
                    .placeholder = u"key_…"_s,
                    .explanation = ServiceWords::tr("An Admin API key of the team."),
                    .page = QUrl(u"https://cursor.com/dashboard?tab=settings"_s),
                    .missing = teamMissing()};
  row.normalise = normaliseTeam;
  row.fetch = fetchTeam;
  row.limits = {.requests = 30, .pages = 30, .pageSize = 100};
  return row;
}

}  // namespace tarnwick
