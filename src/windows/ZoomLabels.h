#pragma once

#include <QString>
#include <optional>

namespace tarnwick {

enum class ZoomAction { Microphone, Video, Share, Leave };

/// What the texts on Zoom's own toolbar mean. Only its English ones are known.
struct ZoomLabels {
  /// Blanks around a label and its case say nothing; all the rest must be there.
  static std::optional<ZoomAction> action(const QString& label);
  /// How many people take part: "Participants (12)".
  static std::optional<int> participants(const QString& label);
  /// How long the meeting has lasted, as Zoom writes it: "Elapsed time: 12:05".
  static std::optional<QString> duration(const QString& label);
};

}  // namespace tarnwick
