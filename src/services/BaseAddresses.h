#pragma once

#include <QMap>
#include <QUrl>

namespace tarnwick {

/// Everything on the net that the program asks by itself. What a user enters is not among it.
enum class ServiceHost {
  GitHub,
  Linear,
  Supabase,
  Resend,
  Plausible,
  Stripe,
  CoinGecko,
  Polar,
  DodoPayments,
  Dub,
  SimpleAnalytics,
  DataFast,
  YouTube,
  X,
  TikTok,
  TikTokSignIn,
  Gmail,
  GoogleSignIn,
  GoogleTokens,
  Dropbox,
  DropboxSignIn,
  Stocks,
  Anthropic,
  OpenCode,
  GLM,
  GLMChina,
  CursorPersonal,
  CursorTeam,
  Grok,
  Perplexity,
  Geocoding,
  Forecast,
  ExchangeRates
};

/// Where services are. Handed to whoever asks them, so that a test gives addresses of its own; nothing else changes it.
class BaseAddresses {
 public:
  /// The public ones.
  static BaseAddresses shipped();

  /// Without a path; empty for one that a test left out.
  QUrl of(ServiceHost host) const { return addresses_.value(host); }
  void set(ServiceHost host, const QUrl& address) { addresses_[host] = address; }
  const QMap<ServiceHost, QUrl>& all() const { return addresses_; }

 private:
  QMap<ServiceHost, QUrl> addresses_;
};

}  // namespace tarnwick
