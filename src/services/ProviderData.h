#pragma once

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QMap>
#include <QString>
#include <QTimeZone>
#include <QUrl>
#include <optional>

#include "base/DomainError.h"

namespace tarnwick {

/// Throws DomainError with a finished sentence where something does not hold.
inline void require(bool holds, const QString& sentence) {
  if (!holds) throw DomainError::invalid(sentence);
}

/// What providers share in reading answers and writing requests. What throws, throws DomainError with a sentence.
struct ProviderData {
  /// An address with a query, its items sorted by key. Throws for one that is not https, has no host or has a user.
  static QUrl url(const QString& base, const QMap<QString, QString>& query = {});

  /// A text within a path or a query; the characters `kept` stay as they are.
  static QString encoded(const QString& text, const QByteArray& kept = {});

  /// Throws for what is no object, and for one with `errors` in it.
  static QJsonObject object(const QJsonValue& value);
  /// The list at a path, "data.rows". Throws `sentence` where there is none, and for an object with `errors` in it.
  static QJsonArray list(const QJsonValue& value, const QString& path, const QString& sentence);
  /// A JSON number or a text that is one; `name` says of what, for the sentence.
  static double number(const QJsonValue& value, const QString& name);
  /// The number at a path: whole and not below 0.
  static qint64 wholeNumber(const QJsonValue& value, const QString& path);
  /// The same as plain text.
  static QString count(const QJsonValue& value, const QString& path);

  /// Adds to a sum. Throws `sentence` where it would be more than a sum can be, which no business comes near.
  static void add(qint64& sum, qint64 amount, const QString& sentence);

  /// Whether a text is letters, digits, "_", "." and "-" alone, and not empty.
  static bool identifier(const QString& text);
  /// The moment that an ISO 8601 text names, as services write it; without a zone in UTC. Absent where it names none.
  static std::optional<QDateTime> date(QString text);
  /// The day that a text names, alone or by the moment at which it begins; invalid where it names none.
  static QDate dayOf(const QJsonValue& text);
  /// "2026-11-24", the day of a moment in a zone.
  static QString day(const QDateTime& moment, const QTimeZone& zone);
  /// The texts between commas, trimmed, without empty ones.
  static QStringList listed(const QString& text);

  /// The net of a ledger, in the minor unit: what was taken less what was given back and what that cost.
  static qint64 stripeNet(const QJsonArray& rows, const QString& currency);
  static qint64 ledgerNet(const QJsonArray& rows, const QString& currency);
};

}  // namespace tarnwick
