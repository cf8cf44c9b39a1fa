#include "platform/dbus/toggles/MuteToggle.h"

#include <QDir>
#include <QFileInfo>
#include <chrono>
#include <utility>

#include "base/ModuleLoader.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// A server that restarts is back soon; one that keeps failing is left alone until its socket changes.
constexpr auto kBeforeAnotherTry = 1s;
constexpr int kMostFailures = 5;

/// The user's own choice of a server, if any.
QString namedServer() { return qEnvironmentVariable("PULSE_SERVER"); }

QString socketFolder() {
  const QString named = qEnvironmentVariable("PULSE_RUNTIME_PATH");
  if (!named.isEmpty()) return named;
  const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
  return runtime.isEmpty() ? QString() : runtime + u"/pulse"_s;
}

QString socketPath() {
  const QString folder = socketFolder();
  return folder.isEmpty() ? QString() : folder + u"/native"_s;
}

bool isServerThere() { return !namedServer().isEmpty() || QFileInfo::exists(socketPath()); }

}  // namespace

MuteToggle::MuteToggle() : attempt_(std::make_unique<QTimer>()) {
  attempt_->setSingleShot(true);
  connect(attempt_.get(), &QTimer::timeout, this, &MuteToggle::connectToServer);
}

void MuteToggle::start() { started_ = true; }

ToggleState MuteToggle::state() const {
  if (started_ && !std::exchange(asked_, true)) attempt_->start(0ms);
  if (!state_.connected) return {false, Capability::no(tr("No sound server was found."))};
  if (!state_.hasOutput) return {false, Capability::no(tr("This computer has no sound output."))};
  return {state_.muted, Capability::yes()};
}

void MuteToggle::set(bool on) {
  if (output_ && state_.hasOutput) {
    output_->setMuted(on);
  } else {
    Q_EMIT changed();
  }
}

void MuteToggle::connectToServer() {
  if (output_) return;
  if (!isServerThere()) return awaitServer();
  static const auto make =
      reinterpret_cast<MakeSoundOutput>(ModuleLoader::function(QString::fromLatin1(kSoundModule), kSoundDoor));
  if (!make) return;
  sockets_.reset();
  // An address of its own keeps the library from looking for servers elsewhere.
  const QString address = namedServer().isEmpty() ? u"unix:"_s + socketPath() : QString();
  output_.reset(make(address, [this](const SoundState& state) {
    QMetaObject::invokeMethod(
        this, [this, state] { take(state); }, Qt::QueuedConnection);
  }));
}

void MuteToggle::take(const SoundState& state) {
  state_ = state;
  if (state.connected) {
    failures_ = 0;
  } else {
    output_.reset();
    if (isServerThere() && ++failures_ <= kMostFailures) attempt_->start(kBeforeAnotherTry);
    awaitServer();
  }
  Q_EMIT changed();
}

void MuteToggle::awaitServer() {
  const QString folder = socketFolder();
  if (folder.isEmpty()) return;
  if (!sockets_) {
    sockets_ = std::make_unique<QFileSystemWatcher>();
    connect(sockets_.get(), &QFileSystemWatcher::directoryChanged, this, [this] {
      failures_ = 0;
      awaitServer();
      // The socket exists a moment before anybody answers behind it.
      if (isServerThere() && !output_) attempt_->start(kBeforeAnotherTry);
    });
  }
  for (const QString& path : {folder, QFileInfo(folder).path()})
    if (QFileInfo(path).isDir() && !sockets_->directories().contains(path)) sockets_->addPath(path);
}

}  // namespace tarnwick
