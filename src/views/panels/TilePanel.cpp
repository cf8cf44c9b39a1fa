#include "views/panels/TilePanel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <algorithm>

#include "views/controls/Buttons.h"
#include "views/controls/FullWidth.h"
#include "views/controls/Mirroring.h"
#include "views/controls/ScrollArea.h"
#include "views/panels/PanelDrafts.h"
#include "views/theme/BadgePicture.h"
#include "views/theme/Theme.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kEmptySymbol = 28;
constexpr int kEmptyGap = 8;
constexpr int kEmptyAround = 12;
constexpr double kBadgeCorner = 0.3;  // Of its side.

}  // namespace

class TilePanel::EmptyView final : public QWidget {
  /// A symbol or badge in the middle of a line of its own.
  class Emblem final : public QWidget {
   public:
    explicit Emblem(QWidget* parent) : QWidget(parent) { setFixedHeight(kEmptySymbol); }
    void set(const QString& symbol, const ServiceBadge& badge) {
      symbol_ = symbol;
      badge_ = badge;
      update();
    }

   protected:
    void paintEvent(QPaintEvent*) override {
      QPainter painter(this);
      painter.setRenderHint(QPainter::Antialiasing);
      const QRectF box((width() - kEmptySymbol) / 2.0, 0, kEmptySymbol, kEmptySymbol);
      const ControlLook& look = lookOf(*this);
      if (badge_.letters.isEmpty())
        drawControlSymbol(painter, symbol_, box, look.palette.secondary);
      else
        drawServiceBadge(painter, box, kEmptySymbol * kBadgeCorner, badge_, look.palette);
    }

   private:
    QString symbol_;
    ServiceBadge badge_;
  };

 public:
  explicit EmptyView(QWidget* parent)
      : QWidget(parent),
        emblem_(new Emblem(this)),
        title_(new TextLabel({}, TextStyle::Title, Tone::Primary, this)),
        sentence_(new TextLabel({}, TextStyle::Body, Tone::Secondary, this)),
        button_(new Button({}, Button::Role::Primary, this)) {
    auto* column = new QVBoxLayout(this);
    constexpr int side = kEmptyAround + theme::kRowOverhang;
    column->setContentsMargins(side, kEmptyAround, side, kEmptyAround);
    column->setSpacing(kEmptyGap);
    title_->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    sentence_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    sentence_->setWordWrap(true);
    column->addWidget(emblem_);
    column->addWidget(title_);
    column->addWidget(sentence_);
    column->addSpacing(kEmptyGap);
    column->addWidget(button_, 0, Qt::AlignHCenter);
    connect(button_, &QPushButton::clicked, this, [this] {
      if (act_) act_();
    });
  }

  void set(const EmptyState& state) {
    emblem_->set(state.symbol, state.badge);
    title_->setText(state.title);
    title_->setVisible(!state.title.isEmpty());
    sentence_->setText(state.sentence);
    button_->setLabel(state.button);
    button_->setRole(state.isQuiet ? Button::Role::Plain : Button::Role::Primary);
    button_->setVisible(!state.button.isEmpty());
    button_->setEnabled(static_cast<bool>(state.act));
    act_ = state.act;
  }

 private:
  Emblem* emblem_;
  TextLabel* title_;
  TextLabel* sentence_;
  Button* button_;
  std::function<void()> act_;
};

TilePanel::TilePanel(const PanelContext& context, int width)
    : context_(context),
      kept_(context.sources ? context.sources() : std::make_unique<KeptSources>(KeptSources::Setup{})),
      width_(width),
      header_(new PanelHeader(this)) {
  kept_->setSeen([this] { return isVisible(); });
  takeWidget();
  setLook({look().palette, context_.accent});
  frame().addWidget(header_);

  message_ = new QWidget(this);
  auto* row = new QHBoxLayout(message_);
  row->setContentsMargins(0, theme::kPanelHeaderBelow, 0, 0);
  row->setSpacing(theme::kRowGap);
  row->addWidget(new WarningMark(message_), 0, Qt::AlignTop);
  messageText_ = new TextLabel({}, TextStyle::Body, Tone::Primary, message_);
  messageText_->setWordWrap(true);
  row->addWidget(messageText_, 1);
  message_->hide();
  frame().addWidget(message_);

  scroll_ = new ScrollArea(this);
  content_ = new QWidget;
  auto* column = new QVBoxLayout(content_);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  own_ = new QWidget(content_);
  body_ = new QVBoxLayout(own_);
  body_->setContentsMargins(theme::kRowOverhang, theme::kPanelHeaderBelow, theme::kRowOverhang, 0);
  body_->setSpacing(0);
  empty_ = new EmptyView(content_);
  empty_->hide();
  column->addWidget(own_);
  column->addWidget(empty_);
  scroll_->setWidget(content_);
  follow(content_);
  addFullWidth(frame(), scroll_);
  frame().setStretchFactor(scroll_, 1);

  if (isConnectedFamily(definition().family))
    header_->setBadge(serviceBadge(definition()));
  else
    header_->setSymbol(definition().symbol);
  header_->setTitle(title());
  setAccessibleName(title());
}

TilePanel::~TilePanel() = default;

void TilePanel::start() {
  connect(kept_.get(), &KeptSources::changed, this, &TilePanel::refreshNow);
  connect(&store(), &AppStore::ticked, kept_.get(), &KeptSources::beat);
  connect(&store(), &AppStore::configChanged, this, [this] {
    takeWidget();
    if (isVisible()) refreshNow();
  });
  refreshNow();
  if (!context_.drafts) return;
  for (const auto& keep : drafted_) keep(*context_.drafts);
}

void TilePanel::ticks(TickCadence cadence) {
  kept_->setCadence([cadence](const DockWidget&) { return cadence; });
}

