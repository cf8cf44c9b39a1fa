#include "config/SettingsWriter.h"

#include <sys/statvfs.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "config/Persistence.h"
#include "config/SaveSchedule.h"
#include "config/SettingsLoader.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct SettingsWriterWords {
  Q_DECLARE_TR_FUNCTIONS(AppStore)
};

/// Besides the document itself: the folder's entry, and what a file system keeps for itself.
constexpr qint64 kBytesBeside = 64 * 1024;

std::optional<qint64> freeBytesBeside(const QString& file) {
  struct statvfs volume;
  if (::statvfs(QFile::encodeName(QFileInfo(file).path()).constData(), &volume) != 0) return std::nullopt;
  return static_cast<qint64>(volume.f_bavail) * static_cast<qint64>(volume.f_frsize);
}

}  // namespace

SettingsWriter::SettingsWriter(Scheduler& scheduler, const QString& path,
                               std::function<const DockConfiguration&()> document)
    : freeBytes(&freeBytesBeside), scheduler_(scheduler), path_(path), document_(std::move(document)), journal_(path) {}

// --- Start ----------------------------------------------------------------------------------------------------------

DockConfiguration SettingsWriter::resume(const DockConfiguration& loaded) {
  written_ = noted_ = loaded;
  if (journal_.isEmpty()) return loaded;
  ContentLine::apply(journal_.read(), noted_);
  // What could not be read, or had no use, must not be between these lines and further ones.
  const QList<ContentLine> lines = ContentLine::between(written_, noted_);
  if (lines.isEmpty()) {
    journal_.removeAll();
  } else {
    journal_.replace(lines);
    planSave(SaveSchedule::kShortestDelay);
  }
  return noted_;
}

void SettingsWriter::keepJournalAside(qint64 unixSeconds) {
  journal_.preserve(SettingsLoader::contentName(unixSeconds));
  written_ = noted_ = document_();
}

void SettingsWriter::startAnew() {
  journal_.removeAll();
  written_ = noted_ = document_();
}

// --- The document ---------------------------------------------------------------------------------------------------

void SettingsWriter::changed(bool layoutChanged) {
  const QDateTime moment = scheduler_.now();
  std::optional<double> sinceLastSave;
  if (lastSave_.isValid()) sinceLastSave = static_cast<double>(lastSave_.msecsTo(moment)) / 1000;
  std::optional<double> pendingIn;
  if (saveWork_) pendingIn = saveDue_ - scheduler_.reference();
  planSave(SaveSchedule::delay(layoutChanged, sinceLastSave, pendingIn));
  note();
}

void SettingsWriter::planSave(double delay) {
  saveDue_ = scheduler_.reference() + delay;
  saveWork_ = scheduler_.after(delay, [this] { saveByItself(false); });
}

void SettingsWriter::saveByItself(bool isRetry) {
  const QString before = failure_;
  // A run of changes that fail makes no pause longer.
  if (isRetry) retryPause_ = std::min(2 * retryPause_, kLongestRetry);
  const QString failure = save();
  if (onSaved) onSaved(failure, isRetry && failure == before);
}

QString SettingsWriter::save() {
  saveWork_.reset();
  lastSave_ = scheduler_.now();
  const DockConfiguration document = document_();
  qint64 bytes = 0;
  try {
    const QByteArray json = Persistence::encode(document);
    bytes = json.size();
    // With the last of what was entered the lines amount to what the document says, so they do no harm where an end
    // between the two leaves both.
    noteNow();
    journal_.setAside(ContentLine::between(written_, document));
    Persistence::save(json, path_);
    written_ = noted_ = document;
    if (!journal_.isEmpty() && DurableFile::folderReachesDisk(path_)) journal_.forgetAside();
    failure_.clear();
    retryPause_ = kFirstRetry;
    retryWork_.reset();
  } catch (const DomainError& failure) {
    failure_ = SettingsWriterWords::tr("Settings could not be saved: ") + failure.message();
    // A document that is refused stays so until it is changed.
    if (bytes > 0) planRetry(bytes);
  }
  return failure_;
}

QString SettingsWriter::saveLast() {
  const QString failure = save();
  saveWork_.reset();
  noteWork_.reset();
  retryWork_.reset();
  return failure;
}

// --- What was entered -----------------------------------------------------------------------------------------------

void SettingsWriter::note() {
  if (noteWork_) return;
  const double since = lastNote_ ? scheduler_.reference() - *lastNote_ : kBetweenNotes;
  if (since >= kBetweenNotes) return noteNow();
  noteWork_ = scheduler_.after(kBetweenNotes - since, [this] { noteNow(); });
}

void SettingsWriter::noteNow() {
  noteWork_.reset();
  const DockConfiguration& document = document_();
  const QList<ContentLine> lines = ContentLine::between(noted_, document);
  if (lines.isEmpty()) return;
  lastNote_ = scheduler_.reference();
  if (journal_.isFullFor(lines)) return compact();
  if (journal_.append(lines)) noted_ = document;
}

/// Earlier values of what was changed again give way; and so much to note is better saved.
void SettingsWriter::compact() {
  const DockConfiguration& document = document_();
  if (journal_.replace(ContentLine::between(written_, document))) noted_ = document;
  if (saveWork_) planSave(std::min(kBetweenNotes, std::max(0.0, saveDue_ - scheduler_.reference())));
}

// --- After a failure ------------------------------------------------------------------------------------------------

void SettingsWriter::planRetry(qint64 bytes) {
  retryAt_ = scheduler_.reference() + retryPause_;
  needed_ = bytes + kBytesBeside;
  lackedSpace_ = !hasSpace();
  if (!retryWork_) retryWork_ = scheduler_.every(1, [this] { lookAgain(); });
}

void SettingsWriter::lookAgain() {
  // A change plans a save of its own.
  if (saveWork_ && saveDue_ < retryAt_) return;
  const bool spaceCame = lackedSpace_ && hasSpace();
  if (scheduler_.reference() < retryAt_ && !spaceCame) return;
  saveByItself(true);
}

bool SettingsWriter::hasSpace() const {
  const auto left = freeBytes(path_);
  return !left || *left >= needed_;
}

}  // namespace tarnwick
