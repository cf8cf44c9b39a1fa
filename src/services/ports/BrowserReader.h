#pragma once

#include <QByteArray>
#include <QUrl>
#include <functional>
#include <memory>
#include <variant>

namespace tarnwick {

/// What bounds a reading.
struct BrowserLimits {
  static constexpr qsizetype largestText = 1'200'000;  ///< Bytes.
  static constexpr int seconds = 20;
};

/// Why a reading gave nothing.
enum class BrowserFailure {
  Missing,     ///< There is no browser: its package is not installed.
  Unloaded,    ///< The page could not be loaded in time.
  Elsewhere,   ///< The service led to a page that is not its own, or the user is signing in just now.
  Unanswered,  ///< The page gave nothing.
  Unsafe,      ///< The system does not let the browser have its sandbox.
};

/// How the helper that reads ends: with a text on its standard output, or without one.
enum class BrowserExit { Answered = 0, Unloaded = 3, Elsewhere = 4, Unanswered = 5, Unsafe = 6 };

using BrowserOutcome = std::variant<QByteArray, BrowserFailure>;

/// A reading under way. Destroying it ends what reads; nothing is told any more.
class BrowserReading {
 public:
  BrowserReading() = default;
  Q_DISABLE_COPY_MOVE(BrowserReading)
  virtual ~BrowserReading() = default;
};

/// A browser with a session of the user's own at one service. It runs for a reading, or for the window in which the
/// user signs in, and ends afterwards; what it keeps lies in one folder. No credential of the session ever comes here.
/// Main thread only; never blocks it.
class BrowserReader {
 public:
  using Done = std::function<void(BrowserOutcome)>;

  BrowserReader() = default;
  Q_DISABLE_COPY_MOVE(BrowserReader)
  virtual ~BrowserReader() = default;

  virtual bool isInstalled() const = 0;
  /// Reads what the service at `home` says of the account. `done` is called once, never inside this call.
  [[nodiscard]] virtual std::unique_ptr<BrowserReading> read(const QUrl& home, Done done) = 0;
  /// Shows the window in which the user signs in there; one that is there already stays as it is.
  virtual void showSignIn(const QUrl& home) = 0;
  /// Ends all that runs and deletes what is kept of the session. False where something of it is left.
  virtual bool forget() = 0;
};

}  // namespace tarnwick
