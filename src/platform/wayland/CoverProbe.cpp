#include "platform/wayland/CoverProbe.h"

#include <QScreen>
#include <chrono>
#include <utility>

namespace tarnwick {
namespace {

/// The compositor reports a window's state before it shows the window so, and waits for it meanwhile.
constexpr std::chrono::milliseconds kSettling{400};
/// A compositor that draws below the window in front so often does so always.
constexpr int kContradictions = 2;

}  // namespace

CoverProbe::CoverProbe(const WaylandSession& session, QScreen& screen)
    : surface_(wl_compositor_create_surface(session.compositor())),
      role_(session, surface_.get(), WaylandSession::outputOf(screen), LayerLook::at(QRect(0, 0, 1, 1), Layer::Top),
            {}),
      picture_(session.clearBuffer(QSize(1, 1))) {
  wl_surface_set_input_region(surface_.get(), session.region({}).get());
  settling_.setSingleShot(true);
  settling_.setInterval(kSettling);
  connect(&settling_, &QTimer::timeout, this, &CoverProbe::ask);
}

CoverProbe::~CoverProbe() = default;

void CoverProbe::look(bool isActive) {
  const bool turns = std::exchange(isActive_, isActive) != isActive;
  if (turns && isActive) isUncovered_ = false;
  const bool asks = !frame_ && !isUncovered_ && contradictions_ < kContradictions;
  if (asks && (turns || !settling_.isActive())) settling_.start();
}

void CoverProbe::ask() {
  if (role_.isClosed() || !picture_ || frame_) return;
  static constexpr wl_callback_listener kListener{
      .done = [](void* data, wl_callback*, uint32_t) { static_cast<CoverProbe*>(data)->drawn(); }};
  frame_.reset(wl_surface_frame(surface_.get()));
  wl_callback_add_listener(frame_.get(), &kListener, this);
  wl_surface_attach(surface_.get(), picture_.get(), 0, 0);
  wl_surface_damage(surface_.get(), 0, 0, 1, 1);
  wl_surface_commit(surface_.get());
}

void CoverProbe::drawn() {
  frame_.reset();
  if (isActive_) {
    ++contradictions_;
    look(true);
  } else {
    isUncovered_ = true;
    Q_EMIT changed();
  }
}

}  // namespace tarnwick
