#pragma once

#include <wayland-client.h>

#include <memory>

// An argument there has a name that is a word of C++.
#define namespace namespace_
#include "wlr-layer-shell-unstable-v1-client.h"
#undef namespace
#include "ext-data-control-v1-client.h"
#include "plasma-blur-client.h"
#include "plasma-virtual-desktop-client.h"
#include "plasma-window-management-client.h"
#include "relative-pointer-unstable-v1-client.h"
#include "viewporter-client.h"
#include "wlr-data-control-unstable-v1-client.h"
#include "wlr-foreign-toplevel-management-unstable-v1-client.h"
#include "xdg-activation-v1-client.h"
#include "xdg-shell-client.h"

namespace tarnwick {

/// Ends protocol objects in the way that each of them wants.
struct WaylandDestroy {
  void operator()(wl_registry* object) const { wl_registry_destroy(object); }
  void operator()(wl_event_queue* object) const { wl_event_queue_destroy(object); }
  void operator()(wl_compositor* object) const { wl_compositor_destroy(object); }
  void operator()(wl_shm* object) const { wl_shm_destroy(object); }
  void operator()(wl_seat* object) const {
    if (wl_seat_get_version(object) >= WL_SEAT_RELEASE_SINCE_VERSION) {
      wl_seat_release(object);
    } else {
      wl_seat_destroy(object);
    }
  }
  void operator()(wl_region* object) const { wl_region_destroy(object); }
  void operator()(wl_callback* object) const { wl_callback_destroy(object); }
  void operator()(wl_buffer* object) const { wl_buffer_destroy(object); }
  // One that is only forgotten would still receive every motion.
  void operator()(wl_pointer* object) const {
    if (wl_pointer_get_version(object) >= WL_POINTER_RELEASE_SINCE_VERSION) {
      wl_pointer_release(object);
    } else {
      wl_pointer_destroy(object);
    }
  }
  void operator()(wl_surface* object) const { wl_surface_destroy(object); }
  void operator()(wp_viewporter* object) const { wp_viewporter_destroy(object); }
  void operator()(wp_viewport* object) const { wp_viewport_destroy(object); }
  void operator()(xdg_wm_base* object) const { xdg_wm_base_destroy(object); }
  void operator()(xdg_positioner* object) const { xdg_positioner_destroy(object); }
  void operator()(xdg_surface* object) const { xdg_surface_destroy(object); }
  void operator()(xdg_popup* object) const { xdg_popup_destroy(object); }
  void operator()(zwlr_layer_surface_v1* object) const { zwlr_layer_surface_v1_destroy(object); }
  void operator()(zwlr_layer_shell_v1* object) const {
    if (zwlr_layer_shell_v1_get_version(object) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION) {
      zwlr_layer_shell_v1_destroy(object);
    } else {
      wl_proxy_destroy(reinterpret_cast<wl_proxy*>(object));
    }
  }
  void operator()(zwp_relative_pointer_manager_v1* object) const { zwp_relative_pointer_manager_v1_destroy(object); }
  void operator()(zwp_relative_pointer_v1* object) const { zwp_relative_pointer_v1_destroy(object); }
  void operator()(xdg_activation_v1* object) const { xdg_activation_v1_destroy(object); }
  void operator()(xdg_activation_token_v1* object) const { xdg_activation_token_v1_destroy(object); }
  void operator()(org_kde_kwin_blur_manager* object) const { org_kde_kwin_blur_manager_destroy(object); }
  void operator()(org_kde_kwin_blur* object) const { org_kde_kwin_blur_release(object); }
  void operator()(org_kde_plasma_window* object) const {
    if (org_kde_plasma_window_get_version(object) >= ORG_KDE_PLASMA_WINDOW_DESTROY_SINCE_VERSION) {
      org_kde_plasma_window_destroy(object);
    } else {
      wl_proxy_destroy(reinterpret_cast<wl_proxy*>(object));
    }
  }
  void operator()(org_kde_plasma_window_management* object) const { org_kde_plasma_window_management_destroy(object); }
  void operator()(org_kde_plasma_virtual_desktop* object) const { org_kde_plasma_virtual_desktop_destroy(object); }
  void operator()(org_kde_plasma_virtual_desktop_management* object) const {
    org_kde_plasma_virtual_desktop_management_destroy(object);
  }
  void operator()(ext_data_control_manager_v1* object) const { ext_data_control_manager_v1_destroy(object); }
  void operator()(ext_data_control_device_v1* object) const { ext_data_control_device_v1_destroy(object); }
  void operator()(ext_data_control_source_v1* object) const { ext_data_control_source_v1_destroy(object); }
  void operator()(ext_data_control_offer_v1* object) const { ext_data_control_offer_v1_destroy(object); }
  void operator()(zwlr_data_control_manager_v1* object) const { zwlr_data_control_manager_v1_destroy(object); }
  void operator()(zwlr_data_control_device_v1* object) const { zwlr_data_control_device_v1_destroy(object); }
  void operator()(zwlr_data_control_source_v1* object) const { zwlr_data_control_source_v1_destroy(object); }
  void operator()(zwlr_data_control_offer_v1* object) const { zwlr_data_control_offer_v1_destroy(object); }
  void operator()(zwlr_foreign_toplevel_handle_v1* object) const { zwlr_foreign_toplevel_handle_v1_destroy(object); }
  void operator()(zwlr_foreign_toplevel_manager_v1* object) const { zwlr_foreign_toplevel_manager_v1_destroy(object); }
};

/// A protocol object that is destroyed with its owner, who must not outlive the connection.
template <typename Object>
using WaylandOwned = std::unique_ptr<Object, WaylandDestroy>;

}  // namespace tarnwick
