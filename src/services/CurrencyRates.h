#pragma once

#include <QCoroFwd>
#include <QHash>
#include <QObject>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

#include "base/Scheduler.h"
#include "services/CurrencyQuote.h"

namespace tarnwick {

class ServiceSession;

/// Exchange rates, of one pair of currencies at a time, from a service that wants no account. What it gave is kept for
/// a day, in memory. Main thread only.
class CurrencyRates final : public QObject {
  Q_OBJECT
 public:
  static constexpr qint64 kKeptSeconds = 24 * 60 * 60;

  using Done = std::function<void(const CurrencyQuote&)>;
  using Failed = std::function<void(const QString& sentence)>;

  CurrencyRates(std::shared_ptr<ServiceSession> session, const QUrl& address, QObject* parent = nullptr);
  ~CurrencyRates() override;

  /// What the service gave last, while that is kept.
  std::optional<CurrencyQuote> kept(const QString& base, const QString& quote) const;
  /// Asks the service, once, for what is kept then. `done` or `failed` is called, never within this call and not once
  /// the job is destroyed, which cancels; both may destroy the job. `failed` gets a finished sentence.
  [[nodiscard]] JobHandle ask(const QString& base, const QString& quote, Done done, Failed failed);

  /// The request itself, and what came of it. Throws DomainError, ServiceHTTPError and Cancelled.
  static QCoro::Task<CurrencyQuote> fetch(std::shared_ptr<ServiceSession> session, QUrl address, QString base,
                                          QString quote, std::stop_token stop);

 Q_SIGNALS:
  /// kept() gives another rate.
  void changed();

 private:
  struct Kept;

  void keep(const CurrencyQuote& quote);

  std::shared_ptr<ServiceSession> session_;
  QUrl address_;
  QHash<QString, Kept> kept_;  ///< By the codes of both.
};

}  // namespace tarnwick
