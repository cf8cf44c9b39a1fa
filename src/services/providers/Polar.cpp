#include <QCoroTask>
#include <cmath>

#include "services/Money.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPolarDays = 30;

QString explainPolar(QStringView) { return ServiceWords::tr("Net revenue of an organization in the last 30 days."); }

QList<ProviderField> polarFields(QStringView) { return {{option::currency, ServiceWords::tr("Currency"), u"USD"_s}}; }

void normalisePolar(DockWidget& widget) {
  OptionRules options(widget);
  OptionRules::require(OptionRules::matches(options.trimmed(option::currency, u"USD"_s), "[A-Z]{3}"),
                       ServiceWords::tr("Enter a three-letter currency code."));
  options.set(option::dashboard, u"https://polar.sh/dashboard"_s);
}

double revenueOf(const QJsonValue& holder, const QString& currency) {
  const double minor = ProviderData::number(holder[u"net_revenue"], u"net_revenue"_s);
  return minor / std::pow(10, Money::decimals(currency));
}

QCoro::Task<RemoteValue> fetchPolar(ProviderRequest request, std::stop_token stop) {
  const QDateTime now = request.session->now();
  const QString currency = request.option(option::currency);
  ServiceCall call =
      request.call(u"/v1/metrics/"_s, {{u"start_date"_s, ProviderData::day(now.addDays(-kPolarDays), QTimeZone::utc())},
                                       {u"end_date"_s, ProviderData::day(now, QTimeZone::utc())},
                                       {u"interval"_s, u"day"_s},
                                       {u"timezone"_s, u"UTC"_s}});
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject body = ProviderData::object(answer);
  RemoteValue value = request.shown(Money::text(revenueOf(body[u"totals"], currency), currency),
                                    ServiceWords::tr("Net revenue · 30 days"));
  for (const QJsonValue& period : body[u"periods"].toArray()) value.numbers << revenueOf(period, currency);
  co_return value;
}

}  // namespace

Provider polar() {
  Provider row = ProviderRow::of(u"polar"_s, u"Polar"_s, ServiceHost::Polar, {{u"revenuePolar"_s}});
  row.explanation = explainPolar;
  row.fields = polarFields;
  row.credential = {.label = ServiceWords::tr("Organization access token"),
                    .placeholder = u"polar_oat_…"_s,
                    .explanation = ServiceWords::tr("A token of the organization with the scope “metrics:read”."),
                    .page = QUrl(u"https://polar.sh/dashboard"_s),
                    .missing = ProviderRow::providerCredentialMissing()};
  row.normalise = normalisePolar;
  row.fetch = fetchPolar;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
