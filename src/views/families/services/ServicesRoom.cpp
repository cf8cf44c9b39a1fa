#include "views/families/services/ServicesRoom.h"

#include <algorithm>
#include <array>

#include "services/ProviderTable.h"
#include "store/WidgetEditor.h"
#include "views/panels/Room.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

using enum FieldShape;

constexpr const char* kServiceLater = QT_TRANSLATE_NOOP(
    "Library", "An address of your own works now; signing in to the service comes with a later version.");
constexpr WidgetOption kEndpoint{
    .key = option::endpoint,
    .shape = Line,
    .label = QT_TRANSLATE_NOOP("Library", "Address"),
    .placeholder = "https://api.example.org/v1/stats",
    .fault = QT_TRANSLATE_NOOP("WidgetEditor", "Use a valid HTTPS endpoint without credentials in its URL.")};
constexpr WidgetOption kCredential{.key = {},
                                   .shape = Credential,
                                   .label = QT_TRANSLATE_NOOP("Library", "Credential"),
                                   .help = QT_TRANSLATE_NOOP("Library", "Kept in the keyring, never in the settings.")};
constexpr WidgetOption kField{
    .key = option::field, .shape = Line, .label = QT_TRANSLATE_NOOP("Library", "Field"), .placeholder = "stats.today"};
constexpr WidgetOption kLabel{
    .key = option::metricLabel, .shape = Line, .label = QT_TRANSLATE_NOOP("Library", "Label")};
constexpr WidgetOption kPrefix{.key = option::prefix,
                               .shape = Word,
                               .label = QT_TRANSLATE_NOOP("Library", "Prefix"),
                               .placeholder = QT_TRANSLATE_NOOP("Library", "none")};
constexpr WidgetOption kSuffix{.key = option::suffix,
                               .shape = Word,
                               .label = QT_TRANSLATE_NOOP("Library", "Suffix"),
                               .placeholder = QT_TRANSLATE_NOOP("Library", "none")};

constexpr std::array kOptions = {
    WidgetOption{.key = option::connectionMode,
                 .shape = Choice,
                 .label = QT_TRANSLATE_NOOP("Library", "Connection"),
                 .help = kServiceLater,
                 .value = ",native",
                 .words = QT_TRANSLATE_NOOP("Library", "Address,Service")},
    kEndpoint,
    kCredential,
    kField,
    kLabel,
    kPrefix,
    kSuffix,
};
constexpr std::array kAddressOptions = {kEndpoint, kCredential, kField, kLabel, kPrefix, kSuffix};
/// Of a service that nobody signs in to.
constexpr auto kAddressAlone = [] {
  std::array options = kAddressOptions;
  options.front().help = QT_TRANSLATE_NOOP(
      "Library", "This service cannot be signed in to. One figure from an address of your own can be shown.");
  return options;
}();
/// Those of a kind that can be read from this computer too: what is set for that, and behind it what is asked about an
/// address, which is there only with that.
template <class... Own>
constexpr auto orAddress(const Own&... own) {
  std::array<WidgetOption, sizeof...(own) + kAddressOptions.size()> all{own...};
  for (std::size_t i = 0; i < kAddressOptions.size(); ++i) {
    all[sizeof...(own) + i] = kAddressOptions[i];
    all[sizeof...(own) + i].onlyIn = "";
  }
  return all;
}
constexpr WidgetOption connectionTo(const char* values, const char* help,
                                    const char* words = QT_TRANSLATE_NOOP("Library", "Address,This Computer")) {
  return {.key = option::connectionMode,
          .shape = Choice,
          .label = QT_TRANSLATE_NOOP("Library", "Connection"),
          .help = help,
          .value = values,
          .words = words};
}
constexpr auto kCodexOptions =
    orAddress(connectionTo(",codexLocal", QT_TRANSLATE_NOOP("Library",
                                                            "What is left of your Codex plan, as the Codex program on "
                                                            "this computer tells it.")),
              WidgetOption{.key = option::codexExecutable,
                           .shape = Line,
                           .label = QT_TRANSLATE_NOOP("Library", "Codex executable"),
                           .placeholder = WidgetEditor::kCodexExecutable,
                           .help = QT_TRANSLATE_NOOP("Library", "Left empty, it is looked for where it usually is."),
                           .fault = QT_TRANSLATE_NOOP("WidgetEditor", "Choose your installed Codex executable."),
                           .onlyIn = "codexLocal"});
