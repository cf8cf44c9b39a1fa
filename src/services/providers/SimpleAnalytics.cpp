#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kSimpleDays = 7;

void normaliseSimple(DockWidget& widget) {
  OptionRules options(widget);
  const QString site = options.trimmed(option::site);
  OptionRules::require(option::site, !site.isEmpty() && !site.contains(u'/') && !site.contains(".."_L1),
                       ServiceWords::tr("Enter your site’s domain without a path."));
  options.set(option::dashboard, "https://simpleanalytics.com/"_L1 + ProviderData::encoded(site));
}

QCoro::Task<RemoteValue> fetchSite(ProviderRequest request, std::stop_token stop) {
  const QDateTime now = request.now();
  const ServiceCall call =
      request.keyed(u"Api-Key"_s, u'/' + ProviderData::encoded(request.option(option::site)) + ".json"_L1,
                    {{u"version"_s, u"6"_s},
                     {u"fields"_s, u"visitors,pageviews,histogram"_s},
                     {u"start"_s, ProviderData::day(now.addDays(1 - kSimpleDays), now.timeZone())},
                     {u"timezone"_s, QString::fromLatin1(now.timeZone().id())}});
  const QJsonObject body = co_await request.object(call, stop);
  require(body[u"status"].toString() == "success"_L1, ProviderRow::unexpected());
  RemoteValue value =
      request.shown(ProviderData::count(body, u"visitors"_s), ServiceWords::tr("Unique visitors · 7 days"));
  value.metrics = {{ServiceWords::tr("Pageviews"), ProviderData::count(body, u"pageviews"_s)}};
  for (const QJsonValue& day : body[u"histogram"].toArray()) {
    value.numbers << ProviderData::number(day[u"visitors"], u"visitors"_s);
    value.numberDays << ProviderData::dayOf(day[u"date"]);
  }
  co_return value;
}

}  // namespace

Provider simpleAnalytics() {
  return {
      .id = u"simpleanalytics"_s,
      .name = u"Simple Analytics"_s,
      .address = ProviderRow::at(ServiceHost::SimpleAnalytics),
      .credential = {.label = ServiceWords::tr("API key"),
                     .placeholder = u"sa_api_key_…"_s,
                     .explanation = ServiceWords::tr("A key of your account; a public site needs none."),
                     .page = QUrl(u"https://simpleanalytics.com/account#api"_s),
                     .missing = ProviderRow::addProviderCredential(),
                     .isNeeded = [](const DockWidget&) { return false; }},
      .normalise = normaliseSimple,
      .topics = {{.kinds = {{kind::analyticsSimpleAnalytics}, {kind::analyticsSimpleAnalyticsChart}},
                  .explanation = ServiceWords::tr("Unique visitors of a site in the last seven days."),
                  .fields = {{option::site, ServiceWords::tr("Site domain"), u"example.com"_s}},
                  .fetch = fetchSite}},
  };
}

}  // namespace tarnwick
