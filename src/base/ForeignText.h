#pragma once

#include <QString>
#include <QUrl>

namespace tarnwick {

/// Texts and addresses that others wrote (services, players, windows) before they are shown or opened.
struct ForeignText {
  static constexpr qsizetype kMostCharacters = 300;
  static constexpr qsizetype kLongestAddress = 2000;

  /// One line without what could act on the text around it: control characters and those that turn the direction of
  /// writing are left out, line breaks become blanks, and no more than kMostCharacters of what a user perceives as
  /// characters stay, the last an ellipsis where there were more. It is not markup and must be painted as plain text.
  static QString line(const QString& text);

  /// Whether an address that came with such a text may be opened: over the web, with a host, without a user's name or
  /// password, and no longer than kLongestAddress.
  static bool mayOpen(const QUrl& address);
};

}  // namespace tarnwick
