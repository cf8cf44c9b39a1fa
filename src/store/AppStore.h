#pragma once

#include <QObject>
#include <QSet>
#include <functional>
#include <optional>

#include "config/DockConfiguration.h"
#include "config/LayoutSignature.h"
#include "config/SettingsLoader.h"
#include "config/SettingsWriter.h"
#include "store/Announcements.h"
#include "store/BeatClients.h"
#include "store/StoreSetup.h"
#include "system/SystemMetrics.h"

namespace tarnwick {

/// The one observable object of the program: it owns the settings document and the metrics of the system, publishes the
/// message line and the running applications, and drives the metrics and the facilities that it was given with a beat
/// of one second. What a facility reads (events, reminders, processes, fetched values) it keeps and announces itself.
/// Main thread only. Operations do not fail towards their callers: what goes wrong lands in `error`. Identities are
/// taken by value, since one that is passed in may be in the document that the operation changes.
class AppStore : public QObject {
  Q_OBJECT
 public:
  static constexpr double kRunningAppsHold = 1.5;

  explicit AppStore(StoreSetup setup);
  ~AppStore() override;

  // Published values. Each has a signal of its own name with "Changed" behind it.
  const DockConfiguration& config() const { return config_; }
  const QString& error() const { return error_; }  ///< The one message line; empty when there is none.
  /// Whether the message line holds an announcement, and nothing that went wrong.
  bool isAnnouncement() const { return isAnnouncement_; }
  const QList<RunningApp>& runningApps() const { return runningApps_; }
  const QString& calendarMessage() const { return calendarMessage_; }
  const QString& reminderMessage() const { return reminderMessage_; }
  void setCalendarMessage(const QString& message);
  void setReminderMessage(const QString& message);

  SystemMetrics& system() { return *system_; }
  const SystemMetrics& system() const { return *system_; }
  Scheduler& scheduler() { return scheduler_; }

  QDateTime now() const;
  /// Stops the store's clock at a moment, for pictures and tests; absent lets it run.
  void setFrozenDate(const std::optional<QDateTime>& date) { frozenDate_ = date; }
  const QString& storagePath() const { return storagePath_; }
  QString dataDirectory() const;
  bool ready() const { return ready_; }  ///< Whether saving is allowed in this run.
  /// Whether there were settings at the start that could not be read. The document is then a new one, as in a first
  /// run, but its user is not new.
  bool hasLostSettings() const { return hasLostSettings_; }
  /// The settings that were lost, while the message line reports it and most of them can be used.
  const KeptSettings& keptSettings() const { return keptSettings_; }
  /// Whether there was no document before this run.
  bool isFirstRun() const { return isFirstRun_; }
  /// Whether this run is without a user's data: nothing of theirs is read, nothing is saved, nothing beats by itself.
  bool isDiagnostic() const { return diagnostic_; }
  qint64 tick() const { return tick_; }
  const ActiveSets& active() const { return active_; }
  /// The display of the dock that the user acted on last, for what comes without a dock of its own; empty when there is
  /// none. Only where the user's actions come in, in DockPresenter and ProgramCommands, is it set and read: all others
  /// are given a display by their callers.
  const QString& activeDisplay() const { return activeDisplay_; }
  void setActiveDisplay(const QString& display) { activeDisplay_ = display; }
  /// Sets which displays have a dock. What others are pinned to is not shown then, and the active display is forgotten
  /// when it is none of them.
  void setDockDisplays(const QStringList& displays);

  // The document.
  const DockProfile& profile() const;
  const QList<DockWidget>& widgets() const;
  qsizetype profileIndex(const QString& display) const;
  /// The profile that a display shows.
  const DockProfile& profile(const QString& display) const { return config_.profiles[profileIndex(display)]; }
  bool isPinned(const QString& display) const;
  /// The widgets that a display's dock shows.
  QList<DockWidget> displayedWidgets(const QString& display) const;
  /// The running applications that a display's dock doesn't hold as a tile already.
  QList<RunningApp> unpinnedRunningApps(const QString& display) const;
  /// Which windows the dock of a display shows.
  WindowScope windowScope(const QString& display) const;

