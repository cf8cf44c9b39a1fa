#include <algorithm>

#include "services/Money.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostSymbols = 12;
constexpr int kHistoryDays = 30;
const QString kSource = u" · Twelve Data"_s;

void normaliseStocks(DockWidget& widget) {
  OptionRules options(widget);
  const QStringList symbols = ProviderData::listed(options.trimmed(option::symbols, u"AAPL"_s).toUpper());
  OptionRules::require(option::symbols, !symbols.isEmpty() && symbols.size() <= kMostSymbols,
                       ServiceWords::tr("Enter up to 12 stock symbols separated by commas."));
  options.set(option::symbols, symbols.join(u','));
}

/// The key goes into the query: this service takes it nowhere else.
ServiceCall stockCall(const ProviderRequest& request, const QString& path, QMap<QString, QString> query) {
  query.insert(u"apikey"_s, request.credential);
  ServiceCall call = request.call(path, query);
  call.token.clear();
  return call;
}

QString priceOf(const QJsonValue& quote) {
  return Money::text(ProviderData::number(quote[u"close"], u"close"_s), quote[u"currency"].toString(u"USD"_s));
}

QString changeOf(const QJsonValue& quote) {
  return QString::asprintf("%+.2f%%", ProviderData::number(quote[u"percent_change"], u"percent_change"_s));
}

/// The change and what it is the change of.
QString changeOfSymbol(const QString& change, const QString& symbol) {
  return change.isEmpty() ? symbol : change + u" · "_s + symbol;
}

QString sourceOf(const QJsonValue& quote) {
  const QString moment = quote[u"datetime"].toString();
  return (moment.isEmpty() ? ServiceWords::tr("provider timestamp unavailable")
                           : ServiceWords::tr("As of %1").arg(moment)) +
         kSource;
}

bool isError(const QJsonObject& body) { return body[u"status"].toString() == "error"_L1; }
/// Whether the service says that it knows none of the symbols.
bool namesUnknown(const QJsonObject& body) {
  const int code = body[u"code"].toInt();
  return code == 400 || code == 404;
}

/// A symbol that the service does not know is a row without a price.
ServiceRow stockRow(const QString& symbol, const QJsonValue& quote) {
  try {
    return {symbol, symbol, priceOf(quote) + u" · "_s + changeOf(quote), std::nullopt};
  } catch (const DomainError&) {
    return {symbol, symbol, u"—"_s, std::nullopt};
  }
}

QCoro::Task<RemoteValue> fetchQuote(ProviderRequest request, std::stop_token stop) {
  const QString symbol = request.option(option::symbols).section(u',', 0, 0);
  const ServiceCall call = stockCall(request, u"/quote"_s, {{u"symbol"_s, symbol}});
  const QJsonObject quote = co_await request.object(call, stop);
  require(!isError(quote), ProviderRow::unexpected());
  RemoteValue value = request.shown(priceOf(quote), changeOfSymbol(changeOf(quote), symbol));
  QStringList about{quote[u"name"].toString(), quote[u"exchange"].toString()};
  about.removeAll(QString());
  value.detail = (about + QStringList{sourceOf(quote)}).join(u'\n');
  co_return value;
}

QCoro::Task<RemoteValue> fetchQuoteList(ProviderRequest request, std::stop_token stop) {
  const QString list = request.option(option::symbols);
  const QStringList symbols = list.split(u',');
  const ServiceCall call = stockCall(request, u"/quote"_s, {{u"symbol"_s, list}});
  const QJsonObject body = co_await request.object(call, stop);
  require(!isError(body) || namesUnknown(body), ProviderRow::unexpected());
  RemoteValue value = request.shown(QString::number(symbols.size()), ServiceWords::tr("Stocks"));
  // Of one symbol the quote comes as it is, of several under their symbols.
  for (const QString& symbol : symbols)
    value.rows << stockRow(symbol, symbols.size() == 1 ? QJsonValue(body) : body[symbol]);
  value.detail = kSource.mid(3);
  co_return value;
}

QCoro::Task<RemoteValue> fetchQuoteHistory(ProviderRequest request, std::stop_token stop) {
  const QString symbol = request.option(option::symbols).section(u',', 0, 0);
  const ServiceCall call =
      stockCall(request, u"/time_series"_s,
                {{u"symbol"_s, symbol}, {u"interval"_s, u"1day"_s}, {u"outputsize"_s, QString::number(kHistoryDays)}});
  const QJsonObject body = co_await request.object(call, stop);
  const QString noHistory = ServiceWords::tr("The provider did not return stock price history.");
  const QJsonArray days = ProviderData::list(body, u"values"_s, noHistory);
  require(!days.isEmpty(), noHistory);
  QList<double> closes;
  QList<QDate> dates;
  for (const QJsonValue& day : days) {
    closes << ProviderData::number(day[u"close"], u"close"_s);
    dates << ProviderData::dayOf(day[u"datetime"]);
  }
  // The newest comes first.
  std::ranges::reverse(closes);
  std::ranges::reverse(dates);
  const double last = closes.last();
  const double before = closes.size() > 1 ? closes[closes.size() - 2] : 0;
  const QString change = before > 0 ? QString::asprintf("%+.2f%%", (last - before) / before * 100) : QString();
  RemoteValue value =
      request.shown(Money::text(last, body[u"meta"][u"currency"].toString(u"USD"_s)), changeOfSymbol(change, symbol));
  value.numbers = closes;
  value.numberDays = dates;
  value.detail = sourceOf(days.first());
  co_return value;
}

}  // namespace

Provider stocks() {
  const QList<ProviderField> fields{{option::symbols, ServiceWords::tr("Symbols"), u"AAPL"_s}};
  return {
      .id = u"stocks"_s,
      .name = u"Twelve Data"_s,
      .address = ProviderRow::at(ServiceHost::Stocks),
      .page = u"https://twelvedata.com"_s,
      .credential = {.label = ServiceWords::tr("Twelve Data API key"),
                     .explanation = ServiceWords::tr("A key of your account; the free plan is enough."),
                     .page = QUrl(u"https://twelvedata.com/account/api-keys"_s),
                     .missing = ProviderRow::addProviderCredential()},
      .normalise = normaliseStocks,
      .topics = {{.kinds = {{kind::stockQuote}},
                  .explanation = ServiceWords::tr("The price of a stock and its change today."),
                  .fields = fields,
                  .fetch = fetchQuote},
                 {.kinds = {{kind::stockChart}},
                  .explanation = ServiceWords::tr("The price of a stock over its last 30 days of trade."),
                  .fields = fields,
                  .fetch = fetchQuoteHistory},
                 {.kinds = {{kind::stockWatchlist}},
                  .explanation = ServiceWords::tr("Prices of up to 12 stocks."),
                  .fields = fields,
                  .fetch = fetchQuoteList}},
  };
}

}  // namespace tarnwick
