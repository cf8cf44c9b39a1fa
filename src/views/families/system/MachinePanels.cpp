#include "views/families/system/SystemRoom.h"

#include <algorithm>
#include <cmath>

#include "base/DomainError.h"
#include "base/LocalFigures.h"
#include "system/ProcessMonitor.h"
#include "system/SystemTemperature.h"
#include "views/controls/Buttons.h"
#include "views/controls/Charts.h"
#include "views/controls/ConfirmBar.h"
#include "views/controls/PlainTip.h"
#include "views/controls/Rows.h"
#include "views/controls/Segments.h"
#include "views/families/system/ProcessSection.h"
#include "views/families/system/ProcessTiles.h"
#include "views/panels/PanelWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString memoryText(const QLocale& locale, quint64 bytes) {
  return locale.formattedDataSize(static_cast<qint64>(bytes), bytes < 1'000'000'000 ? 0 : 1,
                                  QLocale::DataSizeTraditionalFormat);
}

class ProcessesPanel final : public TilePanel {
 public:
  explicit ProcessesPanel(const PanelContext& context)
      : TilePanel(context),
        order_(new Segments(PanelWords::tr("Sort by"), {PanelWords::tr("CPU"), PanelWords::tr("RAM")})),
        confirm_(new ConfirmBar),
        foot_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)) {
    header().addAction(order_);
    connect(order_, &Segments::chosenChanged, this, [this](int chosen) {
      changeSetting(option::sortBy, chosen == 1 ? std::optional(QString(value::byMemory)) : std::nullopt);
      refreshNow();
    });
    body().addWidget(confirm_);
    for (int i = 0; i < ProcessRanking::panelRows; ++i) addRow();
    foot_->setWordWrap(true);
    body().addSpacing(theme::kPanelHeaderBelow);
    body().addWidget(foot_);
    connect(&context.readings.processes, &ProcessMonitor::changed, this, &ProcessesPanel::refreshNow);
  }

 protected:
  void refresh(const TileSources& sources) override {
    const ProcessOrder order = processOrderOf(widget());
    order_->setChosen(order == ProcessOrder::RAM ? 1 : 0);
    shown_ = ProcessRanking::top(sources.readings.processes, order, ProcessRanking::panelRows);
    // A busy machine fills the bars; of a quiet one they compare what there is.
    double most = order == ProcessOrder::CPU ? kQuietCpu : 1;
    for (const ProcessUsage& each : shown_) most = std::max(most, amount(each, order));
    for (qsizetype i = 0; i < rows_.size(); ++i) {
      rows_[i].row->setVisible(i < shown_.size());
      if (i < shown_.size()) fill(rows_[i], shown_[i], order, most, sources.locale);
    }
    foot_->setText(sources.readings.processMessage);
  }

 private:
  struct Line {
    ListRow* row;
    IconButton* end;
  };

  static double amount(const ProcessUsage& usage, ProcessOrder order) {
    return order == ProcessOrder::CPU ? usage.cpu.value_or(0) : static_cast<double>(usage.reading.memory);
  }

  void addRow() {
    auto* row = new ListRow({});
    row->setParted(!rows_.isEmpty());
    auto* end = new IconButton(u"xmark"_s, PanelWords::tr("End Process"));
    end->setGround(false);
    end->setTone(Tone::Secondary);
    row->addControl(end);
    body().addWidget(row);
    connect(end, &QPushButton::clicked, this, [this, place = rows_.size()] {
      if (place < shown_.size()) askToEnd(shown_[place].reading);
    });
    rows_.append({row, end});
  }

  void fill(const Line& line, const ProcessUsage& usage, ProcessOrder order, double most, const QLocale& locale) {
    line.row->setTitle(usage.reading.name);
    setPlainTip(*line.row, PanelWords::tr("%1 · process %2").arg(usage.reading.name).arg(usage.reading.pid));
    line.row->setValue(order == ProcessOrder::CPU ? LocalFigures::of(ProcessRanking::cpuText(usage.cpu), locale)
                                                  : memoryText(locale, usage.reading.memory));
    line.row->setBar(amount(usage, order) / most);
    line.end->setLabel(PanelWords::tr("End %1").arg(usage.reading.name));
    setPlainTip(*line.end, line.end->label());
  }

  /// The process that was shown, not the one that takes its row while the user thinks.
  void askToEnd(const ProcessReading& process) {
    confirm_->ask(PanelWords::tr("End “%1”? Unsaved changes in it will be lost.").arg(process.name),
                  PanelWords::tr("End Process"), [this, process] {
                    try {
                      context().commands.endProcess(process);
                      setMessage({});
                    } catch (const DomainError& failure) {
                      setMessage(failure.message());
                    }
                  });
  }

  Segments* order_;
  ConfirmBar* confirm_;
  TextLabel* foot_;
  QList<Line> rows_;
  QList<ProcessUsage> shown_;
};

