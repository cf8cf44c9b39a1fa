#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "usage/CodexUsage.h"
#include "usage/UsageReaderWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kChunk = 8192;
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

/// The newest of the versions that a version manager keeps in folders of its own.
QStringList inVersions(const QString& folder) {
  QStringList found;
  for (const QString& version : QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed))
    found << folder + u'/' + version + u"/bin/codex"_s;
  return found;
}

}  // namespace

QString CodexRPCRead::defaultExecutable() {
  const QString home = QDir::homePath();
  QStringList places{home + u"/.local/bin/codex"_s,
                     u"/usr/local/bin/codex"_s,
                     u"/usr/bin/codex"_s,
                     home + u"/.npm-global/bin/codex"_s,
                     u"/home/linuxbrew/.linuxbrew/bin/codex"_s,
                     home + u"/.linuxbrew/bin/codex"_s,
                     home + u"/.volta/bin/codex"_s,
                     home + u"/.asdf/shims/codex"_s};
  places += inVersions(home + u"/.nvm/versions/node"_s);
  for (const QString& place : places)
    if (const QFileInfo file(place); file.isFile() && file.isExecutable()) return place;
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
