#pragma once

#include <QList>
#include <QStringList>
#include <optional>

#include "services/RemoteReading.h"
#include "views/tiles/RemoteState.h"
#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"
#include "widgets/FigureWords.h"

namespace tarnwick {

/// What a kind's tile looks like as soon as its service gives enough for that; until then it is a value.
enum class ServiceShape {
  Value,    ///< Badge, headline and caption.
  Quote,    ///< The same without a badge, for what is no service's own.
  Line,     ///< A small headline and the series as a line.
  Bars,     ///< The same as bars.
  Squares,  ///< The same as days in four strengths.
  Figures,  ///< Up to three figures beside each other.
  Windows,  ///< Allowances as bars.
  Gauge,    ///< One allowance on an arc.
  List,     ///< The first rows of a list.
  Work      ///< What is done somewhere, with a dot while something is.
};

/// One allowance, ready to be painted.
struct UsageBar {
  QString label;
  QString percent;
  double share = 0;  ///< From 0 to 1.
  bool isAlarming = false;

  bool operator==(const UsageBar&) const = default;
};

/// A figure with its name, in the ways in which it may be written: the longest first.
struct ServiceFigure {
  QString label;
  QList<FigureWords> ways;

  bool operator==(const ServiceFigure&) const = default;
};

/// A line of a list: its name, what that costs or is, and by how much it changed.
struct ServiceLine {
  QString label;
  QList<FigureWords> ways;  ///< The longest first; empty where there is nothing but a change.
  QString change;           ///< With its sign; empty where none is known.

  bool operator==(const ServiceLine&) const = default;
};

/// What a service answered, or why it did not.
struct ServiceContent {
  ServiceShape shape = ServiceShape::Value;
  ServiceBadge badge;          ///< Without letters where the tile has none.
  FigureWords headline;        ///< Of a widget without a value its name.
  QList<FigureWords> shorter;  ///< The same in less space, from the longest to the shortest.
  QStringList captions;        ///< From the longest to the shortest.
  QString change;              ///< By how much the value changed, with its sign, where that is told; else empty.
  QString beside;              ///< The caption without it, for where it stands beside the headline.
  bool isQuote = false;        ///< Whether it is a price, and `beside` says of what.
  bool isDimmed = false;
  QList<double> numbers;
  QList<ServiceFigure> figures;
  QList<ServiceLine> rows;
  QList<UsageBar> bars;
  Activity activity = Activity::Idle;  ///< Of the shape Work.
  RemoteState state;
  QString spoken;

  QList<FigureWords> ways() const { return QList<FigureWords>{headline} + shorter; }
  bool operator==(const ServiceContent&) const = default;
};
TileText describe(const ServiceContent& content, const QString& name);
void paint(TileCanvas& canvas, const ServiceContent& content);
inline bool isLoading(const ServiceContent& content) { return content.state.isLoading; }

/// The latest of a service's numbers, as many as can be told apart in a chart and what can be painted of them.
QList<double> plottable(const QList<double>& numbers);

/// A widget that nothing was ever known of and that is not set up asks to be connected.
TileContent makeServiceTile(const TileRequest& request, ServiceShape shape);
template <ServiceShape Shape>
TileContent serviceTile(const TileRequest& request) {
  return makeServiceTile(request, Shape);
}

}  // namespace tarnwick
