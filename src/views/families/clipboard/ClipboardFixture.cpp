#include <QPainter>

#include "clipboard/ClipboardHistory.h"
#include "views/families/clipboard/ClipboardRoom.h"
#include "views/theme/SnapshotScenery.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QList<ClipboardEntry> picturedEntries(const QDateTime& now) {
  using Kind = ClipboardEntry::Kind;
  constexpr qint64 minute = 60;
  constexpr qint64 hour = 60 * minute;
  struct Copied {
    Kind kind;
    const char16_t* value;
    qint64 seconds;
    bool favourite = false;
  };
  static constexpr Copied copied[] = {
      {Kind::Link, u"https://tarnwick.dev/docs/tiles", 12},
      {Kind::Text, u"The release notes are ready for review; the panels come last.", 4 * minute},
      {Kind::Image, u"", 18 * minute},
      {Kind::Color, u"#2E8C94", 25 * minute},
      {Kind::File, u"/home/robin/Documents/Quarterly summary.pdf", hour},
      {Kind::Text, u"git rebase --onto main feature~3 feature", 2 * hour, true},
      {Kind::Link, u"meet.example.org/design-review", 26 * hour},
  };
  QList<ClipboardEntry> entries;
  for (const Copied& each : copied) {
    const QString value = QString::fromUtf16(each.value);
    entries.append({QUuid::createUuidV5(QUuid(), u"copied %1"_s.arg(each.seconds)), each.kind, value,
                    each.kind == Kind::Image ? u"landscape.png"_s : QString(), now.addSecs(-each.seconds),
                    each.favourite});
  }
  return entries;
}

}  // namespace

void pictureClipboard(TileSources& sources) {
  sources.keepsClipboard = true;
  sources.readings.copied = picturedEntries(sources.now).first();
}

void fillStoreWithClipboard(AppStore& store, const QDateTime&) {
  store.edit([](DockConfiguration& config) { config.clipboardEnabled = true; });
}

void fillReadingsWithClipboard(const PicturedParts& parts) {
  QImage image(96, 54, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  SnapshotScenery::paintLandscape(painter, image.rect(), 0);
  painter.end();
  parts.readings.clipboard.setFixed(picturedEntries(parts.now), {{u"landscape.png"_s, {image, {1920, 1080}}}});
}

}  // namespace tarnwick
