#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <algorithm>

#include "base/Text.h"
#include "base/WebAddress.h"
#include "clipboard/ClipboardPanelModel.h"
#include "views/controls/Buttons.h"
#include "views/controls/ConfirmBar.h"
#include "views/controls/Fields.h"
#include "views/controls/FullWidth.h"
#include "views/controls/ItemView.h"
#include "views/controls/PartingLine.h"
#include "views/families/clipboard/ClipboardRemoval.h"
#include "views/families/clipboard/ClipboardRoom.h"
#include "views/families/clipboard/ClipboardSign.h"
#include "views/families/clipboard/ClipboardTabs.h"
#include "views/families/clipboard/ClipboardWords.h"
#include "views/panels/PanelWords.h"
#include "views/panels/TilePanel.h"
#include "views/theme/Glass.h"
#include "widgets/FileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kRowsSeen = 7;
constexpr int kThumbnailSide = 96;  ///< Enough for a row and for what is dragged out, on a dense screen.
constexpr qsizetype kTipLetters = 600;

class ClipboardPanel final : public TilePanel {
 public:
  explicit ClipboardPanel(const PanelContext& context)
      : TilePanel(context, theme::kPanelWidthWide),
        history_(context.readings.clipboard),
        model_(history_, context.readings.pasteboard),
        search_(new IconButton(u"magnifyingglass"_s, PanelWords::tr("Search"))),
        field_(new SearchField(PanelWords::tr("Search the history…"))),
        fieldGap_(new QWidget),
        tabs_(new ClipboardTabs),
        none_(new TextLabel(PanelWords::tr("Nothing found."), TextStyle::Body, Tone::Secondary)),
        view_(new ItemView(PanelWords::tr("History"), ItemView::Shape::Rows)),
        filler_(new QWidget),
        paused_(new QWidget),
        foot_(new QWidget),
        clear_(new Button(PanelWords::tr("Clear History"), Button::Role::Quiet)),
        pause_(new Button(PanelWords::tr("Pause"))),
        confirm_(new ConfirmBar) {
    header().addAction(search_);
    layOut();
    setUpView();
    tabs_->chosen = [this](ClipboardGroup group) { choose(group); };
    connect(search_, &QPushButton::clicked, this, [this] { field_->isHidden() ? openSearch() : closeSearch(); });
    connect(field_, &QLineEdit::textChanged, &model_, &ClipboardPanelModel::setSearch);
    connect(clear_, &QPushButton::clicked, this, &ClipboardPanel::askToClear);
    connect(confirm_, &ConfirmBar::over, foot_, &QWidget::show);
    connect(pause_, &QPushButton::clicked, this, [this] { keep(!isOn()); });
    connect(&model_, &ClipboardPanelModel::changed, this, &ClipboardPanel::refreshNow);
    connect(&model_, &ClipboardPanelModel::removed, this, &ClipboardPanel::offerBack);
  }

  void choose(ClipboardGroup group) {
    chosen_.reset();
    model_.setGroup(group);
  }
  void searchFor(const QString& text) {
    openSearch();
    field_->setText(text);
  }
  void askToClear() {
    asked_ = model_.favourites();
    const QString sentence =
        asked_ == 0 ? PanelWords::tr("Delete the whole history? This cannot be undone.")
        : asked_ == 1
            ? PanelWords::tr("Delete the whole history, 1 favourite included? This cannot be undone.")
            : PanelWords::tr("Delete the whole history, %1 favourites included? This cannot be undone.").arg(asked_);
    foot_->hide();
    confirm_->ask(sentence, PanelWords::tr("Clear History"), [this] { model_.clear(); });
  }

 protected:
  void refresh(const TileSources& sources) override {
    if (!showsHistory()) {
      if (confirm_->isAsking()) confirm_->leave();
      return;
    }
    const QList<ClipboardGroup> groups = model_.available();
    // One without a hit gives way until it has one again.
    const ClipboardGroup wanted = chosen_.value_or(model_.group());
    const ClipboardGroup group = groups.isEmpty() || groups.contains(wanted) ? wanted : groups.first();
    if (group != wanted) chosen_ = wanted;
    if (group != model_.group()) {
      model_.setGroup(group);  // Comes back here.
      return;
    }
    if (group == wanted) chosen_.reset();
    hideEmpty();
    setMessage(model_.message());
    tabs_->set(groups, model_.group());
    tabs_->setVisible(!groups.isEmpty());
    show(sources);
    paused_->setVisible(!isOn());
    pause_->setLabel(isOn() ? PanelWords::tr("Pause") : PanelWords::tr("Enable Clipboard History"));
    pause_->setSymbol(isOn() ? u"pause"_s : QString());
    if (confirm_->isAsking() && asked_ != model_.favourites()) askToClear();
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress || (watched != view_ && watched != field_))
      return TilePanel::eventFilter(watched, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool edits = watched == field_ && !field_->text().isEmpty();
    if (key.key() == Qt::Key_Delete && key.modifiers() == Qt::NoModifier && !edits) {
      removeChosen();
      return true;
    }
    if (watched == field_) return TilePanel::eventFilter(watched, event);
    if (key.matches(QKeySequence::Find)) {
      openSearch();
      return true;
    }
    const bool writes = !(key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) &&
                        !key.text().isEmpty() && key.text().front().isPrint() && !key.text().front().isSpace();
    if (!writes) return TilePanel::eventFilter(watched, event);
    openSearch();
    field_->insert(key.text());
    return true;
  }