constexpr auto kClaudeCodeOptions = orAddress(
    connectionTo(",claudeActivity",
                 QT_TRANSLATE_NOOP("Library", "What the sessions of Claude Code on this computer are doing.")),
    WidgetOption{.key = option::announcesPermission,
                 .shape = Switch,
                 .label = QT_TRANSLATE_NOOP("Library", "Announce waiting permission"),
                 .help = QT_TRANSLATE_NOOP("Library", "A notification when a session begins to wait for you."),
                 .value = "true",
                 .onlyIn = "claudeActivity"});
constexpr auto kGeminiOptions = orAddress(
    connectionTo(",geminiHistory",
                 QT_TRANSLATE_NOOP("Library", "How many tokens programs on this computer noted for Gemini models.")),
    WidgetOption{.key = option::historyDirectory,
                 .shape = History,
                 .label = QT_TRANSLATE_NOOP("Library", "Local Gemini usage"),
                 .onlyIn = "geminiHistory"});
constexpr auto kSessionOptions = orAddress(
    connectionTo(",perplexitySession",
                 QT_TRANSLATE_NOOP("Library", "How much of your allowances is left, as your own session tells it."),
                 QT_TRANSLATE_NOOP("Library", "Address,Your Session")),
    WidgetOption{.key = {},
                 .shape = Session,
                 .label = QT_TRANSLATE_NOOP("Library", "Session"),
                 .help = QT_TRANSLATE_NOOP("Library",
                                           "Signed in to in a window of the optional package tarnwick-browser, and "
                                           "kept apart from your own browser."),
                 .onlyIn = "perplexitySession"});

/// The accent nearest to the colour of the service's badge, so that bars and charts go with it.
Accent serviceAccent(const WidgetDefinition& definition) {
  using enum Accent;
  // Around the wheel, as the colours of badges are.
  static constexpr std::array<Accent, Palette::kBadgeColors> accents = {
      Pink,  Pink,  Red,   Red,    Orange, Orange, Orange, Yellow, Yellow, Yellow, Yellow, Yellow,
      Green, Green, Green, Green,  Green,  Teal,   Teal,   Teal,   Teal,   Teal,   Blue,   Blue,
      Blue,  Blue,  Blue,  Purple, Purple, Purple, Purple, Purple, Pink,   Pink,   Pink,   Pink};
  return accents.at(static_cast<std::size_t>(serviceBadge(definition).color));
}

/// An example has no age: the day for which it was made up says nothing.
RemoteReading ageless(RemoteReading example) {
  example.goodAt.reset();
  return example;
}

/// Of the kinds whose service is offered.
void sampleOffered(TileSources& sources, const TileSources& samples) {
  for (const auto& [kind, example] : samples.remoteExamples.asKeyValueRange())
    if (providerFor(kind)) sources.remoteExamples.insert(kind, ageless(example));
}

void picture(TileSources& sources) { sources.remoteExamples = serviceExamples(sources.now, sources.locale); }

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Integration),
            .content = serviceTile<ServiceShape::Value>,
            .panel = makeServicePanel,
            .accent = serviceAccent,
            .options = kOptions,
            .comesLater = true,
            .sample = sampleOffered},
    RoomRow{.of = familyText(Family::Studio),
            .content = serviceTile<ServiceShape::Figures>,
            .panel = makeServicePanel,
            .accent = serviceAccent,
            .options = kOptions,
            .comesLater = true,
            .sample = sampleOffered},
};

template <ServiceShape Shape>
constexpr RoomRow shaped(QLatin1StringView kind) {
  return {.of = kind, .content = serviceTile<Shape>};
}
/// One of its shape, in all its states.
template <ServiceShape Shape>
constexpr RoomRow inAllStates(QLatin1StringView kind) {
  return {.of = kind, .content = serviceTile<Shape>, .states = serviceStates};
}

