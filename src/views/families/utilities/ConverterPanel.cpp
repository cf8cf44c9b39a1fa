#include "views/families/utilities/UtilitiesRoom.h"

#include <QHBoxLayout>
#include <algorithm>

#include "commandbar/UnitConversion.h"
#include "commandbar/UnitWords.h"
#include "commandbar/UtilityText.h"
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

int groupOf(const QString& unit) {
  const auto& groups = UnitConversion::groups();
  const auto found = std::ranges::find_if(groups, [&](const auto& group) { return group.units.contains(unit); });
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
        to_(new ChipGrid(PanelWords::tr("To"), kConverterColumns)) {
    QStringList names;
    for (const auto& group : UnitConversion::groups()) names.append(groupName(group.name));
    groups_->setWords(names);
    body().addWidget(groups_);
    addSection(PanelWords::tr("From"));
    body().addWidget(field_);
    body().addSpacing(theme::kButtonSymbolGap);
    body().addWidget(from_);
    addSection(PanelWords::tr("To"));
    body().addWidget(to_);
    body().addWidget(result_);
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
      const QStringList& units = UnitConversion::groups()[index].units;
      if (!units.contains(shown_.from)) choose(units[0], units[1]);
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
    shown_ = chosen;
    locale_ = sources.locale;
    if (field_->text() != chosen.value) field_->setText(chosen.value);
    groups_->setChosen(groupOf(chosen.from));
    for (ChipGrid* grid : {from_, to_}) grid->setWords(units());
    from_->setChosen(static_cast<int>(units().indexOf(chosen.from)));
    to_->setChosen(static_cast<int>(units().indexOf(chosen.to)));
    answer_ = UtilityText::convert(chosen.value, chosen.from, chosen.to, locale_);
    if (answer_.value)
      result_->setResult(UtilityText::forms(*answer_.value, locale_), chosen.to);
    else
      result_->setSentence(answer_.sentence);
    field_->setFaulty(!answer_.value && !chosen.value.trimmed().isEmpty());
    copy_->setEnabled(answer_.value.has_value());
  }
  void showEvent(QShowEvent* event) override {
    TilePanel::showEvent(event);
    field_->setFocus();
    field_->selectAll();
  }

 private:
  const QStringList& units() const { return UnitConversion::groups()[groupOf(shown_.from)].units; }

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
  IconButton* copy_ = nullptr;
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