 private:
  void layOut() {
    body().addWidget(field_);
    fieldGap_->setFixedHeight(theme::kRowOverhang);
    body().addWidget(fieldGap_);
    layOutPaused();
    body().addWidget(paused_);
    body().addWidget(tabs_);
    body().addSpacing(theme::kRowOverhang);
    body().addWidget(none_);
    addFullWidth(body(), view_);
    body().addWidget(filler_);
    body().addSpacing(theme::kPanelHeaderBelow);
    body().addWidget(new PartingLine);
    body().addWidget(confirm_);
    auto* row = new QHBoxLayout(foot_);
    row->setContentsMargins(0, theme::kPanelHeaderBelow, 0, 0);
    row->setSpacing(0);
    row->addWidget(clear_);  // Its word is in line with the rows, the other one's ground is.
    row->addStretch();
    row->addWidget(pause_);
    row->addSpacing(theme::kRowOverhang);
    addFullWidth(body(), foot_);
    field_->hide();
    fieldGap_->hide();
    none_->hide();
  }

  void layOutPaused() {
    auto* column = new QVBoxLayout(paused_);
    column->setContentsMargins(0, 0, 0, theme::kPanelHeaderBelow);
    column->setSpacing(theme::kRowOverhang);
    column->addWidget(new TextLabel(PanelWords::tr("Paused. What you copy is not recorded."), TextStyle::Title));
    auto* about = new TextLabel(u"%1 %2"_s.arg(whatItKeeps(), whatItNeverKeeps()), TextStyle::Caption, Tone::Secondary);
    about->setWordWrap(true);
    column->addWidget(about);
    paused_->hide();
  }

  bool isOn() const { return store().config().clipboardEnabled; }
  static QString whatItKeeps() {
    return PanelWords::tr(
        "Keeps text, images, files, links and colours you copy, on this Mac only. Nothing is ever exported.");
  }
  static QString whatItNeverKeeps() {
    return PanelWords::tr(
        "Copies that applications mark as concealed — what password managers use — are never recorded.");
  }

  void setUpView() {
    beginWith(*view_);
    view_->setMostRows(kRowsSeen);
    view_->followField(*field_);
    view_->installEventFilter(this);
    field_->installEventFilter(this);
    view_->setPicture([this](QPainter& painter, const QRectF& box, const ViewItem& item) {
      const ClipboardEntry entry = entryOf(item.id);
      const QImage thumbnail = thumbnails_.value(entry.imageFile).image;
      paintClipboardSign(painter, box, entry, history_.isFolder(entry), thumbnail, look().palette);
    });
    view_->setDragGround(kClipboardSignCorner);
    view_->setItemAction(u"star"_s, PanelWords::tr("Add to Favourites"), {});
    view_->setItemMenu([this](const QString& id) { return menuOf(entryOf(id)); });
    view_->setMenuButton(PanelWords::tr("More"));
    connect(view_, &ItemView::actionRequested, this, [this](const QString& id) { toggle(id); });
    connect(view_, &ItemView::opened, this, [this](const QString& id) {
      // One that went meanwhile would clear the clipboard.
      if (const ClipboardEntry entry = entryOf(id); !entry.id.isNull()) model_.use(entry);
      Q_EMIT closeRequested();
    });
  }

  /// Whether there is something to list; else it is said what is missing.
  bool showsHistory() {
    const Capability can = context().readings.pasteboard.capability();
    EmptyState state{definition().symbol, {}, title(), {}, {}, {}};
    if (!can) {
      state.sentence = can.reason;
    } else if (!isOn() && history_.items().isEmpty()) {
      state.title = PanelWords::tr("Clipboard history is off");
      state.sentence = u"%1\n%2"_s.arg(whatItKeeps(), whatItNeverKeeps());
      state.button = PanelWords::tr("Enable Clipboard History");
      state.act = [this] { keep(true); };
    } else if (!history_.problem().isEmpty()) {
      state.sentence = history_.problem();
    } else if (history_.items().isEmpty()) {
      state.sentence =
          history_.isLoaded() ? PanelWords::tr("Copy something to start your history.") : PanelWords::tr("Looking…");
      state.button = PanelWords::tr("Pause");
      state.act = [this] { keep(false); };
      state.isQuiet = true;
    } else {
      return true;
    }
    setMessage({});
    showEmpty(state);
    return false;
  }

