#include "views/families/habits/HabitsRoom.h"

#include <QHBoxLayout>
#include <QSet>
#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/Mirroring.h"
#include "views/controls/Rows.h"
#include "views/controls/Stepper.h"
#include "views/panels/PanelWords.h"
#include "views/theme/WaterGlass.h"
#include "widgets/HabitMath.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kMostMinutesBetween = 480;
constexpr int kReminderStep = 15;

class GlassView final : public QWidget {
 public:
  GlassView() { setFixedSize(64, 92); }
  void setShare(double share) {
    if (share == share_) return;
    share_ = share;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const ControlLook& look = lookOf(*this);
    drawWaterGlass(painter, rect(), share_, look.palette.track, look.accentColor());
  }

 private:
  double share_ = 0;
};

class WaterPanel final : public TilePanel {
 public:
  explicit WaterPanel(const PanelContext& context)
      : TilePanel(context),
        figure_(new FigureView),
        glass_(new GlassView),
        less_(new IconButton(u"minus"_s, PanelWords::tr("One glass less"))),
        more_(new Button(PanelWords::tr("Drink a Glass"), Button::Role::Primary)),
        goal_(new Stepper(PanelWords::tr("Daily goal"))),
        reminder_(new Stepper(PanelWords::tr("Remind me every"))) {
    auto* side = new QVBoxLayout;
    side->setSpacing(theme::kRowOverhang);
    side->addWidget(figure_);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::kRowOverhang);
    buttons->addWidget(less_);
    buttons->addWidget(more_, 1);
    side->addLayout(buttons);
    auto* top = new QHBoxLayout;
    top->setSpacing(theme::kPanelPadding);
    top->addWidget(glass_);
    top->addLayout(side, 1);
    body().addLayout(top);
    body().addSpacing(theme::kPanelHeaderBelow);
    goal_->setRange(1, WaterMath::kMostGlasses);
    reminder_->setRange(0, kMostMinutesBetween);
    reminder_->setStep(kReminderStep);
    reminder_->setFormat([](int minutes) {
      return minutes == 0 ? PanelWords::tr("Off") : PanelWords::tr("%1 min").arg(LocalFigures::number(minutes));
    });
    addRow(PanelWords::tr("Daily goal"), goal_, false);
    addRow(PanelWords::tr("Remind me every"), reminder_, true);
    connect(less_, &QPushButton::clicked, this, [this] { store().drink(this->context().widget, -1); });
    connect(more_, &QPushButton::clicked, this, [this] { store().drink(this->context().widget); });
    connect(goal_, &Stepper::valueChanged, this,
            [this](int value) { changeSetting(option::goal, QString::number(value)); });
    connect(reminder_, &Stepper::valueChanged, this, [this](int value) {
      changeSetting(option::interval, value == 0 ? std::nullopt : std::optional(QString::number(value)));
    });
  }

 protected:
  void refresh(const TileSources&) override {
    const int glasses = store().waterCount(widget());
    const int goal = WaterMath::goal(widget());
    glass_->setShare(static_cast<double>(glasses) / goal);
    figure_->setFigure(LocalFigures::number(glasses), u'/' + LocalFigures::number(goal));
    const int left = goal - glasses;
    figure_->setLines(left > 1    ? PanelWords::tr("%1 glasses to go").arg(LocalFigures::number(left))
                      : left == 1 ? PanelWords::tr("One glass to go")
                                  : PanelWords::tr("Goal reached"));
    less_->setEnabled(glasses > 0);
    more_->setEnabled(glasses < WaterMath::kMostGlasses);
    goal_->setValue(goal);
    reminder_->setValue(static_cast<int>(std::clamp(widget().number(option::interval, 0), 0.0, 1440.0)));
  }

 private:
  void addRow(const QString& label, QWidget* control, bool parted) {
    auto* row = new ListRow(label);
    row->setParted(parted);
    row->addControl(control);
    body().addWidget(row);
  }

  FigureView* figure_;
  GlassView* glass_;
  IconButton* less_;
  Button* more_;
  Stepper* goal_;
  Stepper* reminder_;
};

/// Five weeks up to this one, a disc for each day that was kept.
class HabitWeeks final : public QWidget {
 public:
  static constexpr int kWeeks = 5;
  static constexpr int kLetters = 20;
  static constexpr int kCell = 30;
  static constexpr double kDisc = 12;

  HabitWeeks() {
    setFixedHeight(kLetters + kCell * kWeeks);
    setAccessibleName(PanelWords::tr("The last five weeks"));
  }

