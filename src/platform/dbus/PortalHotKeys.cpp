#include "platform/dbus/PortalHotKeys.h"

#include <xkbcommon/xkbcommon.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <algorithm>
#include <array>
#include <utility>

#include "desktop/VirtualKeys.h"
#include "platform/dbus/BusNames.h"

namespace tarnwick {

/// One key as the portal writes it.
struct PortalShortcut {
  QString id;
  QVariantMap facts;
};

QDBusArgument& operator<<(QDBusArgument& out, const PortalShortcut& shortcut) {
  out.beginStructure();
  out << shortcut.id << shortcut.facts;
  out.endStructure();
  return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, PortalShortcut& shortcut) {
  in.beginStructure();
  in >> shortcut.id >> shortcut.facts;
  in.endStructure();
  return in;
}

namespace {

using namespace Qt::StringLiterals;

constexpr auto kShortcuts = "org.freedesktop.portal.GlobalShortcuts"_L1;
constexpr auto kRegistry = "org.freedesktop.host.portal.Registry"_L1;
constexpr auto kSession = "org.freedesktop.portal.Session"_L1;

QDBusMessage question(QLatin1StringView interface, const QString& method, const QVariantList& arguments) {
  auto message = QDBusMessage::createMethodCall(bus::kPortal, bus::kPortalPath, interface, method);
  message.setArguments(arguments);
  return message;
}

/// Such as "CTRL+ALT+LOGO+d"; empty for a key that no keyboard has.
QString triggerOf(const HotKeyRequest& request) {
  std::array<char, 64> name{};
  const auto keysym = VirtualKeys::keysym(request.keyCode);
  if (!keysym || xkb_keysym_get_name(*keysym, name.data(), name.size()) <= 0) return {};
  QStringList parts;
  if (request.modifiers & VirtualKeys::kControl) parts << u"CTRL"_s;
  if (request.modifiers & VirtualKeys::kOption) parts << u"ALT"_s;
  if (request.modifiers & VirtualKeys::kShift) parts << u"SHIFT"_s;
  if (request.modifiers & VirtualKeys::kCommand) parts << u"LOGO"_s;
  parts << QString::fromLatin1(name.data());
  return parts.join(u'+');
}

QString idOf(const HotKeyAction& action) {
  QString id = action.order;
  return id.remove(u"--"_s).replace(u' ', u'-');
}

QStringList idsIn(const QVariant& listed) {
  if (!listed.canConvert<QDBusArgument>()) return {};
  const auto argument = listed.value<QDBusArgument>();
  if (argument.currentSignature() != "a(sa{sv})"_L1) return {};
  QStringList ids;
  for (const PortalShortcut& one : qdbus_cast<QList<PortalShortcut>>(argument)) ids << one.id;
  return ids;
}

}  // namespace

PortalHotKeys::PortalHotKeys(const QDBusConnection& session, const QString& application, ActionOf actionOf)
    : session_(session), application_(application), actionOf_(std::move(actionOf)), portal_(session, bus::kPortal) {
  qDBusRegisterMetaType<PortalShortcut>();
  qDBusRegisterMetaType<QList<PortalShortcut>>();
  portal_.listen({}, bus::kPortalRequest, u"Response"_s, [this](const QDBusMessage& response) { responded(response); });
  portal_.listen(bus::kPortalPath, kShortcuts, u"Activated"_s,
                 [this](const QDBusMessage& signal) { activated(signal); });
  // Without a bus there will never be an answer.
  if (!session.isConnected()) state_ = State::Refused;
  hadAnswered_ = hasAnswered();
  connect(&portal_, &BusService::ownerChanged, this, &PortalHotKeys::ownerChanged);
}

PortalHotKeys::PortalHotKeys(const QString& application, ActionOf actionOf)
    : PortalHotKeys(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"hot-keys"_s), application,
                    std::move(actionOf)) {}

Capability PortalHotKeys::capability() const {
  if (state_ != State::Refused) return Capability::yes();
  return Capability::no(
      tr("Apps cannot register shortcuts on this desktop. Add them in the desktop’s settings, with commands such as "
         "“tarnwick --toggle”."));
}

/// A portal that gives keys may still be asking the user about these.
bool PortalHotKeys::hasAnswered() const {
  return state_ == State::Refused || (state_ == State::Ready && !isSubmitting_ && requestPath_.isEmpty());
}

void PortalHotKeys::tellAnswered() {
  if (const bool now = hasAnswered(); std::exchange(hadAnswered_, now) != now) Q_EMIT answered();
}

Capability PortalHotKeys::unasked() const {
  if (const Capability can = capability(); !can) return can;
  if (state_ == State::Unknown) return Capability::no({});
  return Capability::no(tr("This desktop asks you to confirm each shortcut, so apps cannot be opened by number."));
}

HotKeyBinding PortalHotKeys::bind(quint32 identifier, const HotKeyRequest& request) {
  if (state_ == State::Refused) {
    return {
        .bound = false,
        .text = {},
        .reason =
            tr("Apps cannot register shortcuts on this desktop. Add one for “tarnwick %1” in the desktop’s settings.")
                .arg(actionOf_(identifier).order)};
  }
  requests_.insert(identifier, request);
  submitLater();
  tellAnswered();
  return {.bound = true, .text = VirtualKeys::text(request.keyCode, request.modifiers), .reason = {}};
}

