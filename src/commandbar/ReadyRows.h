#pragma once

#include <QList>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commandbar/CommandItem.h"

namespace tarnwick {

class FoldedText;

/// A query as it is compared with thousands of rows.
class ReadyQuery {
 public:
  explicit ReadyQuery(const FoldedText& query);

  const FoldedText& text() const { return text_; }
  /// Which characters it has, each one bit of a few; what lacks one of them does not answer.
  quint64 characters() const { return characters_; }

 private:
  const FoldedText& text_;
  quint64 characters_;
};

/// Rows of the command bar whose texts were folded once, so that a key costs no more than comparing them. Never
/// changes, and cheap to copy.
class ReadyRows {
 public:
  ReadyRows() = default;
  explicit ReadyRows(const QList<CommandItem>& items);

  /// How the texts of a row answer a query.
  struct Answer {
    std::optional<double> score;
    bool isByOtherText = false;  ///< By none that it shows.
  };

  qsizetype size() const { return rows_ ? rows_->items.size() : 0; }
  const CommandItem& at(qsizetype place) const { return rows_->items[place]; }
  /// A number that rows of one identity share.
  quint32 hashOf(qsizetype place) const;
  static quint32 hashOf(QStringView identity);
  Answer answer(qsizetype place, const ReadyQuery& query) const;

 private:
  struct Text;
  struct Row;
  struct Rows {
    QList<CommandItem> items;
    std::vector<Row> rows;
    std::vector<Text> others;
    std::u16string units;  ///< Of all texts, one after the other.
  };

  std::optional<double> score(const Text& text, const QString& whole, const ReadyQuery& query, bool byWords) const;

  std::shared_ptr<const Rows> rows_;
};

}  // namespace tarnwick
