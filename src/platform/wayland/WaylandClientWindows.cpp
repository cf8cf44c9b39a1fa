#include "platform/wayland/WaylandClientWindows.h"

#include <QGuiApplication>
#include <algorithm>
#include <span>
#include <utility>

#include "base/ForeignText.h"
#include "platform/wayland/WaylandPanel.h"

namespace tarnwick {

/// One window. The compositor sends its properties one by one and then that they belong together.
class WaylandClientWindows::Toplevel {
 public:
  Toplevel(WaylandClientWindows& owner, zwlr_foreign_toplevel_handle_v1* handle, quint64 id)
      : owner_(owner), handle_(handle) {
    coming_.id = id;
    static constexpr zwlr_foreign_toplevel_handle_v1_listener kListener{
        .title = [](void* data, zwlr_foreign_toplevel_handle_v1*,
                    const char* title) { of(data).coming_.title = ForeignText::line(QString::fromUtf8(title)); },
        .app_id = [](void* data, zwlr_foreign_toplevel_handle_v1*,
                     const char* name) { of(data).coming_.applicationId = QString::fromUtf8(name); },
        .output_enter = [](void* data, zwlr_foreign_toplevel_handle_v1*, wl_output* output) { of(data).enter(output); },
        .output_leave = [](void* data, zwlr_foreign_toplevel_handle_v1*,
                           wl_output* output) { of(data).comingOutputs_.removeAll(output); },
        .state = [](void* data, zwlr_foreign_toplevel_handle_v1*, wl_array* states) { of(data).setStates(*states); },
        .done = [](void* data, zwlr_foreign_toplevel_handle_v1*) { of(data).done(); },
        .closed = [](void* data, zwlr_foreign_toplevel_handle_v1*) { of(data).owner_.ended(&of(data)); },
        .parent = [](void*, zwlr_foreign_toplevel_handle_v1*, zwlr_foreign_toplevel_handle_v1*) {}};
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &kListener, this);
  }

  zwlr_foreign_toplevel_handle_v1* handle() const { return handle_.get(); }
  bool isKnown() const { return isKnown_; }
  const ClientWindow& window() const { return window_; }
  const QList<wl_output*>& outputs() const { return outputs_; }
  /// Another output may come to the same address.
  void forget(wl_output* output) {
    comingOutputs_.removeAll(output);
    outputs_.removeAll(output);
  }

 private:
  static Toplevel& of(void* data) { return *static_cast<Toplevel*>(data); }

  // Nothing stands for an output that went away meanwhile.
  void enter(wl_output* output) {
    if (output && !comingOutputs_.contains(output)) comingOutputs_.append(output);
  }
  void setStates(const wl_array& states) {
    const std::span words(static_cast<const uint32_t*>(states.data), states.size / sizeof(uint32_t));
    const auto has = [&](uint32_t state) { return std::ranges::find(words, state) != words.end(); };
    coming_.active = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
    coming_.minimised = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED);
    coming_.fullscreen = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_FULLSCREEN);
  }
  void done() {
    isKnown_ = true;
    window_ = coming_;
    outputs_ = comingOutputs_;
    owner_.publishLater();
  }

  WaylandClientWindows& owner_;
  WaylandOwned<zwlr_foreign_toplevel_handle_v1> handle_;
  ClientWindow coming_;
  QList<wl_output*> comingOutputs_;
  ClientWindow window_;
  QList<wl_output*> outputs_;
  bool isKnown_ = false;
};

WaylandClientWindows::WaylandClientWindows(const WaylandSession& session, const WaylandScreens& screens,
                                           const WaylandPanels* panels)
    : session_(session), screens_(screens), panels_(panels), manager_(session.bindToplevels()) {
  connect(&screens, &WaylandScreens::changed, this, &WaylandClientWindows::publishLater);
  connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this](QScreen* screen) {
    for (const auto& toplevel : toplevels_) toplevel->forget(WaylandSession::outputOf(*screen));
  });
  if (!manager_) return;
  static constexpr zwlr_foreign_toplevel_manager_v1_listener kListener{
      .toplevel =
          [](void* data, zwlr_foreign_toplevel_manager_v1*, zwlr_foreign_toplevel_handle_v1* handle) {
            auto* self = static_cast<WaylandClientWindows*>(data);
            self->toplevels_.push_back(std::make_unique<Toplevel>(*self, handle, ++self->latest_));
          },
      .finished = [](void* data,
                     zwlr_foreign_toplevel_manager_v1*) { static_cast<WaylandClientWindows*>(data)->finished(); }};
  zwlr_foreign_toplevel_manager_v1_add_listener(manager_.get(), &kListener, this);
}

