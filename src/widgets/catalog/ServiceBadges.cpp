#include <algorithm>

#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/WidgetDefinition.h"

namespace tarnwick {

namespace {

struct BadgeRow {
  QLatin1StringView service;  ///< The name of its image, or the kind of a widget without one.
  QLatin1StringView letters;
  int color;
};

using namespace Qt::StringLiterals;

/// Two services with one initial have two letters each, and colours that lie far apart.
constexpr BadgeRow kBadges[] = {
    {"BrandAIantigravity"_L1, "AG"_L1, 0},
    {kind::appleHome, "AH"_L1, 21},
    {"BrandClaude"_L1, "CL"_L1, 6},
    {"BrandCodex"_L1, "CX"_L1, 19},
    {"BrandAIcopilot"_L1, "CP"_L1, 22},
    {kind::cryptoQuote, "CY"_L1, 3},
    {kind::cryptoChart, "CY"_L1, 3},
    {kind::cryptoWatchlist, "CY"_L1, 3},
    {"BrandCursor"_L1, "CU"_L1, 29},
    {"BrandDodo"_L1, "DO"_L1, 4},
    {"BrandDub"_L1, "DU"_L1, 23},
    {"BrandDataFast"_L1, "DF"_L1, 7},
    {"BrandDropbox"_L1, "DB"_L1, 26},
    {"BrandGitHub"_L1, "GH"_L1, 16},
    {"BrandGmail"_L1, "GM"_L1, 1},
    {"BrandAIgeminiAPI"_L1, "GE"_L1, 32},
    {"BrandAIgrok"_L1, "GK"_L1, 31},
    {"BrandAIglm"_L1, "GL"_L1, 17},
    {kind::homeAssistant, "H"_L1, 10},
    {"SocialBrandInstagram"_L1, "I"_L1, 11},
    {"BrandLinear"_L1, "LI"_L1, 8},
    {kind::revenueLemonSqueezy, "LS"_L1, 15},
    {"BrandAIopenCode"_L1, "O"_L1, 5},
    {"BrandPolar"_L1, "PO"_L1, 35},
    {"BrandPlausible"_L1, "PL"_L1, 18},
    {"BrandAIperplexity"_L1, "PX"_L1, 34},
    {"BrandResend"_L1, "R"_L1, 9},
    {"BrandSupabase"_L1, "SU"_L1, 2},
    {"BrandStripe"_L1, "ST"_L1, 25},
    {"BrandShopify"_L1, "SH"_L1, 14},
    {"BrandSimpleAnalytics"_L1, "SA"_L1, 24},
    {kind::stockQuote, "SK"_L1, 33},
    {kind::stockChart, "SK"_L1, 33},
    {kind::stockWatchlist, "SK"_L1, 33},
    {"SocialBrandTikTok"_L1, "T"_L1, 20},
    {"SocialBrandX"_L1, "X"_L1, 27},
    {"SocialBrandYouTube"_L1, "Y"_L1, 28},
    {"BrandZoom"_L1, "Z"_L1, 30},
};

}  // namespace

ServiceBadge serviceBadge(const WidgetDefinition& definition) {
  const QString& service = definition.asset.isEmpty() ? definition.id : definition.asset;
  const auto row = std::ranges::find(kBadges, service, &BadgeRow::service);
  if (row != std::end(kBadges)) return {row->letters, row->color};
  return {definition.name.left(1).toUpper(), 0};
}

}  // namespace tarnwick
