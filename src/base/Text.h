#pragma once

#include <QString>
#include <QStringList>
#include <limits>
#include <optional>

class QTextBoundaryFinder;

namespace tarnwick {

/// What text means to every part alike.
struct Text {
  /// Without white space and new lines at both ends.
  static QStringView trimmed(QStringView text) { return text.trimmed(); }
  /// Without blanks and tabs at both ends; new lines stay.
  static QStringView withoutOuterBlanks(QStringView text);

  /// The characters of a text as a user perceives them, the first `most` of them.
  static QStringList characters(const QString& text, qsizetype most = std::numeric_limits<qsizetype>::max());
  /// The first so many characters, at a price that does not grow with the text.
  static QStringView beginning(QStringView text, qsizetype characters);
  /// Where the character ends that begins at `begin`, at which the finder of graphemes stands; -1 behind the last one.
  static qsizetype characterEnd(QTextBoundaryFinder& finder, QStringView text, qsizetype begin);
  /// Whether this is a character by itself, whatever stands beside it for which the same is true: a quick test that is
  /// true for most of what people write and false where one has to look closer.
  static bool standsAlone(QChar unit);

  /// A number written as decimal digits, with an optional sign, point and exponent, and nothing around it. Absent for
  /// every other text, hexadecimal and infinity included, and for what is too large to be finite. Same in every locale.
  static std::optional<double> number(QStringView text);

  /// As searches compare it: without case and accents, with the apostrophe that keyboards have.
  static QString folded(const QString& text);
};

}  // namespace tarnwick
