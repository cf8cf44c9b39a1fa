#include "views/families/system/SystemRoom.h"

#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "views/controls/Buttons.h"
#include "views/controls/Charts.h"
#include "views/controls/Meters.h"
#include "views/controls/Rows.h"
#include "views/families/system/GaugeTiles.h"
#include "views/families/system/MachineWords.h"
#include "views/families/system/ProcessSection.h"
#include "views/panels/PanelWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// The beat takes one every other second.
constexpr int kSampleSeconds = 2;

/// The accent of a share of a hundred where it is not the look's own.
std::optional<Accent> warningOf(double percent) {
  return percent >= kAlarmingPercent + 0.5 ? std::optional(Accent::Red) : std::nullopt;
}

double mostOf(const QList<double>& values) { return values.isEmpty() ? 0 : *std::ranges::max_element(values); }

/// What all of these panels share.
class MetricsPanel : public TilePanel {
 public:
  explicit MetricsPanel(const PanelContext& context) : TilePanel(context), figure_(new FigureView) {
    if (context.commands.can(Commands::Optional::SystemMonitor)) {
      auto* button = new Button(PanelWords::tr("Open Monitor"));
      connect(button, &QPushButton::clicked, this, [this] { this->context().commands.openSystemMonitor(); });
      header().addAction(button);
    }
    body().addWidget(figure_);
  }

 protected:
  virtual void fill(const MetricsSnapshot& now, const TileSources& sources) = 0;

  void refresh(const TileSources& sources) final {
    if (!sources.metrics) {
      showEmpty({definition().symbol, {}, title(), PanelWords::tr("Waiting for the first reading…"), {}, {}});
      return;
    }
    hideEmpty();
    fill(*sources.metrics, sources);
  }

  FigureView& figure() { return *figure_; }
  MachineDetails& machine() const { return context().readings.machine; }

  ChartView* addChart(const QString& label, std::optional<double> maximum,
                      const std::function<QString(double value)>& words = MachineWords::percentWithSign) {
    auto* chart = new ChartView(label);
    chart->setDepth(SystemMetrics::depth);
    chart->setMaximum(maximum);
    const auto ago = [](qsizetype before) {
      if (before == 0) return PanelWords::tr("now");
      return PanelWords::tr("%1 s ago").arg(LocalFigures::number(before * kSampleSeconds));
    };
    chart->setEnds(ago(SystemMetrics::depth), ago(0));
    chart->setWords(words);
    chart->setPlaces(ago);
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
        chart_(addChart(PanelWords::tr("Processor load"), 100)),
        coresLabel_(addSection(PanelWords::tr("Cores"))),
        cores_(new LevelBars(PanelWords::tr("Load of each core"))),
        processes_(new ProcessSection(context, ProcessOrder::CPU)) {
    cores_->setAlarm(kAlarmingPercent / 100.0);
    body().addWidget(cores_);
    body().addWidget(processes_);
    ticks(TickCadence::Second);  // The cores and processes are read here.
    before_ = machine().read().cores;
  }

 protected:
  void fill(const MetricsSnapshot& now, const TileSources& sources) override {
    figure().setFigure(MachineWords::percent(now.cpu), LocalFigures::percentSign());
    chart_->setSeries({{sources.cpuHistory, warningOf(now.cpu)}});
    const MachineReading reading = machine().read();
    const QString facts = MachineWords::processor(sources.locale, reading);
    figure().setLines(facts.isEmpty() ? PanelWords::tr("of all processors") : facts, MachineWords::uptime(reading));
    showCores(reading.cores);
    processes_->fill(sources);
  }

 private:
  /// Too short a time says nothing about a core.
  void showCores(const QList<CoreTicks>& ticks) {
    const bool longEnough =
        ticks.size() != before_.size() || (!ticks.isEmpty() && ticks.first().all >= before_.first().all + kFewestTicks);
    if (longEnough) {
      loads_ = coreLoads(before_, ticks);
      before_ = ticks;
    }
    if (loads_.size() != ticks.size()) loads_ = QList<double>(ticks.size(), 0.0);
    cores_->setLevels(loads_);
    cores_->setVisible(!ticks.isEmpty());
    coresLabel_->setVisible(!ticks.isEmpty());
  }

  static constexpr quint64 kFewestTicks = 50;

  ChartView* chart_;
  SectionLabel* coresLabel_;
  LevelBars* cores_;
  ProcessSection* processes_;
  QList<CoreTicks> before_;
  QList<double> loads_;
};

class MemoryPanel final : public MetricsPanel {
 public:
  explicit MemoryPanel(const PanelContext& context)
      : MetricsPanel(context),
        bar_(addBar(PanelWords::tr("Memory in use"))),
        parts_(new PartedBar(PanelWords::tr("Memory in use"))) {
    body().insertWidget(body().indexOf(bar_), parts_);
    chart_ = addChart(PanelWords::tr("Memory in use"), 100);
    processes_ = new ProcessSection(context, ProcessOrder::RAM);
    body().addWidget(processes_);
    ticks(TickCadence::Second);  // The parts and processes are read here.
  }

