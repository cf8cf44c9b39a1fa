#include "platform/wayland/PlasmaClientWindows.h"

#include <QGuiApplication>
#include <algorithm>
#include <utility>

#include "base/ForeignText.h"
#include "platform/wayland/WaylandPanel.h"
#include "platform/wayland/WaylandQueue.h"

namespace tarnwick {

/// One window. What is reported before the first event that all is reported is no change yet.
class PlasmaClientWindows::Window {
 public:
  Window(PlasmaClientWindows& owner, org_kde_plasma_window* handle, quint64 id) : owner_(owner), handle_(handle) {
    window_.id = id;
    static constexpr org_kde_plasma_window_listener kListener{
        .title_changed =
            [](void* data, org_kde_plasma_window*, const char* title) {
              of(data).window_.title = ForeignText::line(QString::fromUtf8(title));
              of(data).changed();
            },
        .app_id_changed =
            [](void* data, org_kde_plasma_window*, const char* name) {
              of(data).window_.applicationId = QString::fromUtf8(name);
              of(data).changed();
            },
        .state_changed = [](void* data, org_kde_plasma_window*, uint32_t flags) { of(data).setStates(flags); },
        .virtual_desktop_changed = [](void*, org_kde_plasma_window*, int32_t) {},
        .themed_icon_name_changed = [](void*, org_kde_plasma_window*, const char*) {},
        .unmapped = [](void* data, org_kde_plasma_window*) { of(data).owner_.ended(&of(data)); },
        .initial_state =
            [](void* data, org_kde_plasma_window*) {
              of(data).isKnown_ = true;
              of(data).changed();
            },
        .parent_window = [](void*, org_kde_plasma_window*, org_kde_plasma_window*) {},
        .geometry =
            [](void* data, org_kde_plasma_window*, int32_t x, int32_t y, uint32_t width, uint32_t height) {
              of(data).frame_ = QRect(x, y, static_cast<int>(width), static_cast<int>(height));
              of(data).owner_.table_->setFrame(of(data).id(), of(data).frame_);
              of(data).changed();
            },
        .icon_changed = [](void*, org_kde_plasma_window*) {},
        .pid_changed =
            [](void* data, org_kde_plasma_window*, uint32_t pid) {
              of(data).window_.pid = pid;
              of(data).changed();
            },
        .virtual_desktop_entered =
            [](void* data, org_kde_plasma_window*, const char* desktop) {
              of(data).desktops_.append(QString::fromUtf8(desktop));
              of(data).changed();
            },
        .virtual_desktop_left =
            [](void* data, org_kde_plasma_window*, const char* desktop) {
              of(data).desktops_.removeAll(QString::fromUtf8(desktop));
              of(data).changed();
            },
        .application_menu = [](void*, org_kde_plasma_window*, const char*, const char*) {},
        .activity_entered = [](void*, org_kde_plasma_window*, const char*) {},
        .activity_left = [](void*, org_kde_plasma_window*, const char*) {},
        .resource_name_changed = [](void*, org_kde_plasma_window*, const char*) {}};
    org_kde_plasma_window_add_listener(handle, &kListener, this);
  }

  org_kde_plasma_window* handle() const { return handle_.get(); }
  bool isKnown() const { return isKnown_; }
  quint64 id() const { return window_.id; }
  ClientWindow window(const QList<Screen>& screens, const PlasmaDesktops& desktops) const {
    ClientWindow window = window_;
    window.elsewhere = !desktops.shows(desktops_);
    // The compositor does not tell what is a bar or the ground. Both are in no taskbar, and bars in no switcher either.
    window.desktop =
        !window.inTaskbar && (skipsSwitcher_ || window.applicationId == QLatin1StringView("org.kde.plasmashell"));
    for (const Screen& screen : screens) {
      if (screen.frame.intersects(frame_)) window.screens.append(screen.id);
    }
    window.frame = reportedFrame();
    return window;
  }
  QRectF reportedFrame() const { return window_.fullscreen || owner_.reportsFrames_ ? frame_ : QRectF(); }

 private:
  static Window& of(void* data) { return *static_cast<Window*>(data); }

  void setStates(quint32 flags) {
    const auto has = [flags](quint32 state) { return (flags & state) != 0; };
    window_.active = has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE);
    window_.minimised = has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZED);
    window_.maximised = has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MAXIMIZED);
    window_.fullscreen = has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_FULLSCREEN);
    window_.urgent = has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_DEMANDS_ATTENTION);
    window_.inTaskbar = !has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_SKIPTASKBAR);
    window_.closable = has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_CLOSEABLE);
    window_.minimisable = has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZABLE);
    skipsSwitcher_ = has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_SKIPSWITCHER);
    changed();
  }
  void changed() {
    if (isKnown_) owner_.publishLater();
  }

  PlasmaClientWindows& owner_;
  WaylandOwned<org_kde_plasma_window> handle_;
  ClientWindow window_;
  QRectF frame_;
  QStringList desktops_;
  bool isKnown_ = false;
  bool skipsSwitcher_ = false;
};

std::unique_ptr<PlasmaClientWindows> PlasmaClientWindows::make(const WaylandSession& session,
                                                               const WaylandScreens& screens,
                                                               const WaylandPanels& panels) {
  WaylandQueue queue(session.display());
  auto manager = session.bindPlasmaWindows(queue);
  if (!manager) return nullptr;
  auto made = std::make_unique<PlasmaClientWindows>(session, std::move(manager), screens, panels);
  made->awaitAll(queue);
  return made;
}

