#pragma once

#include <QColor>
#include <QLocale>
#include <QString>
#include <QStringList>
#include <optional>

#include "config/DockWidget.h"

namespace tarnwick {

/// What a converter is set to.
struct Conversion {
  QString value;
  QString from;
  QString to;

  /// Ten kilometres in miles where nothing was chosen, or what was chosen belongs to two groups. Any two different
  /// currencies belong to one.
  static Conversion of(const DockWidget& widget);
  bool isOfMoney() const;
  /// By what ReadingFacts knows the rate.
  QString pair() const { return from + u'/' + to; }
  bool operator==(const Conversion&) const = default;
};

/// The currencies that are offered: the user's own and those that are exchanged most, of which none is missing that was
/// chosen already.
QStringList offeredCurrencies(const QLocale& locale, const Conversion& chosen);
/// What an amount is worth at a rate: to the cent, unless so little of it would be seen. Absent for what is no number.
std::optional<double> exchanged(const QString& amount, double rate, const QLocale& locale);

/// "#2E8C94" or "#28C", with or without "#"; absent for anything else.
std::optional<QColor> colorOfHex(const QString& text);
QString hexOf(const QColor& color);

/// The emoji that were copied last, newest first.
QStringList recentEmoji(const DockWidget& widget);

}  // namespace tarnwick
