#pragma once

#include <stop_token>

#include "services/Provider.h"

namespace tarnwick {

/// The pages of one list: `for (Paging pages(limits); pages.next(stop);)` asks for one after the other until `finish`
/// was called or as many as the limits allow have been read.
class Paging {
 public:
  explicit Paging(const ProviderLimits& limits) : limits_(limits) {}

  /// Whether to ask for a further page. Throws Cancelled once `stop` is requested.
  bool next(const std::stop_token& stop);
  /// The number of the page to ask for, from 1.
  int page() const { return page_; }
  /// The list has no further page.
  void finish() { isFinished_ = true; }
  /// Whether the list goes on behind the last page that was read.
  bool isPartial() const { return !isFinished_; }

 private:
  ProviderLimits limits_;
  int page_ = 0;
  bool isFinished_ = false;
};

}  // namespace tarnwick
