#include "clipboard/ClipboardPanelModel.h"

#include <QPointer>
#include <algorithm>
#include <utility>

#include "base/Text.h"
#include "clipboard/ClipboardOffers.h"

namespace tarnwick {

ClipboardPanelModel::ClipboardPanelModel(ClipboardHistory& history, Pasteboard& pasteboard, QObject* parent)
    : QObject(parent), history_(history), pasteboard_(pasteboard) {
  connect(&history, &ClipboardHistory::didChange, this, &ClipboardPanelModel::publish);
  connect(&history, &ClipboardHistory::failed, this, &ClipboardPanelModel::say);
  entries_ = ClipboardGroups::filter(group_, found());
  reload();
}

void ClipboardPanelModel::setGroup(ClipboardGroup group) {
  if (std::exchange(group_, group) != group) publish();
}

void ClipboardPanelModel::setSearch(const QString& text) {
  if (std::exchange(search_, text) != text) publish();
}

QList<ClipboardEntry> ClipboardPanelModel::found() const {
  const QString wanted = Text::folded(Text::trimmed(search_).toString());
  if (wanted.isEmpty()) return history_.items();
  QList<ClipboardEntry> entries;
  for (const ClipboardEntry& entry : history_.items()) {
    if (Text::folded(entry.value).contains(wanted)) entries.append(entry);
  }
  return entries;
}

QList<ClipboardGroup> ClipboardPanelModel::available() const { return ClipboardGroups::available(found()); }

qsizetype ClipboardPanelModel::favourites() const {
  return std::ranges::count_if(history_.items(), &ClipboardEntry::favourite);
}

void ClipboardPanelModel::reload() {
  history_.load([guard = QPointer(this)] {
    if (guard) guard->publish();
  });
}

void ClipboardPanelModel::publish() {
  message_ = history_.problem();
  if (message_.isEmpty()) entries_ = ClipboardGroups::filter(group_, found());
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
