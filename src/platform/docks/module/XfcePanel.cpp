#include "platform/docks/module/XfcePanel.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QRegularExpression>
#include <algorithm>
#include <optional>
#include <utility>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr int kXfconfPatienceMs = 1000;
/// From this delay on the panel is to stay away.
constexpr double kEndless = 60;

const QString kChannel = u"xfce4-panel"_s;
const QString kBehavior = u"autohide-behavior"_s;
const QString kOutput = u"output-name"_s;
const QString kAlwaysHide = u"u:2"_s;
/// The panel has no delay before it comes out. One that belongs to an output that is not there stays hidden.
const QString kNoOutput = u"s:Tarnwick"_s;

QDBusMessage callXfconf(const QString& method, const QVariantList& arguments) {
  QDBusMessage call =
      QDBusMessage::createMethodCall(u"org.xfce.Xfconf"_s, u"/org/xfce/Xfconf"_s, u"org.xfce.Xfconf"_s, method);
  call.setArguments(arguments);
  return QDBusConnection::sessionBus().call(call, QDBus::Block, kXfconfPatienceMs);
}

QString nameOf(DockPreference preference) { return preference == DockPreference::Autohide ? kBehavior : kOutput; }

QString pathOf(const DockSetting& setting) { return u"/panels/%1/%2"_s.arg(setting.place, setting.name); }

/// The panels and their settings; none when the service does not answer.
std::optional<QVariantMap> panelSettings() {
  const QDBusMessage answer = callXfconf(u"GetAllProperties"_s, {kChannel, u"/panels"_s});
  if (answer.type() != QDBusMessage::ReplyMessage) return std::nullopt;
  return qdbus_cast<QVariantMap>(answer.arguments().value(0));
}

QStringList panels(const QVariantMap& settings) {
  QStringList names;
  for (const QVariant& id : qdbus_cast<QVariantList>(settings.value(u"/panels"_s))) {
    names << u"panel-%1"_s.arg(id.toInt());
  }
  return names;
}

bool liesAtTheBottom(const QVariantMap& settings, const QString& panel) {
  // The places along the bottom edge in the panel's own numbering: right, left, centre, and the whole edge.
  static const QRegularExpression bottom(u"^p=(4|8|10|12);"_s);
  const bool horizontal = settings.value(u"/panels/%1/mode"_s.arg(panel)).toUInt() == 0;
  return horizontal && bottom.match(settings.value(u"/panels/%1/position"_s.arg(panel)).toString()).hasMatch();
}

std::optional<QString> toText(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::UnknownType:
      return std::nullopt;
    case QMetaType::UInt:
      return u"u:"_s + value.toString();
    case QMetaType::Int:
      return u"i:"_s + value.toString();
    default:
      return u"s:"_s + value.toString();
  }
}

QVariant fromText(const QString& text) {
  const QString value = text.mid(2);
  if (text.startsWith(u"u:"_s)) return value.toUInt();
  if (text.startsWith(u"i:"_s)) return value.toInt();
  return value;
}

}  // namespace

QList<DockSetting> XfcePanel::own(DockPreference preference) {
  QList<DockSetting> own;
  const QVariantMap settings = panelSettings().value_or(QVariantMap());
  for (const QString& panel : panels(settings)) {
    if (!liesAtTheBottom(settings, panel)) continue;
    DockSetting setting{panel, nameOf(preference), std::nullopt};
    setting.value = toText(settings.value(pathOf(setting)));
    own << setting;
  }
  return own;
}

QList<DockSetting> XfcePanel::hiding(DockPreference preference, double seconds, const QList<DockSetting>& own) {
  QList<DockSetting> settings = own;
  for (DockSetting& setting : settings) {
    if (preference == DockPreference::Autohide) {
      setting.value = kAlwaysHide;
    } else if (seconds >= kEndless) {
      setting.value = kNoOutput;
    }
  }
  return settings;
}

bool XfcePanel::knows(DockPreference preference, const DockSetting& setting) const {
  static const QRegularExpression panel(u"^panel-\\d+$"_s);
  return setting.name == nameOf(preference) && panel.match(setting.place).hasMatch();
}

bool XfcePanel::put(const DockSetting& setting, const QList<DockValue>& over) {
  if (setting.name != kBehavior && setting.name != kOutput) return false;
  const auto settings = panelSettings();
  if (!settings) return false;
  const QStringList known = panels(*settings);
  // A panel that the user removed has nothing to get back, and settings for it would only be left over.
  if (!known.contains(setting.place)) return !known.isEmpty();
  const DockValue present = toText(settings->value(pathOf(setting)));
  if (present != setting.value && !over.isEmpty() && !over.contains(present)) return true;
  pending_ << setting;
  if (present == setting.value) return true;
  const QDBusMessage answer =
      setting.value ? callXfconf(u"SetProperty"_s, {kChannel, pathOf(setting),
                                                    QVariant::fromValue(QDBusVariant(fromText(*setting.value)))})
                    : callXfconf(u"ResetProperty"_s, {kChannel, pathOf(setting), false});
  return answer.type() == QDBusMessage::ReplyMessage;
}

bool XfcePanel::flush() {
  const QList<DockSetting> expected = std::exchange(pending_, {});
  if (expected.isEmpty()) return true;
  const auto settings = panelSettings();
  if (!settings) return false;
  const QStringList known = panels(*settings);
  return std::all_of(expected.begin(), expected.end(), [&](const DockSetting& setting) {
    const auto now = toText(settings->value(pathOf(setting)));
    // An unset setting may still have a value, from the machine's defaults.
    return !known.contains(setting.place) || !setting.value || now == setting.value;
  });
}

}  // namespace tarnwick
