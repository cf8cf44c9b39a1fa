#include "views/families/utilities/UtilitiesRoom.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <array>
#include <cmath>
#include <utility>

#include "base/LocalFigures.h"
#include "store/DocumentEdits.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/FullWidth.h"
#include "views/controls/Rows.h"
#include "views/controls/Slider.h"
#include "views/families/utilities/UtilityOptions.h"
#include "views/panels/PanelWords.h"
#include "views/theme/Theme.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostRecentColors = 8;
constexpr int kSwatchHeight = 56;
constexpr int kSwatchCorner = 10;
constexpr int kSliderLabel = 76;
constexpr int kMostHue = 359;

QStringList recentColors(const DockWidget& widget) {
  QStringList colors;
  for (const QString& text : widget.options.value(option::recentColors).split(u' ', Qt::SkipEmptyParts))
    if (const auto color = colorOfHex(text); color && colors.size() < kMostRecentColors) colors.append(hexOf(*color));
  return colors;
}

void addToRecent(DockWidget& widget, const QColor& color) {
  QStringList recent = recentColors(widget);
  recent.removeAll(hexOf(color));
  recent.prepend(hexOf(color));
  if (recent.size() > kMostRecentColors) recent.resize(kMostRecentColors);
  widget.options.insert(option::recentColors, recent.join(u' '));
}

/// A field of one color. One that can be clicked is named by its color.
class Swatch final : public PaintedButton {
 public:
  explicit Swatch(int height) : PaintedButton(QString()) {
    setFixedHeight(height);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  }
  void setColor(const std::optional<QColor>& color) {
    color_ = color;
    setLabel(color ? hexOf(*color) : PanelWords::tr("No color"));
    setToolTip(label());
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    prepare(painter);
    const double corner = height() < kSwatchHeight ? theme::kButtonCorner : kSwatchCorner;
    if (color_) drawRounded(painter, rect(), corner, *color_);
    drawInnerLine(painter, rect(), corner, 1, look().palette.separator);
    if (showsFocus()) drawFocusLine(painter, rect(), corner, look());
  }

 private:
  std::optional<QColor> color_;
};

