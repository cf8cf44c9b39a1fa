#include <QCoreApplication>
#include <QHash>
#include <QSet>
#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "base/DomainError.h"
#include "base/Text.h"
#include "config/DockConfiguration.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

struct ValidationWords {
  Q_DECLARE_TR_FUNCTIONS(DockConfiguration)
};

constexpr double kNumberLimit = 1e12;
constexpr double kPositionLimit = 1e7;
constexpr qsizetype kMostClippings = 30;
constexpr int kMostSetupPages = 20;
constexpr qsizetype kMostNeverRecorded = 100;
constexpr qsizetype kLongestDesktopId = 255;

constexpr std::array kCredentialKeys{option::token, option::apiKey, option::password, option::secret};
// In the order in which faults are reported.
constexpr std::array kNumericKeys{option::minutes,
                                  option::goal,
                                  option::deadline,
                                  option::remaining,
                                  option::elapsed,
                                  option::started,
                                  option::glasses,
                                  option::shortBreak,
                                  option::longBreak,
                                  option::sessions,
                                  option::cycleLength,
                                  option::interval,
                                  option::lastReminder,
                                  option::wallpaperInterval,
                                  option::lastWallpaperChange,
                                  option::standingMinutes};
constexpr size_t kCredential = kNumericKeys.size();

void require(bool condition, const char* message) {
  if (!condition) throw DomainError::invalid(ValidationWords::tr(message));
}

/// The place of an option's key among the numeric ones, or kCredential; absent for every other key.
std::optional<size_t> placeOfKey(const QString& key) {
  static const QHash<QString, size_t> places = [] {
    QHash<QString, size_t> built;
    for (size_t i = 0; i < kNumericKeys.size(); ++i) built.insert(kNumericKeys[i], i);
    for (const auto credential : kCredentialKeys) built.insert(credential, kCredential);
    return built;
  }();
  const auto place = places.constFind(key);
  return place == places.cend() ? std::nullopt : std::optional(*place);
}

bool isValidNumber(const QString& text) {
  if (text.isEmpty()) return true;
  const auto number = Text::number(text);
  return number && *number >= 0 && *number < kNumberLimit;
}

// One walk over the options that there are is much cheaper than twenty searches for those that might be.
void checkOptions(const QMap<QString, QString>& options) {
  size_t firstFault = kNumericKeys.size();
  for (auto option = options.cbegin(); option != options.cend(); ++option) {
    const auto place = placeOfKey(option.key());
    if (!place) continue;
    require(*place != kCredential,
            QT_TRANSLATE_NOOP("DockConfiguration", "Credentials belong in Keychain, not configuration."));
    if (*place < firstFault && !isValidNumber(option.value())) firstFault = *place;
  }
  if (firstFault < kNumericKeys.size()) {
    throw DomainError::invalid(ValidationWords::tr("Invalid numeric value for ") + kNumericKeys[firstFault] + u'.');
  }
}

void checkProfiles(const QList<DockProfile>& profiles) {
  QSet<QUuid> seen;
  seen.reserve(std::accumulate(profiles.cbegin(), profiles.cend(), qsizetype{0},
                               [](qsizetype sum, const DockProfile& p) { return sum + p.widgets.size(); }));
  for (const DockProfile& profile : profiles) {
    require(!Text::trimmed(profile.name).isEmpty() && profile.widgets.size() <= DockConfiguration::kMostWidgets,
            QT_TRANSLATE_NOOP("DockConfiguration", "Invalid profile name or too many widgets."));
    for (const DockWidget& widget : profile.widgets) {
      const qsizetype before = seen.size();
      seen.insert(widget.id);
      if (seen.size() == before || !Catalog::contains(widget.kind)) {
        throw DomainError::invalid(ValidationWords::tr("Invalid widget identity or type: ") + widget.kind);
      }
      checkOptions(widget.options);
    }
  }
}

/// Notes that hold a text of their own came from before there was a widget for them.
void migrateNotes(QList<DockProfile>& profiles) {
  for (qsizetype p = 0; p < profiles.size(); ++p) {
    for (qsizetype w = 0; w < profiles.at(p).widgets.size(); ++w) {
      const DockWidget& widget = profiles.at(p).widgets.at(w);
      const QLatin1StringView withText = KindTraits::of(widget.kind).withText;
      if (withText.isEmpty() || widget.options.value(option::text).isEmpty()) continue;
      profiles[p].widgets[w].kind = withText;
    }
  }
}

bool isValidPosition(const QList<double>& position) {
  return position.size() == 2 && std::all_of(position.cbegin(), position.cend(), [](double value) {
           return std::isfinite(value) && std::abs(value) < kPositionLimit;
         });
}

void limitTiming(DesktopOptions& desktop) {
  require(std::isfinite(desktop.revealShowDelay) && std::isfinite(desktop.revealHideDelay) &&
              std::isfinite(desktop.triggerSize),
          QT_TRANSLATE_NOOP("DockConfiguration", "Invalid edge reveal timing."));
  desktop.revealShowDelay = std::clamp(desktop.revealShowDelay, 0.0, 3.0);
  desktop.revealHideDelay = std::clamp(desktop.revealHideDelay, 0.0, 5.0);
  desktop.triggerSize = std::clamp(desktop.triggerSize, 1.0, 30.0);
}

void cut(QStringList& list, qsizetype most) {
  if (list.size() > most) list.resize(most);
}

void limitDesk(DeskOptions& desk) {
  desk.setupPage = std::clamp(desk.setupPage, 0, kMostSetupPages);
  desk.neverRecord.removeIf([](const QString& id) { return id.isEmpty() || id.size() > kLongestDesktopId; });
  desk.neverRecord.removeDuplicates();
  cut(desk.neverRecord, kMostNeverRecorded);
}

}  // namespace

void DockConfiguration::validate() {
  require(schema == 1 && !profiles.isEmpty() && profiles.size() <= kMostProfiles,
          QT_TRANSLATE_NOOP("DockConfiguration", "Unsupported configuration or invalid profile count."));
  QSet<QUuid> identities;
  for (const DockProfile& profile : std::as_const(profiles)) identities.insert(profile.id);
  require(identities.size() == profiles.size(),
          QT_TRANSLATE_NOOP("DockConfiguration", "Duplicate profile identities."));
  checkProfiles(profiles);
  migrateNotes(profiles);

  require(std::isfinite(scale) && std::isfinite(spacing) && std::isfinite(edgeGap),
          QT_TRANSLATE_NOOP("DockConfiguration", "Invalid display dimensions."));
  scale = std::clamp(scale, 0.5, 1.6);
  spacing = std::clamp(spacing, 0.0, 24.0);
  edgeGap = std::clamp(edgeGap, 0.0, 180.0);

  limitTiming(desktop);
  if (desktop.desk) limitDesk(*desktop.desk);
  for (const QList<double>& origin : std::as_const(floatingPositions)) {
    require(isValidPosition(origin), QT_TRANSLATE_NOOP("DockConfiguration", "Invalid saved dock position."));
  }

  if (!activeProfileID || !identities.contains(*activeProfileID)) activeProfileID = profiles.constFirst().id;
  cut(clipboard, kMostClippings);
  cut(shelf, kMostShelved);
}

bool DockConfiguration::isCredential(const QString& key) { return placeOfKey(key) == kCredential; }

DockWidget DockConfiguration::validated(const DockWidget& widget) {
  DockConfiguration alone;
  alone.profiles.first().widgets = {widget};
  alone.validate();
  return alone.profiles.constFirst().widgets.constFirst();
}

}  // namespace tarnwick
