#include "app/PanelHost.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "desktop/FrameClock.h"
#include "desktop/MotionPreference.h"
#include "store/AppStore.h"
#include "store/DockDrops.h"
#include "views/families/Rooms.h"
#include "views/panels/FileDropZone.h"
#include "views/panels/PanelPresentation.h"
#include "views/panels/TilePanel.h"
#include "views/theme/DesktopLook.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

PanelHost::PanelHost(AppStore& store, const Services& services, Commands& commands, PanelHostSetup setup)
    : store_(store), services_(services), commands_(commands), setup_(std::move(setup)) {
  connect(&store_, &AppStore::layoutChanged, this, &PanelHost::applyLook);
  // Another profile shows other tiles.
  connect(&store_, &AppStore::layoutChanged, this, [this] {
    if (widget_.isNull()) return;
    const QList<DockWidget> shown = store_.displayedWidgets(display_);
    if (std::ranges::find(shown, widget_, &DockWidget::id) == shown.end()) close();
  });
  // Shadow and margins come and go with the compositor, and nobody minds opening a panel again then.
  connect(&services_.panels, &Panels::compositingChanged, this, &PanelHost::closeAtOnce);
}

PanelHost::~PanelHost() = default;

void PanelHost::open(const QString& display, const QUuid& widget, Panel& dock, const QRect& tile, const QString& as) {
  if (display == display_ && widget == widget_ && (as.isEmpty() || as == as_)) {
    close();
    return;
  }
  closeAtOnce();
  display_ = display;
  widget_ = widget;
  as_ = as;
  showPane(makeTilePanel(), dock, tile);
  Q_EMIT openChanged(display_, widget_);
  Q_EMIT outlineChanged();
}

void PanelHost::ask(const QString& display, const Question& question, Panel& dock, const QRect& beside,
                    std::function<void(bool accepted)> answer) {
  closeAtOnce();
  display_ = display;
  answer_ = std::move(answer);
  auto pane = std::make_unique<QuestionPane>(question);
  // The pane stays alive until the event that answers it is over. Another question may have taken its place by then,
  // which the old pane must not answer.
  const auto end = [this, question = ++questions_](bool accepted) {
    if (question != questions_) return;
    const auto callback = accepted ? std::exchange(answer_, {}) : nullptr;
    close();
    if (callback) callback(true);
  };
  connect(pane.get(), &QuestionPane::answered, this, end, Qt::QueuedConnection);
  showPane(std::move(pane), dock, beside);
  Q_EMIT openChanged(display_, {});
  Q_EMIT outlineChanged();
}

std::unique_ptr<TilePanel> PanelHost::makeTilePanel() {
  PanelContext context{store_,
                       store_.scheduler(),
                       services_.toggles,
                       commands_,
                       widget_,
                       display_,
                       [this, display = display_] { return setup_.sources(display); },
                       setup_.readings,
                       &drafts_};
  context.as = as_;
  std::unique_ptr<TilePanel> panel = makePanel(context);
  pane_ = panel.get();
  applyLook();
  panel->start();
  connect(panel.get(), &TilePanel::closeRequested, this, [this, id = widget_] { drafts_.forget(id); });
  if (const auto* zone = panel->findChild<FileDropZone*>()) {
    const auto drop = [this, display = display_](const QString& folder, const QList<QUrl>& urls,
                                                 Qt::DropAction action) {
      Q_EMIT filesDropped(folder, {.display = display, .urls = urls, .action = action});
    };
    connect(zone, &FileDropZone::dropped, this, drop);
  }
  // The panel stays alive until the event that closes it is over.
  connect(panel.get(), &TilePanel::closeRequested, this, &PanelHost::close, Qt::QueuedConnection);
  return panel;
}

void PanelHost::showPane(std::unique_ptr<GlassPane> pane, Panel& dock, const QRect& tile) {
  pane_ = pane.get();
  pane_->setClocks(services_.clocks);
  applyLook();
  const QMargins margins = pane_->margins();
  auto presentation = std::make_unique<PanelPresentation>(std::move(pane), services_.clocks.make(display_));
  presentation_ = presentation.get();
  presentation_->setReduceMotion(services_.motion.reducesMotion());
  presentation_->setComposited(services_.panels.isComposited());

  connect(presentation_, &PanelPresentation::vanished, this, &PanelHost::drop, Qt::QueuedConnection);
  connect(pane_, &GlassPane::sizeChanged, presentation_, [this] {
    presentation_->updateGeometry();
    if (popup_) popup_->reposition();
    Q_EMIT outlineChanged();
  });
  const auto lost = [this] { closeAtOnce(); };
  connect(&dock, &Panel::closed, presentation_, lost);
  connect(&dock, &QObject::destroyed, presentation_, lost);

  popup_ = dock.popup(std::move(presentation), tile, PopupStyle{.margins = margins, .gap = theme::kPanelGap});
  // By the time that the event arrives another panel may be open.
  const auto closed = [this, lost, popup = popup_.get()] {
    if (popup_.get() == popup) lost();
  };
  connect(popup_.get(), &Popup::closed, this, closed, Qt::QueuedConnection);
  const bool downwards = setup_.opensDownwards && setup_.opensDownwards(display_);
  const double height = std::max(1, presentation_->height());
  presentation_->setAnchor({0.5, (downwards ? margins.top() : height - margins.bottom()) / height});
  presentation_->animate(1, true);
}

void PanelHost::applyLook() {
  if (!pane_) return;
  const Backdrop behind = services_.panels.isComposited() ? Backdrop::Plain : Backdrop::Opaque;
  pane_->setDockLook(shownStyle(store_.config()), behind, store_.config().monochrome);
}

void PanelHost::follow(const QRect& tile) {
  if (display_.isEmpty() || !popup_ || tile.isEmpty()) return;
  popup_->moveBeside(tile);
  Q_EMIT outlineChanged();
}

void PanelHost::close() {
  if (display_.isEmpty()) return;
  forget();
  if (popup_) popup_->giveBackKeyboard();
  if (presentation_) presentation_->animate(0, true);
}

void PanelHost::closeAtOnce() {
  forget();
  drop();
}

void PanelHost::closeOn(const QString& display) {
  if (hasActivePanel(display)) closeAtOnce();
}

/// From here on no panel is open, though one may still be seen going.
void PanelHost::forget() {
  if (display_.isEmpty()) return;
  const QString display = std::exchange(display_, {});
  widget_ = {};
  // The caller may open something of its own, once this has gone.
  if (answer_) QMetaObject::invokeMethod(this, std::bind(std::exchange(answer_, {}), false), Qt::QueuedConnection);
  Q_EMIT openChanged(display, {});
  Q_EMIT outlineChanged();
}

QRect PanelHost::outline(const QString& display) const {
  if (!hasActivePanel(display) || !presentation_) return {};
  return presentation_->geometry().marginsRemoved(pane_->margins());
}

void PanelHost::drop() {
  // A late signal of a panel that is gone must not close the next one.
  if (!display_.isEmpty()) return;
  // A panel that is hidden before it goes can still take what is being written in it.
  if (pane_) pane_->hide();
  pane_ = nullptr;
  presentation_ = nullptr;
  popup_.reset();
}

}  // namespace tarnwick
