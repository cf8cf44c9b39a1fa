#include "views/families/calendar/CalendarRoom.h"

#include <QTimeZone>
#include <array>

#include "base/LocalFigures.h"
#include "views/controls/Rows.h"
#include "views/families/calendar/ProgressTiles.h"
#include "views/panels/PanelWords.h"
#include "widgets/ClockWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

using Component = TimeMath::Component;
constexpr std::array kComponents = {Component::Day, Component::Month, Component::Year};

QString nameOf(Component component, const TileSources& sources) {
  const QDate today = sources.now.date();
  switch (component) {
    case Component::Day:
      return ClockWords::dates(today, sources.locale).value(0);
    case Component::Month:
      return sources.locale.standaloneMonthName(today.month());
    case Component::Year:
      break;
  }
  return sources.locale.toString(today, u"yyyy"_s);
}

QString wholeOf(Component component) {
  switch (component) {
    case Component::Day:
      return PanelWords::tr("of the day");
    case Component::Month:
      return PanelWords::tr("of the month");
    case Component::Year:
      break;
  }
  return PanelWords::tr("of the year");
}

/// What is left: hours and minutes of the day, whole days of the rest.
QString leftOf(Component component, const QDateTime& now) {
  const QDate today = now.date();
  if (component == Component::Day) {
    const QDateTime end = today.addDays(1).startOfDay(now.timeZone());
    return PanelWords::tr("%1 left").arg(ClockWords::span(ClockWords::minutesUntil(end, now)));
  }
  const int days =
      component == Component::Month ? today.daysInMonth() - today.day() : today.daysInYear() - today.dayOfYear();
  if (days == 0) return PanelWords::tr("The last day");
  return days == 1 ? PanelWords::tr("1 day left") : PanelWords::tr("%1 days left").arg(LocalFigures::number(days));
}

class ProgressPanel final : public TilePanel {
 public:
  ProgressPanel(const PanelContext& context, Component own) : TilePanel(context), own_(own), figure_(new FigureView) {
    body().addWidget(figure_);
    body().addSpacing(theme::kSectionBelow);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      rows_[i] = new ListRow({});
      rows_[i]->setParted(i > 0);
      body().addWidget(rows_[i]);
    }
  }

 protected:
  void refresh(const TileSources& sources) override {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      const double share = TimeMath::progress(sources.now, kComponents[i]);
      const int percent = shownPercent(share);
      const QString name = nameOf(kComponents[i], sources);
      const QString left = leftOf(kComponents[i], sources.now);
      rows_[i]->setTitle(name);
      rows_[i]->setCaption(left);
      rows_[i]->setValue(LocalFigures::percent(percent, sources.locale));
      rows_[i]->setBar(share);
      if (kComponents[i] != own_) continue;
      figure_->setFigure(LocalFigures::number(percent, sources.locale), LocalFigures::percentSign(sources.locale));
      figure_->setLines(wholeOf(kComponents[i]));
    }
  }

 private:
  Component own_;  ///< What its tile shows.
  FigureView* figure_;
  std::array<ListRow*, kComponents.size()> rows_{};
};

}  // namespace

std::unique_ptr<TilePanel> makeDayProgressPanel(const PanelContext& context) {
  return std::make_unique<ProgressPanel>(context, Component::Day);
}

std::unique_ptr<TilePanel> makeMonthProgressPanel(const PanelContext& context) {
  return std::make_unique<ProgressPanel>(context, Component::Month);
}

std::unique_ptr<TilePanel> makeYearProgressPanel(const PanelContext& context) {
  return std::make_unique<ProgressPanel>(context, Component::Year);
}

}  // namespace tarnwick
