#include <QCoroTask>

#include "services/JSONMetric.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString explainPlausible(QStringView) { return ServiceWords::tr("Unique visitors of a site in the last seven days."); }

QList<ProviderField> plausibleFields(QStringView) {
  return {{option::site, ServiceWords::tr("Site domain"), u"example.com"_s}};
}

void normalisePlausible(DockWidget& widget) {
  OptionRules options(widget);
  const QString site = options.trimmed(option::site);
  OptionRules::require(!site.isEmpty(), ServiceWords::tr("Enter your Plausible site domain."));
  options.set(option::dashboard, "https://plausible.io/"_L1 + QString::fromLatin1(QUrl::toPercentEncoding(site)));
}

ServiceCall visitorsCall(const ProviderRequest& request, bool byDay) {
  ServiceCall call = request.call(u"/api/v2/query"_s);
  call.body = QJsonObject{{u"site_id"_s, request.option(option::site)},
                          {u"metrics"_s, QJsonArray{u"visitors"_s}},
                          {u"date_range"_s, u"7d"_s}};
  if (byDay) call.body->insert(u"dimensions"_s, QJsonArray{u"time:day"_s});
  return call;
}

QCoro::Task<RemoteValue> fetchPlausible(ProviderRequest request, std::stop_token stop) {
  ServiceCall total = visitorsCall(request, false);
  const QJsonValue answer = co_await request.session->json(std::move(total), stop);
  const QJsonValue visitors = answer[u"results"][0][u"metrics"][0];
  OptionRules::require(!visitors.isUndefined() && !visitors.isNull(),
                       ServiceWords::tr("Plausible did not return visitor data."));
  const double count = ProviderData::number(visitors, u"visitors"_s);
  ServiceCall days = visitorsCall(request, true);
  const QJsonValue series = co_await request.session->json(std::move(days), stop);
  RemoteValue value = request.shown(JSONMetric::number(count), ServiceWords::tr("Unique visitors · 7 days"));
  for (const QJsonValue& day : series[u"results"].toArray())
    value.numbers << ProviderData::number(day[u"metrics"][0], u"visitors"_s);
  co_return value;
}

}  // namespace

Provider plausible() {
  Provider row = ProviderRow::of(u"plausible"_s, u"Plausible"_s, ServiceHost::Plausible,
                                 {{u"Plausible"_s, KindPattern::Match::Contains}});
  row.explanation = explainPlausible;
  row.fields = plausibleFields;
  row.credential = {.label = ServiceWords::tr("Stats API key"),
                    .placeholder = {},
                    .explanation = ServiceWords::tr("A key of the Stats API, of an account that sees the site."),
                    .page = QUrl(u"https://plausible.io/settings/api-keys"_s),
                    .missing = ProviderRow::serviceCredentialMissing()};
  row.normalise = normalisePlausible;
  row.fetch = fetchPlausible;
  row.limits = {.requests = 2};
  return row;
}

}  // namespace tarnwick
