#include "audio/GainRenderer.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstring>
#include <functional>
#include <new>

namespace tarnwick {

struct tw_gain_state {
  std::atomic<float> target{1};
  std::atomic<std::uint8_t> faulted{0};
  float current = 0;
  float step = 0;  ///< The most by which `current` changes with a frame.
};

namespace {

constexpr std::uint32_t kMostChannels = 8;
constexpr std::uint32_t kMostInputs = 2;
constexpr std::uint32_t kSampleBytes = sizeof(float);
constexpr double kLeastRate = 8000;
constexpr double kMostRate = 384'000;
constexpr double kRampSeconds = 0.005;
constexpr std::uint32_t kExponent = 0x7f80'0000;

/// Four samples that are computed with at once; every processor can, one after the other if need be.
using Four [[gnu::vector_size(16)]] = float;
using FourBits [[gnu::vector_size(16)]] = std::uint32_t;

/// Where the samples of each channel stand.
struct Channels {
  std::uint32_t frames = 0;
  std::uint32_t count = 0;
  std::array<std::byte*, kMostChannels> first;  ///< Null where there are none.
  std::array<std::uint32_t, kMostChannels> stride;

  std::byte* at(std::uint32_t channel, std::uint32_t frame) const {
    return first[channel] + std::size_t{stride[channel]} * frame * kSampleBytes;
  }
};

/// False where a list has no such shape.
bool find(const AudioBufferList& list, Channels& channels) {
  if (!list.mBuffers || list.mNumberBuffers < 1 || list.mNumberBuffers > kMostChannels) return false;
  for (std::uint32_t i = 0; i < list.mNumberBuffers; ++i) {
    const AudioBuffer& buffer = list.mBuffers[i];
    const std::uint32_t width = buffer.mNumberChannels;
    if (width < 1 || width > kMostChannels - channels.count) return false;
    if (buffer.mDataByteSize % (kSampleBytes * width) != 0) return false;
    const std::uint32_t frames = buffer.mDataByteSize / (kSampleBytes * width);
    if (i == 0) channels.frames = frames;
    if (frames != channels.frames) return false;
    auto* data = static_cast<std::byte*>(buffer.mData);
    for (std::uint32_t c = 0; c < width; ++c, ++channels.count) {
      channels.first[channels.count] = data ? data + c * kSampleBytes : nullptr;
      channels.stride[channels.count] = width;
    }
  }
  return true;
}

void silence(const AudioBufferList& list) {
  if (!list.mBuffers) return;
  for (std::uint32_t i = 0; i < list.mNumberBuffers; ++i)
    if (list.mBuffers[i].mData) std::memset(list.mBuffers[i].mData, 0, list.mBuffers[i].mDataByteSize);
}

template <class Value>
Value load(const std::byte* from) {
  Value value;
  std::memcpy(&value, from, sizeof value);
  return value;
}

template <class Value>
void store(std::byte* to, Value value) {
  std::memcpy(to, &value, sizeof value);
}

// What is finite is told by the bits: a compiler that was told to compute fast may take it for granted.
float finite(const std::byte* from) {
  const auto bits = load<std::uint32_t>(from);
  return (bits & kExponent) == kExponent ? 0 : load<float>(from);
}

Four fourFinite(const std::byte* from) {
  const auto bits = load<FourBits>(from);
  const auto isNone = reinterpret_cast<FourBits>((bits & kExponent) == kExponent);
  return reinterpret_cast<Four>(bits & ~isNone);
}

/// The gains of frames that follow each other, where they do not change.
class SteadyGain {
 public:
  explicit SteadyGain(float gain) : one_(gain), four_{gain, gain, gain, gain} {}

  float next() const { return one_; }
  Four nextFour() const { return four_; }
  Four nextTwoTwice() const { return four_; }

 private:
  float one_;
  Four four_;
};

/// And where each differs from the one before by as much. Added up one after the other, as rounding has it: many steps
/// at once would come to another value.
class RampGain {
 public:
  RampGain(float& current, float step) : current_(current), step_(step) {}

  float next() { return current_ += step_; }
  Four nextFour() {
    const float first = current_ + step_;
    const float second = first + step_;
    const float third = second + step_;
    current_ = third + step_;
    return Four{first, second, third, current_};
  }
  Four nextTwoTwice() {
    const float first = current_ + step_;
    current_ = first + step_;
    return Four{first, first, current_, current_};
  }

 private:
  float& current_;
  float step_;
};

/// From one input to one output, which are of the same length.
class Block {
 public:
  Block(const Channels& from, const Channels& to) : from_(from), to_(to), shape_(shapeOf(from, to)) {}

  template <class Gain>
  void render(std::uint32_t start, std::uint32_t count, Gain gain) const {
    std::uint32_t done = 0;
    if (shape_ == Shape::Interleaved) {
      done = count - count % 2;
      const std::byte* from = from_.at(0, start);
      std::byte* to = to_.at(0, start);
      for (std::size_t i = 0; i < done * 2 * kSampleBytes; i += sizeof(Four))
        store(to + i, fourFinite(from + i) * gain.nextTwoTwice());
    } else if (shape_ == Shape::Separate) {
      done = count - count % 4;
      const std::array from{from_.at(0, start), from_.at(1, start)};
      const std::array to{to_.at(0, start), to_.at(1, start)};
      for (std::size_t i = 0; i < done * kSampleBytes; i += sizeof(Four)) {
        const Four four = gain.nextFour();
        const Four left = fourFinite(from[0] + i) * four;
        const Four right = fourFinite(from[1] + i) * four;
        store(to[0] + i, left);
        store(to[1] + i, right);
      }
    }
    for (; done < count; ++done) renderFrame(start + done, gain.next());
  }

