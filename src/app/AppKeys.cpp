#include "app/AppKeys.h"

#include <algorithm>

#include "app/HotKeyTable.h"
#include "store/AppStore.h"
#include "store/Commands.h"

namespace tarnwick {

AppKeys::AppKeys(AppStore& store, HotKeys& keys, const Commands& commands)
    : store_(store), keys_(keys), commands_(commands) {
  connect(&keys, &HotKeys::pressed, this, &AppKeys::pressed);
  connect(&keys, &HotKeys::lost, this, [this](quint32 identifier) {
    const auto held = held_.take(identifier);
    const bool isBar = identifier == HotKeyTable::kCommandBar;
    if (isBar) {
      commandBarKey_.clear();
      // Asked for again it would be lost again.
      if (!lost_.contains(held)) lost_.append(held);
    }
    const bool isReplaced = isBar && bindCommandBar(store_.config().desktopOptions());
    if (!isReplaced && identifier != HotKeyTable::kFocus && identifier < HotKeyTable::kFirstApp) sayKeyIsTaken();
    Q_EMIT changed();
  });
  connect(&keys, &HotKeys::answered, this, &AppKeys::changed);
  connect(&store, &AppStore::layoutChanged, this, &AppKeys::follow);
}

void AppKeys::follow() {
  const DesktopOptions& options = store_.config().desktopOptions();
  const QString signature =
      HotKeyTable::signature(options) + (options.deskOptions().appKeys ? QStringLiteral(":apps") : QString());
  if (signature == signature_) return;
  signature_ = signature;
  lost_.clear();
  release();
  commandBarKey_.clear();
  bool allBound = true;
  for (const HotKeyTable::Row& row : HotKeyTable::rows(options)) {
    if (row.identifier == HotKeyTable::kCommandBar) {
      if (commands_.can(Commands::Optional::CommandBar)) allBound = bindCommandBar(options) && allBound;
    } else if (row.identifier == HotKeyTable::kFocus) {
      // The user did not choose this key, so no message says that it is taken.
      bind(row.identifier, row.request);
    } else {
      allBound = bind(row.identifier, row.request) && allBound;
    }
  }
  if (!allBound) sayKeyIsTaken();
  if (keys_.unasked())
    for (const HotKeyTable::Row& row : HotKeyTable::appRows(options)) bind(row.identifier, row.request);
  Q_EMIT changed();
}

void AppKeys::release() {
  keys_.unbindAll();
  held_.clear();
  Q_EMIT changed();
}

QSet<int> AppKeys::apps() const {
  QSet<int> apps;
  for (auto held = held_.keyBegin(); held != held_.keyEnd(); ++held)
    if (*held >= HotKeyTable::kFirstApp) apps.insert(static_cast<int>(*held - HotKeyTable::kFirstApp));
  return apps;
}

bool AppKeys::bind(quint32 identifier, const HotKeyRequest& request) {
  const bool bound = keys_.bind(identifier, request).bound;
  if (bound) held_.insert(identifier, request);
  return bound;
}

bool AppKeys::holds(const HotKeyRequest& request) const { return std::ranges::find(held_, request) != held_.end(); }

void AppKeys::setRecording(bool recording) {
  signature_.clear();
  if (recording)
    release();
  else
    follow();
}

HotKeyBinding AppKeys::tryKey(const HotKeyRequest& request) { return keys_.bind(HotKeyTable::kTrial, request); }

bool AppKeys::bindCommandBar(const DesktopOptions& options) {
  QList<HotKeyRequest> requests{{options.commandBarKey, options.commandBarModifiers}};
  requests += HotKeyTable::commandBarFallbacks(options);
  for (const HotKeyRequest& each : requests) {
    if (lost_.contains(each)) continue;
    const HotKeyBinding binding = keys_.bind(HotKeyTable::kCommandBar, each);
    if (!binding.bound) continue;
    held_.insert(HotKeyTable::kCommandBar, each);
    commandBarKey_ = binding.text;
    return true;
  }
  return false;
}

void AppKeys::sayKeyIsTaken() {
  // Where no program can have keys there is nothing to choose.
  if (!keys_.capability()) return;
  store_.setError(tr("A Tarnwick shortcut is already used by another app. Choose a different shortcut in Settings."));
}

}  // namespace tarnwick