void TilePanel::keepDraft(QLineEdit& field, std::function<bool()> isUnfinished) {
  drafted_.emplace_back([id = context_.widget, &field, isUnfinished = std::move(isUnfinished)](PanelDrafts& drafts) {
    drafts.keep(id, field, isUnfinished);
  });
}

void TilePanel::forgetDrafts() {
  if (context_.drafts) context_.drafts->forget(context_.widget);
}

void TilePanel::refreshNow() {
  refresh(kept_->values());
  header_->setTitle(heading());
}

void TilePanel::showEvent(QShowEvent* event) {
  if (kept_->takeLate()) refreshNow();
  GlassPane::showEvent(event);
  if (first_) first_->setFocus(Qt::PopupFocusReason);
}

void TilePanel::takeWidget() {
  // The profile on the dock may be another one by now, so all are looked through.
  for (const DockProfile& profile : store().config().profiles) {
    const auto found = std::ranges::find(profile.widgets, context_.widget, &DockWidget::id);
    if (found == profile.widgets.end()) continue;
    widget_ = *found;
    kept_->setWidgets({widget_});
    return;
  }
  if (!widget_.id.isNull()) Q_EMIT closeRequested();
}

const WidgetDefinition& TilePanel::definition() const { return Catalog::find(widget_.kind); }

QString TilePanel::title() const { return widget_.title.isEmpty() ? definition().name : widget_.title; }

void TilePanel::setOption(const QString& key, const std::optional<QString>& value) {
  store().set(context_.widget, key, value);
}

void TilePanel::changeSetting(const QString& key, const std::optional<QString>& value, const QString& sentence) {
  DockWidget changed = widget_;
  value ? void(changed.options.insert(key, *value)) : void(changed.options.remove(key));
  changeSettings(changed, sentence);
}

void TilePanel::changeSettings(const DockWidget& widget, const QString& sentence) {
  context_.commands.changeWidget(widget, context_.display, sentence);
}

/// What no field that has the keyboard took.
void TilePanel::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Undo)) {
    context_.commands.undo();
  } else if (event->matches(QKeySequence::Redo)) {
    context_.commands.redo();
  } else {
    GlassPane::keyPressEvent(event);
  }
}

void TilePanel::offerUndo(const QString& sentence, const std::function<void()>& undo,
                          const std::function<void()>& redo) const {
  context_.commands.offerUndo(context_.display, sentence, undo, redo);
}

SectionLabel* TilePanel::addSection(const QString& text, const QString& trailing) {
  auto* label = new SectionLabel(text, trailing);
  body_->addWidget(label);
  return label;
}

void TilePanel::setMessage(const QString& sentence) {
  messageText_->setText(sentence);
  message_->setVisible(!sentence.isEmpty());
}

void TilePanel::showEmpty(const EmptyState& state) {
  empty_->set(state);
  own_->hide();
  header_->hide();
  empty_->show();
}

void TilePanel::hideEmpty() {
  empty_->hide();
  header_->show();
  own_->show();
}

QSize TilePanel::panelSize() const {
  int height = theme::kPanelPadding * 2 + scroll_->contentHeight(contentWidth() + theme::kRowOverhang * 2);
  if (!header_->isHidden()) height += header_->height();
  if (!message_->isHidden()) height += message_->layout()->totalHeightForWidth(contentWidth());
  return {width_, height};
}

PanelHeader::PanelHeader(QWidget* parent) : QWidget(parent), actions_(new QHBoxLayout(this)) {
  setFixedHeight(theme::kPanelHeader);
  actions_->setContentsMargins(0, 0, 0, 0);
  actions_->setSpacing(theme::kButtonSymbolGap);
  actions_->addStretch();
}

void PanelHeader::setSymbol(const QString& symbol) {
  symbol_ = symbol;
  badge_ = {};
  update();
}

void PanelHeader::setBadge(const ServiceBadge& badge) {
  badge_ = badge;
  update();
}

void PanelHeader::setTitle(const QString& title) {
  if (title == title_) return;
  title_ = title;
  setAccessibleName(title);
  update();
}

void PanelHeader::setNote(const QString& note) {
  if (note == note_) return;
  note_ = note;
  setAccessibleDescription(note);
  update();
}

void PanelHeader::addAction(QWidget* control) { actions_->addWidget(control, 0, Qt::AlignVCenter); }

int PanelHeader::actionsWidth() const {
  int sum = 0;
  for (int i = 0; i < actions_->count(); ++i)
    if (const QWidget* control = actions_->itemAt(i)->widget(); control && !control->isHidden())
      sum += control->sizeHint().width() + theme::kRowGap;
  return sum;
}

void PanelHeader::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  const Mirroring mirror(*this);
  const QRectF sign(0, (height() - theme::kSymbolSize) / 2, theme::kSymbolSize, theme::kSymbolSize);
  if (badge_.letters.isEmpty())
    drawControlSymbol(painter, symbol_, mirror(sign), look.accentColor());
  else
    drawServiceBadge(painter, mirror(sign), sign.width() * kBadgeCorner, badge_, look.palette);
  double right = width() - actionsWidth();
  if (!note_.isEmpty()) {
    const TextLine note = TextLine(note_, TextStyle::Caption).elided(right / 2, Elide::End);
    mirror.end(painter, note, {right, (height() + note.capHeight()) / 2}, look.palette.secondary);
    right -= note.width() + theme::kRowGap;
  }
  const double left = sign.right() + theme::kRowGap;
  drawTextIn(painter, mirror(QRectF(left, 0, std::max(0.0, right - left), height())), title_, TextStyle::Title,
             look.palette.primary, mirror.reading());
}

}  // namespace tarnwick
