#include "usage/ClaudeActivityFollower.h"

#include <QCoroTask>

#include "base/DomainError.h"
#include "facilities/ActiveSets.h"
#include "usage/ClaudeActivity.h"
#include "usage/UsageReaderWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

constexpr double kLeastBetween = 2;  ///< Seconds between two readings.
constexpr double kBeatsMissed = 5;   ///< Seconds without a beat after which no tile is shown.
constexpr double kDay = 86400;

bool isActivity(const DockWidget& widget) {
  return widget.options.value(option::connectionMode) == value::claudeActivity;
}

QString folderOf(const DockWidget& widget) { return widget.options.value(option::historyDirectory); }

/// Reads a folder, and notes when what is shown of it changes by itself.
QCoro::Task<RemoteValue> readNoting(QString folder, QDateTime now, std::shared_ptr<std::optional<QDateTime>> noted,
                                    std::stop_token stop) {
  if (folder.isEmpty())
    throw DomainError::invalid(UsageReaderWords::tr("Install the activity hooks in this widget’s settings."));
  const auto earliest = std::make_shared<std::optional<QDateTime>>();
  std::function<RemoteValue(const std::stop_token&)> read = [folder, now, earliest](const std::stop_token&) {
    const QList<ClaudeActivityRecord> records = ClaudeActivity::records(folder, now);
    *earliest = ClaudeActivity::nextChange(records, now);
    return ClaudeActivity::value(records, now, QLocale());
  };
  RemoteValue value = co_await readElsewhere(std::move(read), stop);
  if (*earliest && (!*noted || **earliest < **noted)) *noted = *earliest;
  co_return value;
}

}  // namespace

ClaudeActivityFollower::ClaudeActivityFollower(Scheduler& scheduler, Refresh refresh, QString ownFolder)
    : scheduler_(scheduler),
      refresh_(std::move(refresh)),
      ownFolder_(std::move(ownFolder)),
      nextChange_(std::make_shared<std::optional<QDateTime>>()) {}

ClaudeActivityFollower::~ClaudeActivityFollower() = default;

LocalReader ClaudeActivityFollower::reader() {
  return [next = nextChange_, &scheduler = scheduler_](const DockWidget& widget, std::stop_token stop) {
    return readNoting(folderOf(widget), scheduler.now(), next, std::move(stop));
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
    watch_->watch(folders_);
  }
  const bool isDue = *nextChange_ && **nextChange_ <= scheduler_.now();
  if (isChanged_ || isDue) refreshAll();
  if (removedAt_ < 0 || beatAt_ - removedAt_ >= kDay) removeOld();
}

void ClaudeActivityFollower::end() {
  watch_.reset();
  disk_.cancel();
}

void ClaudeActivityFollower::folderChanged() {
  const double now = scheduler_.reference();
  isChanged_ = true;
  if (now - beatAt_ > kBeatsMissed) {
    // It deletes what calls this.
    QMetaObject::invokeMethod(
        this, [this] { watch_.reset(); }, Qt::QueuedConnection);
  } else if (now - readAt_ >= kLeastBetween) {
    refreshAll();
  }  // Else with the next beat.
}

void ClaudeActivityFollower::refreshAll() {
  isChanged_ = false;
  nextChange_->reset();
  readAt_ = scheduler_.reference();
  const QList<DockWidget> widgets = widgets_;  // What a reading leads to may change them.
  for (const DockWidget& widget : widgets) refresh_(widget);
}

void ClaudeActivityFollower::removeOld() {
  removedAt_ = beatAt_;
  disk_.start([folder = ownFolder_, now = scheduler_.now()] { return ClaudeActivity::removeOld(folder, now); },
              [](qsizetype) {});
}

}  // namespace tarnwick
