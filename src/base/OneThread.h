#pragma once

#include <QThreadPool>

namespace tarnwick {

/// Makes of `pool` a worker of one thread: its work is done one after the other, and the thread is there only while
/// there is work and `keptMs` after it.
inline void useOneThread(QThreadPool& pool, int keptMs = 2000) {
  pool.setMaxThreadCount(1);
  pool.setExpiryTimeout(keptMs);
}

}  // namespace tarnwick
