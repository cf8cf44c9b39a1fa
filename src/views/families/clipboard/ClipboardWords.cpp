#include "views/families/clipboard/ClipboardWords.h"

#include <QFileInfo>

#include "base/ForeignText.h"
#include "base/Text.h"
#include "base/WebAddress.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// No line has space for more, and a copied text may be very long.
constexpr qsizetype kLine = ForeignText::kMostCharacters;

}  // namespace

QString ClipboardWords::kind(ClipboardEntry::Kind kind, bool isFolder) {
  switch (kind) {
    case ClipboardEntry::Kind::Text:
      return TileWords::tr("Text");
    case ClipboardEntry::Kind::Link:
      return TileWords::tr("Link");
    case ClipboardEntry::Kind::Color:
      return TileWords::tr("Colour");
    case ClipboardEntry::Kind::File:
      return isFolder ? TileWords::tr("Folder") : TileWords::tr("File");
    case ClipboardEntry::Kind::Image:
      return TileWords::tr("Image");
  }
  return {};
}

QString ClipboardWords::symbol(ClipboardEntry::Kind kind, bool isFolder) {
  switch (kind) {
    case ClipboardEntry::Kind::Text:
      return u"text.alignleft"_s;
    case ClipboardEntry::Kind::Link:
      return u"link"_s;
    case ClipboardEntry::Kind::Color:
      return u"paintpalette"_s;
    case ClipboardEntry::Kind::File:
      return isFolder ? u"folder"_s : u"doc"_s;
    case ClipboardEntry::Kind::Image:
      return u"photo"_s;
  }
  return {};
}

QString ClipboardWords::title(const ClipboardEntry& entry) {
  if (entry.kind == ClipboardEntry::Kind::Image) return TileWords::tr("Picture");
  if (entry.kind == ClipboardEntry::Kind::File) {
    const QString name = QFileInfo(entry.value).fileName();
    return ForeignText::line(name.isEmpty() ? entry.value : name);
  }
  const QString line = ForeignText::line(Text::trimmed(entry.value).left(kLine).toString()).simplified();
  return line.isEmpty() ? TileWords::tr("Blanks") : line;
}

QString ClipboardWords::shortTitle(const ClipboardEntry& entry) {
  if (entry.kind != ClipboardEntry::Kind::Link) return title(entry);
  const auto address = WebAddress::of(Text::trimmed(entry.value).toString());
  QString host = address ? address->host() : QString();
  if (host.startsWith("www."_L1)) host.remove(0, 4);
  return host.isEmpty() ? title(entry) : host;
}

}  // namespace tarnwick
