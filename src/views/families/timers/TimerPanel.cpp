#include "views/families/timers/TimersRoom.h"

#include <QHBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "base/DomainError.h"
#include "base/LocalFigures.h"
#include "base/Text.h"
#include "store/DocumentEdits.h"
#include "views/controls/Buttons.h"
#include "views/controls/Charts.h"
#include "views/controls/Rows.h"
#include "views/controls/Stepper.h"
#include "views/controls/Switch.h"
#include "views/families/timers/TimerFace.h"
#include "views/panels/ChipGrid.h"
#include "views/panels/PanelWords.h"
#include "widgets/PhaseMath.h"
#include "widgets/TimeMath.h"
#include "widgets/TimerActions.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

TimerRun runOf(const DockWidget& widget) { return KindTraits::of(widget.kind).run; }

constexpr int kMostMinutes = 1440;
constexpr int kMostBreak = 120;
constexpr int kMostSessions = 12;
constexpr qsizetype kMostLaps = 99;
constexpr std::array kPresets = {5, 15, 25, 60};

QString minutesText(int minutes) { return PanelWords::tr("%1 min").arg(LocalFigures::number(minutes)); }
int wholeMinutes(double minutes) { return static_cast<int>(std::lround(std::max(0.0, minutes))); }

/// What all timers share: a face, a row of buttons, and the settings that a button of the header shows.
class TimerPanel : public TilePanel {
 public:
  TimerPanel(const PanelContext& context, TimerFace::Shape shape)
      : TilePanel(context),
        face_(new TimerFace(shape)),
        buttons_(new QHBoxLayout),
        reset_(new Button(PanelWords::tr("Reset"))),
        toggle_(new Button({}, Button::Role::Primary)),
        settings_(new QWidget),
        settingsColumn_(new QVBoxLayout(settings_)) {
    body().addWidget(face_);
    buttons_->setSpacing(theme::kRowOverhang);
    settingsColumn_->setContentsMargins(0, theme::kPanelHeaderBelow, 0, 0);
    settingsColumn_->setSpacing(0);
    settings_->hide();
    connect(reset_, &QPushButton::clicked, this, [this] { reset(); });
    connect(toggle_, &QPushButton::clicked, this, [this] { store().toggleTimer(this->context().widget); });
  }

 protected:
  virtual void fill(const TimerFacts& facts) = 0;

  void refresh(const TileSources& sources) final {
    now_ = sources.now;
    locale_ = sources.locale;
    const TimerFacts facts = timerFacts(widget(), sources.now);
    face_->setFacts(facts);
    toggle_->setLabel(facts.running ? PanelWords::tr("Pause")
                      : facts.fresh ? PanelWords::tr("Start")
                      : facts.ended ? PanelWords::tr("Start Again")
                                    : PanelWords::tr("Resume"));
    reset_->setEnabled(!facts.fresh || facts.session > 0 || widget().options.contains(option::phase));
    fill(facts);
  }

  /// Puts the row of buttons below what is there so far.
  void addButtons(const QList<QPair<QWidget*, int>>& buttons, int inset = 0) {
    buttons_->setContentsMargins(inset, 0, inset, 0);
    for (const auto& [button, stretch] : buttons) {
      button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
      buttons_->addWidget(button, stretch);
    }
    body().addLayout(buttons_);
    // Return starts the timer; the first control of the panel would change its length.
    beginWith(*toggle_);
  }

  void addSettingsButton() {
    auto* action = new IconButton(u"slider.horizontal.3"_s, PanelWords::tr("Durations"));
    action->setCheckable(true);
    connect(action, &QPushButton::toggled, settings_, &QWidget::setVisible);
    header().addAction(action);
    body().addWidget(settings_);
  }

  Stepper* addDuration(const QString& label, const QString& key, int least, int most) {
    auto* stepper = new Stepper(label);
    stepper->setRange(least, most);
    stepper->setFormat(
        [least](int value) { return least == 0 && value == 0 ? PanelWords::tr("Off") : minutesText(value); });
    connect(stepper, &Stepper::valueChanged, this, [this, key](int value) { setDuration(key, value); });
    addSetting(label, stepper);
    return stepper;
  }

  void addSetting(const QString& label, QWidget* control) {
    auto* row = new ListRow(label);
    row->setParted(settingsColumn_->count() > 0);
    row->addControl(control);
    settingsColumn_->addWidget(row);
  }

