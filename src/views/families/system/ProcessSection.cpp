#include "views/families/system/ProcessSection.h"

#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "apps/InstalledApps.h"
#include "base/LocalFigures.h"
#include "system/ProcessMonitor.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Labels.h"
#include "views/controls/Rows.h"
#include "views/families/system/MachineWords.h"
#include "views/panels/AppItems.h"
#include "views/panels/PanelWords.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

namespace {

constexpr int kPicture = theme::kRowPicture;
constexpr int kTicksBetweenSamples = 4;

double amountOf(const ProcessUsage& usage, ProcessOrder order) {
  return order == ProcessOrder::CPU ? usage.cpu.value_or(0) : static_cast<double>(usage.reading.memory);
}

}  // namespace

ProcessSection::ProcessSection(const PanelContext& context, ProcessOrder order, QWidget* parent)
    : QWidget(parent), context_(context), order_(order) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(new SectionLabel(PanelWords::tr("Processes"),
                                     order == ProcessOrder::CPU ? PanelWords::tr("CPU") : PanelWords::tr("Memory")));
  for (int i = 0; i < kRows; ++i) {
    auto* row = new ListRow({});
    row->setParted(i > 0);
    rows_ << row;
    column->addWidget(row);
  }
  hide();
  connect(&context_.store, &AppStore::ticked, this, [this] {
    if (!isKnown_ || context_.store.tick() % kTicksBetweenSamples == 0) askForSample();
  });
  askForSample();
}

void ProcessSection::askForSample() {
  // The beat samples by itself for a tile that shows them.
  if (!context_.store.active().families.contains(familyText(Family::Processes))) context_.readings.processes.refresh();
}

void ProcessSection::fill(const TileSources& sources) {
  const ProcessMonitor& monitor = context_.readings.processes;
  const QList<ProcessUsage>& known = monitor.rows();
  const QList<ProcessUsage> top = ProcessRanking::top(known, order_, kRows);
  show();
  // The first sample has no loads, and an order by them would be any order.
  isKnown_ = !top.isEmpty() && (order_ == ProcessOrder::RAM || top.first().cpu);
  if (!isKnown_) {
    // What a list says of its figures is not for one that waits for them.
    showWaiting(known.isEmpty() ? monitor.message() : PanelWords::tr("Sampling processes…"));
    return;
  }
  double most = order_ == ProcessOrder::CPU ? kQuietCpu : 1;
  for (const ProcessUsage& each : top) most = std::max(most, amountOf(each, order_));
  for (qsizetype i = 0; i < rows_.size(); ++i) {
    rows_[i]->setVisible(i < top.size());
    if (i < top.size()) showRow(*rows_[i], top[i], most, sources);
  }
}

void ProcessSection::showRow(ListRow& row, const ProcessUsage& usage, double most, const TileSources& sources) {
  row.setTitle(usage.reading.name);
  row.setPicture(pictureOf(usage.reading.name));
  row.setBar(amountOf(usage, order_) / most);
  row.setValue(order_ == ProcessOrder::CPU
                   ? LocalFigures::of(ProcessRanking::cpuText(usage.cpu), sources.locale)
                   : MachineWords::memory(sources.locale, static_cast<double>(usage.reading.memory)));
}

/// The rows are ready, and the first one says what they wait for.
void ProcessSection::showWaiting(const QString& sentence) {
  for (ListRow* row : rows_) {
    row->show();
    row->setTitle(row == rows_.first() ? sentence : QString());
    row->setPicture({});
    row->setBar(row == rows_.first() ? -1 : 0);
    row->setValue(row == rows_.first() ? QString() : ProcessRanking::cpuText({}), Tone::Tertiary);
  }
}

/// The icon of the application whose program it is, or a plate with its initial.
QPixmap ProcessSection::pictureOf(const QString& process) {
  const double ratio = devicePixelRatioF();
  const QString key = process + QString::number(ratio);
  if (const auto known = pictures_.constFind(key); known != pictures_.constEnd()) return *known;
  QString icon;
  const auto index = context_.readings.apps.index();
  const auto found = index->find(AppIndex::Key::Executable, process);
  if (!found.isEmpty()) icon = found.first()->iconName;
  QPixmap picture(QSize(kPicture, kPicture) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  paintAppIcon(painter, QRectF(0, 0, kPicture, kPicture), icon, process, context_.readings.icons, lookOf(*this));
  painter.end();
  return *pictures_.insert(key, picture);
}

}  // namespace tarnwick
