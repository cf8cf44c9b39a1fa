#pragma once

#include <QString>
#include <functional>

namespace tarnwick {

/// Something that can be asked of an item of the dock, in the words of its menu. It may be run later than it was made,
/// on the main thread; what is gone by then is left alone.
struct ItemCommand {
  QString text;
  std::function<void()> run;
};

}  // namespace tarnwick
