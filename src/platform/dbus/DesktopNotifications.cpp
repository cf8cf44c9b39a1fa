#include "platform/dbus/DesktopNotifications.h"

#include <QDBusMessage>
#include <utility>

#include "base/ForeignText.h"
#include "platform/dbus/BusNames.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

// While no service answers, old bubbles are of no use.
constexpr std::size_t kMostWaiting = 20;

}  // namespace

DesktopNotifications::DesktopNotifications(const QDBusConnection& session, const QString& desktopEntry, QObject* parent)
    : QObject(parent), service_(session, bus::kNotifications), desktopEntry_(desktopEntry) {
  connect(&service_, &BusService::ownerChanged, this, &DesktopNotifications::ownerChanged);
}

Capability DesktopNotifications::capability() const {
  if (service_.isRunning() || canBeStarted_) return Capability::yes();
  return Capability::no(tr("No notification service was found."));
}

void DesktopNotifications::ownerChanged() {
  readsMarkup_.reset();
  asking_ = false;
  if (!service_.isRunning()) {
    askWhatCanBeStarted();
  } else if (!waiting_.empty()) {
    askForCapabilities();
  }
}

void DesktopNotifications::askWhatCanBeStarted() {
  const auto message = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                      u"org.freedesktop.DBus"_s, u"ListActivatableNames"_s);
  ask(service_.bus(), message, this, [this](const QDBusMessage& reply) {
    canBeStarted_ = reply.arguments().value(0).toStringList().contains(bus::kNotifications);
  });
}

void DesktopNotifications::post(const QString& title, const QString& body, std::function<void()> unseen) {
  Bubble bubble{ForeignText::line(title), ForeignText::line(body), std::move(unseen)};
  if (readsMarkup_ && waiting_.empty()) {
    send(bubble);
    return;
  }
  if (waiting_.size() == kMostWaiting) {
    const Bubble oldest = std::move(waiting_.front());
    waiting_.erase(waiting_.begin());
    giveUp(oldest);
  }
  waiting_.push_back(std::move(bubble));
  askForCapabilities();
}

void DesktopNotifications::giveUp(const Bubble& bubble) {
  if (bubble.unseen) bubble.unseen();
}

// Whether the body is read as markup has to be known before the first one goes out. Asked under the well-known name,
// because this is also what starts the service.
void DesktopNotifications::askForCapabilities() {
  if (std::exchange(asking_, true)) return;
  const auto message = QDBusMessage::createMethodCall(bus::kNotifications, bus::kNotificationsPath, bus::kNotifications,
                                                      u"GetCapabilities"_s);
  ask(service_.bus(), message, this, [this](const QDBusMessage& reply) {
    asking_ = false;
    if (reply.type() != QDBusMessage::ReplyMessage) {
      for (const Bubble& bubble : std::exchange(waiting_, {})) giveUp(bubble);
      return;
    }
    readsMarkup_ = reply.arguments().value(0).toStringList().contains(u"body-markup"_s);
    flush();
  });
}

void DesktopNotifications::flush() {
  for (const Bubble& bubble : std::exchange(waiting_, {})) send(bubble);
}

void DesktopNotifications::send(const Bubble& bubble) {
  constexpr int kServiceDecidesHowLong = -1;
  const QVariantMap hints{{u"desktop-entry"_s, desktopEntry_}, {u"sound-name"_s, u"message-new-instant"_s}};
  auto message =
      QDBusMessage::createMethodCall(bus::kNotifications, bus::kNotificationsPath, bus::kNotifications, u"Notify"_s);
  message.setArguments({u"Tarnwick"_s, 0u, desktopEntry_, bubble.title,
                        readsMarkup_.value_or(false) ? bubble.body.toHtmlEscaped() : bubble.body, QStringList(), hints,
                        kServiceDecidesHowLong});
  ask(service_.bus(), message, this, [bubble](const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ReplyMessage) giveUp(bubble);
  });
}

}  // namespace tarnwick
