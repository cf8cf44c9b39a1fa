#include "apps/DefaultApplication.h"

#include <QMimeDatabase>

namespace tarnwick {

using namespace Qt::StringLiterals;

const DesktopEntry* DefaultApplication::chosen(const QString& type, const AppIndex& index, bool listed) {
  for (const auto& list : index.defaults().lists) {
    for (const QString& id : list.defaults.value(type)) {
      const DesktopEntry* entry = index.byId(id);
      if (entry && (!listed || index.isVisible(*entry))) return entry;
    }
  }
  return nullptr;
}

bool DefaultApplication::opens(const DesktopEntry& entry, const QString& type, const AppIndex& index) {
  for (const auto& list : index.defaults().lists) {
    if (list.added.value(type).contains(entry.id)) return true;
    if (list.removed.value(type).contains(entry.id)) return false;
  }
  return entry.mimeTypes.contains(type);
}

const DesktopEntry* DefaultApplication::forTypes(const QStringList& types, const AppIndex& index) {
  for (const QString& type : types) {
    if (const DesktopEntry* entry = chosen(type, index)) return entry;
    for (const DesktopEntry& entry : index.applications()) {
      if (opens(entry, type, index)) return &entry;
    }
  }
  return nullptr;
}

QStringList DefaultApplication::typesOf(const QUrl& url) {
  if (!url.isLocalFile()) return {"x-scheme-handler/"_L1 + url.scheme().toLower()};
  const QMimeType type = QMimeDatabase().mimeTypeForFile(url.toLocalFile());
  return QStringList{type.name()} + type.allAncestors();
}

}  // namespace tarnwick
