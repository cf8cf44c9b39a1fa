#pragma once

#include <cstdint>

/// Copies what one application plays to an output and applies a gain that somebody may change meanwhile. The only code
/// that runs on the audio thread: it never allocates, locks, waits or calls the system, and what it is given wrongly
/// becomes silence. A change of the gain is a short straight ramp, so nothing clicks.
namespace tarnwick {

/// Samples of one or several channels: 32-bit floats, of n channels interleaved (channel c of frame f stands at f * n +
/// c).
struct AudioBuffer {
  std::uint32_t mNumberChannels = 0;
  std::uint32_t mDataByteSize = 0;
  void* mData = nullptr;  ///< Null where nothing is to be read or written.
};

/// The buffers of one cycle. They are their owner's.
struct AudioBufferList {
  std::uint32_t mNumberBuffers = 0;
  AudioBuffer* mBuffers = nullptr;  ///< As many as `mNumberBuffers`; null counts as none.
};

/// The gain of one route. Two threads may use it, without a lock: one that controls and the audio thread. Each function
/// does nothing where it is null.
struct tw_gain_state;

/// A gain of 1 that changes without a ramp until `tw_gain_prepare`. Null without memory.
tw_gain_state* tw_gain_create();
/// Only once nothing can render with it any more.
void tw_gain_destroy(tw_gain_state* state);
/// What the gain moves to from the next block on, from 0 to 1; the rest is clamped, and what is not finite ignored.
void tw_gain_set(tw_gain_state* state, float gain);
/// Begins at a gain, with ramps that take 5 ms from 0 to 1. Ignored where a number is not finite or the rate is not
/// from 8000 to 384000 frames a second. Never while something renders with it.
void tw_gain_prepare(tw_gain_state* state, float gain, double sampleRate);
/// Whether lists were ever refused: their shapes are wrong or do not fit each other, or the input has more than two
/// channels. It stays so.
bool tw_gain_faulted(const tw_gain_state* state);
/// One cycle. One input channel goes to both sides, two are mixed for an output of one; further outputs are silent, and
/// all is where there is no input. Samples that are not finite count as 0. Input and output may be the same memory.
void tw_gain_render(tw_gain_state* state, const AudioBufferList* input, const AudioBufferList* output);

}  // namespace tarnwick
