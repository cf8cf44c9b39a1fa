#include <cmath>

#include "services/Money.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPolarDays = 30;

double revenueOf(const QJsonValue& holder, const QString& currency) {
  const double minor = ProviderData::number(holder[u"net_revenue"], u"net_revenue"_s);
  return minor / std::pow(10, Money::decimals(currency));
}

QCoro::Task<RemoteValue> fetchRevenue(ProviderRequest request, std::stop_token stop) {
  const QDateTime now = request.now();
  const QString currency = request.option(option::currency);
  const ServiceCall call =
      request.call(u"/v1/metrics/"_s, {{u"start_date"_s, ProviderData::day(now.addDays(-kPolarDays), QTimeZone::utc())},
                                       {u"end_date"_s, ProviderData::day(now, QTimeZone::utc())},
                                       {u"interval"_s, u"day"_s},
                                       {u"timezone"_s, u"UTC"_s}});
  const QJsonObject body = co_await request.object(call, stop);
  RemoteValue value = request.shown(Money::text(revenueOf(body[u"totals"], currency), currency),
                                    ServiceWords::tr("Net revenue · 30 days"));
  for (const QJsonValue& period : body[u"periods"].toArray()) {
    value.numbers << revenueOf(period, currency);
    value.numberDays << ProviderData::dayOf(period[u"timestamp"]);
  }
  co_return value;
}

}  // namespace

Provider polar() {
  return {
      .id = u"polar"_s,
      .name = u"Polar"_s,
      .address = ProviderRow::at(ServiceHost::Polar),
      .page = u"https://polar.sh/dashboard"_s,
      .credential = {.label = ServiceWords::tr("Organization access token"),
                     .placeholder = u"polar_oat_…"_s,
                     .explanation = ServiceWords::tr("A token of the organization with the scope “metrics:read”."),
                     .page = QUrl(u"https://polar.sh/dashboard"_s),
                     .missing = ProviderRow::addProviderCredential()},
      .normalise = [](DockWidget& widget) { OptionRules(widget).currency(u"USD"_s); },
      .topics = {{.kinds = {{u"revenuePolar"_s}},
                  .explanation = ServiceWords::tr("Net revenue of an organization in the last 30 days."),
                  .fields = {{option::currency, ServiceWords::tr("Currency"), u"USD"_s}},
                  .fetch = fetchRevenue}},
  };
}

}  // namespace tarnwick
