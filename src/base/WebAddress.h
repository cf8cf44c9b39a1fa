#pragma once

#include <QSet>
#include <QString>
#include <QUrl>
#include <optional>

namespace tarnwick {

/// What counts as a web address when somebody types or copies it.
struct WebAddress {
  /// The address that a text without blanks around it is meant as: one that begins with "https://" or "http://", in
  /// this case, or a name with a known ending ("example.dev/path"), which becomes an https address. A name that ends
  /// in any two letters counts, so "foo.js" is one. Absent for everything else: a text with a blank in it, and one
  /// without a host.
  static std::optional<QUrl> of(const QString& text);

  /// The longer endings of names that are known, in lower case.
  static const QSet<QString>& topLevelDomains();
};

}  // namespace tarnwick
