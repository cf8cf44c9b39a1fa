#include "platform/dbus/GSettingsKey.h"

#include <QDBusMessage>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

}  // namespace

GSettingsKey::GSettingsKey(const QDBusConnection& session, const QString& schema, const QString& key, QObject* parent)
    : QObject(parent),
      writer_(session, u"ca.desrt.dconf"_s),
      schema_(schema),
      key_(key),
      path_(u'/' + QString(schema).replace(u'.', u'/') + u'/' + key) {
  writer_.listen(QString(), u"ca.desrt.dconf.Writer"_s, u"Notify"_s, [this](const QDBusMessage& signal) {
    // A whole folder (or many keys below it) may be announced at once.
    const auto prefix = signal.arguments().value(0).toString();
    if (path_.startsWith(prefix)) read();
  });
  // The service is started by the first write, which may be over before its signal can be received.
  connect(&writer_, &BusService::ownerChanged, this, [this] {
    if (writer_.isRunning()) read();
  });
  read();
}

GSettingsKey::~GSettingsKey() {
  if (!process_) return;
  process_->disconnect(this);
  process_->kill();
  process_->waitForFinished(1000);
}

void GSettingsKey::set(const QString& value) {
  wanted_ = value;
  if (!process_) next();
}

void GSettingsKey::read() {
  readAgain_ = true;
  if (!process_) next();
}

void GSettingsKey::next() {
  QStringList arguments;
  writing_ = wanted_.has_value();
  if (writing_) {
    arguments = {u"set"_s, schema_, key_, *std::exchange(wanted_, std::nullopt)};
    readAgain_ = true;
  } else if (std::exchange(readAgain_, false)) {
    arguments = {u"get"_s, schema_, key_};
  } else {
    return;
  }
  process_ = std::make_unique<QProcess>();
  process_->setStandardErrorFile(QProcess::nullDevice());
  connect(process_.get(), &QProcess::finished, this,
          [this](int code, QProcess::ExitStatus status) { finished(status == QProcess::NormalExit && code == 0); });
  connect(process_.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) finished(false);
  });
  process_->start(u"gsettings"_s, arguments, QIODevice::ReadOnly);
}

void GSettingsKey::finished(bool succeeded) {
  // The process is still emitting, so it is only put aside.
  const auto output = succeeded ? QString::fromUtf8(process_->readAllStandardOutput()).trimmed() : QString();
  process_.release()->deleteLater();
  if (!writing_) {
    known_ = true;
    value_ = succeeded ? std::optional(output) : std::nullopt;
  }
  const bool settled = !writing_;
  next();
  if (settled) Q_EMIT changed();
}

}  // namespace tarnwick
