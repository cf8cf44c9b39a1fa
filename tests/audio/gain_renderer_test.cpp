#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <span>

#include "audio/ScalarGain.h"

namespace tarnwick {
namespace {

using test::ScalarGain;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
/// What stands in outputs before; nothing computes it.
constexpr float kBefore = 9;
/// How far a sample may be from the reference, of full scale.
constexpr float kNear = 1e-6F;

/// The state for as long as a test needs it.
struct Gain {
  explicit Gain(float gain = 1, double rate = 0) { tw_gain_prepare(state, gain, rate); }
  Gain(const Gain&) = delete;
  Gain& operator=(const Gain&) = delete;
  ~Gain() { tw_gain_destroy(state); }
  operator tw_gain_state*() const { return state; }

  tw_gain_state* state = tw_gain_create();
};

/// A list with memory of its own: one buffer for each number of channels.
struct Buffers {
  Buffers(const std::vector<std::uint32_t>& widths, std::uint32_t frames, float value = kBefore) {
    for (const std::uint32_t width : widths) memory.emplace_back(std::size_t{width} * frames, value);
    for (std::size_t i = 0; i < widths.size(); ++i)
      entries.push_back({widths[i], widths[i] * frames * 4, memory[i].data()});
    list = {static_cast<std::uint32_t>(entries.size()), entries.data()};
  }
  Buffers(const Buffers&) = delete;
  Buffers& operator=(const Buffers&) = delete;

  bool isAll(float value) const {
    return std::ranges::all_of(memory, [value](const std::vector<float>& buffer) {
      return std::ranges::all_of(buffer, [value](float sample) { return sample == value; });
    });
  }

