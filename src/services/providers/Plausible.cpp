#include "services/JSONMetric.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

void normalisePlausible(DockWidget& widget) {
  OptionRules options(widget);
  const QString site = options.trimmed(option::site);
  OptionRules::require(option::site, !site.isEmpty(), ServiceWords::tr("Enter your Plausible site domain."));
  options.set(option::dashboard, "https://plausible.io/"_L1 + ProviderData::encoded(site));
}

ServiceCall visitorsCall(const ProviderRequest& request) {
  ServiceCall call = request.call(u"/api/v2/query"_s);
  call.body = QJsonObject{{u"site_id"_s, request.option(option::site)},
                          {u"metrics"_s, QJsonArray{u"visitors"_s}},
                          {u"date_range"_s, u"7d"_s}};
  return call;
}

QCoro::Task<RemoteValue> fetchVisitors(ProviderRequest request, std::stop_token stop) {
  const ServiceCall total = visitorsCall(request);
  const QJsonObject sum = co_await request.object(total, stop);
  const QJsonValue visitors = sum[u"results"][0][u"metrics"][0];
  require(!visitors.isUndefined() && !visitors.isNull(), ServiceWords::tr("Plausible did not return visitor data."));
  const double count = ProviderData::number(visitors, u"visitors"_s);
  RemoteValue value = request.shown(JSONMetric::number(count), ServiceWords::tr("Unique visitors · 7 days"));
  ServiceCall daily = visitorsCall(request);
  daily.body->insert(u"dimensions"_s, QJsonArray{u"time:day"_s});
  const QJsonObject days = co_await request.object(daily, stop);
  for (const QJsonValue& day : days[u"results"].toArray()) {
    value.numbers << ProviderData::number(day[u"metrics"][0], u"visitors"_s);
    value.numberDays << ProviderData::dayOf(day[u"dimensions"][0]);
  }
  co_return value;
}

}  // namespace

Provider plausible() {
  return {
      .id = u"plausible"_s,
      .name = u"Plausible"_s,
      .address = ProviderRow::at(ServiceHost::Plausible),
      .credential = {.label = ServiceWords::tr("Stats API key"),
                     .explanation = ServiceWords::tr("A key of the Stats API, of an account that sees the site."),
                     .page = QUrl(u"https://plausible.io/settings/api-keys"_s),
                     .missing = ProviderRow::addServiceCredential()},
      .normalise = normalisePlausible,
      .topics = {{.kinds = {{u"Plausible"_s, KindPattern::Match::Contains}},
                  .explanation = ServiceWords::tr("Unique visitors of a site in the last seven days."),
                  .fields = {{option::site, ServiceWords::tr("Site domain"), u"example.com"_s}},
                  .fetch = fetchVisitors}},
  };
}

}  // namespace tarnwick