WaylandClientWindows::~WaylandClientWindows() {
  if (manager_) zwlr_foreign_toplevel_manager_v1_stop(manager_.get());
}

Capability WaylandClientWindows::capability() const {
  if (manager_) return Capability::yes();
  return Capability::no(tr("This desktop does not let apps see which windows are open."));
}

Capability WaylandClientWindows::workspaces() const {
  if (!manager_) return capability();
  return Capability::no(tr("This desktop does not let apps see which workspace a window is on."));
}

Capability WaylandClientWindows::frames() const {
  if (!manager_) return capability();
  return Capability::no(tr("This desktop does not tell other apps where windows are."));
}

Capability WaylandClientWindows::attention() const {
  if (!manager_) return capability();
  return Capability::no(tr("This desktop does not tell which windows ask for attention."));
}

void WaylandClientWindows::activate(quint64 id) {
  if (auto* window = handle(id); window && session_.seat()) {
    zwlr_foreign_toplevel_handle_v1_activate(window, session_.seat());
  }
}

void WaylandClientWindows::close(quint64 id) {
  if (auto* window = handle(id)) zwlr_foreign_toplevel_handle_v1_close(window);
}

void WaylandClientWindows::minimise(quint64 id) {
  if (auto* window = handle(id)) zwlr_foreign_toplevel_handle_v1_set_minimized(window);
}

void WaylandClientWindows::setIconGeometry(const QList<quint64>& windows, const QRectF& tile) {
  const WaylandPanel* panel = panels_ ? panels_->panelAt(tile) : nullptr;
  wl_surface* surface = panel ? panel->surface() : nullptr;
  if (!surface) return;
  const QRect place = tile.toRect().translated(-panel->frame().topLeft());
  for (const quint64 id : windows) {
    auto* window = handle(id);
    if (!window) continue;
    zwlr_foreign_toplevel_handle_v1_set_rectangle(window, surface, place.x(), place.y(), place.width(), place.height());
  }
}

zwlr_foreign_toplevel_handle_v1* WaylandClientWindows::handle(quint64 id) const {
  const auto found = std::ranges::find_if(toplevels_, [id](const auto& one) { return one->window().id == id; });
  return found == toplevels_.end() ? nullptr : (*found)->handle();
}

void WaylandClientWindows::ended(const Toplevel* toplevel) {
  std::erase_if(toplevels_, [toplevel](const auto& one) { return one.get() == toplevel; });
  publishLater();
}

void WaylandClientWindows::finished() {
  toplevels_.clear();
  manager_.reset();
  publishLater();
}

void WaylandClientWindows::publishLater() {
  if (std::exchange(isPublishing_, true)) return;
  QMetaObject::invokeMethod(this, &WaylandClientWindows::publish, Qt::QueuedConnection);
}

void WaylandClientWindows::publish() {
  isPublishing_ = false;
  QList<ClientWindow> windows = known();
  lookBelow(windows);
  for (ClientWindow& one : windows) {
    const auto probe = one.fullscreen ? probes_.find(one.screens.value(0)) : probes_.end();
    one.elsewhere = probe != probes_.end() && probe->second->isUncovered();
  }
  if (std::exchange(windows_, windows) != windows) Q_EMIT changed();
}

QList<ClientWindow> WaylandClientWindows::known() const {
  QList<ClientWindow> windows;
  for (const auto& toplevel : toplevels_) {
    ClientWindow one = toplevel->window();
    const bool isOurs = !one.applicationId.isEmpty() && one.applicationId == QGuiApplication::desktopFileName();
    if (!toplevel->isKnown() || isOurs) continue;
    for (const wl_output* output : toplevel->outputs()) {
      const QString id = screens_.idOf(output);
      if (!id.isEmpty()) one.screens.append(id);
    }
    // It may fill several displays at once.
    if (one.fullscreen)
      for (const QString& id : one.screens) one.frame |= screens_.screen(id).frame;
    windows.append(one);
  }
  return windows;
}

void WaylandClientWindows::lookBelow(const QList<ClientWindow>& windows) {
  std::map<QString, bool> actives;
  for (const ClientWindow& one : windows) {
    if (one.fullscreen && !one.screens.isEmpty()) actives[one.screens.first()] |= one.active;
  }
  std::erase_if(probes_, [&](const auto& entry) { return !actives.contains(entry.first); });
  for (const auto& [id, isActive] : actives) {
    QScreen* screen = screens_.native(id);
    if (!screen || !session_.layerShell()) continue;
    auto& probe = probes_[id];
    if (!probe) {
      probe = std::make_unique<CoverProbe>(session_, *screen);
      connect(probe.get(), &CoverProbe::changed, this, &WaylandClientWindows::publishLater);
    }
    probe->look(isActive);
  }
}

}  // namespace tarnwick
