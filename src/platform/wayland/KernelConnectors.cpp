#include "platform/wayland/KernelConnectors.h"

#include <QDir>

#include "base/SmallFile.h"

namespace tarnwick {

namespace {

constexpr qint64 kLargestEdid = 64 * 1024;

}  // namespace

std::optional<Edid> KernelConnectors::edid(const QString& connector, const QString& folder) {
  if (connector.isEmpty() || connector.contains(QLatin1Char('/'))) return std::nullopt;
  // One entry for each graphics card that has a connector of that name; the one in use has a monitor.
  const QDir cards(folder);
  for (const QString& card : cards.entryList({QStringLiteral("card*-") + connector}, QDir::AllEntries, QDir::Name)) {
    const auto bytes = SmallFile::read(cards.filePath(card + QStringLiteral("/edid")), kLargestEdid);
    if (!bytes) continue;
    if (const auto found = Edid::parse(*bytes)) return found;
  }
  return std::nullopt;
}

}  // namespace tarnwick
