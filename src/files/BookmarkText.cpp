#include "files/BookmarkText.h"

#include "base/ForeignText.h"

#include <lz4.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <QXmlStreamReader>
#include <QtEndian>
#include <algorithm>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

void append(QList<Bookmark>& list, const QString& title, const QString& address, const QString& folder) {
  const QUrl url(address, QUrl::StrictMode);
  const QString scheme = url.scheme();
  const bool opens = url.isValid() && (scheme == "https"_L1 || scheme == "http"_L1 || scheme == "ftp"_L1);
  if (!opens || url.host().isEmpty() || list.size() >= BookmarkText::most) return;
  const QString name = ForeignText::line(title).simplified();
  list.append({name.isEmpty() ? url.host() : name, url, folder});
}

void walk(QList<Bookmark>& list, const QJsonArray& children, const QString& folder, int depth) {
  if (depth > BookmarkText::deepest) return;
  for (const QJsonValue& child : children) {
    const QJsonObject node = child.toObject();
    const QString name = node.value("name"_L1).toString();
    if (node.value("type"_L1) == "folder"_L1)
      walk(list, node.value("children"_L1).toArray(), name.simplified(), depth + 1);
    else
      append(list, name, node.value("url"_L1).toString(), folder);
  }
}

constexpr QByteArrayView kPackedMark("mozLz40\0", 8);

/// The text of a packed file; empty where it is none.
QByteArray unpacked(const QByteArray& file) {
  constexpr qsizetype kHead = kPackedMark.size() + static_cast<qsizetype>(sizeof(quint32));
  if (!file.startsWith(kPackedMark) || file.size() <= kHead) return {};
  const auto size = qFromLittleEndian<quint32>(file.constData() + kPackedMark.size());
  const qsizetype packed = file.size() - kHead;
  // A block cannot hold more than 255 times its own length, so that a small file makes us reserve little.
  if (size == 0 || size > BookmarkText::mostUnpacked || size / 255 > packed) return {};
  QByteArray text(static_cast<qsizetype>(size), Qt::Uninitialized);
  const int got = LZ4_decompress_safe(file.constData() + kHead, text.data(), static_cast<int>(packed),
                                      static_cast<int>(text.size()));
  return got == text.size() ? text : QByteArray();
}

void walkPlaces(QList<Bookmark>& list, const QJsonArray& children, const QString& folder, int depth) {
  if (depth > BookmarkText::deepest) return;
  for (const QJsonValue& child : children) {
    const QJsonObject node = child.toObject();
    const QString title = node.value("title"_L1).toString();
    if (node.contains("children"_L1))
      walkPlaces(list, node.value("children"_L1).toArray(), title.simplified(), depth + 1);
    else
      append(list, title, node.value("uri"_L1).toString(), folder);
  }
}

}  // namespace

QList<Bookmark> BookmarkText::fromFirefox(const QByteArray& backup) {
  QList<Bookmark> list;
  QList<QJsonObject> roots;
  for (const QJsonValue& root : QJsonDocument::fromJson(unpacked(backup)).object().value("children"_L1).toArray())
    roots.append(root.toObject());
  // The bar first, as in the browser.
  std::ranges::stable_partition(roots,
                                [](const QJsonObject& root) { return root.value("root"_L1) == "toolbarFolder"_L1; });
  for (const QJsonObject& root : roots) walkPlaces(list, root.value("children"_L1).toArray(), {}, 1);
  return list;
}

QList<Bookmark> BookmarkText::fromChromium(const QByteArray& json) {
  QList<Bookmark> list;
  const QJsonObject roots = QJsonDocument::fromJson(json).object().value("roots"_L1).toObject();
  // The bar first, as in the browser; then the others in the order of their names, which never changes.
  QStringList names = roots.keys();
  if (names.removeAll(u"bookmark_bar"_s) > 0) names.prepend(u"bookmark_bar"_s);
  for (const QString& name : names) walk(list, roots.value(name).toObject().value("children"_L1).toArray(), {}, 1);
  return list;
}

QList<Bookmark> BookmarkText::fromXbel(const QByteArray& xml) {
  QList<Bookmark> list;
  QStringList folders;
  QString address;
  QString title;
  bool inside = false;
  QXmlStreamReader reader(xml);
  while (!reader.atEnd()) {
    reader.readNext();
    if (reader.isStartElement()) {
      if (reader.name() == "folder"_L1) {
        folders.append(QString());
      } else if (reader.name() == "bookmark"_L1) {
        inside = true;
        title.clear();
        address = reader.attributes().value("href"_L1).toString();
      } else if (reader.name() == "title"_L1) {
        const QString text = reader.readElementText(QXmlStreamReader::SkipChildElements);
        if (inside)
          title = text;
        else if (!folders.isEmpty())
          folders.last() = text.simplified();
      }
    } else if (reader.isEndElement()) {
      if (reader.name() == "folder"_L1 && !folders.isEmpty()) folders.removeLast();
      if (reader.name() == "bookmark"_L1) {
        inside = false;
        append(list, title, address, folders.isEmpty() ? QString() : folders.last());
      }
    }
  }
  return list;
}

}  // namespace tarnwick
