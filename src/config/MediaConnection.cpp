#include "config/MediaConnection.h"

namespace tarnwick {

std::optional<QString> MediaConnection::of(const DockConfiguration& config) {
  if (config.rememberedMediaSource) return config.rememberedMediaSource;
  if (config.nativeConnections && !config.nativeConnections->contains(kMark)) return std::nullopt;
  return QString(kDesktop);
}

void MediaConnection::set(DockConfiguration& config, const std::optional<QString>& source) {
  config.rememberedMediaSource = source;
  if (!config.nativeConnections) config.nativeConnections = QStringList();
  config.nativeConnections->removeAll(kMark);
  if (source) config.nativeConnections->append(kMark);
}

}  // namespace tarnwick
