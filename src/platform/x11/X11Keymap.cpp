#include "platform/x11/X11Keymap.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <initializer_list>

#include "desktop/VirtualKeys.h"
#include "platform/x11/X11Properties.h"

namespace tarnwick {
namespace {

std::shared_ptr<xkb_context> newContext() {
  return {xkb_context_new(XKB_CONTEXT_NO_FLAGS), [](xkb_context* context) { xkb_context_unref(context); }};
}

std::shared_ptr<xkb_keymap> owned(xkb_keymap* keymap) {
  return {keymap, [](xkb_keymap* one) { xkb_keymap_unref(one); }};
}

// The layout by which the key codes in the settings are specified. Compiled when first asked for: most keyboards never
// need it.
xkb_keymap* referenceKeymap() {
  static const std::shared_ptr<xkb_keymap> kReference = [] {
    const xkb_rule_names names{.rules = "evdev", .model = "pc105", .layout = "us", .variant = "", .options = ""};
    const auto context = newContext();
    return owned(context ? xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS) : nullptr);
  }();
  return kReference.get();
}

bool gives(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t layout, xkb_level_index_t level, quint32 keysym) {
  const xkb_keysym_t* symbols = nullptr;
  const int count = xkb_keymap_key_get_syms_by_level(keymap, key, layout, level, &symbols);
  return std::find(symbols, symbols + count, keysym) != symbols + count;
}

bool givesSomehow(xkb_keymap* keymap, xkb_keycode_t key, quint32 keysym) {
  const xkb_layout_index_t layouts = xkb_keymap_num_layouts_for_key(keymap, key);
  for (xkb_layout_index_t layout = 0; layout < layouts; ++layout) {
    const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap, key, layout);
    for (xkb_level_index_t level = 0; level < levels; ++level) {
      if (gives(keymap, key, layout, level, keysym)) return true;
    }
  }
  return false;
}

// Only what a key gives alone: a symbol that needs Shift or AltGr shares its key with another request.
QList<xcb_keycode_t> keysInLayout(xkb_keymap* keymap, xkb_layout_index_t layout, quint32 keysym) {
  QList<xcb_keycode_t> keys;
  const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap), 255);
  for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap); key <= last; ++key) {
    if (xkb_keymap_num_layouts_for_key(keymap, key) > 0 && gives(keymap, key, layout, 0, keysym)) {
      keys.append(static_cast<xcb_keycode_t>(key));
    }
  }
  return keys;
}

QList<xcb_keycode_t> keysInReferencePlace(xkb_keymap* keymap, quint32 keysym) {
  xkb_keymap* reference = referenceKeymap();
  if (!reference) return {};
  for (xkb_keycode_t key = xkb_keymap_min_keycode(reference); key <= xkb_keymap_max_keycode(reference); ++key) {
    if (!givesSomehow(reference, key, keysym)) continue;
    const char* place = xkb_keymap_key_get_name(reference, key);
    const xkb_keycode_t here = place ? xkb_keymap_key_by_name(keymap, place) : XKB_KEYCODE_INVALID;
    if (here <= 255) return {static_cast<xcb_keycode_t>(here)};
  }
  return {};
}

}  // namespace

std::optional<X11Keymap> X11Keymap::read(xcb_connection_t* connection) {
  const bool isReady =
      xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                  XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
  const auto context = newContext();
  if (!isReady || !context) return std::nullopt;
  const std::int32_t device = xkb_x11_get_core_keyboard_device_id(connection);
  if (device < 0) return std::nullopt;
  X11Keymap read(owned(xkb_x11_keymap_new_from_device(context.get(), connection, device, XKB_KEYMAP_COMPILE_NO_FLAGS)));
  if (!read.keymap_) return std::nullopt;
  if (xkb_state* state = xkb_x11_state_new_from_device(read.keymap_.get(), connection, device)) {
    read.activeLayout_ = xkb_state_serialize_layout(state, XKB_STATE_LAYOUT_EFFECTIVE);
    xkb_state_unref(state);
  }
  read.readModifiers(connection);
  return read;
}

void X11Keymap::readModifiers(xcb_connection_t* connection) {
  const auto cookie = xcb_get_modifier_mapping(connection);
  const XcbReply reply(xcb_get_modifier_mapping_reply(connection, cookie, nullptr));
  if (!reply) return;
  const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(reply.get());
  const int width = reply->keycodes_per_modifier;
  const auto carrierOf = [&](std::initializer_list<quint32> symbols) -> quint16 {
    for (const quint32 symbol : symbols) {
      for (int modifier = 0; modifier < 8; ++modifier) {
        const auto* first = keys + modifier * width;
        const bool carries = std::any_of(first, first + width, [&](xcb_keycode_t key) {
          return key != 0 && givesSomehow(keymap_.get(), key, symbol);
        });
        if (carries) return static_cast<quint16>(1U << modifier);
      }
    }
    return 0;
  };
  super_ = carrierOf({XKB_KEY_Super_L, XKB_KEY_Super_R});
  alt_ = carrierOf({XKB_KEY_Alt_L, XKB_KEY_Alt_R, XKB_KEY_Meta_L});
  numLock_ = carrierOf({XKB_KEY_Num_Lock});
  scrollLock_ = carrierOf({XKB_KEY_Scroll_Lock});
}

QList<xcb_keycode_t> X11Keymap::keys(quint32 keysym) const {
  QList<xcb_keycode_t> found = keysInLayout(keymap_.get(), activeLayout_, keysym);
  const xkb_layout_index_t layouts = xkb_keymap_num_layouts(keymap_.get());
  for (xkb_layout_index_t layout = 0; layout < layouts && found.isEmpty(); ++layout) {
    found = keysInLayout(keymap_.get(), layout, keysym);
  }
  return found.isEmpty() ? keysInReferencePlace(keymap_.get(), keysym) : found;
}

std::optional<quint16> X11Keymap::modifiers(quint32 mask) const {
  const bool lacksSuper = (mask & VirtualKeys::kCommand) && super_ == 0;
  const bool lacksAlt = (mask & VirtualKeys::kOption) && alt_ == 0;
  if (lacksSuper || lacksAlt) return std::nullopt;
  int modifiers = 0;
  if (mask & VirtualKeys::kCommand) modifiers |= super_;
  if (mask & VirtualKeys::kShift) modifiers |= XCB_MOD_MASK_SHIFT;
  if (mask & VirtualKeys::kOption) modifiers |= alt_;
  if (mask & VirtualKeys::kControl) modifiers |= XCB_MOD_MASK_CONTROL;
  return static_cast<quint16>(modifiers);
}

QList<quint16> X11Keymap::lockCombinations() const {
  QList<quint16> combinations{0};
  for (const quint16 lock : {static_cast<quint16>(XCB_MOD_MASK_LOCK), numLock_, scrollLock_}) {
    for (const quint16 others : QList<quint16>(combinations)) {
      const auto both = static_cast<quint16>(others | lock);
      if (!combinations.contains(both)) combinations.append(both);
    }
  }
  return combinations;
}

}  // namespace tarnwick
