#include "views/families/utilities/UtilitiesRoom.h"

#include <QGridLayout>
#include <QSignalBlocker>
#include <array>

#include "base/PutBack.h"
#include "commandbar/UtilityText.h"
#include "store/DocumentEdits.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/FullWidth.h"
#include "views/controls/Labels.h"
#include "views/controls/Rows.h"
#include "views/panels/BigText.h"
#include "views/panels/PanelWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kKeyColumns = 4;
constexpr qsizetype kRemembered = 20;
constexpr int kHistoryRows = 5;
constexpr auto kBetween = " = "_L1;

/// Calculations that were finished, the latest first.
QStringList finished(const DockWidget& calculator) {
  return calculator.options.value(option::calculations).split(u'\n', Qt::SkipEmptyParts);
}

enum class Key { Text, Point, Clear, Back, Equals };

struct KeyRow {
  Key key;
  const char16_t* label;
};

constexpr std::array kKeys = {
    KeyRow{Key::Clear, u"C"}, KeyRow{Key::Text, u"("},  KeyRow{Key::Text, u")"}, KeyRow{Key::Text, u"÷"},
    KeyRow{Key::Text, u"7"},  KeyRow{Key::Text, u"8"},  KeyRow{Key::Text, u"9"}, KeyRow{Key::Text, u"×"},
    KeyRow{Key::Text, u"4"},  KeyRow{Key::Text, u"5"},  KeyRow{Key::Text, u"6"}, KeyRow{Key::Text, u"−"},
    KeyRow{Key::Text, u"1"},  KeyRow{Key::Text, u"2"},  KeyRow{Key::Text, u"3"}, KeyRow{Key::Text, u"+"},
    KeyRow{Key::Text, u"0"},  KeyRow{Key::Point, u"."}, KeyRow{Key::Back, u"⌫"}, KeyRow{Key::Equals, u"="},
};

