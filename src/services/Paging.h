#pragma once

#include <QStringList>
#include <stop_token>

#include "services/Provider.h"

namespace tarnwick {

/// The pages of one list: `for (Paging pages(limits); pages.next(stop);)` asks for one after the other until the list
/// has ended or as many as the limits allow have been read. What came of a page is told by one of the functions below.
class Paging {
 public:
  explicit Paging(const ProviderLimits& limits) : limits_(limits) {}

  /// Whether to ask for a further page. Throws Cancelled once `stop` is requested.
  bool next(const std::stop_token& stop);
  /// The number of the page to ask for, from 1.
  int page() const { return page_; }
  /// Where the page to ask for begins; empty for the first.
  const QString& cursor() const { return cursors_.last(); }

  /// The list says whether it goes on.
  void goOn(bool isMore) { isFinished_ = !isMore; }
  /// The same, from `cursor` on. Throws DomainError with `sentence` for one that leads nowhere new.
  void goOn(bool isMore, const QString& cursor, const QString& sentence);
  /// The list says nothing: a page of fewer than `full` entries is its last, and one that is full is not.
  void goOn(qsizetype entries, qsizetype full) { goOn(entries >= full); }

  /// Whether the list goes on behind the last page that was read.
  bool isPartial() const { return !isFinished_; }
  /// A sum of what was read, which says so where it is not all.
  QString marked(const QString& sum) const;

 private:
  ProviderLimits limits_;
  int page_ = 0;
  bool isFinished_ = false;
  QStringList cursors_{QString()};
};

}  // namespace tarnwick
