#include "widgets/catalog/Catalog.h"

#include <QCoreApplication>
#include <QHash>
#include <QMutex>
#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "base/ProbeCounters.h"
#include "widgets/catalog/CatalogRows.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct CatalogWords {
  Q_DECLARE_TR_FUNCTIONS(Catalog)
};

QString translated(const char* text) { return CatalogWords::tr(text); }

/// Symbols and families recur in many rows and are held once.
class Words {
 public:
  const QString& of(const char* text) {
    auto& word = words_[text];
    if (word.isEmpty()) word = QString::fromLatin1(text);
    return word;
  }

 private:
  std::unordered_map<std::string_view, QString> words_;
};

struct Lists {
  QList<WidgetGroup> groups;
  QSet<QString> referenceKinds;
  QList<WidgetDefinition> items;
  QHash<QString, const WidgetDefinition*> index;
  QList<WidgetDefinition> extraItems;
  QStringList categories;

  Lists();

 private:
  void buildGroups();
  void buildItems();
  void buildExtraItems();
  void buildCategories();
};

Lists::Lists() {
  buildGroups();
  buildItems();
  buildExtraItems();
  buildCategories();
}

void Lists::buildGroups() {
  for (const catalog::Group& group : catalog::groups()) {
    QStringList kinds;
    kinds.reserve(static_cast<qsizetype>(group.kinds.size()));
    for (const QLatin1StringView kind : group.kinds) kinds.append(kind);
    referenceKinds.unite(QSet<QString>(kinds.cbegin(), kinds.cend()));
    groups.append({translated(group.name), QString::fromLatin1(group.symbol), std::move(kinds)});
  }
}

void Lists::buildItems() {
  QHash<QString, QString> groupNames;
  for (const WidgetGroup& group : groups) {
    for (const QString& kind : group.kinds) {
      if (!groupNames.contains(kind)) groupNames.insert(kind, group.name);
    }
  }

  Words words;
  items.reserve(static_cast<qsizetype>(catalog::rows().size()));
  for (const catalog::Row& row : catalog::rows()) {
    WidgetDefinition item;
    item.id = row.kind;
    item.name = translated(row.name);
    const auto groupName = groupNames.constFind(item.id);
    item.category = groupName == groupNames.cend() ? translated(row.category) : *groupName;
    item.symbol = words.of(row.symbol);
    item.family = words.of(familyText(row.family).data());
    item.asset = words.of(row.asset);
    item.width = Catalog::referenceWidth(item.id, row.width);
    items.append(std::move(item));
  }

  index.reserve(items.size());
  for (const WidgetDefinition& item : std::as_const(items)) index.insert(item.id, &item);
}

void Lists::buildExtraItems() {
  for (const WidgetDefinition& item : std::as_const(items)) {
    const bool offeredElsewhere = KindTraits::of(item.id).readyMade != ReadyMade::None;
    if (!offeredElsewhere && !referenceKinds.contains(item.id)) extraItems.append(item);
  }
}

void Lists::buildCategories() {
  categories = {CatalogWords::tr("All Widgets"), CatalogWords::tr("Apps"), CatalogWords::tr("Folders")};
  for (const WidgetGroup& group : std::as_const(groups)) categories.append(group.name);
  categories.append(CatalogWords::tr("More"));
}

/// The first kind of which `wanted` is true.
template <class Wanted>
QString kindWith(Wanted wanted) {
  const auto row = std::ranges::find_if(catalog::rows(), [&](const catalog::Row& each) { return wanted(each.traits); });
  return row->kind;
}

const Lists& lists() {
  static const Lists instance;
  return instance;
}

/// Generic definitions, made as their kinds turn up and kept so that find() can return lasting references. There are
/// as many as a settings file has kinds that this version doesn't know.
class UnknownKinds {
 public:
  const WidgetDefinition& find(const QString& kind) {
    const QMutexLocker lock(&mutex_);
    auto found = definitions_.find(kind);
    if (found == definitions_.end()) {
      found = definitions_.emplace(kind, generic(kind)).first;
    }
    return found->second;  // a node-based map never moves its values
  }

