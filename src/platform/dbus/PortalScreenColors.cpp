#include "platform/dbus/PortalScreenColors.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include "platform/dbus/BusNames.h"

namespace tarnwick {
namespace {

struct PortalScreenColorsWords {
  Q_DECLARE_TR_FUNCTIONS(ScreenColors)
};

using namespace Qt::StringLiterals;

constexpr auto kScreenshot = "org.freedesktop.portal.Screenshot"_L1;
constexpr uint kDone = 0;
constexpr uint kCancelled = 1;

/// Red, green and blue from 0 to 1, as the portal gives them.
std::optional<QString> hexOf(const QVariant& color) {
  if (!color.canConvert<QDBusArgument>()) return std::nullopt;
  const auto argument = color.value<QDBusArgument>();
  if (argument.currentSignature() != "(ddd)"_L1) return std::nullopt;
  std::array<double, 3> parts{};
  argument.beginStructure();
  argument >> parts[0] >> parts[1] >> parts[2];
  argument.endStructure();
  QString hex = u"#"_s;
  for (const double part : parts) {
    if (!std::isfinite(part)) return std::nullopt;
    const auto level = std::lround(std::clamp(part, 0.0, 1.0) * 255);
    hex += QString::number(level, 16).rightJustified(2, u'0').toUpper();
  }
  return hex;
}

}  // namespace

PortalScreenColors::PortalScreenColors(const QDBusConnection& session, QObject* parent)
    : session_(session), portal_(session, bus::kPortal) {
  setParent(parent);
  portal_.listen({}, bus::kPortalRequest, u"Response"_s, [this](const QDBusMessage& response) { responded(response); });
}

void PortalScreenColors::pick(QObject* context, std::function<void(const QString&)> picked,
                              std::function<void(const QString&)> failed) {
  context_ = context;
  picked_ = std::move(picked);
  failed_ = std::move(failed);
  // The answer may come before the reply that names its path, so the path is set in advance.
  const QString token = u"tarnwick%1"_s.arg(++count_);
  const QString sender = session_.baseService().sliced(std::min<qsizetype>(1, session_.baseService().size()));
  request_ = u"%1/request/%2/%3"_s.arg(bus::kPortalPath, QString(sender).replace(u'.', u'_'), token);
  auto message = QDBusMessage::createMethodCall(bus::kPortal, bus::kPortalPath, kScreenshot, u"PickColor"_s);
  message.setArguments({QString(), QVariantMap{{u"handle_token"_s, token}}});
  ask(session_, message, this, [this, expected = request_](const QDBusMessage& reply) {
    if (request_ != expected) return;
    if (reply.type() != QDBusMessage::ReplyMessage) return fail();
    // Portals of old choose a path of their own.
    if (const QString path = reply.arguments().value(0).value<QDBusObjectPath>().path(); !path.isEmpty())
      request_ = path;
  });
}

void PortalScreenColors::responded(const QDBusMessage& response) {
  if (request_.isEmpty() || response.path() != request_) return;
  const QVariantList arguments = response.arguments();
  const uint outcome = arguments.value(0).toUInt();
  const auto results = qdbus_cast<QVariantMap>(arguments.value(1));
  const auto hex = outcome == kDone ? hexOf(results.value(u"color"_s)) : std::nullopt;
  if (!hex && outcome != kCancelled) return fail();
  request_.clear();
  const auto picked = std::exchange(picked_, {});
  if (hex && context_ && picked) picked(*hex);
}

void PortalScreenColors::fail() {
  request_.clear();
  const auto failed = std::exchange(failed_, {});
  if (context_ && failed) failed(PortalScreenColorsWords::tr("This desktop cannot pick a color from the screen."));
}

}  // namespace tarnwick
