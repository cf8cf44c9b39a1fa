#include "commandbar/CommandExtras.h"

#include <QCoreApplication>
#include <QSet>
#include <algorithm>

#include "base/Text.h"
#include "commandbar/Calculator.h"
#include "commandbar/CommandSources.h"
#include "commandbar/QuickAnswer.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// They say the same as the symbols of the ranked list.
struct CopyRowWords {
  Q_DECLARE_TR_FUNCTIONS(CommandSources)
};

constexpr auto kAnswerPrefix = "answer:"_L1;
constexpr auto kEmojiPrefix = "emoji:"_L1;
constexpr auto kSettingPrefix = "setting:"_L1;

/// Without what only asks for the coloured picture of a character.
QString bare(const QString& emoji) { return QString(emoji).remove(QChar(0xFE0F)); }

/// It looks like a calculation of the ranked list, and is copied like one.
CommandItem answerRow(const QString& query, const QString& answer) {
  CommandItem row;
  row.id = kAnswerPrefix + answer;
  row.kind = CommandItem::Kind::Calculation;
  row.title = answer;
  row.subtitle = CopyRowWords::tr("%1 · copy").arg(query);
  row.symbol = u"equal.square"_s;
  row.payload = answer;
  return row;
}

}  // namespace

CommandExtras::CommandExtras(const CommandExtrasParts& parts, QObject* parent) : QObject(parent), parts_(parts) {
  if (parts_.settings) connect(parts_.settings, &SettingsPlaces::changed, this, &CommandExtras::changed);
}

void CommandExtras::setChoices(const CommandExtrasChoices& choices) {
  if (choices == choices_) return;
  choices_ = choices;
  Q_EMIT changed();
}

void CommandExtras::opened() {
  if (parts_.settings && choices_.findsSettings) parts_.settings->prepare();
}

QList<CommandItem> CommandExtras::find(const QString& query) const {
  const QString text = Text::withoutOuterBlanks(query).toString();
  QList<CommandItem> rows;
  if (const auto answer = QuickAnswer::of(text)) rows << answerRow(text, *answer);
  if (Text::characters(text, kFewestCharacters).size() < kFewestCharacters || Calculator::evaluate(text)) return rows;
  if (choices_.findsEmoji) rows += emoji(text);
  if (choices_.findsSettings) rows += settings(text);
  return rows.first(std::min(rows.size(), kMost));
}

QList<CommandItem> CommandExtras::emoji(const QString& query) const {
  const EmojiTable& table = parts_.emoji();
  const QString subtitle = CopyRowWords::tr("%1 · copy");
  QSet<QString> ranked;
  if (choices_.findsSymbols)
    for (const CommandItem& symbol : CommandSources::symbols(query)) ranked.insert(bare(symbol.title));
  QList<CommandItem> rows;
  for (const qsizetype index : table.search(query)) {
    const QString emoji = table.emoji(index);
    if (ranked.contains(bare(emoji))) continue;
    CommandItem row;
    row.id = kEmojiPrefix + emoji;
    row.kind = CommandItem::Kind::Symbol;
    row.title = emoji;
    row.matchText = table.name(index);
    row.subtitle = subtitle.arg(row.matchText);
    row.payload = emoji;
    rows.append(std::move(row));
    if (rows.size() == kMostEmoji) break;
  }
  return rows;
}

QList<CommandItem> CommandExtras::settings(const QString& query) const {
  if (!parts_.settings) return {};
  QList<CommandItem> rows;
  for (const SettingsPlace& place : parts_.settings->find(query, kMostSettings)) {
    CommandItem row;
    row.id = kSettingPrefix + place.id;
    row.title = place.title;
    row.subtitle = place.isSwitch ? CommandExtras::tr("%1 · turn on or off").arg(place.page) : place.page;
    row.symbol = place.symbol;
    row.payload = place.id;
    rows.append(std::move(row));
  }
  return rows.first(std::min(rows.size(), kMostSettings));
}

void CommandExtras::activate(const CommandItem& item, bool isChosen) {
  const CommandItem chosen = item;  // What is done may replace the rows.
  if (chosen.id.startsWith(kEmojiPrefix) || chosen.id.startsWith(kAnswerPrefix))
    parts_.commands.copyText(chosen.payload);
  else if (parts_.settings && chosen.id.startsWith(kSettingPrefix))
    isChosen ? parts_.settings->open(chosen.payload) : parts_.settings->show(chosen.payload);
}

}  // namespace tarnwick