class TemperaturePanel final : public TilePanel {
 public:
  explicit TemperaturePanel(const PanelContext& context)
      : TilePanel(context),
        figure_(new FigureView),
        chart_(new ChartView(PanelWords::tr("Temperature of the processor"))),
        mean_(new ListRow(PanelWords::tr("Average"))),
        most_(new ListRow(PanelWords::tr("Highest"))) {
    chart_->setDepth(SystemTemperature::depth);
    chart_->setMaximum(100);
    chart_->setEnds(PanelWords::tr("Earlier"), PanelWords::tr("now"));
    chart_->setWords([](double celsius) { return number(celsius) + u'°'; });
    body().addWidget(figure_);
    body().addSpacing(theme::kPanelHeaderBelow);
    body().addWidget(chart_);
    body().addWidget(mean_);
    most_->setParted(true);
    body().addWidget(most_);
    connect(&context.readings.temperature, &SystemTemperature::changed, this, &TemperaturePanel::refreshNow);
  }

 protected:
  void refresh(const TileSources& sources) override {
    const ReadingFacts& readings = sources.readings;
    if (!readings.celsius) {
      const bool waits = !context().readings.temperature.hasAnswered();
      showEmpty({definition().symbol,
                 {},
                 title(),
                 waits ? PanelWords::tr("Waiting for the first reading…")
                       : PanelWords::tr("This computer has no temperature sensor for its processor."),
                 {},
                 {}});
      return;
    }
    hideEmpty();
    figure_->setFigure(number(*readings.celsius), u"°C"_s);
    const int sensors = context().readings.temperature.sensorCount();
    figure_->setLines(
        PanelWords::tr("Processor"),
        sensors > 1 ? PanelWords::tr("mean of %1 sensors").arg(LocalFigures::number(sensors)) : QString());
    chart_->setSeries({{readings.celsiusHistory, {}}});
    double sum = 0;
    double most = *readings.celsius;
    for (const double value : readings.celsiusHistory) {
      sum += value;
      most = std::max(most, value);
    }
    const auto count = static_cast<double>(readings.celsiusHistory.size());
    mean_->setValue(count > 0 ? number(sum / count) + u'°' : u"–"_s);
    most_->setValue(number(most) + u'°');
  }

 private:
  static QString number(double celsius) {
    const auto whole = std::lround(celsius);
    return (whole < 0 ? QString(u'−') : QString()) + LocalFigures::number(std::abs(whole));
  }

  FigureView* figure_;
  ChartView* chart_;
  ListRow* mean_;
  ListRow* most_;
};

}  // namespace

std::unique_ptr<TilePanel> makeProcessesPanel(const PanelContext& context) {
  return std::make_unique<ProcessesPanel>(context);
}
std::unique_ptr<TilePanel> makeTemperaturePanel(const PanelContext& context) {
  return std::make_unique<TemperaturePanel>(context);
}

}  // namespace tarnwick
