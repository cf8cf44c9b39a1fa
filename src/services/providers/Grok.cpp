#include <QCoroTask>

#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "services/providers/UsageReport.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString grokMissing() { return UsageReport::missing(ServiceWords::tr("Grok CLI access token")); }

QString explainGrok(QStringView) { return ServiceWords::tr("How many credits of a Grok plan are left."); }

QList<ProviderField> grokFields(QStringView) { return {}; }

void normaliseGrok(DockWidget& widget) { OptionRules(widget).set(option::dashboard, u"https://grok.com"_s); }

QCoro::Task<RemoteValue> fetchGrok(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/v1/billing"_s, {{u"format"_s, u"credits"_s}});
  call.token = UsageReport::token(request, grokMissing());
  call.headers.insert(u"X-XAI-Token-Auth"_s, call.token);
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject body = ProviderData::object(answer);
  co_return UsageReport::of(
      request,
      {UsageWindow{u"grok.credits"_s, ServiceWords::tr("Credits"), UsageReport::percent(body[u"creditUsagePercent"]),
                   std::nullopt, UsageReport::moment(body[u"billingPeriodEnd"], request.session->now())}});
}

}  // namespace

Provider grok() {
  Provider row = ProviderRow::of(u"grok"_s, u"Grok"_s, ServiceHost::Grok, {{kind::grokUsage}});
  row.explanation = explainGrok;
  row.fields = grokFields;
  row.credential = {.label = ServiceWords::tr("Grok CLI access token"),
                    .placeholder = {},
                    .explanation = ServiceWords::tr("The access token that the command line program keeps."),
                    .page = {},
                    .missing = grokMissing()};
  row.normalise = normaliseGrok;
  row.fetch = fetchGrok;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