  /// Every change but followLoginEntry() goes through this: `change` edits the document, which is then indexed, saved
  /// in time and announced. One that changes nothing does none of it. When `change` throws, the document stays as it
  /// was. Gives the document as the change left it, before listeners changed more.
  DockConfiguration edit(const std::function<void(DockConfiguration&)>& change);
  /// The same for what may bring another profile onto a display, or ask for another unit: values are then fetched anew.
  DockConfiguration editProfiles(const std::function<void(DockConfiguration&)>& change);
  /// The same for what puts another document in the place of this one: what is fetched for the old one is cancelled
  /// before, and all is fetched anew.
  DockConfiguration replace(const DockConfiguration& config);
  /// Takes over what the session does at login anyway: a change like those of edit(), but nothing is saved for it.
  void followLoginEntry(bool launches);
  void set(QUuid id, const QString& key, const std::optional<QString>& value);
  // A widget that the settings document would refuse is refused here, with the reason as the message.
  void update(const DockWidget& widget);
  /// All that is added to a profile comes in here: in front of the widget `before`, at the end where that is null or
  /// not there. One without an identity, or with one that is taken, gets a fresh one. Gives the widgets as they were
  /// added, all of them; none when one of them was refused, and without a message when there is no such profile.
  QList<DockWidget> addWidgets(QList<DockWidget> widgets, QUuid profile, QUuid before = {});
  /// Appends one. Gives its identity; null when it was refused.
  QUuid addWidget(const DockWidget& widget, QUuid profile);
  /// Appends a new widget to the active profile, or to the given one.
  QUuid add(const QString& kind, QUuid profile = {});
  void remove(QUuid id);
  /// Removes what the keyring keeps for those of these widgets that are not in the document. A failure is told.
  void forgetCredentials(const QList<QUuid>& widgets);
  void move(QUuid id, int places);
  /// Moves by indices of what a display's dock shows, counted as Reordering does.
  void moveDisplayed(qsizetype from, qsizetype to, const QString& display);
  // These give the document as edit() does.
  DockConfiguration newProfile(const QString& name, bool duplicate);
  DockConfiguration deleteProfile(QUuid id);
  DockConfiguration pinDisplay(const QString& display, const std::optional<QUuid>& profile);
  void selectProfile(QUuid id);
  void selectProfile(QUuid id, const QString& display);
  /// Activates the profile of the first rule that holds at this moment. Runs on every beat.
  void applyProfileRules(const QDateTime& at);
  void addTodo(const QString& text);
  void toggleTodo(QUuid id);

  // Timers, water and habits; the widget is held by its identity.
  void toggleTimer(QUuid id);
  void resetTimer(QUuid id);
  void drink(QUuid id, int glasses = 1);
  int waterCount(const DockWidget& widget) const;
  void toggleHabit(QUuid id);
  /// Moves running timers on and announces what ended: by a notification, and where none is shown by the message line.
  /// Runs on every beat.
  void advanceProductivity(const QDateTime& at);

  /// Writes the document to a file of the user's choice.
  void exportConfiguration(const QString& path);
  /// Whose a file of settings is: one that was kept aside in the folder of the settings is this program's own.
  enum class Origin { Elsewhere, OwnFolder };
  /// Replaces the document by a valid one of a file, without ForeignOptions where it is from elsewhere. False when that
  /// is refused, with the reason as the message.
  bool takeImported(DockConfiguration imported, Origin origin);

  /// What is said of a profile that takes no more widgets.
  static QString fullDock() { return tr("This dock already has 150 widgets."); }

  void setError(const QString& message);
  void clearError() { setError({}); }