 private:
  enum class Shape { Interleaved, Separate, Other };

  /// Shapes of which several frames can be done at once: two channels, the same way on both sides.
  static Shape shapeOf(const Channels& from, const Channels& to) {
    if (from.count != 2 || to.count != 2) return Shape::Other;
    const std::array all{from.first[0], from.first[1], to.first[0], to.first[1]};
    if (std::ranges::find(all, nullptr) != all.end()) return Shape::Other;
    const std::uint32_t stride = from.stride[0];
    if (stride != from.stride[1] || stride != to.stride[0] || stride != to.stride[1]) return Shape::Other;
    const std::size_t bytes = std::size_t{from.frames} * stride * kSampleBytes;
    if (stride == 2) return isApart(all[0], all[2], bytes) ? Shape::Interleaved : Shape::Other;
    const bool areApart = isApart(all[0], all[2], bytes) && isApart(all[0], all[3], bytes) &&
                          isApart(all[1], all[2], bytes) && isApart(all[1], all[3], bytes) &&
                          isApart(all[2], all[3], bytes);
    return areApart ? Shape::Separate : Shape::Other;
  }

  /// Whether no sample is written that a later frame still reads.
  static bool isApart(const std::byte* a, const std::byte* b, std::size_t bytes) {
    const std::less_equal<> upTo;
    return a == b || upTo(a + bytes, b) || upTo(b + bytes, a);
  }

  void renderFrame(std::uint32_t frame, float gain) const {
    const float left = sample(0, frame) * gain;
    const float right = from_.count == 1 ? left : sample(1, frame) * gain;
    put(0, frame, to_.count == 1 ? 0.5F * left + 0.5F * right : left);
    if (to_.count > 1) put(1, frame, right);
    for (std::uint32_t channel = 2; channel < to_.count; ++channel) put(channel, frame, 0);
  }
  float sample(std::uint32_t channel, std::uint32_t frame) const {
    return from_.first[channel] ? finite(from_.at(channel, frame)) : 0;
  }
  void put(std::uint32_t channel, std::uint32_t frame, float value) const {
    if (to_.first[channel]) store(to_.at(channel, frame), value);
  }

  const Channels& from_;
  const Channels& to_;
  const Shape shape_;
};

/// How many frames surely change the gain by a whole step, whatever is lost by rounding, which is far less than a step.
std::uint32_t wholeSteps(float distance, float step) {
  return std::max(static_cast<std::uint32_t>(distance / step), 1U) - 1;
}

/// Moves the gain towards its target and renders until it is there; how many frames that takes, all of them at most.
std::uint32_t renderRamp(const Block& block, std::uint32_t frames, float& current, float target, float step) {
  std::uint32_t done = 0;
  while (done < frames && current != target) {
    const float distance = std::abs(target - current);
    const std::uint32_t whole = std::min(wholeSteps(distance, step), frames - done);
    const float change = target < current ? -step : step;
    if (whole > 0) {
      float gain = current;
      block.render(done, whole, RampGain(gain, change));
      current = gain;
      done += whole;
    } else {
      current = distance > step ? current + change : target;
      block.render(done, 1, SteadyGain(current));
      ++done;
    }
  }
  return done;
}

}  // namespace

tw_gain_state* tw_gain_create() { return new (std::nothrow) tw_gain_state; }

void tw_gain_destroy(tw_gain_state* state) { delete state; }

void tw_gain_set(tw_gain_state* state, float gain) {
  if (state && std::isfinite(gain)) state->target.store(std::clamp(gain, 0.0F, 1.0F), std::memory_order_relaxed);
}

void tw_gain_prepare(tw_gain_state* state, float gain, double sampleRate) {
  if (!state || !std::isfinite(gain) || !(sampleRate >= kLeastRate && sampleRate <= kMostRate)) return;
  state->current = std::clamp(gain, 0.0F, 1.0F);
  state->target.store(state->current, std::memory_order_relaxed);
  state->step = static_cast<float>(1.0 / (sampleRate * kRampSeconds));
}

bool tw_gain_faulted(const tw_gain_state* state) {
  return state && state->faulted.load(std::memory_order_relaxed) != 0;
}

void tw_gain_render(tw_gain_state* state, const AudioBufferList* input, const AudioBufferList* output) {
  if (!state || !output) return;
  if (!input || input->mNumberBuffers == 0 || !input->mBuffers) {
    silence(*output);
    return;
  }
  Channels from;
  Channels to;
  if (!find(*input, from) || !find(*output, to) || from.count > kMostInputs || from.frames != to.frames) {
    silence(*output);
    state->faulted.store(1, std::memory_order_relaxed);
    return;
  }
  const float target = state->target.load(std::memory_order_relaxed);
  if (state->step == 0) state->current = target;
  const Block block(from, to);
  const std::uint32_t ramped = renderRamp(block, from.frames, state->current, target, state->step);
  block.render(ramped, from.frames - ramped, SteadyGain(target));
}

}  // namespace tarnwick
