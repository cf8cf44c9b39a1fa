#pragma once

#include <QJsonValue>
#include <QString>

namespace tarnwick {

/// One value out of a service's answer, named by a path of keys and indices joined by dots: "data.0.total".
struct JSONMetric {
  /// The node at the end of the path; the whole answer for an empty one. A piece is a key of an object, or an index of
  /// an array. Throws DomainError when one leads nowhere.
  static QJsonValue walked(QJsonValue value, const QString& path);
  /// The same, and throws for null: the service has the field and no value for it.
  static QJsonValue node(const QJsonValue& value, const QString& path);
  /// What the node shows: a number, a text, or how many a list has. Throws DomainError for everything else.
  static QString display(const QJsonValue& value, const QString& path);

  /// A number as plain text, the shortest that reads back as the same: without an exponent below 10^15.
  static QString number(double value);
  /// A number, a text or a list's length; null for everything else.
  static QString text(const QJsonValue& node);
};

}  // namespace tarnwick
