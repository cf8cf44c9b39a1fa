#include "services/Paging.h"

#include "base/Cancelled.h"
#include "services/ProviderData.h"
#include "services/ServiceWords.h"

namespace tarnwick {

bool Paging::next(const std::stop_token& stop) {
  throwIfStopped(stop);
  if (isFinished_ || page_ >= limits_.pages) return false;
  ++page_;
  return true;
}

void Paging::goOn(bool isMore, const QString& cursor, const QString& sentence) {
  goOn(isMore);
  if (!isMore) return;
  require(!cursor.isEmpty() && !cursors_.contains(cursor), sentence);
  cursors_ << cursor;
}

QString Paging::marked(const QString& sum) const { return isPartial() ? ServiceWords::tr("Partial · ") + sum : sum; }

}  // namespace tarnwick
