#include "platform/x11/X11HotKeys.h"

#include <QCoreApplication>
#include <algorithm>
#include <utility>
#include <vector>

#include "desktop/VirtualKeys.h"
#include "platform/x11/X11Properties.h"

namespace tarnwick {
namespace {

struct X11HotKeysWords {
  Q_DECLARE_TR_FUNCTIONS(HotKeys)
};

constexpr quint16 kAllModifiers = 0xff;

}  // namespace

X11HotKeys::X11HotKeys(X11Events& events) : events_(events), keymap_(X11Keymap::read(events.connection())), locks_{0} {
  if (keymap_) locks_ = keymap_->lockCombinations();
  connect(&events, &X11Events::keyPressed, this, &X11HotKeys::keyPressed);
  connect(&events, &X11Events::keyReleased, this, [this](quint8 code) { down_.remove(code); });
  connect(&events, &X11Events::keyboardChanged, this, &X11HotKeys::keyboardChanged);
}

X11HotKeys::~X11HotKeys() { unbindAll(); }

HotKeyBinding X11HotKeys::bind(quint32 identifier, const HotKeyRequest& request) {
  release(entries_.take(identifier).grabs);
  Entry entry{.request = request, .grabs = {}};
  const HotKeyBinding binding = take(entry);
  entries_[identifier] = entry;
  return binding;
}

void X11HotKeys::unbindAll() {
  for (const Entry& entry : std::as_const(entries_)) release(entry.grabs);
  entries_.clear();
}

HotKeyBinding X11HotKeys::take(Entry& entry) {
  const QString text = VirtualKeys::text(entry.request.keyCode, entry.request.modifiers);
  QString reason;
  const QList<Grab> grabs = grabsFor(entry.request, reason);
  if (grabs.isEmpty()) return {.bound = false, .text = {}, .reason = reason};
  if (isTakenByUs(grabs)) {
    return {.bound = false,
            .text = {},
            .reason = X11HotKeysWords::tr("%1 is already used by another Tarnwick shortcut.").arg(text)};
  }
  if (!grab(grabs)) {
    return {.bound = false, .text = {}, .reason = X11HotKeysWords::tr("%1 is already used by another app.").arg(text)};
  }
  entry.grabs = grabs;
  return {.bound = true, .text = text, .reason = {}};
}

QList<X11HotKeys::Grab> X11HotKeys::grabsFor(const HotKeyRequest& request, QString& reason) const {
  const std::optional<quint32> keysym = VirtualKeys::keysym(request.keyCode);
  const QList<xcb_keycode_t> keys = keysym && keymap_ ? keymap_->keys(*keysym) : QList<xcb_keycode_t>();
  const std::optional<quint16> modifiers = keymap_ ? keymap_->modifiers(request.modifiers) : std::nullopt;
  if (keys.isEmpty() || !modifiers) {
    reason = X11HotKeysWords::tr("The keyboard cannot produce %1.")
                 .arg(VirtualKeys::text(request.keyCode, request.modifiers));
    return {};
  }
  QList<Grab> grabs;
  for (const xcb_keycode_t key : keys) grabs.append({.key = key, .modifiers = *modifiers});
  return grabs;
}

bool X11HotKeys::grab(const QList<Grab>& grabs) {
  std::vector<xcb_void_cookie_t> cookies;
  for (const Grab& one : grabs) {
    for (const quint16 lock : locks_) {
      cookies.push_back(xcb_grab_key_checked(events_.connection(), 0, events_.root(),
                                             static_cast<quint16>(one.modifiers | lock), one.key, XCB_GRAB_MODE_ASYNC,
                                             XCB_GRAB_MODE_ASYNC));
    }
  }
  bool isTaken = false;
  for (const xcb_void_cookie_t cookie : cookies) {
    const XcbReply error(xcb_request_check(events_.connection(), cookie));
    isTaken = isTaken || error;
  }
  if (isTaken) release(grabs);
  return !isTaken;
}

void X11HotKeys::release(const QList<Grab>& grabs) {
  for (const Grab& one : grabs) {
    for (const quint16 lock : locks_) {
      xcb_ungrab_key(events_.connection(), one.key, events_.root(), static_cast<quint16>(one.modifiers | lock));
    }
  }
  xcb_flush(events_.connection());
}

// The server lets one program take the same key twice and then notifies the second taker alone.
bool X11HotKeys::isTakenByUs(const QList<Grab>& grabs) const {
  return std::ranges::any_of(entries_, [&](const Entry& entry) {
    return std::ranges::any_of(entry.grabs, [&](const Grab& one) { return grabs.contains(one); });
  });
}

void X11HotKeys::keyboardChanged() {
  // A new layout comes as a dozen of events.
  if (std::exchange(isReading_, true)) return;
  QMetaObject::invokeMethod(this, &X11HotKeys::readKeyboard, Qt::QueuedConnection);
}

void X11HotKeys::readKeyboard() {
  isReading_ = false;
  std::optional<X11Keymap> keymap = X11Keymap::read(events_.connection());
  if (!keymap) return;
  const QList<quint16> locks = keymap->lockCombinations();
  keymap_ = std::move(keymap);
  const bool isSame = locks == locks_ && std::ranges::all_of(entries_, [&](const Entry& entry) {
                        QString reason;
                        return entry.grabs == grabsFor(entry.request, reason);
                      });
  if (isSame) return;

  QList<quint32> lostOnes;
  for (const Entry& entry : std::as_const(entries_)) release(entry.grabs);
  locks_ = locks;
  QMap<quint32, Entry> before = std::exchange(entries_, {});
  for (auto next = before.begin(); next != before.end(); ++next) {
    const bool wasBound = !std::exchange(next->grabs, {}).isEmpty();
    const bool isBound = take(*next).bound;
    entries_[next.key()] = *next;
    if (wasBound && !isBound) lostOnes.append(next.key());
  }
  for (const quint32 identifier : lostOnes) Q_EMIT lost(identifier);
}

void X11HotKeys::keyPressed(quint8 code, quint16 state, bool isRepeat) {
  // Where repetitions come without a release between, a press of a key that is down is one.
  const bool wasDown = down_.contains(code);
  down_.insert(code);
  if (isRepeat || wasDown) return;

  const quint16 locks = *std::ranges::max_element(locks_);
  const Grab grab{.key = code, .modifiers = static_cast<quint16>(state & kAllModifiers & ~locks)};
  for (auto entry = entries_.cbegin(); entry != entries_.cend(); ++entry) {
    if (!entry->grabs.contains(grab)) continue;
    const quint32 identifier = entry.key();
    Q_EMIT pressed(identifier);
    return;
  }
}

}  // namespace tarnwick
