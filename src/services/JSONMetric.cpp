#include "services/JSONMetric.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLocale>
#include <cmath>

#include "base/DomainError.h"
#include "services/ServiceWords.h"

namespace tarnwick {

namespace {

constexpr double kPlainBelow = 1e15;

/// Undefined where the piece leads nowhere.
QJsonValue child(const QJsonValue& value, QStringView piece) {
  if (value.isObject()) return value.toObject().value(piece);
  if (!value.isArray()) return QJsonValue::Undefined;
  bool isIndex = false;
  const qlonglong index = piece.toLongLong(&isIndex);
  const QJsonArray list = value.toArray();
  const bool isBare = piece.trimmed().size() == piece.size();  // Blanks around it would be read over.
  if (!isIndex || !isBare || index < 0 || index >= list.size()) return QJsonValue::Undefined;
  return list.at(index);
}

}  // namespace

QJsonValue JSONMetric::walked(QJsonValue value, const QString& path) {
  for (const QStringView piece : QStringView(path).split(u'.', Qt::SkipEmptyParts)) {
    value = child(value, piece);
    if (value.isUndefined())
      throw DomainError::invalid(ServiceWords::tr("Metric field '%1' was not returned.").arg(path));
  }
  return value;
}

QJsonValue JSONMetric::node(const QJsonValue& value, const QString& path) {
  const QJsonValue found = walked(value, path);
  if (found.isNull()) throw DomainError::invalid(ServiceWords::tr("The service returned an unavailable value."));
  return found;
}

QString JSONMetric::display(const QJsonValue& value, const QString& path) {
  const QString shown = text(node(value, path));
  if (shown.isNull()) throw DomainError::invalid(ServiceWords::tr("Choose a number, text, or list field."));
  return shown;
}

QString JSONMetric::number(double value) {
  const char format = std::abs(value) < kPlainBelow ? 'f' : 'g';
  // A zero below nothing is nothing.
  return QString::number(value == 0 ? 0 : value, format, QLocale::FloatingPointShortest);
}

QString JSONMetric::text(const QJsonValue& node) {
  switch (node.type()) {
    case QJsonValue::Double:
      return number(node.toDouble());
    case QJsonValue::String:
      return node.toString().isNull() ? QLatin1StringView("") : node.toString();
    case QJsonValue::Array:
      return QString::number(node.toArray().size());
    default:
      return {};
  }
}

}  // namespace tarnwick
