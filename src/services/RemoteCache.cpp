#include "services/RemoteCache.h"

#include <QFile>
#include <QTimeZone>
#include <QUrl>
#include <algorithm>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/SmallFile.h"
#include "services/RemoteRules.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

QString hostOf(const DockWidget& widget) { return QUrl(widget.options.value(option::endpoint)).host(); }

}  // namespace

bool RemoteCache::mayKeep(const DockWidget& widget) {
  return widget.kind != kind::gmailLatest && widget.kind != kind::gmailUnreadSummary;
}

CachedValue RemoteCache::kept(const DockWidget& widget, const RemoteValue& value) {
  return {widget.id,
          widget.kind,
          hostOf(widget),
          value.value,
          value.subtitle,
          value.symbol,
          static_cast<double>(value.updated.toMSecsSinceEpoch()) / 1000};
}

std::optional<RemoteValue> RemoteCache::valueOf(const DockWidget& widget) const {
  const auto found = std::ranges::find(values, widget.id, &CachedValue::id);
  if (found == values.end() || found->kind != widget.kind || found->host != hostOf(widget) || !mayKeep(widget))
    return std::nullopt;
  RemoteValue value;
  value.value = found->value;
  value.subtitle = found->subtitle;
  value.symbol = found->symbol;
  value.updated = QDateTime::fromMSecsSinceEpoch(qRound64(found->updated * 1000));
  return RemoteRules::cleaned(value);
}

QByteArray RemoteCache::encoded() const {
  QByteArray bytes = RecordCodec::toBytes(*this);
  if (bytes.size() <= kMostBytes) return bytes;
  RemoteCache newest = *this;
  std::ranges::sort(newest.values, std::ranges::greater(), &CachedValue::updated);
  while (bytes.size() > kMostBytes && !newest.values.isEmpty()) {
    newest.values.resize(newest.values.size() / 2);
    bytes = RecordCodec::toBytes(newest);
  }
  return bytes;
}

RemoteCache RemoteCache::load(const QString& path) {
  const auto bytes = SmallFile::read(path, kMostBytes);
  if (!bytes) return {};
  try {
    return RecordCodec::fromBytes<RemoteCache>(*bytes);
  } catch (const DomainError&) {
    return {};
  }
}

void RemoteCache::save(const QString& path) const {
  try {
    if (values.isEmpty()) {
      QFile::remove(path);
      return;
    }
    DurableFile::makeParent(path);
    DurableFile::writeQuickly(encoded(), path, DurableFile::kPrivate);
  } catch (const DomainError&) {
    // The next start begins without.
  }
}

}  // namespace tarnwick
