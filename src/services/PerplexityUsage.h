#pragma once

#include <QCoroTask>
#include <QObject>
#include <memory>
#include <stop_token>

#include "services/RemoteValue.h"
#include "services/ports/BrowserReader.h"

namespace tarnwick {

/// How much of the user's Perplexity allowances is left, as their own session in a browser tells. There is one for the
/// whole program. Main thread only.
class PerplexityUsage final : public QObject {
  Q_OBJECT
 public:
  PerplexityUsage(std::shared_ptr<BrowserReader> reader, const QUrl& home);

  /// Throws DomainError with a finished sentence, also while another reading runs, and Cancelled. What is awaited may
  /// outlive this.
  QCoro::Task<RemoteValue> read(QDateTime now, std::stop_token stop);
  /// What the page said, the JSON of `status` and `body`. Throws DomainError.
  static RemoteValue decode(const QByteArray& answer);

  /// Opens the window in which the user signs in.
  void showSignIn();
  /// Ends the session and deletes what is kept of it.
  void signOut();
  /// The same without a word. False where something is left.
  bool forget();
  /// What the last of these two came to, as a finished sentence; empty before.
  const QString& message() const { return message_; }

 Q_SIGNALS:
  /// The message is another.
  void changed();

 private:
  void say(const QString& message);

  std::shared_ptr<BrowserReader> reader_;
  QUrl home_;
  std::shared_ptr<bool> isReading_ = std::make_shared<bool>(false);
  QString message_;
};

}  // namespace tarnwick
