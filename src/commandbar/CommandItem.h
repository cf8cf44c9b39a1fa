#pragma once

#include <QString>
#include <QStringList>
#include <array>

#include "base/RawValues.h"

namespace tarnwick {

/// One row of the command bar: what may be found, and what Return does with it.
struct CommandItem {
  enum class Kind { App, File, Widget, Clipboard, Calculation, Symbol, Web };

  /// What distinguishes it from every other row, and under which its use is remembered. Begins with its source: "app:",
  /// "window:", "file:", "widget:", "clip:", "calc:", "symbol:" or "web:".
  QString id;
  Kind kind = Kind::App;
  QString title;
  QString subtitle;
  /// The name of its picture; "app" stands for the icon of the application at `path`. Empty where the title is the
  /// picture.
  QString symbol;
  QString path;     ///< Of an application's desktop entry or of a file; such a row can be revealed and its path copied.
  QString payload;  ///< What Return uses: a text to copy, an address, a kind of widget, the number of a window.
  QString matchText;       ///< What the query is compared with; the title where it is empty.
  QStringList otherTexts;  ///< By which it can be found too, though for less than by its own text.
  bool isFolder = false;  ///< Of a file: whether it is one that holds others, which is all that its picture depends on.
  double sourceRank = 0;  ///< What its source adds to its score.

  bool isWindow() const { return id.startsWith(QLatin1StringView("window:")); }
  /// The row that searches the web, whatever for.
  bool isWebSearch() const { return id == webSearchId(); }
  static QString webSearchId() { return QStringLiteral("web:search"); }
  const QString& text() const { return matchText.isEmpty() ? title : matchText; }

  bool operator==(const CommandItem&) const = default;
};

template <>
struct RawValues<CommandItem::Kind> {
  static constexpr std::array<RawValue<CommandItem::Kind>, 7> table{{
      {CommandItem::Kind::App, "app"},
      {CommandItem::Kind::File, "file"},
      {CommandItem::Kind::Widget, "widget"},
      {CommandItem::Kind::Clipboard, "clipboard"},
      {CommandItem::Kind::Calculation, "calculation"},
      {CommandItem::Kind::Symbol, "symbol"},
      {CommandItem::Kind::Web, "web"},
  }};
};

}  // namespace tarnwick
