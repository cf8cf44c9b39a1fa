#include "commandbar/CommandExtras.h"

#include <algorithm>

#include "base/Text.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kSettingPrefix = "setting:"_L1;

}  // namespace

CommandExtras::CommandExtras(const CommandExtrasParts& parts, QObject* parent) : QObject(parent), parts_(parts) {}

void CommandExtras::setChoices(const CommandExtrasChoices& choices) {
  if (choices == choices_) return;
  choices_ = choices;
  Q_EMIT changed();
}

QList<CommandItem> CommandExtras::find(const QString& query) const {
  const QString text = Text::withoutOuterBlanks(query).toString();
  if (Text::characters(text, kFewestCharacters).size() < kFewestCharacters) return {};
  QList<CommandItem> rows;
  if (choices_.findsSettings) rows += settings(text);
  return rows.first(std::min(rows.size(), kMost));
}

QList<CommandItem> CommandExtras::settings(const QString& query) const {
  if (!parts_.settings) return {};
  QList<CommandItem> rows;
  for (const SettingsPlace& place : parts_.settings->find(query, kMostSettings)) {
    CommandItem row;
    row.id = kSettingPrefix + place.id;
    row.title = place.title;
    row.subtitle = place.page;
    row.symbol = place.symbol;
    row.payload = place.id;
    rows.append(std::move(row));
  }
  return rows.first(std::min(rows.size(), kMostSettings));
}

void CommandExtras::activate(const CommandItem& item) {
  const CommandItem chosen = item;  // What is done may replace the rows.
  if (parts_.settings && chosen.id.startsWith(kSettingPrefix)) parts_.settings->open(chosen.payload);
}

}  // namespace tarnwick
