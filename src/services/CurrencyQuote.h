#pragma once

#include <QDate>
#include <QJsonValue>
#include <QString>

namespace tarnwick {

/// What one unit of a currency is worth in another. Currencies are known by their three letters.
struct CurrencyQuote {
  QString base;
  QString quote;
  double rate = 0;
  QDate date;  ///< Of the rate; invalid where the service does not say.

  bool operator==(const CurrencyQuote&) const = default;

  /// What the service answered when it was asked for this pair. Throws DomainError for a rate that is none, and for one
  /// of another pair.
  static CurrencyQuote decode(const QJsonValue& answer, const QString& base, const QString& quote);
  /// Whether a text can name a currency: three capital letters.
  static bool isCode(QStringView text);
};

}  // namespace tarnwick
