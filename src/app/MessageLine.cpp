#include "app/MessageLine.h"

#include <algorithm>

#include "dock/DockController.h"
#include "store/AppStore.h"
#include "views/dock/MessageBubble.h"

namespace tarnwick {
namespace {

constexpr int kAboveTheDock = 10;
/// By then the dock stands where a change of the layout or of the displays puts it.
constexpr double kOnceTheDockStands = 0.06;

}  // namespace

MessageLine::MessageLine(AppStore& store, DockController& dock, Screens& screens, Panels& panels)
    : store_(store), dock_(dock), screens_(screens), panels_(panels) {
  connect(&store_, &AppStore::errorChanged, this, &MessageLine::update);
  connect(&store_, &AppStore::layoutChanged, this, &MessageLine::arrangeSoon);
  connect(&screens_, &Screens::changed, this, &MessageLine::arrangeSoon);
  connect(&panels_, &Panels::compositingChanged, this, &MessageLine::arrangeSoon);
}

MessageLine::~MessageLine() = default;

void MessageLine::update() {
  if (store_.error() == text_) return;
  text_ = store_.error();
  panel_.reset();
  arrange();
}

void MessageLine::arrangeSoon() {
  if (!text_.isEmpty()) arranging_ = store_.scheduler().after(kOnceTheDockStands, [this] { arrange(); });
}

void MessageLine::arrange() {
  arranging_.reset();
  if (text_.isEmpty() || screens_.all().isEmpty()) {
    panel_.reset();
    return;
  }
  if (!panel_) make();
  const bool composited = panels_.isComposited();
  const Backdrop behind = !composited ? Backdrop::Opaque : panels_.canBlur() ? Backdrop::Blurred : Backdrop::Plain;
  bubble_->setLook(dockStyleNamed(store_.config().style), behind);
  if (const PanelPlacement wanted = placement(); wanted != placement_) {
    placement_ = wanted;
    panel_->place(wanted);
  }
  panel_->setOutline(bubble_->outlineRegion());
  panel_->setInputRegion(bubble_->outlineRegion());
  panel_->setShown(true);
}

void MessageLine::make() {
  auto bubble = std::make_unique<MessageBubble>();
  bubble->setMessage(text_);
  // The click that dismisses comes from inside the bubble, so the bubble must outlive the click.
  connect(
      bubble.get(), &MessageBubble::dismissed, this, [this] { store_.clearError(); }, Qt::QueuedConnection);
  bubble_ = bubble.get();
  placement_.reset();
  panel_ = panels_.make(std::move(bubble));
  // The display went, or the window was taken in some other way: where there is a display the message comes again.
  connect(
      panel_.get(), &Panel::closed, this,
      [this] {
        panel_.reset();
        arrangeSoon();
      },
      Qt::QueuedConnection);
}

PanelPlacement MessageLine::placement() const {
  const QStringList displays = dock_.displays();
  const QList<Screen> screens = screens_.all();
  const QString wanted = displays.isEmpty() ? screens_.mainId() : displays.first();
  const auto found = std::ranges::find(screens, wanted, &Screen::id);
  const Screen& screen = found == screens.end() ? screens.first() : *found;

  QRectF dock = dock_.frame(screen.id);
  if (dock.isEmpty()) dock = QRectF(screen.usable.left(), screen.usable.bottom(), screen.usable.width(), 0);
  const QSize size = bubble_->bubbleSize();
  const bool dockIsOnTop = dock.center().y() < screen.frame.center().y();
  const double y = dockIsOnTop ? dock.bottom() + kAboveTheDock : dock.top() - kAboveTheDock - size.height();
  const QPointF corner = QPointF(dock.center().x() - size.width() / 2.0, y) - screen.frame.topLeft();
  return {screen.id, QRect(corner.toPoint(), size), bubble_->margins()};
}

}  // namespace tarnwick
