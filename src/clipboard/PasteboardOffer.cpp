#include "clipboard/ports/Pasteboard.h"

#include <QUrl>

namespace tarnwick {

using namespace Qt::StringLiterals;

PasteboardOffer PasteboardOffer::text(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  return {{{u"text/plain;charset=utf-8"_s, bytes}, {u"text/plain"_s, bytes}}};
}

PasteboardOffer PasteboardOffer::file(const QString& path) {
  const QByteArray address = QUrl::fromLocalFile(path).toEncoded();
  return {{{u"text/uri-list"_s, address + "\r\n"},
           {u"x-special/gnome-copied-files"_s, "copy\n" + address},
           {u"text/plain;charset=utf-8"_s, path.toUtf8()},
           {u"text/plain"_s, path.toUtf8()}}};
}

PasteboardOffer PasteboardOffer::picture(const QByteArray& png) { return {{{u"image/png"_s, png}}}; }

}  // namespace tarnwick
