#include <QCoroTask>

#include "services/Money.h"
#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kThirtyDays = 2'592'000;

QString explainStripe(QStringView) {
  return ServiceWords::tr("Payments of the last 30 days less refunds, disputes and fees.");
}

QList<ProviderField> stripeFields(QStringView) { return {{option::currency, ServiceWords::tr("Currency"), u"usd"_s}}; }

void normaliseStripe(DockWidget& widget) {
  OptionRules options(widget);
  OptionRules::require(OptionRules::matches(options.trimmed(option::currency, u"usd"_s), "[a-z]{3}"),
                       ServiceWords::tr("Enter a three-letter currency code."));
  options.set(option::dashboard, u"https://dashboard.stripe.com"_s);
}

QCoro::Task<RemoteValue> fetchStripe(ProviderRequest request, std::stop_token stop) {
  const qint64 now = request.session->now().toSecsSinceEpoch();
  const QString currency = request.option(option::currency);
  qint64 net = 0;
  QString cursor;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    QMap<QString, QString> query{{u"limit"_s, QString::number(request.limits.pageSize)},
                                 {u"created[gte]"_s, QString::number(now - kThirtyDays)},
                                 {u"created[lte]"_s, QString::number(now)}};
    if (!cursor.isEmpty()) query.insert(u"starting_after"_s, cursor);
    ServiceCall call = request.call(u"/v1/balance_transactions"_s, query);
    const QJsonValue body = co_await request.session->json(std::move(call), stop);
    const QString noLedger = ServiceWords::tr("Stripe did not return a paginated balance ledger.");
    const QJsonArray rows = ProviderData::list(body, u"data"_s, noLedger);
    net += ProviderData::stripeNet(rows, currency);
    // A full last page may come without a word on what follows.
    const QJsonValue hasMore = body[u"has_more"];
    OptionRules::require(hasMore.isBool() || hasMore.isUndefined(), noLedger);
    if (!hasMore.toBool()) {
      pages.finish();
      continue;
    }
    const QString next = rows.isEmpty() ? QString() : rows.last()[u"id"].toString();
    OptionRules::require(!next.isEmpty() && next != cursor,
                         ServiceWords::tr("Stripe returned an invalid continuation cursor."));
    cursor = next;
  }
  const QString sum = Money::text(Money::major(net, currency), currency);
  RemoteValue value = request.shown(pages.isPartial() ? ServiceWords::tr("Partial · ") + sum : sum,
                                    ServiceWords::tr("Net revenue · 30 days"));
  value.detail = currency.toUpper() + ServiceWords::tr(
                                          " payments less refunds, disputes and fees. Payouts, transfers, "
                                          "reserves and top-ups excluded.");
  if (pages.isPartial())
    value.detail += ServiceWords::tr(" More than 3,000 transactions; this is not a complete total.");
  co_return value;
}

}  // namespace

Provider stripe() {
  Provider row = ProviderRow::of(u"stripe"_s, u"Stripe"_s, ServiceHost::Stripe, {{u"revenueStripe"_s}});
  row.explanation = explainStripe;
  row.fields = stripeFields;
  row.credential = {
      .label = ServiceWords::tr("Restricted key"),
      .placeholder = u"rk_live_…"_s,
      .explanation = ServiceWords::tr("A restricted key that may read balance transactions, nothing else."),
      .page = QUrl(u"https://dashboard.stripe.com/apikeys"_s),
      .missing = ProviderRow::serviceCredentialMissing()};
  row.normalise = normaliseStripe;
  row.fetch = fetchStripe;
  row.limits = {.requests = 30, .pages = 30, .pageSize = 100};
  return row;
}

}  // namespace tarnwick
