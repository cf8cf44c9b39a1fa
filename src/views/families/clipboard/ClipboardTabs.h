#pragma once

#include <QButtonGroup>
#include <QWidget>
#include <functional>

#include "clipboard/ClipboardGroup.h"

namespace tarnwick {

/// The groups of the history side by side, of which the chosen one alone shows its word.
class ClipboardTabs final : public QWidget {
 public:
  ClipboardTabs();

  /// The user chose another one.
  std::function<void(ClipboardGroup group)> chosen;

  /// Those that there are, and the one of them that is shown.
  void set(const QList<ClipboardGroup>& groups, ClipboardGroup shown);

 private:
  QButtonGroup group_;
};

}  // namespace tarnwick
