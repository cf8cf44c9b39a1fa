#pragma once

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTimeZone>
#include <optional>

#include "config/DockWidget.h"
#include "services/ExactDecimal.h"

namespace tarnwick {

/// How a store's sales are read.
enum class ShopifyReportMode { Analytics, Orders };

/// What the option of a widget says; analytics without one. Throws DomainError for an unknown word.
ShopifyReportMode selectedReportMode(const DockWidget& widget);

/// The days of a report, the last one being today, and as many before them.
struct ShopifyReportPeriod {
  /// Throws DomainError for other than 1, 7 or 30 days.
  ShopifyReportPeriod(int days, const QDateTime& now);

  QDate first;
  QDate last;
  QDate previousFirst;
  QTimeZone zone;
  int days = 0;

  QList<QDate> each() const;
  QString summaryQuery() const;
  QString trendQuery() const;
  QDateTime beginOf(const QDate& day) const { return day.startOfDay(zone); }
};

/// What the store's own analytics say of a period.
struct ShopifyAnalyticsReport {
  ExactDecimal total;
  ExactDecimal net;
  ExactDecimal returns;
  qint64 orders = 0;
  std::optional<ExactDecimal> average;
  QList<double> daily;

  /// The rows of an answer, by the names of its columns. Throws DomainError, with the report's name in the sentence.
  static QList<QJsonObject> table(const QJsonValue& value, const QString& name, const QStringList& columns);
  /// Throws DomainError for what is no whole report of the period.
  static ShopifyAnalyticsReport decode(const QJsonValue& summary, const QJsonValue& trend,
                                       const ShopifyReportPeriod& period);
};

/// An order, as far as its sum goes.
struct OrderMetric {
  QString id;
  QDateTime created;
  double amount = 0;
  QString currency;

  /// Throws DomainError for an order with a gap.
  static OrderMetric decode(const QJsonValue& node);
};

/// What the orders of some days come to.
struct OrderSummary {
  double total = 0;
  qint64 count = 0;
  std::optional<double> average;
  QList<double> daily;
  QString currency;

  /// Those from `first` on, `days` long. Throws DomainError for orders in two currencies, and for a sum that is none.
  static OrderSummary aggregate(const QList<OrderMetric>& orders, const QDate& first, int days, const QTimeZone& zone);
  /// "+12.5%", or that there is nothing to compare with.
  static QString comparison(const OrderSummary& current, const OrderSummary& previous);
};

}  // namespace tarnwick
