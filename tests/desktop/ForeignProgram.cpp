#include "desktop/ForeignProgram.h"

#include <QCoreApplication>

namespace tarnwick::testing {

ForeignProgram::ForeignProgram(const QString& file, const QRect& place, Size size) {
  QStringList arguments{file};
  for (const int number : {place.x(), place.y(), place.width(), place.height()}) {
    if (!place.isEmpty()) arguments << QString::number(number);
  }
  if (size == Size::FullScreen) arguments << QStringLiteral("full");
  process_.start(QCoreApplication::applicationDirPath() + QStringLiteral("/drag_source"), arguments);
}

ForeignProgram::~ForeignProgram() {
  process_.kill();
  process_.waitForFinished();
}

}  // namespace tarnwick::testing
