#include "services/oauth/OAuthRecord.h"

#include "base/DomainError.h"
#include "base/RecordCodec.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kMargin = 60;

/// The record as it is written.
struct WrittenRecord {
  QString type;
  QString provider;
  QString clientID;
  QString clientSecret;
  QString accessToken;
  QString refreshToken;
  QString expires;

  static constexpr auto fields() {
    using R = WrittenRecord;
    return std::tuple(field::required("type", &R::type), field::required("provider", &R::provider),
                      field::required("clientID", &R::clientID), field::required("clientSecret", &R::clientSecret),
                      field::required("accessToken", &R::accessToken),
                      field::required("refreshToken", &R::refreshToken), field::required("expires", &R::expires));
  }
};

}  // namespace

QString OAuthRecord::encoded() const {
  return QString::fromUtf8(RecordCodec::toBytes(WrittenRecord{kType, provider, clientID, clientSecret, accessToken,
                                                              refreshToken, expires.toUTC().toString(Qt::ISODate)},
                                                QJsonDocument::Compact));
}

std::optional<OAuthRecord> OAuthRecord::decode(const QString& text) {
  if (!text.startsWith(u'{')) return std::nullopt;
  try {
    const auto written = RecordCodec::fromBytes<WrittenRecord>(text.toUtf8());
    const QDateTime expires = QDateTime::fromString(written.expires, Qt::ISODate);
    if (written.type != kType || !expires.isValid()) return std::nullopt;
    return OAuthRecord{written.provider,    written.clientID,     written.clientSecret,
                       written.accessToken, written.refreshToken, expires};
  } catch (const DomainError&) {
    return std::nullopt;
  }
}

bool OAuthRecord::isFresh(const QDateTime& now) const { return now.secsTo(expires) > kMargin; }

}  // namespace tarnwick
