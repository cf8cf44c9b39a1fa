#include "config/KeptSettings.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "config/ContentJournal.h"
#include "config/SettingsLoader.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {
namespace {

struct KeptSettingsWords {
  Q_DECLARE_TR_FUNCTIONS(KeptSettings)
};

constexpr qsizetype kLongestName = 80;

bool isUsable(const QJsonValue& value, QSet<QUuid>& seen) {
  try {
    const DockWidget widget = DockConfiguration::validated(RecordCodec::fromValue<DockWidget>(value));
    if (seen.contains(widget.id)) return false;
    seen.insert(widget.id);
    return true;
  } catch (const DomainError&) {
    return false;
  }
}

QString nameOf(const QJsonValue& value) {
  const QJsonObject widget = value.toObject();
  const QString kind = wellFormed(widget.value(u"kind").toString()).simplified().left(kLongestName);
  const QString title = wellFormed(widget.value(u"title").toString()).simplified().left(kLongestName);
  const QString shown = Catalog::contains(kind) ? Catalog::find(kind).name : kind;
  if (shown.isEmpty()) return KeptSettingsWords::tr("A damaged widget");
  return title.isEmpty() ? shown : KeptSettingsWords::tr("%1 (%2)").arg(title, shown);
}

QJsonArray usableOf(const QJsonArray& widgets, QSet<QUuid>& seen, QStringList& leftOut) {
  QJsonArray usable;
  for (const QJsonValue& widget : widgets) {
    if (isUsable(widget, seen)) {
      usable.append(widget);
    } else {
      leftOut << nameOf(widget);
    }
  }
  return usable;
}

}  // namespace

KeptSettings::Decoded KeptSettings::decode(const QByteArray& json) {
  QJsonObject document = RecordCodec::parse(json).toObject();
  QJsonArray profiles = document.value(u"profiles").toArray();
  QSet<QUuid> seen;
  Decoded decoded;
  for (qsizetype i = 0; i < profiles.size(); ++i) {
    QJsonObject profile = profiles.at(i).toObject();
    const QJsonValue widgets = profile.value(u"widgets");
    // What is damaged in another way is for the codec to refuse.
    if (!widgets.isArray()) continue;
    profile.insert(u"widgets", usableOf(widgets.toArray(), seen, decoded.leftOut));
    profiles.replace(i, profile);
  }
  if (!decoded.leftOut.isEmpty()) document.insert(u"profiles", profiles);
  decoded.configuration = RecordCodec::fromValue<DockConfiguration>(document);
  decoded.configuration.validate();
  return decoded;
}

DockConfiguration KeptSettings::read(const QString& file) {
  DockConfiguration configuration = decode(DurableFile::read(file)).configuration;
  ContentLine::apply(ContentJournal::kept(SettingsLoader::contentBeside(file)), configuration);
  return configuration;
}

}  // namespace tarnwick
