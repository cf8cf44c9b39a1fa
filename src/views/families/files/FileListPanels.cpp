#include "views/families/files/FilesRoom.h"

#include <QDir>
#include <QFileInfo>

#include "base/PutBack.h"
#include "files/FileFinder.h"
#include "files/LatestWork.h"
#include "files/RecentFiles.h"
#include "files/ScreenshotFolder.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/FullWidth.h"
#include "views/controls/ItemView.h"
#include "views/families/files/FileItems.h"
#include "views/panels/PanelWords.h"
#include "widgets/FileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// What panels that list files share: a view of them, and that a click opens one and closes the panel.
class FileListPanel : public TilePanel {
 protected:
  FileListPanel(const PanelContext& context, const QString& label, ItemView::Shape shape)
      : TilePanel(context, theme::kPanelWidthWide),
        view_(new ItemView(label, shape)),
        items_(*view_, context, [this] { Q_EMIT closeRequested(); }) {
    connect(view_, &ItemView::opened, this, [this](const QString& path) {
      this->context().commands.openPath(path);
      Q_EMIT closeRequested();
    });
  }

  void sayNothing(const QString& sentence) { showEmpty({definition().symbol, {}, title(), sentence, {}, {}}); }

  ItemView& view() { return *view_; }
  FileItems& items() { return items_; }

 private:
  ItemView* view_;
  FileItems items_;
};

class RecentFilesPanel final : public FileListPanel {
 public:
  explicit RecentFilesPanel(const PanelContext& context)
      : FileListPanel(context, PanelWords::tr("Recent files"), ItemView::Shape::Rows) {
    view().setMostRows(8);
    addFullWidth(body(), &view());
    connect(&context.readings.recent, &RecentFiles::changed, this, &RecentFilesPanel::refreshNow);
    ticks(TickCadence::Minute);  // It says how long ago a file was open.
  }

 protected:
  void refresh(const TileSources& sources) override {
    RecentFiles& recent = context().readings.recent;
    QList<FolderEntry> entries;
    for (const RecentFile& file : recent.list())
      entries.append({file.path, QFileInfo(file.path).fileName(), false, 0, file.used});
    if (entries.isEmpty())
      return sayNothing(recent.loaded() ? PanelWords::tr("Files that you open will be listed here.")
                                        : PanelWords::tr("Looking…"));
    hideEmpty();
    items().set(entries, FileItems::Caption::FolderAndAge, sources.now, sources.locale);
  }
};

class ScreenshotsPanel final : public FileListPanel {
 public:
  explicit ScreenshotsPanel(const PanelContext& context)
      : FileListPanel(context, PanelWords::tr("Screenshots"), ItemView::Shape::Pictures) {
    view().setMostRows(4);
    body().addWidget(&view());
    beginWith(view());
    const ScreenshotFolder& shots = context.readings.screenshots;
    connect(&shots, &ScreenshotFolder::changed, this, &ScreenshotsPanel::refreshNow);
    auto* button = new IconButton(u"folder"_s, PanelWords::tr("Open in Files"));
    connect(button, &QPushButton::clicked, this, [this, &shots] {
      this->context().commands.openPath(shots.folder());
      Q_EMIT closeRequested();
    });
    header().addAction(button);
  }

 protected:
  void refresh(const TileSources& sources) override {
    ScreenshotFolder& shots = context().readings.screenshots;
    const QList<FolderEntry>& newest = shots.newest();
    if (newest.isEmpty()) {
      const QString problem = shots.problem();
      return sayNothing(!shots.loaded() ? PanelWords::tr("Looking…")
                        : !problem.isEmpty()
                            ? u"%1\n%2"_s.arg(shortFolder(shots.folder()), problem)
                            : PanelWords::tr("Screenshots in %1 will be shown here.").arg(shortFolder(shots.folder())));
    }
    hideEmpty();
    items().set(newest, FileItems::Caption::AgeOnly, sources.now, sources.locale);
  }
};

class ShelfPanel final : public FileListPanel {
 public:
  explicit ShelfPanel(const PanelContext& context)
      : FileListPanel(context, PanelWords::tr("Files on the shelf"), ItemView::Shape::Rows),
        clear_(new Button(PanelWords::tr("Clear Shelf"), Button::Role::Quiet)) {
    view().setMostRows(8);
    disconnect(&view(), &ItemView::actionRequested, nullptr, nullptr);
    view().setItemAction(u"xmark"_s, PanelWords::tr("Remove from Shelf"), QKeySequence(Qt::Key_Delete));
    connect(&view(), &ItemView::actionRequested, this, [this](const QString& path) {
      QStringList left = store().config().shelf;
      left.removeOne(path);
      leave(left, PanelWords::tr("“%1” was removed from the shelf.").arg(QFileInfo(path).fileName()));
    });
    connect(clear_, &QPushButton::clicked, this, [this] { leave({}, PanelWords::tr("The shelf was cleared.")); });
    addFullWidth(body(), &view());
    body().addSpacing(theme::kPanelHeaderBelow);
    // The word, not the button around it, begins where the rows do.
    auto* foot = new QWidget;
    auto* footRow = new QHBoxLayout(foot);
    footRow->setContentsMargins(0, 0, 0, 0);
    footRow->addWidget(clear_);
    footRow->addStretch();
    addFullWidth(body(), foot);
  }

