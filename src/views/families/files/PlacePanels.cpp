#include "views/families/files/FilesRoom.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QUrlQuery>

#include "files/Bookmarks.h"
#include "views/controls/Buttons.h"
#include "views/controls/ConfirmBar.h"
#include "views/controls/Fields.h"
#include "views/controls/FullWidth.h"
#include "views/controls/ItemView.h"
#include "views/panels/PanelWords.h"
#include "views/theme/Glass.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kSiteDragCorner = 10;

class TrashPanel final : public TilePanel {
 public:
  explicit TrashPanel(const PanelContext& context)
      : TilePanel(context),
        figure_(new FigureView),
        buttons_(new QWidget),
        open_(new Button(PanelWords::tr("Open"))),
        empty_(new Button(PanelWords::tr("Empty Trash…"))),
        confirm_(new ConfirmBar) {
    auto* row = new QHBoxLayout(buttons_);
    row->setContentsMargins(0, theme::kPanelHeaderBelow, 0, 0);
    row->setSpacing(theme::kRowOverhang);
    row->addWidget(open_, 1);
    row->addWidget(empty_, 1);
    body().addWidget(figure_);
    body().addWidget(buttons_);
    body().addWidget(confirm_);
    connect(open_, &QPushButton::clicked, this, [this] {
      this->context().commands.openTrash();
      Q_EMIT closeRequested();
    });
    connect(empty_, &QPushButton::clicked, this, [this] {
      buttons_->hide();
      confirm_->ask(PanelWords::tr("Delete everything in the trash? This cannot be undone."),
                    PanelWords::tr("Empty Trash"), [this] { this->context().commands.emptyTrash(); });
    });
    connect(confirm_, &ConfirmBar::over, this, [this] {
      buttons_->show();
      empty_->setFocus();
    });
  }

 protected:
  void refresh(const TileSources& sources) override {
    const qint64 count = sources.trashItems.value_or(0);
    figure_->setFigure(sources.locale.toString(count));
    figure_->setLines(count == 0   ? PanelWords::tr("The trash is empty")
                      : count == 1 ? PanelWords::tr("item in the trash")
                                   : PanelWords::tr("items in the trash"));
    empty_->setEnabled(count > 0);
    if (count == 0 && confirm_->isAsking()) confirm_->leave();
  }

 private:
  FigureView* figure_;
  QWidget* buttons_;
  Button* open_;
  Button* empty_;
  ConfirmBar* confirm_;
};

/// Addresses without what all of them have.
QString shortAddress(const QUrl& address) {
  QString host = address.host();
  if (host.startsWith("www."_L1)) host.remove(0, 4);
  return host;
}

class BookmarksPanel final : public TilePanel {
 public:
  explicit BookmarksPanel(const PanelContext& context)
      : TilePanel(context, theme::kPanelWidthWide),
        field_(new SearchField(PanelWords::tr("Search bookmarks…"))),
        none_(new TextLabel(PanelWords::tr("No bookmarks found."), TextStyle::Body, Tone::Secondary)),
        view_(new ItemView(PanelWords::tr("Bookmarks"), ItemView::Shape::Rows)) {
    body().addWidget(field_);
    beginWith(*field_);
    body().addSpacing(theme::kRowOverhang);
    body().addWidget(none_);
    addFullWidth(body(), view_);
    view_->setMostRows(8);
    view_->followField(*field_);
    view_->setPicture(
        [this](QPainter& painter, const QRectF& box, const ViewItem& item) { paintSite(painter, box, item); });
    view_->setDragGround(kSiteDragCorner);
    keepDraft(*field_);
    connect(field_, &QLineEdit::textChanged, this, &BookmarksPanel::fill);
    connect(view_, &ItemView::opened, this, [this](const QString& address) {
      this->context().commands.openUrl(QUrl(address));
      Q_EMIT closeRequested();
    });
    connect(&context.readings.bookmarks, &Bookmarks::changed, this, &BookmarksPanel::refreshNow);
  }

