#include "platform/wayland/WaylandSession.h"

#include <sys/mman.h>

#include <qpa/qplatformnativeinterface.h>
#include <qpa/qplatformscreen.h>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "base/DomainError.h"
#include "base/FileDescriptor.h"
#include "platform/wayland/WaylandQueue.h"

namespace tarnwick {
namespace {

constexpr quint32 kCompositorVersion = 4;
constexpr quint32 kToplevelsVersion = 3;
/// The first version that says which events of the pointer belong together.
constexpr quint32 kSeatVersion = 5;
/// The first version that reports windows by KWin's own name for them.
constexpr quint32 kPlasmaWindowsVersion = 13;
constexpr const char* kKWin = "org_kde_plasma_shell";
constexpr const char* kFrames = "zxdg_decoration_manager_v1";

void* ofDisplay(const char* name) {
  QPlatformNativeInterface* native = QGuiApplication::platformNativeInterface();
  return native ? native->nativeResourceForIntegration(name) : nullptr;
}

}  // namespace

WaylandSession::Offer WaylandSession::offer() {
  if (qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_SOCKET")) {
    return Offer::Nothing;
  }
  // A connection that was handed down can be used once, and that is Qt's.
  if (!qEnvironmentVariableIsEmpty("WAYLAND_SOCKET")) return Offer::PlainWindows;
  wl_display* display = wl_display_connect(nullptr);
  if (!display) return Offer::Nothing;
  Offer found = Offer::Nothing;
  {
    WaylandQueue queue(display);
    const WaylandQueue::Face<wl_display> face(queue, display);
    const WaylandOwned<wl_registry> registry(wl_display_get_registry(face.get()));
    bool hasLayers = false;
    const wl_registry_listener listener{.global =
                                            [](void* data, wl_registry*, uint32_t, const char* interface, uint32_t) {
                                              if (qstrcmp(interface, zwlr_layer_shell_v1_interface.name) == 0)
                                                *static_cast<bool*>(data) = true;
                                            },
                                        .global_remove = [](void*, wl_registry*, uint32_t) {}};
    wl_registry_add_listener(registry.get(), &listener, &hasLayers);
    if (queue.waitForAnswers()) found = hasLayers ? Offer::Layers : Offer::PlainWindows;
  }
  wl_display_disconnect(display);
  return found;
}

WaylandSession::WaylandSession(quint32 layers) : display_(static_cast<wl_display*>(ofDisplay("wl_display"))) {
  if (!display_) throw DomainError::invalid(tr("Tarnwick is not running on a Wayland display."));
  static constexpr wl_registry_listener kListener{
      .global =
          [](void* data, wl_registry*, uint32_t name, const char* interface, uint32_t version) {
            auto* self = static_cast<WaylandSession*>(data);
            self->globals_.insert(name, {interface, version});
            if (!self->compositor_) return;
            self->bindSeat();
            self->bindBlur();
          },
      .global_remove = [](void* data, wl_registry*,
                          uint32_t name) { static_cast<WaylandSession*>(data)->removed(name); }};
  WaylandQueue queue(display_);
  {
    const WaylandQueue::Face<wl_display> face(queue, display_);
    registry_.reset(wl_display_get_registry(face.get()));
  }
  wl_registry_add_listener(registry_.get(), &kListener, this);
  queue.waitForAnswers();
  WaylandQueue::release(registry_.get());
  queue.handleRest();

  const auto offers = [this](const char* name) {
    return std::ranges::find(globals_, name, &Global::interface) != globals_.end();
  };
  judgesKeysOnce_ = offers(kKWin);
  framesWindows_ = offers(kFrames);
  compositor_ = bind<wl_compositor>(wl_compositor_interface, kCompositorVersion);
  shm_ = bind<wl_shm>(wl_shm_interface, 1);
  if (layers > 0) layerShell_ = bind<zwlr_layer_shell_v1>(zwlr_layer_shell_v1_interface, layers);
  viewporter_ = bind<wp_viewporter>(wp_viewporter_interface, 1);
  if (!compositor_ || !shm_) throw DomainError::invalid(tr("The Wayland compositor does not respond."));
  windows_ = bind<xdg_wm_base>(xdg_wm_base_interface, 1);
  static constexpr xdg_wm_base_listener kWindowsListener{
      .ping = [](void*, xdg_wm_base* windows, uint32_t serial) { xdg_wm_base_pong(windows, serial); }};
  if (windows_) xdg_wm_base_add_listener(windows_.get(), &kWindowsListener, this);
  activation_ = bind<xdg_activation_v1>(xdg_activation_v1_interface, 1);
  devices_ = bind<zwp_relative_pointer_manager_v1>(zwp_relative_pointer_manager_v1_interface, 1);
  bindSeat();
  bindBlur();
}

WaylandSession::~WaylandSession() = default;

template <typename Object>
WaylandOwned<Object> WaylandSession::bind(const wl_interface& interface, quint32 greatestVersion,
                                          wl_registry* through) const {
  for (auto global = globals_.cbegin(); global != globals_.cend(); ++global) {
    if (global->interface != interface.name) continue;
    const quint32 version = std::min(global->version, greatestVersion);
    return WaylandOwned<Object>(
        static_cast<Object*>(wl_registry_bind(through ? through : registry_.get(), global.key(), &interface, version)));
  }
  return nullptr;
}

WaylandOwned<zwlr_foreign_toplevel_manager_v1> WaylandSession::bindToplevels() const {
  return bind<zwlr_foreign_toplevel_manager_v1>(zwlr_foreign_toplevel_manager_v1_interface, kToplevelsVersion);
}

WaylandOwned<ext_data_control_manager_v1> WaylandSession::bindDataControl() const {
  return bind<ext_data_control_manager_v1>(ext_data_control_manager_v1_interface, 1);
}

WaylandOwned<zwlr_data_control_manager_v1> WaylandSession::bindOlderDataControl() const {
  return bind<zwlr_data_control_manager_v1>(zwlr_data_control_manager_v1_interface, 1);
}

WaylandOwned<org_kde_plasma_window_management> WaylandSession::bindPlasmaWindows(const WaylandQueue& queue) const {
  const WaylandQueue::Face<wl_registry> face(queue, registry_.get());
  return bind<org_kde_plasma_window_management>(org_kde_plasma_window_management_interface, kPlasmaWindowsVersion,
                                                face.get());
}

WaylandOwned<org_kde_plasma_virtual_desktop_management> WaylandSession::bindPlasmaDesktops() const {
  return bind<org_kde_plasma_virtual_desktop_management>(org_kde_plasma_virtual_desktop_management_interface, 1);
}

void WaylandSession::bindSeat() {
  if (seat_) return;
  seat_ = bind<wl_seat>(wl_seat_interface, kSeatVersion);
  if (!seat_) return;
  for (auto global = globals_.cbegin(); global != globals_.cend(); ++global) {
    if (global->interface == wl_seat_interface.name) seatName_ = global.key();
  }
  static constexpr wl_seat_listener kListener{
      .capabilities = [](void* data, wl_seat*,
                         uint32_t capabilities) { static_cast<WaylandSession*>(data)->seatHas(capabilities); },
      .name = [](void*, wl_seat*, const char*) {}};
  wl_seat_add_listener(seat_.get(), &kListener, this);
  Q_EMIT seatChanged();
}

void WaylandSession::bindBlur() {
  if (blur_) return;
  blur_ = bind<org_kde_kwin_blur_manager>(org_kde_kwin_blur_manager_interface, 1);
  if (!blur_) return;
  for (auto global = globals_.cbegin(); global != globals_.cend(); ++global) {
    if (global->interface == org_kde_kwin_blur_manager_interface.name) blurName_ = global.key();
  }
  Q_EMIT blurChanged();
}

void WaylandSession::removed(quint32 name) {
  globals_.remove(name);
  if (blur_ && name == blurName_) {
    blur_.reset();
    Q_EMIT blurChanged();
  }
  if (!seat_ || name != seatName_) return;
  seat_.reset();
  seatHas(0);
  bindSeat();
  if (!seat_) Q_EMIT seatChanged();
}

void WaylandSession::seatHas(quint32 capabilities) {
  const bool hasPointer = (capabilities & WL_SEAT_CAPABILITY_POINTER) != 0;
  if (std::exchange(hasPointer_, hasPointer) && !hasPointer) Q_EMIT pointerLost();
}

WaylandOwned<wl_buffer> WaylandSession::clearBuffer(const QSize& size) const {
  const int stride = size.width() * 4;
  const int bytes = stride * size.height();
  // Fresh memory is zero, and so is every pixel.
  const FileDescriptor memory(memfd_create("tarnwick-clear", MFD_CLOEXEC));
  if (!memory || ftruncate(memory.number(), bytes) != 0) return nullptr;
  wl_shm_pool* pool = wl_shm_create_pool(shm_.get(), memory.number(), bytes);
  WaylandOwned<wl_buffer> buffer(
      wl_shm_pool_create_buffer(pool, 0, size.width(), size.height(), stride, WL_SHM_FORMAT_ARGB8888));
  wl_shm_pool_destroy(pool);
  return buffer;
}

WaylandOwned<wl_region> WaylandSession::region(const QRegion& region) const {
  WaylandOwned<wl_region> made(wl_compositor_create_region(compositor_.get()));
  for (const QRect& one : region) wl_region_add(made.get(), one.x(), one.y(), one.width(), one.height());
  return made;
}

wl_surface* WaylandSession::surfaceOf(QWindow& window) {
  if (!window.handle()) return nullptr;
  QPlatformNativeInterface* native = QGuiApplication::platformNativeInterface();
  return static_cast<wl_surface*>(native->nativeResourceForWindow("surface", &window));
}

wl_output* WaylandSession::outputOf(QScreen& screen) {
  if (!screen.handle() || screen.handle()->isPlaceholder()) return nullptr;
  QPlatformNativeInterface* native = QGuiApplication::platformNativeInterface();
  return static_cast<wl_output*>(native->nativeResourceForScreen("output", &screen));
}

}  // namespace tarnwick
