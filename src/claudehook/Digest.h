#pragma once

#include <string>
#include <string_view>

namespace tarnwick {

/// The SHA-256 of some bytes, as 64 lower-case hexadecimal digits.
std::string sha256Hex(std::string_view bytes);

}  // namespace tarnwick
