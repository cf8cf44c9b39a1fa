#include "views/families/system/MachineWords.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "views/panels/PanelWords.h"
#include "widgets/FileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kGiga = 1e9;
constexpr double kGibi = 1024.0 * 1024 * 1024;
constexpr qint64 kMinute = 60;
constexpr qint64 kHour = 60 * kMinute;
constexpr qint64 kDay = 24 * kHour;

QString counted(const char* one, const char* many, qint64 count) {
  return count == 1 ? PanelWords::tr(one) : PanelWords::tr(many).arg(LocalFigures::number(count));
}

QString sizeIn(const QLocale& locale, double bytes, QLocale::DataSizeFormats format) {
  const double known = std::isfinite(bytes) ? std::clamp(bytes, 0.0, 1e18) : 0;
  return locale.formattedDataSize(static_cast<qint64>(known), 1, format)
      .replace(locale.decimalPoint() + locale.zeroDigit() + u' ', u" "_s);
}

qint64 rounded(double percent) { return std::lround(std::isfinite(percent) ? std::clamp(percent, 0.0, 100.0) : 0.0); }

QString days(qint64 count) {
  return counted(QT_TRANSLATE_NOOP("Panels", "1 day"), QT_TRANSLATE_NOOP("Panels", "%1 days"), count);
}
QString hours(qint64 count) {
  return counted(QT_TRANSLATE_NOOP("Panels", "1 hour"), QT_TRANSLATE_NOOP("Panels", "%1 hours"), count);
}
QString minutes(qint64 count) {
  return counted(QT_TRANSLATE_NOOP("Panels", "1 minute"), QT_TRANSLATE_NOOP("Panels", "%1 minutes"), count);
}

}  // namespace

QString MachineWords::percent(double value) { return LocalFigures::number(rounded(value)); }
QString MachineWords::percentWithSign(double value) { return LocalFigures::percent(rounded(value)); }

QString MachineWords::memory(const QLocale& locale, double bytes) {
  return sizeIn(locale, bytes, QLocale::DataSizeTraditionalFormat);
}
QString MachineWords::disk(const QLocale& locale, double bytes) {
  return sizeIn(locale, bytes, QLocale::DataSizeSIFormat);
}
QString MachineWords::speed(const QLocale& locale, double bytes) {
  const SpeedWords words = speedWords(locale, bytes);  // As the tile says it.
  return words.number + u' ' + words.unit;
}

QString MachineWords::partOf(const QString& part, const QString& whole) {
  const QString unit = whole.section(u' ', 1);
  return PanelWords::tr("%1 of %2").arg(part.endsWith(u' ' + unit) ? part.section(u' ', 0, 0) : part, whole);
}

QString MachineWords::processor(const QLocale& locale, const MachineReading& reading) {
  QStringList facts;
  if (!reading.cores.isEmpty())
    facts << counted(QT_TRANSLATE_NOOP("Panels", "1 core"), QT_TRANSLATE_NOOP("Panels", "%1 cores"),
                     reading.cores.size());
  if (reading.frequency) facts << PanelWords::tr("%1 GHz").arg(locale.toString(*reading.frequency / kGiga, 'f', 1));
  if (reading.load) facts << PanelWords::tr("load %1").arg(locale.toString(*reading.load, 'f', 2));
  return facts.join(u" · "_s);
}

QString MachineWords::uptime(const MachineReading& reading) {
  if (!reading.uptime || *reading.uptime < 0) return {};
  const auto seconds = static_cast<qint64>(*reading.uptime);
  QString time;
  if (seconds >= kDay)
    time = PanelWords::tr("%1, %2").arg(days(seconds / kDay), hours(seconds % kDay / kHour));
  else if (seconds >= kHour)
    time = PanelWords::tr("%1, %2").arg(hours(seconds / kHour), minutes(seconds % kHour / kMinute));
  else
    time = minutes(seconds / kMinute);
  return PanelWords::tr("Up %1").arg(time);
}

QString MachineWords::swap(const QLocale& locale, const MemoryParts& parts) {
  if (parts.swapTotal <= 0) return {};
  const QString whole = memory(locale, parts.swapTotal);
  if (parts.swapTotal < kGibi) return PanelWords::tr("Swap %1").arg(partOf(memory(locale, parts.swapUsed), whole));
  const QString used = locale.toString(parts.swapUsed / kGibi, 'f', 1);
  return PanelWords::tr("Swap %1").arg(PanelWords::tr("%1 of %2").arg(used, whole));
}

}  // namespace tarnwick
