#include <algorithm>

#include "base/LocalFigures.h"
#include "desktop/ClientWindows.h"
#include "views/controls/Buttons.h"
#include "views/controls/FullWidth.h"
#include "views/controls/ItemView.h"
#include "views/families/windows/WindowsRoom.h"
#include "views/panels/AppItems.h"
#include "views/panels/PanelWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// What a list of windows knows a row by: an application's is negative.
QString rowOf(const RunningApp& app) { return u"-%1"_s.arg(app.identity); }

QString titleOf(const ClientWindow& window) {
  return window.title.isEmpty() ? PanelWords::tr("Untitled window") : window.title;
}

/// A view of running applications and windows, each with its application's icon.
class WindowsPanel : public TilePanel {
 protected:
  WindowsPanel(const PanelContext& context, const QString& label)
      : TilePanel(context, theme::kPanelWidthWide), view_(new ItemView(label, ItemView::Shape::Rows)) {
    view_->setMostRows(9);
    addFullWidth(body(), view_);
    view_->setPicture([this](QPainter& painter, const QRectF& box, const ViewItem& item) {
      const auto facts = icons_.value(item.id);
      paintAppIcon(painter, box, facts.second, facts.first, this->context().readings.icons, look());
    });
    connect(&store(), &AppStore::runningAppsChanged, this, &WindowsPanel::refreshNow);
    connect(&context.readings.windows, &ClientWindows::changed, this, &WindowsPanel::refreshNow);
  }

  QList<ClientWindow> windowsOf(const RunningApp& app, const QList<ClientWindow>& all) const {
    QList<ClientWindow> own;
    for (const quint64 id : app.windows)
      if (const auto window = std::ranges::find(all, id, &ClientWindow::id); window != all.end()) own.append(*window);
    return own;
  }
  QList<ClientWindow> allWindows() const { return context().readings.windows.all(); }

  void begin() {
    rows_.clear();
    icons_.clear();
  }
  void add(const ViewItem& item, const RunningApp& app) {
    rows_.append(item);
    icons_.insert(item.id, {app.name, app.iconName});
  }
  void end() { view_->setItems(rows_); }

  void sayNothing() {
    showEmpty({definition().symbol, {}, title(), PanelWords::tr("No apps with windows are open."), {}, {}});
  }

  ItemView& view() { return *view_; }

 private:
  ItemView* view_;
  QList<ViewItem> rows_;
  QHash<QString, std::pair<QString, QString>> icons_;  ///< Name and icon of the application of a row.
};

/// A row for each application, or for each of its windows where it has several.
class RunningAppsPanel final : public WindowsPanel {
 public:
  explicit RunningAppsPanel(const PanelContext& context) : WindowsPanel(context, PanelWords::tr("Open apps")) {
    connect(&view(), &ItemView::opened, this, [this](const QString& row) {
      Commands& commands = this->context().commands;
      if (row.startsWith(u'-'))
        commands.bringApplication(row.sliced(1).toULongLong());
      else
        commands.showWindow(row.toULongLong());
      Q_EMIT closeRequested();
    });
  }

 protected:
  void refresh(const TileSources&) override {
    const QList<ClientWindow> all = allWindows();
    begin();
    for (const RunningApp& app : store().runningApps()) {
      const QList<ClientWindow> own = windowsOf(app, all);
      if (own.isEmpty()) {
        const auto count = static_cast<int>(app.windows.size());
        add({rowOf(app), app.name,
             count > 1 ? PanelWords::tr("%1 windows").arg(LocalFigures::number(count)) : PanelWords::tr("1 window")},
            app);
        continue;
      }
      for (const ClientWindow& window : own) {
        ViewItem item{QString::number(window.id), titleOf(window), app.name};
        item.value = window.active      ? PanelWords::tr("In front")
                     : window.minimised ? PanelWords::tr("Minimized")
                                        : QString();
        add(item, app);
      }
    }
    if (store().runningApps().isEmpty()) return sayNothing();
    hideEmpty();
    end();
  }
};

class PinnedWindowPanel final : public WindowsPanel {
 public:
  explicit PinnedWindowPanel(const PanelContext& context)
      : WindowsPanel(context, PanelWords::tr("Windows to pin")),
        show_(new Button(PanelWords::tr("Show Window"), Button::Role::Primary)) {
    header().addAction(show_);
    connect(show_, &QPushButton::clicked, this, [this] {
      if (shown_ != 0) this->context().commands.showWindow(shown_);
      Q_EMIT closeRequested();
    });
    connect(&view(), &ItemView::opened, this, &PinnedWindowPanel::pin);
  }

 protected:
  void refresh(const TileSources&) override {
    const QList<ClientWindow> all = allWindows();
    const QString title = widget().options.value(option::windowTitle);
    const QString owner = widget().options.value(option::bundleID);
    shown_ = 0;
    begin();
    for (const RunningApp& app : store().runningApps()) {
      for (const ClientWindow& window : windowsOf(app, all)) {
        const bool pinned = titleOf(window) == title && (owner.isEmpty() || owner == app.desktopId);
        if (pinned && shown_ == 0) shown_ = window.id;
        ViewItem item{QString::number(window.id), titleOf(window), app.name};
        item.value = pinned ? PanelWords::tr("Pinned") : QString();
        add(item, app);
      }
    }
    show_->setVisible(!title.isEmpty());
    show_->setEnabled(shown_ != 0);
    setMessage(title.isEmpty() || shown_ != 0 ? QString() : PanelWords::tr("“%1” is not open.").arg(title));
    if (view().items().isEmpty() && store().runningApps().isEmpty()) return sayNothing();
    hideEmpty();
    end();
  }

 private:
  void pin(const QString& row) {
    const quint64 id = row.toULongLong();
    const auto& apps = store().runningApps();
    const auto app = std::ranges::find_if(apps, [id](const RunningApp& each) { return each.windows.contains(id); });
    const QList<ClientWindow> all = allWindows();
    const auto window = std::ranges::find(all, id, &ClientWindow::id);
    if (app == apps.end() || window == all.end()) return;
    DockWidget changed = widget();
    changed.options[option::windowTitle] = titleOf(*window);
    changed.options[option::appName] = app->name;
    changed.options[option::bundleID] = app->desktopId;
    changeSettings(changed);
    refreshNow();
  }

  Button* show_;
  quint64 shown_ = 0;
};

}  // namespace

std::unique_ptr<TilePanel> makeRunningAppsPanel(const PanelContext& context) {
  return std::make_unique<RunningAppsPanel>(context);
}

std::unique_ptr<TilePanel> makePinnedWindowPanel(const PanelContext& context) {
  return std::make_unique<PinnedWindowPanel>(context);
}

}  // namespace tarnwick
