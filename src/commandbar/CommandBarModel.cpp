#include "commandbar/CommandBarModel.h"

#include <QPointer>
#include <QUrl>
#include <algorithm>

#include "base/ProbeCounters.h"
#include "base/Text.h"
#include "commandbar/CommandRanking.h"
#include "commandbar/CommandSources.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {
namespace {

constexpr qsizetype kFewestForFiles = 2;

QSet<quint64> activeAmong(const QList<ClientWindow>& windows) {
  QSet<quint64> active;
  for (const ClientWindow& window : windows)
    if (window.active) active.insert(window.id);
  return active;
}

}  // namespace

CommandBarModel::CommandBarModel(CommandBarParts parts, QObject* parent) : QObject(parent), parts_(std::move(parts)) {
  connect(&parts_.apps, &InstalledApps::changed, this, &CommandBarModel::refresh);
}

CommandBarModel::~CommandBarModel() { parts_.files.stop(); }

void CommandBarModel::setQuery(const QString& query) {
  if (query == query_) return;
  query_ = query;
  // Rows of files stay for now and are judged by the new query, so that they don't blink at each key.
  show(found(), 0);
  Q_EMIT queryChanged();
  searchFilesSoon();
}

void CommandBarModel::setChoices(const CommandBarChoices& choices) {
  if (choices == choices_) return;
  choices_ = choices;
  if (!choices_.findsFiles) {
    fileWork_.reset();
    stopFileSearch();
    files_ = {};
  }
  if (isOpen_) refresh();
}

void CommandBarModel::opened() {
  if (!std::exchange(usageLoaded_, true)) {
    if (!parts_.store.isDiagnostic()) usage_ = CommandUsageStore::load(parts_.store.dataDirectory());
    judgeUsage();
    if (parts_.loadClipboard) parts_.loadClipboard();
  }
  isOpen_ = true;
  parts_.apps.load();  // Where they are not known yet, so that the first letter finds them.
  activeWindows_ = activeAmong(parts_.windows.all());
  setQuery({});
  show(results_, 0);
  recompute();
}

void CommandBarModel::closed() {
  isOpen_ = false;
  fileWork_.reset();
  stopFileSearch();
  files_ = appRows_ = widgetRows_ = clipboardRows_ = {};
  appIndex_.reset();
  clipboardEntries_.clear();
  const bool hadQuery = !query_.isEmpty();
  query_.clear();
  show({}, 0);
  if (hadQuery) Q_EMIT queryChanged();
}

void CommandBarModel::recompute() { show(found(), selection_); }

void CommandBarModel::refresh() {
  if (!isOpen_) return;
  const auto row = selected();
  // The web is searched first only while nothing else is found: nobody chose that row.
  const bool isChosen = row && !(selection_ == 0 && row->isWebSearch());
  const QList<CommandItem> rows = found();
  const auto same = std::ranges::find(rows, isChosen ? row->id : QString(), &CommandItem::id);
  show(rows, same == rows.end() ? selection_ : same - rows.begin());
}

QList<CommandItem> CommandBarModel::found() {
  return CommandRanking::rank(candidates(query_), query_, judged_, parts_.store.now());
}

QList<ReadyRows> CommandBarModel::candidates(const QString& query) {
  ProbeCounters::count("commandRecompute");
  QList<ReadyRows> sources;
  if (const auto row = CommandSources::calculation(query)) sources << ReadyRows({*row});
  if (Text::withoutOuterBlanks(query).isEmpty()) return sources;
  if (choices_.findsApps) sources << appRows();
  if (choices_.findsWindows) {
    const QList<ClientWindow> windows = parts_.windows.all();
    sources << ReadyRows(
        CommandSources::windows(parts_.runningApps.list(), windows, activeAmong(windows) + activeWindows_, query));
  }
  if (choices_.findsWidgets) sources << widgetRows();
  if (choices_.findsSymbols) sources << ReadyRows(CommandSources::symbols(query));
  if (choices_.findsClipboard && parts_.clipboard && parts_.store.config().clipboardEnabled) sources << clipboardRows();
  sources << files_;
  if (choices_.searchesWeb)
    if (const auto row = CommandSources::web(query, choices_.webSearch)) sources << ReadyRows({*row});
  return sources;
}

const ReadyRows& CommandBarModel::appRows() {
  const auto index = parts_.apps.index();
  if (index != appIndex_) {
    appIndex_ = index;
    appRows_ = ReadyRows(CommandSources::apps(parts_.apps.all()));
  }
  return appRows_;
}

