#include "views/library/EditorFields.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <algorithm>
#include <array>

#include "views/library/LibraryWords.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

namespace {

using enum FieldShape;

/// `scope` is a kind or a family; a kind that has rows of its own takes none of its family's.
struct Row {
  const char* scope;
  const char* key;
  FieldShape shape;
  const char* label = "";
  const char* placeholder = "";
  const char* help = "";
  const char* value = "";
  const char* words = "";
  int usual = 0;
  int least = 0;
  int most = 0;
  const char* fault = "";
  bool isLater = false;
};

constexpr const char* kLater =
    QT_TRANSLATE_NOOP("Library", "Connections to services are not part of this version yet. What is set here is kept.");
constexpr const char* kNoWeather = QT_TRANSLATE_NOOP("Library", "Weather is not part of this version yet.");

constexpr std::array kRows = {
    // A stopwatch has no duration.
    Row{.scope = "stopwatch", .key = "", .shape = Line},
    Row{.scope = "timer",
        .key = "minutes",
        .shape = Number,
        .label = QT_TRANSLATE_NOOP("Library", "Duration"),
        .placeholder = "25",
        .help = QT_TRANSLATE_NOOP("Library", "In minutes. Another duration starts the timer over."),
        .fault = QT_TRANSLATE_NOOP("WidgetEditor", "Enter a duration between 0 and 1440 minutes.")},
    Row{.scope = "pomodoro",
        .key = "minutes",
        .shape = Number,
        .label = QT_TRANSLATE_NOOP("Library", "Focus"),
        .placeholder = "25",
        .help = QT_TRANSLATE_NOOP("Library", "In minutes. Another duration starts the timer over."),
        .fault = QT_TRANSLATE_NOOP("WidgetEditor", "Enter a duration between 0 and 1440 minutes.")},
    Row{.scope = "pomodoro",
        .key = "shortBreak",
        .shape = Steps,
        .label = QT_TRANSLATE_NOOP("Library", "Short break"),
        .words = QT_TRANSLATE_NOOP("Library", "%1 min"),
        .usual = 5,
        .least = 1,
        .most = 240},
    Row{.scope = "pomodoro",
        .key = "longBreak",
        .shape = Steps,
        .label = QT_TRANSLATE_NOOP("Library", "Long break"),
        .words = QT_TRANSLATE_NOOP("Library", "%1 min"),
        .usual = 15,
        .least = 1,
        .most = 240},
    Row{.scope = "pomodoro",
        .key = "cycleLength",
        .shape = Steps,
        .label = QT_TRANSLATE_NOOP("Library", "Sessions before a long break"),
        .usual = 4,
        .least = 1,
        .most = 12},
    Row{.scope = "pomodoro",
        .key = "autoContinue",
        .shape = Switch,
        .label = QT_TRANSLATE_NOOP("Library", "Continue by itself"),
        .help = QT_TRANSLATE_NOOP("Library", "The next phase begins when one ends."),
        .value = "true"},
    Row{.scope = "posture",
        .key = "minutes",
        .shape = Number,
        .label = QT_TRANSLATE_NOOP("Library", "Seated"),
        .placeholder = "25",
        .help = QT_TRANSLATE_NOOP("Library", "In minutes. Another duration starts the timer over."),
        .fault = QT_TRANSLATE_NOOP("WidgetEditor", "Enter a duration between 0 and 1440 minutes.")},
    Row{.scope = "posture",
        .key = "standingMinutes",
        .shape = Steps,
        .label = QT_TRANSLATE_NOOP("Library", "Standing"),
        .words = QT_TRANSLATE_NOOP("Library", "%1 min"),
        .usual = 0,
        .least = 0,
        .most = 240},
    Row{.scope = "posture",
        .key = "autoContinue",
        .shape = Switch,
        .label = QT_TRANSLATE_NOOP("Library", "Continue by itself"),
        .help = QT_TRANSLATE_NOOP("Library", "The next phase begins when one ends."),
        .value = "true"},

    Row{.scope = "water",
        .key = "goal",
        .shape = Number,
        .label = QT_TRANSLATE_NOOP("Library", "Daily goal"),
        .placeholder = "8",
        .help = QT_TRANSLATE_NOOP("Library", "In glasses."),
        .fault = QT_TRANSLATE_NOOP("WidgetEditor", "Enter a goal between 1 and 100 glasses.")},
    Row{.scope = "habit",
        .key = "text",
        .shape = Line,
        .label = QT_TRANSLATE_NOOP("Library", "Habit"),
        .placeholder = QT_TRANSLATE_NOOP("Library", "Read for 20 minutes")},
    Row{.scope = "notes", .key = "text", .shape = Text, .label = QT_TRANSLATE_NOOP("Library", "Note")},

    Row{.scope = "clock", .key = "timezone", .shape = Zone, .label = QT_TRANSLATE_NOOP("Library", "Time zone")},
    Row{.scope = "clock",
        .key = "zoneLabel",
        .shape = Line,
        .label = QT_TRANSLATE_NOOP("Library", "Label"),
        .placeholder = QT_TRANSLATE_NOOP("Library", "Local")},
    Row{.scope = "todayClock", .key = "timezone", .shape = Zone, .label = QT_TRANSLATE_NOOP("Library", "Time zone")},
    Row{.scope = "todayClock",
        .key = "zoneLabel",
        .shape = Line,
        .label = QT_TRANSLATE_NOOP("Library", "Label"),
        .placeholder = QT_TRANSLATE_NOOP("Library", "Local")},
    Row{.scope = "todayClock",
        .key = "city",
        .shape = Line,
        .label = QT_TRANSLATE_NOOP("Library", "City"),
        .placeholder = QT_TRANSLATE_NOOP("Library", "Chicago"),
        .help = kNoWeather,
        .isLater = true},
    Row{.scope = "worldClockList",
        .key = "zones",
        .shape = Zones,
        .label = QT_TRANSLATE_NOOP("Library", "Time zones"),
        .placeholder = "America/New_York,Europe/London,Asia/Tokyo"},

    Row{.scope = "weather",
        .key = "city",
        .shape = Line,
        .label = QT_TRANSLATE_NOOP("Library", "Place"),
        .placeholder = QT_TRANSLATE_NOOP("Library", "Chicago"),
        .help = kNoWeather,
        .isLater = true},
    Row{.scope = "weather",
        .key = "weatherLocation",
        .shape = Switch,
        .label = QT_TRANSLATE_NOOP("Library", "Current location"),
        .help = kNoWeather,
        .value = "current",
        .isLater = true},

    Row{.scope = "launcher", .key = "path", .shape = Application, .label = QT_TRANSLATE_NOOP("Library", "Application")},
    Row{.scope = "appFolder",
        .key = "paths",
        .shape = Applications,
        .label = QT_TRANSLATE_NOOP("Library", "Applications")},
    Row{.scope = "folderLauncher", .key = "path", .shape = Folder, .label = QT_TRANSLATE_NOOP("Library", "Folder")},
    Row{.scope = "downloads", .key = "path", .shape = Folder, .label = QT_TRANSLATE_NOOP("Library", "Folder")},
    Row{.scope = "toggles",
        .key = "toggles",
        .shape = Toggles,
        .label = QT_TRANSLATE_NOOP("Library", "Switches"),
        .help = QT_TRANSLATE_NOOP("Library", "The tile shows four of them.")},
    Row{.scope = "processes",
        .key = "sortBy",
        .shape = Choice,
        .label = QT_TRANSLATE_NOOP("Library", "Sort by"),
        .value = "CPU,RAM",
        .words = QT_TRANSLATE_NOOP("Library", "CPU,Memory")},

    Row{.scope = "codex",
        .key = "connectionMode",
        .shape = Choice,
        .label = QT_TRANSLATE_NOOP("Library", "Connection"),
        .help = kLater,
        .value = ",codexLocal",
        .words = QT_TRANSLATE_NOOP("Library", "Address,This Computer")},
    Row{.scope = "codex",
        .key = "codexExecutable",
        .shape = Line,
        .label = QT_TRANSLATE_NOOP("Library", "Codex executable"),
        .placeholder = EditorFields::kCodexExecutable,
        .help = QT_TRANSLATE_NOOP("Library", "Asked while the connection is to this computer."),
        .fault = QT_TRANSLATE_NOOP("WidgetEditor", "Choose your installed Codex executable.")},
    Row{.scope = "integration",
        .key = "connectionMode",
        .shape = Choice,
        .label = QT_TRANSLATE_NOOP("Library", "Connection"),
        .help = kLater,
        .value = ",native",
        .words = QT_TRANSLATE_NOOP("Library", "Address,Service")},
    Row{.scope = "integration",
        .key = "endpoint",
        .shape = Line,
        .label = QT_TRANSLATE_NOOP("Library", "Address"),
        .placeholder = "https://api.example.org/v1/stats",
        .fault = QT_TRANSLATE_NOOP("WidgetEditor", "Use a valid HTTPS endpoint without credentials in its URL.")},
    Row{.scope = "integration",
        .key = "",
        .shape = Credential,
        .label = QT_TRANSLATE_NOOP("Library", "Credential"),
        .help = QT_TRANSLATE_NOOP("Library", "Kept in the keyring, never in the settings.")},
    Row{.scope = "integration",
        .key = "field",
        .shape = Line,
        .label = QT_TRANSLATE_NOOP("Library", "Field"),
        .placeholder = "stats.today"},
    Row{.scope = "integration", .key = "metricLabel", .shape = Line, .label = QT_TRANSLATE_NOOP("Library", "Label")},
    Row{.scope = "integration",
        .key = "prefix",
        .shape = Line,
        .label = QT_TRANSLATE_NOOP("Library", "Prefix"),
        .placeholder = QT_TRANSLATE_NOOP("Library", "none")},
    Row{.scope = "integration",
        .key = "suffix",
        .shape = Line,
        .label = QT_TRANSLATE_NOOP("Library", "Suffix"),
        .placeholder = QT_TRANSLATE_NOOP("Library", "none")},
};

QString translated(const char* text) { return *text ? LibraryWords::tr(text) : QString(); }

EditorField fieldOf(const Row& row) {
  EditorField field;
  field.key = QString::fromLatin1(row.key);
  field.shape = row.shape;
  field.label = translated(row.label);
  field.placeholder = translated(row.placeholder);
  field.help = translated(row.help);
  field.value = QString::fromLatin1(row.value);
  field.words = translated(row.words);
  field.usual = row.usual;
  field.least = row.least;
  field.most = row.most;
  field.isLater = row.isLater;
  if (*row.fault) field.fault = QCoreApplication::translate("WidgetEditor", row.fault);
  return field;
}

bool isOf(const Row& row, const QString& scope) { return scope == QLatin1StringView(row.scope); }

}  // namespace

QList<EditorField> EditorFields::of(const QString& kind) {
  const QString& family = Catalog::find(kind).family;
  const bool isCodex = kind == QLatin1StringView("codexUsage") || kind == QLatin1StringView("codexUsageGauge");
  const bool ownRows = std::ranges::any_of(kRows, [&](const Row& row) { return isOf(row, kind); });
  QStringList scopes{ownRows ? kind : isConnectedFamily(family) ? QStringLiteral("integration") : family};
  if (isCodex) scopes.prepend(QStringLiteral("codex"));
  QList<EditorField> fields;
  for (const QString& scope : std::as_const(scopes)) {
    for (const Row& row : kRows) {
      const bool isThere = std::ranges::find(fields, QLatin1StringView(row.key), &EditorField::key) != fields.end();
      if (isOf(row, scope) && *row.label && !isThere) fields.append(fieldOf(row));
    }
  }
  for (EditorField& field : fields)
    if (field.shape == Folder && kind == QLatin1StringView("downloads"))
      field.placeholder = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
  return fields;
}

bool EditorFields::isEditable(const QString& kind) {
  const QString& family = Catalog::find(kind).family;
  return family != QLatin1StringView("separator") && family != QLatin1StringView("space");
}

}  // namespace tarnwick
