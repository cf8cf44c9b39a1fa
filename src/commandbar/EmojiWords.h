#pragma once

#include <string_view>

namespace tarnwick {

/// The English table of emoji, made when the program is built; cmake/emoji_table.py says what is in it.
extern const std::string_view kEnglishEmoji;

}  // namespace tarnwick
