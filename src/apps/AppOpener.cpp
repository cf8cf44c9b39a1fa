#include "apps/AppOpener.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPointer>

#include "apps/DefaultApplication.h"
#include "apps/StandardApplications.h"
#include "base/DomainError.h"
#include "base/Text.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct AppOpenerWords {
  Q_DECLARE_TR_FUNCTIONS(AppOpener)
};

/// What a sentence calls it: a file by its name, an address by its host, each short enough for one line.
QString nameOf(const QUrl& url) {
  constexpr qsizetype kMost = 32;
  constexpr qsizetype kEnd = 12;
  QString name = url.isLocalFile() ? QFileInfo(url.toLocalFile()).fileName() : url.host();
  if (name.isEmpty()) name = url.toDisplayString(QUrl::PreferLocalFile);
  const QStringList characters = Text::characters(name);
  if (characters.size() <= kMost) return name;
  return characters.first(kMost - kEnd).join(QString()) + u'…' + characters.last(kEnd).join(QString());
}

/// What a look at a file finds; no types for one that is gone.
QStringList lookAt(const QUrl& url) {
  const bool gone = url.isLocalFile() && !QFileInfo::exists(url.toLocalFile());
  return gone ? QStringList() : DefaultApplication::typesOf(url);
}

}  // namespace

AppOpener::AppOpener(InstalledApps& apps, AppLaunch& launch, Scheduler& scheduler)
    : apps_(apps), launch_(launch), scheduler_(scheduler) {
  connect(&apps_, &InstalledApps::changed, this, &AppOpener::appsChanged);
  connect(&launch_, &AppLaunch::failed, this, &AppOpener::failed);
}

void AppOpener::start(const QString& entryPath, const LaunchRequest& request) {
  if (isForeign(entryPath)) return startForeign(entryPath, request);
  whenKnown(
      [this, entryPath, request] {
        const auto entry = apps_.byPath(entryPath);
        if (entry) launch(entryPath, *entry, request);
        return entry.has_value();
      },
      [this, entryPath] {
        Q_EMIT failed(
            AppOpenerWords::tr("“%1” is not installed any more.").arg(QFileInfo(entryPath).completeBaseName()));
      });
}

bool AppOpener::isForeign(const QString& path) const {
  return path.endsWith(".desktop"_L1) && QDir::isAbsolutePath(path) && apps_.environment().desktopIdOf(path).isEmpty();
}

void AppOpener::startForeign(const QString& path, const LaunchRequest& request) {
  const auto look = [path, environment = apps_.environment()]() -> std::variant<QString, ForeignEntry> {
    // A link to an installed entry is that entry.
    const QString target = QFileInfo(path).symLinkTarget();
    if (!target.isEmpty() && !environment.desktopIdOf(target).isEmpty()) return target;
    return ForeignEntry::look(path, environment.locales);
  };
  looks_.start(look, [this, request](const auto& found) {
    if (const auto* installed = std::get_if<QString>(&found))
      start(*installed, request);
    else
      decide(std::get<ForeignEntry>(found), request);
  });
}

void AppOpener::decide(const ForeignEntry& found, const LaunchRequest& request) {
  if (!found.refusal.isEmpty()) {
    Q_EMIT failed(found.refusal);
    if (reveal) reveal(found.path);
    return;
  }
  if (trusted_ && trusted_->isTrusted(found.path, found.digest)) {
    launch(found.path, found.entry, request);
  } else if (askToRun) {
    askToRun(found, request.action, [self = QPointer(this), found, request] {
      if (self) self->confirm(found, request);
    });
  } else if (reveal) {
    reveal(found.path);
  }
}

void AppOpener::confirm(const ForeignEntry& found, const LaunchRequest& request) {
  try {
    if (trusted_) trusted_->trust(found.path, found.digest);
  } catch (const DomainError& failure) {
    Q_EMIT failed(failure.message());
  }
  launch(found.path, found.entry, request);
}

bool AppOpener::launch(const QString& asked, const DesktopEntry& entry, const LaunchRequest& request) {
  try {
    launch_.launch(entry, request);
    Q_EMIT started(asked);
    return true;
  } catch (const DomainError& failure) {
    Q_EMIT failed(failure.message());
    return false;
  }
}

void AppOpener::open(const QUrl& url, const Done& done) {
  if (url.isLocalFile() && isForeign(url.toLocalFile())) {
    if (done) done(false);
    return startForeign(url.toLocalFile(), {});
  }
  // A file on a volume that does not answer must not stop the dock.
  looks_.start([url] { return lookAt(url); },
               [this, url, done](const QStringList& types) { openFound(url, types, done); });
}

void AppOpener::openFound(const QUrl& url, const QStringList& types, const Done& done) {
  const auto tell = [done](bool isStarted) {
    if (done) done(isStarted);
  };
  if (types.isEmpty()) {
    tell(false);
    Q_EMIT failed(AppOpenerWords::tr("“%1” no longer exists.").arg(nameOf(url)));
    return;
  }
  const auto nobody = [this, url, tell] {
    tell(false);
    Q_EMIT failed(AppOpenerWords::tr("No installed app opens “%1”.").arg(nameOf(url)));
  };
  whenKnown(
      [this, url, types, nobody, tell] {
        if (!apps_.loaded()) return false;
        const auto index = apps_.index();
        const DesktopEntry* entry = DefaultApplication::forTypes(types, *index);
        if (entry) {
          tell(launch(entry->path, *entry, {.urls = {url}}));
        } else {
          nobody();
        }
        return true;
      },
      nobody);
}

void AppOpener::openTrash(const QString& folder) {
  const auto nobody = [this] { Q_EMIT failed(AppOpenerWords::tr("No file manager is installed.")); };
  whenKnown(
      [this, folder, nobody] {
        if (!apps_.loaded()) return false;
        const auto index = apps_.index();
        const DesktopEntry* entry = StandardApplications::entryFor(StandardApplications::Purpose::Files, *index);
        if (!entry) {
          nobody();
          return true;
        }
        try {
          launch_.launch(*entry, {.urls = {QUrl(u"trash:///"_s)}});
          Q_EMIT started(entry->path);
        } catch (const DomainError&) {
          launch(entry->path, *entry, {.urls = {QUrl::fromLocalFile(folder)}});
        }
        return true;
      },
      nobody);
}

void AppOpener::whenKnown(std::function<bool()> attempt, std::function<void()> otherwise) {
  apps_.load();
  if (attempt()) return;
  const quint64 key = ++lastWaiting_;
  waiting_[key] = {std::move(attempt), scheduler_.after(kPatience, [this, key, otherwise = std::move(otherwise)] {
                     const auto waiting = waiting_.extract(key);
                     otherwise();
                   })};
}

void AppOpener::appsChanged() {
  // An attempt may begin another wait.
  QList<quint64> keys;
  for (const auto& [key, waiting] : waiting_) keys << key;
  for (const quint64 key : keys) {
    const auto found = waiting_.find(key);
    if (found != waiting_.end() && found->second.attempt()) waiting_.erase(key);
  }
}

}  // namespace tarnwick