  void show(const TileSources& sources) {
    QList<ViewItem> items;
    for (const ClipboardEntry& entry : model_.entries()) {
      askForThumbnail(entry);
      items.append(itemOf(entry, sources));
    }
    const int row = view_->currentIndex().row();
    view_->setItems(items);
    // What was chosen is gone: what took its place is next.
    if (row >= 0 && !items.isEmpty() && !view_->currentIndex().isValid())
      view_->choose(std::min(row, static_cast<int>(items.size()) - 1));
    view_->setVisible(!items.isEmpty());
    none_->setVisible(items.isEmpty());
    keepHeight();
  }

  /// A panel that shrank would take its tabs away from under the pointer, and the next click would be outside of it.
  void keepHeight() {
    const int now = view_->isHidden() ? none_->sizeHint().height() : view_->sizeHint().height();
    tallest_ = std::max(tallest_, now);
    filler_->setFixedHeight(tallest_ - now);
  }

  ViewItem itemOf(const ClipboardEntry& entry, const TileSources& sources) const {
    ViewItem item{entry.id.toString(), ClipboardWords::title(entry)};
    const QString age = agoWord(entry.added, sources.now, sources.locale);
    const QString kind = ClipboardWords::kind(entry.kind, history_.isFolder(entry));
    item.caption = u"%1 · %2"_s.arg(kind, age);
    item.tip = entry.value.left(kTipLetters);
    item.dragText = entry.value;
    item.action = favouriteWord(entry);
    if (entry.favourite) item.mark = u"star"_s;
    if (entry.kind == ClipboardEntry::Kind::Link)
      item.drag = WebAddress::of(Text::trimmed(entry.value).toString()).value_or(QUrl());
    if (entry.kind == ClipboardEntry::Kind::File) {
      const QString folder = shortFolder(QFileInfo(entry.value).path());
      item.caption = u"%1 · %2 · %3"_s.arg(kind, folder, age);
      item.drag = QUrl::fromLocalFile(entry.value);
    }
    if (entry.kind == ClipboardEntry::Kind::Image) {
      if (const QSize size = thumbnails_.value(entry.imageFile).size; !size.isEmpty())
        item.title = PanelWords::tr("Picture, %1 × %2").arg(size.width()).arg(size.height());
      const QString path = history_.picturePath(entry);
      if (!path.isEmpty()) item.drag = QUrl::fromLocalFile(path);
      item.dragsCopy = true;  // The file is the history's.
    }
    return item;
  }

  static QString favouriteWord(const ClipboardEntry& entry) {
    return entry.favourite ? PanelWords::tr("Remove from Favourites") : PanelWords::tr("Add to Favourites");
  }

  /// What stands in the history under that identity; an empty text once it is gone.
  ClipboardEntry entryOf(const QString& id) const {
    const auto& entries = model_.entries();
    const auto entry = std::ranges::find(entries, QUuid(id), &ClipboardEntry::id);
    return entry == entries.end() ? ClipboardEntry() : *entry;
  }

  QList<PaneMenuEntry> menuOf(const ClipboardEntry& entry) {
    QList<PaneMenuEntry> entries{{PanelWords::tr("Copy"), [this, entry] { model_.use(entry); }},
                                 {favouriteWord(entry), [this, entry] { model_.toggleFavourite(entry); }}};
    const QString path = entry.kind == ClipboardEntry::Kind::File ? entry.value : history_.picturePath(entry);
    if (!path.isEmpty())
      entries << PaneMenuEntry{PanelWords::tr("Reveal in Finder"),
                               [&commands = context().commands, path] { commands.reveal(path); }};
    entries << PaneMenuEntry{} << PaneMenuEntry{PanelWords::tr("Remove"), [this, entry] { model_.remove(entry); }};
    return entries;
  }

  void toggle(const QString& id) {
    if (const ClipboardEntry entry = entryOf(id); !entry.id.isNull()) model_.toggleFavourite(entry);
  }

  void removeChosen() {
    const QString id = view_->items().value(view_->currentIndex().row()).id;
    if (const ClipboardEntry entry = entryOf(id); !entry.id.isNull()) model_.remove(entry);
  }