 protected:
  void fill(const MetricsSnapshot& now, const TileSources& sources) override {
    const QLocale& locale = sources.locale;
    const auto parts = machine().read().memory;
    figure().setFigure(MachineWords::percent(now.memory), LocalFigures::percentSign());
    const QString used = MachineWords::partOf(MachineWords::memory(locale, now.memoryUsed),
                                              MachineWords::memory(locale, now.memoryTotal));
    const QString swap = parts ? MachineWords::swap(locale, *parts) : QString();
    figure().setLines(PanelWords::tr("%1 in use").arg(used), swap);
    chart_->setSeries({{sources.memoryHistory, warningOf(now.memory)}});
    bar_->setShare(now.memory / 100);
    bar_->setAccent(warningOf(now.memory));
    bar_->setVisible(!parts);
    parts_->setVisible(parts.has_value());
    if (parts) showParts(locale, *parts);
    processes_->fill(sources);
  }

 private:
  void showParts(const QLocale& locale, const MemoryParts& parts) {
    const auto part = [&](const QString& name, double bytes) {
      return PartedBar::Part{name, MachineWords::memory(locale, bytes), bytes / std::max(1.0, parts.whole())};
    };
    parts_->setParts({part(PanelWords::tr("Applications"), parts.applications),
                      part(PanelWords::tr("Cache"), parts.cache), part(PanelWords::tr("System"), parts.system),
                      part(PanelWords::tr("Free"), parts.free)});
  }

  ProgressBar* bar_;
  PartedBar* parts_;
  ChartView* chart_;
  ProcessSection* processes_;
};

class StoragePanel final : public MetricsPanel {
 public:
  explicit StoragePanel(const PanelContext& context)
      : MetricsPanel(context),
        bar_(addBar(PanelWords::tr("Storage in use"))),
        used_(addDetail(PanelWords::tr("In use"), true)),
        free_(addDetail(PanelWords::tr("Available"))),
        all_(addDetail(PanelWords::tr("Capacity"))) {}

 protected:
  void fill(const MetricsSnapshot& now, const TileSources& sources) override {
    const double share = std::clamp(now.disk / 100, 0.0, 1.0);
    const double capacity = share < 1 ? now.diskFree / (1 - share) : 0;
    const auto size = [&](double bytes) { return capacity > 0 ? MachineWords::disk(sources.locale, bytes) : u"–"_s; };
    figure().setFigure(MachineWords::percent(now.disk), LocalFigures::percentSign());
    figure().setLines(PanelWords::tr("%1 available").arg(MachineWords::disk(sources.locale, now.diskFree)));
    bar_->setShare(share);
    bar_->setAccent(warningOf(now.disk));
    used_->setValue(size(capacity * share));
    free_->setValue(MachineWords::disk(sources.locale, now.diskFree));
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
  explicit BatteryPanel(const PanelContext& context)
      : MetricsPanel(context), bar_(addBar(PanelWords::tr("Battery charge"))) {}

 protected:
  void fill(const MetricsSnapshot& now, const TileSources&) override {
    if (!now.battery) {
      showEmpty({definition().symbol, {}, title(), PanelWords::tr("This computer has no battery."), {}, {}});
      return;
    }
    const bool onCharger = now.batteryFlow == BatteryFlow::Charging || now.batteryFlow == BatteryFlow::Held;
    const bool low = *now.battery < 20 && !onCharger;
    figure().setFigure(MachineWords::percent(*now.battery), LocalFigures::percentSign());
    figure().setLines(low ? PanelWords::tr("Charge it soon") : stateWords(now));
    bar_->setShare(*now.battery / 100);
    bar_->setAccent(low ? std::optional(Accent::Red) : std::nullopt);
  }

 private:
  static QString stateWords(const MetricsSnapshot& now) {
    switch (now.batteryFlow) {
      case BatteryFlow::Charging:
        return PanelWords::tr("Charging");
      case BatteryFlow::Draining:
        return PanelWords::tr("On battery power");
      case BatteryFlow::Held:
        return std::lround(*now.battery) >= 100 ? PanelWords::tr("Fully charged")
                                                : PanelWords::tr("Plugged in, not charging");
      case BatteryFlow::Unknown:
        break;
    }
    return PanelWords::tr("charged");
  }

  ProgressBar* bar_;
};

enum class Traffic { Both, Download, Upload };

class NetworkPanel final : public MetricsPanel {
 public:
  NetworkPanel(const PanelContext& context, Traffic traffic)
      : MetricsPanel(context),
        traffic_(traffic),
        chart_(addChart(PanelWords::tr("Network traffic"), std::nullopt,
                        [locale = QLocale()](double value) { return MachineWords::speed(locale, value); })),
        down_(addDetail(PanelWords::tr("Download"), true)),
        up_(addDetail(PanelWords::tr("Upload"))),
        most_(addDetail(PanelWords::tr("Highest"))) {
    // Each arrow has the colour of its line in the chart, where there is one.
    const bool sending = traffic == Traffic::Upload;
    down_->setSymbol(u"arrow.down"_s, sending ? Tone::Secondary : Tone::Primary);
    up_->setSymbol(u"arrow.up"_s, sending ? Tone::Primary : Tone::Secondary);
    if (!sending) down_->setSymbolAccent(look().accent);
    if (sending)
      up_->setSymbolAccent(look().accent);
    else if (traffic != Traffic::Download)
      up_->setSymbolAccent(Accent::Blue);
    most_->setSymbol(u"chart.bar"_s, Tone::Secondary);
  }

