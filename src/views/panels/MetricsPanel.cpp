#include "views/panels/MetricsPanel.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>
#include <numeric>

#include "views/controls/Buttons.h"
#include "views/controls/Charts.h"
#include "views/controls/Rows.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Panels", text); }

QString percent(double value) {
  return QString::number(std::lround(std::isfinite(value) ? std::clamp(value, 0.0, 100.0) : 0.0));
}
QString percentWithSign(double value) { return percent(value) + u'%'; }

/// Memory is counted in powers of two, what lies on a disk or goes through a cable in powers of ten.
QString sizeIn(const QLocale& locale, double bytes, QLocale::DataSizeFormats format) {
  const double known = std::isfinite(bytes) ? std::clamp(bytes, 0.0, 1e18) : 0;
  return locale.formattedDataSize(static_cast<qint64>(known), 1, format)
      .replace(locale.decimalPoint() + locale.zeroDigit() + u' ', u" "_s);
}
QString memorySize(const QLocale& locale, double bytes) {
  return sizeIn(locale, bytes, QLocale::DataSizeTraditionalFormat);
}
QString diskSize(const QLocale& locale, double bytes) { return sizeIn(locale, bytes, QLocale::DataSizeSIFormat); }
QString speed(const QLocale& locale, double bytes) { return tr("%1/s").arg(diskSize(locale, bytes)); }

/// A part and its whole, the unit written once where it is the same.
QString partOf(const QString& part, const QString& whole) {
  const QString unit = whole.section(u' ', 1);
  return tr("%1 of %2").arg(part.endsWith(u' ' + unit) ? part.section(u' ', 0, 0) : part, whole);
}

double meanOf(const QList<double>& values) {
  return values.isEmpty() ? 0 : std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}
double mostOf(const QList<double>& values) { return values.isEmpty() ? 0 : *std::ranges::max_element(values); }

/// What all of these panels share.
class MetricsPanel : public TilePanel {
  Q_DECLARE_TR_FUNCTIONS(Panels)

 public:
  explicit MetricsPanel(const PanelContext& context) : TilePanel(context), figure_(new FigureView) {
    if (const auto open = context.actions.openMonitor) {
      auto* button = new Button(tr("Open Monitor"));
      connect(button, &QPushButton::clicked, this, [open] { open(); });
      header().addAction(button);
    }
    body().addWidget(figure_);
  }

 protected:
  virtual void fill(const MetricsSnapshot& now, const TileSources& sources) = 0;

  void refresh(const TileSources& sources) final {
    if (!sources.metrics) {
      showEmpty({definition().symbol, {}, title(), tr("The first reading is on its way."), {}, {}});
      return;
    }
    hideEmpty();
    fill(*sources.metrics, sources);
  }

  FigureView& figure() { return *figure_; }

  ChartView* addChart(const QString& label, std::optional<double> maximum) {
    auto* chart = new ChartView(label);
    chart->setDepth(SystemMetrics::depth);
    chart->setMaximum(maximum);
    chart->setEnds(tr("%1 s ago").arg(SystemMetrics::depth), tr("now"));
    body().addSpacing(theme::kPanelHeaderBelow);
    body().addWidget(chart);
    return chart;
  }

  ProgressBar* addBar(const QString& label) {
    auto* bar = new ProgressBar(label);
    bar->setBarHeight(8);
    body().addSpacing(theme::kPanelHeaderBelow);
    body().addWidget(bar);
    body().addSpacing(theme::kSectionBelow);
    return bar;
  }

  ListRow* addDetail(const QString& label, bool first = false) {
    auto* row = new ListRow(label);
    row->setParted(!first);
    body().addWidget(row);
    return row;
  }

 private:
  FigureView* figure_;
};

class ProcessorPanel final : public MetricsPanel {
 public:
  explicit ProcessorPanel(const PanelContext& context)
      : MetricsPanel(context),
        chart_(addChart(tr("Processor load"), 100)),
        mean_(addDetail(tr("Average"), true)),
        most_(addDetail(tr("Highest"))) {}

 protected:
  void fill(const MetricsSnapshot& now, const TileSources& sources) override {
    figure().setFigure(percent(now.cpu), u"%"_s);
    figure().setLines(tr("of all processors"));
    chart_->setSeries({{sources.cpuHistory, {}}});
    mean_->setValue(percentWithSign(meanOf(sources.cpuHistory)));
    most_->setValue(percentWithSign(mostOf(sources.cpuHistory)));
  }

 private:
  ChartView* chart_;
  ListRow* mean_;
  ListRow* most_;
};

class MemoryPanel final : public MetricsPanel {
 public:
  explicit MemoryPanel(const PanelContext& context)
      : MetricsPanel(context),
        bar_(addBar(tr("Memory in use"))),
        chart_(addChart(tr("Memory in use"), 100)),
        used_(addDetail(tr("In use"), true)),
        free_(addDetail(tr("Available"))) {}

 protected:
  void fill(const MetricsSnapshot& now, const TileSources& sources) override {
    figure().setFigure(percent(now.memory), u"%"_s);
    figure().setLines(partOf(memorySize(sources.locale, now.memoryUsed), memorySize(sources.locale, now.memoryTotal)),
                      tr("in use"));
    bar_->setShare(now.memory / 100);
    chart_->setSeries({{sources.memoryHistory, {}}});
    used_->setValue(memorySize(sources.locale, now.memoryUsed));
    free_->setValue(memorySize(sources.locale, now.memoryTotal - now.memoryUsed));
  }

