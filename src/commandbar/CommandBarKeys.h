#pragma once

#include <Qt>

namespace tarnwick {

/// What keys do in the command bar beside writing.
struct CommandBarKeys {
  enum class Action { None, CopyPath, Reveal, Next, Previous, Hide };

  /// By a key and the modifiers that are held; both as the toolkit's events give them.
  static Action action(int key, Qt::KeyboardModifiers modifiers);
};

}  // namespace tarnwick
