#include "clipboard/ClipboardPanelModel.h"

#include <QPointer>
#include <algorithm>
#include <utility>

#include "base/Text.h"
#include "clipboard/ClipboardOffers.h"

namespace tarnwick {

namespace {

/// So many letters in all are searched at once.
constexpr qsizetype kMostLetters = 100'000;

qsizetype lettersIn(const QList<ClipboardEntry>& entries) {
  qsizetype sum = 0;
  for (const ClipboardEntry& entry : entries) sum += entry.value.size();
  return sum;
}

/// `wanted` is folded.
QList<ClipboardEntry> entriesWith(const QString& wanted, const QList<ClipboardEntry>& entries,
                                  const std::stop_token& stop) {
  QList<ClipboardEntry> found;
  for (const ClipboardEntry& entry : entries) {
    if (stop.stop_requested()) break;
    if (Text::folded(entry.value).contains(wanted)) found.append(entry);
  }
  return found;
}

}  // namespace

ClipboardPanelModel::ClipboardPanelModel(ClipboardHistory& history, Pasteboard& pasteboard, QObject* parent)
    : QObject(parent), history_(history), pasteboard_(pasteboard) {
  connect(&history, &ClipboardHistory::didChange, this, &ClipboardPanelModel::find);
  connect(&history, &ClipboardHistory::failed, this, &ClipboardPanelModel::say);
  found_ = history.items();
  entries_ = ClipboardGroups::filter(group_, found_);
  reload();
}

void ClipboardPanelModel::setGroup(ClipboardGroup group) {
  if (std::exchange(group_, group) != group) publish();
}

void ClipboardPanelModel::setSearch(const QString& text) {
  if (std::exchange(search_, text) != text) find();
}

void ClipboardPanelModel::find() {
  searching_.cancel();
  const QList<ClipboardEntry> all = history_.items();
  const QString wanted = Text::folded(Text::trimmed(search_).toString());
  if (!wanted.isEmpty() && lettersIn(all) > kMostLetters) {
    return searching_.start([wanted, all](const std::stop_token& stop) { return entriesWith(wanted, all, stop); },
                            [this](const QList<ClipboardEntry>& found) {
                              found_ = found;
                              publish();
                            });
  }
  found_ = wanted.isEmpty() ? all : entriesWith(wanted, all, {});
  publish();
}

QList<ClipboardGroup> ClipboardPanelModel::available() const { return ClipboardGroups::available(found_); }

qsizetype ClipboardPanelModel::favourites() const {
  return std::ranges::count_if(history_.items(), &ClipboardEntry::favourite);
}

void ClipboardPanelModel::reload() {
  history_.load([guard = QPointer(this)] {
    if (guard) guard->find();
  });
}

void ClipboardPanelModel::publish() {
  message_ = history_.problem();
  if (message_.isEmpty()) entries_ = ClipboardGroups::filter(group_, found_);
  Q_EMIT changed();
}

void ClipboardPanelModel::say(const QString& message) {
  message_ = message;
  Q_EMIT changed();
}

void ClipboardPanelModel::use(const ClipboardEntry& entry) {
  // A picture comes later, when whoever shows this may be gone.
  const auto put = [&pasteboard = pasteboard_](const std::optional<PasteboardOffer>& offer) {
    if (offer) {
      pasteboard.set(*offer);
    } else {
      pasteboard.clear();
    }
  };
  ClipboardOffers::make(entry, history_, &pasteboard_, put);
}

void ClipboardPanelModel::remove(const ClipboardEntry& entry) {
  history_.remove(entry.id, this, [this](const RemovedClipboardEntry& what) { Q_EMIT removed(what); });
}

void ClipboardPanelModel::clear() { history_.clear(); }

}  // namespace tarnwick
