#include "views/families/system/ProcessTiles.h"

#include <algorithm>

#include "base/LocalFigures.h"
#include "views/theme/Glass.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kProcessBarLeft = 84;
constexpr double kProcessBarWidth = 44;
constexpr double kProcessBarHeight = 4;
constexpr double kProcessGap = 8;

}  // namespace

ProcessOrder processOrderOf(const DockWidget& widget) {
  return widget.options.value(option::sortBy) == value::byMemory ? ProcessOrder::RAM : ProcessOrder::CPU;
}

ProcessesContent makeProcesses(const TileRequest& request) {
  const ReadingFacts& readings = request.sources.readings;
  const ProcessOrder order = processOrderOf(request.widget);
  ProcessesContent content;
  const auto top = ProcessRanking::top(readings.processes, order, ProcessRanking::tileRows);
  double most = order == ProcessOrder::CPU ? 25 : 1;
  for (const ProcessUsage& each : top)
    most = std::max(most, order == ProcessOrder::CPU ? each.cpu.value_or(0) : static_cast<double>(each.reading.memory));
  for (const ProcessUsage& each : top) {
    const bool cpu = order == ProcessOrder::CPU;
    const auto bytes = static_cast<qint64>(each.reading.memory);
    content.rows.append({each.reading.name,
                         cpu ? LocalFigures::of(ProcessRanking::cpuText(each.cpu), request.sources.locale)
                             : request.sources.locale.formattedDataSize(bytes, bytes < 1'000'000'000 ? 0 : 1,
                                                                        QLocale::DataSizeTraditionalFormat),
                         (cpu ? each.cpu.value_or(0) : static_cast<double>(bytes)) / most});
  }
  if (content.rows.isEmpty()) content.message = readings.processMessage;
  return content;
}

TileText describe(const ProcessesContent& content, const QString& name) {
  QStringList parts;
  for (const ProcessesContent::Row& row : content.rows) parts.append(row.name + u' ' + row.value);
  return {name, parts.isEmpty() ? content.message : parts.join(u", "_s)};
}

void paint(TileCanvas& canvas, const ProcessesContent& content) {
  const Palette& colors = canvas.colors();
  if (content.rows.isEmpty()) {
    const QString text = content.message.isEmpty() ? TileWords::tr("Looking…") : content.message;
    const TextLine line = canvas.line(text, TextStyle::Caption).elided(canvas.spaceAfter(theme::kTextLeft), Elide::End);
    line.draw(canvas.painter(), {theme::kTextLeft, TileCanvas::centredBaseline(line)}, colors.secondary);
    return;
  }
  const QList<double> baselines = canvas.rowBaselines(content.rows.size());
  double widest = 0;
  for (const ProcessesContent::Row& row : content.rows)
    widest = std::max(widest, canvas.line(row.value, TextStyle::ListRow).width());
  const double valueLeft = canvas.width() - theme::kTextRight - widest;
  // In a small dock the letters are larger, and names need what bars take.
  const bool bars = canvas.showsLastRow();
  const double nameEnd = (bars ? kProcessBarLeft : valueLeft) - kProcessGap;
  for (qsizetype i = 0; i < baselines.size(); ++i) {
    const ProcessesContent::Row& row = content.rows[i];
    const TextLine value = canvas.line(row.value, TextStyle::ListRow);
    value.drawRight(canvas.painter(), {canvas.width() - theme::kTextRight, baselines[i]}, colors.primary);
    canvas.text(theme::kTextLeft, baselines[i], nameEnd - theme::kTextLeft, TextStyle::ListRow, row.name,
                colors.primary);
    if (!bars) continue;
    const double y = baselines[i] - value.capHeight() / 2 - kProcessBarHeight / 2;
    QRectF bar(kProcessBarLeft, y, std::min(kProcessBarWidth, valueLeft - kProcessGap - kProcessBarLeft),
               kProcessBarHeight);
    drawRounded(canvas.painter(), bar, kProcessBarHeight / 2, colors.track);
    bar.setWidth(std::max(kProcessBarHeight, bar.width() * std::clamp(row.share, 0.0, 1.0)));
    if (row.share > 0) drawRounded(canvas.painter(), bar, kProcessBarHeight / 2, canvas.accent());
  }
}

}  // namespace tarnwick
