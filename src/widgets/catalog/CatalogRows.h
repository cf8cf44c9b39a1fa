#pragma once

#include <QString>
#include <optional>
#include <span>

#include "widgets/catalog/Family.h"
#include "widgets/catalog/KindTraits.h"

/// The tables behind Catalog, in the form in which people edit them. Nothing but Catalog reads them: they hold source
/// texts that are yet to be translated, and widths and categories that Catalog still adjusts.
namespace tarnwick::catalog {

/// One kind of widget. Texts are UTF-8 and live as long as the program.
struct Row {
  QLatin1StringView kind;
  const char* name;
  const char* category;  ///< for a kind that is in no group
  const char* symbol;
  Family family;
  double width;  ///< for a kind that no rule of Catalog::referenceWidth names
  const char* asset = "";
  KindTraits traits = {};
  const char* words = "";  ///< what people call it besides its name and the words of its family
  std::optional<TickCadence> cadence = std::nullopt;  ///< for a kind that ticks otherwise than its family
};

/// One section of the widget library with its kinds in display order.
struct Group {
  const char* name;
  const char* symbol;
  std::span<const QLatin1StringView> kinds;
};

std::span<const Row> rows();
std::span<const Group> groups();
std::span<const QLatin1StringView> starterKinds();
std::span<const QLatin1StringView> suggestedKinds();
std::span<const QLatin1StringView> readyApps();
std::span<const QLatin1StringView> picturedKinds();

}  // namespace tarnwick::catalog
