#include "services/JSONMetric.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString serverOf(const DockWidget& widget) {
  QString server = widget.options.value(option::server).trimmed();
  while (server.endsWith(u'/')) server.chop(1);
  return server;
}

/// Throws DomainError for what is no address of a server.
QUrl addressOf(const QString& server) {
  const QUrl address = ProviderData::url(server);
  require(!address.hasQuery() && !address.hasFragment(), ServiceWords::tr("Enter a valid HTTPS service address."));
  return address;
}

/// The profile of the user on their own server; invalid until its address is entered.
QUrl profilePage(const DockWidget& widget) {
  try {
    return QUrl(addressOf(serverOf(widget)).toString() + "/profile/security"_L1);
  } catch (const DomainError&) {
    return {};
  }
}

/// The server is the user's own: it is what the credential belongs to.
void normaliseHome(DockWidget& widget) {
  OptionRules options(widget);
  const QString server = serverOf(widget);
  try {
    addressOf(server);
  } catch (const DomainError& fault) {
    throw OptionError(option::server, fault.message());
  }
  options.set(option::server, server);
  options.set(option::endpoint, server);
  options.set(option::dashboard, server);
  OptionRules::require(option::entity, OptionRules::matches(options.trimmed(option::entity), "[a-z0-9_]+\\.[a-z0-9_]+"),
                       ServiceWords::tr("Enter an entity ID such as sensor.temperature."));
}

QCoro::Task<RemoteValue> fetchEntity(ProviderRequest request, std::stop_token stop) {
  const QString entity = request.option(option::entity);
  const ServiceCall call = request.call("/api/states/"_L1 + entity);
  const QJsonObject body = co_await request.object(call, stop);
  require(body[u"entity_id"].toString() == entity,
          ServiceWords::tr("Home Assistant did not return the requested entity."));
  const QJsonValue attributes = body[u"attributes"];
  const QString unit = attributes[u"unit_of_measurement"].toString();
  const QString state = JSONMetric::display(body, u"state"_s);
  const QString name = attributes[u"friendly_name"].toString();
  co_return request.shown(unit.isEmpty() ? state : state + u' ' + unit, name.isEmpty() ? entity : name);
}

/// Nothing else is switched: an entity may open a door.
bool isSwitchable(const DockWidget& widget) {
  const QString entity = widget.options.value(option::entity);
  return widget.options.value(option::control) == value::on &&
         (entity.startsWith("light."_L1) || entity.startsWith("switch."_L1));
}

ServiceCall toggleCall(const ProviderRequest& request, const QString&) {
  ServiceCall call = request.call(u"/api/services/homeassistant/toggle"_s);
  call.body = QJsonObject{{u"entity_id"_s, request.option(option::entity)}};
  return call;
}

}  // namespace

Provider homeAssistant() {
  return {
      .id = u"homeassistant"_s,
      .name = u"Home Assistant"_s,
      .credential = {.label = ServiceWords::tr("Long-lived access token"),
                     .explanation =
                         ServiceWords::tr("Made there in your profile, at “Security”; it may do what you may do."),
                     .missing = ProviderRow::addProviderCredential(),
                     .pageOf = profilePage},
      .normalise = normaliseHome,
      .topics = {{.kinds = {{kind::homeAssistant}},
                  .explanation = ServiceWords::tr("The state of one entity of your own Home Assistant."),
                  .fields = {{option::server, ServiceWords::tr("Server address"), u"https://homeassistant.example"_s},
                             {option::entity, ServiceWords::tr("Entity ID"), u"sensor.temperature"_s},
                             {.key = option::control,
                              .label = ServiceWords::tr("Switch it from the panel"),
                              .help = ServiceWords::tr("For a light or a switch: a button in its panel toggles it."),
                              .values = {value::on}}},
                  .action =
                      ProviderAction{
                          .button = ServiceWords::tr("Toggle"), .isAllowed = isSwitchable, .call = toggleCall},
                  .fetch = fetchEntity}},
  };
}

}  // namespace tarnwick
