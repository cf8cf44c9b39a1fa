#include "services/WidgetLoader.h"

#include <QCoroTask>
#include <algorithm>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "services/ChosenPlace.h"
#include "services/CustomEndpoint.h"
#include "services/ProviderTable.h"
#include "services/ServiceWords.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

bool showsWeather(const QString& kind) {
  return Catalog::find(kind).family == Family::Weather || kind == kind::todayClock || kind == kind::todayOverview;
}

struct OwnReader {
  QLatin1StringView mode;
  QLatin1StringView kind;
};
/// What is read from a program's own records on this machine.
constexpr OwnReader kOwnReaders[] = {{value::claudeActivity, kind::analyticsClaudeCodeStatus},
                                     {value::geminiHistory, kind::geminiAPIUsage},
                                     {value::codexLocal, kind::codexUsage},
                                     {value::codexLocal, kind::codexUsageGauge},
                                     {value::perplexitySession, kind::perplexityUsage}};

bool hasOwnReader(const DockWidget& widget) {
  const QString mode = widget.options.value(option::connectionMode);
  return std::ranges::any_of(kOwnReaders,
                             [&](const OwnReader& each) { return each.mode == mode && each.kind == widget.kind; });
}

/// The service that a widget is connected to; nullptr for one that asks an address of the user's own.
const Provider* providerOf(const DockWidget& widget, const QList<Provider>& providers) {
  const bool isNative = widget.options.value(option::connectionMode) == value::native;
  return isNative ? providerFor(widget.kind, providers) : nullptr;
}

QCoro::Task<RemoteValue> weatherHere(Weather weather, WidgetLoader::Locate locate, bool fahrenheit,
                                     std::stop_token stop) {
  const GeocodeCache::Place here = co_await locate(stop);
  throwIfStopped(stop);
  RemoteValue value = co_await weather.at(here, fahrenheit, stop);
  co_return value;
}

}  // namespace

WidgetLoader::WidgetLoader(Weather weather, Locate locate, const QList<Provider>& providers, Readers readers)
    : weather_(std::move(weather)), locate_(std::move(locate)), providers_(&providers), readers_(std::move(readers)) {}

bool WidgetLoader::readsAddress(const DockWidget& widget) {
  return !showsWeather(widget.kind) && !hasOwnReader(widget) && !providerOf(widget, allProviders());
}

QCoro::Task<RemoteValue> WidgetLoader::load(DockWidget widget, std::shared_ptr<ServiceSession> session, bool fahrenheit,
                                            std::stop_token stop) const {
  if (showsWeather(widget.kind)) {
    if (widget.options.value(option::weatherLocation) != value::current) {
      if (auto place = ChosenPlace::of(widget)) return weather_.at(*std::move(place), fahrenheit, stop);
      return weather_.at(widget.options.value(option::city), fahrenheit, stop);
    }
    if (!locate_)
      throw DomainError::invalid(
          ServiceWords::tr("Location Services are disabled. Choose a city or enable Location Services."));
    return weatherHere(weather_, locate_, fahrenheit, stop);
  }
  if (const Provider* provider = providerOf(widget, *providers_))
    return fetchFrom(*provider, std::move(widget), std::move(session), stop);
  if (hasOwnReader(widget)) {
    const auto reader = readers_.constFind(widget.options.value(option::connectionMode));
    if (reader != readers_.constEnd()) return (*reader)(std::move(widget), stop);
    throw DomainError::invalid(ServiceWords::tr("This connection is not part of this version yet."));
  }
  return CustomEndpoint::fetch(std::move(widget), std::move(session), stop);
}

}  // namespace tarnwick
