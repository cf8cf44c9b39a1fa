#include "usage/ClaudeActivityFollower.h"

#include <QCoroTask>
#include <QHash>
#include <QPointer>
#include <optional>

#include "base/DomainError.h"
#include "base/ForeignText.h"
#include "base/LocalFigures.h"
#include "facilities/ActiveSets.h"
#include "usage/ClaudeActivity.h"
#include "usage/ClaudeRecordFolder.h"
#include "usage/UsageReaderWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

constexpr double kLeastBetween = 1;  ///< Seconds between two readings.
constexpr double kBeatsMissed = 5;   ///< Seconds without a beat after which no tile is shown.
constexpr double kDay = 86400;

bool isActivity(const DockWidget& widget) {
  return widget.options.value(option::connectionMode) == value::claudeActivity;
}

QString folderOf(const DockWidget& widget) { return widget.options.value(option::historyDirectory); }

/// The sessions that wait for a permission, and since when.
using WaitingSessions = QHash<QString, double>;

QString sentenceOf(const QList<ClaudeActivityRecord>& calling) {
  if (calling.size() > 1)
    return UsageReaderWords::tr("%1 sessions wait for your permission.").arg(LocalFigures::number(calling.size()));
  const QString tool = ForeignText::line(QString::fromStdString(calling.first().tool));
  return tool.isEmpty() ? UsageReaderWords::tr("A session waits for your permission.")
                        : UsageReaderWords::tr("A session waits for your permission to use %1.").arg(tool);
}

}  // namespace

/// What readings leave for each other; one that is under way may outlive the follower.
struct ClaudeActivityFollower::Following {
  QPointer<ClaudeActivityFollower> follower;
  std::optional<QDateTime> nextChange;
  int running = 0;
  /// What was read last, by folder, while tiles of it are shown.
  QHash<QString, std::shared_ptr<ClaudeRecordFolder>> folders;
  QHash<QString, WaitingSessions> waiting;  ///< By folder, as a widget that announces saw them last.

  /// Counts one for as long as it lives.
  class Reading {
   public:
    explicit Reading(Following& of) : of_(of) { ++of_.running; }
    Q_DISABLE_COPY_MOVE(Reading)
    ~Reading() { --of_.running; }

   private:
    Following& of_;
  };

  /// Those of the records that wait since the last look; none at the first one.
  QList<ClaudeActivityRecord> calling(const QString& folder, const QList<ClaudeActivityRecord>& records,
                                      const QDateTime& now) {
    WaitingSessions present;
    QList<ClaudeActivityRecord> all;
    const auto before = waiting.constFind(folder);
    for (const ClaudeActivityRecord& record : records) {
      if (!ClaudeActivity::isWaiting(record, now)) continue;
      const QString session = QString::fromStdString(record.session);
      if (before != waiting.constEnd() && before->value(session, -1) != record.time) all.append(record);
      present.insert(session, record.time);
    }
    waiting.insert(folder, present);
    return all;
  }
};

/// Reads a folder, and notes when what is shown of it changes by itself.
QCoro::Task<RemoteValue> ClaudeActivityFollower::readFolder(std::shared_ptr<Following> following, DockWidget widget,
                                                            QDateTime now, std::stop_token stop) {
  const QString folder = folderOf(widget);
  if (folder.isEmpty())
    throw DomainError::invalid(UsageReaderWords::tr("Install the activity hooks in this widget’s settings."));
  const auto found = std::make_shared<ClaudeActivity::Found>();
  // Nothing is kept of a folder that nobody follows.
  const bool isFollowed = following->follower && following->follower->watch_;
  auto records = isFollowed ? following->folders.value(folder) : nullptr;
  if (!records) records = std::make_shared<ClaudeRecordFolder>(folder);
  if (isFollowed) following->folders.insert(folder, records);
  std::function<RemoteValue(const std::stop_token&)> read = [records, now, found](const std::stop_token& stopped) {
    *found = records->find(now, stopped);
    return ClaudeActivity::value(found->records, now, QLocale());
  };
  const Following::Reading reading(*following);
  RemoteValue value = co_await readElsewhere(std::move(read), stop);
  std::optional<QDateTime>& next = following->nextChange;
  if (found->nextChange && (!next || *found->nextChange < *next)) next = found->nextChange;
  if (widget.options.value(option::announcesPermission) == value::on) {
    const auto calling = following->calling(folder, found->records, now);
    if (!calling.isEmpty() && following->follower) Q_EMIT following->follower->called(widget, sentenceOf(calling));
  }
  co_return value;
}

