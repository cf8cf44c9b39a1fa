#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QVersionNumber>
#include <algorithm>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "base/SmallFile.h"
#include "usage/CodexUsage.h"
#include "usage/UsageReaderWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kChunk = 8192;
constexpr qint64 kMostSettings = 64 * 1024;
constexpr int kInitialize = 1;
constexpr int kReadLimits = 2;

QByteArray line(const QJsonObject& object) { return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n'; }

QByteArray greeting() {
  const QJsonObject client{
      {u"name"_s, u"tarnwick"_s}, {u"title"_s, u"Tarnwick"_s}, {u"version"_s, QString::fromLatin1(TARNWICK_VERSION)}};
  return line(
      {{u"id"_s, kInitialize}, {u"method"_s, u"initialize"_s}, {u"params"_s, QJsonObject{{u"clientInfo"_s, client}}}});
}

QByteArray question() {
  return line({{u"method"_s, u"initialized"_s}}) +
         line({{u"id"_s, kReadLimits}, {u"method"_s, u"account/rateLimits/read"_s}});
}

DomainError interrupted() {
  return DomainError::invalid(UsageReaderWords::tr("The Codex usage connection was interrupted."));
}

constexpr auto kName = "/codex"_L1;

/// The versions that a manager keeps in folders of their own, the newest first: v22 is newer than v9.
QStringList inVersions(const QString& folder) {
  QStringList versions = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
  const auto number = [](const QString& name) { return QVersionNumber::fromString(QStringView(name).mid(1)); };
  std::ranges::sort(versions, std::greater(), number);
  for (QString& version : versions) version = folder + u'/' + version + u"/bin"_s;
  return versions;
}

/// What a variable says, or else a folder in the user's home.
QString folderOf(const char* variable, const QString& usual) {
  const QString told = qEnvironmentVariable(variable);
  return told.isEmpty() ? QDir::homePath() + u'/' + usual : told;
}

/// Where npm puts programs for the user alone, if its settings say so.
QStringList ofNpm() {
  const QString home = QDir::homePath();
  QStringList found;
  for (const QByteArray& line :
       SmallFile::read(home + u"/.npmrc"_s, kMostSettings).value_or(QByteArray()).split('\n')) {
    const QString text = QString::fromUtf8(line).simplified().remove(u' ');
    if (!text.startsWith("prefix="_L1)) continue;
    QString prefix = text.sliced(7).remove(u'"');
    if (prefix.startsWith(u'~')) prefix.replace(0, 1, home);
    prefix.replace(u"${HOME}"_s, home);
    if (prefix.startsWith(u'/')) found << prefix + u"/bin"_s;
  }
  return found << home + u"/.npm-global/bin"_s << home + u"/.npm-packages/bin"_s;
}

}  // namespace

QString CodexRPCRead::defaultExecutable() {
  const QString home = QDir::homePath();
  QStringList places{home + u"/.local/bin"_s, u"/usr/local/bin"_s, u"/usr/bin"_s};
  places << ofNpm() << u"/home/linuxbrew/.linuxbrew/bin"_s << home + u"/.linuxbrew/bin"_s
         << folderOf("VOLTA_HOME", u".volta"_s) + u"/bin"_s << folderOf("ASDF_DATA_DIR", u".asdf"_s) + u"/shims"_s
         << inVersions(folderOf("NVM_DIR", u".nvm"_s) + u"/versions/node"_s)
         << qEnvironmentVariable("PATH").split(u':', Qt::SkipEmptyParts);
  for (const QString& place : std::as_const(places))
    if (const QFileInfo file(place + kName); file.isAbsolute() && file.isFile() && file.isExecutable())
      return place + kName;
  return u"/usr/bin/codex"_s;
}

QJsonObject CodexRPCRead::run(const QString& executable, const StartChild& start, double timeout,
                              const std::stop_token& stop) {
  if (const QFileInfo file(executable); !file.isAbsolute() || !file.isFile() || !file.isExecutable())
    throw DomainError::invalid(UsageReaderWords::tr("Select the installed Codex executable in Connection Settings."));
  const QDeadlineTimer deadline(std::chrono::milliseconds(std::llround(timeout * 1000)));
  throwIfStopped(stop);
  const auto child = start(executable, {u"app-server"_s, u"--listen"_s, u"stdio://"_s}, stop);
  if (!child || !child->write(greeting())) throw interrupted();

  QByteArray waiting;
  qint64 total = 0;
  int asked = kInitialize;
  for (;;) {
    const qsizetype before = waiting.size();
    const auto reading = child->read(waiting, kChunk, static_cast<int>(deadline.remainingTime()));
    total += waiting.size() - before;
    if (reading == ChildExchange::Reading::Cancelled) throw Cancelled();
    if (total > kMostBytes)
      throw DomainError::invalid(UsageReaderWords::tr("The Codex response exceeded the size limit."));
    if (deadline.hasExpired() || reading == ChildExchange::Reading::TimedOut)
      throw DomainError::invalid(
          UsageReaderWords::tr("Codex did not return usage within %1 seconds. Check your CLI installation and sign-in.")
              .arg(static_cast<int>(timeout)));
    if (reading == ChildExchange::Reading::Ended) throw interrupted();
    for (qsizetype end = waiting.indexOf('\n', before); end >= 0; end = waiting.indexOf('\n')) {
      const QJsonObject answer = QJsonDocument::fromJson(waiting.first(end)).object();
      waiting.remove(0, end + 1);
      const QJsonValue id = answer.value("id"_L1);
      if (!id.isDouble() || id.toDouble() != asked) continue;
      if (!answer.value("result"_L1).isObject())
        throw DomainError::invalid(UsageReaderWords::tr(
            "Codex could not read usage. Sign in to Codex with your ChatGPT account, then reconnect."));
      if (asked == kReadLimits) return answer.value("result"_L1).toObject();
      asked = kReadLimits;
      if (!child->write(question())) throw interrupted();
    }
  }
}

}  // namespace tarnwick