 private:
  static WidgetDefinition generic(const QString& kind) {
    return {.id = kind,
            .name = kind,
            .category = CatalogWords::tr("Other"),
            .symbol = u"square"_s,
            .family = familyText(Family::Integration),
            .asset = QString(),
            .width = 140};
  }

  QMutex mutex_;
  std::unordered_map<QString, WidgetDefinition> definitions_;
};

}  // namespace

QString Catalog::sectionOf(const WidgetDefinition& definition) {
  const QStringList& sections = lists().categories;
  if (sections.contains(definition.category)) return definition.category;
  const ReadyMade readyMade = KindTraits::of(definition.id).readyMade;
  if (readyMade == ReadyMade::Apps) return sections.value(1);
  if (readyMade == ReadyMade::Folders) return sections.value(2);
  return contains(definition.id) ? sections.last() : definition.category;
}

bool isConnectedFamily(QStringView family) {
  return family == familyText(Family::Integration) || family == familyText(Family::Studio);
}

const QList<WidgetDefinition>& Catalog::items() { return lists().items; }

const WidgetDefinition& Catalog::find(const QString& kind) {
  ProbeCounters::count("catalogFind");
  if (const WidgetDefinition* item = lists().index.value(kind)) return *item;
  static UnknownKinds unknownKinds;
  return unknownKinds.find(kind);
}

bool Catalog::contains(const QString& kind) { return lists().index.contains(kind); }

const QList<WidgetGroup>& Catalog::groups() { return lists().groups; }

const QSet<QString>& Catalog::referenceKinds() { return lists().referenceKinds; }

const QList<WidgetDefinition>& Catalog::extraItems() { return lists().extraItems; }

std::span<const QLatin1StringView> Catalog::starterKinds() { return catalog::starterKinds(); }

std::span<const QLatin1StringView> Catalog::suggestedKinds() { return catalog::suggestedKinds(); }

std::span<const QLatin1StringView> Catalog::readyApps() { return catalog::readyApps(); }

std::span<const QLatin1StringView> Catalog::picturedKinds() { return catalog::picturedKinds(); }

const QString& Catalog::launcherKind() {
  static const QString kind = kindWith([](const KindTraits& traits) { return traits.launches(); });
  return kind;
}

const QString& Catalog::folderKind() {
  static const QString kind = kindWith([](const KindTraits& traits) { return traits.isFolder; });
  return kind;
}

const QStringList& Catalog::categories() { return lists().categories; }

double Catalog::referenceWidth(QStringView kind, double fallback) {
  struct Width {
    QLatin1StringView kind;
    double width;
  };
  static constexpr Width widths[] = {
      {kind::revenuePolar, 148},
      {kind::revenueStripe, 148},
      {kind::revenueDodoPayments, 148},
      {kind::stockChart, 156},
      {kind::cryptoChart, 156},
      {kind::nowPlayingExpanded, 248},
      {kind::nowPlayingMini, 64},
      {kind::nowPlayingTimeline, 280},
      {kind::nowPlayingYouTubeVideo, 114},
      {kind::backgroundSounds, 180},
      {kind::backgroundSound, 180},
      {kind::dayNumber, 70},
      {kind::ringClock, 70},
      {kind::cpu, 70},
      {kind::ram, 70},
      {kind::claudePlanUsageGauge, 120},
      {kind::codexUsageGauge, 120},
      {kind::shopifyTrends, 220},
      {kind::analyticsGitHubContributions, 220},
  };
  for (const Width& rule : widths) {
    if (kind == rule.kind) return rule.width;
  }
  if (kind.startsWith("analog"_L1)) return 80;
  if (kind.endsWith("Overview"_L1)) return 220;
  return fallback;
}

}  // namespace tarnwick
