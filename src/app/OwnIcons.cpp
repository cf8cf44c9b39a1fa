#include "app/OwnIcons.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <algorithm>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "store/AppStore.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString fileOf(const QString& folder, const QString& asset) { return folder + u'/' + asset + ".dat"_L1; }

/// Names of assets come from a file that anybody may have written.
bool isAsset(const QString& name) {
  constexpr qsizetype kDigits = 64;
  return name.size() == kDigits &&
         std::ranges::all_of(name, [](QChar c) { return c.isDigit() || (c >= u'a' && c <= u'f'); });
}

QImage decoded(const QByteArray& data) {
  if (data.isEmpty()) throw DomainError::invalid(OwnIcons::tr("That file is empty."));
  QBuffer buffer;
  buffer.setData(data);
  QImageReader reader(&buffer);
  if (!reader.canRead()) throw DomainError::invalid(OwnIcons::tr("That file couldn't be read as an image."));
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  const QSize room(OwnIcons::kSide, OwnIcons::kSide);
  const bool isVector = reader.format().startsWith("svg");
  if (!size.isEmpty() && (isVector || size != size.boundedTo(room)))
    reader.setScaledSize(size.scaled(room, Qt::KeepAspectRatio));
  const QImage image = reader.read();
  if (image.isNull()) throw DomainError::invalid(OwnIcons::tr("That image couldn't be decoded. It may be damaged."));
  return image;
}

/// Keeps a picture under the digest of its bytes, the same one once, and gives that name.
QString keep(const QString& picture, const QString& folder) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  decoded(DurableFile::read(picture)).save(&buffer, "PNG");
  const QString asset = QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
  DurableFile::write(bytes, fileOf(folder, asset));
  return asset;
}

}  // namespace

OwnIcons::~OwnIcons() { pool_.waitForDone(); }

QString OwnIcons::folder() const { return QDir(store_.dataDirectory()).filePath(u"Assets"_s); }

QString OwnIcons::keyOf(const QString& entryPath) const {
  const QString id = apps_.environment().desktopIdOf(entryPath);
  return id.isEmpty() ? entryPath : id;
}

QString OwnIcons::assetOf(const QString& entryPath) const {
  const auto& desktop = store_.config().desktop;
  if (!desktop || desktop->customAppIcons.isEmpty()) return {};
  return desktop->customAppIcons.value(keyOf(entryPath));
}

bool OwnIcons::has(const QString& entryPath) const { return !assetOf(entryPath).isEmpty(); }

QString OwnIcons::iconOf(const QString& entryPath) {
  const QString asset = assetOf(entryPath);
  if (!isAsset(asset)) return {};
  const QString file = fileOf(folder(), asset);
  auto known = exists_.constFind(asset);
  if (known == exists_.constEnd()) known = exists_.insert(asset, QFileInfo::exists(file));
  return *known ? file : QString();
}

void OwnIcons::choose(const QString& entryPath, const QString& picture) {
  const auto use = [this, entryPath](const QString& asset) {
    exists_.remove(asset);
    store_.edit([&](DockConfiguration& config) {
      DesktopOptions options = config.desktopOptions();
      options.customAppIcons.insert(keyOf(entryPath), asset);
      config.desktop = options;
    });
  };
  pool_.start([this, use, picture, into = folder()] {
    QString asset;
    QString failure;
    try {
      asset = keep(picture, into);
    } catch (const std::exception& error) {
      failure = QString::fromUtf8(error.what());
    }
    const auto answer = [this, use, asset, failure] { failure.isEmpty() ? use(asset) : store_.setError(failure); };
    QMetaObject::invokeMethod(this, answer, Qt::QueuedConnection);
  });
}

/// The picture stays: a look that was saved may show it still.
void OwnIcons::reset(const QString& entryPath) {
  store_.edit([&](DockConfiguration& config) {
    DesktopOptions options = config.desktopOptions();
    options.customAppIcons.remove(keyOf(entryPath));
    config.desktop = options;
  });
}

}  // namespace tarnwick
