#include "platform/linux/FileNaming.h"

#include <QFile>
#include <QRegularExpression>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// The ending with its dot, such as ".txt" or ".tar.gz"; empty for a name without one.
QString endingOf(const QString& name) {
  static const QRegularExpression pattern(u"(?<=[^.])(\\.tar)?\\.[^.\\s]{1,16}$"_s);
  return pattern.match(name).captured();
}

QString shortened(QString base, const QString& rest, qsizetype most) {
  const qsizetype space = most - QFile::encodeName(rest).size();
  while (QFile::encodeName(base).size() > space && !base.isEmpty()) {
    base.chop(base.back().isLowSurrogate() ? 2 : 1);
  }
  return base + rest;
}

}  // namespace

QString FileNaming::candidate(const QString& name, bool isFolder, int attempt, qsizetype most) {
  const QString ending = isFolder ? QString() : endingOf(name);
  QString base = name.chopped(ending.size());
  if (attempt < 2) return shortened(base, ending, most);
  int number = attempt;
  static const QRegularExpression counted(u"^(.+) \\((\\d{1,6})\\)$"_s);
  if (const auto match = counted.match(base); match.hasMatch()) {
    base = match.captured(1);
    number = match.captured(2).toInt() + attempt - 1;
  }
  return shortened(base, u" (%1)"_s.arg(number) + ending, most);
}

}  // namespace tarnwick
