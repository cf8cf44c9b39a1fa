#include "store/Announcements.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>

namespace tarnwick {
namespace {

struct AnnouncementsWords {
  Q_DECLARE_TR_FUNCTIONS(AppStore)
};

QString withTimes(const QString& text, int times) {
  return times == 1 ? text : AnnouncementsWords::tr("%1 (%2)").arg(text).arg(times);
}

}  // namespace

void Announcements::add(const QString& name, const QString& sentence) {
  const bool isNamed = !name.isEmpty();
  auto line = std::ranges::find_if(
      lines_, [&](const Line& each) { return each.sentence == sentence && each.isNamed == isNamed; });
  if (line == lines_.end()) line = lines_.insert(lines_.end(), {sentence, isNamed, {}});
  const auto known = std::ranges::find(line->ended, name, &Ended::name);
  if (known == line->ended.end()) {
    line->ended.append({name, 1});
  } else {
    ++known->times;
  }
}

QString Announcements::text() const {
  QStringList sentences;
  for (const Line& line : lines_) {
    if (!line.isNamed) {
      sentences << withTimes(line.sentence, line.ended.first().times);
      continue;
    }
    QStringList names;
    for (const Ended& each : line.ended) names << withTimes(each.name, each.times);
    sentences << AnnouncementsWords::tr("%1: %2").arg(names.join(QStringLiteral(", ")), line.sentence);
  }
  return sentences.join(u' ');
}

}  // namespace tarnwick
