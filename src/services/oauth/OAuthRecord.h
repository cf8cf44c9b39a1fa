#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

namespace tarnwick {

/// A sign-in, as it is kept in the keyring: a text of JSON.
struct OAuthRecord {
  static constexpr QLatin1StringView kType{"tarnwick.oauth.v1"};

  QString provider;  ///< OAuthProvider::id
  QString clientID;  ///< The user's own client; its secret may be empty.
  QString clientSecret;
  QString accessToken;
  QString refreshToken;
  QDateTime expires;  ///< When the access token does, to the second.

  QString encoded() const;
  /// Absent for a text that is no record, as a token that was pasted.
  static std::optional<OAuthRecord> decode(const QString& text);
  /// Whether the access token is good for more than a minute.
  bool isFresh(const QDateTime& now) const;

  bool operator==(const OAuthRecord&) const = default;
};

}  // namespace tarnwick
