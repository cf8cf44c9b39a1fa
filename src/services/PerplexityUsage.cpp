#include "services/PerplexityUsage.h"

#include <QJsonDocument>
#include <QJsonObject>

#include "base/Cancelled.h"
#include "base/OneShotEvent.h"
#include "services/ProviderData.h"
#include "services/ServiceWords.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr struct {
  const char16_t* key;
  const char* label;
} kAllowances[] = {
    {u"remaining_pro", QT_TRANSLATE_NOOP("Services", "Pro")},
    {u"remaining_research", QT_TRANSLATE_NOOP("Services", "Research")},
    {u"remaining_agentic_research", QT_TRANSLATE_NOOP("Services", "Agentic research")},
    {u"remaining_labs", QT_TRANSLATE_NOOP("Services", "Labs")},
};

QString missingBrowser() { return ServiceWords::tr("Perplexity needs the optional package tarnwick-browser."); }

QString invalidUsage() { return ServiceWords::tr("Perplexity returned an invalid usage response."); }

QString sentenceFor(BrowserFailure failure) {
  switch (failure) {
    case BrowserFailure::Missing:
      return missingBrowser();
    case BrowserFailure::Unloaded:
      return ServiceWords::tr("Perplexity could not load. Check your connection.");
    case BrowserFailure::Elsewhere:
      return ServiceWords::tr("Open Sign In and finish connecting to Perplexity.");
    case BrowserFailure::Unsafe:
      return ServiceWords::tr("Perplexity is not read: this system does not let a browser run in its sandbox.");
    case BrowserFailure::Unanswered:
      break;
  }
  return invalidUsage();
}

/// The object that a text is; nothing is a text that is none.
QJsonObject objectIn(const QByteArray& text) {
  const QJsonDocument document = QJsonDocument::fromJson(text);
  require(document.isObject(), invalidUsage());
  return document.object();
}

/// Nobody else reads until this has ended, however it ends.
struct Turn {
  explicit Turn(std::shared_ptr<bool> taken) : isTaken(std::move(taken)) {
    require(!*isTaken, ServiceWords::tr("Perplexity usage is already refreshing."));
    *isTaken = true;
  }
  Q_DISABLE_COPY_MOVE(Turn)
  ~Turn() { *isTaken = false; }

  std::shared_ptr<bool> isTaken;
};

QCoro::Task<RemoteValue> readUsage(std::shared_ptr<BrowserReader> reader, QUrl home, std::shared_ptr<bool> isReading,
                                   QDateTime now, std::stop_token stop) {
  throwIfStopped(stop);
  const Turn turn(isReading);
  const OneShotEvent over;
  const auto outcome = std::make_shared<std::optional<BrowserOutcome>>();
  const auto reading = reader->read(home, [over, outcome](BrowserOutcome found) {
    *outcome = std::move(found);
    over.happen();
  });
  const std::stop_callback<std::function<void()>> wake(stop, [over] { over.happen(); });
  co_await over.happened();
  throwIfStopped(stop);
  if (const auto* failure = std::get_if<BrowserFailure>(&**outcome)) throw DomainError::invalid(sentenceFor(*failure));
  RemoteValue value = PerplexityUsage::decode(std::get<QByteArray>(**outcome));
  value.updated = now;
  co_return value;
}

}  // namespace

PerplexityUsage::PerplexityUsage(std::shared_ptr<BrowserReader> reader, const QUrl& home)
    : reader_(std::move(reader)), home_(home) {}

QCoro::Task<RemoteValue> PerplexityUsage::read(QDateTime now, std::stop_token stop) {
  return readUsage(reader_, home_, isReading_, std::move(now), std::move(stop));
}

RemoteValue PerplexityUsage::decode(const QByteArray& answer) {
  const QJsonObject told = objectIn(answer);
  const QJsonValue status = told[u"status"];
  require(status.isDouble() && told[u"body"].isString(), invalidUsage());
  require(
      status.toInt() >= 200 && status.toInt() <= 299,
      ServiceWords::tr("Perplexity needs you to finish sign-in or browser verification. Open Sign In to continue."));
  const QJsonObject body = objectIn(told[u"body"].toString().toUtf8());
  const QJsonObject limits = body[u"rate_limits"].isObject() ? body[u"rate_limits"].toObject() : body;
  RemoteValue value;
  for (const auto& [key, label] : kAllowances) {
    const QJsonValue left = limits[QStringView(key)];
    if (left.isUndefined()) continue;
    // Below for what is no whole number that fits.
    const qint64 count = left.isDouble() ? left.toInteger(-1) : -1;
    require(count >= 0, ServiceWords::tr("The provider returned an invalid count."));
    value.metrics << ServiceMetric{ServiceWords::tr(label), QString::number(count)};
  }
  require(!value.metrics.isEmpty(), ServiceWords::tr("Perplexity did not report remaining account allowances."));
  const ServiceMetric& first = value.metrics.first();
  value.value = first.value;
  value.subtitle = first.label + ServiceWords::tr(" remaining");
  value.detail = ServiceWords::tr("Perplexity reports remaining counts without totals or reset times.");
  value.symbol = Catalog::find(kind::perplexityUsage).symbol;
  return value;
}

void PerplexityUsage::showSignIn() {
  if (!reader_->isInstalled()) return say(missingBrowser());
  say(ServiceWords::tr("Sign in to Perplexity, then return to your widget and refresh."));
  reader_->showSignIn(home_);
}

bool PerplexityUsage::forget() { return reader_->forget(); }

void PerplexityUsage::signOut() {
  say(forget() ? ServiceWords::tr("Signed out of Perplexity. What its session kept is deleted.")
               : ServiceWords::tr("What the session at Perplexity keeps could not be deleted."));
}

void PerplexityUsage::say(const QString& message) {
  message_ = message;
  Q_EMIT changed();
}

}  // namespace tarnwick
