#pragma once

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <functional>

#include "dock/ports/DockGuard.h"
#include "dock/ports/DockPreferenceAccess.h"

namespace tarnwick {

/// A dock whose settings are a file, written with every call, so that a process that dies leaves what it had done.
class FakeDock final : public DockPreferenceAccess, public DockGuard {
 public:
  explicit FakeDock(const QString& path) : path_(path) {}

  /// Every call in order, except reads of the capability.
  QStringList journal;
  /// Called before each; may throw or end the process.
  std::function<void(const QString& call)> before = [](const QString&) {};
  /// Answers of `synchronize` in order; true when used up.
  QList<bool> answers;
  bool canHide = true;
  /// The key whose values count as no records.
  QString refuses;

  QVariantMap values() const { return QJsonDocument::fromJson(bytes()).object().toVariantMap(); }
  void setValues(const QVariantMap& values) const {
    QFile file(path_);
    file.open(QIODevice::WriteOnly);
    file.write(QJsonDocument(QJsonObject::fromVariantMap(values)).toJson());
  }
  QByteArray bytes() const {
    QFile file(path_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  void appear() const { dockAppeared(); }

  QVariant read(const QString& key) override {
    note(QStringLiteral("read ") + key);
    return values().value(key);
  }
  bool isOwnRecord(const QString& key, const QVariant&) const override { return key != refuses; }
  void write(const QString& key, const QVariant& value) override {
    note(QStringLiteral("write ") + key + u' ' + (value.isValid() ? value.toString() : QStringLiteral("nothing")));
    QVariantMap all = values();
    all.remove(key);
    if (value.isValid()) all.insert(key, value);
    setValues(all);
  }
  bool synchronize() override {
    note(QStringLiteral("synchronize"));
    return answers.isEmpty() || answers.takeFirst();
  }
  void restart() override { note(QStringLiteral("restart")); }
  Capability capability() override { return canHide ? Capability::yes() : Capability::no(QStringLiteral("No dock.")); }

  void watch(const QString&) override { note(QStringLiteral("watch")); }
  void release() override { note(QStringLiteral("release")); }

 private:
  void note(const QString& call) {
    before(call);
    journal << call;
  }

  QString path_;
};

}  // namespace tarnwick