 protected:
  void refresh(const TileSources& sources) override {
    Bookmarks& bookmarks = context().readings.bookmarks;
    const QList<Bookmark>& list = bookmarks.list();
    if (list.isEmpty()) {
      const bool looking = !bookmarks.loaded();
      showEmpty(
          {definition().symbol,
           {},
           title(),
           looking ? PanelWords::tr("Looking…") : PanelWords::tr("No browser bookmarks were found on this computer."),
           {},
           {}});
      return;
    }
    hideEmpty();
    header().setNote(sources.locale.toString(list.size()));
    if (list != list_) {
      list_ = list;
      fill();
    }
  }

 private:
  void fill() {
    const QString wanted = field_->text().trimmed();
    QList<ViewItem> items;
    for (const Bookmark& each : list_) {
      const bool fits = wanted.isEmpty() || each.title.contains(wanted, Qt::CaseInsensitive) ||
                        each.folder.contains(wanted, Qt::CaseInsensitive) ||
                        each.address.toString().contains(wanted, Qt::CaseInsensitive);
      if (!fits) continue;
      const QString host = shortAddress(each.address);
      ViewItem item{each.address.toString(QUrl::FullyEncoded), each.title,
                    each.folder.isEmpty() ? host : u"%1 · %2"_s.arg(host, each.folder),
                    each.title + u'\n' + each.address.toDisplayString()};
      item.drag = each.address;
      items.append(item);
    }
    view_->setItems(items);
    view_->setVisible(!items.isEmpty());
    none_->setVisible(items.isEmpty());
  }

  void paintSite(QPainter& painter, const QRectF& box, const ViewItem& item) const {
    constexpr double corner = 0.26;
    const ControlLook& look = this->look();
    drawRounded(painter, box, box.width() * corner, look.palette.button);
    drawTextIn(painter, box, item.caption.left(1).toUpper(), TextStyle::BadgeInitial,
               look.palette.accentWord(look.accent), Qt::AlignHCenter);
  }

  SearchField* field_;
  TextLabel* none_;
  ItemView* view_;
  QList<Bookmark> list_;
};

class WebSearchPanel final : public TilePanel {
 public:
  explicit WebSearchPanel(const PanelContext& context)
      : TilePanel(context),
        field_(new SearchField(PanelWords::tr("Search the web…"))),
        search_(new Button(PanelWords::tr("Search"), Button::Role::Primary)) {
    body().addWidget(field_);
    beginWith(*field_);
    body().addSpacing(theme::kPanelHeaderBelow);
    body().addWidget(search_, 0, Qt::AlignRight);
    connect(search_, &QPushButton::clicked, this, &WebSearchPanel::search);
    keepDraft(*field_);
    connect(field_, &QLineEdit::returnPressed, this, &WebSearchPanel::search);
    connect(field_, &QLineEdit::textChanged, this, &WebSearchPanel::refreshNow);
  }

 protected:
  void refresh(const TileSources&) override { search_->setEnabled(!isAsked_ && !field_->text().trimmed().isEmpty()); }

 private:
  void search() {
    const QString text = field_->text().trimmed();
    if (isAsked_ || text.isEmpty()) return;
    QUrl url(u"https://duckduckgo.com/"_s);
    QUrlQuery query;
    // A query item keeps a plus and a percent sign as they are, which a server would read as something else.
    query.addQueryItem(u"q"_s, QString::fromLatin1(QUrl::toPercentEncoding(text)));
    url.setQuery(query);
    isAsked_ = true;
    search_->setEnabled(false);
    // Meanwhile the user may have closed the panel, or written something else.
    const auto over = [panel = QPointer(this), asked = field_->text()](bool started) {
      if (!panel) return;
      panel->isAsked_ = false;
      panel->refreshNow();
      if (!started || panel->field_->text() != asked) return;
      panel->field_->clear();
      Q_EMIT panel->closeRequested();
    };
    context().commands.openUrl(url, over);
  }

  SearchField* field_;
  Button* search_;
  bool isAsked_ = false;
};

}  // namespace

std::unique_ptr<TilePanel> makeTrashPanel(const PanelContext& context) { return std::make_unique<TrashPanel>(context); }
std::unique_ptr<TilePanel> makeBookmarksPanel(const PanelContext& context) {
  return std::make_unique<BookmarksPanel>(context);
}
std::unique_ptr<TilePanel> makeWebSearchPanel(const PanelContext& context) {
  return std::make_unique<WebSearchPanel>(context);
}

}  // namespace tarnwick
