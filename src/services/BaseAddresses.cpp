#include "services/BaseAddresses.h"

namespace tarnwick {

namespace {

constexpr struct {
  ServiceHost service;
  const char* name;
} kHosts[] = {
    {ServiceHost::GitHub, "api.github.com"},
    {ServiceHost::Linear, "api.linear.app"},
    {ServiceHost::Supabase, "api.supabase.com"},
    {ServiceHost::Resend, "api.resend.com"},
    {ServiceHost::Plausible, "plausible.io"},
    {ServiceHost::Stripe, "api.stripe.com"},
    {ServiceHost::CoinGecko, "api.coingecko.com"},
    {ServiceHost::Polar, "api.polar.sh"},
    {ServiceHost::DodoPayments, "live.dodopayments.com"},
    {ServiceHost::Dub, "api.dub.co"},
    {ServiceHost::SimpleAnalytics, "simpleanalytics.com"},
    {ServiceHost::DataFast, "datafa.st"},
    {ServiceHost::YouTube, "www.googleapis.com"},
    {ServiceHost::X, "api.x.com"},
    {ServiceHost::TikTok, "open.tiktokapis.com"},
    {ServiceHost::TikTokSignIn, "www.tiktok.com"},
    {ServiceHost::Gmail, "gmail.googleapis.com"},
    {ServiceHost::GoogleSignIn, "accounts.google.com"},
    {ServiceHost::GoogleTokens, "oauth2.googleapis.com"},
    {ServiceHost::Dropbox, "api.dropboxapi.com"},
    {ServiceHost::DropboxSignIn, "www.dropbox.com"},
    {ServiceHost::Stocks, "api.twelvedata.com"},
    {ServiceHost::Anthropic, "api.anthropic.com"},
    {ServiceHost::OpenCode, "opencode.ai"},
    {ServiceHost::GLM, "api.z.ai"},
    {ServiceHost::GLMChina, "open.bigmodel.cn"},
    {ServiceHost::CursorPersonal, "cursor.com"},
    {ServiceHost::CursorTeam, "api.cursor.com"},
    {ServiceHost::Grok, "cli-chat-proxy.grok.com"},
    {ServiceHost::Perplexity, "www.perplexity.ai"},
    {ServiceHost::Geocoding, "geocoding-api.open-meteo.com"},
    {ServiceHost::Forecast, "api.open-meteo.com"},
    {ServiceHost::ExchangeRates, "api.frankfurter.dev"},
};

}  // namespace

BaseAddresses BaseAddresses::shipped() {
  BaseAddresses addresses;
  for (const auto& [service, name] : kHosts) {
    QUrl address;
    address.setScheme(QStringLiteral("https"));
    address.setHost(QString::fromLatin1(name));
    addresses.set(service, address);
  }
  return addresses;
}

}  // namespace tarnwick
