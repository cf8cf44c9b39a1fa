#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

namespace tarnwick {

/// What one kind of widget is. Compare kinds, families, symbols and assets in code; `name` and `category` are in the
/// user's language and for display only.
struct WidgetDefinition {
  QString id;        ///< the kind, as DockWidget stores it
  QString name;      ///< display name
  QString category;  ///< display name of the library section; compare it with WidgetGroup::name only
  QString symbol;    ///< name of a symbol image
  QString family;    ///< behaviour class, for what many kinds have in common
  QString asset;     ///< name of a brand image; empty where the symbol is used
  double width = 0;  ///< reference width of the tile in points at scale 1

  bool operator==(const WidgetDefinition&) const = default;
};

/// One section of the widget library. Groups and the kinds in them are in display order.
struct WidgetGroup {
  QString name;  ///< in the user's language
  QString symbol;
  QStringList kinds;

  bool operator==(const WidgetGroup&) const = default;
};

/// Whether widgets of this family show a remote value: they are configured, checked and refreshed alike.
bool isConnectedFamily(QStringView family);

/// What a service is told by at a glance.
struct ServiceBadge {
  QString letters;  ///< One, or two where another service has the same initial, from A to Z; empty for no badge.
  int color = 0;    ///< Its own: see Palette::badge.

  bool operator==(const ServiceBadge&) const = default;
};

/// The badge of the service that fills a widget of a connected family.
ServiceBadge serviceBadge(const WidgetDefinition& definition);

}  // namespace tarnwick
