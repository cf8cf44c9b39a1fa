#include "views/families/utilities/UtilitiesRoom.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <algorithm>

#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/ScrollArea.h"
#include "views/families/utilities/EmojiTable.h"
#include "views/families/utilities/UtilityOptions.h"
#include "views/panels/PanelWords.h"
#include "views/theme/Emoji.h"
#include "views/theme/Theme.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

constexpr int kEmojiColumns = 8;
constexpr int kCell = 36;
constexpr int kEmojiRows = 7;
constexpr double kSize = 22;
constexpr qsizetype kMostRecentEmoji = 16;

class EmojiButton final : public PaintedButton {
 public:
  explicit EmojiButton(const QString& emoji) : PaintedButton(emoji), emoji_(emoji) {
    const QString name = EmojiTable::nameOf(emoji);
    setAccessibleName(name);
    setToolTip(name);
    setFixedSize(kCell, kCell);
  }
  const QString& emoji() const { return emoji_; }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    prepare(painter);
    if (underMouse() || isDown()) drawRounded(painter, rect(), theme::kButtonCorner, ground());
    if (showsFocus()) drawFocusLine(painter, rect(), theme::kButtonCorner, look());
    drawEmoji(painter, emoji_, QRectF((kCell - kSize) / 2, (kCell - kSize) / 2, kSize, kSize));
  }

 private:
  QString emoji_;
};

/// A grid of which Tab reaches one place, and the arrow keys the others.
class EmojiGrid final : public QWidget {
 public:
  EmojiGrid() : grid_(new QGridLayout(this)) {
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setSpacing(0);
    grid_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  }

  std::function<void(const QString& emoji)> chosen;
  /// An arrow led out of it, at the top or at the bottom.
  std::function<void()> leftUp;
  std::function<void()> leftDown;

  void setEmoji(const QStringList& emoji) {
    if (emoji == emoji_) return;
    emoji_ = emoji;
    for (EmojiButton* button : buttons_) {
      button->hide();
      button->deleteLater();
    }
    buttons_.clear();
    for (const QString& each : emoji) add(each);
    if (!buttons_.isEmpty()) buttons_.first()->setFocusPolicy(Qt::TabFocus);
    setFixedHeight(rows() * kCell);
  }
  bool isEmpty() const { return buttons_.isEmpty(); }
  /// Gives its first the keyboard.
  void enter() {
    for (EmojiButton* button : buttons_) button->setFocusPolicy(Qt::NoFocus);
    if (!isEmpty()) reach(0);
  }
  int rows() const { return (static_cast<int>(emoji_.size()) + kEmojiColumns - 1) / kEmojiColumns; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const qsizetype at = buttons_.indexOf(static_cast<EmojiButton*>(watched));
    const int forward = isRightToLeft() ? -1 : 1;
    qsizetype to = at;
    switch (static_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Left:
        to = at - forward;
        break;
      case Qt::Key_Right:
        to = at + forward;
        break;
      case Qt::Key_Up:
        to = at - kEmojiColumns;
        break;
      case Qt::Key_Down:
        to = at + kEmojiColumns;
        break;
      case Qt::Key_Home:
        to = 0;
        break;
      case Qt::Key_End:
        to = buttons_.size() - 1;
        break;
      default:
        return QWidget::eventFilter(watched, event);
    }
    const auto& left = to < 0 ? leftUp : leftDown;
    const bool isVertical = std::abs(to - at) == kEmojiColumns;
    if (to < 0 || to >= buttons_.size()) {
      if (isVertical && left) left();
      return true;
    }
    buttons_[at]->setFocusPolicy(Qt::NoFocus);
    reach(to);
    return true;
  }

 private:
  void reach(qsizetype index) {
    EmojiButton* button = buttons_[index];
    button->setFocusPolicy(Qt::TabFocus);
    button->setFocus(Qt::TabFocusReason);
    for (QWidget* each = parentWidget(); each; each = each->parentWidget())
      if (auto* area = qobject_cast<QScrollArea*>(each)) area->ensureWidgetVisible(button, 0, 0);
  }

