#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <span>

#include "widgets/catalog/WidgetDefinition.h"

namespace tarnwick {

/// The one list of what a widget can be.
///
/// All lists are built at the first call, in the language that is installed then (so install translators before), and
/// stay constant for the life of the process: returned references may be kept. Any thread may call.
class Catalog {
 public:
  Catalog() = delete;

  /// Every kind, in catalog order.
  static const QList<WidgetDefinition>& items();

  /// The definition of `kind`, at the price of one look-up. Never fails: a kind that is in no row, say from the
  /// settings of a newer version, gives a generic definition under its own name; `contains` distinguishes the two.
  static const WidgetDefinition& find(const QString& kind);
  static bool contains(const QString& kind);

  /// The sections of the widget library.
  static const QList<WidgetGroup>& groups();
  /// The kinds of all groups.
  static const QSet<QString>& referenceKinds();
  /// What the library offers after the groups: items that are in no group and not among its ready-made entries.
  static const QList<WidgetDefinition>& extraItems();

  /// The widgets of a first dock, in its order.
  static std::span<const QLatin1StringView> starterKinds();
  /// A few kinds that work on every computer, for users who do not know yet what to look for.
  static std::span<const QLatin1StringView> suggestedKinds();
  /// What the library offers among the applications and is none, in its order.
  static std::span<const QLatin1StringView> readyApps();
  /// What a dock holds behind the starters in the pictures of the program.
  static std::span<const QLatin1StringView> picturedKinds();
  /// The kind that starts the application of its path, and the one that stands for the folder of its path.
  static const QString& launcherKind();
  static const QString& folderKind();

  /// Names of all sections of the library in display order: "All Widgets", the ready-made entries, the groups, the
  /// extra items.
  static const QStringList& categories();
  /// The section of the library in which a kind is found: one of categories(), or the category of one that it does not
  /// offer.
  static QString sectionOf(const WidgetDefinition& definition);

  /// The width that `kind` has on the dock by its name alone, in points at scale 1, or `fallback` where no rule
  /// applies.
  static double referenceWidth(QStringView kind, double fallback);
};

}  // namespace tarnwick
