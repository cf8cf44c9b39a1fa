#include "app/SocketSession.h"

#include <QJsonArray>

#include "app/RestoreDock.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr int kAnswerWithinMs = 1000;

// Of a request: what is asked, and with what.
const QString kAsk = u"ask"_s;
const QString kActivate = u"activate"_s;
const QString kOpen = u"open"_s;
const QString kAct = u"act"_s;
const QString kUrls = u"urls"_s;
const QString kAction = u"action"_s;
const QString kParameter = u"parameter"_s;
// Of an answer: why something was not done.
const QString kRefused = u"refused"_s;

}  // namespace

SocketSession::SocketSession(const QString& directory) : directory_(directory), socket_(directory) {}

bool SocketSession::own() {
  return socket_.listen([this](const QJsonObject& request) { return answer(request); });
}

void SocketSession::release() { socket_.close(); }

bool SocketSession::activateOther() { return ask({}, kActivate); }

bool SocketSession::openInOther(const QStringList& urls) {
  return ask({{kUrls, QJsonArray::fromStringList(urls)}}, kOpen);
}

bool SocketSession::actInOther(const QString& action, const QVariantList& parameter) {
  return ask({{kAction, action}, {kParameter, QJsonArray::fromVariantList(parameter)}}, kAct);
}

bool SocketSession::ask(QJsonObject request, const QString& kind) {
  request.insert(kAsk, kind);
  const auto [answer, isAwaited] = InstanceSocket::ask(directory_, request, kAnswerWithinMs);
  refused_ = answer ? answer->value(kRefused).toString() : QString();
  // A copy that is only busy will do it; asked again it would do it twice.
  return isAwaited || (answer && !answer->isEmpty());
}

/// What may open windows or end the program waits until the answer is on its way.
QJsonObject SocketSession::answer(const QJsonObject& request) {
  const QString kind = request.value(kAsk).toString();
  const auto later = [this](auto signal) { QMetaObject::invokeMethod(this, signal, Qt::QueuedConnection); };
  if (kind == QLatin1StringView(RestoreDock::kRequest)) {
    return restoreDock ? restoreDock() : QJsonObject{{QLatin1StringView(RestoreDock::kHeld), false}};
  }
  if (kind == kActivate) {
    later([this] { Q_EMIT activated(); });
  } else if (kind == kOpen) {
    QStringList urls;
    for (const QJsonValue& url : request.value(kUrls).toArray()) urls << url.toString();
    // Those that can be opened are, and a user without a terminal sees what is said of the others.
    later([this, urls] { Q_EMIT openRequested(urls); });
    if (const QString sentence = refusalToOpen ? refusalToOpen(urls) : QString(); !sentence.isEmpty())
      return {{kRefused, sentence}};
  } else if (kind == kAct) {
    const QString action = request.value(kAction).toString();
    const QVariantList parameter = request.value(kParameter).toArray().toVariantList();
    if (const QString sentence = refusal ? refusal(action, parameter) : QString(); !sentence.isEmpty())
      return {{kRefused, sentence}};
    later([this, action, parameter] { Q_EMIT actionRequested(action, parameter); });
  } else {
    return {};
  }
  return {{u"taken"_s, true}};
}

}  // namespace tarnwick