 private:
  ProgressBar* bar_;
  ChartView* chart_;
  ListRow* used_;
  ListRow* free_;
};

class StoragePanel final : public MetricsPanel {
 public:
  explicit StoragePanel(const PanelContext& context)
      : MetricsPanel(context),
        bar_(addBar(tr("Storage in use"))),
        used_(addDetail(tr("In use"), true)),
        free_(addDetail(tr("Available"))),
        all_(addDetail(tr("Capacity"))) {}

 protected:
  void fill(const MetricsSnapshot& now, const TileSources& sources) override {
    const double share = std::clamp(now.disk / 100, 0.0, 1.0);
    const double capacity = share < 1 ? now.diskFree / (1 - share) : 0;
    const auto size = [&](double bytes) { return capacity > 0 ? diskSize(sources.locale, bytes) : u"–"_s; };
    figure().setFigure(percent(now.disk), u"%"_s);
    figure().setLines(tr("%1 available").arg(diskSize(sources.locale, now.diskFree)));
    bar_->setShare(share);
    bar_->setAccent(now.disk > 85 ? std::optional(Accent::Red) : std::nullopt);
    used_->setValue(size(capacity * share));
    free_->setValue(diskSize(sources.locale, now.diskFree));
    all_->setValue(size(capacity));
  }

 private:
  ProgressBar* bar_;
  ListRow* used_;
  ListRow* free_;
  ListRow* all_;
};

class BatteryPanel final : public MetricsPanel {
 public:
  explicit BatteryPanel(const PanelContext& context) : MetricsPanel(context), bar_(addBar(tr("Battery charge"))) {}

 protected:
  void fill(const MetricsSnapshot& now, const TileSources&) override {
    if (!now.battery) {
      showEmpty({definition().symbol, {}, title(), tr("This computer has no battery."), {}, {}});
      return;
    }
    const bool low = *now.battery < 20;
    figure().setFigure(percent(*now.battery), u"%"_s);
    figure().setLines(low ? tr("Charge it soon") : tr("charged"));
    bar_->setShare(*now.battery / 100);
    bar_->setAccent(low ? std::optional(Accent::Red) : std::nullopt);
  }

 private:
  ProgressBar* bar_;
};

class NetworkPanel final : public MetricsPanel {
 public:
  explicit NetworkPanel(const PanelContext& context)
      : MetricsPanel(context),
        chart_(addChart(tr("Network traffic"), std::nullopt)),
        down_(addDetail(tr("Download"), true)),
        up_(addDetail(tr("Upload"))),
        most_(addDetail(tr("Highest"))) {
    down_->setSymbol(u"arrow.down"_s, Tone::AccentWord);
    up_->setSymbol(u"arrow.up"_s, Tone::Secondary);
    most_->setSymbol(u"chart.bar"_s, Tone::Secondary);
  }

 protected:
  void fill(const MetricsSnapshot& now, const TileSources& sources) override {
    const bool sending = definition().id == u"networkUpload"_s;
    const QStringList parts = speed(sources.locale, sending ? now.upload : now.download).split(u' ');
    figure().setFigure(parts.value(0), parts.value(1));
    figure().setLines(sending ? tr("Upload") : tr("Download"));
    chart_->setSeries({{sources.networkHistory, {}}});
    down_->setValue(speed(sources.locale, now.download));
    up_->setValue(speed(sources.locale, now.upload));
    most_->setValue(speed(sources.locale, mostOf(sources.networkHistory)));
  }

 private:
  ChartView* chart_;
  ListRow* down_;
  ListRow* up_;
  ListRow* most_;
};

/// Processor and memory in one chart.
class SystemPanel final : public MetricsPanel {
 public:
  explicit SystemPanel(const PanelContext& context)
      : MetricsPanel(context),
        chart_(addChart(tr("Processor and memory"), 100)),
        processor_(addDetail(tr("Processor"), true)),
        memory_(addDetail(tr("Memory"))) {
    processor_->setSymbol(u"cpu"_s);
    memory_->setSymbol(u"memorychip"_s);
  }

 protected:
  void fill(const MetricsSnapshot& now, const TileSources& sources) override {
    figure().setFigure(percent(now.cpu), u"%"_s);
    figure().setLines(tr("Processor"), tr("Memory %1").arg(percentWithSign(now.memory)));
    chart_->setSeries({{sources.cpuHistory, Accent::Green}, {sources.memoryHistory, Accent::Purple}});
    processor_->setValue(percentWithSign(now.cpu));
    memory_->setValue(percentWithSign(now.memory));
  }

 private:
  ChartView* chart_;
  ListRow* processor_;
  ListRow* memory_;
};

}  // namespace

std::unique_ptr<TilePanel> makeMetricsPanel(const PanelContext& context) {
  const QString kind = context.kind();
  if (kind.startsWith(u"ram"_s)) return std::make_unique<MemoryPanel>(context);
  if (kind == u"storage"_s) return std::make_unique<StoragePanel>(context);
  if (kind == u"battery"_s) return std::make_unique<BatteryPanel>(context);
  if (kind == u"systemChart"_s) return std::make_unique<SystemPanel>(context);
  if (kind.startsWith(u"network"_s)) return std::make_unique<NetworkPanel>(context);
  return std::make_unique<ProcessorPanel>(context);
}

}  // namespace tarnwick
