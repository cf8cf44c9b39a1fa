#include "platform/kwin/KWinScript.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QDBusVirtualObject>
#include <QDir>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <QTimer>
#include <QUuid>

#include "platform/kwin/KWinCalls.h"
#include "platform/kwin/KWinScriptText.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Absent where there is no answer, or none but a refusal.
std::optional<QVariantList> answerOf(const QDBusMessage& call) {
  QDBusPendingCall pending =
      QDBusConnection::sessionBus().asyncCall(call, static_cast<int>(KWinScript::kPatience.count()));
  pending.waitForFinished();
  return pending.isError() ? std::nullopt : std::optional(pending.reply().arguments());
}

std::optional<QVariantList> ofScripting(const QString& method, const QVariantList& arguments) {
  return answerOf(KWinCalls::scripting(method, arguments));
}

/// Where KWin reads the script from.
QString folder() {
  const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  return runtime.isEmpty() ? QDir::tempPath() : runtime;
}

}  // namespace

/// Hears what the script asks, for as long as somebody waits for it. Belongs to the thread that waits.
class KWinScript::Ear final : public QDBusVirtualObject {
 public:
  explicit Ear(const QString& path) : path_(path) {
    bus_.registerVirtualObject(path_, this, QDBusConnection::SingleNode);
  }
  ~Ear() override { bus_.unregisterObject(path_); }

  std::optional<QDBusMessage> wait(std::chrono::milliseconds patience) {
    if (!heard_) {
      QTimer end;
      end.setSingleShot(true);
      QObject::connect(&end, &QTimer::timeout, &loop_, &QEventLoop::quit);
      end.start(patience);
      loop_.exec();
    }
    return heard_;
  }

 private:
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
    if (message.member() != "next"_L1) return false;
    message.setDelayedReply(true);
    heard_ = message;
    loop_.quit();
    return true;
  }

  QDBusConnection bus_ = QDBusConnection::sessionBus();
  const QString path_;
  QEventLoop loop_;
  std::optional<QDBusMessage> heard_;
};

KWinScript::KWinScript()
    : name_(u"tarnwick-"_s + QUuid::createUuid().toString(QUuid::Id128)),
      path_(u"/com/brindlemoor/Tarnwick/Script/"_s + name_.section(u'-', 1)) {}

bool KWinScript::isOffered() { return answerOf(KWinCalls::hasScript(u"tarnwick"_s)).has_value(); }

bool KWinScript::begin() {
  QTemporaryFile file(folder() + u"/tarnwick-XXXXXX.js"_s);
  if (!file.open()) return false;
  QString text = kKWinScriptText;
  text.replace("SERVICE"_L1, QDBusConnection::sessionBus().baseService())
      .replace("PATH"_L1, path_)
      .replace("NAME"_L1, name_);
  file.write(text.toUtf8());
  file.flush();
  Ear ear(path_);
  const auto loaded = ofScripting(u"loadScript"_s, {file.fileName(), name_});
  if (!loaded || loaded->value(0, -1).toInt() < 0) return false;
  isLoaded_ = true;
  // Each by itself cannot be started: before version 6 two of them may have the same place on the bus.
  if (!ofScripting(u"start"_s, {})) return false;
  asking_ = ear.wait(kPatience);
  if (asking_ && compositor_ == 0)
    compositor_ = static_cast<int>(QDBusConnection::sessionBus().interface()->servicePid(u"org.kde.KWin"_s).value());
  return asking_.has_value();
}

std::optional<QJsonValue> KWinScript::ask(const QJsonObject& order, std::chrono::milliseconds patience) {
  if (!asking_ && !begin()) {
    end();
    return std::nullopt;
  }
  Ear ear(path_);
  QDBusConnection::sessionBus().send(
      asking_->createReply(QString::fromUtf8(QJsonDocument(order).toJson(QJsonDocument::Compact))));
  asking_ = ear.wait(patience + kPatience);
  if (!asking_) {
    end();
    return std::nullopt;
  }
  // A value alone is no document.
  const QByteArray answer = '[' + asking_->arguments().value(0).toString().toUtf8() + ']';
  return QJsonDocument::fromJson(answer).array().first();
}

void KWinScript::end() {
  asking_.reset();
  if (!std::exchange(isLoaded_, false)) return;
  ofScripting(u"unloadScript"_s, {name_});
}

}  // namespace tarnwick
