#include "platform/wayland/UsableProbe.h"

#include <QScreen>
#include <optional>
#include <utility>

#include "platform/wayland/PopupSurface.h"

namespace tarnwick {
namespace {

constexpr int kFarOff = 30'000;
/// Where a small window far off at the upper left of `parent` ends up, in the parent's coordinates.
std::optional<QPoint> slidIn(const WaylandSession& session, const LayerSurface& parent) {
  const WaylandOwned<wl_surface> surface(wl_compositor_create_surface(session.compositor()));
  const PopupSurface window(
      session, surface.get(), parent, QRect(-kFarOff, -kFarOff, 1, 1), [] {}, PopupSurface::Fit::SlidIn);
  return window.isClosed() ? std::nullopt : std::optional(window.corner());
}

}  // namespace

UsableProbe::UsableProbe(const WaylandSession& session, QScreen& screen)
    : session_(session), screen_(&screen), surface_(wl_compositor_create_surface(session.compositor())) {
  connect(&screen, &QScreen::geometryChanged, this, &UsableProbe::measureLater);
  measure();
  if (!session.layerShell()) return;
  LayerSurface::Listener listener;
  listener.resized = [this](const QSize&) { measureLater(); };
  role_ = std::make_unique<LayerSurface>(session, surface_.get(), WaylandSession::outputOf(screen),
                                         LayerLook::between(), std::move(listener));
  measure();
}

UsableProbe::~UsableProbe() = default;

void UsableProbe::measureLater() {
  if (std::exchange(isMeasuring_, true)) return;
  QMetaObject::invokeMethod(this, &UsableProbe::measure, Qt::QueuedConnection);
}

void UsableProbe::measure() {
  isMeasuring_ = false;
  if (!screen_ || !WaylandSession::outputOf(*screen_)) return;
  const QRect whole(QPoint(), screen_->size());
  QRect area = whole;
  if (role_ && !role_->isClosed() && !role_->size().isEmpty() && role_->size() != whole.size()) {
    area = QRect(corner(), role_->size()) & whole;
  }
  if (std::exchange(area_, area) != area) Q_EMIT changed();
}

QPoint UsableProbe::corner() const {
  const WaylandOwned<wl_surface> surface(wl_compositor_create_surface(session_.compositor()));
  LayerLook whole = LayerLook::between();
  whole.zone = LayerLook::kIgnoresOthers;
  const LayerSurface role(session_, surface.get(), WaylandSession::outputOf(*screen_), whole, {});
  if (role.isClosed()) return {};
  const auto inWhole = slidIn(session_, role);
  const auto inUsable = slidIn(session_, *role_);
  return inWhole && inUsable ? *inWhole - *inUsable : QPoint();
}

}  // namespace tarnwick
