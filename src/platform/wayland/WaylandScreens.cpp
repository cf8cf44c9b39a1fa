#include "platform/wayland/WaylandScreens.h"

#include <QGuiApplication>
#include <algorithm>
#include <utility>

#include "desktop/ScreenIdentity.h"
#include "platform/wayland/KernelConnectors.h"
#include "platform/wayland/WaylandQueue.h"

namespace tarnwick {

WaylandScreens::WaylandScreens(const WaylandSession& session) : session_(session) {
  for (QScreen* screen : QGuiApplication::screens()) follow(screen);
  connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
    follow(screen);
    publishLater();
  });
  connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this](QScreen* screen) {
    forget(screen);
    publishLater();
  });
  publish();
}

WaylandScreens::~WaylandScreens() = default;

// While nothing is connected Qt makes a screen up.
void WaylandScreens::follow(QScreen* screen) {
  if (!WaylandSession::outputOf(*screen) || probes_.contains(screen)) return;
  connect(screen, &QScreen::geometryChanged, this, &WaylandScreens::publishLater);
  connect(screen, &QScreen::physicalDotsPerInchChanged, this, &WaylandScreens::publishLater);
  connect(screen, &QScreen::logicalDotsPerInchChanged, this, &WaylandScreens::publishLater);
  auto probe = std::make_unique<UsableProbe>(session_, *screen);
  connect(probe.get(), &UsableProbe::changed, this, &WaylandScreens::publishLater);
  probes_[screen] = std::move(probe);
}

void WaylandScreens::forget(QScreen* screen) {
  probes_.erase(screen);
  screen->disconnect(this);
}

Screen WaylandScreens::screen(const QString& id) const {
  const auto found = std::ranges::find(screens_, id, &Screen::id);
  return found == screens_.end() ? Screen() : *found;
}

QString WaylandScreens::idOf(const QScreen* screen) const {
  for (auto native = natives_.cbegin(); native != natives_.cend(); ++native) {
    if (*native == screen) return native.key();
  }
  return {};
}

QString WaylandScreens::idOf(const wl_output* output) const {
  for (auto native = natives_.cbegin(); native != natives_.cend(); ++native) {
    if (*native && WaylandSession::outputOf(**native) == output) return native.key();
  }
  return {};
}

// A surface without an output comes up on the one that is active, and is told which.
QString WaylandScreens::activeId() const {
  if (!session_.layerShell()) return {};
  struct Entered {
    const WaylandScreens& screens;
    QString id;
  } entered{*this, {}};
  static constexpr wl_surface_listener kListener{.enter =
                                                     [](void* data, wl_surface*, wl_output* output) {
                                                       auto& here = *static_cast<Entered*>(data);
                                                       if (const QString id = here.screens.idOf(output); !id.isEmpty())
                                                         here.id = id;
                                                     },
                                                 .leave = [](void*, wl_surface*, wl_output*) {}};
  WaylandQueue queue(session_.display());
  WaylandOwned<wl_surface> surface;
  {
    const WaylandQueue::Face<wl_compositor> face(queue, session_.compositor());
    surface.reset(wl_compositor_create_surface(face.get()));
  }
  wl_surface_add_listener(surface.get(), &kListener, &entered);
  wl_surface_set_input_region(surface.get(), session_.region({}).get());
  const LayerLook look = LayerLook::at(QRect(0, 0, 1, 1), Layer::Background);
  const LayerSurface role(session_, surface.get(), nullptr, look, {});
  if (role.isClosed()) return {};
  const auto buffer = session_.clearBuffer(QSize(1, 1));
  wl_surface_attach(surface.get(), buffer.get(), 0, 0);
  wl_surface_commit(surface.get());
  queue.waitForAnswers();
  return entered.id;
}

// What is usable is reported anew when the compositor has reserved the space; until then the old rectangle holds.
void WaylandScreens::noteReservation(const QString& id, Edge edge, int zone) {
  const Kept kept = edge == Edge::Top ? Kept{zone, 0} : Kept{0, zone};
  if (std::exchange(kept_[id], kept) != kept) Q_EMIT reserving();
}

void WaylandScreens::publishLater() {
  if (std::exchange(isPublishing_, true)) return;
  QMetaObject::invokeMethod(this, &WaylandScreens::publish, Qt::QueuedConnection);
}

void WaylandScreens::publish() {
  isPublishing_ = false;
  QList<QScreen*> natives;
  QList<ScreenIdentity::Source> sources;
  for (QScreen* screen : QGuiApplication::screens()) {
    if (!probes_.contains(screen)) continue;
    natives.append(screen);
    sources.append({.connector = screen->name(), .edid = KernelConnectors::edid(screen->name())});
  }
  const QStringList identities = ScreenIdentity::assign(sources);

  QList<Screen> screens;
  natives_.clear();
  for (qsizetype index = 0; index < natives.size(); ++index) {
    QScreen* native = natives[index];
    const QString& id = identities[index];
    const Kept kept = kept_.value(id);
    const QRect frame = native->geometry();
    const QRect usable = probes_[native]->area().marginsAdded(QMargins(0, kept.top, 0, kept.bottom));
    const std::optional<Edid>& edid = sources[index].edid;
    screens.append({.id = id,
                    .legacyId = {},
                    .name = edid && !edid->model.isEmpty() ? edid->model : native->name(),
                    .frame = frame,
                    .usable = usable.translated(frame.topLeft()) & frame,
                    .scale = native->devicePixelRatio()});
    natives_[id] = native;
  }
  if (std::exchange(screens_, screens) != screens) Q_EMIT changed();
}

}  // namespace tarnwick
