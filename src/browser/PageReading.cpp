#include "browser/PageReading.h"

#include <QVariant>
#include <QWebEngineScript>
#include <utility>

namespace tarnwick {

namespace {

constexpr int kLookMilliseconds = 50;
constexpr int kDeadlineMilliseconds = (BrowserLimits::seconds - 2) * 1000;
constexpr quint32 kOwnWorld = QWebEngineScript::ApplicationWorld;

/// %1 is the origin of the service. What a script gives is not waited for, so it leaves its answer behind.
const char16_t* const kAsk =
    uR"((() => {
  const answer = globalThis.tarnwickAnswer = {text: null, isOver: false};
  const read = async () => {
    if (location.origin !== '%1') throw new Error('Wrong account page');
    const controller = new AbortController();
    const timer = setTimeout(() => controller.abort(), 12000);
    try {
      const response = await fetch('/rest/rate-limit/all', {credentials: 'same-origin', mode: 'same-origin',
        redirect: 'error', signal: controller.signal, headers: {Accept: 'application/json'}});
      const body = await response.text();
      if (body.length > 1048576) throw new Error('Response too large');
      return JSON.stringify({status: response.status, body});
    } finally {
      clearTimeout(timer);
    }
  };
  read().then(text => { answer.text = text; }, () => {}).finally(() => { answer.isOver = true; });
})();)";
/// The text, false for none, and null as long as it is not over.
const char16_t* const kLook =
    u"(() => { const answer = globalThis.tarnwickAnswer;"
    u" return answer && answer.isOver ? answer.text ?? false : null; })();";

QString originOf(const QUrl& address) {
  return address.toString(QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment);
}

}  // namespace

PageReading::PageReading(const QUrl& home, QWebEngineProfile& profile, Done done)
    : home_(home), page_(home, ServicePage::Roaming::OwnHost, profile), done_(std::move(done)) {
  pause_.setSingleShot(true);
  deadline_.setSingleShot(true);
  QObject::connect(&pause_, &QTimer::timeout, &page_, [this] { look(); });
  QObject::connect(&deadline_, &QTimer::timeout, &page_,
                   [this] { end(page_.isLoading() ? BrowserExit::Unloaded : BrowserExit::Unanswered); });
  QObject::connect(&page_, &QWebEnginePage::loadingChanged, &page_,
                   [this](const QWebEngineLoadingInfo& loading) { follow(loading.status()); });
  QObject::connect(&page_, &QWebEnginePage::renderProcessTerminated, &page_, [this] { end(BrowserExit::Unanswered); });
}

void PageReading::start() {
  deadline_.start(kDeadlineMilliseconds);
  page_.load(home_);
}

/// A page that was refused to start another program stops loading, and is there nevertheless.
void PageReading::follow(QWebEngineLoadingInfo::LoadStatus status) {
  if (status == QWebEngineLoadingInfo::LoadStartedStatus) return;
  if (page_.wasLedAway()) return end(BrowserExit::Elsewhere);
  if (status == QWebEngineLoadingInfo::LoadFailedStatus) return end(BrowserExit::Unloaded);
  if (!page_.isOwn(page_.url())) return end(BrowserExit::Elsewhere);
  if (!pause_.isActive()) ask();
}

void PageReading::ask() {
  page_.runJavaScript(QString::fromUtf16(kAsk).arg(originOf(home_)), kOwnWorld);
  pause_.start(kLookMilliseconds);
}

void PageReading::look() {
  page_.runJavaScript(QString::fromUtf16(kLook), kOwnWorld, [this](const QVariant& found) {
    if (!done_) return;
    if (found.typeId() == QMetaType::QString) return end(BrowserExit::Answered, found.toString());
    if (found.typeId() == QMetaType::Bool) return end(BrowserExit::Unanswered);
    pause_.start(kLookMilliseconds);
  });
}

void PageReading::end(BrowserExit exit, const QString& text) {
  pause_.stop();
  deadline_.stop();
  if (const Done done = std::exchange(done_, nullptr)) done(exit, text);
}

}  // namespace tarnwick
