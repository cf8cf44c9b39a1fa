#include "views/families/apps/AppsRoom.h"

#include <QFileInfo>
#include <algorithm>

#include "apps/InstalledApps.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/ItemView.h"
#include "views/panels/AppItems.h"
#include "views/panels/PanelWords.h"
#include "widgets/PinnedTiles.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// What both panels of applications share: a field, and the installed applications that fit what is entered in it.
class AppsPanel : public TilePanel {
 protected:
  explicit AppsPanel(const PanelContext& context)
      : TilePanel(context, theme::kPanelWidthWide),
        field_(new SearchField(PanelWords::tr("Search apps…"))),
        none_(new TextLabel({}, TextStyle::Body, Tone::Secondary)),
        view_(new ItemView(PanelWords::tr("Applications"), ItemView::Shape::Icons)),
        items_(*view_, context.readings.icons) {
    none_->setWordWrap(true);
    body().addWidget(field_);
    body().addSpacing(theme::kRowOverhang);
    body().addWidget(none_);
    body().addWidget(view_);
    view_->setMostRows(6);
    keepDraft(*field_);
    connect(field_, &QLineEdit::textChanged, this, &AppsPanel::refreshNow);
  }

  /// The installed applications that fit the field, whose answer changes only with one of the two.
  QList<AppItem> fitting() {
    const auto index = installed();
    const QString wanted = field_->text().trimmed();
    if (index != index_ || wanted != wanted_) {
      index_ = index;
      wanted_ = wanted;
      fitting_ = AppItems::fitting(*index, wanted);
    }
    return fitting_;
  }
  std::shared_ptr<const AppIndex> installed() const { return context().readings.apps.index(); }

  void start(const QString& path) {
    context().commands.startApplication(path);
    Q_EMIT closeRequested();
  }

  void show(const QList<AppItem>& apps, const QString& nothing) {
    items_.set(apps);
    view_->setVisible(!apps.isEmpty());
    none_->setVisible(apps.isEmpty());
    none_->setText(nothing);
  }

  SearchField& field() { return *field_; }
  ItemView& view() { return *view_; }

 private:
  SearchField* field_;
  TextLabel* none_;
  ItemView* view_;
  AppItems items_;
  std::shared_ptr<const AppIndex> index_;
  QString wanted_;
  QList<AppItem> fitting_;
};

class ApplicationsPanel final : public AppsPanel {
 public:
  explicit ApplicationsPanel(const PanelContext& context) : AppsPanel(context) {
    view().followField(field());
    beginWith(field());
    connect(&view(), &ItemView::opened, this, &ApplicationsPanel::start);
    view().setItemMenu([this](const QString& path) { return menuOf(path); });
  }

 protected:
  void refresh(const TileSources&) override {
    hideEmpty();
    const QList<AppItem> apps = fitting();
    const QString wanted = field().text().trimmed();
    show(apps, wanted.isEmpty() ? PanelWords::tr("Looking…") : PanelWords::tr("No app matches “%1”.").arg(wanted));
  }

 private:
  QList<PaneMenuEntry> menuOf(const QString& path) {
    QList<PaneMenuEntry> entries{{PanelWords::tr("Open"), [this, path] { start(path); }},
                                 {PanelWords::tr("New Window"), [this, path] {
                                    context().commands.newWindow(path);
                                    Q_EMIT closeRequested();
                                  }}};
    const auto idOf = [&apps = context().readings.apps](const QString& entry) {
      return apps.environment().desktopIdOf(entry);
    };
    if (!PinnedTiles::hold(context().store.displayedWidgets(context().display), path, idOf))
      entries << PaneMenuEntry{} << PaneMenuEntry{PanelWords::tr("Keep in Dock"), [this, path] {
                                                    context().commands.keepInDock(path, context().display);
                                                  }};
    return entries;
  }
};