void PortalHotKeys::unbindAll() {
  requests_.clear();
  closeSession();
  tellAnswered();
}

void PortalHotKeys::closeSession() {
  requestPath_.clear();
  if (sessionPath_.isEmpty()) return;
  session_.send(QDBusMessage::createMethodCall(bus::kPortal, sessionPath_, kSession, u"Close"_s));
  sessionPath_.clear();
}

// --- Whether there is one -------------------------------------------------------------------------------------------

// A portal that isn't running yet is started by the first question, early in a session it rarely runs. One that ended
// is left in peace until somebody needs it.
void PortalHotKeys::ownerChanged() {
  const bool isFirst = !std::exchange(hasAsked_, true);
  requestPath_.clear();
  sessionPath_.clear();
  if (!isFirst && !portal_.isRunning()) return;
  state_ = State::Unknown;
  tellAnswered();
  // The portal knows programs by their desktop entry. Old ones look it up themselves, and know nothing of this method.
  const int asked = ++questions_;
  ask(session_, question(kRegistry, u"Register"_s, {application_, QVariantMap()}), this, [](const QDBusMessage&) {});
  ask(session_, question(bus::kProperties, u"GetAll"_s, {QString(kShortcuts)}), this,
      [this, asked](const QDBusMessage& reply) {
        if (asked != questions_) return;
        if (reply.type() != QDBusMessage::ReplyMessage) return refuse();
        state_ = State::Ready;
        submitLater();
        tellAnswered();
      });
}

void PortalHotKeys::refuse() {
  state_ = State::Refused;
  closeSession();
  for (const quint32 identifier : std::exchange(requests_, {}).keys()) Q_EMIT lost(identifier);
  tellAnswered();
}

// --- Binding --------------------------------------------------------------------------------------------------------

void PortalHotKeys::submitLater() {
  if (state_ != State::Ready || std::exchange(isSubmitting_, true)) return;
  QMetaObject::invokeMethod(this, &PortalHotKeys::submit, Qt::QueuedConnection);
}

// A session takes keys only once.
void PortalHotKeys::submit() {
  isSubmitting_ = false;
  closeSession();
  if (state_ != State::Ready || requests_.isEmpty()) return tellAnswered();
  const QVariantMap options{{u"session_handle_token"_s, u"tarnwick%1"_s.arg(++count_)}};
  request(u"CreateSession"_s, {}, options, [this](const QVariantMap& results) {
    sessionPath_ = results.value(u"session_handle"_s).toString();
    bindAll();
  });
}

void PortalHotKeys::bindAll() {
  QList<PortalShortcut> shortcuts;
  for (auto request = requests_.cbegin(); request != requests_.cend(); ++request) {
    const HotKeyAction action = actionOf_(request.key());
    QVariantMap facts{{u"description"_s, action.words}};
    if (const QString trigger = triggerOf(*request); !trigger.isEmpty()) facts.insert(u"preferred_trigger"_s, trigger);
    shortcuts.append({idOf(action), facts});
  }
  const QVariantList arguments{QVariant::fromValue(QDBusObjectPath(sessionPath_)), QVariant::fromValue(shortcuts),
                               QString()};
  request(u"BindShortcuts"_s, arguments, {}, [this](const QVariantMap& results) {
    const QStringList bound = idsIn(results.value(u"shortcuts"_s));
    for (const quint32 identifier : requests_.keys()) {
      if (bound.contains(idOf(actionOf_(identifier)))) continue;
      requests_.remove(identifier);
      Q_EMIT lost(identifier);
    }
  });
}

void PortalHotKeys::request(const QString& method, const QVariantList& arguments, QVariantMap options, Handler done) {
  // The answer may come before the reply that names its path, so the path is set in advance.
  const QString token = u"tarnwick%1"_s.arg(++count_);
  const QString sender = session_.baseService().sliced(std::min<qsizetype>(1, session_.baseService().size()));
  requestPath_ = u"%1/request/%2/%3"_s.arg(bus::kPortalPath, QString(sender).replace(u'.', u'_'), token);
  answered_ = std::move(done);
  options.insert(u"handle_token"_s, token);
  ask(session_, question(kShortcuts, method, QVariantList(arguments) << options), this,
      [this, expected = requestPath_](const QDBusMessage& reply) {
        if (requestPath_ == expected && reply.type() != QDBusMessage::ReplyMessage) refuse();
      });
}

void PortalHotKeys::responded(const QDBusMessage& response) {
  if (requestPath_.isEmpty() || response.path() != requestPath_) return;
  requestPath_.clear();
  const QVariantList arguments = response.arguments();
  if (arguments.value(0).toUInt() != 0) return refuse();
  const Handler go = std::exchange(answered_, {});
  go(qdbus_cast<QVariantMap>(arguments.value(1)));
  tellAnswered();
}

void PortalHotKeys::activated(const QDBusMessage& signal) {
  const QVariantList arguments = signal.arguments();
  if (sessionPath_.isEmpty() || arguments.value(0).value<QDBusObjectPath>().path() != sessionPath_) return;
  const QString id = arguments.value(1).toString();
  for (const quint32 identifier : requests_.keys()) {
    if (idOf(actionOf_(identifier)) == id) {
      Q_EMIT pressed(identifier);
      return;
    }
  }
}

}  // namespace tarnwick
