#include "files/NameIndexKeeper.h"

#include <QFile>
#include <utility>

#include "base/Background.h"
#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "files/NameIndex.h"
#include "files/NameWalk.h"

namespace tarnwick {
namespace {

/// What `work` gives, done while nothing else wants to be.
template <class Work>
auto idly(Work work) {
  decltype(work()) result{};
  Background::idly([&] { result = work(); });
  return result;
}

/// Has the system take something back on another thread, since it takes its time.
template <class Owned>
void dropElsewhere(std::shared_ptr<Owned> owned) {
  if (owned) Background::run(Background::Lane::Reading, [owned = std::move(owned)] {});
}

}  // namespace

/// What the patient lane alone uses: one piece of work after the other.
struct NameIndexKeeper::Disk {
  Disk(QString indexFile, QByteArray indexRoot) : file(std::move(indexFile)), root(std::move(indexRoot)) {}

  const QString file;
  const QByteArray root;
  quint32 from = 0;  ///< Where the next walk goes on.

  Look look() const;
  Walked walk(qint64 since, const std::stop_token& stop);
  bool write(const QByteArray& content, bool isLast) const;
  void remove();
};

struct NameIndexKeeper::Look {
  bool isWhole = false;
  std::shared_ptr<NameWatch> watch;
};

struct NameIndexKeeper::Walked {
  bool isDone = false;
  bool hasWritten = false;
};

NameIndexKeeper::Look NameIndexKeeper::Disk::look() const {
  const auto index = NameIndex::open(file, root);
  if (!index) return {};
  QByteArrayList folders;
  for (const quint32 place : index->newestFolders(MappedNames::kMostFolders)) {
    const QByteArray path = index->path(place);
    if (place == 0 || NameWalk::isEntered(root, path)) folders << path;
  }
  return {.isWhole = index->isWhole(), .watch = NameWatch::begin(folders)};
}

NameIndexKeeper::Walked NameIndexKeeper::Disk::walk(qint64 since, const std::stop_token& stop) {
  if (stop.stop_requested()) return {};
  auto known = NameIndex::open(file, root);
  if (!known || !known->isSound()) {
    known.reset();
    remove();
  } else {
    known->forgetRead();
  }
  const auto grown = [this](const NameIndex::Builder& builder) { write(builder.content(false), false); };
  auto result = NameWalk::read(
      {.root = root, .known = known.get(), .from = from, .since = known ? since : 0, .grown = grown}, stop);
  known.reset();
  if (!result) return {.isDone = true};
  // Where it goes on is a place in the file that it wrote.
  const bool isKept = result->file.isEmpty() || write(result->file, true);
  from = isKept && !result->isDone ? result->from : 0;
  return {.isDone = result->isDone, .hasWritten = isKept && !result->file.isEmpty()};
}

bool NameIndexKeeper::Disk::write(const QByteArray& content, bool isLast) const {
  try {
    DurableFile::makeParent(file);
    DurableFile::removeLeftovers(file);
    if (isLast)
      DurableFile::writeAtomically(content, file, DurableFile::kPrivate);
    else
      DurableFile::writeQuickly(content, file, DurableFile::kPrivate);
    return true;
  } catch (const DomainError&) {
    return false;  // What stands there is as good as it was; the next walk tries again.
  }
}

void NameIndexKeeper::Disk::remove() {
  from = 0;
  QFile::remove(file);
  DurableFile::removeLeftovers(file);
}

NameIndexKeeper::NameIndexKeeper(const QString& file, const QByteArray& root, const Scheduler& clock,
                                 std::function<bool()> isOnBattery, QObject* parent)
    : QObject(parent),
      clock_(clock),
      isOnBattery_(std::move(isOnBattery)),
      disk_(std::make_shared<Disk>(file, root)),
      names_(std::make_shared<MappedNames>(file, root)),
      self_(std::make_shared<NameIndexKeeper*>(this)) {}

NameIndexKeeper::~NameIndexKeeper() {
  *self_ = nullptr;
  isGrowing_ = false;  // Without a word: nobody is told by what is going.
  end();
}

template <class Work, class Done>
void NameIndexKeeper::start(Work work, Done done) {
  ++jobs_;
  Background::run(Background::Lane::Patient,
                  [work = std::move(work), done = std::move(done), disk = disk_, self = self_]() mutable {
                    auto result = std::make_shared<decltype(work(*disk))>(work(*disk));
                    Background::answer([result, done = std::move(done), self] {
                      if (!*self) return;
                      NameIndexKeeper& keeper = **self;
                      done(std::move(*result));
                      if (--keeper.jobs_ == 0) Q_EMIT keeper.rested();
                    });
                  });
}

void NameIndexKeeper::setOn(bool on) {
  const bool wasOn = std::exchange(isOn_, on);
  if (on) {
    isRemoved_ = false;
    if (!wasOn && isOpen_) begin();
    return;
  }
  if (std::exchange(isRemoved_, true)) return;
  end();
  const auto remove = [](Disk& disk) {
    return idly([&] {
      disk.remove();
      return true;
    });
  };
  start(remove, [this](bool) { lastWalk_.reset(); });
}

void NameIndexKeeper::opened() {
  if (std::exchange(isOpen_, true) || !isOn_) return;
  begin();
}

void NameIndexKeeper::closed() {
  isOpen_ = false;
  end();
}

void NameIndexKeeper::begin() {
  ++opening_;
  stop_ = std::stop_source();
  names_->open();
  prepareNames();
  lookAround(true);
}

// Before anybody has written anything, so that the first search finds it in memory. At an ordinary priority: a search
// waits for it.
void NameIndexKeeper::prepareNames() {
  Background::run(Background::Lane::Reading, [names = names_] { names->get(); });
}

void NameIndexKeeper::end() {
  ++opening_;
  stop_.request_stop();
  notifier_.reset();
  dropElsewhere(std::exchange(watch_, nullptr));
  dropElsewhere(names_->close());
  changes_.clear();
  setGrowing(false);
}

void NameIndexKeeper::lookAround(bool isBeforeWalk) {
  const auto work = [stop = stop_.get_token()](Disk& disk) {
    return idly([&] { return stop.stop_requested() ? Look() : disk.look(); });
  };
  start(work, [this, opening = opening_, isBeforeWalk](Look look) {
    if (opening != opening_) return dropElsewhere(std::move(look.watch));
    took(std::move(look.watch));
    if (isBeforeWalk) walk(look.isWhole);
  });
}

void NameIndexKeeper::walk(bool isWhole) {
  const double now = clock_.reference();
  if (lastWalk_ && now - *lastWalk_ < kBetweenWalks) return;
  lastWalk_.reset();
  setGrowing(!isWhole);
  const auto work = [today = clock_.now(), isOnBattery = isOnBattery_, stop = stop_.get_token()](Disk& disk) {
    const bool isSpared = isOnBattery && !stop.stop_requested() && isOnBattery();
    const qint64 since = isSpared ? today.addDays(-kDaysOnBattery).toSecsSinceEpoch() : 0;
    const Walked walked = idly([&] { return disk.walk(since, stop); });
    Background::giveBackMemory();
    return walked;
  };
  start(work, [this, now, opening = opening_](const Walked& walked) {
    if (walked.isDone) lastWalk_ = now;
    if (opening != opening_) return;
    setGrowing(false);
    // Other folders are the newest now.
    if (!walked.hasWritten) return;
    prepareNames();
    lookAround(false);
  });
}

void NameIndexKeeper::took(std::shared_ptr<NameWatch> watch) {
  notifier_.reset();
  dropElsewhere(std::exchange(watch_, std::move(watch)));
  if (!watch_) return;
  notifier_ = std::make_unique<QSocketNotifier>(watch_->descriptor(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, &NameIndexKeeper::noteChanges);
}

void NameIndexKeeper::noteChanges() {
  for (const QString& path : watch_->take()) {
    changes_.removeOne(path);
    changes_.prepend(path);
  }
  if (changes_.size() > kMostChanges) changes_.resize(kMostChanges);
}

void NameIndexKeeper::setGrowing(bool growing) {
  if (std::exchange(isGrowing_, growing) != growing) Q_EMIT growingChanged();
}

}  // namespace tarnwick