class AppFolderPanel final : public AppsPanel {
 public:
  explicit AppFolderPanel(const PanelContext& context)
      : AppsPanel(context),
        add_(new IconButton(u"plus"_s, PanelWords::tr("Add Apps"))),
        done_(new Button(PanelWords::tr("Done"))) {
    header().addAction(add_);
    header().addAction(done_);
    view().followField(field());
    beginWith(view());
    connect(add_, &QPushButton::clicked, this, [this] { choose(true); });
    connect(done_, &QPushButton::clicked, this, [this] { choose(false); });
    connect(&view(), &ItemView::opened, this, [this](const QString& path) {
      if (!choosing_) return start(path);
      QStringList wanted = paths();
      if (!wanted.contains(path)) setPaths(wanted << path);
      field().selectAll();  // The next name is written over this one.
    });
    connect(&view(), &ItemView::actionRequested, this, [this](const QString& path) {
      const QStringList all = paths();
      QStringList wanted = all;
      wanted.removeAll(path);
      if (wanted == all) return;
      const auto index = installed();
      const DesktopEntry* entry = index->byPath(path);
      const QString name = entry ? entry->name : QFileInfo(path).completeBaseName();
      setPaths(wanted, PanelWords::tr("“%1” was removed.").arg(name));
    });
    choose(false);
  }

 protected:
  void refresh(const TileSources& sources) override {
    const QStringList held = paths();
    add_->setVisible(!choosing_);
    done_->setVisible(choosing_);
    field().setVisible(choosing_);
    if (held.isEmpty() && !choosing_) {
      EmptyState state{definition().symbol,
                       {},
                       title(),
                       PanelWords::tr("Group several apps in one widget."),
                       PanelWords::tr("Add Apps…"),
                       [this] { choose(true); }};
      showEmpty(state);
      return;
    }
    hideEmpty();
    QList<AppItem> apps = choosing_ ? fitting() : inFolder(held, sources);
    if (choosing_) {
      apps.removeIf([&held](const AppItem& app) { return held.contains(app.path); });
      header().setNote(PanelWords::tr("%1 in the folder").arg(sources.locale.toString(held.size())));
    } else {
      header().setNote({});
    }
    const QString wanted = choosing_ ? field().text().trimmed() : QString();
    show(apps,
         wanted.isEmpty() ? PanelWords::tr("No apps found.") : PanelWords::tr("No app matches “%1”.").arg(wanted));
  }

 private:
  QStringList paths() const { return widget().options.value(option::paths).split(u'\n', Qt::SkipEmptyParts); }
  void setPaths(const QStringList& paths, const QString& sentence = {}) {
    changeSetting(option::paths, paths.isEmpty() ? std::nullopt : std::optional(paths.join(u'\n')), sentence);
    refreshNow();
  }

  QList<AppItem> inFolder(const QStringList& held, const TileSources& sources) const {
    const auto index = installed();
    QList<AppItem> apps;
    for (const QString& path : held) {
      if (const DesktopEntry* entry = index->byPath(path)) {
        apps.append({path, entry->name, entry->iconName, entry->comment});
      } else {
        const ApplicationFacts facts =
            sources.applications.value(path, {QFileInfo(path).completeBaseName(), path, 0, {}});
        apps.append({path, facts.name, facts.icon, {}});
      }
    }
    return apps;
  }

  void choose(bool choosing) {
    choosing_ = choosing;
    if (choosing) {
      view().setItemAction({}, {}, {});
    } else {
      field().clear();
      view().setItemAction(u"xmark"_s, PanelWords::tr("Remove from Folder"), QKeySequence(Qt::Key_Delete));
    }
    refreshNow();
    QWidget& first = choosing ? static_cast<QWidget&>(field()) : view();
    first.setFocus(Qt::OtherFocusReason);
  }

  IconButton* add_;
  Button* done_;
  bool choosing_ = false;
};

}  // namespace

std::unique_ptr<TilePanel> makeApplicationsPanel(const PanelContext& context) {
  return std::make_unique<ApplicationsPanel>(context);
}
std::unique_ptr<TilePanel> makeAppFolderPanel(const PanelContext& context) {
  return std::make_unique<AppFolderPanel>(context);
}

}  // namespace tarnwick