  Switch* addContinueSwitch() {
    auto* toggle = new Switch(PanelWords::tr("Continue automatically"));
    connect(toggle, &QAbstractButton::clicked, this,
            [this](bool on) { changeSetting(option::autoContinue, on ? value::on : value::off); });
    addSetting(PanelWords::tr("Continue automatically"), toggle);
    return toggle;
  }

  void setDuration(const QString& key, int value) {
    DockWidget changed = widget();
    const QString text = QString::number(value);
    if (changed.options.value(key) == text) return;
    changed.options.insert(key, text);
    // Another main duration starts the timer over; one that is at its beginning takes its new length in any case.
    if (key == option::minutes) changed.options.remove(option::deadline);
    if (key == option::minutes || timerFacts(widget(), now_).fresh) {
      changed.options.remove(option::remaining);
      // Without a time left on it, a posture cycle has that of its seated phase, whichever it is in.
      if (const QString phase = changed.options.value(option::phase);
          runOf(changed) == TimerRun::Posture && !phase.isEmpty())
        changed.options.insert(option::remaining, TimeMath::text(PostureMath::duration(changed, phase)));
    }
    changeSettings(changed);
  }

  void reset() {
    const DockWidget before = widget();
    store().resetTimer(before.id);
    // A countdown is only set again; what a stopwatch has counted would be lost.
    if (runOf(before) != TimerRun::Stopwatch) return;
    // What it has counted since is nobody's to throw away.
    const auto exchange = [store = &store()](const DockWidget& from, const DockWidget& to) {
      const DockWidget* stored = DocumentEdits::find(store->config(), from.id);
      if (!stored) return;
      DockWidget counted = *stored;
      for (const QLatin1StringView key : {option::started, option::elapsed, option::laps}) {
        if (counted.options.contains(key) != from.options.contains(key) ||
            counted.options.value(key) != from.options.value(key))
          throw DomainError::invalid(PanelWords::tr("The stopwatch is running again and was left as it is."));
        counted.options.remove(key);
        if (to.options.contains(key)) counted.options.insert(key, to.options.value(key));
      }
      store->update(counted);
    };
    const DockWidget after = TimerActions::reset(before);
    offerUndo(
        PanelWords::tr("The stopwatch was reset."), [exchange, before, after] { exchange(after, before); },
        [exchange, before, after] { exchange(before, after); });
  }

  void skip() {
    DockWidget ended = widget();
    ended.options.insert(option::deadline, TimeMath::text(TimeMath::unixSeconds(now_)));
    store().update(runOf(ended) == TimerRun::Pomodoro ? PomodoroMath::advance(ended, now_)
                                                      : PostureMath::advance(ended, now_));
  }

  double optionNumber(QLatin1StringView key, double otherwise) const { return widget().number(key, otherwise); }

  Button* resetButton() { return reset_; }
  Button* toggleButton() { return toggle_; }
  const QDateTime& now() const { return now_; }
  const QLocale& locale() const { return locale_; }

 private:
  TimerFace* face_;
  QHBoxLayout* buttons_;
  Button* reset_;
  Button* toggle_;
  QWidget* settings_;
  QVBoxLayout* settingsColumn_;
  QDateTime now_;
  QLocale locale_;
};

/// Timers that run down once: timer and exercise.
class CountdownPanel final : public TimerPanel {
 public:
  explicit CountdownPanel(const PanelContext& context)
      : TimerPanel(context, TimerFace::Shape::Plain),
        bar_(new ProgressBar(PanelWords::tr("Time left"))),
        presets_(new ChipGrid(PanelWords::tr("Duration"), static_cast<int>(kPresets.size()))) {
    body().addSpacing(theme::kButtonSymbolGap);
    body().addWidget(bar_);
    body().addSpacing(theme::kPanelHeaderBelow);
    QStringList labels;
    for (const int minutes : kPresets) labels.append(minutesText(minutes));
    presets_->setWords(labels);
    body().addWidget(presets_);
    body().addSpacing(theme::kRowOverhang);
    addButtons({{resetButton(), 4}, {toggleButton(), 7}});
    addSettingsButton();
    minutes_ = addDuration(PanelWords::tr("Duration"), option::minutes, 1, kMostMinutes);
    connect(presets_, &ChipGrid::chosen, this,
            [this](int index) { setDuration(option::minutes, kPresets[static_cast<std::size_t>(index)]); });
  }