PlasmaClientWindows::PlasmaClientWindows(const WaylandSession& session,
                                         WaylandOwned<org_kde_plasma_window_management> manager,
                                         const WaylandScreens& screens, const WaylandPanels& panels)
    : manager_(std::move(manager)),
      desktops_(session.bindPlasmaDesktops()),
      screens_(screens),
      panels_(panels),
      table_(std::make_shared<KWinWindowTable>()) {
  connect(&abilities_, &KWinAbilities::changed, this, &PlasmaClientWindows::changed);
  connect(&desktops_, &PlasmaDesktops::changed, this, &PlasmaClientWindows::publishLater);
  connect(&screens, &WaylandScreens::changed, this, &PlasmaClientWindows::publishLater);
  connect(&screens, &WaylandScreens::reserving, this, [this] { table_->keepPlaces(); });
  static constexpr org_kde_plasma_window_management_listener kListener{
      .show_desktop_changed = [](void*, org_kde_plasma_window_management*, uint32_t) {},
      .window =
          [](void* data, org_kde_plasma_window_management* from, uint32_t id) {
            static_cast<PlasmaClientWindows*>(data)->came(org_kde_plasma_window_management_get_window(from, id));
          },
      .stacking_order_changed = [](void*, org_kde_plasma_window_management*, wl_array*) {},
      .stacking_order_uuid_changed = [](void*, org_kde_plasma_window_management*, const char*) {},
      .window_with_uuid =
          [](void* data, org_kde_plasma_window_management* from, uint32_t, const char* id) {
            static_cast<PlasmaClientWindows*>(data)->came(org_kde_plasma_window_management_get_window_by_uuid(from, id),
                                                          QString::fromUtf8(id));
          }};
  org_kde_plasma_window_management_add_listener(manager_.get(), &kListener, this);
}

PlasmaClientWindows::~PlasmaClientWindows() = default;

/// Where they are must be known before a dock takes its place, for which KWin may move them: which there are, and then
/// what each is.
void PlasmaClientWindows::awaitAll(WaylandQueue& queue) {
  if (queue.waitForAnswers()) queue.waitForAnswers();
  WaylandQueue::release(manager_.get());
  for (const auto& one : known_) WaylandQueue::release(one->handle());
  queue.handleRest();
}

void PlasmaClientWindows::came(org_kde_plasma_window* handle, const QString& id) {
  table_->insert(++latest_, id);
  known_.push_back(std::make_unique<Window>(*this, handle, latest_));
}

void PlasmaClientWindows::ended(const Window* window) {
  table_->remove(window->id());
  std::erase_if(known_, [window](const auto& one) { return one.get() == window; });
  publishLater();
}

void PlasmaClientWindows::activate(quint64 id) {
  setState(id, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZED, false);
  setState(id, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE, true);
}

void PlasmaClientWindows::close(quint64 id) {
  if (auto* window = handle(id)) org_kde_plasma_window_close(window);
}

void PlasmaClientWindows::minimise(quint64 id) { setState(id, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZED, true); }

void PlasmaClientWindows::setIconGeometry(const QList<quint64>& windows, const QRectF& tile) {
  const WaylandPanel* panel = panels_.panelAt(tile);
  wl_surface* surface = panel ? panel->surface() : nullptr;
  if (!surface) return;
  const QRect place = tile.toRect().translated(-panel->frame().topLeft()) & QRect(QPoint(), panel->frame().size());
  const auto number = [](int value) { return static_cast<quint32>(std::max(0, value)); };
  for (const quint64 id : windows) {
    auto* window = handle(id);
    if (!window) continue;
    org_kde_plasma_window_set_minimized_geometry(window, surface, number(place.x()), number(place.y()),
                                                 number(place.width()), number(place.height()));
  }
}

void PlasmaClientWindows::setState(quint64 id, quint32 flag, bool on) {
  if (auto* window = handle(id)) org_kde_plasma_window_set_state(window, flag, on ? flag : 0);
}

org_kde_plasma_window* PlasmaClientWindows::handle(quint64 id) const {
  const auto found = std::ranges::find(known_, id, [](const auto& one) { return one->id(); });
  return found == known_.end() ? nullptr : (*found)->handle();
}

void PlasmaClientWindows::publishLater() {
  if (std::exchange(isPublishing_, true)) return;
  QMetaObject::invokeMethod(this, &PlasmaClientWindows::publish, Qt::QueuedConnection);
}

void PlasmaClientWindows::watchFrames(bool watched) {
  if (std::exchange(reportsFrames_, watched) == watched) return;
  for (ClientWindow& window : windows_) {
    const auto found = std::ranges::find(known_, window.id, [](const auto& one) { return one->id(); });
    if (found != known_.end()) window.frame = (*found)->reportedFrame();
  }
}

void PlasmaClientWindows::publish() {
  isPublishing_ = false;
  QList<ClientWindow> windows;
  const QList<Screen> screens = screens_.all();
  for (const auto& one : known_) {
    const ClientWindow window = one->window(screens, desktops_);
    if (one->isKnown() && window.pid != QCoreApplication::applicationPid()) windows.append(window);
  }
  replace(windows_, windows);
}

}  // namespace tarnwick
