#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "audio/GainRenderer.h"

namespace tarnwick::test {

/// What the renderer computes, one sample after the other and nothing else: what it is compared with, in what comes out
/// and in how long it takes.
struct ScalarGain {
  float target = 1;
  bool faulted = false;
  float current = 0;
  float step = 0;

  static float* sample(const AudioBufferList& list, std::uint32_t channel, std::uint32_t frame) {
    std::uint32_t i = 0;
    for (; channel >= list.mBuffers[i].mNumberChannels; ++i) channel -= list.mBuffers[i].mNumberChannels;
    auto* data = static_cast<float*>(list.mBuffers[i].mData);
    return data ? data + frame * list.mBuffers[i].mNumberChannels + channel : nullptr;
  }
  static float finite(const float* sample) {
    if (!sample) return 0;
    const bool isFinite = (std::bit_cast<std::uint32_t>(*sample) & 0x7f800000) != 0x7f800000;
    return isFinite ? *sample : 0;
  }
  /// How many channels; 0 where the list is none.
  static std::uint32_t channels(const AudioBufferList& list) {
    if (list.mNumberBuffers < 1 || list.mNumberBuffers > 8) return 0;
    std::uint32_t total = 0;
    for (std::uint32_t i = 0; i < list.mNumberBuffers; ++i) {
      const AudioBuffer& buffer = list.mBuffers[i];
      if (buffer.mNumberChannels < 1 || buffer.mNumberChannels > 8) return 0;
      total += buffer.mNumberChannels;
      if (total > 8 || buffer.mDataByteSize % (4 * buffer.mNumberChannels) != 0) return 0;
      if (frames(list, i) != frames(list, 0)) return 0;
    }
    return total;
  }
  static std::uint32_t frames(const AudioBufferList& list, std::uint32_t buffer) {
    return list.mBuffers[buffer].mDataByteSize / (4 * list.mBuffers[buffer].mNumberChannels);
  }

  void render(const AudioBufferList& input, const AudioBufferList& output) {
    const std::uint32_t inputs = channels(input);
    const std::uint32_t outputs = channels(output);
    const bool isEmpty = input.mNumberBuffers == 0;
    if (isEmpty || inputs < 1 || inputs > 2 || outputs < 1 || frames(input, 0) != frames(output, 0)) {
      for (std::uint32_t i = 0; i < output.mNumberBuffers; ++i)
        if (output.mBuffers[i].mData) std::memset(output.mBuffers[i].mData, 0, output.mBuffers[i].mDataByteSize);
      faulted = faulted || !isEmpty;
      return;
    }
    if (step == 0) current = target;
    renderFrames(input, inputs, output, outputs);
  }

  void renderFrames(const AudioBufferList& input, std::uint32_t inputs, const AudioBufferList& output,
                    std::uint32_t outputs) {
    for (std::uint32_t frame = 0; frame < frames(input, 0); ++frame) {
      if (step > 0) current += std::clamp(target - current, -step, step);
      const float left = finite(sample(input, 0, frame)) * current;
      const float right = inputs == 1 ? left : finite(sample(input, 1, frame)) * current;
      for (std::uint32_t channel = 0; channel < outputs; ++channel) {
        const float value = outputs == 1 ? 0.5F * left + 0.5F * right : channel == 0 ? left : channel == 1 ? right : 0;
        if (float* place = sample(output, channel, frame)) *place = value;
      }
    }
  }
};

}  // namespace tarnwick::test
