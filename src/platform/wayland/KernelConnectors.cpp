#include "platform/wayland/KernelConnectors.h"

#include <QDir>
#include <QFile>

namespace tarnwick {

std::optional<Edid> KernelConnectors::edid(const QString& connector, const QString& folder) {
  if (connector.isEmpty() || connector.contains(QLatin1Char('/'))) return std::nullopt;
  // One entry for each graphics card that has a connector of that name; the one in use has a monitor.
  const QDir cards(folder);
  for (const QString& card : cards.entryList({QStringLiteral("card*-") + connector}, QDir::AllEntries, QDir::Name)) {
    QFile file(cards.filePath(card + QStringLiteral("/edid")));
    if (!file.open(QIODevice::ReadOnly)) continue;
    if (const auto found = Edid::parse(file.readAll())) return found;
  }
  return std::nullopt;
}

}  // namespace tarnwick
