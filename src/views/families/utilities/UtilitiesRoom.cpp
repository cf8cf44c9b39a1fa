#include "views/families/utilities/UtilitiesRoom.h"

#include <array>

#include "services/CurrencyRates.h"
#include "views/families/utilities/UtilityOptions.h"
#include "views/families/utilities/UtilityTiles.h"
#include "views/panels/Room.h"
#include "views/tiles/GenericTile.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// A tile without space for its whole name is called by what it does.
TileContent namedByAction(const TileRequest& request, const QString& action) {
  GenericContent content = makeGeneric(request);
  if (request.widget.title.isEmpty()) content.name = action;
  return content;
}
TileContent capture(const TileRequest& request) { return namedByAction(request, TileWords::tr("Capture")); }
TileContent cleanKeys(const TileRequest& request) { return namedByAction(request, TileWords::tr("Clean keys")); }

/// One of which none was used yet has only its name to show.
TileContent emoji(const TileRequest& request) {
  if (!recentEmoji(request.widget).isEmpty()) return makeEmoji(request);
  GenericContent content = makeGeneric(request);
  content.word = TileWords::tr("None used yet");
  return content;
}

QMap<QString, QString> exampleCalculation(const ExampleRequest&) { return {{option::expression, u"12 × 4 + 2"_s}}; }
QMap<QString, QString> exampleColor(const ExampleRequest&) { return {{option::color, u"#2E8C94"_s}}; }
QMap<QString, QString> picturedCalculation(const QDateTime&) {
  return {{option::expression, u"12 × 4 + 2"_s}, {option::calculations, u"1250 ÷ 8 = 156.25\n(18 + 24) × 3 = 126"_s}};
}
QMap<QString, QString> picturedColor(const QDateTime&) {
  return {{option::color, u"#2E8C94"_s}, {option::recentColors, u"#2E8C94 #F5C542 #C5306E #1B2A3C"_s}};
}

QMap<QString, QString> picturedEmoji(const QDateTime&) { return {{option::recents, u"😀 🎉 👍"_s}}; }

/// The rates of what converters are set to. None is asked for here.
void readRates(ReadingFacts& readings, const QList<DockWidget>& widgets, const ReadingServices& services) {
  if (!services.rates) return;
  for (const DockWidget& widget : widgets) {
    const Conversion chosen = Conversion::of(widget);
    if (!chosen.isOfMoney()) continue;
    if (const auto quote = services.rates->kept(chosen.from, chosen.to))
      readings.rates.insert(chosen.pair(), quote->rate);
  }
}

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Calculator),
            .content = contentOf<makeCalculator>,
            .panel = makeCalculatorPanel,
            .example = exampleCalculation,
            .pictured = picturedCalculation},
    RoomRow{.of = familyText(Family::Converter),
            .content = contentOf<makeConverter>,
            .panel = makeConverterPanel,
            .readEach = readRates},
    RoomRow{.of = familyText(Family::Color),
            .content = contentOf<makeColor>,
            .panel = makeColorPanel,
            .example = exampleColor,
            .pictured = picturedColor},
    RoomRow{.of = familyText(Family::Emoji), .content = emoji, .panel = makeEmojiPanel, .pictured = picturedEmoji},
    RoomRow{.of = familyText(Family::Screenshot), .content = capture, .comesLater = true},
    RoomRow{.of = familyText(Family::KeyboardCleaner), .content = cleanKeys, .comesLater = true},
    RoomRow{.of = familyText(Family::Wallpaper), .comesLater = true},
    RoomRow{.of = familyText(Family::Workflow), .comesLater = true},
};

}  // namespace

extern const Room kUtilitiesRoom;
constinit const Room kUtilitiesRoom{.name = "utilities"_L1, .families = kFamilies};

}  // namespace tarnwick
