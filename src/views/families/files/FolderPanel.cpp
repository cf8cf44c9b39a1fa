#include "views/families/files/FilesRoom.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <array>

#include "files/FolderListing.h"
#include "views/controls/Buttons.h"
#include "views/controls/ItemView.h"
#include "views/controls/Segments.h"
#include "views/families/files/FileItems.h"
#include "views/panels/FileDropZone.h"
#include "views/panels/PanelWords.h"
#include "widgets/PinnedTiles.h"
#include "widgets/WidgetFolder.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct Order {
  FolderOrder order;
  QLatin1StringView word;  ///< As the widget's option has it.
  const char* label;
};
constexpr std::array kOrders = {Order{FolderOrder::Newest, ""_L1, QT_TRANSLATE_NOOP("Panels", "Date")},
                                Order{FolderOrder::Name, value::byName, QT_TRANSLATE_NOOP("Panels", "Name")},
                                Order{FolderOrder::Kind, value::byKind, QT_TRANSLATE_NOOP("Panels", "Kind")},
                                Order{FolderOrder::Size, value::bySize, QT_TRANSLATE_NOOP("Panels", "Size")}};

QStringList orderLabels() {
  QStringList labels;
  for (const Order& each : kOrders) labels << PanelWords::tr(each.label);
  return labels;
}

class FolderPanel final : public TilePanel {
 public:
  explicit FolderPanel(const PanelContext& context)
      : TilePanel(context, theme::kPanelWidthWide),
        listing_(context.scheduler),
        back_(new IconButton(u"chevron.left"_s, PanelWords::tr("Back"))),
        order_(new Segments(PanelWords::tr("Sort by"), orderLabels())),
        view_(new ItemView(PanelWords::tr("Files"), ItemView::Shape::Icons)),
        rest_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)),
        items_(*view_, context, [this] { Q_EMIT closeRequested(); }) {
    header().addAction(back_);
    auto* button = new IconButton(u"folder"_s, PanelWords::tr("Open in Files"));
    connect(button, &QPushButton::clicked, this, [this] {
      this->context().commands.openPath(listing_.request().folder);
      Q_EMIT closeRequested();
    });
    header().addAction(button);
    view_->setMostRows(5);
    // Beside the name of a folder there would be no space for that.
    body().addWidget(order_);
    body().addSpacing(theme::kRowGap);
    body().addWidget(view_);
    beginWith(*view_);  // An arrow key chooses a file, not the order.
    body().addWidget(rest_);
    connect(back_, &QPushButton::clicked, this, [this] { go(above()); });
    connect(order_, &Segments::chosenChanged, this, [this](int chosen) {
      const QLatin1StringView word = kOrders[static_cast<size_t>(chosen)].word;
      changeSetting(option::sort, word.isEmpty() ? std::nullopt : std::optional(QString(word)));
      go(listing_.request().folder);
    });
    connect(view_, &ItemView::opened, this, &FolderPanel::open);
    connect(&listing_, &FolderListing::changed, this, &FolderPanel::refreshNow);
    auto* drops = new FileDropZone(*this, [this](QPoint at) { return placeAt(at); });
    connect(drops, &FileDropZone::openWanted, this, &FolderPanel::go);
    go(root());
  }

 protected:
  QString heading() const override {
    const QString folder = listing_.request().folder;
    const bool named = folder == root() && (!widget().title.isEmpty() || widget().kind == kind::downloads);
    const QString name = PinnedTiles::nameOf(folder);
    return named || name.isEmpty() ? title() : name;
  }

  void refresh(const TileSources& sources) override {
    const FolderContents& contents = listing_.contents();
    const bool inside = listing_.request().folder != root();
    back_->setVisible(inside);
    order_->setChosen(static_cast<int>(std::ranges::find(kOrders, order(), &Order::order) - kOrders.begin()));
    if (root().isEmpty()) {
      showEmpty({definition().symbol,
                 {},
                 title(),
                 PanelWords::tr("Choose the folder that this widget shows."),
                 PanelWords::tr("Choose Folder…"),
                 [this] { context().commands.openEditor(context().widget, context().display); }});
      return;
    }
    if (listing_.loaded() && contents.entries.isEmpty() && !inside) {
      const QString sentence = contents.problem.isEmpty() ? PanelWords::tr("This folder is empty.") : contents.problem;
      showEmpty({definition().symbol,
                 {},
                 title(),
                 sentence,
                 contents.problem.isEmpty() ? PanelWords::tr("Open in Files") : QString(),
                 [this] { context().commands.openPath(root()); }});
      return;
    }
    hideEmpty();
    setMessage(contents.problem);
    items_.set(contents.entries, FileItems::Caption::None, sources.now, sources.locale);
    const bool more = contents.total > contents.entries.size();
    rest_->setVisible(more || contents.entries.isEmpty());
    if (more)
      rest_->setText(
          PanelWords::tr("%1 of %2 shown")
              .arg(sources.locale.toString(contents.entries.size()), sources.locale.toString(contents.total)));
    else
      rest_->setText(!listing_.loaded()           ? PanelWords::tr("Looking…")
                     : contents.problem.isEmpty() ? PanelWords::tr("This folder is empty.")
                                                  : QString());
  }

 private:
  QString root() const { return widgetFolder(widget()); }
  FolderOrder order() const {
    const auto known = std::ranges::find(kOrders, widget().options.value(option::sort), &Order::word);
    return known == kOrders.end() ? FolderOrder::Newest : known->order;
  }

  void go(const QString& folder) {
    if (folder.isEmpty()) return;
    const FolderRequest request{folder, order()};
    if (const auto& fixed = context().readings.fixedFolder)
      listing_.setFixed(request, fixed(request));
    else
      listing_.show(request);
    refreshNow();
  }

  QString above() const { return QFileInfo(listing_.request().folder).path(); }

  /// Files go into the folder that they are held over, and elsewhere into the one that is shown.
  FileDropZone::Place placeAt(QPoint at) const {
    const auto within = [this, at](const QWidget& part) {
      return part.isVisible() && part.rect().contains(part.mapFrom(this, at));
    };
    if (within(*back_)) return {.opens = above()};
    const QWidget& cells = *view_->viewport();
    if (within(cells)) {
      const QModelIndex under = view_->indexAt(cells.mapFrom(this, at));
      const FolderEntry entry = items_.of(view_->items().value(under.row()).id);
      const QRect cell = view_->visualRect(under) & cells.rect();
      if (entry.isFolder) return {entry.path, cell.translated(cells.mapTo(this, QPoint())), entry.path};
    }
    constexpr int inset = theme::kPanelPadding / 2;
    return {listing_.request().folder, pane().toRect().adjusted(inset, inset, -inset, -inset), {}};
  }

  void open(const QString& path) {
    const FolderEntry entry = items_.of(path);
    if (entry.isFolder) {
      go(path);
    } else {
      context().commands.openPath(path);
      Q_EMIT closeRequested();
    }
  }

  FolderListing listing_;
  IconButton* back_;
  Segments* order_;
  ItemView* view_;
  TextLabel* rest_;
  FileItems items_;
};

}  // namespace

std::unique_ptr<TilePanel> makeFolderPanel(const PanelContext& context) {
  return std::make_unique<FolderPanel>(context);
}

}  // namespace tarnwick
