#include "views/families/utilities/UtilitiesRoom.h"

#include <QHBoxLayout>
#include <algorithm>

#include "commandbar/UnitConversion.h"
#include "commandbar/UnitWords.h"
#include "commandbar/UtilityText.h"
#include "services/CurrencyRates.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/families/utilities/UtilityOptions.h"
#include "views/panels/BigText.h"
#include "views/panels/ChipGrid.h"
#include "views/panels/PanelWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kConverterColumns = 4;

QString groupName(const QString& name) { return UnitWords::tr(name.toLatin1().constData()); }

/// Currencies stand behind the groups of units.
int groupOf(const Conversion& conversion) {
  const auto& groups = UnitConversion::groups();
  if (conversion.isOfMoney()) return static_cast<int>(groups.size());
  const auto found =
      std::ranges::find_if(groups, [&](const auto& group) { return group.units.contains(conversion.from); });
  return found == groups.end() ? 0 : static_cast<int>(found - groups.begin());
}

class ConverterPanel final : public TilePanel {
 public:
  explicit ConverterPanel(const PanelContext& context)
      : TilePanel(context),
        field_(new TextField(PanelWords::tr("Value"))),
        result_(new ResultView),
        groups_(new ChipGrid(PanelWords::tr("Quantity"), kConverterColumns)),
        from_(new ChipGrid(PanelWords::tr("From"), kConverterColumns)),
        to_(new ChipGrid(PanelWords::tr("To"), kConverterColumns)),
        note_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)),
        retry_(new Button(PanelWords::tr("Try Again"))),
        rates_(context.readings.rates) {
    QStringList names;
    for (const auto& group : UnitConversion::groups()) names.append(groupName(group.name));
    if (rates_ || Conversion::of(widget()).isOfMoney()) names.append(PanelWords::tr("Currency"));
    groups_->setWords(names);
    body().addWidget(groups_);
    addSection(PanelWords::tr("From"));
    body().addWidget(field_);
    body().addSpacing(theme::kButtonSymbolGap);
    body().addWidget(from_);
    addSection(PanelWords::tr("To"));
    body().addWidget(to_);
    body().addWidget(result_);
    note_->setWordWrap(true);
    body().addWidget(note_);
    body().addWidget(retry_, 0, Qt::AlignLeft);
    field_->setText(Conversion::of(widget()).value);
    auto* swap = new IconButton(u"arrow.left.arrow.right"_s, PanelWords::tr("Swap Units"));
    connect(swap, &QPushButton::clicked, this, [this] { choose(shown_.to, shown_.from); });
    header().addAction(swap);
    copy_ = new IconButton(u"doc.on.clipboard"_s, PanelWords::tr("Copy Result"));
    connect(copy_, &QPushButton::clicked, this, [this] {
      if (answer_.value) this->context().commands.copyText(UtilityText::typed(*answer_.value, locale_));
    });
    header().addAction(copy_);
    connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) { setOption(option::value, text); });
    connect(groups_, &ChipGrid::chosen, this, [this](int index) {
      if (index == groupOf(shown_)) return;
      const auto& groups = UnitConversion::groups();
      const QStringList units = index < groups.size() ? groups[index].units : offeredCurrencies(locale_, shown_);
      choose(units[0], units[1]);
    });
    connect(retry_, &QPushButton::clicked, this, [this] {
      failure_.clear();
      showAnswer();
    });
    connect(from_, &ChipGrid::chosen, this, [this](int index) {
      const QString unit = units()[index];
      choose(unit, unit == shown_.to ? shown_.from : shown_.to);
    });
    connect(to_, &ChipGrid::chosen, this, [this](int index) {
      const QString unit = units()[index];
      choose(unit == shown_.from ? shown_.to : shown_.from, unit);
    });
  }

 protected:
  void refresh(const TileSources& sources) override {
    const Conversion chosen = Conversion::of(widget());
    if (isFilled_ && chosen == shown_ && locale_ == sources.locale) return;
    isFilled_ = true;
    if (chosen.pair() != shown_.pair()) {
      asking_.reset();
      failure_.clear();
    }
    shown_ = chosen;
    locale_ = sources.locale;
    if (field_->text() != chosen.value) field_->setText(chosen.value);
    groups_->setChosen(groupOf(chosen));
    for (ChipGrid* grid : {from_, to_}) grid->setWords(units());
    from_->setChosen(static_cast<int>(units().indexOf(chosen.from)));
    to_->setChosen(static_cast<int>(units().indexOf(chosen.to)));
    showAnswer();
  }
  void showEvent(QShowEvent* event) override {
    TilePanel::showEvent(event);
    field_->setFocus();
    field_->selectAll();
  }

 private:
  QStringList units() const {
    return shown_.isOfMoney() ? offeredCurrencies(locale_, shown_) : UnitConversion::groups()[groupOf(shown_)].units;
  }

  void showAnswer() {
    const bool isOfMoney = shown_.isOfMoney();
    answer_ = isOfMoney ? exchange() : UtilityText::convert(shown_.value, shown_.from, shown_.to, locale_);
    if (answer_.value)
      result_->setResult(UtilityText::forms(*answer_.value, locale_), shown_.to);
    else
      result_->setSentence(answer_.sentence);
    note_->setVisible(isOfMoney);
    retry_->setVisible(isOfMoney && !failure_.isEmpty());
    const bool isNumber = !isOfMoney || UtilityText::value(shown_.value, locale_).has_value();
    field_->setFaulty(!(isOfMoney ? isNumber : answer_.value.has_value()) && !shown_.value.trimmed().isEmpty());
    copy_->setEnabled(answer_.value.has_value());
  }

  /// By the rate that is kept, or by one that is asked for and not there yet. One that failed is asked for again only
  /// when the user wants it.
  Answer exchange() {
    const auto quote = rates_ ? rates_->kept(shown_.from, shown_.to) : std::nullopt;
    note_->setText(quote                 ? noteOf(*quote)
                   : !failure_.isEmpty() ? failure_
                                         : PanelWords::tr("Rates from frankfurter.dev"));
    if (!UtilityText::value(shown_.value, locale_)) return {std::nullopt, UnitWords::tr("Enter a number.")};
    if (quote) {
      failure_.clear();
      const auto worth = exchanged(shown_.value, quote->rate, locale_);
      return {worth, worth ? QString() : UnitWords::tr("Enter a number.")};
    }
    if (rates_ && !asking_ && failure_.isEmpty()) ask();
    return {std::nullopt, asking_ ? PanelWords::tr("Getting the exchange rate…") : PanelWords::tr("No exchange rate")};
  }
  QString noteOf(const CurrencyQuote& quote) const {
    if (!quote.date.isValid()) return PanelWords::tr("Rates from frankfurter.dev");
    return PanelWords::tr("Rate of %1, from frankfurter.dev").arg(locale_.toString(quote.date, QLocale::LongFormat));
  }
  void ask() {
    const auto finish = [this](const QString& failure) {
      failure_ = failure;
      asking_.reset();
      showAnswer();
    };
    asking_ = rates_->ask(
        shown_.from, shown_.to, [finish](const CurrencyQuote&) { finish({}); }, finish);
  }

  void choose(const QString& from, const QString& to) {
    DockWidget changed = widget();
    changed.options.insert(option::from, from);
    changed.options.insert(option::to, to);
    store().update(changed);
    refreshNow();
  }

  TextField* field_;
  ResultView* result_;
  ChipGrid* groups_;
  ChipGrid* from_;
  ChipGrid* to_;
  TextLabel* note_;  ///< Of the exchange rate: its day, or why there is none.
  Button* retry_;
  IconButton* copy_ = nullptr;
  CurrencyRates* rates_;
  JobHandle asking_;
  QString failure_;
  QLocale locale_;
  Conversion shown_;
  Answer answer_;
  bool isFilled_ = false;
};

}  // namespace

std::unique_ptr<TilePanel> makeConverterPanel(const PanelContext& context) {
  return std::make_unique<ConverterPanel>(context);
}

}  // namespace tarnwick