 protected:
  void fill(const TimerFacts& facts) override {
    bar_->setShare(facts.fresh ? 1 : facts.share);
    const double minutes = facts.whole / 60;
    const auto preset = std::ranges::find(kPresets, minutes);
    presets_->setChosen(preset == kPresets.end() ? -1 : static_cast<int>(preset - kPresets.begin()));
    minutes_->setValue(wholeMinutes(minutes));
    header().setNote(minutesText(wholeMinutes(minutes)));
  }

 private:
  ProgressBar* bar_;
  ChipGrid* presets_;
  Stepper* minutes_ = nullptr;
};

class PomodoroPanel final : public TimerPanel {
 public:
  explicit PomodoroPanel(const PanelContext& context)
      : TimerPanel(context, TimerFace::Shape::Ring),
        next_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)),
        count_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)) {
    auto* skipButton = new Button(PanelWords::tr("Skip"));
    connect(skipButton, &QPushButton::clicked, this, [this] { skip(); });
    body().addSpacing(theme::kPanelPadding);
    addButtons({{resetButton(), 5}, {toggleButton(), 6}, {skipButton, 5}}, theme::kRowOverhang);
    body().addSpacing(theme::kPanelHeaderBelow);
    auto* footer = new QHBoxLayout;
    footer->addWidget(next_, 1);
    footer->addWidget(count_);
    body().addLayout(footer);
    addSettingsButton();
    focus_ = addDuration(PanelWords::tr("Focus"), option::minutes, 1, kMostMinutes);
    shortBreak_ = addDuration(PanelWords::tr("Short break"), option::shortBreak, 1, kMostBreak);
    longBreak_ = addDuration(PanelWords::tr("Long break"), option::longBreak, 1, kMostBreak);
    cycle_ = new Stepper(PanelWords::tr("Sessions before a long break"));
    cycle_->setRange(1, kMostSessions);
    connect(cycle_, &Stepper::valueChanged, this,
            [this](int value) { changeSetting(option::cycleLength, QString::number(value)); });
    addSetting(PanelWords::tr("Sessions before a long break"), cycle_);
    continues_ = addContinueSwitch();
  }

 protected:
  void fill(const TimerFacts& facts) override {
    const QString phase = nextTimerPhase(widget());
    const int minutes = wholeMinutes(PomodoroMath::duration(widget(), phase) / 60);
    const QString next = phase == value::work        ? PanelWords::tr("Next: focus, %1 min")
                         : phase == value::longBreak ? PanelWords::tr("Next: long break, %1 min")
                                                     : PanelWords::tr("Next: short break, %1 min");
    next_->setText(next.arg(LocalFigures::number(minutes)));
    count_->setText(
        PanelWords::tr("%1 of %2").arg(LocalFigures::number(facts.session), LocalFigures::number(facts.round)));
    focus_->setValue(wholeMinutes(optionNumber(option::minutes, 25)));
    shortBreak_->setValue(wholeMinutes(optionNumber(option::shortBreak, 5)));
    longBreak_->setValue(wholeMinutes(optionNumber(option::longBreak, 15)));
    cycle_->setValue(facts.round);
    continues_->setChecked(widget().options.value(option::autoContinue) == value::on);
  }

 private:
  TextLabel* next_;
  TextLabel* count_;
  Stepper* focus_;
  Stepper* shortBreak_;
  Stepper* longBreak_;
  Stepper* cycle_;
  Switch* continues_;
};

