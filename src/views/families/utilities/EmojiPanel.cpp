#include "views/families/utilities/UtilitiesRoom.h"

#include <QKeyEvent>
#include <algorithm>

#include "commandbar/EmojiTable.h"
#include "views/controls/Fields.h"
#include "views/controls/ScrollArea.h"
#include "views/families/utilities/EmojiGrid.h"
#include "views/families/utilities/UtilityOptions.h"
#include "views/panels/PanelWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

constexpr int kEmojiRows = 7;
constexpr qsizetype kMostRecentEmoji = 16;

QStringList foundEmoji(const QString& query) {
  const EmojiTable& table = EmojiTable::shared();
  QStringList emoji;
  for (const qsizetype index : table.search(query)) emoji << table.emoji(index);
  return emoji;
}

class EmojiPanel final : public TilePanel {
 public:
  explicit EmojiPanel(const PanelContext& context)
      : TilePanel(context),
        search_(new SearchField(PanelWords::tr("Search emoji"))),
        recent_(new EmojiGrid(PanelWords::tr("Recent"))),
        all_(new EmojiGrid(PanelWords::tr("All"))) {
    body().addWidget(search_);
    beginWith(*search_);
    recentLabel_ = addSection(PanelWords::tr("Recent"));
    body().addWidget(recent_);
    allLabel_ = addSection(PanelWords::tr("All"));
    auto* scroll = new ScrollArea;
    scroll->setWidget(all_);
    scroll->setFixedHeight(kEmojiRows * EmojiGrid::kCell);
    body().addWidget(scroll);
    nothing_ = new TextLabel(PanelWords::tr("No emoji found"), TextStyle::Body, Tone::Secondary, scroll);
    nothing_->setAlignment(Qt::AlignCenter);
    nothing_->setGeometry(0, 0, EmojiGrid::kColumns * EmojiGrid::kCell, EmojiGrid::kCell * 2);
    for (EmojiGrid* grid : {recent_, all_}) grid->chosen = [this](const QString& emoji) { take(emoji); };
    search_->installEventFilter(this);
    recent_->leftUp = [this] { search_->setFocus(Qt::BacktabFocusReason); };
    recent_->leftDown = [this] { all_->enter(); };
    all_->leftUp = [this] { beginsWithRecent() ? recent_->enter() : recent_->leftUp(); };
    keepDraft(*search_);
    connect(search_, &QLineEdit::textChanged, this, [this] { fill(); });
    connect(search_, &QLineEdit::returnPressed, this, [this] {
      if (const QStringList found = foundEmoji(search_->text()); !search_->text().isEmpty() && !found.isEmpty())
        take(found.first());
    });
    fill();
  }

 protected:
  void refresh(const TileSources&) override {
    const QStringList recent = recentEmoji(widget());
    recent_->setEmoji(recent.first(std::min<qsizetype>(recent.size(), EmojiGrid::kColumns)));
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
    const QStringList found = foundEmoji(query);
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
