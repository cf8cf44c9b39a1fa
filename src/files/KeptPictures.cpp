#include "files/KeptPictures.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QImageReader>
#include <algorithm>

#include "base/DomainError.h"
#include "base/DurableFile.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct KeptPicturesWords {
  Q_DECLARE_TR_FUNCTIONS(KeptPictures)
};

constexpr int kQuality = 92;

DomainError failure(const char* sentence) { return DomainError::invalid(KeptPicturesWords::tr(sentence)); }

/// Names come from a settings file that anybody may have written.
bool isName(const QString& name) {
  constexpr qsizetype kDigits = 64;
  return name.size() == kDigits &&
         std::ranges::all_of(name, [](QChar c) { return c.isDigit() || (c >= u'a' && c <= u'f'); });
}

QImage decoded(const QByteArray& data, int side) {
  if (data.isEmpty()) throw failure(QT_TRANSLATE_NOOP("KeptPictures", "That file is empty."));
  QBuffer buffer;
  buffer.setData(data);
  QImageReader reader(&buffer);
  if (!reader.canRead()) throw failure(QT_TRANSLATE_NOOP("KeptPictures", "That file couldn't be read as an image."));
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  const QSize bounds(side, side);
  const bool isVector = reader.format().startsWith("svg");
  if (!size.isEmpty() && (isVector || size != size.boundedTo(bounds)))
    reader.setScaledSize(size.scaled(bounds, Qt::KeepAspectRatio));
  const QImage image = reader.read();
  if (image.isNull())
    throw failure(QT_TRANSLATE_NOOP("KeptPictures", "That image couldn't be decoded. It may be damaged."));
  return image;
}

}  // namespace

QString KeptPictures::keep(const QString& picture, const QString& dataFolder, int side) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  const QImage image = decoded(DurableFile::read(picture), side);
  image.hasAlphaChannel() ? image.save(&buffer, "PNG") : image.save(&buffer, "JPG", kQuality);
  const QString name = QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
  DurableFile::write(bytes, file(dataFolder, name));
  return name;
}

QString KeptPictures::file(const QString& dataFolder, const QString& name) {
  return isName(name) ? QDir(dataFolder).filePath(u"Assets/%1.dat"_s.arg(name)) : QString();
}

}  // namespace tarnwick