ClaudeActivityFollower::ClaudeActivityFollower(Scheduler& scheduler, Refresh refresh, QString ownFolder)
    : scheduler_(scheduler),
      refresh_(std::move(refresh)),
      ownFolder_(std::move(ownFolder)),
      following_(std::make_shared<Following>()) {
  following_->follower = this;
}

ClaudeActivityFollower::~ClaudeActivityFollower() = default;

LocalReader ClaudeActivityFollower::reader() {
  return [following = following_, &scheduler = scheduler_](const DockWidget& widget, std::stop_token stop) {
    return readFolder(following, widget, scheduler.now(), std::move(stop));
  };
}

bool ClaudeActivityFollower::isNeededBy(const ActiveSets& active) const {
  return active.connectionModes.contains(value::claudeActivity);
}

void ClaudeActivityFollower::beat(const ActiveSets& active) {
  beatAt_ = scheduler_.reference();
  widgets_.clear();
  QStringList folders;
  for (const DockWidget& widget : active.widgets) {
    if (!isActivity(widget) || folderOf(widget).isEmpty()) continue;
    widgets_.append(widget);
    if (!folders.contains(folderOf(widget))) folders.append(folderOf(widget));
  }
  if (!watch_) {
    watch_ = std::make_unique<FileWatch>(scheduler_);
    connect(watch_.get(), &FileWatch::changed, this, &ClaudeActivityFollower::folderChanged);
    folders_.clear();
    isChanged_ = true;  // Nobody looked since the last time.
  }
  if (folders != folders_) {
    folders_ = folders;
    following_->folders.removeIf([&](const auto& each) { return !folders.contains(each.key()); });
    watch_->watch(folders_);
  }
  const bool isDue = following_->nextChange && *following_->nextChange <= scheduler_.now();
  // A deadline counts also where nobody looks; what is only new can wait for that.
  if (isDue)
    refreshAll(RemoteValues::Cause::Deadline);
  else if (isChanged_)
    refreshAll(RemoteValues::Cause::News);
  if (removedAt_ < 0 || beatAt_ - removedAt_ >= kDay) removeOld();
}

void ClaudeActivityFollower::end() {
  stopWatching();
  next_.reset();
  disk_.cancel();
}

void ClaudeActivityFollower::folderChanged() {
  const double now = scheduler_.reference();
  isChanged_ = true;
  if (now - beatAt_ > kBeatsMissed) {
    // It deletes what calls this.
    QMetaObject::invokeMethod(
        this, [this] { stopWatching(); }, Qt::QueuedConnection);
    return;
  }
  const double wait = readAt_ + kLeastBetween - now;
  if (wait <= 0)
    refreshAll(RemoteValues::Cause::News);
  else
    next_ = scheduler_.after(wait, [this] { refreshAll(RemoteValues::Cause::News); });
}

/// While nobody looks nothing is kept.
void ClaudeActivityFollower::stopWatching() {
  watch_.reset();
  following_->folders.clear();
}

/// One reading at a time: what comes meanwhile is read with the beat after it, however long one takes.
void ClaudeActivityFollower::refreshAll(RemoteValues::Cause cause) {
  next_.reset();
  if (following_->running > 0) {
    isChanged_ = true;
    return;
  }
  isChanged_ = false;
  following_->nextChange.reset();
  readAt_ = scheduler_.reference();
  const QList<DockWidget> widgets = widgets_;  // What a reading leads to may change them.
  for (const DockWidget& widget : widgets) refresh_(widget, cause);
}

void ClaudeActivityFollower::removeOld() {
  removedAt_ = beatAt_;
  disk_.start([folder = ownFolder_, now = scheduler_.now()] { return ClaudeActivity::removeOld(folder, now); },
              [](qsizetype) {});
}

}  // namespace tarnwick