  void add(const QString& emoji) {
    auto* button = new EmojiButton(emoji);
    button->setFocusPolicy(Qt::NoFocus);
    button->installEventFilter(this);
    connect(button, &QPushButton::clicked, this, [this, emoji] {
      if (chosen) chosen(emoji);
    });
    const auto index = static_cast<int>(buttons_.size());
    grid_->addWidget(button, index / kEmojiColumns, index % kEmojiColumns);
    button->show();
    buttons_.append(button);
  }

  QGridLayout* grid_;
  QStringList emoji_;
  QList<EmojiButton*> buttons_;
};

class EmojiPanel final : public TilePanel {
 public:
  explicit EmojiPanel(const PanelContext& context)
      : TilePanel(context),
        search_(new SearchField(PanelWords::tr("Search emoji"))),
        recent_(new EmojiGrid),
        all_(new EmojiGrid) {
    body().addWidget(search_);
    beginWith(*search_);
    recentLabel_ = addSection(PanelWords::tr("Recent"));
    body().addWidget(recent_);
    allLabel_ = addSection(PanelWords::tr("All"));
    auto* scroll = new ScrollArea;
    scroll->setWidget(all_);
    all_->setAutoFillBackground(false);
    scroll->setFixedHeight(kEmojiRows * kCell);
    body().addWidget(scroll);
    nothing_ = new TextLabel(PanelWords::tr("No emoji found"), TextStyle::Body, Tone::Secondary, scroll);
    nothing_->setAlignment(Qt::AlignCenter);
    nothing_->setGeometry(0, 0, kEmojiColumns * kCell, kCell * 2);
    for (EmojiGrid* grid : {recent_, all_}) grid->chosen = [this](const QString& emoji) { take(emoji); };
    search_->installEventFilter(this);
    recent_->leftUp = [this] { search_->setFocus(Qt::BacktabFocusReason); };
    recent_->leftDown = [this] { all_->enter(); };
    all_->leftUp = [this] { beginsWithRecent() ? recent_->enter() : recent_->leftUp(); };
    keepDraft(*search_);
    connect(search_, &QLineEdit::textChanged, this, [this] { fill(); });
    connect(search_, &QLineEdit::returnPressed, this, [this] {
      if (const QStringList found = EmojiTable::search(search_->text()); !search_->text().isEmpty() && !found.isEmpty())
        take(found.first());
    });
    fill();
  }

 protected:
  void refresh(const TileSources&) override {
    const QStringList recent = recentEmoji(widget());
    recent_->setEmoji(recent.first(std::min<qsizetype>(recent.size(), kEmojiColumns)));
    recentLabel_->setVisible(!recent.isEmpty());
    recent_->setVisible(!recent.isEmpty());
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched != search_ || event->type() != QEvent::KeyPress ||
        static_cast<const QKeyEvent*>(event)->key() != Qt::Key_Down)
      return TilePanel::eventFilter(watched, event);
    (beginsWithRecent() ? recent_ : all_)->enter();
    return true;
  }

 private:
  /// Who looks for one means none of those.
  bool beginsWithRecent() const { return search_->text().trimmed().isEmpty() && !recent_->isEmpty(); }
  void fill() {
    const QString query = search_->text().trimmed();
    const QStringList found = EmojiTable::search(query);
    all_->setEmoji(found);
    allLabel_->setText(query.isEmpty() ? PanelWords::tr("All") : PanelWords::tr("Found"));
    nothing_->setVisible(found.isEmpty());
  }

  void take(const QString& emoji) {
    context().commands.copyText(emoji);
    forgetDrafts();
    header().setNote(PanelWords::tr("%1 copied").arg(emoji));
    QStringList recent = recentEmoji(widget());
    recent.removeAll(emoji);
    recent.prepend(emoji);
    if (recent.size() > kMostRecentEmoji) recent.resize(kMostRecentEmoji);
    setOption(option::recents, recent.join(u' '));
  }

  SearchField* search_;
  EmojiGrid* recent_;
  EmojiGrid* all_;
  SectionLabel* recentLabel_ = nullptr;
  SectionLabel* allLabel_ = nullptr;
  TextLabel* nothing_ = nullptr;
};

}  // namespace

std::unique_ptr<TilePanel> makeEmojiPanel(const PanelContext& context) { return std::make_unique<EmojiPanel>(context); }

}  // namespace tarnwick