class PosturePanel final : public TimerPanel {
 public:
  explicit PosturePanel(const PanelContext& context)
      : TimerPanel(context, TimerFace::Shape::Ring),
        next_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)),
        skip_(new Button(PanelWords::tr("Skip"))) {
    connect(skip_, &QPushButton::clicked, this, [this] { skip(); });
    body().addSpacing(theme::kPanelPadding);
    addButtons({{resetButton(), 5}, {toggleButton(), 6}, {skip_, 5}}, theme::kRowOverhang);
    body().addSpacing(theme::kPanelHeaderBelow);
    body().addWidget(next_);
    addSettingsButton();
    seated_ = addDuration(PanelWords::tr("Seated"), option::minutes, 1, kMostMinutes);
    standing_ = addDuration(PanelWords::tr("Standing"), option::standingMinutes, 0, kMostMinutes);
    continues_ = addContinueSwitch();
  }

 protected:
  void fill(const TimerFacts&) override {
    const bool stands = PostureMath::stands(widget());
    const QString phase = nextTimerPhase(widget());
    const int minutes = wholeMinutes(PostureMath::duration(widget(), phase) / 60);
    next_->setText(!stands ? PanelWords::tr("Reminds you to check your posture.")
                   : phase == value::standing
                       ? PanelWords::tr("Next: standing, %1 min").arg(LocalFigures::number(minutes))
                       : PanelWords::tr("Next: seated, %1 min").arg(LocalFigures::number(minutes)));
    skip_->setVisible(stands);
    seated_->setValue(wholeMinutes(optionNumber(option::minutes, 25)));
    standing_->setValue(wholeMinutes(optionNumber(option::standingMinutes, 0)));
    continues_->setChecked(widget().options.value(option::autoContinue) == value::on);
  }

 private:
  TextLabel* next_;
  Button* skip_;
  Stepper* seated_;
  Stepper* standing_;
  Switch* continues_;
};

/// Counts up. Laps are moments on its own clock, so those that lie ahead belong to a run that was reset.
class StopwatchPanel final : public TimerPanel {
 public:
  explicit StopwatchPanel(const PanelContext& context)
      : TimerPanel(context, TimerFace::Shape::Plain), lap_(new Button(PanelWords::tr("Lap"))), laps_(new QVBoxLayout) {
    connect(lap_, &QPushButton::clicked, this, [this] { addLap(); });
    body().addSpacing(theme::kPanelHeaderBelow);
    addButtons({{resetButton(), 5}, {lap_, 5}, {toggleButton(), 6}});
    laps_->setContentsMargins(0, 0, 0, 0);
    laps_->setSpacing(0);
    body().addLayout(laps_);
  }

 protected:
  void fill(const TimerFacts& facts) override {
    lap_->setEnabled(facts.running);
    const QList<double> laps = lapsUpTo(facts.seconds);
    if (laps == shown_) return;
    shown_ = laps;
    while (QLayoutItem* item = laps_->takeAt(0)) {
      item->widget()->deleteLater();
      delete item;
    }
    for (qsizetype i = laps.size() - 1; i >= 0; --i) {
      auto* row = new ListRow(PanelWords::tr("Lap %1").arg(LocalFigures::number(i + 1)));
      row->setValue(withTenths(laps[i] - (i > 0 ? laps[i - 1] : 0)));
      row->setCaption(withTenths(laps[i]));
      row->setParted(i + 1 < laps.size());
      laps_->addWidget(row);
    }
  }

 private:
  QList<double> lapsUpTo(double seconds) const {
    QList<double> laps;
    for (const QString& text : widget().options.value(option::laps).split(u',', Qt::SkipEmptyParts))
      if (const auto lap = Text::number(text); lap && *lap >= 0 && *lap <= seconds && laps.size() < kMostLaps)
        laps.append(*lap);
    return laps;
  }

  QString withTenths(double seconds) const {
    // What lies between two laps is seldom a whole number of tenths in a double.
    const double tenths = std::round(seconds * 10);
    return LocalFigures::of(
        TimeMath::display(std::floor(tenths / 10)) + u'.' + QString::number(static_cast<int>(std::fmod(tenths, 10))),
        locale());
  }

  void addLap() {
    const double seconds = TimeMath::elapsed(widget(), store().now());
    QStringList texts;
    for (const double lap : lapsUpTo(seconds)) texts.append(TimeMath::text(lap));
    if (texts.size() >= kMostLaps) return;
    texts.append(QString::number(seconds, 'f', 1));
    setOption(option::laps, texts.join(u','));
  }

  Button* lap_;
  QVBoxLayout* laps_;
  QList<double> shown_;
};

}  // namespace

std::unique_ptr<TilePanel> makeCountdownPanel(const PanelContext& context) {
  return std::make_unique<CountdownPanel>(context);
}

std::unique_ptr<TilePanel> makePomodoroPanel(const PanelContext& context) {
  return std::make_unique<PomodoroPanel>(context);
}

std::unique_ptr<TilePanel> makePosturePanel(const PanelContext& context) {
  return std::make_unique<PosturePanel>(context);
}

std::unique_ptr<TilePanel> makeStopwatchPanel(const PanelContext& context) {
  return std::make_unique<StopwatchPanel>(context);
}

}  // namespace tarnwick