 protected:
  void fill(const MetricsSnapshot& now, const TileSources& sources) override {
    const bool sending = traffic_ == Traffic::Upload;
    const QStringList parts = MachineWords::speed(sources.locale, sending ? now.upload : now.download).split(u' ');
    figure().setFigure(parts.value(0), parts.value(1));
    figure().setLines(sending ? PanelWords::tr("Upload") : PanelWords::tr("Download"));
    const QList<double>& shown = sending ? sources.uploadHistory : sources.downloadHistory;
    if (traffic_ != Traffic::Both)
      chart_->setSeries({{shown, {}}});
    else
      chart_->setSeries({{sources.downloadHistory, {}, PanelWords::tr("Download")},
                         {sources.uploadHistory, Accent::Blue, PanelWords::tr("Upload")}});
    down_->setValue(MachineWords::speed(sources.locale, now.download));
    up_->setValue(MachineWords::speed(sources.locale, now.upload));
    most_->setValue(MachineWords::speed(sources.locale, mostOf(shown)));
  }

 private:
  Traffic traffic_;
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
        chart_(addChart(PanelWords::tr("Processor and memory"), 100)),
        processor_(addDetail(PanelWords::tr("Processor"), true)),
        memory_(addDetail(PanelWords::tr("Memory"))) {
    processor_->setSymbol(u"cpu"_s);
    processor_->setSymbolAccent(Accent::Green);
    memory_->setSymbol(u"memorychip"_s, Tone::Secondary);
    memory_->setSymbolAccent(Accent::Purple);
  }

 protected:
  void fill(const MetricsSnapshot& now, const TileSources& sources) override {
    figure().setFigure(MachineWords::percent(now.cpu), LocalFigures::percentSign());
    figure().setLines(PanelWords::tr("Processor"),
                      PanelWords::tr("Memory %1").arg(MachineWords::percentWithSign(now.memory)));
    chart_->setSeries(
        {{sources.cpuHistory, warningOf(now.cpu).value_or(Accent::Green), PanelWords::tr("Processor")},
         {sources.memoryHistory, warningOf(now.memory).value_or(Accent::Purple), PanelWords::tr("Memory")}});
    processor_->setValue(MachineWords::percentWithSign(now.cpu));
    memory_->setValue(MachineWords::percentWithSign(now.memory));
  }

 private:
  ChartView* chart_;
  ListRow* processor_;
  ListRow* memory_;
};

}  // namespace

std::unique_ptr<TilePanel> makeProcessorPanel(const PanelContext& context) {
  return std::make_unique<ProcessorPanel>(context);
}

std::unique_ptr<TilePanel> makeMemoryPanel(const PanelContext& context) {
  return std::make_unique<MemoryPanel>(context);
}

std::unique_ptr<TilePanel> makeStoragePanel(const PanelContext& context) {
  return std::make_unique<StoragePanel>(context);
}

std::unique_ptr<TilePanel> makeBatteryPanel(const PanelContext& context) {
  return std::make_unique<BatteryPanel>(context);
}

std::unique_ptr<TilePanel> makeSystemPanel(const PanelContext& context) {
  return std::make_unique<SystemPanel>(context);
}

std::unique_ptr<TilePanel> makeNetworkPanel(const PanelContext& context) {
  return std::make_unique<NetworkPanel>(context, Traffic::Both);
}

std::unique_ptr<TilePanel> makeDownloadPanel(const PanelContext& context) {
  return std::make_unique<NetworkPanel>(context, Traffic::Download);
}

std::unique_ptr<TilePanel> makeUploadPanel(const PanelContext& context) {
  return std::make_unique<NetworkPanel>(context, Traffic::Upload);
}

}  // namespace tarnwick
