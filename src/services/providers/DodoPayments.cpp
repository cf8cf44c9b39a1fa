#include <QCoroTask>

#include "services/Money.h"
#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kDodoDays = 30;

QString explainDodo(QStringView) { return ServiceWords::tr("Net payments of the last 30 days."); }

QList<ProviderField> dodoFields(QStringView) { return {{option::currency, ServiceWords::tr("Currency"), u"USD"_s}}; }

void normaliseDodo(DockWidget& widget) {
  OptionRules options(widget);
  OptionRules::require(OptionRules::matches(options.trimmed(option::currency, u"USD"_s), "[A-Z]{3}"),
                       ServiceWords::tr("Enter a three-letter currency code."));
  options.set(option::dashboard, u"https://app.dodopayments.com"_s);
}

QCoro::Task<RemoteValue> fetchDodo(ProviderRequest request, std::stop_token stop) {
  const QDateTime now = request.session->now().toUTC();
  const QString currency = request.option(option::currency);
  qint64 net = 0;
  qsizetype count = 0;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    // The service counts its pages from 0.
    ServiceCall call =
        request.call(u"/balances/ledger"_s, {{u"currency"_s, currency},
                                             {u"page_size"_s, QString::number(request.limits.pageSize)},
                                             {u"page_number"_s, QString::number(pages.page() - 1)},
                                             {u"created_at_gte"_s, now.addDays(-kDodoDays).toString(Qt::ISODate)},
                                             {u"created_at_lte"_s, now.toString(Qt::ISODate)}});
    const QJsonValue body = co_await request.session->json(std::move(call), stop);
    const QJsonArray rows =
        ProviderData::list(body, u"items"_s, ServiceWords::tr("Dodo did not return ledger entries."));
    net += ProviderData::ledgerNet(rows, currency);
    count += rows.size();
    if (rows.size() < request.limits.pageSize) pages.finish();
  }
  RemoteValue value =
      request.shown(Money::text(Money::major(net, currency), currency), ServiceWords::tr("Net payments · 30 days"));
  value.detail = ServiceWords::tr("Payments less refunds, disputes and related fees; payouts/transfers excluded. ") +
                 ServiceWords::tr("%1 ledger entries read.").arg(count);
  if (pages.isPartial()) value.detail += ServiceWords::tr(" More entries exist; this is not a complete total.");
  co_return value;
}

}  // namespace

Provider dodoPayments() {
  Provider row =
      ProviderRow::of(u"dodo"_s, u"Dodo Payments"_s, ServiceHost::DodoPayments, {{u"revenueDodoPayments"_s}});
  row.explanation = explainDodo;
  row.fields = dodoFields;
  row.credential = {.label = ServiceWords::tr("API key"),
                    .placeholder = {},
                    .explanation = ServiceWords::tr("A live API key; read access is enough."),
                    .page = QUrl(u"https://app.dodopayments.com/developer/api-keys"_s),
                    .missing = ProviderRow::providerCredentialMissing()};
  row.normalise = normaliseDodo;
  row.fetch = fetchDodo;
  row.limits = {.requests = 20, .pages = 20, .pageSize = 100};
  return row;
}

}  // namespace tarnwick
