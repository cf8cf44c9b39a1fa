#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <functional>

#include "commandbar/CommandItem.h"
#include "commandbar/EmojiTable.h"
#include "commandbar/SettingsPlaces.h"
#include "store/Commands.h"

namespace tarnwick {

/// Where the second list comes from. What is pointed at is borrowed and must outlive the list.
struct CommandExtrasParts {
  Commands& commands;
  SettingsPlaces* settings = nullptr;  ///< May be left out.
  /// Asked for once something is looked for.
  std::function<const EmojiTable&()> emoji = EmojiTable::shared;
};

/// What the user chose about the second list.
struct CommandExtrasChoices {
  bool findsEmoji = true;
  bool findsSettings = true;
  /// Whether the ranked list has symbols, which are not repeated.
  bool findsSymbols = true;

  bool operator==(const CommandExtrasChoices&) const = default;
};

/// The second, short list of the command bar: what is found beside the rows that are ranked. Nothing of it is ranked,
/// and no use of it is noted. Main thread only.
class CommandExtras final : public QObject {
  Q_OBJECT
 public:
  static constexpr qsizetype kMost = 6;  ///< Emoji and settings together.
  static constexpr qsizetype kMostEmoji = 6;
  static constexpr qsizetype kMostSettings = 3;
  /// Shorter queries find no emoji and no settings, nor do calculations.
  static constexpr qsizetype kFewestCharacters = 2;

  explicit CommandExtras(const CommandExtrasParts& parts, QObject* parent = nullptr);

  void setChoices(const CommandExtrasChoices& choices);

  /// The bar is there to be seen: what a query needs may be made ready.
  void opened();

  /// The rows for a query, in the order in which they are shown: what QuickAnswer says to it, emoji that are not among
  /// the symbols for it, then rows of Settings. Their identities begin with "answer:", "emoji:" and "setting:".
  QList<CommandItem> find(const QString& query) const;
  /// Does what a row of it stands for. The switch of a row of Settings is turned only where the user went to the row;
  /// else the row is shown.
  void activate(const CommandItem& item, bool isChosen);

 Q_SIGNALS:
  /// A query may find other rows than before.
  void changed();

 private:
  QList<CommandItem> emoji(const QString& query) const;
  QList<CommandItem> settings(const QString& query) const;

  CommandExtrasParts parts_;
  CommandExtrasChoices choices_;
};

}  // namespace tarnwick
