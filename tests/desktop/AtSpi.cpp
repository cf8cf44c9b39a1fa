#include "desktop/AtSpi.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <stdexcept>

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

const QString kConnection = u"at-spi"_s;
const QString kAccessible = u"org.a11y.atspi.Accessible"_s;
const QString kAction = u"org.a11y.atspi.Action"_s;

QDBusMessage call(const QDBusConnection& bus, const AtSpi::Node& node, const QString& interface, const QString& method,
                  const QVariantList& arguments = {}) {
  QDBusMessage message = QDBusMessage::createMethodCall(node.service, node.path, interface, method);
  message.setArguments(arguments);
  // An object that is going away answers with an error, which reads as nothing.
  return bus.call(message, QDBus::Block, 3000);
}

AtSpi::Node readNode(const QDBusArgument& argument) {
  AtSpi::Node node;
  QDBusObjectPath path;
  argument.beginStructure();
  argument >> node.service >> path;
  argument.endStructure();
  node.path = path.path();
  return node;
}

}  // namespace

AtSpi::AtSpi() : bus_(QString()) {
  const QDBusMessage ask =
      QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s, u"GetAddress"_s);
  const QDBusReply<QString> address = QDBusConnection::sessionBus().call(ask);
  if (!address.isValid()) throw std::runtime_error("no accessibility bus");
  bus_ = QDBusConnection::connectToBus(address.value(), kConnection);
  if (!bus_.isConnected()) throw std::runtime_error("the accessibility bus does not answer");
}

AtSpi::~AtSpi() { QDBusConnection::disconnectFromBus(kConnection); }

std::optional<AtSpi::Node> AtSpi::program(qint64 pid) const {
  const Node desktop{u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s};
  for (const Node& each : children(desktop)) {
    const QDBusReply<uint> owner = bus_.interface()->servicePid(each.service);
    if (owner.isValid() && owner.value() == static_cast<uint>(pid)) return each;
  }
  return std::nullopt;
}

QVariant AtSpi::property(const Node& node, const QString& interface, const QString& property) const {
  const QDBusMessage reply = call(bus_, node, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {interface, property});
  return reply.arguments().isEmpty() ? QVariant() : reply.arguments().first().value<QDBusVariant>().variant();
}

QString AtSpi::name(const Node& node) const { return property(node, kAccessible, u"Name"_s).toString(); }

QString AtSpi::description(const Node& node) const { return property(node, kAccessible, u"Description"_s).toString(); }

QString AtSpi::role(const Node& node) const {
  return call(bus_, node, kAccessible, u"GetRoleName"_s).arguments().value(0).toString();
}

bool AtSpi::has(const Node& node, int state) const {
  const QVariantList reply = call(bus_, node, kAccessible, u"GetState"_s).arguments();
  if (reply.isEmpty()) return false;
  QList<uint> words;
  const auto argument = reply.first().value<QDBusArgument>();
  argument >> words;
  constexpr int bits = 32;
  return words.size() > state / bits && (words[state / bits] >> (state % bits) & 1u) != 0;
}

QList<AtSpi::Node> AtSpi::children(const Node& node) const {
  const QVariantList reply = call(bus_, node, kAccessible, u"GetChildren"_s).arguments();
  QList<Node> result;
  if (reply.isEmpty()) return result;
  const auto argument = reply.first().value<QDBusArgument>();
  argument.beginArray();
  while (!argument.atEnd()) result << readNode(argument);
  argument.endArray();
  return result;
}

QStringList AtSpi::actions(const Node& node) const {
  QStringList result;
  const int count = property(node, kAction, u"NActions"_s).toInt();
  for (int i = 0; i < count; ++i)
    result << call(bus_, node, kAction, u"GetName"_s, {i}).arguments().value(0).toString();
  return result;
}

bool AtSpi::act(const Node& node, const QString& action) const {
  const qsizetype index = actions(node).indexOf(action);
  if (index < 0) return false;
  call(bus_, node, kAction, u"DoAction"_s, {static_cast<int>(index)});
  return true;
}

bool AtSpi::write(const Node& node, const QString& text) const {
  const QString interface = u"org.a11y.atspi.EditableText"_s;
  return call(bus_, node, interface, u"SetTextContents"_s, {text}).arguments().value(0).toBool();
}

std::optional<AtSpi::Node> AtSpi::find(const Node& root, const std::function<bool(const Node&)>& predicate) const {
  if (predicate(root)) return root;
  for (const Node& child : children(root))
    if (const auto found = find(child, predicate)) return found;
  return std::nullopt;
}

QList<AtSpi::Node> AtSpi::shown(const Node& root) const {
  QList<Node> result;
  for (const Node& child : children(root)) {
    if (has(child, kShowing)) result << child;
    result << shown(child);
  }
  return result;
}

}  // namespace tarnwick::testing
