#include "services/CurrencyRates.h"

#include <QCoroTask>
#include <QPointer>

#include "base/Cancelled.h"
#include "services/RemoteFetch.h"
#include "services/ServiceSession.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

struct CurrencyRates::Kept {
  CurrencyQuote quote;
  QDateTime since;
};

namespace {

struct RateJob final : Job {
  ~RateJob() override { stop.request_stop(); }
  std::stop_source stop;
};

/// Until `stop` is requested the owner of the functions is there.
struct RateAnswer {
  CurrencyRates::Done done;
  CurrencyRates::Failed failed;
  std::function<void(const CurrencyQuote&)> keep;
};

QCoro::Task<> tellRate(QCoro::Task<CurrencyQuote> fetch, RateAnswer answer, std::stop_token stop) {
  std::optional<CurrencyQuote> quote;
  std::optional<FetchFailure> failure;
  try {
    const CurrencyQuote found = co_await fetch;
    quote = found;
  } catch (...) {
    failure = FetchFailure::ofException();
  }
  if (stop.stop_requested()) co_return;
  if (quote) answer.keep(*quote);
  // What follows the rates may have ended the job.
  if (stop.stop_requested()) co_return;
  if (quote)
    answer.done(*quote);
  else if (failure)
    answer.failed(failure->sentence);
}

}  // namespace

CurrencyRates::CurrencyRates(std::shared_ptr<ServiceSession> session, const QUrl& address, QObject* parent)
    : QObject(parent), session_(std::move(session)), address_(address) {}

CurrencyRates::~CurrencyRates() = default;

std::optional<CurrencyQuote> CurrencyRates::kept(const QString& base, const QString& quote) const {
  const auto found = kept_.constFind(base + quote);
  if (found == kept_.constEnd()) return std::nullopt;
  const qint64 age = found->since.secsTo(session_->now());
  // One from the future was kept before the clock was set.
  return age >= 0 && age < kKeptSeconds ? std::optional(found->quote) : std::nullopt;
}

JobHandle CurrencyRates::ask(const QString& base, const QString& quote, Done done, Failed failed) {
  auto job = std::make_unique<RateJob>();
  const RateAnswer answer{std::move(done), std::move(failed), [self = QPointer(this)](const CurrencyQuote& found) {
                            if (self) self->keep(found);
                          }};
  QMetaObject::invokeMethod(
      this,
      [this, base, quote, answer, stop = job->stop.get_token()] {
        if (!stop.stop_requested()) tellRate(fetch(session_, address_, base, quote, stop), answer, stop);
      },
      Qt::QueuedConnection);
  return job;
}

void CurrencyRates::keep(const CurrencyQuote& quote) {
  kept_.insert(quote.base + quote.quote, {quote, session_->now()});
  Q_EMIT changed();
}

QCoro::Task<CurrencyQuote> CurrencyRates::fetch(std::shared_ptr<ServiceSession> session, QUrl address, QString base,
                                                QString quote, std::stop_token stop) {
  QString path = address.path();
  while (path.endsWith(u'/')) path.chop(1);
  address.setPath(path + u"/v2/rate/%1/%2"_s.arg(base.toLower(), quote.toLower()));
  ServiceCall question;
  question.url = address;
  const QJsonValue answer = co_await session->json(std::move(question), stop);
  throwIfStopped(stop);
  co_return CurrencyQuote::decode(answer, base, quote);
}

}  // namespace tarnwick
