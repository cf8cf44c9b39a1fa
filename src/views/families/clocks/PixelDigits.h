#pragma once

#include <array>
#include <cstdint>

namespace tarnwick {

/// A digit in dots, from the top row to the bottom one; the highest of the five bits is the left column.
using PixelDigit = std::array<std::uint8_t, 7>;

inline constexpr int kPixelColumns = 5;
inline constexpr int kPixelRows = 7;

/// The dots of a digit from 0 to 9; none for any other number.
const PixelDigit& pixelDigit(int digit);

}  // namespace tarnwick
