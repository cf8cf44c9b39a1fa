#include "services/ProviderData.h"

#include <QRegularExpression>
#include <QSet>
#include <QUrlQuery>
#include <cmath>

#include "services/JSONMetric.h"
#include "services/ServiceWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Up to here a double tells all whole numbers apart.
constexpr double kMostWhole = 9007199254740992.0;

DomainError invalid(const char* sentence) { return DomainError::invalid(ServiceWords::tr(sentence)); }

bool isWhole(double value) {
  return std::isfinite(value) && std::floor(value) == value && std::abs(value) <= kMostWhole;
}

}  // namespace

QUrl ProviderData::url(const QString& base, const QMap<QString, QString>& query) {
  QUrl address(base, QUrl::StrictMode);
  require(base.isEmpty() || address.isValid(), ServiceWords::tr("The service address is invalid."));
  require(address.scheme() == "https"_L1 && !address.host().isEmpty() && !address.authority().contains(u'@'),
          ServiceWords::tr("Enter a valid HTTPS service address."));
  if (query.isEmpty()) return address;
  QUrlQuery items;
  for (const auto& [key, value] : query.asKeyValueRange()) items.addQueryItem(encoded(key), encoded(value));
  address.setQuery(items);
  return address;
}

QString ProviderData::encoded(const QString& text, const QByteArray& kept) {
  return QString::fromLatin1(QUrl::toPercentEncoding(text, kept));
}

QJsonObject ProviderData::object(const QJsonValue& value) {
  if (!value.isObject()) throw invalid(QT_TRANSLATE_NOOP("Services", "The provider returned an unexpected response."));
  if (!value[u"errors"].toArray().isEmpty()) {
    throw invalid(QT_TRANSLATE_NOOP(
        "Services",
        "The provider could not complete this query. Check the credential’s permissions and account plan."));
  }
  return value.toObject();
}

QJsonArray ProviderData::list(const QJsonValue& value, const QString& path, const QString& sentence) {
  QJsonValue node = value.isObject() ? object(value) : value;
  for (const QString& piece : path.split(u'.', Qt::SkipEmptyParts)) node = node[piece];
  if (!node.isArray()) throw DomainError::invalid(sentence);
  return node.toArray();
}

double ProviderData::number(const QJsonValue& value, const QString& name) {
  if (value.isBool()) throw invalid(QT_TRANSLATE_NOOP("Services", "A boolean cannot be used as a metric count."));
  bool isNumber = value.isDouble();
  const double number = value.isString() ? value.toString().toDouble(&isNumber) : value.toDouble();
  if (isNumber && std::isfinite(number)) return number;
  throw DomainError::invalid(ServiceWords::tr("The provider did not return a numeric %1 value.").arg(name));
}

qint64 ProviderData::wholeNumber(const QJsonValue& value, const QString& path) {
  const double found = number(JSONMetric::node(value, path), path);
  if (found < 0 || !isWhole(found))
    throw invalid(QT_TRANSLATE_NOOP("Services", "The provider returned an invalid count."));
  return static_cast<qint64>(found);
}

QString ProviderData::count(const QJsonValue& value, const QString& path) {
  return QString::number(wholeNumber(value, path));
}

void ProviderData::add(qint64& sum, qint64 amount, const QString& sentence) {
  require(!__builtin_add_overflow(sum, amount, &sum), sentence);
}

bool ProviderData::identifier(const QString& text) {
  static const QRegularExpression form(u"^[A-Za-z0-9_.-]+\\z"_s);
  return form.match(text).hasMatch();
}

std::optional<QDateTime> ProviderData::date(QString text) {
  static const QRegularExpression shortOffset(u"[+-][0-9]{2}\\z"_s);
  static const QRegularExpression blank(u"^([0-9]{4}-[0-9]{2}-[0-9]{2}) "_s);
  text.replace(blank, u"\\1T"_s);
  // A day alone ends like an offset.
  if (text.contains(u'T') && shortOffset.match(text).hasMatch()) text += ":00"_L1;
  QDateTime moment = QDateTime::fromString(text, Qt::ISODateWithMs);
  if (!moment.isValid()) return std::nullopt;
  if (moment.timeSpec() == Qt::LocalTime) moment.setTimeZone(QTimeZone::utc());
  return moment;
}

QDate ProviderData::dayOf(const QJsonValue& text) {
  static const QRegularExpression day(
      u"^([0-9]{4}-[0-9]{2}-[0-9]{2})([T ]00:00(:00(\\.0+)?)?(Z|[+-][0-9:]{2,5})?)?\\z"_s);
  return QDate::fromString(day.match(text.toString()).captured(1), Qt::ISODate);
}

QString ProviderData::day(const QDateTime& moment, const QTimeZone& zone) {
  return moment.toTimeZone(zone).date().toString(Qt::ISODate);
}

QStringList ProviderData::listed(const QString& text) {
  QStringList parts;
  for (const QString& part : text.split(u',')) {
    if (const QString trimmed = part.trimmed(); !trimmed.isEmpty()) parts << trimmed;
  }
  return parts;
}

qint64 ProviderData::stripeNet(const QJsonArray& rows, const QString& currency) {
  static const QSet<QString> counted{
      u"charge"_s,           u"refund"_s, u"refund_failure"_s, u"partial_capture_reversal"_s, u"dispute"_s,
      u"dispute_reversal"_s, u"fee"_s};
  const QString incomplete = ServiceWords::tr("Stripe returned an incomplete balance transaction.");
  qint64 net = 0;
  for (const QJsonValue& row : rows) {
    const QJsonValue category = row[u"reporting_category"];
    const QJsonValue unit = row[u"currency"];
    const QJsonValue amount = row[u"net"];
    require(category.isString() && unit.isString() && row[u"id"].isString() && amount.isDouble() &&
                isWhole(amount.toDouble()),
            incomplete);
    if (unit.toString() == currency && counted.contains(category.toString())) add(net, amount.toInteger(), incomplete);
  }
  return net;
}

qint64 ProviderData::ledgerNet(const QJsonArray& rows, const QString& currency) {
  // What comes of a sale; payouts and transfers only move what is there already.
  static const QSet<QString> counted{u"payment"_s,
                                     u"refund"_s,
                                     u"refund_reversal"_s,
                                     u"dispute"_s,
                                     u"dispute_reversal"_s,
                                     u"payment_fees"_s,
                                     u"refund_fees"_s,
                                     u"dispute_fees"_s,
                                     u"payment_fees_reversal"_s,
                                     u"refund_fees_reversal"_s,
                                     u"dispute_fees_reversal"_s};
  const QString invalidAmount = ServiceWords::tr("The ledger returned an invalid amount.");
  qint64 net = 0;
  for (const QJsonValue& row : rows) {
    if (row[u"currency"].toString().compare(currency, Qt::CaseInsensitive) != 0) continue;
    if (!counted.contains(row[u"event_type"].toString())) continue;
    require(row[u"is_credit"].isBool(), ServiceWords::tr("Ledger direction is missing."));
    const QJsonValue amount = row[u"amount"];
    require(amount.isDouble() && isWhole(amount.toDouble()), invalidAmount);
    add(net, row[u"is_credit"].toBool() ? amount.toInteger() : -amount.toInteger(), invalidAmount);
  }
  return net;
}

}  // namespace tarnwick