  void setDays(const QDate& today, const QLocale& locale, const QSet<QString>& kept) {
    if (today == today_ && kept == kept_ && locale == locale_) return;
    today_ = today;
    kept_ = kept;
    locale_ = locale;
    const int since = (today.dayOfWeek() - locale.firstDayOfWeek() + 7) % 7;
    first_ = today.addDays(-since - 7 * (kWeeks - 1));
    int days = 0;
    for (QDate day = first_; day <= today; day = day.addDays(1)) days += isKept(day) ? 1 : 0;
    setAccessibleDescription(PanelWords::tr("%1 days done").arg(LocalFigures::number(days)));
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const ControlLook& look = lookOf(*this);
    const Mirroring mirror(*this);
    const double cell = width() / 7.0;
    for (int i = 0; i < 7; ++i)
      drawTextIn(painter, mirror(QRectF(cell * i, 0, cell, kLetters)),
                 locale_.standaloneDayName(first_.addDays(i).dayOfWeek(), QLocale::NarrowFormat), TextStyle::TabLabel,
                 look.palette.secondary, Qt::AlignHCenter);
    for (int i = 0; i < 7 * kWeeks; ++i)
      paintDay(painter, look, first_.addDays(i),
               mirror(QRectF(cell * (i % 7), kLetters + kCell * (i / 7), cell, kCell)));
  }

 private:
  bool isKept(const QDate& day) const { return kept_.contains(HabitMath::key(day.startOfDay())); }

  void paintDay(QPainter& painter, const ControlLook& look, const QDate& day, const QRectF& box) const {
    QColor ink = day > today_ ? look.palette.tertiary : look.palette.secondary;
    if (isKept(day)) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(look.accentColor());
      painter.drawEllipse(box.center(), kDisc, kDisc);
      ink = look.palette.inkOnAccent;
    } else if (day == today_) {
      painter.setPen(QPen(look.accentColor(), 1.5));
      painter.setBrush(Qt::NoBrush);
      painter.drawEllipse(box.center(), kDisc - 0.75, kDisc - 0.75);
      ink = look.palette.primary;
    }
    drawTextIn(painter, box, locale_.toString(day.day()), TextStyle::ListRow, ink, Qt::AlignHCenter);
  }

  QDate today_;
  QDate first_;
  QLocale locale_;
  QSet<QString> kept_;
};

class HabitPanel final : public TilePanel {
 public:
  explicit HabitPanel(const PanelContext& context)
      : TilePanel(context),
        field_(new TextField(PanelWords::tr("Habit"))),
        figure_(new FigureView),
        weeks_(new HabitWeeks),
        today_(new Button({}, Button::Role::Primary)) {
    field_->setPlaceholderText(PanelWords::tr("Read for 20 minutes"));
    body().addWidget(field_);
    body().addSpacing(theme::kPanelHeaderBelow);
    body().addWidget(figure_);
    body().addSpacing(theme::kSectionBelow);
    body().addWidget(weeks_);
    body().addSpacing(theme::kPanelHeaderBelow);
    body().addWidget(today_);
    // A screen reader sets the text, which the toolkit does not count as an edit.
    connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) {
      if (text != widget().options.value(option::text)) setOption(option::text, text);
    });
    connect(today_, &QPushButton::clicked, this, [this] { store().toggleHabit(this->context().widget); });
  }

 protected:
  void refresh(const TileSources& sources) override {
    const QString text = widget().options.value(option::text);
    if (text != field_->text()) field_->setText(text);
    const QSet<QString> kept = HabitMath::completed(widget());
    const int streak = HabitMath::streak(widget(), sources.now);
    const bool done = kept.contains(HabitMath::key(sources.now));
    figure_->setFigure(LocalFigures::number(streak),
                       u"\u2009"_s + (streak == 1 ? PanelWords::tr("day") : PanelWords::tr("days")));
    figure_->setLines(done ? PanelWords::tr("Done today") : PanelWords::tr("Not yet today"),
                      PanelWords::tr("%1 in total").arg(LocalFigures::number(kept.size())));
    weeks_->setDays(sources.now.date(), sources.locale, kept);
    today_->setLabel(done ? PanelWords::tr("Undo Today") : PanelWords::tr("Done for Today"));
    today_->setRole(done ? Button::Role::Plain : Button::Role::Primary);
  }

 private:
  TextField* field_;
  FigureView* figure_;
  HabitWeeks* weeks_;
  Button* today_;
};

}  // namespace

std::unique_ptr<TilePanel> makeWaterPanel(const PanelContext& context) { return std::make_unique<WaterPanel>(context); }
std::unique_ptr<TilePanel> makeHabitPanel(const PanelContext& context) { return std::make_unique<HabitPanel>(context); }

}  // namespace tarnwick