class ColorPanel final : public TilePanel {
 public:
  explicit ColorPanel(const PanelContext& context)
      : TilePanel(context), swatch_(new Swatch(kSwatchHeight)), field_(new TextField(PanelWords::tr("Hex color"))) {
    swatch_->setAttribute(Qt::WA_TransparentForMouseEvents);
    swatch_->setFocusPolicy(Qt::NoFocus);
    body().addWidget(swatch_);
    body().addSpacing(theme::kRowOverhang);
    auto* pick = new Button(PanelWords::tr("Pick from Screen"), Button::Role::Primary);
    pick->setSymbol(u"eyedropper.halffull"_s);
    connect(pick, &QPushButton::clicked, this, [this] { pickFromScreen(); });
    body().addWidget(pick);
    body().addSpacing(theme::kRowOverhang);
    field_->setPlaceholderText(u"#2E8C94"_s);
    body().addWidget(field_);
    body().addSpacing(theme::kSectionBelow);
    for (std::size_t i = 0; i < sliders_.size(); ++i) addSlider(i);
    addForms();
    addRecent();
    // A screen reader sets the text, which the toolkit does not count as an edit.
    connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) {
      const auto color = colorOfHex(text);
      const auto before = colorOfHex(widget().options.value(option::color));
      if (!color || color == before) return;
      const bool wasMixed = std::exchange(isMixed_, false);
      setOption(option::color, hexOf(*color));
      // Behind what is written, which must not change meanwhile.
      if (wasMixed && before) remember(*before);
    });
    const auto isUnfinished = [this] { return !colorOfHex(field_->text()) && !field_->text().trimmed().isEmpty(); };
    connect(field_, &QLineEdit::textChanged, this, [this, isUnfinished] { field_->setFaulty(isUnfinished()); });
    keepDraft(*field_, isUnfinished);
    connect(field_, &QLineEdit::editingFinished, this, [this] {
      if (colorOfHex(field_->text())) take(field_->text());
    });
  }

 protected:
  void refresh(const TileSources&) override {
    const auto color = colorOfHex(widget().options.value(option::color));
    const QStringList recent = recentColors(widget());
    if (isFilled_ && color == color_ && recent == recent_) return;
    isFilled_ = true;
    // A gray has no hue and black no saturation, but the sliders stay where they were left.
    if (color && color->rgb() != mixed().rgb()) moveSliders(*color);
    color_ = color;
    recent_ = recent;
    swatch_->setColor(color);
    if (!field_->hasFocus() || colorOfHex(field_->text()) != color) field_->setText(color ? hexOf(*color) : QString());
    for (std::size_t i = 0; i < forms_.size(); ++i)
      forms_[i]->setValue(color ? formOf(i, *color) : u"–"_s, Tone::Secondary);
    recentLabel_->setVisible(!recent.isEmpty());
    for (qsizetype i = 0; i < kMostRecentColors; ++i) {
      Swatch* swatch = recentSwatches_[static_cast<std::size_t>(i)];
      swatch->setVisible(i < recent.size());
      if (i < recent.size()) swatch->setColor(colorOfHex(recent[i]));
    }
  }

  void hideEvent(QHideEvent* event) override {
    keepMixed();
    TilePanel::hideEvent(event);
  }

 private:
  void pickFromScreen() {
    keepMixed();
    // The dock's panels may be gone by the time that the user has picked.
    const QPointer<AppStore> store = &this->store();
    context().commands.pickColor([store, id = context().widget](const QString& hex) {
      if (store) takeColor(*store, id, hex);
    });
  }

  void addSlider(std::size_t index) {
    static constexpr std::array names = {QT_TRANSLATE_NOOP("Panels", "Hue"), QT_TRANSLATE_NOOP("Panels", "Saturation"),
                                         QT_TRANSLATE_NOOP("Panels", "Brightness")};
    const QString name = PanelWords::tr(names[index]);
    auto* label = new TextLabel(name, TextStyle::ListRow, Tone::Secondary);
    label->setFixedWidth(kSliderLabel);
    auto* slider = new Slider(name);
    if (index == 0) {
      slider->setRange(0, kMostHue);
      slider->setFormat([](int value) { return LocalFigures::number(value) + u'°'; });
    }
    connect(slider, &QAbstractSlider::sliderMoved, this, [this] { mix(); });
    connect(slider, &QAbstractSlider::valueChanged, this, [this] { mix(); });
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(slider, 1);
    body().addLayout(row);
    sliders_[index] = slider;
  }

  void addForms() {
    static constexpr std::array names = {"HEX", "RGB", "HSL"};
    body().addSpacing(theme::kSectionBelow);
    for (std::size_t i = 0; i < names.size(); ++i) {
      auto* row = new ListRow(QString::fromLatin1(names[i]));
      row->setClickable(true);
      row->setParted(i > 0);
      row->setToolTip(PanelWords::tr("Copy"));
      connect(row, &QPushButton::clicked, this, [this, i] {
        if (!color_) return;
        context().commands.copyText(formOf(i, *color_));
        take(hexOf(*color_));
        header().setNote(PanelWords::tr("Copied"));
      });
      addFullWidth(body(), row);
      forms_[i] = row;
    }
  }

  void addRecent() {
    recentLabel_ = addSection(PanelWords::tr("Recent"));
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(theme::kButtonSymbolGap);
    for (Swatch*& swatch : recentSwatches_) {
      swatch = new Swatch(theme::kControlHeight);
      swatch->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
      swatch->setFixedWidth(theme::kControlHeight + 2);
      connect(swatch, &QPushButton::clicked, this, [this, swatch] { take(swatch->label()); });
      row->addWidget(swatch);
    }
    row->addStretch();
    body().addLayout(row);
  }

  QColor mixed() const {
    return QColor::fromHsvF(static_cast<float>(sliders_[0]->sliderPosition()) / (kMostHue + 1),
                            static_cast<float>(sliders_[1]->sliderPosition()) / 100,
                            static_cast<float>(sliders_[2]->sliderPosition()) / 100);
  }

  void mix() {
    isMixed_ = true;
    setOption(option::color, hexOf(mixed()));
  }

  /// Of all colors that the sliders pass the last one was chosen, once something else is done.
  void keepMixed() {
    const auto color = colorOfHex(widget().options.value(option::color));
    if (std::exchange(isMixed_, false) && color) remember(*color);
  }

  void remember(const QColor& color) {
    const DockWidget* stored = DocumentEdits::find(store().config(), context().widget);
    if (!stored) return;
    DockWidget changed = *stored;
    addToRecent(changed, color);
    store().update(changed);
  }

  /// A copy, since the colors that were taken move along where this one may come from.
  void take(const QString hex) {
    keepMixed();
    takeColor(store(), context().widget, hex);
  }

  void moveSliders(const QColor& color) {
    const float hue = color.hsvHueF();
    const std::array values = {
        hue < 0 ? sliders_[0]->value() : static_cast<int>(std::lround(hue * (kMostHue + 1))) % (kMostHue + 1),
        static_cast<int>(std::lround(color.hsvSaturationF() * 100)),
        static_cast<int>(std::lround(color.valueF() * 100))};
    for (std::size_t i = 0; i < sliders_.size(); ++i) {
      const QSignalBlocker quiet(sliders_[i]);
      sliders_[i]->setValue(values[i]);
      sliders_[i]->update();
    }
  }

  static QString formOf(std::size_t form, const QColor& color) {
    if (form == 0) return hexOf(color);
    if (form == 1) return u"rgb(%1, %2, %3)"_s.arg(color.red()).arg(color.green()).arg(color.blue());
    const auto percent = [](float share) { return std::lround(share * 100); };
    return u"hsl(%1, %2%, %3%)"_s.arg(std::max(0, color.hslHue()))
        .arg(percent(color.hslSaturationF()))
        .arg(percent(color.lightnessF()));
  }

  Swatch* swatch_;
  TextField* field_;
  std::array<Slider*, 3> sliders_{};
  std::array<ListRow*, 3> forms_{};
  SectionLabel* recentLabel_ = nullptr;
  std::array<Swatch*, kMostRecentColors> recentSwatches_{};
  std::optional<QColor> color_;
  QStringList recent_;
  bool isFilled_ = false;
  bool isMixed_ = false;  ///< By sliders, and not among the recent ones yet.
};

}  // namespace

void takeColor(AppStore& store, const QUuid& widget, const QString& hex) {
  const auto color = colorOfHex(hex);
  const DockWidget* stored = DocumentEdits::find(store.config(), widget);
  if (!color || !stored) return;
  DockWidget changed = *stored;
  addToRecent(changed, *color);
  changed.options.insert(option::color, hexOf(*color));
  store.update(changed);
}

std::unique_ptr<TilePanel> makeColorPanel(const PanelContext& context) { return std::make_unique<ColorPanel>(context); }

}  // namespace tarnwick
