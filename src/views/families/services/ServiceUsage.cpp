#include <QTimeZone>
#include <QVBoxLayout>

#include "base/LocalFigures.h"
#include "services/UsageWords.h"
#include "views/controls/Charts.h"
#include "views/controls/Labels.h"
#include "views/controls/PlainTip.h"
#include "views/controls/Rows.h"
#include "views/families/services/ServicesRoom.h"
#include "views/panels/PanelWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kUsageBarHeight = 6;
constexpr int kUsageBelow = 8;
constexpr int kUsageAboveText = 6;

/// One allowance: how much of it is used, and when it begins anew.
class UsageView final : public QWidget {
 public:
  UsageView(const UsageWindow& window, const TileSources& sources) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, kUsageBelow);
    column->setSpacing(0);
    auto* row = new ListRow(window.label);
    row->setValue(LocalFigures::of(UsageWords::usedWords(window), sources.locale));
    setPlainTip(*row, window.label);
    column->addWidget(row);
    auto* bar = new ProgressBar(window.label);
    bar->setBarHeight(kUsageBarHeight);
    bar->setShare(UsageWords::used(window) / 100);
    if (UsageWords::isAlarming(window)) bar->setAccent(Accent::Red);
    column->addWidget(bar);
    column->addSpacing(kUsageAboveText);
    column->addWidget(new TextLabel(resetWords(window, sources), TextStyle::Caption, Tone::Secondary));
  }

 private:
  static QString resetWords(const UsageWindow& window, const TileSources& sources) {
    // Behind a label the words begin with a mark that parts them from it.
    static const auto unparted = [](QString words) { return words.startsWith(u" · ") ? words.sliced(3) : words; };
    UsageWindow here = window;
    if (here.resetsAt) here.resetsAt = here.resetsAt->toTimeZone(sources.now.timeZone());
    const QString resets = unparted(UsageWords::resets(here, sources.locale, sources.use24Hour));
    const QString left = UsageWords::countdown(window, sources.now, sources.locale);
    return left.isEmpty() ? resets : PanelWords::tr("%1 left").arg(left) + u" · "_s + resets;
  }
};

}  // namespace

QWidget* makeUsageView(const UsageWindow& window, const TileSources& sources) { return new UsageView(window, sources); }

}  // namespace tarnwick
