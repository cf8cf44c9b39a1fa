#include <QCoroTask>

#include "services/JSONMetric.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString explainHome(QStringView) { return ServiceWords::tr("The state of one entity of your own Home Assistant."); }

QList<ProviderField> homeFields(QStringView) {
  return {{option::server, ServiceWords::tr("Server address"), u"https://homeassistant.example"_s},
          {option::entity, ServiceWords::tr("Entity ID"), u"sensor.temperature"_s}};
}

/// The server is the user's own: it is what the credential belongs to.
void normaliseHome(DockWidget& widget) {
  OptionRules options(widget);
  QString server = options.trimmed(option::server);
  while (server.endsWith(u'/')) server.chop(1);
  const QUrl address = ProviderData::url(server);
  OptionRules::require(!address.hasQuery() && !address.hasFragment(),
                       ServiceWords::tr("Enter a valid HTTPS service address."));
  options.set(option::server, server);
  options.set(option::endpoint, server);
  options.set(option::dashboard, server);
  OptionRules::require(OptionRules::matches(options.trimmed(option::entity), "[a-z0-9_]+\\.[a-z0-9_]+"),
                       ServiceWords::tr("Enter an entity ID such as sensor.temperature."));
}

QCoro::Task<RemoteValue> fetchHome(ProviderRequest request, std::stop_token stop) {
  const QString entity = request.option(option::entity);
  ServiceCall call = request.call("/api/states/"_L1 + entity);
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject body = ProviderData::object(answer);
  OptionRules::require(body[u"entity_id"].toString() == entity,
                       ServiceWords::tr("Home Assistant did not return the requested entity."));
  const QJsonValue attributes = body[u"attributes"];
  const QString unit = attributes[u"unit_of_measurement"].toString();
  const QString state = JSONMetric::display(body, u"state"_s);
  const QString name = attributes[u"friendly_name"].toString();
  co_return request.shown(unit.isEmpty() ? state : state + u' ' + unit, name.isEmpty() ? entity : name);
}

}  // namespace

Provider homeAssistant() {
  Provider row;
  row.id = u"homeassistant"_s;
  row.name = u"Home Assistant"_s;
  row.kinds = {{kind::homeAssistant}};
  row.explanation = explainHome;
  row.fields = homeFields;
  row.credential = {.label = ServiceWords::tr("Long-lived access token"),
                    .placeholder = {},
                    .explanation = ServiceWords::tr("A token from the page “Security” of your profile there."),
                    .page = {},
                    .missing = ProviderRow::providerCredentialMissing()};
  row.normalise = normaliseHome;
  row.fetch = fetchHome;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