  /// Posts a notification, unless the user switched them off. `unseen` runs, once, when none is shown: at once when
  /// they are off.
  void notify(const QString& title, const QString& body, const std::function<void()>& unseen = {});
  /// A widget calls for the user, with what it says of that: by a notification, or where none is shown by the message
  /// line; a hidden dock is seen for a moment.
  void call(const DockWidget& widget, const QString& sentence);
  void refresh(const DockWidget& widget);
  void refreshAll();
  /// Fetches anew those of these widgets that displays show and that are set up: they came back, or as they were.
  void refreshShown(const QList<QUuid>& widgets);
  /// Puts windows back that were moved out of the dock's way; none are in a diagnostic run.
  void restoreReservations();
  /// Moves windows of the app in front out of the way of these docks, soon.
  void reserve(const QList<ReservingDock>& docks);

  /// Keeps the list of running applications still while tiles are dragged or dropped.
  void holdRunningApps();
  /// Takes the desktop's list of running applications. Another title, window or call for attention is a change too,
  /// since tiles and menus show it. While the list is held, the latest one waits, on the reference clock, which no
  /// change of the time touches.
  void apply(const QList<RunningApp>& running);

  /// One beat. Called by the store's own timer; public so that a wake-up or a test can beat it.
  void heartbeat();
  void save();
  /// Stops everything and saves. Further calls do nothing.
  void shutdown();
  /// The last save of a run, when no message can be shown any more: a failure goes to standard error.
  void saveAtTheEnd();

 Q_SIGNALS:
  void configChanged();
  /// active() is another, and the document is not.
  void activeChanged();
  /// What the dock looks like changed, not only what its widgets count.
  void layoutChanged();
  void errorChanged();
  void calendarMessageChanged();
  void reminderMessageChanged();
  void runningAppsChanged();
  /// A timer of a widget ended, a reminder of its is due, or somebody waits for the user.
  void widgetCalls(QUuid widget);
  /// A beat went by: what shows the time may look at it.
  void ticked();

 private:
  void start(StoreSetup& setup);
  bool load();
  void startSaving(SettingsLoader::Origin origin, qint64 seconds);
  /// Only when a file was read: a first run and lost settings leave all credentials alone.
  void removeOrphanedCredentials();
  void listen(StoreSetup& setup);
  enum class Saving { InTime, None };
  void configDidChange(Saving saving);
  QList<DockWidget> shownWidgets() const;
  void changeWidget(QUuid id, const std::function<DockWidget(const DockWidget&)>& change);
  void scheduleSave();
  void tellOfSaving(const QString& failure, bool isRepeated);
  void refreshActiveWidgetIndex();
  void announce(const DockWidget& widget, const QString& sentence);
  void setMessage(const QString& message, bool isAnnouncement);
  void migrateClipboardHistory();

  Scheduler& scheduler_;
  InstalledApps& installedApps_;
  RunningApplications& applications_;
  Notifications& notifications_;
  RemoteRefresh& remote_;
  CredentialKeeping& credentials_;
  ClipboardMigration& clipboard_;
  WindowReservations& reservations_;
  std::unique_ptr<SystemMetrics> system_;
  BeatClients clients_;

  DockConfiguration config_;
  QString error_;
  bool isAnnouncement_ = false;
  Announcements announced_;  ///< What an announcement says.
  QList<RunningApp> runningApps_;
  QString calendarMessage_;
  QString reminderMessage_;

  std::optional<QDateTime> frozenDate_;
  QString storagePath_;
  bool ready_ = false;
  bool hasLostSettings_ = false;
  KeptSettings keptSettings_;
  bool isFirstRun_ = false;
  QSet<QUuid> sessionReaders_;  // Who reads the user's session in a browser, or did and may come back.
  bool hasRead_ = false;        // Whether the document is a file's.
  bool diagnostic_ = false;
  bool down_ = false;
  std::optional<SettingsWriter> writer_;  // Absent in diagnostic runs and where saving is not allowed.
  QString savingFailure_;                 // As it was reported.
  LayoutSignature layoutSignature_;

  JobHandle timer_;
  qint64 tick_ = 0;
  std::optional<QList<RunningApp>> deferredApps_;
  double runningAppsHeldUntil_ = 0;  // On the reference clock, which no change of the time touches.
  ActiveSets active_;
  std::optional<QStringList> dockDisplays_;  // Absent until it was set.
  QString activeDisplay_;
};

}  // namespace tarnwick
