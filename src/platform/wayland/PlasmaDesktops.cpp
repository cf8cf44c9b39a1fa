#include "platform/wayland/PlasmaDesktops.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

class PlasmaDesktops::Desktop {
 public:
  Desktop(PlasmaDesktops& owner, QString id, org_kde_plasma_virtual_desktop* handle)
      : owner_(owner), id_(std::move(id)), handle_(handle) {
    static constexpr org_kde_plasma_virtual_desktop_listener kListener{
        .desktop_id = [](void*, org_kde_plasma_virtual_desktop*, const char*) {},
        .name = [](void*, org_kde_plasma_virtual_desktop*, const char*) {},
        .activated = [](void* data, org_kde_plasma_virtual_desktop*) { setShown(data, true); },
        .deactivated = [](void* data, org_kde_plasma_virtual_desktop*) { setShown(data, false); },
        .done = [](void*, org_kde_plasma_virtual_desktop*) {},
        .removed = [](void* data, org_kde_plasma_virtual_desktop*) { setShown(data, false); }};
    org_kde_plasma_virtual_desktop_add_listener(handle, &kListener, this);
  }

 private:
  static void setShown(void* data, bool isShown) {
    const auto& self = *static_cast<Desktop*>(data);
    self.owner_.setShown(self.id_, isShown);
  }

  PlasmaDesktops& owner_;
  QString id_;
  WaylandOwned<org_kde_plasma_virtual_desktop> handle_;
};

PlasmaDesktops::PlasmaDesktops(WaylandOwned<org_kde_plasma_virtual_desktop_management> manager)
    : manager_(std::move(manager)) {
  if (!manager_) return;
  static constexpr org_kde_plasma_virtual_desktop_management_listener kListener{
      .desktop_created =
          [](void* data, org_kde_plasma_virtual_desktop_management* from, const char* name, uint32_t) {
            auto* self = static_cast<PlasmaDesktops*>(data);
            const QString id = QString::fromUtf8(name);
            self->desktops_[id] = std::make_unique<Desktop>(
                *self, id, org_kde_plasma_virtual_desktop_management_get_virtual_desktop(from, name));
          },
      .desktop_removed =
          [](void* data, org_kde_plasma_virtual_desktop_management*, const char* name) {
            auto* self = static_cast<PlasmaDesktops*>(data);
            const QString id = QString::fromUtf8(name);
            self->desktops_.erase(id);
            self->setShown(id, false);
          },
      .done = [](void*, org_kde_plasma_virtual_desktop_management*) {},
      .rows = [](void*, org_kde_plasma_virtual_desktop_management*, uint32_t) {}};
  org_kde_plasma_virtual_desktop_management_add_listener(manager_.get(), &kListener, this);
}

PlasmaDesktops::~PlasmaDesktops() = default;

// Between two desktops, and before anything was reported, none of them is.
bool PlasmaDesktops::shows(const QStringList& desktops) const {
  const auto isShown = [this](const QString& id) { return shown_.contains(id); };
  return desktops.isEmpty() || shown_.isEmpty() || std::ranges::any_of(desktops, isShown);
}

void PlasmaDesktops::setShown(const QString& id, bool isShown) {
  if (shown_.contains(id) == isShown) return;
  isShown ? void(shown_.insert(id)) : void(shown_.remove(id));
  Q_EMIT changed();
}

}  // namespace tarnwick
