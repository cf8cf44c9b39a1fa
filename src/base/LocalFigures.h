#pragma once

#include <QLocale>
#include <QString>

namespace tarnwick {

/// Numbers as the user's locale writes them: its digits, its decimal mark, its sign for percent.
///
/// What QLocale formats is right already. This is for the rest: small whole numbers, and texts that come in ASCII from
/// rules with one way of writing ("12:05", "35.5%"), on their way to a tile, a panel or a screen reader. It is asked
/// for only where a text is known to be a number. Versions, addresses, names and what a user wrote stay as they are,
/// and so does what is typed, copied, stored or compared.
struct LocalFigures {
  /// A number in ASCII, with anything around it that is no number: one "." between digits is the decimal mark, "," the
  /// mark between groups of three, "%" behind a digit the sign for percent.
  static QString of(const QString& ascii, const QLocale& locale = QLocale());
  /// A whole number without marks between its groups, as counts and figures of tiles are written.
  static QString number(qint64 value, const QLocale& locale = QLocale());
  static QString percent(qint64 value, const QLocale& locale = QLocale());
  static QString percentSign(const QLocale& locale = QLocale()) { return locale.percent(); }
};

}  // namespace tarnwick
