#include <QPainterPath>
#include <algorithm>

#include "base/LocalFigures.h"
#include "desktop/ClientWindows.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/FullWidth.h"
#include "views/controls/ItemView.h"
#include "views/families/windows/WindowsRoom.h"
#include "views/panels/AppItems.h"
#include "views/panels/PanelWords.h"
#include "views/theme/Glass.h"
#include "widgets/catalog/Options.h"
#include "windows/WindowService.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPanelWidth = 460;
constexpr int kCellHeight = 128;
constexpr double kPreviewCorner = 7;
constexpr double kBadge = 24;
constexpr double kBigIcon = 44;

/// What a list of windows knows a cell by: an application's is negative.
QString cellOf(const RunningApp& app) { return u"-%1"_s.arg(app.identity); }

/// Windows with pictures of them, to be looked through by typing. Return or a click opens one, Delete or a middle click
/// closes it.
class WindowsPanel : public TilePanel {
 protected:
  WindowsPanel(const PanelContext& context, const QString& label)
      : TilePanel(context, kPanelWidth),
        windows_(context.readings.windowService),
        field_(new SearchField(PanelWords::tr("Search windows…"))),
        none_(new TextLabel(PanelWords::tr("No windows found."), TextStyle::Body, Tone::Secondary)),
        view_(new ItemView(label, ItemView::Shape::Pictures)) {
    auto* again = new IconButton(u"arrow.clockwise"_s, PanelWords::tr("Refresh"));
    header().addAction(again);
    body().addWidget(field_);
    beginWith(*field_);
    body().addSpacing(theme::kRowOverhang);
    body().addWidget(none_);
    addFullWidth(body(), view_);
    view_->setPictureCell(3, kCellHeight);
    view_->setMostRows(3);
    view_->followField(*field_);
    view_->setItemAction(u"xmark"_s, PanelWords::tr("Close Window"), QKeySequence(Qt::Key_Delete));
    view_->setPicture(
        [this](QPainter& painter, const QRectF& box, const ViewItem& item) { paint(painter, box, item); });
    keepDraft(*field_);
    view_->setItemMenu([this](const QString& id) { return menuOf(id); });
    const auto closeOne = [this](const QString& id) {
      if (isWindow(id)) windows_.close(id.toULongLong());
    };
    connect(view_, &ItemView::actionRequested, this, closeOne);
    connect(view_, &ItemView::middleClicked, this, closeOne);
    connect(field_, &QLineEdit::textChanged, this, &WindowsPanel::fill);
    connect(again, &QPushButton::clicked, this, [this] {
      seen_.clear();
      lookAgain();
    });
    connect(&store(), &AppStore::runningAppsChanged, this, &WindowsPanel::lookAgain);
    connect(&context.readings.windows, &ClientWindows::changed, this, &WindowsPanel::lookAgain);
    connect(&windows_, &WindowService::changed, this, [this] { say(); });
    connect(&windows_, &WindowService::previewChanged, view_, [this] { view_->refreshPictures(); });
  }
  ~WindowsPanel() override { windows_.stopPreviews(); }

  /// What changes of the windows later is followed by itself.
  void refresh(const TileSources&) override {
    if (!std::exchange(hasLooked_, true)) return lookAgain();
    listed();
    say();
  }

  /// What stands under the title of a window in its tip.
  virtual QString noteOf(const AccessibleWindow& window) const {
    return window.active ? PanelWords::tr("In front") : window.minimized ? PanelWords::tr("Minimized") : QString();
  }
  /// Called when the list is another.
  virtual void listed() {}
  /// What stands below the windows.
  virtual QString messageNow() const { return windows_.message(); }

  void lookAgain() {
    windows_.refresh();
    QSet<quint64> now;
    for (const AccessibleWindow& window : windows_.windows())
      if (!window.minimized) now.insert(window.id);
    if (std::exchange(seen_, now) != now) windows_.loadPreviews();
    listed();
    fill();
  }

  WindowService& windows() { return windows_; }
  ItemView& view() { return *view_; }
  static bool isWindow(const QString& id) { return !id.startsWith(u'-'); }

 private:
  void fill() {
    const QString wanted = field_->text().simplified();
    const auto fits = [&wanted](const QString& title, const QString& app) {
      return title.contains(wanted, Qt::CaseInsensitive) || app.contains(wanted, Qt::CaseInsensitive);
    };
    QList<ViewItem> items;
    icons_.clear();
    for (const AccessibleWindow& window : windows_.windows()) {
      const QString id = QString::number(window.id);
      icons_.insert(id, {window.appName, window.appIcon});
      if (!fits(window.title, window.appName)) continue;
      const QString note = noteOf(window);
      ViewItem item{id, window.title, window.appName};
      item.tip = QStringList{window.title, window.appName, note}.join(u'\n').trimmed();
      items.append(item);
    }
    if (windows_.windows().isEmpty()) addApps(items);
    const bool isNothing = items.isEmpty() && icons_.isEmpty();
    field_->setVisible(!isNothing);
    none_->setVisible(items.isEmpty() && !isNothing);
    view_->setVisible(!items.isEmpty());
    view_->setItems(items);
    if (isNothing)
      showEmpty({definition().symbol, {}, title(), windows_.message(), {}, {}});
    else
      hideEmpty();
    say();
  }
  void say() { setMessage(view_->items().isEmpty() ? QString() : messageNow()); }

