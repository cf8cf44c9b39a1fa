#include "config/WidgetTransfer.h"

#include <QByteArray>
#include <QCoreApplication>

#include "base/DomainError.h"
#include "config/DockConfiguration.h"
#include "config/ForeignOptions.h"

namespace tarnwick {
namespace {

struct WidgetTransferWords {
  Q_DECLARE_TR_FUNCTIONS(WidgetTransfer)
};

using namespace Qt::StringLiterals;

constexpr auto kPrefix = "tarnwick-widget:"_L1;
constexpr qsizetype kTooLong = 65536;  // In UTF-8 bytes.

/// Strict: no other characters, and padded.
std::optional<QByteArray> fromBase64(const QByteArray& text) {
  const auto decoded = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
  if (!decoded || text.size() % 4 != 0) return std::nullopt;
  return decoded.decoded;
}

}  // namespace

QString WidgetTransfer::encode(const DockWidget& widget) {
  return kPrefix + QString::fromLatin1(RecordCodec::toBytes(widget, QJsonDocument::Compact).toBase64());
}

DockWidget WidgetTransfer::decode(const QString& text) {
  const QByteArray utf8 = text.toUtf8();
  std::optional<QByteArray> json;
  if (text.startsWith(kPrefix) && utf8.size() < kTooLong) json = fromBase64(utf8.sliced(kPrefix.size()));
  if (!json) {
    throw DomainError::invalid(WidgetTransferWords::tr("Invalid widget transfer."));
  }
  DockWidget widget = RecordCodec::fromBytes<DockWidget>(*json);
  ForeignOptions::leaveOut(widget);
  return DockConfiguration::validated(widget);
}

}  // namespace tarnwick
