#include "platform/sound/module/PulseOutput.h"

#include <utility>

namespace tarnwick {
namespace {

PulseOutput* self(void* data) { return static_cast<PulseOutput*>(data); }

/// Operations are not waited for; their answers come by themselves.
void forget(pa_operation* operation) {
  if (operation) pa_operation_unref(operation);
}

class LoopLock {
 public:
  explicit LoopLock(pa_threaded_mainloop* loop) : loop_(loop) { pa_threaded_mainloop_lock(loop_); }
  ~LoopLock() { pa_threaded_mainloop_unlock(loop_); }
  LoopLock(const LoopLock&) = delete;
  LoopLock& operator=(const LoopLock&) = delete;

 private:
  pa_threaded_mainloop* loop_;
};

}  // namespace

PulseOutput::PulseOutput(const QByteArray& address, Changed changed)
    : changed_(std::move(changed)), loop_(pa_threaded_mainloop_new()) {
  context_ = pa_context_new(pa_threaded_mainloop_get_api(loop_), "Tarnwick");
  pa_context_set_state_callback(
      context_, [](pa_context*, void* data) { self(data)->contextChanged(); }, this);
  const char* server = address.isEmpty() ? nullptr : address.constData();
  // The first steps may already fail and say so; the thread takes over where they end.
  if (pa_context_connect(context_, server, PA_CONTEXT_NOAUTOSPAWN, nullptr) >= 0) pa_threaded_mainloop_start(loop_);
}

PulseOutput::~PulseOutput() {
  {
    const LoopLock lock(loop_);
    pa_context_set_state_callback(context_, nullptr, nullptr);
    pa_context_set_subscribe_callback(context_, nullptr, nullptr);
    // Questions that are still open are dropped with it.
    pa_context_disconnect(context_);
  }
  pa_threaded_mainloop_stop(loop_);
  pa_context_unref(context_);
  pa_threaded_mainloop_free(loop_);
}

void PulseOutput::contextChanged() {
  const pa_context_state_t state = pa_context_get_state(context_);
  if (state == PA_CONTEXT_FAILED || state == PA_CONTEXT_TERMINATED) {
    state_ = {};
    changed_(state_);
  }
  if (state != PA_CONTEXT_READY) return;
  pa_context_set_subscribe_callback(
      context_,
      [](pa_context*, pa_subscription_event_type_t event, uint32_t, void* data) {
        const bool ofServer = (event & PA_SUBSCRIPTION_EVENT_FACILITY_MASK) == PA_SUBSCRIPTION_EVENT_SERVER;
        ofServer ? self(data)->askForDefault() : self(data)->askForOutput();
      },
      this);
  const auto events = static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SERVER | PA_SUBSCRIPTION_MASK_SINK);
  forget(pa_context_subscribe(context_, events, nullptr, nullptr));
  askForDefault();
}

void PulseOutput::askForDefault() {
  forget(pa_context_get_server_info(
      context_,
      [](pa_context*, const pa_server_info* server, void* data) {
        self(data)->sink_ = server ? QByteArray(server->default_sink_name) : QByteArray();
        self(data)->askForOutput();
      },
      this));
}

void PulseOutput::askForOutput() {
  if (sink_.isEmpty()) {
    state_ = {.connected = true};
    return changed_(state_);
  }
  forget(pa_context_get_sink_info_by_name(
      context_, sink_.constData(),
      [](pa_context*, const pa_sink_info* sink, int end, void* data) {
        PulseOutput& output = *self(data);
        if (end > 0) return;
        output.state_ = {.connected = true, .hasOutput = sink != nullptr, .muted = sink && sink->mute != 0};
        output.changed_(output.state_);
      },
      this));
}

void PulseOutput::setMuted(bool muted) {
  const LoopLock lock(loop_);
  if (pa_context_get_state(context_) != PA_CONTEXT_READY || sink_.isEmpty()) return changed_(state_);
  forget(pa_context_set_sink_mute_by_name(
      context_, sink_.constData(), muted ? 1 : 0, [](pa_context*, int, void* data) { self(data)->askForOutput(); },
      this));
}

}  // namespace tarnwick
