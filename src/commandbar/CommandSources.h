#pragma once

#include <QList>
#include <QLocale>
#include <QSet>
#include <QString>
#include <QUrl>
#include <optional>

#include "apps/DesktopEntry.h"
#include "apps/RunningApp.h"
#include "clipboard/ClipboardEntry.h"
#include "commandbar/CommandItem.h"
#include "commandbar/ports/FileSearch.h"
#include "desktop/ClientWindows.h"
#include "widgets/catalog/WidgetDefinition.h"

namespace tarnwick {

/// What the command bar can find, as rows. Pure: each source makes its rows of what it is given, in that order, and
/// leaves it to CommandRanking which of them answer the query.
struct CommandSources {
  /// A row whose title is the result; none where the query is no calculation.
  static std::optional<CommandItem> calculation(const QString& query, const QLocale& locale = QLocale());
  static QList<CommandItem> apps(const QList<DesktopEntry>& entries);
  static QList<CommandItem> widgets(const QList<WidgetDefinition>& definitions);
  /// Those of the table that answer to the query by name or keyword; none for less than two characters.
  static QList<CommandItem> symbols(const QString& query);
  /// The newest entries come first and have a little advantage. Pictures and empty texts have no row.
  static QList<CommandItem> clipboard(const QList<ClipboardEntry>& entries);
  /// The newest files come first and have a little advantage.
  static QList<CommandItem> files(const QList<FoundFile>& files);
  /// Opens the query where it is an address, else searches the web for it: see WebSearch for the choice. None for an
  /// empty query.
  static std::optional<CommandItem> web(const QString& query, const QString& searchChoice = {},
                                        const QLocale& locale = QLocale());

  /// At most this many windows are found.
  static constexpr qsizetype kMostWindows = 4;
  /// The windows of running applications whose titles answer the query, the best first. Those in `active` are where the
  /// user is already and have no row.
  static QList<CommandItem> windows(const QList<RunningApp>& apps, const QList<ClientWindow>& windows,
                                    const QSet<quint64>& active, const QString& query);

  /// See WebAddress.
  static std::optional<QUrl> address(const QString& query);
  static const QSet<QString>& topLevelDomains();
};

}  // namespace tarnwick
