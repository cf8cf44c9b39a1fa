#include "desktop/ScreenIdentity.h"

#include <QSet>
#include <QUuid>
#include <algorithm>
#include <numeric>

namespace tarnwick {
namespace {

QString uuid(const QString& name) {
  // Settings refer to displays by what comes out of this, so the name space never changes.
  static const QUuid kNameSpace(0x5b0c3d2e, 0x7f41, 0x4a86, 0x9d, 0x13, 0x2c, 0xe8, 0x60, 0x9f, 0x4b, 0x77);
  return QUuid::createUuidV5(kNameSpace, name).toString(QUuid::WithoutBraces).toUpper();
}

}  // namespace

QStringList ScreenIdentity::assign(const QList<Source>& sources) {
  QList<qsizetype> order(sources.size());
  std::iota(order.begin(), order.end(), 0);
  std::ranges::stable_sort(order, {}, [&](qsizetype index) { return sources[index].connector; });

  QStringList identities(sources.size());
  QSet<QString> taken;
  for (const qsizetype index : order) {
    const Source& source = sources[index];
    if (!source.edid) {
      identities[index] = source.connector;
      continue;
    }
    const QString said = QStringLiteral("%1\n%2\n%3")
                             .arg(source.edid->maker, QString::number(source.edid->product), source.edid->serial);
    QString identity = uuid(said);
    if (taken.contains(identity)) identity = uuid(said + QLatin1Char('\n') + source.connector);
    taken.insert(identity);
    identities[index] = identity;
  }
  return identities;
}

}  // namespace tarnwick
