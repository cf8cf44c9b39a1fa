#pragma once

#include <QList>
#include <QLocale>
#include <QString>

#include "views/tiles/TileSources.h"
#include "widgets/FigureWords.h"

namespace tarnwick {

/// What a service says in one text, taken apart at the change in it: "$231.50 · +1.24% · 24h".
struct ServiceText {
  QString before;  ///< "$231.50".
  QString change;  ///< "+1.24%", with its sign; empty where nothing in it is a change, and then all is `before`.
  QString after;   ///< "24h".

  static ServiceText of(const QString& text);
  /// The three in one text again.
  QString joined() const;
  bool operator==(const ServiceText&) const = default;
};

/// The headline of a service, without the remark that it is not the whole sum.
struct ServiceHeadline {
  QString remark;  ///< "Partial · "; empty for most.
  QString text;

  static ServiceHeadline of(const QString& text);
};

/// How the figures of one widget are written for the user.
///
/// Of an address of the user's own the texts are anybody's: they keep their groups and units. Those of the program's
/// own providers have whole numbers in plain digits, which are grouped here, and amounts of money as the locale has
/// them.
class ServiceFigures {
 public:
  static ServiceFigures of(const DockWidget& widget, const TileSources& sources);

  /// A text with every figure in it as the user's locale writes it.
  QString words(const QString& text) const;
  /// The same taken apart, and behind it what says as much in less space: an amount without its cents, thousands and
  /// millions as "48.2K". Never empty; the longest first.
  QList<FigureWords> ways(const QString& text) const;
  /// What stands beside the title of a row, in which a number may be a name.
  ServiceText aside(const QString& text) const;

 private:
  enum class Writer {
    Anybody,
    Provider,
    LocalReader,  ///< Of a history on this computer, whose reader writes for the user.
  };
  ServiceFigures(const QLocale& locale, Writer writer) : locale_(locale), writer_(writer) {}
  QString part(const QString& text) const;

  QLocale locale_;
  Writer writer_;
};

}  // namespace tarnwick
