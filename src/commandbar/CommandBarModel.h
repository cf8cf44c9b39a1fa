#pragma once

#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "apps/InstalledApps.h"
#include "apps/RunningApplications.h"
#include "base/Scheduler.h"
#include "clipboard/ClipboardEntry.h"
#include "commandbar/CommandItem.h"
#include "commandbar/CommandUsageStore.h"
#include "commandbar/ReadyRows.h"
#include "commandbar/ports/FileSearch.h"
#include "desktop/ClientWindows.h"
#include "store/AppStore.h"
#include "store/Commands.h"

namespace tarnwick {

/// What the command bar asks of the program. References are borrowed and must outlive the model.
struct CommandBarParts {
  AppStore& store;
  InstalledApps& apps;
  RunningApplications& runningApps;
  ClientWindows& windows;
  Commands& commands;
  FileSearch& files;
  /// Has the history of copies read; called once, when the bar opens first. May be left out.
  std::function<void()> loadClipboard = {};
  /// The history as it is now, the newest entry first; must not wait for anything. Whoever gives it calls `refresh`
  /// when the history changes. May be left out.
  std::function<QList<ClipboardEntry>()> clipboard = {};
};

/// What the user chose about the command bar.
struct CommandBarChoices {
  bool findsApps = true;
  bool findsWindows = true;
  bool findsWidgets = true;
  bool findsSymbols = true;
  bool findsClipboard = true;  ///< The history itself must be on too.
  bool findsFiles = true;
  bool searchesWeb = true;
  QString webSearch;  ///< See WebSearch.

  bool operator==(const CommandBarChoices&) const = default;
};

/// The command bar without its window: what is typed, what is found for it, which row is selected, and what is done
/// with a row. From the query to the rows all happens within the call; only files come later, and then the rows are
/// made anew. It lives as long as the program. Main thread only.
class CommandBarModel final : public QObject {
  Q_OBJECT
 public:
  /// Files are looked for when nothing was typed for so long.
  static constexpr double kFileDelay = 0.15;

  explicit CommandBarModel(CommandBarParts parts, QObject* parent = nullptr);
  /// Waits until the use of rows is written.
  ~CommandBarModel() override;

  const QString& query() const { return query_; }
  const QList<CommandItem>& results() const { return results_; }
  qsizetype selection() const { return selection_; }
  bool searchingFiles() const { return searchingFiles_; }
  /// The row at `selection`.
  std::optional<CommandItem> selected() const { return results_.isEmpty() ? std::nullopt : rowAt(selection_); }

  void setQuery(const QString& query);
  void setChoices(const CommandBarChoices& choices);

  /// Before the bar is shown, while the window in front is still another one. Begins with an empty query.
  void opened();
  /// The bar is hidden: nothing is searched, and nothing of the query is kept.
  void closed();

  /// Goes so many rows down, and from one end on to the other.
  void moveSelection(qsizetype by);

  /// Notes that the row was chosen, and does what it stands for. Always true: the bar may be hidden.
  bool activate(const CommandItem& item);
  void revealInFinder(const CommandItem& item);
  void copyPath(const CommandItem& item);

  /// Finds all rows anew. The selection stays at its place as far as there are rows.
  void recompute();
  /// The same because there is something else to be found, such as another application or copy: the selected row stays
  /// selected, but a search of the web that was there alone. Nothing happens while the bar is closed.
  void refresh();

 Q_SIGNALS:
  /// The rows answer the query when this comes.
  void queryChanged();
  void resultsChanged();
  void selectionChanged();
  void searchingFilesChanged();

 private:
  std::optional<CommandItem> rowAt(qsizetype place) const {
    return place >= 0 && place < results_.size() ? std::optional(results_[place]) : std::nullopt;
  }
  QList<CommandItem> found();
  QList<ReadyRows> candidates(const QString& query);
  const ReadyRows& appRows();
  const ReadyRows& widgetRows();
  const ReadyRows& clipboardRows();
  void show(const QList<CommandItem>& results, qsizetype selection);
  void searchFilesSoon();
  void startFileSearch(const QString& query);
  void absorbFileResults(const QList<FoundFile>& found);
  void stopFileSearch();
  void setSearchingFiles(bool searching);
  void remember(const CommandItem& item);
  void judgeUsage();

  CommandBarParts parts_;
  CommandBarChoices choices_;
  QString query_;
  QList<CommandItem> results_;
  qsizetype selection_ = 0;
  bool searchingFiles_ = false;
  bool isOpen_ = false;
  CommandUsage usage_;
  CommandUsage judged_;  ///< What of it the order of the rows goes by.
  bool usageLoaded_ = false;
  CommandUsageStore usageStore_;
  ReadyRows files_;  ///< The rows of the latest search.
  JobHandle fileWork_;
  QSet<quint64> activeWindows_;  ///< When the bar was opened.
  // Made when they are first looked for, and kept until the bar is closed or they are others.
  ReadyRows appRows_;
  std::shared_ptr<const AppIndex> appIndex_;  ///< That `appRows_` were made of.
  ReadyRows widgetRows_;
  ReadyRows clipboardRows_;
  QList<ClipboardEntry> clipboardEntries_;  ///< That `clipboardRows_` were made of.
};

}  // namespace tarnwick