class CalculatorPanel final : public TilePanel {
 public:
  explicit CalculatorPanel(const PanelContext& context)
      : TilePanel(context), field_(new TextField(PanelWords::tr("Expression"))), result_(new ResultView) {
    field_->setPlaceholderText(u"12 × 4 + 2"_s);
    field_->setText(widget().options.value(option::expression));
    body().addWidget(field_);
    body().addWidget(result_);
    addKeys();
    addHistory();
    copy_ = new IconButton(u"doc.on.clipboard"_s, PanelWords::tr("Copy Result"));
    connect(copy_, &QPushButton::clicked, this, [this] {
      if (answer_.value) this->context().commands.copyText(UtilityText::typed(*answer_.value, locale_));
    });
    header().addAction(copy_);
    connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) {
      evaluate();
      // What the tile shows is the last calculation that had a result.
      if (answer_.value || text.trimmed().isEmpty()) setOption(option::expression, text);
    });
    keepDraft(*field_, [this] { return !answer_.value && !field_->text().trimmed().isEmpty(); });
    connect(field_, &QLineEdit::returnPressed, this, [this] { goOn(); });
  }

 protected:
  void refresh(const TileSources& sources) override {
    showHistory();
    if (isFilled_ && locale_ == sources.locale) return;
    isFilled_ = true;
    locale_ = sources.locale;
    point_->setLabel(locale_.decimalPoint());
    evaluate();
  }
  void showEvent(QShowEvent* event) override {
    TilePanel::showEvent(event);
    field_->setFocus();
    if (answer_.value) field_->selectAll();
  }

 private:
  void addKeys() {
    auto* keys = new QWidget;
    keys->setLayoutDirection(Qt::LeftToRight);  // As on every calculator.
    auto* grid = new QGridLayout(keys);
    grid->setContentsMargins(0, theme::kSectionBelow, 0, 0);
    grid->setSpacing(theme::kButtonSymbolGap);
    for (int i = 0; i < static_cast<int>(kKeys.size()); ++i) {
      const KeyRow& row = kKeys[static_cast<std::size_t>(i)];
      const QString label = QString::fromUtf16(row.label);
      auto* button = new Button(label, row.key == Key::Equals ? Button::Role::Primary : Button::Role::Plain);
      button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
      button->setFocusPolicy(Qt::NoFocus);  // The keyboard writes into the field.
      button->setAutoRepeat(row.key == Key::Back);
      if (row.key == Key::Point) point_ = button;
      if (row.key == Key::Clear) button->setAccessibleName(PanelWords::tr("Clear"));
      if (row.key == Key::Back) button->setAccessibleName(PanelWords::tr("Delete"));
      connect(button, &QPushButton::clicked, this, [this, key = row.key, label] { press(key, label); });
      grid->addWidget(button, i / kKeyColumns, i % kKeyColumns);
    }
    for (int column = 0; column < kKeyColumns; ++column) grid->setColumnStretch(column, 1);
    body().addWidget(keys);
  }

  void addHistory() {
    history_ = new QWidget;
    auto* column = new QVBoxLayout(history_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* heading = new QHBoxLayout;
    heading->setContentsMargins(theme::kRowOverhang, 0, theme::kRowOverhang, 0);
    heading->addWidget(new SectionLabel(PanelWords::tr("History")));
    column->addLayout(heading);
    for (int i = 0; i < kHistoryRows; ++i) {
      auto* row = new ListRow({});
      row->setClickable(true);
      row->setParted(i > 0);
      connect(row, &QPushButton::clicked, this, [this, i] { takeUp(i); });
      column->addWidget(row);
      rows_ << row;
    }
    auto* clear = new Button(PanelWords::tr("Clear History"), Button::Role::Quiet);
    connect(clear, &QPushButton::clicked, this, [this] {
      clearHistory();
      field_->setFocus();
    });
    column->addWidget(clear, 0, Qt::AlignLeft);
    addFullWidth(body(), history_);
  }

  void showHistory() {
    const QStringList past = finished(widget());
    history_->setVisible(!past.isEmpty());
    if (past == shown_) return;
    shown_ = past;
    for (qsizetype i = 0; i < rows_.size(); ++i) {
      rows_[i]->setVisible(i < past.size());
      if (i >= past.size()) continue;
      rows_[i]->setTitle(past[i].section(kBetween, 0, 0));
      rows_[i]->setValue(past[i].section(kBetween, 1));
    }
  }

  /// Brings a calculation back, to be changed.
  void takeUp(int place) {
    if (place >= shown_.size()) return;
    field_->setText(shown_[place].section(kBetween, 0, 0));
    field_->setFocus();
  }

  void clearHistory() {
    const QStringList before = finished(widget());
    setOption(option::calculations, std::nullopt);
    const auto change = [store = &store(), id = context().widget](const std::function<void(QStringList&)>& edit) {
      const DockWidget* stored = DocumentEdits::find(store->config(), id);
      if (!stored) return;
      QStringList past = finished(*stored);
      edit(past);
      past = past.mid(0, kRemembered);
      store->set(id, option::calculations, past.isEmpty() ? std::nullopt : std::optional(past.join(u'\n')));
    };
    const auto bringBack = [change, before] {
      change([&before](QStringList& past) {
        // What was calculated since is the latest.
        for (const QString& each : before)
          if (!past.contains(each)) past.append(each);
      });
    };
    const auto clear = [change, before] {
      change([&before](QStringList& past) { takeOut<QString>(past, before, {}); });
    };
    offerUndo(PanelWords::tr("The calculator's history was cleared."), bringBack, clear);
  }

  void remember(const QString& expression, const QString& result) {
    if (expression == result) return;
    QStringList past = finished(widget());
    const QString entry = expression + kBetween + result;
    past.removeAll(entry);
    past.prepend(entry);
    setOption(option::calculations, past.mid(0, kRemembered).join(u'\n'));
  }

  void press(Key key, const QString& label) {
    switch (key) {
      case Key::Text:
        field_->insert(label);
        break;
      case Key::Point:
        field_->insert(locale_.decimalPoint());
        break;
      case Key::Clear:
        field_->clear();
        break;
      case Key::Back:
        field_->backspace();
        break;
      case Key::Equals:
        goOn();
        break;
    }
    field_->setFocus();
  }

  void evaluate() {
    answer_ = UtilityText::calculate(field_->text(), locale_);
    if (answer_.value)
      result_->setResult(UtilityText::forms(*answer_.value, locale_));
    else
      result_->setSentence(answer_.sentence);
    copy_->setEnabled(answer_.value.has_value());
  }

  /// Puts the result into the field, to calculate on with it. The tile keeps what it came from.
  void goOn() {
    if (!answer_.value) return;
    const QString result = UtilityText::typed(*answer_.value, locale_);
    remember(field_->text().simplified(), result);
    const QSignalBlocker quiet(field_);
    field_->setText(result);
  }

  TextField* field_;
  ResultView* result_;
  Button* point_ = nullptr;
  IconButton* copy_ = nullptr;
  QWidget* history_ = nullptr;
  QList<ListRow*> rows_;
  QStringList shown_;  ///< The history as the rows show it.
  QLocale locale_;
  Answer answer_;
  bool isFilled_ = false;
};

}  // namespace

std::unique_ptr<TilePanel> makeCalculatorPanel(const PanelContext& context) {
  return std::make_unique<CalculatorPanel>(context);
}

}  // namespace tarnwick
