#include "dock/NativeDockState.h"

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

using namespace Qt::StringLiterals;

const QString kAutohide = u"autohide"_s;
const QString kAutohideDelay = u"autohide-delay"_s;
/// In the order in which they are read and written.
const std::array kKeys{kAutohide, kAutohideDelay};

/// Stands for a key that was not set: giving it back means to unset it again.
const QString kAbsent = u"__absent__"_s;

constexpr double kNoDelay = 0;
/// Over a quarter of an hour: never in the way.
constexpr double kEndlessDelay = 1000;

DomainError failure(const char* sentence) {
  return DomainError::invalid(QCoreApplication::translate("NativeDockState", sentence));
}

bool hidesSystemDock(DockLayout layout) {
  return layout == DockLayout::Replace || layout == DockLayout::ReplaceAutoHide || layout == DockLayout::Swap;
}

void remove(const QString& path) {
  if (::unlink(QFile::encodeName(path).constData()) == 0 || errno == ENOENT) return;
  const QString reason = QString::fromLocal8Bit(std::generic_category().message(errno).c_str());
  throw DomainError::invalid(QCoreApplication::translate("NativeDockState", "The file “%1” could not be removed: %2.")
                                 .arg(QFileInfo(path).fileName(), reason));
}

}  // namespace

NativeDockState::NativeDockState(const QString& directory, DockPreferenceAccess& preferences, DockGuard* guard)
    : directory_(directory), file_(recoveryFile(directory)), preferences_(preferences), guard_(guard) {
  try {
    recover();
  } catch (const std::exception& error) {
    recoveryError_ = QString::fromUtf8(error.what());
  }
  preferences_.setDockAppeared([this] { dockAppeared(); });
}

NativeDockState::~NativeDockState() { preferences_.setDockAppeared({}); }

QString NativeDockState::recoveryFile(const QString& directory) {
  return QDir(directory).filePath(u"native-dock-recovery.plist"_s);
}

void NativeDockState::recover() {
  const auto data = DurableFile::readIfPresent(file_);
  if (!data) return;
  const QVariant saved = PropertyList::decode(*data);
  const QVariantMap values = saved.toMap();
  const bool complete =
      values.size() == std::ssize(kKeys) && values.contains(kAutohide) && values.contains(kAutohideDelay);
  if (saved.typeId() != QMetaType::QVariantMap || !complete) {
    throw failure(
        QT_TRANSLATE_NOOP("NativeDockState", "The saved macOS Dock recovery file is invalid. It has been preserved."));
  }
  original_ = values;
  restore();
}

void NativeDockState::apply(DockLayout layout) {
  if (recoveryError_) throw DomainError::invalid(*recoveryError_);
  if (current_ == layout) return;
  if (givesBackFirst_) restore();
  if (hidesSystemDock(layout)) {
    hide(layout);
  } else {
    restore();
    current_ = layout;
  }
}

void NativeDockState::hide(DockLayout layout) {
  if (!original_) takeSnapshot();
  if (guard_) guard_->watch(directory_);
  preferences_.write(kAutohide, true);
  preferences_.write(kAutohideDelay, layout == DockLayout::Swap ? kNoDelay : kEndlessDelay);
  if (!preferences_.synchronize()) {
    try {
      restore();
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
  DurableFile::write(PropertyList::encode(values), file_);
  original_ = values;
}

void NativeDockState::restore() {
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
  remove(file_);
  original_.reset();
  recoveryError_.reset();
  current_.reset();
  givesBackFirst_ = false;
  if (guard_) guard_->release();
  preferences_.restart();
}

void NativeDockState::dockAppeared() {
  if (!original_) return;
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
