#pragma once

#include <QList>
#include <QObject>

#include "commandbar/CommandBarModel.h"
#include "commandbar/CommandItem.h"
#include "commandbar/CommandMatch.h"

namespace tarnwick {

class CommandExtras;

/// A row of the command bar as it is shown.
struct CommandRow {
  CommandItem item;
  /// Of the words that the row shows first: the name of a symbol, the title of all others.
  QList<CommandMatch::Span> matched;
  bool below = false;  ///< In the second list, under the line.

  bool operator==(const CommandRow&) const = default;
};

/// All that the command bar shows: the rows of its model, and under them those of the second list, with one selection
/// that goes through both. Both are borrowed and must outlive it. Main thread only.
class CommandBarRows final : public QObject {
  Q_OBJECT
 public:
  CommandBarRows(CommandBarModel& model, CommandExtras& extras, QObject* parent = nullptr);

  CommandBarModel& model() { return model_; }
  const QList<CommandRow>& rows() const { return rows_; }
  /// The place of the selected row; 0 where there is none. Of a new query that is the first row, unless that would
  /// only search the web and the second list has something: nobody means to send a word of Settings to the web.
  int selection() const { return selection_; }
  /// The selected row; null where there is none. Valid until something changes.
  const CommandItem* selected() const;

  /// Goes so many rows down, and from one end of both lists on to the other.
  void moveSelection(int by);
  /// Does what a row stands for. False where there is no such row. `isPressed`: by a click on that row.
  bool activate(int row, bool isPressed = false);
  /// Shows the file of a row in its folder. False where the row has none.
  bool reveal(int row);

 Q_SIGNALS:
  /// Other rows, another selection, or files are looked for or not any more.
  void changed();

 private:
  void take();
  void takeExtras();
  bool beginsBelow() const;
  int toldCount() const { return static_cast<int>(model_.results().size()); }

  CommandBarModel& model_;
  CommandExtras& extras_;
  QString query_;             ///< That `found_` answers.
  QList<CommandItem> found_;  ///< The second list.
  qsizetype below_ = -1;      ///< The selected place in it, or -1 while the model's selection counts.
  QList<CommandRow> rows_;
  int selection_ = 0;
  bool isChosen_ = false;  ///< Whether the user went to the selected row.
  bool searchingFiles_ = false;
};

}  // namespace tarnwick
