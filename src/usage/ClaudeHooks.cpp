#include "usage/ClaudeHooks.h"

#include <fcntl.h>

#include <QFile>
#include <QFileInfo>
#include <QUuid>
#include <cerrno>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/SmallFile.h"
#include "claudehook/ActivityRecord.h"
#include "usage/UsageReaderWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr std::string_view kHooks = "hooks";
constexpr qint64 kMostBytes = 8 * 1024 * 1024;

DomainError unreadable() {
  return DomainError::invalid(UsageReaderWords::tr("Claude settings could not be read; no settings were changed."));
}
DomainError incomplete() { return DomainError::invalid(UsageReaderWords::tr("A Claude hook group is incomplete.")); }

DomainError changedMeanwhile() {
  return DomainError::invalid(UsageReaderWords::tr("Claude settings changed while preparing the hooks. Try again."));
}

QString quoted(QString word) { return u'\'' + word.replace(u'\'', u"'\\''"_s) + u'\''; }

JSONNode groupOf(const std::string& command) {
  JSONNode hook = JSONNode::object();
  hook.set("type", JSONNode::text("command"));
  hook.set("command", JSONNode::text(command));
  hook.set("timeout", {JSONNode::Kind::Number, "5", {}, {}});
  hook.set("async", {JSONNode::Kind::Boolean, "true", {}, {}});
  JSONNode list = JSONNode::array();
  list.items.push_back(std::move(hook));
  JSONNode group = JSONNode::object();
  group.set("matcher", JSONNode::text(""));
  group.set(kHooks, std::move(list));
  return group;
}

bool runs(const JSONNode& entry, const std::string& command) {
  if (entry.kind != JSONNode::Kind::Object)
    throw DomainError::invalid(UsageReaderWords::tr("A Claude hook entry has an unsupported format."));
  const JSONNode* told = entry.find("command");
  return told && told->value() == command;
}

/// The groups of an event without our hook; one that held nothing else is gone.
JSONNode withoutOurs(const JSONNode& groups, const std::string& command) {
  if (groups.kind != JSONNode::Kind::Array) throw incomplete();
  JSONNode kept = JSONNode::array();
  for (const JSONNode& group : groups.items) {
    const JSONNode* hooks = group.kind == JSONNode::Kind::Object ? group.find(kHooks) : nullptr;
    if (!hooks || hooks->kind != JSONNode::Kind::Array) throw incomplete();
    JSONNode others = JSONNode::array();
    for (const JSONNode& entry : hooks->items)
      if (!runs(entry, command)) others.items.push_back(entry);
    if (others.items.size() == hooks->items.size()) {
      kept.items.push_back(group);
    } else if (!others.items.empty()) {
      kept.items.push_back(group);
      kept.items.back().set(kHooks, std::move(others));
    }
  }
  return kept;
}

/// What stands in the settings file; absent where there is none.
std::optional<QByteArray> bytesOf(const QString& path) {
  auto bytes = SmallFile::readUnlinked(AT_FDCWD, QFile::encodeName(path).constData(), kMostBytes);
  if (bytes || errno == ENOENT) return bytes;
  if (errno == ELOOP)
    throw DomainError::invalid(
        UsageReaderWords::tr("Choose the real Claude settings file; its current path is a symbolic link."));
  throw unreadable();
}

JSONNode settingsIn(const QByteArray& bytes) {
  auto settings = parseJSON({bytes.constData(), static_cast<std::size_t>(bytes.size())});
  if (!settings || settings->kind != JSONNode::Kind::Object) throw unreadable();
  return *std::move(settings);
}

/// A new file with what was there before, for its owner alone like the one that it is a copy of.
QString backUp(const QByteArray& bytes, const QString& settings) {
  const QString path = QFileInfo(settings).absolutePath() + u"/settings.tarnwick-backup-"_s +
                       QUuid::createUuid().toString(QUuid::WithoutBraces) + u".json"_s;
  QFile copy(path);
  const bool isWhole = copy.open(QIODevice::WriteOnly | QIODevice::NewOnly) &&
                       copy.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) &&
                       copy.write(bytes) == bytes.size() && copy.flush();
  if (isWhole) return path;
  const QString reason = copy.errorString();
  if (copy.isOpen()) copy.remove();
  throw DomainError::invalid(
      UsageReaderWords::tr("The Claude settings could not be copied first, so they were not changed: %1").arg(reason));
}

}  // namespace

QString ClaudeHooks::command(const QString& executable, const QString& directory) {
  return quoted(executable) + u" --claude-hook "_s + quoted(directory);
}

JSONNode ClaudeHooks::merging(JSONNode settings, const QString& executable, const QString& directory, bool remove) {
  const JSONNode* found = settings.find(kHooks);
  if (found && found->kind != JSONNode::Kind::Object)
    throw DomainError::invalid(
        UsageReaderWords::tr("Claude settings has an unsupported hooks value; no settings were changed."));
  JSONNode hooks = found ? *found : JSONNode::object();
  const std::string ours = command(executable, directory).toStdString();
  for (const auto& [event, state] : kClaudeActivityStates) {
    const JSONNode* before = hooks.find(event);
    JSONNode groups = before ? withoutOurs(*before, ours) : JSONNode::array();
    if (!remove) groups.items.push_back(groupOf(ours));
    if (groups.items.empty())
      hooks.remove(event);
    else
      hooks.set(event, std::move(groups));
  }
  if (hooks.members.empty())
    settings.remove(kHooks);
  else
    settings.set(kHooks, std::move(hooks));
  return settings;
}

ClaudeHooks::Change ClaudeHooks::prepared(const QString& settings, const QStringList& executables,
                                          const QString& directory, bool remove) {
  std::optional<QByteArray> before = bytesOf(settings);
  JSONNode wanted = before ? settingsIn(*before) : JSONNode::object();
  for (const QString& executable : executables) wanted = merging(std::move(wanted), executable, directory, true);
  if (!remove) wanted = merging(std::move(wanted), executables.value(0), directory, false);
  return {settings, std::move(before), QByteArray::fromStdString(prettyJSON(wanted)), remove};
}

void ClaudeHooks::write(const Change& change) {
  const auto stamp = DurableFile::stamp(change.settings);
  if (bytesOf(change.settings) != change.before) throw changedMeanwhile();
  if (!change.before) {
    if (!change.isRemoval) DurableFile::writeAtomically(change.after, change.settings, DurableFile::kPrivate);
    return;
  }
  const QString copy = backUp(*change.before, change.settings);
  try {
    if (stamp && DurableFile::replace(change.after, change.settings, *stamp)) return;
  } catch (...) {
    QFile::remove(copy);
    throw;
  }
  QFile::remove(copy);
  throw changedMeanwhile();
}

void ClaudeHooks::install(const QString& settings, const QStringList& executables, const QString& directory,
                          bool remove) {
  write(prepared(settings, executables, directory, remove));
}

}  // namespace tarnwick
