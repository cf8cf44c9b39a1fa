#include "dock/NativeDockState.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <array>
#include <cerrno>
#include <system_error>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "dock/PropertyList.h"

namespace tarnwick {
namespace {

struct NativeDockStateWords {
  Q_DECLARE_TR_FUNCTIONS(NativeDockState)
};

using namespace Qt::StringLiterals;

const QString kAutohide = u"autohide"_s;
const QString kAutohideDelay = u"autohide-delay"_s;
/// In the order in which they are read and written.
const std::array kKeys{kAutohide, kAutohideDelay};

/// Stands for a key that was not set: giving it back means to unset it again.
const QString kAbsent = u"__absent__"_s;

DomainError failure(const char* sentence) { return DomainError::invalid(NativeDockStateWords::tr(sentence)); }

bool hidesSystemDock(DockLayout layout) {
  return layout == DockLayout::Replace || layout == DockLayout::ReplaceAutoHide || layout == DockLayout::Swap;
}

DomainError invalidFile() {
  return failure(
      QT_TRANSLATE_NOOP("NativeDockState", "The saved macOS Dock recovery file is invalid. It has been preserved."));
}

bool isOpenAs(int descriptor, const DurableFile::Stamp& stamp) {
  struct stat status = {};
  return ::fstat(descriptor, &status) == 0 && status.st_dev == stamp.device && status.st_ino == stamp.inode;
}

}  // namespace

NativeDockState::NativeDockState(const QString& directory, DockPreferenceAccess& preferences, DockGuard& guard,
                                 Terms terms)
    : file_(recoveryFile(directory)),
      preferences_(preferences),
      guard_(guard),
      terms_(terms),
      ownLock_(directory),
      lock_(terms.lock ? *terms.lock : ownLock_) {
  repairEarlierRun(terms_.asksFirst);
  preferences_.setDockAppeared([this] { dockAppeared(); });
}

NativeDockState::~NativeDockState() { preferences_.setDockAppeared({}); }

QString NativeDockState::recoveryFile(const QString& directory) {
  return QDir(directory).filePath(u"native-dock-recovery.plist"_s);
}

/// Who was refused once does not wait again: the main thread has been held up for long enough.
HandoverLock::Hold NativeDockState::hold() {
  auto held = lock_.take(othersAreAtIt_ ? std::chrono::milliseconds() : terms_.patience);
  othersAreAtIt_ = !held;
  if (held) return std::move(*held);
  throw failure(QT_TRANSLATE_NOOP("NativeDockState", "Another process is restoring the system dock right now."));
}

void NativeDockState::repairEarlierRun(bool asks) {
  mustRepair_ = true;
  try {
    const auto held = hold();
    if (asks && !theyAnswer()) return;
    recoveryError_.reset();
    mustRepair_ = false;
    recover(terms_.file);
  } catch (const std::exception& error) {
    recoveryError_ = QString::fromUtf8(error.what());
  }
}

/// False while they have not answered yet.
bool NativeDockState::theyAnswer() {
  if (isAsking_) return false;
  const auto record = recordOnDisk();
  if (!record) return true;
  const auto atOnce = std::make_shared<std::optional<bool>>();
  isAsking_ = true;
  const auto waits = std::make_shared<bool>(false);
  preferences_.askWhetherTheyAnswer(PropertyList::decode(record->content).toMap(),
                                    [this, atOnce, waits, alive = std::weak_ptr(alive_)](bool theyAnswer) {
                                      if (!*waits)
                                        *atOnce = theyAnswer;
                                      else if (!alive.expired())
                                        answered(theyAnswer);
                                    });
  *waits = true;
  if (!*atOnce) return false;
  isAsking_ = false;
  if (!**atOnce) doNotAnswer();
  return **atOnce;
}

void NativeDockState::doNotAnswer() {
  saysFirst_ = true;
  recoveryError_ = NativeDockStateWords::tr(
      "The system dock does not respond. Its previous settings are kept and restored as soon as it does.");
}

void NativeDockState::answered(bool theyAnswer) {
  isAsking_ = false;
  if (!mustRepair_) return;
  theyAnswer ? repairEarlierRun(false) : doNotAnswer();
  if (needsApply_) needsApply_();
}

void NativeDockState::recover(int onlyFile) {
  const auto record = recordOnDisk();
  if (!record || (onlyFile >= 0 && !isOpenAs(onlyFile, record->stamp))) return;
  const QVariant saved = PropertyList::decode(record->content);
  const QVariantMap values = saved.toMap();
  if (saved.typeId() != QMetaType::QVariantMap || values.size() != std::ssize(kKeys)) throw invalidFile();
  for (const QString& key : kKeys) {
    if (!values.contains(key)) throw invalidFile();
    const QVariant value = values.value(key);
    if (value != kAbsent && !preferences_.isOwnRecord(key, value)) throw invalidFile();
  }
  original_ = values;
  record_ = *record;
  giveBack();
}

void NativeDockState::apply(DockLayout layout) {
  if (mustRepair_ && !std::exchange(saysFirst_, false)) repairEarlierRun(terms_.asksFirst);
  if (isAsking_ && mustRepair_ && !recoveryError_) return;
  if (recoveryError_) throw DomainError::invalid(*recoveryError_);
  if (current_ == layout || leftAlone_ == layout) return;
  leftAlone_.reset();
  if (!original_ && !hidesSystemDock(layout)) {
    current_ = layout;
    return;
  }
  try {
    // The lock is in the folder that the user's values are to be written into.
    DurableFile::makeParent(file_);
  } catch (const DomainError&) {
    // Writing them will say so.
  }
  const auto held = hold();
  if (givesBackFirst_) giveBack();
  if (hidesSystemDock(layout)) {
    hide(layout);
  } else {
    giveBack();
    current_ = layout;
  }
}

void NativeDockState::hide(DockLayout layout) {
  // Where our file is gone, another process has given back: what is still ours goes back now, and what is there then is
  // the user's.
  if (original_ && recordOnDisk() != record_) giveBack();
  if (!original_) {
    // While there is a file, the present values are not the user's.
    recover();
    takeSnapshot();
  }
  guard_.watch(file_);
  preferences_.write(kAutohide, true);
  preferences_.write(kAutohideDelay,
                     layout == DockLayout::Swap ? DockPreferenceAccess::kNoDelay : DockPreferenceAccess::kEndlessDelay);
  if (!preferences_.synchronize()) {
    try {
      giveBack();
    } catch (const std::exception&) {
      // The sentence below says it; the file is still there.
    }
    throw failure(QT_TRANSLATE_NOOP(
        "NativeDockState",
        "macOS Dock preferences could not be saved. Recovery data was retained if restoration failed."));
  }
  current_ = layout;
  preferences_.restart();
  Capability fits = preferences_.capability();
  if (fits && layout != DockLayout::Swap) fits = preferences_.staysAway();
  const std::pair notice(layout, fits.reason);
  if (!fits && std::exchange(lastNotice_, notice) != notice) notice_ = fits.reason;
}

void NativeDockState::takeSnapshot() {
  QVariantMap values;
  for (const QString& key : kKeys) {
    const QVariant value = preferences_.read(key);
    values.insert(key, value.isValid() ? value : kAbsent);
  }
  const QByteArray content = PropertyList::encode(values);
  DurableFile::write(content, file_);
  record_ = {DurableFile::stamp(file_).value_or(DurableFile::Stamp()), content};
  original_ = values;
}

void NativeDockState::restore() {
  if (mustRepair_) {
    repairEarlierRun(false);
    if (mustRepair_) throw DomainError::invalid(*recoveryError_);
  }
  if (!original_) return;
  const auto held = hold();
  giveBack();
}

void NativeDockState::restoreUntilChanged(DockLayout layout) {
  restore();
  leftAlone_ = layout;
}

void NativeDockState::giveBack() {
  if (!original_) return;
  for (const QString& key : kKeys) {
    const QVariant value = original_->value(key);
    preferences_.write(key, value == kAbsent ? QVariant() : value);
  }
  if (!preferences_.synchronize()) {
    throw failure(QT_TRANSLATE_NOOP("NativeDockState",
                                    "The original macOS Dock settings could not be restored. The recovery file remains "
                                    "available for the next launch."));
  }
  removeRecord();
  original_.reset();
  recoveryError_.reset();
  current_.reset();
  givesBackFirst_ = false;
  guard_.release();
  preferences_.restart();
}

std::optional<NativeDockState::Record> NativeDockState::recordOnDisk() const {
  const auto content = DurableFile::readIfPresent(file_);
  const auto stamp = DurableFile::stamp(file_);
  if (!content || !stamp) return std::nullopt;
  return Record{*stamp, *content};
}

/// A file that is not the one that was given back may say what another process has changed since.
void NativeDockState::removeRecord() {
  if (recordOnDisk() != record_) return;
  if (::unlink(QFile::encodeName(file_).constData()) == 0 || errno == ENOENT) return;
  const QString reason = QString::fromLocal8Bit(std::generic_category().message(errno).c_str());
  throw DomainError::invalid(
      NativeDockStateWords::tr("The file “%1” could not be removed: %2.").arg(QFileInfo(file_).fileName(), reason));
}

void NativeDockState::dockAppeared() {
  const bool hadFailed = mustRepair_;
  if (mustRepair_) repairEarlierRun(false);
  if (!original_) {
    if (hadFailed && !recoveryError_ && needsApply_) needsApply_();
    return;
  }
  try {
    restore();
  } catch (const std::exception&) {
    // Nothing is lost: the file stays. The layout's next attempt tries again and says what it finds.
    current_.reset();
    givesBackFirst_ = true;
  }
  if (needsApply_) needsApply_();
}

bool NativeDockState::resetToSystemDefaults(DockPreferenceAccess& preferences) {
  for (const QString& key : kKeys) preferences.write(key, QVariant());
  const bool saved = preferences.synchronize();
  if (saved) preferences.restart();
  return saved;
}

}  // namespace tarnwick
