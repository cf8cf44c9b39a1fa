#include "dock/rules/DesktopMath.h"

namespace tarnwick {

QStringList DesktopMath::selectedDisplays(const QString& choice, const QStringList& connected,
                                          const QStringList& attached, const QString& fallback) {
  if (choice == QLatin1String("all")) return connected;
  if (choice == QLatin1String("attached")) {
    for (const QString& remembered : attached) {
      if (connected.contains(remembered)) return {remembered};
    }
    return {};
  }
  if (connected.contains(choice)) return {choice};
  if (connected.isEmpty()) return {};
  return {fallback.isEmpty() ? connected.first() : fallback};
}

}  // namespace tarnwick
