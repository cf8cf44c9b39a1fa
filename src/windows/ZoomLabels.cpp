#include "windows/ZoomLabels.h"

#include <QRegularExpression>
#include <QStringList>
#include <array>
#include <utility>

namespace tarnwick {

using namespace Qt::StringLiterals;

std::optional<ZoomAction> ZoomLabels::action(const QString& label) {
  static const std::array<std::pair<ZoomAction, QStringList>, 4> kLabels{{
      {ZoomAction::Microphone,
       {u"mute"_s, u"unmute"_s, u"mute my audio"_s, u"unmute my audio"_s, u"mute audio"_s, u"unmute audio"_s}},
      {ZoomAction::Video, {u"start video"_s, u"stop video"_s, u"start my video"_s, u"stop my video"_s}},
      {ZoomAction::Share, {u"share screen"_s, u"share"_s, u"new share"_s, u"stop share"_s, u"stop sharing"_s}},
      {ZoomAction::Leave, {u"leave"_s, u"leave meeting"_s}},
  }};
  const QString plain = label.trimmed().toLower();
  for (const auto& [action, labels] : kLabels)
    if (labels.contains(plain)) return action;
  return std::nullopt;
}

std::optional<int> ZoomLabels::participants(const QString& label) {
  static const QRegularExpression kCount(uR"(\AParticipants\s*\(([0-9]{1,6})\)\z)"_s);
  const auto match = kCount.match(label);
  return match.hasMatch() ? std::optional(match.captured(1).toInt()) : std::nullopt;
}

std::optional<QString> ZoomLabels::duration(const QString& label) {
  static const QRegularExpression kTime(
      uR"(\A(?:Meeting duration|Elapsed time): ([0-9]{1,3}:[0-9]{2}(?::[0-9]{2})?)\z)"_s);
  const auto match = kTime.match(label);
  return match.hasMatch() ? std::optional(match.captured(1)) : std::nullopt;
}

}  // namespace tarnwick
