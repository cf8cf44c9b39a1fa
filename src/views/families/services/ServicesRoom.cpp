#include <array>

#include "store/WidgetEditor.h"
#include "views/panels/PanelWords.h"
#include "views/panels/PlainPanel.h"
#include "views/panels/Room.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

using enum FieldShape;

constexpr const char* kLater = QT_TRANSLATE_NOOP(
    "Library", "Connections to services are not part of this version yet. Your entries are saved for a later version.");

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
                               .shape = Line,
                               .label = QT_TRANSLATE_NOOP("Library", "Prefix"),
                               .placeholder = QT_TRANSLATE_NOOP("Library", "none")};
constexpr WidgetOption kSuffix{.key = option::suffix,
                               .shape = Line,
                               .label = QT_TRANSLATE_NOOP("Library", "Suffix"),
                               .placeholder = QT_TRANSLATE_NOOP("Library", "none")};

constexpr std::array kOptions = {
    WidgetOption{.key = option::connectionMode,
                 .shape = Choice,
                 .label = QT_TRANSLATE_NOOP("Library", "Connection"),
                 .help = kLater,
                 .value = ",native",
                 .words = QT_TRANSLATE_NOOP("Library", "Address,Service")},
    kEndpoint,
    kCredential,
    kField,
    kLabel,
    kPrefix,
    kSuffix,
};
constexpr std::array kCodexOptions = {
    WidgetOption{.key = option::connectionMode,
                 .shape = Choice,
                 .label = QT_TRANSLATE_NOOP("Library", "Connection"),
                 .help = kLater,
                 .value = ",codexLocal",
                 .words = QT_TRANSLATE_NOOP("Library", "Address,This Computer")},
    WidgetOption{.key = option::codexExecutable,
                 .shape = Line,
                 .label = QT_TRANSLATE_NOOP("Library", "Codex executable"),
                 .placeholder = WidgetEditor::kCodexExecutable,
                 .help = QT_TRANSLATE_NOOP("Library", "Only for a connection to this computer."),
                 .fault = QT_TRANSLATE_NOOP("WidgetEditor", "Choose your installed Codex executable.")},
    kEndpoint,
    kCredential,
    kField,
    kLabel,
    kPrefix,
    kSuffix,
};

/// The same accent for every tile of one service.
Accent serviceAccent(const WidgetDefinition& definition) {
  static constexpr std::array accents = {Accent::Purple, Accent::Teal,  Accent::Orange, Accent::Blue,
                                         Accent::Red,    Accent::Green, Accent::Pink};
  const QString service = definition.asset.isEmpty() ? definition.name.section(u' ', 0, 0) : definition.asset;
  std::size_t sum = 0;
  for (const QChar letter : service) sum += letter.unicode();
  return accents[sum % accents.size()];
}

PlainWords words(const TilePanel& panel, const TileSources&) {
  return {PanelWords::tr("Connect %1 to see its latest values here.").arg(panel.definition().name),
          PanelWords::tr("Connect…"), true};
}

std::unique_ptr<TilePanel> makeUnconnectedPanel(const PanelContext& context) { return makePlainPanel(context, words); }

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Integration),
            .panel = makeUnconnectedPanel,
            .accent = serviceAccent,
            .options = kOptions,
            .comesLater = true},
    RoomRow{.of = familyText(Family::Studio),
            .panel = makeUnconnectedPanel,
            .accent = serviceAccent,
            .options = kOptions,
            .comesLater = true},
};
constexpr std::array kKinds = {
    RoomRow{.of = kind::codexUsage, .options = kCodexOptions},
    RoomRow{.of = kind::codexUsageGauge, .options = kCodexOptions},
};

}  // namespace

extern const Room kServicesRoom;
constinit const Room kServicesRoom{.name = "services"_L1, .families = kFamilies, .kinds = kKinds};

}  // namespace tarnwick
