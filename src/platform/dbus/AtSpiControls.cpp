#include "platform/dbus/AtSpiControls.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QUuid>
#include <algorithm>
#include <array>

#include "platform/linux/ProcessName.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct AtSpiWords {
  Q_DECLARE_TR_FUNCTIONS(AtSpiControls)
};

constexpr auto kAccessible = "org.a11y.atspi.Accessible"_L1;
constexpr auto kAction = "org.a11y.atspi.Action"_L1;
/// Between a sandbox and the bus stands this program, for which the bus then takes it.
constexpr auto kProxy = "xdg-dbus-proxy"_L1;

// Numbers of the protocol: roles that are pressed, and states in which they can be.
constexpr std::array<quint32, 7> kControls{7, 8, 35, 43, 44, 45, 62};
constexpr quint32 kEnabled = 8;
constexpr quint32 kSensitive = 24;
constexpr quint32 kShowing = 25;

QDBusPendingCall call(const QDBusConnection& bus, const AccessibleControls::Element& element,
                      QLatin1StringView interface, const QString& method, const QVariantList& arguments = {}) {
  auto message = QDBusMessage::createMethodCall(element.program, element.place, interface, method);
  message.setArguments(arguments);
  message.setAutoStartService(false);
  return bus.asyncCall(message, static_cast<int>(AccessibleControls::kPatience.count()));
}

/// The first value of the answer; invalid where none came.
QVariant answer(QDBusPendingCall pending) {
  pending.waitForFinished();
  return pending.isError() ? QVariant() : pending.reply().arguments().value(0);
}

QList<AccessibleControls::Element> elements(const QVariant& list) {
  QList<AccessibleControls::Element> found;
  const auto argument = list.value<QDBusArgument>();
  if (argument.currentSignature() != "a(so)"_L1) return found;
  argument.beginArray();
  while (!argument.atEnd()) {
    AccessibleControls::Element element;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> element.program >> path;
    argument.endStructure();
    element.place = path.path();
    found.append(element);
  }
  argument.endArray();
  return found;
}

/// Which of a control's actions is what a click does: toolkits order and name them as they like.
int pressing(const QVariant& actions) {
  static const QStringList kNames{u"press"_s, u"click"_s, u"toggle"_s, u"activate"_s};
  const auto argument = actions.value<QDBusArgument>();
  if (argument.currentSignature() != "a(sss)"_L1) return 0;
  int found = 0;
  qsizetype best = kNames.size();
  argument.beginArray();
  for (int i = 0; !argument.atEnd(); ++i) {
    QString name;
    QString words;
    QString keys;
    argument.beginStructure();
    argument >> name >> words >> keys;
    argument.endStructure();
    const qsizetype rank = kNames.indexOf(name.toLower());
    if (rank < 0 || rank >= best) continue;
    best = rank;
    found = i;
  }
  argument.endArray();
  return found;
}

bool isEnabled(const QVariant& states) {
  const auto argument = states.value<QDBusArgument>();
  if (argument.currentSignature() != "au"_L1) return false;
  QList<quint32> words;
  argument >> words;
  const auto has = [&words](quint32 state) {
    return words.size() > state / 32 && (words[state / 32] >> (state % 32) & 1U) != 0;
  };
  return has(kShowing) && (has(kEnabled) || has(kSensitive));
}

}  // namespace

AtSpiControls::AtSpiControls()
    : name_(u"accessibility-"_s + QUuid::createUuid().toString(QUuid::WithoutBraces)), bus_(QString()) {}

AtSpiControls::~AtSpiControls() { QDBusConnection::disconnectFromBus(name_); }

bool AtSpiControls::connect() {
  if (bus_.isConnected()) return true;
  QDBusConnection::disconnectFromBus(name_);
  const Element session{u"org.a11y.Bus"_s, u"/org/a11y/bus"_s};
  auto ask = QDBusMessage::createMethodCall(session.program, session.place, session.program, u"GetAddress"_s);
  const QString address =
      answer(QDBusConnection::sessionBus().asyncCall(ask, static_cast<int>(kPatience.count()))).toString();
  if (address.isEmpty()) return false;
  bus_ = QDBusConnection::connectToBus(address, name_);
  return bus_.isConnected();
}

Capability AtSpiControls::capability() {
  if (connect()) return Capability::yes();
  return Capability::no(AtSpiWords::tr("This desktop has no accessibility bus."));
}

QList<AccessibleControls::Element> AtSpiControls::windows(qint64 pid) {
  if (!connect()) return {};
  const QList<Element> programs = children({u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s});
  QList<Element> found;
  for (const Element& program : programs) {
    // Our own windows are asked nothing: the answer would have to come from the thread that waits.
    if (program.program == bus_.baseService() || !isOf(program, pid)) continue;
    found += children(program);
  }
  return found;
}

bool AtSpiControls::isOf(const Element& program, qint64 pid) {
  const Element bus{u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s};
  const QVariant owner =
      answer(call(bus_, bus, "org.freedesktop.DBus"_L1, u"GetConnectionUnixProcessID"_s, {program.program}));
  const qint64 process = owner.toLongLong();
  if (!owner.isValid() || process == QCoreApplication::applicationPid()) return false;
  if (process == pid) return true;
  if (processName(process) != kProxy) return false;
  const auto reading = read(program);
  return reading && reading->label.compare(processName(pid), Qt::CaseInsensitive) == 0;
}

QList<AccessibleControls::Element> AtSpiControls::children(const Element& element) {
  return elements(answer(call(bus_, element, kAccessible, u"GetChildren"_s)));
}

std::optional<AccessibleControls::Reading> AtSpiControls::read(const Element& element) {
  auto label = call(bus_, element, "org.freedesktop.DBus.Properties"_L1, u"Get"_s, {QString(kAccessible), u"Name"_s});
  auto role = call(bus_, element, kAccessible, u"GetRole"_s);
  auto states = call(bus_, element, kAccessible, u"GetState"_s);
  const QVariant name = answer(label);
  if (!name.isValid()) return std::nullopt;
  const bool isControl = std::ranges::find(kControls, answer(role).toUInt()) != kControls.end();
  return Reading{name.value<QDBusVariant>().variant().toString(), isControl, isEnabled(answer(states))};
}

bool AtSpiControls::press(const Element& element) {
  const int action = pressing(answer(call(bus_, element, kAction, u"GetActions"_s)));
  return answer(call(bus_, element, kAction, u"DoAction"_s, {action})).toBool();
}

}  // namespace tarnwick
