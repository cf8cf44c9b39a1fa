#include "app/StatusItem.h"

#include <QCursor>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QPainter>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QString& watcherName() {
  static const QString name = u"org.kde.StatusNotifierWatcher"_s;
  return name;
}

/// The mark: a screen with a dock in it. Drawn in one colour, as trays expect.
QIcon mark() {
  QIcon icon;
  for (const int size : {16, 22, 24, 32, 48}) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 20.0, size / 20.0);
    painter.setPen(QPen(QColor(0xE6, 0xE8, 0xEC), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawRoundedRect(QRectF(2, 3.5, 16, 13), 3, 3);
    painter.drawLine(QPointF(6, 13), QPointF(14, 13));
    icon.addPixmap(picture);
  }
  return icon;
}

}  // namespace

StatusItem::StatusItem(std::function<MenuState()> state, MenuActions actions, QObject* parent)
    : QObject(parent), state_(std::move(state)), actions_(std::move(actions)) {
  connect(&menu_, &QMenu::aboutToShow, this, [this] { fillStatusMenu(menu_, state_(), actions_); });
  lookForTray();
}

StatusItem::~StatusItem() = default;

void StatusItem::lookForTray() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  auto* watcher = new QDBusServiceWatcher(watcherName(), bus, QDBusServiceWatcher::WatchForRegistration, this);
  connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &StatusItem::appear);
  auto* asked = new QDBusPendingCallWatcher(bus.interface()->asyncCall(u"NameHasOwner"_s, watcherName()), this);
  connect(asked, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
    const QDBusPendingReply<bool> reply = *call;
    call->deleteLater();
    if (reply.isValid() && reply.value()) appear();
  });
}

void StatusItem::appear() {
  // Made only once there is a tray: the toolkit decides at the first icon, for the whole run, how it speaks to trays.
  if (icon_) return;
  fillStatusMenu(menu_, state_(), actions_);
  icon_ = std::make_unique<QSystemTrayIcon>(mark());
  icon_->setToolTip(u"Tarnwick"_s);
  icon_->setContextMenu(&menu_);
  connect(icon_.get(), &QSystemTrayIcon::activated, this, &StatusItem::activated);
  icon_->setVisible(visible_);
}

void StatusItem::setVisible(bool visible) {
  visible_ = visible;
  if (icon_ && icon_->isVisible() != visible) icon_->setVisible(visible);
}

void StatusItem::activated(QSystemTrayIcon::ActivationReason reason) {
  const bool leftClick = reason == QSystemTrayIcon::Trigger;
  if (leftClick && !classic_ && togglePanel) {
    togglePanel();
    return;
  }
  if (hidePanel) hidePanel();
  if (leftClick) menu_.popup(QCursor::pos());
}

}  // namespace tarnwick
