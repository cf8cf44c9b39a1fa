#include "base/ProbeCounters.h"

#include <map>
#include <mutex>
#include <string>

namespace tarnwick {
namespace {

struct Counters {
  std::mutex lock;
  std::map<std::string, qint64, std::less<>> byName;
};

Counters& counters() {
  static Counters all;
  return all;
}

}  // namespace

void ProbeCounters::bump(const char* name) {
  Counters& all = counters();
  const std::lock_guard guard(all.lock);
  const auto counter = all.byName.find(name);
  if (counter == all.byName.end()) {
    all.byName.emplace(name, 1);
  } else {
    ++counter->second;
  }
}

void ProbeCounters::reset() {
  Counters& all = counters();
  const std::lock_guard guard(all.lock);
  for (auto& counter : all.byName) counter.second = 0;
}

QMap<QString, qint64> ProbeCounters::snapshot() {
  Counters& all = counters();
  const std::lock_guard guard(all.lock);
  QMap<QString, qint64> values;
  for (const auto& [name, value] : all.byName) values.insert(QString::fromStdString(name), value);
  return values;
}

}  // namespace tarnwick
