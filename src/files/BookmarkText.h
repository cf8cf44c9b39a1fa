#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

namespace tarnwick {

/// An address that the user keeps in a browser.
struct Bookmark {
  QString title;
  QUrl address;
  QString folder;  ///< Where it is in the browser; empty at the top.

  bool operator==(const Bookmark&) const = default;
};

/// Reads the bookmark files of browsers. Only addresses that can be opened count; what a program would run is left out.
struct BookmarkText {
  static constexpr qsizetype most = 5000;
  static constexpr int deepest = 24;
  /// A backup that unpacks to more bytes is not read.
  static constexpr int mostUnpacked = 64 * 1024 * 1024;

  /// The JSON of Chromium and its kin; nothing for a text that is none.
  static QList<Bookmark> fromChromium(const QByteArray& json);
  /// A backup of Firefox and its kin: JSON, packed as one block. Nothing for what is damaged or claims too much.
  static QList<Bookmark> fromFirefox(const QByteArray& backup);
  /// Of a broken text what is before the fault.
  static QList<Bookmark> fromXbel(const QByteArray& xml);
};

}  // namespace tarnwick
