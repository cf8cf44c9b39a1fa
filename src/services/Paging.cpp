#include "services/Paging.h"

#include "base/Cancelled.h"
#include "services/ProviderData.h"
#include "services/ServiceWords.h"

namespace tarnwick {

bool Paging::next(const std::stop_token& stop) {
  throwIfStopped(stop);
  const int most = limits_.pages + (isBlind_ ? 1 : 0);
  if (isFinished_ || page_ >= most) return false;
  ++page_;
  return true;
}

void Paging::goOn(bool isMore, const QString& cursor, const QString& sentence) {
  goOn(isMore);
  if (!isMore) return;
  require(!cursor.isEmpty() && !cursors_.contains(cursor), sentence);
  cursors_ << cursor;
}

bool Paging::counts(qsizetype entries, qsizetype full) {
  const bool isRead = page_ <= limits_.pages;
  isFinished_ = isRead ? entries < full : entries == 0;
  isBlind_ = true;
  return isRead;
}

QString Paging::marked(const QString& sum) const { return isPartial() ? ServiceWords::tr("Partial · ") + sum : sum; }

}  // namespace tarnwick
