#include "clipboard/ClipboardHistory.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>
#include <QPointer>
#include <mutex>

#include "base/Background.h"
#include "base/DomainError.h"
#include "clipboard/ClipboardPicture.h"

namespace tarnwick {

namespace {

/// A picture of so many bytes, as it was sent, leaves enough memory behind to be worth giving back.
constexpr qsizetype kManyBytes = 1 << 20;

}  // namespace

/// What the history is after a piece of work.
struct ClipboardHistory::Outcome {
  QList<ClipboardEntry> items;
  bool isReadable = true;
  QString failure;
};

/// A picture between the clipboard and the worker.
struct ClipboardHistory::WaitingPicture {
  std::mutex lock;
  QByteArray bytes;

  QByteArray take() {
    const std::lock_guard guard(lock);
    return std::exchange(bytes, {});
  }
};

ClipboardHistory::ClipboardHistory(const QString& dataFolder, const Scheduler& clock, QObject* parent)
    : QObject(parent), clock_(clock), store_(dataFolder), places_(dataFolder) {}

ClipboardHistory::~ClipboardHistory() { work_.finish(); }

template <class Work>
ClipboardHistory::Outcome ClipboardHistory::attempt(ClipboardStore& store, Work work) {
  Outcome outcome;
  try {
    work(store);
  } catch (const DomainError& failure) {
    outcome.failure = failure.message();
  }
  outcome.items = store.items();
  outcome.isReadable = store.isReadable();
  return outcome;
}

void ClipboardHistory::setFixed(const QList<ClipboardEntry>& items,
                                const QHash<QString, ClipboardThumbnail>& thumbnails) {
  isFixed_ = isLoaded_ = true;
  items_ = items;
  fixedThumbnails_ = thumbnails;
  Q_EMIT didChange();
}

template <class Work, class After>
void ClipboardHistory::start(Work work, After after) {
  if (isFixed_) return;
  work_.start([this, work = std::move(work)]() mutable { return attempt(store_, std::move(work)); },
              [this, after = std::move(after)](const Outcome& outcome) {
                take(outcome);
                after(outcome);
              });
}

template <class Work>
void ClipboardHistory::start(Work work) {
  start(std::move(work), [this](const Outcome& outcome) {
    if (!outcome.failure.isEmpty()) Q_EMIT failed(outcome.failure);
  });
}

void ClipboardHistory::take(const Outcome& outcome) {
  isLoaded_ = true;
  // The first sentence tells where the file is, those after it that it stays there.
  const bool hasNews = outcome.isReadable != problem_.isEmpty() || outcome.items != items_;
  if (!hasNews) return;
  items_ = outcome.items;
  problem_ = outcome.isReadable ? QString() : outcome.failure;
  Q_EMIT didChange();
}

void ClipboardHistory::load(Done done) {
  start([](ClipboardStore& store) { store.removeStrayPictures(); },
        [done = std::move(done)](const Outcome&) {
          if (done) done();
        });
}

void ClipboardHistory::record(ClipboardCapture capture, QObject* context, Recorded done) {
  std::shared_ptr<WaitingPicture> picture;
  if (capture.imageData) {
    if (const auto older = waiting_.lock()) older->take();
    picture = std::make_shared<WaitingPicture>();
    picture->bytes = *std::exchange(capture.imageData, std::nullopt);
    waiting_ = picture;
  }
  const auto stored = std::make_shared<std::optional<ClipboardEntry>>();
  start(
      [capture = std::move(capture), picture, stored, now = clock_.now()](ClipboardStore& store) mutable {
        if (picture) {
          const QByteArray sent = picture->take();
          if (!sent.isEmpty()) capture.imageData = ClipboardPicture::toPng(sent, ClipboardStore::kMostImageBytes);
          if (sent.size() > kManyBytes) Background::giveBackMemory();
          if (!capture.imageData) return;
        }
        *stored = store.record(capture, now);
      },
      [this, stored, context = QPointer(context), done = std::move(done)](const Outcome& outcome) {
        if (!outcome.failure.isEmpty()) Q_EMIT failed(outcome.failure);
        if (context && done) done(*stored);
      });
}

void ClipboardHistory::toggleFavourite(const QUuid& id) {
  start([id](ClipboardStore& store) { store.toggleFavourite(id); });
}

void ClipboardHistory::remove(const QUuid& id, QObject* context, Removed done) {
  auto removed = std::make_shared<std::optional<RemovedClipboardEntry>>();
  start([id, removed](ClipboardStore& store) { *removed = store.remove(id); },
        [this, removed, context = QPointer(context), done = std::move(done)](const Outcome& outcome) {
          if (!outcome.failure.isEmpty()) Q_EMIT failed(outcome.failure);
          if (*removed && context) done(**removed);
        });
}

void ClipboardHistory::putBack(const RemovedClipboardEntry& removed) {
  start([removed](ClipboardStore& store) { store.putBack(removed); });
}

void ClipboardHistory::clear() {
  start([](ClipboardStore& store) { store.clear(); });
}

void ClipboardHistory::noteHeld(bool isHeld) {
  // Where it cannot be noted, the next run offers nothing.
  start([isHeld](ClipboardStore& store) { store.noteHeld(isHeld); }, [](const Outcome&) {});
}

void ClipboardHistory::takeHeld(QObject* context, Held done) {
  const auto held = std::make_shared<QUuid>();
  start(
      [held](ClipboardStore& store) {
        *held = store.takeHeld();
        store.load();
      },
      [held, context = QPointer(context), done = std::move(done)](const Outcome&) {
        if (context) done(*held);
      });
}

bool ClipboardHistory::migrate(const QStringList& texts) {
  const auto failure = std::make_shared<QString>();
  start(
      [failure, texts, now = clock_.now()](ClipboardStore& store) {
        try {
          store.migrate(texts, now);
        } catch (const DomainError& error) {
          *failure = error.message();
          throw;
        }
      },
      [](const Outcome&) {});
  work_.finish();
  if (!failure->isEmpty()) throw DomainError::invalid(*failure);
  return true;
}

void ClipboardHistory::readPicture(const ClipboardEntry& entry, QObject* context, Picture done) {
  work_.start([this, entry] { return store_.picture(entry); },
              [context = QPointer(context), done = std::move(done)](const std::optional<QByteArray>& png) {
                if (context) done(png);
              });
}

void ClipboardHistory::readThumbnail(const ClipboardEntry& entry, int side, QObject* context, Thumbnail done) {
  if (isFixed_) return done(fixedThumbnails_.value(entry.imageFile));
  const auto read = [this, entry, side]() -> ClipboardThumbnail {
    const auto png = store_.picture(entry);
    if (!png || ClipboardPicture::judge(*png) != ClipboardPicture::Verdict::Fine) return {};
    QBuffer buffer;
    buffer.setData(*png);
    QImageReader reader(&buffer);
    const QSize bounds(side, side);
    const QSize size = reader.size();
    if (size != size.boundedTo(bounds))
      reader.setScaledSize(size.scaled(bounds, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    return {reader.read(), size};
  };
  work_.start(read, [context = QPointer(context), done = std::move(done)](const ClipboardThumbnail& thumbnail) {
    if (context) done(thumbnail);
  });
}

bool ClipboardHistory::isFolder(const ClipboardEntry& entry) {
  if (entry.kind != ClipboardEntry::Kind::File) return false;
  if (const auto known = folders_.constFind(entry.value); known != folders_.cend()) return *known;
  folders_.insert(entry.value, false);
  if (isFixed_) return false;
  // Not in order with the rest: it may be on a server that does not answer.
  Background::run(Background::Lane::Reading, [self = QPointer(this), path = entry.value] {
    if (!QFileInfo(path).isDir()) return;
    Background::answer([self, path] {
      if (!self) return;
      self->folders_.insert(path, true);
      Q_EMIT self->didChange();
    });
  });
  return false;
}

QString ClipboardHistory::picturePath(const ClipboardEntry& entry) const {
  const auto url = places_.imageURL(entry);
  return url ? url->toLocalFile() : QString();
}

}  // namespace tarnwick
