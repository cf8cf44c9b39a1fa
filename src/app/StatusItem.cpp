#include "app/StatusItem.h"

#include <QPainter>

#include "base/DesktopId.h"
#include "desktop/Tray.h"
#include "store/AppStore.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// The mark: a screen with a dock in it. A tray that has the theme's symbol paints it in its own colour; where it is
/// drawn here, the dark rim keeps it visible in a light tray.
QIcon mark() {
  QIcon drawn;
  for (const int size : {16, 22, 24, 32, 48}) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 20.0, size / 20.0);
    for (const auto& [color, width] :
         {std::pair(QColor(0x16, 0x18, 0x1D, 0xB0), 2.8), {QColor(0xE6, 0xE8, 0xEC), 1.6}}) {
      painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      painter.drawRoundedRect(QRectF(2, 3.5, 16, 13), 3, 3);
      painter.drawLine(QPointF(6, 13), QPointF(14, 13));
    }
    drawn.addPixmap(picture);
  }
  return QIcon::fromTheme(u"%1-symbolic"_s.arg(kDesktopId), drawn);
}

}  // namespace

StatusItem::StatusItem(AppStore& store, Commands& commands, Tray& tray) : store_(store), menu_(store, commands) {
  // Trays open the menu by themselves and report nothing else.
  connect(&menu_, &QMenu::aboutToShow, this, &StatusItem::panelDismissed);
  connect(&store, &AppStore::errorChanged, &menu_, &StatusMenu::refresh);
  connect(&store, &AppStore::layoutChanged, this, &StatusItem::follow);
  follow();
  connect(&tray, &Tray::found, this, &StatusItem::appear);
  tray.look();
}

StatusItem::~StatusItem() = default;

void StatusItem::appear() {
  // Made only once there is a tray: the toolkit decides at the first icon, for the whole run, how it speaks to trays.
  if (icon_) return;
  menu_.refresh();
  icon_ = std::make_unique<QSystemTrayIcon>(mark());
  icon_->setToolTip(u"Tarnwick"_s);
  icon_->setContextMenu(&menu_);
  connect(icon_.get(), &QSystemTrayIcon::activated, this, &StatusItem::activated);
  icon_->setVisible(visible_);
}

void StatusItem::follow() {
  const DesktopOptions& options = store_.config().desktopOptions();
  // Trays that keep a copy of the menu need not ask before they open it.
  menu_.refresh();
  classic_ = options.classicMenu;
  visible_ = options.showMenuBarIcon;
  if (icon_ && icon_->isVisible() != visible_) icon_->setVisible(visible_);
}

void StatusItem::activated(QSystemTrayIcon::ActivationReason reason) {
  if (reason == QSystemTrayIcon::Trigger && !classic_) return Q_EMIT panelToggled();
  Q_EMIT panelDismissed();
  // A tray of the newer kind shows the menu by itself, or asks us for it; within one of the
  // older kind, which reports where the item is, the toolkit opens it.
  if (reason == QSystemTrayIcon::Trigger || (reason == QSystemTrayIcon::Context && place().isEmpty()))
    Q_EMIT menuRequested(menu_);
}

}  // namespace tarnwick
