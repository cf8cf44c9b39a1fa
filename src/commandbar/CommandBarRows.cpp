#include "commandbar/CommandBarRows.h"

#include <algorithm>
#include <utility>

#include "commandbar/CommandExtras.h"
#include "commandbar/CommandRanking.h"

namespace tarnwick {
namespace {

/// What its two texts begin with.
QString symbolName(const CommandItem& item) {
  const auto [end, other] = std::ranges::mismatch(item.subtitle, item.matchText);
  return item.subtitle.first(end - item.subtitle.begin()).trimmed();
}

QList<CommandMatch::Span> matchedOf(const CommandItem& item, const QString& query, bool below) {
  const bool isSymbol = item.kind == CommandItem::Kind::Symbol;
  if (!isSymbol && !below) return CommandRanking::emphasis(item, query);
  CommandItem shown;
  shown.title = isSymbol ? symbolName(item) : item.title;
  // Only whole words bring these in; letters here and there in the name of what another word found are a chance.
  const auto spans = CommandRanking::emphasis(shown, query);
  return spans.size() == 1 ? spans : QList<CommandMatch::Span>();
}

}  // namespace

CommandBarRows::CommandBarRows(CommandBarModel& model, CommandExtras& extras, QObject* parent)
    : QObject(parent), model_(model), extras_(extras) {
  connect(&model_, &CommandBarModel::queryChanged, this, &CommandBarRows::take);
  connect(&model_, &CommandBarModel::resultsChanged, this, &CommandBarRows::take);
  connect(&model_, &CommandBarModel::selectionChanged, this, &CommandBarRows::take);
  connect(&model_, &CommandBarModel::searchingFilesChanged, this, &CommandBarRows::take);
  connect(&extras_, &CommandExtras::changed, this, [this] {
    takeExtras();
    take();
  });
  takeExtras();
  take();
}

const CommandItem* CommandBarRows::selected() const {
  return selection_ < rows_.size() ? &rows_[selection_].item : nullptr;
}

/// The selected row of the second list stays selected while it is there.
void CommandBarRows::takeExtras() {
  const QString chosen = below_ < 0 ? QString() : found_[below_].id;
  query_ = model_.query();
  found_ = extras_.find(query_);
  const auto same = std::ranges::find(found_, chosen, &CommandItem::id);
  below_ = same == found_.end() ? -1 : same - found_.begin();
}

bool CommandBarRows::beginsBelow() const {
  const QList<CommandItem>& told = model_.results();
  return !found_.isEmpty() && (told.isEmpty() || (told.size() == 1 && told.first().isWebSearch()));
}

void CommandBarRows::take() {
  if (model_.query() != query_) {
    below_ = -1;
    isChosen_ = false;
    takeExtras();
  }
  // Files come late; what is selected stays.
  const bool hasFiles = std::ranges::any_of(
      model_.results(), [](const CommandItem& item) { return item.kind == CommandItem::Kind::File; });
  if (!isChosen_ && !hasFiles) below_ = beginsBelow() ? 0 : -1;
  QList<CommandRow> rows;
  rows.reserve(model_.results().size() + found_.size());
  for (const CommandItem& item : model_.results()) rows.append({item, matchedOf(item, query_, false), false});
  for (const CommandItem& item : std::as_const(found_)) rows.append({item, matchedOf(item, query_, true), true});
  const auto selection = static_cast<int>(below_ < 0 ? model_.selection() : model_.results().size() + below_);
  const bool isSame = rows == rows_ && selection == selection_ && model_.searchingFiles() == searchingFiles_;
  if (isSame) return;
  rows_ = std::move(rows);
  selection_ = selection;
  searchingFiles_ = model_.searchingFiles();
  Q_EMIT changed();
}

void CommandBarRows::moveSelection(int by) {
  const auto count = static_cast<int>(rows_.size());
  if (count == 0) return;
  isChosen_ = true;
  const int place = ((selection_ + by) % count + count) % count;
  below_ = place < toldCount() ? -1 : place - toldCount();
  if (below_ < 0) model_.moveSelection(place - model_.selection());
  take();
}

bool CommandBarRows::activate(int row, bool isPressed) {
  if (row < 0 || row >= rows_.size()) return false;
  const CommandRow chosen = rows_[row];  // What is done may replace the rows.
  if (!chosen.below) return model_.activate(chosen.item);
  extras_.activate(chosen.item, isPressed || isChosen_);
  return true;
}

bool CommandBarRows::reveal(int row) {
  if (row < 0 || row >= rows_.size() || rows_[row].item.path.isEmpty()) return false;
  const CommandItem chosen = rows_[row].item;
  model_.revealInFinder(chosen);
  return true;
}

}  // namespace tarnwick