  QList<PaneMenuEntry> menuOf(const QString& id) {
    if (!isWindow(id)) return {};
    const quint64 window = id.toULongLong();
    return {{PanelWords::tr("Minimize"), [this, window] { windows_.minimize(window); }},
            {PanelWords::tr("Pin to Dock"), [this, window] { addPinned(window); }},
            {PanelWords::tr("Close Window"), [this, window] { windows_.close(window); }}};
  }
  void addPinned(quint64 id) {
    const auto& all = windows_.windows();
    const auto window = std::ranges::find(all, id, &AccessibleWindow::id);
    if (window != all.end()) store().addWidget(WindowService::pin(*window), {});
  }

  /// Where the desktop tells which apps run, and not their windows.
  void addApps(QList<ViewItem>& items) {
    for (const RunningApp& app : store().runningApps()) {
      const auto count = static_cast<int>(app.windows.size());
      icons_.insert(cellOf(app), {app.name, app.iconName});
      items.append(
          {cellOf(app), app.name,
           count > 1 ? PanelWords::tr("%1 windows").arg(LocalFigures::number(count)) : PanelWords::tr("1 window")});
    }
  }

  void paint(QPainter& painter, const QRectF& box, const ViewItem& item) {
    const auto [name, icon] = icons_.value(item.id);
    const auto& icons = context().readings.icons;
    const QImage preview = isWindow(item.id) ? windows_.preview(item.id.toULongLong()) : QImage();
    if (preview.isNull()) {
      drawRounded(painter, box, kPreviewCorner, TilePanel::look().palette.well);
      QRectF place(0, 0, kBigIcon, kBigIcon);
      place.moveCenter(box.center());
      paintAppIcon(painter, place, icon, name, icons, TilePanel::look());
      return;
    }
    QRectF place(QPointF(), QSizeF(preview.size()).scaled(box.size(), Qt::KeepAspectRatio));
    place.moveCenter(box.center());
    QPainterPath outline;
    outline.addRoundedRect(place, kPreviewCorner, kPreviewCorner);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setClipPath(outline);
    painter.drawImage(place, preview);
    painter.restore();
    painter.setPen(QPen(TilePanel::look().palette.separator, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(outline);
    const QRectF badge(place.left() + 5, place.bottom() - kBadge - 5, kBadge, kBadge);
    paintAppIcon(painter, badge, icon, name, icons, TilePanel::look());
  }

  WindowService& windows_;
  SearchField* field_;
  TextLabel* none_;
  ItemView* view_;
  bool hasLooked_ = false;
  QSet<quint64> seen_;                                 ///< Those of which pictures were asked for.
  QHash<QString, std::pair<QString, QString>> icons_;  ///< Name and icon of the application of a cell.
};

/// Every window, and every application whose windows are not told.
class RunningAppsPanel final : public WindowsPanel {
 public:
  explicit RunningAppsPanel(const PanelContext& context) : WindowsPanel(context, PanelWords::tr("Open apps")) {
    connect(&view(), &ItemView::opened, this, [this](const QString& id) {
      if (isWindow(id))
        this->context().commands.showWindow(id.toULongLong());
      else
        this->context().commands.bringApplication(id.sliced(1).toULongLong());
      Q_EMIT closeRequested();
    });
  }
};

class PinnedWindowPanel final : public WindowsPanel {
 public:
  explicit PinnedWindowPanel(const PanelContext& context)
      : WindowsPanel(context, PanelWords::tr("Windows to pin")),
        show_(new Button(PanelWords::tr("Show Window"), Button::Role::Primary)) {
    header().addAction(show_);
    connect(show_, &QPushButton::clicked, this, [this] {
      if (const auto pinned = windows().pinned(widget())) this->context().commands.showWindow(pinned->id);
      Q_EMIT closeRequested();
    });
    connect(&view(), &ItemView::opened, this, &PinnedWindowPanel::pin);
  }

 protected:
  QString noteOf(const AccessibleWindow& window) const override {
    return window.id == shown_ ? PanelWords::tr("Pinned") : WindowsPanel::noteOf(window);
  }
  void listed() override {
    const auto pinned = windows().pinned(widget());
    shown_ = pinned ? pinned->id : 0;
    show_->setVisible(!widget().options.value(option::windowTitle).isEmpty());
    show_->setEnabled(pinned.has_value());
  }
  QString messageNow() const override {
    const QString title = widget().options.value(option::windowTitle);
    const QString message = WindowsPanel::messageNow();
    return message.isEmpty() && !title.isEmpty() && shown_ == 0 ? PanelWords::tr("“%1” is not open.").arg(title)
                                                                : message;
  }

 private:
  void pin(const QString& id) {
    const auto& all = windows().windows();
    const auto window = std::ranges::find(all, id.toULongLong(), &AccessibleWindow::id);
    if (window == all.end()) return;
    DockWidget changed = widget();
    changed.options.insert(WindowService::pin(*window).options);
    changeSettings(changed);
    lookAgain();
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
