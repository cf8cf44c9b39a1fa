#include "services/Money.h"
#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kDodoDays = 30;

QCoro::Task<RemoteValue> fetchDodo(ProviderRequest request, std::stop_token stop) {
  const QDateTime now = request.now().toUTC();
  const QString currency = request.option(option::currency);
  const QString noEntries = ServiceWords::tr("Dodo did not return ledger entries.");
  qint64 net = 0;
  qsizetype count = 0;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    // The service counts its pages from 0.
    const ServiceCall call =
        request.call(u"/balances/ledger"_s, {{u"currency"_s, currency},
                                             {u"page_size"_s, QString::number(request.limits.pageSize)},
                                             {u"page_number"_s, QString::number(pages.page() - 1)},
                                             {u"created_at_gte"_s, now.addDays(-kDodoDays).toString(Qt::ISODate)},
                                             {u"created_at_lte"_s, now.toString(Qt::ISODate)}});
    const QJsonValue body = co_await request.answer(call, stop);
    const QJsonArray rows = ProviderData::list(body, u"items"_s, noEntries);
    pages.goOn(rows.size(), request.limits.pageSize);
    ProviderData::add(net, ProviderData::ledgerNet(rows, currency), noEntries);
    count += rows.size();
  }
  RemoteValue value =
      request.shown(pages.marked(Money::ofMinor(net, currency)), ServiceWords::tr("Net payments · 30 days"));
  value.detail = ServiceWords::tr("Payments less refunds, disputes and related fees; payouts/transfers excluded. ") +
                 ServiceWords::tr("%1 ledger entries read.").arg(count);
  if (pages.isPartial()) value.detail += ServiceWords::tr(" More entries exist; this is not a complete total.");
  co_return value;
}

}  // namespace

Provider dodoPayments() {
  return {
      .id = u"dodo"_s,
      .name = u"Dodo Payments"_s,
      .address = ProviderRow::at(ServiceHost::DodoPayments),
      .page = u"https://app.dodopayments.com"_s,
      .credential = {.label = ServiceWords::tr("API key"),
                     .explanation = ServiceWords::tr("A live API key; read access is enough."),
                     .page = QUrl(u"https://app.dodopayments.com/developer/api-keys"_s),
                     .missing = ProviderRow::addProviderCredential()},
      .limits = {.pages = 20, .pageSize = 100},
      .normalise = [](DockWidget& widget) { OptionRules(widget).currency(u"USD"_s); },
      .topics = {{.kinds = {{u"revenueDodoPayments"_s}},
                  .explanation = ServiceWords::tr("Net payments of the last 30 days."),
                  .fields = {{option::currency, ServiceWords::tr("Currency"), u"USD"_s}},
                  .fetch = fetchDodo}},
  };
}

}  // namespace tarnwick
