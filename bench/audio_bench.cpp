#include <benchmark/benchmark.h>

#include <array>
#include <vector>

#include "audio/ScalarGain.h"

namespace {

using namespace tarnwick;

constexpr std::uint32_t kFrames = 256;
constexpr double kRate = 48'000;

/// A cycle of stereo, interleaved or a buffer a side, as long as a device asks for at a time.
struct Cycle {
  explicit Cycle(bool isInterleaved) {
    for (std::size_t i = 0; i < from.size(); ++i) from[i] = static_cast<float>(i % 200) / 200;
    const std::uint32_t width = isInterleaved ? 2 : 1;
    const std::uint32_t bytes = width * kFrames * 4;
    inputs = {AudioBuffer{width, bytes, from.data()}, {width, bytes, from.data() + kFrames}};
    outputs = {AudioBuffer{width, bytes, to.data()}, {width, bytes, to.data() + kFrames}};
    input = {isInterleaved ? 1U : 2U, inputs.data()};
    output = {isInterleaved ? 1U : 2U, outputs.data()};
  }

  std::vector<float> from = std::vector<float>(2 * kFrames);
  std::vector<float> to = std::vector<float>(2 * kFrames);
  std::array<AudioBuffer, 2> inputs;
  std::array<AudioBuffer, 2> outputs;
  AudioBufferList input;
  AudioBufferList output;
};

void label(benchmark::State& state, const char* promise) {
  using benchmark::Counter;
  const auto frames = static_cast<double>(kFrames) * static_cast<double>(state.iterations());
  state.counters["per frame"] = Counter(frames, Counter::kIsRate | Counter::kInvert);
  state.SetLabel(promise);
}

/// Gains that stay, or of which no cycle sees the end of a ramp: 240 frames lie between the two, and the rate is such
/// that one takes longer than a cycle.
struct Setting {
  double rate;
  float even;
  float odd;
};
constexpr Setting kSteady{kRate, 0.5F, 0.5F};
constexpr Setting kRamping{2 * kRate, 1, 0};

void render(benchmark::State& state, bool isInterleaved, const Setting& setting, const char* promise) {
  const Cycle cycle(isInterleaved);
  tw_gain_state* gain = tw_gain_create();
  tw_gain_prepare(gain, setting.even, setting.rate);
  bool isOdd = false;
  for (auto _ : state) {
    isOdd = !isOdd;
    tw_gain_set(gain, isOdd ? setting.odd : setting.even);
    tw_gain_render(gain, &cycle.input, &cycle.output);
    benchmark::ClobberMemory();
  }
  tw_gain_destroy(gain);
  label(state, promise);
}
BENCHMARK_CAPTURE(render, interleaved_steady, true, kSteady, "the promise is 0.7 ns a frame");
BENCHMARK_CAPTURE(render, two_buffers_steady, false, kSteady, "the promise is 0.7 ns a frame");
BENCHMARK_CAPTURE(render, interleaved_ramping, true, kRamping, "the promise is 2.0 ns a frame");
BENCHMARK_CAPTURE(render, two_buffers_ramping, false, kRamping, "the promise is 2.0 ns a frame");

// The same frame by frame, for comparison: the shape is known beforehand, so nothing but the samples takes its time.
void scalar(benchmark::State& state, const Setting& setting) {
  Cycle cycle(true);
  float current = setting.even;
  const auto step = static_cast<float>(1 / (setting.rate * 0.005));
  bool isOdd = false;
  for (auto _ : state) {
    isOdd = !isOdd;
    const float target = isOdd ? setting.odd : setting.even;
    for (std::size_t frame = 0; frame < kFrames; ++frame) {
      current += std::clamp(target - current, -step, step);
      cycle.to[2 * frame] = test::ScalarGain::finite(&cycle.from[2 * frame]) * current;
      cycle.to[2 * frame + 1] = test::ScalarGain::finite(&cycle.from[2 * frame + 1]) * current;
    }
    benchmark::ClobberMemory();
  }
  label(state, "a plain loop");
}
BENCHMARK_CAPTURE(scalar, steady, kSteady);
BENCHMARK_CAPTURE(scalar, ramping, kRamping);

}  // namespace
