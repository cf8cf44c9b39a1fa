#include "app/MessageLine.h"

#include <algorithm>

#include "dock/DockController.h"
#include "store/AppStore.h"
#include "views/dock/MessageBubble.h"

namespace tarnwick {
namespace {

constexpr int kAboveTheDock = 10;

}  // namespace

MessageLine::MessageLine(AppStore& store, DockController& dock, Screens& screens, Panels& panels)
    : store_(store), dock_(dock), screens_(screens), panels_(panels) {
  connect(&store_, &AppStore::errorChanged, this, &MessageLine::update);
}

MessageLine::~MessageLine() = default;

void MessageLine::update() {
  if (store_.error() == text_) return;
  text_ = store_.error();
  panel_.reset();
  if (text_.isEmpty() || screens_.all().isEmpty()) return;

  const bool composited = panels_.isComposited();
  const Backdrop behind = !composited ? Backdrop::Opaque : panels_.canBlur() ? Backdrop::Blurred : Backdrop::Plain;
  auto bubble = std::make_unique<MessageBubble>();
  bubble->setLook(dockStyleNamed(store_.config().style), behind);
  bubble->setMessage(text_);
  // The click that dismisses comes from inside the bubble, so the bubble must outlive the click.
  connect(
      bubble.get(), &MessageBubble::dismissed, this, [this] { store_.clearError(); }, Qt::QueuedConnection);

  const MessageBubble& shown = *bubble;
  const QSize size = shown.bubbleSize();
  panel_ = panels_.make(std::move(bubble));
  place(size, shown.margins());
  panel_->setOutline(shown.outlineRegion());
  panel_->setInputRegion(shown.outlineRegion());
  panel_->setShown(true);
}

void MessageLine::place(const QSize& size, const QMargins& margins) {
  const QStringList displays = dock_.displays();
  const QList<Screen> screens = screens_.all();
  const QString wanted = displays.isEmpty() ? screens_.mainId() : displays.first();
  const auto found = std::ranges::find(screens, wanted, &Screen::id);
  const Screen& screen = found == screens.end() ? screens.first() : *found;

  QRectF dock = dock_.frame(screen.id);
  if (dock.isEmpty()) dock = QRectF(screen.usable.left(), screen.usable.bottom(), screen.usable.width(), 0);
  const bool dockIsOnTop = dock.center().y() < screen.frame.center().y();
  const double y = dockIsOnTop ? dock.bottom() + kAboveTheDock : dock.top() - kAboveTheDock - size.height();
  const QPointF corner = QPointF(dock.center().x() - size.width() / 2.0, y) - screen.frame.topLeft();
  panel_->place({screen.id, QRect(corner.toPoint(), size), margins});
}

}  // namespace tarnwick
