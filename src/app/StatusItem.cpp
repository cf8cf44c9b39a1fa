#include "app/StatusItem.h"

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QCursor>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <QPainter>
#include <cstdlib>
#include <cstring>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QString& watcherName() {
  static const QString name = u"org.kde.StatusNotifierWatcher"_s;
  return name;
}

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
  return QIcon::fromTheme(u"com.brindlemoor.Tarnwick-symbolic"_s, drawn);
}

}  // namespace

/// Waits for a tray of the older kind, in which programs put windows: it owns a selection of the first screen and
/// announces itself to the root window.
class StatusItem::OlderTray final : public QAbstractNativeEventFilter {
 public:
  OlderTray(xcb_connection_t* connection, std::function<void()> found)
      : connection_(connection),
        found_(std::move(found)),
        selection_(atom("_NET_SYSTEM_TRAY_S0")),
        manager_(atom("MANAGER")) {
    QCoreApplication::instance()->installNativeEventFilter(this);
  }
  ~OlderTray() override { QCoreApplication::instance()->removeNativeEventFilter(this); }

  bool isThere() const {
    const auto cookie = xcb_get_selection_owner(connection_, selection_);
    const Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(connection_, cookie, nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
  }

  bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
    const auto* event = static_cast<const xcb_client_message_event_t*>(message);
    const bool announces = (event->response_type & 0x7f) == XCB_CLIENT_MESSAGE && event->type == manager_ &&
                           event->data.data32[1] == selection_;
    if (announces) found_();
    return false;
  }

 private:
  struct Free {
    void operator()(void* reply) const { std::free(reply); }
  };
  template <class T>
  using Reply = std::unique_ptr<T, Free>;

  xcb_atom_t atom(const char* name) const {
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<quint16>(std::strlen(name)), name);
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  }

  xcb_connection_t* connection_;
  std::function<void()> found_;
  xcb_atom_t selection_;
  xcb_atom_t manager_;
};

StatusItem::StatusItem(std::function<MenuState()> state, MenuActionsProvider actions, QObject* parent)
    : QObject(parent), actions_(actions), menu_(std::move(state), std::move(actions)) {
  // Trays open the menu by themselves and tell nothing else.
  connect(&menu_, &QMenu::aboutToShow, this, &StatusItem::hidePanel);
  lookForTray();
}

StatusItem::~StatusItem() = default;

void StatusItem::lookForTray() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return lookForOlderTray();
  auto* watcher = new QDBusServiceWatcher(watcherName(), bus, QDBusServiceWatcher::WatchForRegistration, this);
  connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &StatusItem::appear);
  auto* asked = new QDBusPendingCallWatcher(bus.interface()->asyncCall(u"NameHasOwner"_s, watcherName()), this);
  connect(asked, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
    const QDBusPendingReply<bool> reply = *call;
    call->deleteLater();
    if (reply.isValid() && reply.value()) {
      appear();
    } else {
      lookForOlderTray();
    }
  });
}

void StatusItem::lookForOlderTray() {
  auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (!x11 || icon_) return;
  // The icon is made from the event loop: within a filter no window should come up.
  olderTray_ = std::make_unique<OlderTray>(
      x11->connection(), [this] { QMetaObject::invokeMethod(this, &StatusItem::appear, Qt::QueuedConnection); });
  if (olderTray_->isThere()) appear();
}

void StatusItem::appear() {
  // Made only once there is a tray: the toolkit decides at the first icon, for the whole run, how it speaks to trays.
  if (icon_) return;
  olderTray_.reset();
  menu_.refresh();
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
  const auto togglePanel = actions_().togglePanel;
  if (reason == QSystemTrayIcon::Trigger && !classic_ && togglePanel) return togglePanel();
  hidePanel();
  // A tray of the newer kind shows the menu by itself, or asks for it and has nobody else to ask; within one of the
  // older kind, which tells where the item stands, the toolkit opens it.
  if (reason == QSystemTrayIcon::Trigger || (reason == QSystemTrayIcon::Context && place().isEmpty())) openMenu();
}

void StatusItem::openMenu() {
  const auto open = actions_().openMenu;
  open ? open(menu_) : menu_.popup(QCursor::pos());
}

void StatusItem::hidePanel() {
  if (const auto hide = actions_().hidePanel) hide();
}

}  // namespace tarnwick
