#include <cmath>

#include "services/Money.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostCoins = 12;
constexpr int kSmallDigits = 4;  ///< Of a price below one, behind its zeros.
constexpr int kMostZeros = 12;
const QString kCoinPage = u"https://www.coingecko.com/en/coins/"_s;

void normaliseCoins(DockWidget& widget) {
  OptionRules options(widget);
  const QStringList coins = ProviderData::listed(options.trimmed(option::coin, u"bitcoin"_s));
  OptionRules::require(option::coin,
                       !coins.isEmpty() && coins.size() <= kMostCoins &&
                           std::ranges::all_of(coins, [](const QString& id) { return ProviderData::identifier(id); }),
                       ServiceWords::tr("Enter up to 12 CoinGecko coin IDs separated by commas."));
  options.set(option::coin, coins.join(u','));
  options.set(option::dashboard, kCoinPage + coins.first());
}

/// "shiba-inu" as "Shiba Inu".
QString nameOfCoin(const QString& id) {
  QStringList words = id.split(u'-', Qt::SkipEmptyParts);
  for (QString& word : words) word[0] = word[0].toUpper();
  return words.join(u' ');
}

QString priceText(double price) {
  if (price == 0 || std::abs(price) >= 1) return Money::text(price, u"USD"_s);
  const int zeros = static_cast<int>(-std::floor(std::log10(std::abs(price)))) - 1;
  return u'$' + QLocale().toString(price, 'f', std::min(zeros, kMostZeros) + kSmallDigits);
}

QString changeText(const QJsonValue& coin) {
  const QJsonValue change = coin[u"usd_24h_change"];
  return change.isDouble() ? QString::asprintf("%+.2f%% · 24h", change.toDouble())
                           : ServiceWords::tr("24-hour change unavailable");
}

ServiceCall coinCall(const ProviderRequest& request, const QString& path, const QMap<QString, QString>& query) {
  return request.keyed(u"x-cg-demo-api-key"_s, path, query);
}

/// The prices of the widget's coins, by their ids.
QCoro::Task<QJsonObject> askPrices(ProviderRequest request, std::stop_token stop) {
  const QString ids = request.option(option::coin);
  const ServiceCall call = coinCall(request, u"/api/v3/simple/price"_s,
                                    {{u"ids"_s, ids},
                                     {u"vs_currencies"_s, u"usd"_s},
                                     {u"include_24hr_change"_s, u"true"_s},
                                     {u"include_last_updated_at"_s, u"true"_s}});
  const QJsonObject prices = co_await request.object(call, stop);
  for (const QString& id : ids.split(u',')) {
    require(prices[id].isObject(), ServiceWords::tr("CoinGecko did not return %1. Check the coin ID.").arg(id));
  }
  co_return prices;
}

QString coinDetail(const QString& what) {
  return what + ServiceWords::tr(" · USD") + u'\n' + ServiceWords::tr("Market data by CoinGecko");
}

QCoro::Task<RemoteValue> fetchPrice(ProviderRequest request, std::stop_token stop) {
  const QJsonObject prices = co_await askPrices(request, stop);
  const QString id = request.option(option::coin).section(u',', 0, 0);
  const double price = ProviderData::number(prices[id][u"usd"], u"price"_s);
  RemoteValue value = request.shown(priceText(price), changeText(prices[id]));
  value.detail = coinDetail(nameOfCoin(id));
  co_return value;
}

QCoro::Task<RemoteValue> fetchPriceChart(ProviderRequest request, std::stop_token stop) {
  RemoteValue value = co_await fetchPrice(request, stop);
  const QString id = request.option(option::coin).section(u',', 0, 0);
  const ServiceCall call = coinCall(request, "/api/v3/coins/"_L1 + id + "/market_chart"_L1,
                                    {{u"vs_currency"_s, u"usd"_s}, {u"days"_s, u"7"_s}});
  const QJsonObject history = co_await request.object(call, stop);
  const QString noHistory = ServiceWords::tr("CoinGecko did not return valid price history.");
  for (const QJsonValue& point : ProviderData::list(history, u"prices"_s, noHistory)) {
    require(point[1].isDouble(), noHistory);
    value.numbers << point[1].toDouble();
    value.numberMoments << QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(point[0].toDouble()), QTimeZone::utc());
  }
  require(value.numbers.size() > 1, noHistory);
  co_return value;
}

QCoro::Task<RemoteValue> fetchPriceList(ProviderRequest request, std::stop_token stop) {
  const QJsonObject prices = co_await askPrices(request, stop);
  const QStringList ids = request.option(option::coin).split(u',');
  RemoteValue value = request.shown(QString::number(ids.size()), ServiceWords::tr("Coins"));
  for (const QString& id : ids) {
    const QJsonValue price = prices[id][u"usd"];
    const QString words = price.isDouble() ? priceText(price.toDouble()) + u" · "_s + changeText(prices[id]) : u"—"_s;
    value.rows << ServiceRow{id, nameOfCoin(id), words, QUrl(kCoinPage + id)};
  }
  value.detail = coinDetail(ids.size() == 1 ? nameOfCoin(ids.first()) : value.subtitle);
  co_return value;
}

}  // namespace

Provider coinGecko() {
  const QList<ProviderField> fields{{option::coin, ServiceWords::tr("Coin IDs"), u"bitcoin"_s}};
  const QString oneCoin = ServiceWords::tr("The price of a coin in US dollars.");
  return {
      .id = u"coingecko"_s,
      .name = u"CoinGecko"_s,
      .address = ProviderRow::at(ServiceHost::CoinGecko),
      .credential = {.label = ServiceWords::tr("Demo API key"),
                     .placeholder = u"CG-…"_s,
                     .explanation = ServiceWords::tr("Prices need no key; one of your own has limits of its own."),
                     .page = QUrl(u"https://www.coingecko.com/en/developers/dashboard"_s),
                     .missing = ProviderRow::addServiceCredential(),
                     .isNeeded = [](const DockWidget&) { return false; }},
      .normalise = normaliseCoins,
      .topics = {{.kinds = {{kind::cryptoWatchlist}},
                  .explanation = ServiceWords::tr("Prices of up to 12 coins in US dollars."),
                  .fields = fields,
                  .fetch = fetchPriceList},
                 {.kinds = {{kind::cryptoChart}}, .explanation = oneCoin, .fields = fields, .fetch = fetchPriceChart},
                 {.kinds = {{u"crypto"_s, KindPattern::Match::BeginsWith}},
                  .explanation = oneCoin,
                  .fields = fields,
                  .fetch = fetchPrice}},
  };
}

}  // namespace tarnwick
