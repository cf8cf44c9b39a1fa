#include "services/Money.h"
#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kThirtyDays = 2'592'000;

QCoro::Task<RemoteValue> fetchLedger(ProviderRequest request, std::stop_token stop) {
  const qint64 now = request.now().toSecsSinceEpoch();
  const QString currency = request.option(option::currency);
  const QString noLedger = ServiceWords::tr("Stripe did not return a paginated balance ledger.");
  qint64 net = 0;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    QMap<QString, QString> query{{u"limit"_s, QString::number(request.limits.pageSize)},
                                 {u"created[gte]"_s, QString::number(now - kThirtyDays)},
                                 {u"created[lte]"_s, QString::number(now)}};
    if (!pages.cursor().isEmpty()) query.insert(u"starting_after"_s, pages.cursor());
    const ServiceCall call = request.call(u"/v1/balance_transactions"_s, query);
    const QJsonValue body = co_await request.answer(call, stop);
    const QJsonArray rows = ProviderData::list(body, u"data"_s, noLedger);
    ProviderData::add(net, ProviderData::stripeNet(rows, currency), noLedger);
    // A full last page may come without a word on what follows.
    const QJsonValue hasMore = body[u"has_more"];
    require(hasMore.isBool() || hasMore.isUndefined(), noLedger);
    pages.goOn(hasMore.toBool(), rows.isEmpty() ? QString() : rows.last()[u"id"].toString(),
               ServiceWords::tr("Stripe returned an invalid continuation cursor."));
  }
  RemoteValue value =
      request.shown(pages.marked(Money::ofMinor(net, currency)), ServiceWords::tr("Net revenue · 30 days"));
  value.detail = currency.toUpper() + ServiceWords::tr(
                                          " payments less refunds, disputes and fees. Payouts, transfers, "
                                          "reserves and top-ups excluded.");
  if (pages.isPartial())
    value.detail += ServiceWords::tr(" More than 3,000 transactions; this is not a complete total.");
  co_return value;
}

}  // namespace

Provider stripe() {
  return {
      .id = u"stripe"_s,
      .name = u"Stripe"_s,
      .address = ProviderRow::at(ServiceHost::Stripe),
      .page = u"https://dashboard.stripe.com"_s,
      .credential = {.label = ServiceWords::tr("Restricted key"),
                     .placeholder = u"rk_live_…"_s,
                     .explanation =
                         ServiceWords::tr("A restricted key that may read balance transactions, nothing else."),
                     .page = QUrl(u"https://dashboard.stripe.com/apikeys"_s),
                     .missing = ProviderRow::addServiceCredential()},
      .limits = {.pages = 30, .pageSize = 100},
      .normalise = [](DockWidget& widget) { OptionRules(widget).currency(u"usd"_s); },
      .topics = {{.kinds = {{u"revenueStripe"_s}},
                  .explanation = ServiceWords::tr("Payments of the last 30 days less refunds, disputes and fees."),
                  .fields = {{option::currency, ServiceWords::tr("Currency"), u"usd"_s}},
                  .fetch = fetchLedger}},
  };
}

}  // namespace tarnwick
