#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include "apps/AppIndex.h"

namespace tarnwick {

/// Which application opens a kind of file or address. Pointers live as long as the index.
struct DefaultApplication {
  /// What the user, the desktop or the system chose for exactly this type: the first choice that is installed.
  /// `listed`: only those that a list of applications shows. Null when there is none.
  static const DesktopEntry* chosen(const QString& type, const AppIndex& index, bool listed = false);

  /// Whether the user or the entry itself says that it opens the type: the most important list that mentions it
  /// decides.
  static bool opens(const DesktopEntry& entry, const QString& type, const AppIndex& index);

  /// For something of these types, its own first and then the more general ones: for each in turn what was chosen, else
  /// the first by name that opens it. Null when nothing does.
  static const DesktopEntry* forTypes(const QStringList& types, const AppIndex& index);

  /// The types of an address or a file: of a file its own and all that it is a kind of. Blocks, as it may read the
  /// beginning of the file; any thread may call.
  static QStringList typesOf(const QUrl& url);
};

}  // namespace tarnwick