const ReadyRows& CommandBarModel::widgetRows() {
  if (widgetRows_.size() == 0) widgetRows_ = ReadyRows(CommandSources::widgets(Catalog::items()));
  return widgetRows_;
}

const ReadyRows& CommandBarModel::clipboardRows() {
  const QList<ClipboardEntry> entries = parts_.clipboard();
  // A history that was not changed gives the same list each time, and the one that is kept stays where it is.
  if (entries.constData() != clipboardEntries_.constData() || entries.size() != clipboardEntries_.size()) {
    clipboardEntries_ = entries;
    clipboardRows_ = ReadyRows(CommandSources::clipboard(entries));
  }
  return clipboardRows_;
}

void CommandBarModel::show(const QList<CommandItem>& results, qsizetype selection) {
  const qsizetype last = std::max<qsizetype>(results.size() - 1, 0);
  const qsizetype place = std::min(selection, last);
  const bool isOtherPlace = place != selection_;
  selection_ = place;
  const bool areOthers = results != results_;
  if (areOthers) results_ = results;
  if (areOthers) Q_EMIT resultsChanged();
  if (isOtherPlace) Q_EMIT selectionChanged();
}

void CommandBarModel::moveSelection(qsizetype by) {
  const qsizetype count = results_.size();
  if (count == 0) return;
  show(results_, ((selection_ + by) % count + count) % count);
}

void CommandBarModel::searchFilesSoon() {
  fileWork_.reset();
  files_ = {};
  const QString text = Text::withoutOuterBlanks(query_).toString();
  if (!choices_.findsFiles || Text::characters(text, kFewestForFiles).size() < kFewestForFiles) return stopFileSearch();
  fileWork_ = parts_.store.scheduler().after(kFileDelay, [this, text] { startFileSearch(text); });
}

void CommandBarModel::startFileSearch(const QString& query) {
  stopFileSearch();
  setSearchingFiles(true);
  parts_.files.start(query, [model = QPointer(this)](const QList<FoundFile>& found) {
    if (model) model->absorbFileResults(found);
  });
}

void CommandBarModel::absorbFileResults(const QList<FoundFile>& found) {
  setSearchingFiles(false);
  files_ = ReadyRows(CommandSources::files(found.first(std::min(found.size(), FileSearch::kMost))));
  recompute();
}

void CommandBarModel::stopFileSearch() {
  parts_.files.stop();
  setSearchingFiles(false);
}

void CommandBarModel::setSearchingFiles(bool searching) {
  if (std::exchange(searchingFiles_, searching) != searching) Q_EMIT searchingFilesChanged();
}

void CommandBarModel::remember(const CommandItem& item) {
  if (item.isWindow()) return;  // It is another one each time.
  usage_.record(item.id, parts_.store.now());
  judgeUsage();
  if (!parts_.store.isDiagnostic()) usageStore_.save(usage_, parts_.store.dataDirectory());
}

// The record of the row that searches the web stands for every query: three searches would lift the row above all
// apps, and Return on a word meant for an app would send that word to a search engine.
void CommandBarModel::judgeUsage() {
  judged_ = usage_;
  judged_.records.remove(CommandItem::webSearchId());
}

bool CommandBarModel::activate(const CommandItem& item) {
  const CommandItem chosen = item;  // What is done may replace the rows.
  remember(chosen);
  switch (chosen.kind) {
    case CommandItem::Kind::App:
      if (chosen.isWindow())
        parts_.commands.showWindow(chosen.payload.toULongLong());
      else
        parts_.commands.startApplication(chosen.path);
      break;
    case CommandItem::Kind::File:
      parts_.commands.openPath(chosen.path);
      break;
    case CommandItem::Kind::Widget:
      parts_.commands.addWidget(chosen.payload, {});
      break;
    case CommandItem::Kind::Clipboard:
    case CommandItem::Kind::Calculation:
    case CommandItem::Kind::Symbol:
      parts_.commands.copyText(chosen.payload);
      break;
    case CommandItem::Kind::Web:
      if (const QUrl url(chosen.payload); url.isValid()) parts_.commands.openUrl(url);
      break;
  }
  return true;
}

void CommandBarModel::revealInFinder(const CommandItem& item) { parts_.commands.reveal(item.path); }

void CommandBarModel::copyPath(const CommandItem& item) { parts_.commands.copyText(item.path); }

}  // namespace tarnwick