/// With an address of one's own a gauge shows the headline itself.
QMap<QString, QString> picturedGauge(const QDateTime&) { return {{option::connectionMode, value::native}}; }

template <const QLatin1StringView& Kind>
void sample(TileSources& sources, const TileSources& samples) {
  sources.remoteExamples.insert(Kind, ageless(samples.remoteExamples.value(Kind)));
}

/// A kind that has an address of the user's own and nothing else.
template <const QLatin1StringView& Kind>
constexpr RoomRow addressed() {
  return {.of = Kind, .options = kAddressAlone, .comesLater = false, .sample = sample<Kind>};
}

template <const QLatin1StringView& Mode>
QMap<QString, QString> picturedHere(const QDateTime&) {
  return {{option::connectionMode, Mode}};
}

/// A kind that is read from this computer, or from an address of the user's own.
template <const QLatin1StringView& Kind, const QLatin1StringView& Mode>
constexpr RoomRow readHere(std::span<const WidgetOption> options, decltype(RoomRow::content) content) {
  return {.of = Kind,
          .content = content,
          .options = options,
          .comesLater = false,
          .sample = sample<Kind>,
          .pictured = picturedHere<Mode>,
          .states = serviceStates};
}

constexpr std::array kKinds = {
    addressed<kind::revenueLemonSqueezy>(),
    addressed<kind::socialInstagram>(),
    addressed<kind::appleHome>(),
    addressed<kind::antigravityUsage>(),
    readHere<kind::codexUsage, value::codexLocal>(kCodexOptions, serviceTile<ServiceShape::Value>),
    readHere<kind::codexUsageGauge, value::codexLocal>(kCodexOptions, serviceTile<ServiceShape::Gauge>),
    readHere<kind::analyticsClaudeCodeStatus, value::claudeActivity>(kClaudeCodeOptions,
                                                                     serviceTile<ServiceShape::Work>),
    readHere<kind::geminiAPIUsage, value::geminiHistory>(kGeminiOptions, serviceTile<ServiceShape::Value>),
    readHere<kind::perplexityUsage, value::perplexitySession>(kSessionOptions, serviceTile<ServiceShape::Value>),
    RoomRow{.of = kind::claudePlanUsageGauge,
            .content = serviceTile<ServiceShape::Gauge>,
            .pictured = picturedGauge,
            .states = serviceStates},
    inAllStates<ServiceShape::Line>(kind::analyticsPlausibleChart),
    shaped<ServiceShape::Line>(kind::analyticsDataFastChart),
    shaped<ServiceShape::Quote>(kind::stockQuote),
    shaped<ServiceShape::Quote>(kind::cryptoQuote),
    shaped<ServiceShape::Line>(kind::stockChart),
    shaped<ServiceShape::Line>(kind::cryptoChart),
    shaped<ServiceShape::Bars>(kind::analyticsSimpleAnalyticsChart),
    inAllStates<ServiceShape::Bars>(kind::shopifyTrends),
    inAllStates<ServiceShape::Squares>(kind::analyticsGitHubContributions),
    inAllStates<ServiceShape::Figures>(kind::analyticsGitHubOverview),
    shaped<ServiceShape::Figures>(kind::productivityLinearOverview),
    shaped<ServiceShape::Figures>(kind::analyticsSupabaseOverview),
    shaped<ServiceShape::Figures>(kind::shopifyOverview),
    shaped<ServiceShape::Figures>(kind::analyticsResendOverview),
    inAllStates<ServiceShape::List>(kind::stockWatchlist),
    shaped<ServiceShape::List>(kind::cryptoWatchlist),
};

}  // namespace

bool hasAddressAlone(const QString& kind) {
  return std::ranges::any_of(kKinds, [&](const RoomRow& row) {
    return row.of == kind && row.options && row.options->data() == kAddressAlone.data();
  });
}

extern const Room kServicesRoom;
constinit const Room kServicesRoom{.name = "services"_L1, .families = kFamilies, .kinds = kKinds, .picture = picture};

}  // namespace tarnwick
