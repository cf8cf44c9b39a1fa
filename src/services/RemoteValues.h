#pragma once

#include <QCoroFwd>
#include <QHash>
#include <QObject>
#include <QSet>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stop_token>

#include "base/Scheduler.h"
#include "desktop/SessionEvents.h"
#include "facilities/StoreCalls.h"
#include "services/KeptHeadlines.h"
#include "services/RemoteFetch.h"
#include "services/RemoteReading.h"
#include "services/ports/NetworkReach.h"

namespace tarnwick {

/// The fetched values of all widgets, one each, and the rules by which they are replaced: who starts a fetch, how a
/// newer one takes the place of an older one, what a limit of the service stops, what waits for the network, and what
/// is shown while it runs and after it failed. What a fetch asks is the loader's matter. Main thread only.
class RemoteValues final : public QObject, public RemoteRefresh {
  Q_OBJECT
 public:
  static constexpr qsizetype kMostAtOnce = 8;    ///< Fetches that run beside each other; those of a user come on top.
  static constexpr double kSpread = 20;          ///< Over so many seconds the refreshes of a beat begin.
  static constexpr double kSpreadOnRequest = 3;  ///< Those of a start, of another profile, of what was owed.
  static constexpr double kLongestGap = 0.25;    ///< Between two of them.
  static constexpr double kUnseen = 600;         ///< A widget that nobody saw for so long is not refreshed.
  static constexpr double kUnnoticed = 0.5;      ///< A fetch that ends within so long is not shown to run.
  static constexpr double kPatience = 1;         ///< At most so long it waits to hear how network and session are.
  static constexpr double kFresh = 10;           ///< So long names may not be found after a network has come.

  /// Why a widget is refreshed that nobody asks for: what it reads has changed, or the time has come at which it shows
  /// something else.
  enum class Cause { News, Deadline };

  /// Gives the value of a widget, or throws what RemoteFetch turns into a sentence.
  using Loader = std::function<QCoro::Task<RemoteValue>(DockWidget widget, bool fahrenheit, std::stop_token stop)>;

  struct Setup {
    Scheduler& scheduler;
    SessionEvents& session;
    NetworkReach& network;
    Loader loader;
    QString cacheFile;  ///< Where headlines are kept from one run to the next.
    /// Seconds on a clock that runs on while the machine sleeps.
    std::function<double()> bootClock = systemBootClock;
  };
  explicit RemoteValues(Setup setup);
  ~RemoteValues() override;

  /// The values, by widget. What was never fetched has none.
  const QHash<QUuid, RemoteValue>& remote() const { return remote_; }
  std::optional<RemoteReading> reading(QUuid widget) const;
  /// When it is refreshed by itself the next time, about; absent where nothing is planned.
  std::optional<QDateTime> nextRefresh(QUuid widget) const;
  /// The unit of temperatures that the user wants.
  bool usesFahrenheit() const { return usesFahrenheit_; }
  /// The widgets on docks that somebody can see. Until this is told, all are.
  void setSeen(const QSet<QUuid>& widgets);
  /// Forgets what the service gave: the credential by which it did is gone.
  void forget(QUuid widget);

  void refresh(const DockWidget& widget) override;
  /// What is read on this machine, when its reader says so: later where there is a reason to wait, which for a deadline
  /// is not that nobody looks.
  void refreshByItself(const DockWidget& widget, Cause cause);
  void refreshAll() override;
  void cancelAll() override;
  void follow(const DockConfiguration& config, const ActiveSets& active) override;
  void start(const DockConfiguration& config, const ActiveSets& active) override;
  void beat(const ActiveSets& active) override;
  void end() override;

  static double systemBootClock();

 Q_SIGNALS:
  /// What reading() gives of this widget is another.
  void changed(QUuid widget);

 private:
  /// A service wants to be left alone until a date, or for as long on the boot clock: a clock that is set must not
  /// make it longer.
  struct Pause {
    QDateTime until;
    double bootEnd = 0;
  };
  struct Waiting {
    QUuid widget;
    double due = 0;  ///< On the reference clock.
  };

  void spread(const QList<DockWidget>& widgets, double seconds);
  void startWaiting();
  void startSoon();
  void wait(QUuid widget, double due);
  void owe(QUuid widget);
  std::optional<RemoteWait> waitOf(const DockWidget& widget, Cause cause = Cause::News) const;
  bool isNetworkFresh() const;
  void renewNetwork();
  bool isUnseen(QUuid widget) const;
  void startOwed();
  void tellOwed();
  void begin(const DockWidget& widget);
  void succeed(const DockWidget& widget, RemoteValue value);
  void fail(const DockWidget& widget, const FetchFailure& failure);
  void endFetch(QUuid widget);
  bool isPaused(QUuid widget) const;
  void write(QUuid widget, const RemoteValue& value);
  void settle(QUuid widget, const RemoteValue& value);
  void takeKept(const DockWidget& widget, const RemoteValue& value);

  Scheduler& scheduler_;
  SessionEvents& session_;
  NetworkReach& network_;
  Loader loader_;
  std::function<double()> bootClock_;

  QHash<QUuid, DockWidget> known_;  ///< Those of the document that show fetched values.
  QList<DockWidget> current_;       ///< Those of them that displays show, in the dock's order.
  bool usesFahrenheit_ = false;
  double beatAt_ = 0;  ///< The last one, on the reference clock.

  QHash<QUuid, RemoteValue> remote_;
  QHash<QUuid, RemoteValue> settled_;  ///< What the last fetch gave, until the next one has ended.
  QHash<QUuid, QDateTime> goodAt_;
  /// The one fetch of a widget that may still write. One that has ended leaves; one that is replaced writes nothing.
  std::map<QUuid, std::unique_ptr<RemoteFetch>> jobs_;
  std::map<QUuid, JobHandle> unnoticed_;  ///< Those of them that are not shown to run yet.
  QHash<QUuid, Pause> pauses_;

  QList<Waiting> waiting_;  ///< In the order in which they begin.
  JobHandle next_;
  QSet<QUuid> owed_;
  std::optional<double> knownBy_;  ///< On the reference clock; absent until something is to be refreshed.
  bool isLocked_ = false;
  bool isAsleep_ = false;
  std::optional<QSet<QUuid>> seen_;
  QHash<QUuid, double> unseenSince_;  ///< On the reference clock.

  bool wasOnline_ = true;
  double freshUntil_ = 0;  ///< On the reference clock.
  QSet<QUuid> early_;      ///< Those whose fetch began while the network was fresh: it may fail because of that.
  QSet<QUuid> again_;      ///< Those that did, to be tried once more when it is there.

  KeptHeadlines headlines_;
  bool isOver_ = false;
};

}  // namespace tarnwick
