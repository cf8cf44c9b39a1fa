#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include "commandbar/CommandItem.h"
#include "commandbar/CommandMatch.h"
#include "commandbar/CommandUsage.h"
#include "commandbar/ReadyRows.h"

namespace tarnwick {

/// The order of the command bar. Pure; of the time it knows what it is told.
struct CommandRanking {
  static constexpr qsizetype kLimit = 12;  ///< More rows are never shown.

  /// The rows that answer the query, the best first, at most `limit`. A row scores by how its text answers, weighed by
  /// its kind, by its use and by what its source adds; the smaller id goes first where that is equal. Calculations and
  /// the web answer every query.
  static QList<CommandItem> rank(const QList<CommandItem>& items, const QString& query, const CommandUsage& usage,
                                 const QDateTime& now, qsizetype limit = kLimit);
  /// The same for rows of several sources, one source after the other.
  static QList<CommandItem> rank(const QList<ReadyRows>& sources, const QString& query, const CommandUsage& usage,
                                 const QDateTime& now, qsizetype limit = kLimit);

  static double weight(CommandItem::Kind kind);

  /// The parts of a row's title that answer the query, to be emphasised. None where it is there for another reason.
  static QList<CommandMatch::Span> emphasis(const CommandItem& item, const QString& query);
};

}  // namespace tarnwick
