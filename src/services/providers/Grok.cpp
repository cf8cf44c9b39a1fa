#include "services/UsageReport.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<RemoteValue> fetchGrok(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/v1/billing"_s, {{u"format"_s, u"credits"_s}});
  call.headers.insert(u"X-XAI-Token-Auth"_s, request.credential);
  const QJsonObject body = co_await request.object(call, stop);
  const UsageWindow credits{u"grok.credits"_s, ServiceWords::tr("Credits"),
                            UsageReport::percent(body[u"creditUsagePercent"]), std::nullopt,
                            UsageReport::moment(request.now(), body[u"billingPeriodEnd"])};
  co_return UsageReport::of(request.now(), {credits});
}

}  // namespace

Provider grok() {
  const QString token = ServiceWords::tr("Grok CLI access token");
  return {
      .id = u"grok"_s,
      .name = u"Grok"_s,
      .address = ProviderRow::at(ServiceHost::Grok),
      .page = u"https://grok.com"_s,
      .credential = {.label = token,
                     .explanation = ServiceWords::tr(
                         "The access token that the Grok command line program keeps once you signed in to it."),
                     .missing = UsageReport::missing(token),
                     .isOneWord = true},
      .topics = {{.kinds = {{kind::grokUsage}},
                  .explanation = ServiceWords::tr("How many credits of a Grok plan are left."),
                  .fetch = fetchGrok}},
  };
}

}  // namespace tarnwick
