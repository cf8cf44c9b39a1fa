#include <QCoroTask>
#include <cmath>

#include "services/Money.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostCoins = 12;
constexpr int kSmallDigits = 4;  ///< Of a price below one, behind its zeros.
constexpr int kMostZeros = 12;

QString explainCoins(QStringView kind) {
  return kind == kind::cryptoWatchlist ? ServiceWords::tr("Prices of up to 12 coins in US dollars.")
                                       : ServiceWords::tr("The price of a coin in US dollars.");
}

QList<ProviderField> coinFields(QStringView) { return {{option::coin, ServiceWords::tr("Coin IDs"), u"bitcoin"_s}}; }

bool needsNoCoinKey(const DockWidget&) { return false; }

void normaliseCoins(DockWidget& widget) {
  OptionRules options(widget);
  const QStringList coins = ProviderData::listed(options.trimmed(option::coin, u"bitcoin"_s));
  OptionRules::require(!coins.isEmpty() && coins.size() <= kMostCoins &&
                           std::ranges::all_of(coins, [](const QString& id) { return ProviderData::identifier(id); }),
                       ServiceWords::tr("Enter up to 12 CoinGecko coin IDs separated by commas."));
  options.set(option::coin, coins.join(u','));
  options.set(option::dashboard, "https://www.coingecko.com/en/coins/"_L1 + coins.first());
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

/// The key is no bearer: it has a header of its own.
ServiceCall coinCall(const ProviderRequest& request, const QString& path, const QMap<QString, QString>& query) {
  ServiceCall call = request.call(path, query);
  call.token.clear();
  if (!request.credential.isEmpty()) call.headers.insert(u"x-cg-demo-api-key"_s, request.credential);
  return call;
}

ServiceRow coinRow(const QString& id, const QJsonValue& coin) {
  const QJsonValue price = coin[u"usd"];
  return {id, nameOfCoin(id), price.isDouble() ? priceText(price.toDouble()) + u" · "_s + changeText(coin) : u"—"_s,
          QUrl("https://www.coingecko.com/en/coins/"_L1 + id)};
}

QCoro::Task<QList<double>> priceHistory(ProviderRequest request, QString id, std::stop_token stop) {
  ServiceCall call = coinCall(request, "/api/v3/coins/"_L1 + id + "/market_chart"_L1,
                              {{u"vs_currency"_s, u"usd"_s}, {u"days"_s, u"7"_s}});
  const QJsonValue body = co_await request.session->json(std::move(call), stop);
  QList<double> prices;
  for (const QJsonValue& point : body[u"prices"].toArray()) {
    if (point[1].isDouble()) prices << point[1].toDouble();
  }
  OptionRules::require(prices.size() > 1, ServiceWords::tr("CoinGecko did not return valid price history."));
  co_return prices;
}

QCoro::Task<RemoteValue> fetchCoins(ProviderRequest request, std::stop_token stop) {
  const QString ids = request.option(option::coin);
  ServiceCall call = coinCall(request, u"/api/v3/simple/price"_s,
                              {{u"ids"_s, ids},
                               {u"vs_currencies"_s, u"usd"_s},
                               {u"include_24hr_change"_s, u"true"_s},
                               {u"include_last_updated_at"_s, u"true"_s}});
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject body = ProviderData::object(answer);
  const QStringList coins = ids.split(u',');
  for (const QString& id : coins) {
    OptionRules::require(body[id].isObject(),
                         ServiceWords::tr("CoinGecko did not return %1. Check the coin ID.").arg(id));
  }
  const QString detail = ServiceWords::tr(" · USD") + u'\n' + ServiceWords::tr("Market data by CoinGecko");
  if (request.widget.kind == kind::cryptoWatchlist) {
    RemoteValue list = request.shown(QString::number(coins.size()), ServiceWords::tr("Coins"));
    for (const QString& id : coins) list.rows << coinRow(id, body[id]);
    list.detail = nameOfCoin(coins.first()) + detail;
    co_return list;
  }
  const QString& coin = coins.first();
  const double price = ProviderData::number(body[coin][u"usd"], u"price"_s);
  RemoteValue value = request.shown(priceText(price), changeText(body[coin]));
  value.detail = nameOfCoin(coin) + detail;
  if (request.widget.kind == kind::cryptoChart) value.numbers = co_await priceHistory(request, coin, stop);
  co_return value;
}

}  // namespace

Provider coinGecko() {
  Provider row = ProviderRow::of(u"coingecko"_s, u"CoinGecko"_s, ServiceHost::CoinGecko,
                                 {{u"crypto"_s, KindPattern::Match::BeginsWith}});
  row.explanation = explainCoins;
  row.fields = coinFields;
  row.credential = {.label = ServiceWords::tr("Demo API key"),
                    .placeholder = u"CG-…"_s,
                    .explanation = ServiceWords::tr("Prices need no key; one of your own has limits of its own."),
                    .page = QUrl(u"https://www.coingecko.com/en/developers/dashboard"_s),
                    .missing = ProviderRow::serviceCredentialMissing(),
                    .isNeeded = needsNoCoinKey};
  row.normalise = normaliseCoins;
  row.fetch = fetchCoins;
  row.limits = {.requests = 2};
  return row;
}

}  // namespace tarnwick