  std::vector<std::vector<float>> memory;
  std::vector<AudioBuffer> entries;
  AudioBufferList list;
};

/// Where the gain stands after a block of so many frames of full scale.
float gainAfter(tw_gain_state* state, std::uint32_t frames) {
  Buffers input({1}, frames, 1);
  Buffers output({1}, frames);
  tw_gain_render(state, &input.list, &output.list);
  return output.memory[0].back();
}

TEST(GainRenderer, RefusesLists) {
  struct Case {
    const char* what;
    std::vector<std::uint32_t> input;
    std::vector<std::uint32_t> output;
    bool isFaulted;
    float written;  ///< What then stands in all of the output; the input is of full scale.
    std::uint32_t inputFrames = 64;
    std::function<void(Buffers& input, Buffers& output)> change = {};
  };
  const auto bytes = [](std::uint32_t size) {
    return [size](Buffers& in, Buffers&) { in.entries[0].mDataByteSize = size; };
  };
  for (const Case& each : {
           Case{"fits", {2}, {2}, false, 1},
           Case{"no input", {}, {2, 1}, false, 0},
           Case{"input without entries",
                {2},
                {2},
                false,
                0,
                64,
                [](Buffers&in, Buffers&) { in.list.mBuffers = nullptr; }},
           Case{"three channels", {3}, {2}, true, 0},
           Case{"three channels in two buffers", {2, 1}, {2}, true, 0},
           Case{"frames differ", {2}, {2}, true, 0, 128},
           Case{"frames differ within the input", {1, 1}, {2}, true, 0, 64, bytes(32 * 4)},
           Case{"no output", {2}, {}, true, 0},
           Case{"no whole sample", {1}, {1}, true, 0, 1, bytes(6)},
           Case{"no whole frame", {2}, {2}, true, 0, 64, bytes(64 * 8 - 4)},
           Case{"a buffer without channels",
                {1},
                {2},
                true,
                0,
                64,
                [](Buffers&in, Buffers&) { in.entries[0].mNumberChannels = 0; }},
           Case{"nine outputs in a buffer", {2}, {9}, true, 0},
           Case{"nine outputs in two", {2}, {8, 1}, true, 0},
           Case{"nine buffers", {2}, {1, 1, 1, 1, 1, 1, 1, 1, 1}, true, 0},
       }) {
    const Gain gain;
    Buffers input(each.input, each.inputFrames, 1);
    Buffers output(each.output, each.inputFrames == 1 ? 1 : 64);
    if (each.change) each.change(input, output);
    tw_gain_render(gain, &input.list, &output.list);
    EXPECT_EQ(tw_gain_faulted(gain), each.isFaulted) << each.what;
    EXPECT_TRUE(output.isAll(each.written)) << each.what;
    // The next cycle is another matter, the flag is not.
    EXPECT_EQ(gainAfter(gain, 8), 1) << each.what;
    EXPECT_EQ(tw_gain_faulted(gain), each.isFaulted) << each.what;
  }
}

TEST(GainRenderer, DoesWithoutWhatIsNotThere) {
  Buffers input({2}, 4, 1);
  Buffers output({2}, 4);
  tw_gain_destroy(nullptr);
  tw_gain_set(nullptr, 1);
  tw_gain_prepare(nullptr, 1, 48'000);
  EXPECT_FALSE(tw_gain_faulted(nullptr));
  tw_gain_render(nullptr, &input.list, &output.list);
  EXPECT_TRUE(output.isAll(kBefore));
  const Gain gain(0.5F, 48'000);
  tw_gain_render(gain, &input.list, nullptr);
  EXPECT_FALSE(tw_gain_faulted(gain));
  tw_gain_set(gain, 1);
  tw_gain_render(gain, nullptr, &output.list);
  EXPECT_TRUE(output.isAll(0));
  EXPECT_FALSE(tw_gain_faulted(gain));
  EXPECT_NEAR(gainAfter(gain, 1), 0.5F + 1 / 240.0F, kNear) << "a cycle without input moved the gain";

  // A block without frames takes over the target all the same, where there is no ramp.
  const Gain fresh;
  Buffers none({2}, 0);
  tw_gain_set(fresh, 0.25F);
  tw_gain_render(fresh, &none.list, &none.list);
  tw_gain_prepare(fresh, kNan, 48'000);
  EXPECT_EQ(gainAfter(fresh, 1), 0.25F);
  EXPECT_FALSE(tw_gain_faulted(fresh));
}

TEST(GainRenderer, TakesGainsThatMakeSense) {
  for (const auto& [gain, target] : {std::pair{0.25F, 0.25F},
                                     {-0.25F, 0.F},
                                     {1.5F, 1.F},
                                     {kNan, 0.75F},
                                     {kInfinity, 0.75F},
                                     {-kInfinity, 0.75F},
                                     {-0.F, 0.F}}) {
    const Gain fresh;
    tw_gain_set(fresh, 0.75F);
    tw_gain_set(fresh, gain);
    EXPECT_EQ(gainAfter(fresh, 1), target) << gain;
    const Gain prepared;
    tw_gain_set(prepared, 0.75F);
    tw_gain_prepare(prepared, gain, 48'000);
    EXPECT_EQ(gainAfter(prepared, 1), target) << gain << " from the start";
  }
  for (const auto& [rate, step] : {std::pair{7999.0, 1.F},
                                   {8000.0, 1 / 40.F},
                                   {48'000.0, 1 / 240.F},
                                   {384'000.0, 1 / 1920.F},
                                   {384'001.0, 1.F},
                                   {std::numeric_limits<double>::quiet_NaN(), 1.F},
                                   {std::numeric_limits<double>::infinity(), 1.F}}) {
    const Gain gain(0, rate);
    tw_gain_set(gain, 1);
    EXPECT_NEAR(gainAfter(gain, 1), step, kNear) << rate;
  }
  // The way down takes 240 frames here, in however many blocks, and ends where it should.
  const Gain falling(1, 48'000);
  tw_gain_set(falling, 0);
  for (const auto& [frames, gain] : {std::pair{1U, 239 / 240.F}, {64U, 175 / 240.F}, {174U, 1 / 240.F}})
    EXPECT_NEAR(gainAfter(falling, frames), gain, 1e-5F);
  EXPECT_NEAR(gainAfter(falling, 1), 0, 1e-5F);
  EXPECT_EQ(gainAfter(falling, 1), 0);
}

TEST(GainRenderer, MixesChannels) {
  struct Case {
    const char* what;
    std::vector<std::uint32_t> inputWidths;
    std::vector<float> input;  ///< By channel.
    std::vector<std::uint32_t> outputWidths;
    std::vector<float> output;
    int withoutInput = -1;  ///< A buffer that is not there.
    int withoutOutput = -1;
  };
  for (const Case& each : {
           Case{"mono to both sides", {1}, {0.5F}, {2}, {0.25F, 0.25F}},
           Case{"mono", {1}, {0.5F}, {1}, {0.25F}},
           Case{"stereo", {2}, {0.5F, -1}, {1, 1}, {0.25F, -0.5F}},
           Case{"to one", {1, 1}, {0.5F, -1}, {1}, {-0.125F}},
           Case{"left is nothing", {2}, {kNan, 0.5F}, {1}, {0.125F}},
           Case{"nothing is finite", {2}, {kInfinity, -kInfinity}, {2}, {0, 0}},
           Case{"surround", {2}, {0.5F, -1}, {4}, {0.25F, -0.5F, 0, 0}},
           Case{"surround in pieces", {1}, {0.5F}, {1, 2, 1}, {0.25F, 0.25F, 0, 0}},
           Case{"without a left side", {1, 1}, {0.5F, -1}, {2}, {0, -0.5F}, 0},
           Case{"without a right side", {1, 1}, {0.5F, -1}, {1}, {0.125F}, 1},
           Case{"without left output", {2}, {0.5F, -1}, {1, 1}, {kBefore, -0.5F}, -1, 0},
       }) {
    const Gain gain;
    tw_gain_set(gain, 0.5F);
    constexpr std::uint32_t kFrames = 7;
    Buffers input(each.inputWidths, kFrames);
    Buffers output(each.outputWidths, kFrames);
    for (std::uint32_t channel = 0; channel < each.input.size(); ++channel)
      for (std::uint32_t frame = 0; frame < kFrames; ++frame)
        *ScalarGain::sample(input.list, channel, frame) = each.input[channel];
    if (each.withoutInput >= 0) input.entries[static_cast<std::size_t>(each.withoutInput)].mData = nullptr;
    const std::vector<AudioBuffer> places = output.entries;
    if (each.withoutOutput >= 0) output.entries[static_cast<std::size_t>(each.withoutOutput)].mData = nullptr;
    tw_gain_render(gain, &input.list, &output.list);
    output.entries.assign(places.begin(), places.end());
    output.list.mBuffers = output.entries.data();
    for (std::uint32_t channel = 0; channel < each.output.size(); ++channel)
      for (std::uint32_t frame = 0; frame < kFrames; ++frame)
        EXPECT_EQ(*ScalarGain::sample(output.list, channel, frame), each.output[channel]) << each.what << frame;
    EXPECT_FALSE(tw_gain_faulted(gain)) << each.what;
  }
}

/// Any list, usually one that fits: how much it is in the way of the other is for the caller to say.
class AnyGain {
 public:
  explicit AnyGain(unsigned seed) : random_(seed) {}

  std::uint32_t upTo(std::uint32_t most) { return std::uniform_int_distribution<std::uint32_t>(0, most)(random_); }
  bool isSeldom() { return upTo(19) == 0; }
  float number() {
    switch (upTo(11)) {
      case 0:
        return std::array{kNan, -kNan, kInfinity, -kInfinity}[upTo(3)];
      case 1:
        return std::array{0.F, -0.F, 1e-40F, 1e-38F}[upTo(3)];
      default:
        return std::uniform_real_distribution<float>(-1, 1)(random_);
    }
  }
  double rate() { return std::uniform_real_distribution<double>(8000, 384'000)(random_); }
  std::vector<std::uint32_t> widths(std::uint32_t most) {
    if (most == 2 && upTo(3) != 0) return upTo(1) == 0 ? std::vector{2U} : std::vector{1U, 1U};
    std::vector<std::uint32_t> widths;
    for (std::uint32_t left = 1 + upTo(most - 1); left > 0; left -= widths.back()) widths.push_back(1 + upTo(left - 1));
    return widths;
  }
  std::uint32_t frames() { return upTo(4) == 0 ? upTo(2000) : upTo(300); }

  /// Both lists lie somewhere in one piece of memory, perhaps in each other's way.
  struct Lists {
    std::vector<AudioBuffer> input;
    std::vector<AudioBuffer> output;
  };
  Lists lists(std::span<float> memory) {
    const std::uint32_t count = frames();
    Lists lists;
    for (const std::uint32_t width : widths(isSeldom() ? 8 : 2)) lists.input.push_back(buffer(memory, width, count));
    for (const std::uint32_t width : widths(upTo(1) == 0 ? 2 : 8)) lists.output.push_back(buffer(memory, width, count));
    if (upTo(2) == 0)
      for (std::size_t i = 0; i < std::min(lists.input.size(), lists.output.size()); ++i) {
        auto* place = static_cast<float*>(lists.input[upTo(1) == 0 ? i : lists.input.size() - 1 - i].mData);
        const std::size_t samples = lists.output[i].mDataByteSize / 4;
        if (place && place + samples <= memory.data() + memory.size()) lists.output[i].mData = place;
      }
    if (isSeldom()) lists.output[upTo(static_cast<std::uint32_t>(lists.output.size()) - 1)].mDataByteSize /= 2;
    return lists;
  }

 private:
  AudioBuffer buffer(std::span<float> memory, std::uint32_t width, std::uint32_t frames) {
    const std::uint32_t samples = width * frames;
    const auto room = static_cast<std::uint32_t>(memory.size());
    float* place = isSeldom() ? nullptr : memory.data() + upTo(room - samples);
    return {width, samples * 4, place};
  }

  std::mt19937 random_;
};

TEST(GainRenderer, IsTheScalarReference) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    AnyGain any(seed);
    const Gain gain;
    ScalarGain reference;
    if (!any.isSeldom()) {
      const double rate = any.rate();
      const float start = any.upTo(2) == 0 ? 1 : std::abs(std::fmod(any.number(), 1.F));
      tw_gain_prepare(gain, start, rate);
      if (std::isfinite(start)) reference = {start, false, start, static_cast<float>(1 / (rate * 0.005))};
    }
    for (int block = 0; block < 4; ++block) {
      const float target = std::array{0.F, 1.F, any.number(), any.number() * 2}[any.upTo(3)];
      tw_gain_set(gain, target);
      if (std::isfinite(target)) reference.target = std::clamp(target, 0.F, 1.F);
      std::vector<float> numbers(1009);
      for (float& number : numbers) number = any.number();
      std::vector<float> memory(17'000);
      for (std::size_t i = 0; i < memory.size(); ++i) memory[i] = numbers[i % numbers.size()];
      std::vector<float> wanted = memory;
      auto [input, output] = any.lists(memory);
      const AudioBufferList in{static_cast<std::uint32_t>(input.size()), input.data()};
      const AudioBufferList out{static_cast<std::uint32_t>(output.size()), output.data()};
      tw_gain_render(gain, &in, &out);
      for (auto* list : {&input, &output})
        for (AudioBuffer& each : *list)
          if (each.mData) each.mData = wanted.data() + (static_cast<float*>(each.mData) - memory.data());
      reference.render(in, out);
      const auto [got, other] = std::ranges::mismatch(memory, wanted, [](float one, float two) {
        return std::bit_cast<std::uint32_t>(one) == std::bit_cast<std::uint32_t>(two) || std::abs(one - two) <= kNear;
      });
      ASSERT_TRUE(got == memory.end()) << seed << ": " << *got << " for " << *other;
      ASSERT_EQ(tw_gain_faulted(gain), reference.faulted) << seed;
    }
  }
}

}  // namespace
}  // namespace tarnwick
