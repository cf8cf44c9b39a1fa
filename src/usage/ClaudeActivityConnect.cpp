#include "usage/ClaudeActivityConnect.h"

#include <sys/stat.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/ModuleLoader.h"
#include "usage/ClaudeHooks.h"
#include "usage/UsageReaderWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView kOwnOptions[] = {option::claudeSettings, option::claudeHookExecutable,
                                             option::connectionMode, option::historyDirectory};

}  // namespace

ClaudeActivityConnect::ClaudeActivityConnect(QStringList executables, QString directory)
    : executables_(std::move(executables)), directory_(std::move(directory)) {
  executables_.removeAll(QString());
}

ClaudeActivityConnect ClaudeActivityConnect::ofProgram(const QString& dataDirectory) {
  return {{ModuleLoader::find(u"tarnwick-claude-hook"_s), QCoreApplication::applicationFilePath()},
          folderIn(dataDirectory)};
}

QString ClaudeActivityConnect::folderIn(const QString& dataDirectory) { return dataDirectory + u"/ClaudeActivity"_s; }

QString ClaudeActivityConnect::usualConfiguration() { return QDir::homePath() + u"/.claude"_s; }

bool ClaudeActivityConnect::isInstalled(const DockWidget& widget) {
  return !widget.options.value(option::claudeSettings).isEmpty();
}

QStringList ClaudeActivityConnect::executablesFor(const DockWidget& widget) const {
  QStringList all = executables_;
  const QString before = widget.options.value(option::claudeHookExecutable);
  if (!before.isEmpty() && !all.contains(before)) all.append(before);
  if (all.isEmpty()) throw DomainError::invalid(UsageReaderWords::tr("The app executable could not be located."));
  return all;
}

DockWidget ClaudeActivityConnect::installed(DockWidget widget, const QString& configuration) const {
  if (executables_.isEmpty())
    throw DomainError::invalid(UsageReaderWords::tr("The app executable could not be located."));
  const QString settings = configuration + u"/settings.json"_s;
  DurableFile::makeParent(directory_);
  if (::mkdir(QFile::encodeName(directory_).constData(), 0700) != 0 && errno != EEXIST)
    throw DomainError::invalid(UsageReaderWords::tr("The folder for Claude’s activity could not be made."));
  ClaudeHooks::install(settings, executablesFor(widget), directory_, false);
  widget.options.insert(option::claudeHookExecutable, executables_.first());
  widget.options.insert(option::claudeSettings, settings);
  widget.options.insert(option::connectionMode, value::claudeActivity);
  widget.options.insert(option::historyDirectory, directory_);
  widget.options.remove(option::endpoint);
  return widget;
}

DockWidget ClaudeActivityConnect::connected(DockWidget widget, const DockWidget& changed) {
  for (const QLatin1StringView key : kOwnOptions) {
    widget.options.remove(key);
    if (changed.options.contains(key)) widget.options.insert(key, changed.options.value(key));
  }
  if (isInstalled(changed)) widget.options.remove(option::endpoint);
  return widget;
}

DockWidget ClaudeActivityConnect::removed(DockWidget widget) const {
  const QString directory = widget.options.value(option::historyDirectory, directory_);
  const QString settings = widget.options.value(option::claudeSettings);
  if (!settings.isEmpty()) ClaudeHooks::install(settings, executablesFor(widget), directory, true);
  for (const QLatin1StringView key : kOwnOptions) widget.options.remove(key);
  return widget;
}

}  // namespace tarnwick