 protected:
  void refresh(const TileSources& sources) override {
    const QStringList& shelf = store().config().shelf;
    if (shelf.isEmpty()) return sayNothing(PanelWords::tr("Drop files on this widget to find them here later."));
    hideEmpty();
    if (shelf != shelf_) look(shelf);
    header().setNote(sources.locale.toString(shelf.size()));
    items().set(entries_, FileItems::Caption::Folder, sources.now, sources.locale);
  }

 private:
  void leave(const QStringList& left, const QString& sentence) {
    const QStringList before = store().config().shelf;
    if (left == before) return;
    store().edit([&left](DockConfiguration& config) { config.shelf = left; });
    const auto back = [store = &store(), before] {
      store->edit([&before](DockConfiguration& config) { putBack<QString>(config.shelf, before); });
    };
    const auto again = [store = &store(), before, left] {
      store->edit([&](DockConfiguration& config) { takeOut<QString>(config.shelf, before, left); });
    };
    offerUndo(sentence, back, again);
    refreshNow();
  }

  /// The names are there at once; what is a folder, and which picture belongs to a file, the disk tells when it likes.
  void look(const QStringList& shelf) {
    shelf_ = shelf;
    entries_.clear();
    for (const QString& path : shelf) entries_.append({path, QFileInfo(path).fileName(), false, 0, {}});
    if (context().readings.fixedFolder) return;
    work_.start(
        [all = entries_](const std::stop_token& stop) {
          QList<FolderEntry> entries = all;
          for (FolderEntry& entry : entries) {
            if (stop.stop_requested()) break;
            const QFileInfo info(entry.path);
            entry.isFolder = info.isDir();
            entry.size = info.isFile() ? info.size() : 0;
            entry.modified = info.lastModified();
          }
          return entries;
        },
        [this](const QList<FolderEntry>& entries) {
          entries_ = entries;
          refreshNow();
        });
  }

  Button* clear_;
  QStringList shelf_;
  QList<FolderEntry> entries_;
  LatestWork work_;
};

class FileSearchPanel final : public FileListPanel {
 public:
  explicit FileSearchPanel(const PanelContext& context)
      : FileListPanel(context, PanelWords::tr("Files"), ItemView::Shape::Rows),
        finder_(QDir::homePath(), context.scheduler),
        field_(new SearchField(PanelWords::tr("Search files…"))),
        word_(new TextLabel({}, TextStyle::Body, Tone::Secondary)) {
    word_->setWordWrap(true);
    body().addWidget(field_);
    beginWith(*field_);
    body().addSpacing(theme::kRowOverhang);
    body().addWidget(word_);
    addFullWidth(body(), &view());
    view().setMostRows(8);
    view().followField(*field_);
    keepDraft(*field_);
    connect(field_, &QLineEdit::textChanged, &finder_, &FileFinder::find);
    connect(field_, &QLineEdit::textChanged, this, &FileSearchPanel::refreshNow);
    connect(&finder_, &FileFinder::changed, this, &FileSearchPanel::refreshNow);
  }

 protected:
  void refresh(const TileSources& sources) override {
    items().set(finder_.found(), FileItems::Caption::Folder, sources.now, sources.locale);
    view().setVisible(!finder_.found().isEmpty());
    word_->setVisible(finder_.found().isEmpty());
    const bool tooShort = field_->text().trimmed().size() < FileFinder::leastLetters;
    word_->setText(tooShort ? PanelWords::tr("Type part of a name to find files and folders in your home folder.")
                   : finder_.busy() ? PanelWords::tr("Looking…")
                                    : PanelWords::tr("No files found."));
  }

 private:
  FileFinder finder_;
  SearchField* field_;
  TextLabel* word_;
};

}  // namespace

std::unique_ptr<TilePanel> makeRecentFilesPanel(const PanelContext& context) {
  return std::make_unique<RecentFilesPanel>(context);
}
std::unique_ptr<TilePanel> makeScreenshotsPanel(const PanelContext& context) {
  return std::make_unique<ScreenshotsPanel>(context);
}
std::unique_ptr<TilePanel> makeShelfPanel(const PanelContext& context) { return std::make_unique<ShelfPanel>(context); }
std::unique_ptr<TilePanel> makeFileSearchPanel(const PanelContext& context) {
  return std::make_unique<FileSearchPanel>(context);
}

}  // namespace tarnwick
