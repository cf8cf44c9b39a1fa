#include "app/AppKeys.h"

#include <algorithm>

#include "app/HotKeyTable.h"
#include "store/AppStore.h"

namespace tarnwick {

AppKeys::AppKeys(AppStore& store, HotKeys* keys) : store_(store), keys_(keys) {
  if (!keys) return;
  connect(keys, &HotKeys::pressed, this, &AppKeys::pressed);
  connect(keys, &HotKeys::lost, this, [this](quint32 identifier) {
    held_.remove(identifier);
    if (identifier == HotKeyTable::kCommandBar) commandBarKey_.clear();
    if (identifier != HotKeyTable::kFocus) sayKeyIsTaken();
  });
}

Capability AppKeys::capability() const {
  if (keys_) return keys_->capability();
  return Capability::no(
      tr("No program can have keys of its own here: bind them in the desktop’s settings to orders such as "
         "“tarnwick --toggle”."));
}

void AppKeys::follow() {
  if (!keys_) return;
  const DesktopOptions& options = store_.config().desktopOptions();
  const QString signature = HotKeyTable::signature(options);
  if (signature == signature_) return;
  signature_ = signature;
  release();
  commandBarKey_.clear();
  bool allBound = true;
  for (const HotKeyTable::Row& row : HotKeyTable::rows(options)) {
    if (row.identifier == HotKeyTable::kCommandBar) {
      if (hasCommandBar && hasCommandBar()) allBound = bindCommandBar(options, row.wish) && allBound;
    } else if (row.identifier == HotKeyTable::kFocus) {
      // Nobody chose this key, so nobody need be told that it is taken.
      if (canFocusDock && canFocusDock()) bind(row.identifier, row.wish);
    } else {
      allBound = bind(row.identifier, row.wish) && allBound;
    }
  }
  if (!allBound) sayKeyIsTaken();
}

void AppKeys::release() {
  if (keys_) keys_->unbindAll();
  held_.clear();
}

bool AppKeys::bind(quint32 identifier, const HotKeyWish& wish) {
  const bool bound = keys_->bind(identifier, wish).bound;
  if (bound) held_.insert(identifier, wish);
  return bound;
}

bool AppKeys::holds(const HotKeyWish& wish) const { return std::ranges::find(held_, wish) != held_.end(); }

void AppKeys::setRecording(bool recording) {
  signature_.clear();
  if (recording)
    release();
  else
    follow();
}

HotKeyBinding AppKeys::tryKey(const HotKeyWish& wish) {
  if (!keys_) return {false, {}, capability().reason};
  return keys_->bind(HotKeyTable::kTrial, wish);
}

bool AppKeys::bindCommandBar(const DesktopOptions& options, const HotKeyWish& wish) {
  QList<HotKeyWish> wishes{wish};
  wishes += HotKeyTable::commandBarFallbacks(options);
  for (const HotKeyWish& each : wishes) {
    const HotKeyBinding binding = keys_->bind(HotKeyTable::kCommandBar, each);
    if (!binding.bound) continue;
    held_.insert(HotKeyTable::kCommandBar, each);
    commandBarKey_ = binding.text;
    return true;
  }
  return false;
}

void AppKeys::sayKeyIsTaken() {
  // Where no program can have keys there is nothing to choose.
  if (!keys_->capability()) return;
  store_.setError(tr("A Tarnwick shortcut is already used by another app. Choose a different shortcut in Settings."));
}

}  // namespace tarnwick
