#pragma once

#include <QList>
#include <QString>
#include <optional>
#include <string_view>

#include "commandbar/FoldedText.h"

namespace tarnwick {

/// How well a text answers a query.
struct CommandMatch {
  static constexpr double kNoQuery = 0.5;
  static constexpr double kEqual = 1.0;
  static constexpr double kBegins = 0.9;
  static constexpr double kWordBegins = 0.75;  ///< A word ends at a blank, "-", "_" or ".".

  /// A part of a text, in UTF-16 units.
  struct Span {
    qsizetype begin = 0;
    qsizetype length = 0;

    bool operator==(const Span&) const = default;
  };

  /// 1 where they are equal, less where the text or a word of it begins with the query, from 0.1 to below 0.75 where
  /// the query's characters stand in the text in this order, and nothing where they don't.
  static std::optional<double> score(const FoldedText& query, const FoldedText& text);
  static std::optional<double> score(const QString& query, const QString& text);
  /// The same without the last: words alone.
  static std::optional<double> byWords(const FoldedText& query, const FoldedText& text);

  // The same of folded texts of which each unit is a character.
  static std::optional<double> plainScore(std::u16string_view query, std::u16string_view text);
  static std::optional<double> plainByWords(std::u16string_view query, std::u16string_view text);

  /// The parts of a text that answer the query, in order and apart; none where it doesn't.
  static QList<Span> spans(const QString& query, const QString& text);
};

}  // namespace tarnwick