  void offerBack(const RemovedClipboardEntry& removed) {
    const auto removal = std::make_shared<ClipboardRemoval>(history_, context().scheduler);
    removal->hold(removed);
    // Not by its words: the sentence is kept for longer than the entry is.
    offerUndo(
        PanelWords::tr("%1 removed from the history.")
            .arg(ClipboardWords::kind(removed.entry.kind, history_.isFolder(removed.entry))),
        [removal] { removal->takeBack(); }, [removal] { removal->again(); });
  }

  void keep(bool on) {
    store().edit([on](DockConfiguration& config) { config.clipboardEnabled = on; });
    refreshNow();
  }

  void openSearch() {
    field_->show();
    fieldGap_->show();
    field_->setFocus(Qt::OtherFocusReason);
  }
  void closeSearch() {
    field_->clear();
    field_->hide();
    fieldGap_->hide();
    view_->setFocus(Qt::OtherFocusReason);
  }

  void askForThumbnail(const ClipboardEntry& entry) {
    if (entry.kind != ClipboardEntry::Kind::Image || thumbnails_.contains(entry.imageFile)) return;
    thumbnails_.insert(entry.imageFile, {});
    const auto take = [this, file = entry.imageFile](const ClipboardThumbnail& thumbnail) {
      thumbnails_.insert(file, thumbnail);
      QMetaObject::invokeMethod(this, &ClipboardPanel::refreshNow, Qt::QueuedConnection);
    };
    history_.readThumbnail(entry, kThumbnailSide, &model_, take);
  }

  ClipboardHistory& history_;
  ClipboardPanelModel model_;
  IconButton* search_;
  SearchField* field_;
  QWidget* fieldGap_;  ///< Below the field, while that is seen.
  ClipboardTabs* tabs_;
  std::optional<ClipboardGroup> chosen_;  ///< What the user chose, while another one stands in for it.
  TextLabel* none_;
  ItemView* view_;
  QWidget* filler_;  ///< Below a list that is shorter than one that was seen.
  QWidget* paused_;  ///< Says so while nothing is recorded.
  QWidget* foot_;
  Button* clear_;
  Button* pause_;
  ConfirmBar* confirm_;
  QHash<QString, ClipboardThumbnail> thumbnails_;  ///< By the names of their files; empty until they were read.
  int tallest_ = 0;                                ///< The greatest height that the list had.
  qsizetype asked_ = 0;                            ///< The favourites that the question told of.
};

// --- The pictures of the program ------------------------------------------------------------------------------------

template <ClipboardGroup group>
void chooseGroup(TilePanel& panel) {
  static_cast<ClipboardPanel&>(panel).choose(group);
}

void search(TilePanel& panel) { static_cast<ClipboardPanel&>(panel).searchFor(u"re"_s); }
void searchInVain(TilePanel& panel) { static_cast<ClipboardPanel&>(panel).searchFor(u"nowhere"_s); }
void askToClearAll(TilePanel& panel) { static_cast<ClipboardPanel&>(panel).askToClear(); }

void switchOff(AppStore& store, FixedReadings&) {
  store.edit([](DockConfiguration& config) { config.clipboardEnabled = false; });
}
void empty(AppStore&, FixedReadings& readings) { readings.clipboard.setFixed({}); }
void switchOffEmpty(AppStore& store, FixedReadings& readings) {
  switchOff(store, readings);
  empty(store, readings);
}
void failToRecord(TilePanel& panel) {
  Q_EMIT panel.context().readings.clipboard.failed(
      u"The file “index.json” could not be written: No space left on device."_s);
}

constexpr PanelState kStates[] = {
    {.name = "favourites"_L1, .arrange = &chooseGroup<ClipboardGroup::Favourites>},
    {.name = "images"_L1, .arrange = &chooseGroup<ClipboardGroup::Images>},
    {.name = "colours"_L1, .arrange = &chooseGroup<ClipboardGroup::Colors>},
    {.name = "links"_L1, .arrange = &chooseGroup<ClipboardGroup::Links>},
    {.name = "text"_L1, .arrange = &chooseGroup<ClipboardGroup::Text>},
    {.name = "files"_L1, .arrange = &chooseGroup<ClipboardGroup::Files>},
    {.name = "search"_L1, .arrange = &search},
    {.name = "nothing-found"_L1, .arrange = &searchInVain},
    {.name = "clearing"_L1, .arrange = &askToClearAll},
    {.name = "failed"_L1, .arrange = &failToRecord},
    {.name = "paused"_L1, .prepare = &switchOff},
    {.name = "empty"_L1, .prepare = &empty},
    {.name = "off"_L1, .prepare = &switchOffEmpty},
};

}  // namespace

std::span<const PanelState> clipboardPanelStates() { return kStates; }

std::unique_ptr<TilePanel> makeClipboardPanel(const PanelContext& context) {
  return std::make_unique<ClipboardPanel>(context);
}

}  // namespace tarnwick
