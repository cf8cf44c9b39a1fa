#include <QCoroTask>

#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kSimpleDays = 7;

QString explainSimple(QStringView) { return ServiceWords::tr("Unique visitors of a site in the last seven days."); }

QList<ProviderField> simpleFields(QStringView) {
  return {{option::site, ServiceWords::tr("Site domain"), u"example.com"_s}};
}

/// The figures of a public site are public.
bool needsNoSimpleKey(const DockWidget&) { return false; }

void normaliseSimple(DockWidget& widget) {
  OptionRules options(widget);
  const QString site = options.trimmed(option::site);
  OptionRules::require(!site.isEmpty() && !site.contains(u'/') && !site.contains(".."_L1),
                       ServiceWords::tr("Enter your site’s domain without a path."));
  options.set(option::dashboard,
              "https://simpleanalytics.com/"_L1 + QString::fromLatin1(QUrl::toPercentEncoding(site)));
}

QCoro::Task<RemoteValue> fetchSimple(ProviderRequest request, std::stop_token stop) {
  const QDateTime now = request.session->now();
  const QString site = QString::fromLatin1(QUrl::toPercentEncoding(request.option(option::site)));
  ServiceCall call = request.call(u'/' + site + ".json"_L1,
                                  {{u"version"_s, u"6"_s},
                                   {u"fields"_s, u"visitors,pageviews,histogram"_s},
                                   {u"start"_s, ProviderData::day(now.addDays(1 - kSimpleDays), now.timeZone())},
                                   {u"timezone"_s, QString::fromLatin1(now.timeZone().id())}});
  call.token.clear();
  if (!request.credential.isEmpty()) call.headers.insert(u"Api-Key"_s, request.credential);
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject body = ProviderData::object(answer);
  OptionRules::require(body[u"status"].toString() == "success"_L1,
                       ServiceWords::tr("The provider returned an unexpected response."));
  RemoteValue value =
      request.shown(ProviderData::count(body, u"visitors"_s), ServiceWords::tr("Unique visitors · 7 days"));
  value.metrics = {{ServiceWords::tr("Pageviews"), ProviderData::count(body, u"pageviews"_s)}};
  for (const QJsonValue& day : body[u"histogram"].toArray())
    value.numbers << ProviderData::number(day[u"visitors"], u"visitors"_s);
  co_return value;
}

}  // namespace

Provider simpleAnalytics() {
  Provider row = ProviderRow::of(u"simpleanalytics"_s, u"Simple Analytics"_s, ServiceHost::SimpleAnalytics,
                                 {{kind::analyticsSimpleAnalytics}, {kind::analyticsSimpleAnalyticsChart}});
  row.explanation = explainSimple;
  row.fields = simpleFields;
  row.credential = {.label = ServiceWords::tr("API key"),
                    .placeholder = u"sa_api_key_…"_s,
                    .explanation = ServiceWords::tr("A key of your account; a public site needs none."),
                    .page = QUrl(u"https://simpleanalytics.com/account#api"_s),
                    .missing = ProviderRow::providerCredentialMissing(),
                    .isNeeded = needsNoSimpleKey};
  row.normalise = normaliseSimple;
  row.fetch = fetchSimple;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
