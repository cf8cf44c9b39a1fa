#include "commandbar/CommandSources.h"

#include <QCoreApplication>
#include <QHash>
#include <QStringBuilder>
#include <algorithm>

#include "base/ForeignText.h"
#include "base/Text.h"
#include "base/UuidText.h"
#include "base/WebAddress.h"
#include "commandbar/Calculator.h"
#include "commandbar/CommandMatch.h"
#include "commandbar/SymbolTable.h"
#include "commandbar/WebSearch.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct CommandSourceWords {
  Q_DECLARE_TR_FUNCTIONS(CommandSources)
};

constexpr qsizetype kTitleCharacters = 120;
constexpr qsizetype kFewestCharacters = 2;
constexpr double kRankStep = 0.01;
constexpr double kClipboardRank = 0.3;
constexpr double kFileRank = 0.25;

double rankAt(qsizetype index, double first) { return std::max(0.0, first - kRankStep * static_cast<double>(index)); }

QString trimmed(const QString& query) { return Text::withoutOuterBlanks(query).toString(); }

/// The beginning of a text on one line.
QString titleOf(const QString& text) {
  QString line = Text::beginning(QStringView(text).trimmed(), kTitleCharacters).toString();
  return ForeignText::line(line.replace("\r\n"_L1, " "_L1).replace(u'\n', u' '));
}

QStringList otherTextsOf(const DesktopEntry& entry) {
  QStringList texts = entry.keywords;
  if (!entry.genericName.isEmpty()) texts.prepend(entry.genericName);
  if (!entry.untranslatedName.isEmpty() && entry.untranslatedName != entry.name) texts.append(entry.untranslatedName);
  return texts;
}

CommandItem searchRow(const QString& query, const QString& choice, const QLocale& locale) {
  CommandItem row;
  row.id = CommandItem::webSearchId();
  row.title = CommandSourceWords::tr("Search the web for “%1”").arg(query);
  row.subtitle = WebSearch::host(choice, locale);
  row.symbol = u"magnifyingglass"_s;
  row.payload = WebSearch::address(choice, query, locale).toString(QUrl::FullyEncoded);
  return row;
}

CommandItem addressRow(const QString& query, const QUrl& url) {
  CommandItem row;
  row.payload = url.toString(QUrl::FullyEncoded);
  row.id = "web:"_L1 + row.payload;
  row.title = query;
  row.subtitle = CommandSourceWords::tr("Open");
  row.symbol = u"globe"_s;
  return row;
}

}  // namespace

std::optional<CommandItem> CommandSources::calculation(const QString& query, const QLocale& locale) {
  const QString text = trimmed(query);
  const auto value = Calculator::evaluate(text);
  if (!value) return std::nullopt;
  CommandItem row;
  row.kind = CommandItem::Kind::Calculation;
  row.title = Calculator::format(*value, locale);
  row.id = "calc:"_L1 + row.title;
  row.subtitle = CommandSourceWords::tr("%1 · copy").arg(text);
  row.symbol = u"equal.square"_s;
  row.payload = row.title;
  return row;
}

QList<CommandItem> CommandSources::apps(const QList<DesktopEntry>& entries) {
  QList<CommandItem> rows;
  rows.reserve(entries.size());
  const QString subtitle = CommandSourceWords::tr("Application");
  const QString symbol = u"app"_s;
  for (const DesktopEntry& entry : entries) {
    CommandItem& row = rows.emplaceBack();
    row.id = "app:"_L1 % entry.path;
    row.title = entry.name;
    row.subtitle = subtitle;
    row.symbol = symbol;
    row.path = entry.path;
    row.otherTexts = otherTextsOf(entry);
  }
  return rows;
}

QList<CommandItem> CommandSources::widgets(const QList<WidgetDefinition>& definitions) {
  QList<CommandItem> rows;
  rows.reserve(definitions.size());
  const QString words = CommandSourceWords::tr("Add to dock · %1");
  QString category;
  QString subtitle;
  for (const WidgetDefinition& definition : definitions) {
    // Those of a category follow each other.
    if (subtitle.isEmpty() || definition.category != category) {
      category = definition.category;
      subtitle = words.arg(category);
    }
    CommandItem& row = rows.emplaceBack();
    row.id = "widget:"_L1 % definition.id;
    row.kind = CommandItem::Kind::Widget;
    row.title = definition.name;
    row.subtitle = subtitle;
    row.symbol = definition.symbol;
    row.payload = definition.id;
  }
  return rows;
}

QList<CommandItem> CommandSources::symbols(const QString& query) {
  const QString text = trimmed(query).toLower().normalized(QString::NormalizationForm_C);
  if (Text::characters(text, kFewestCharacters).size() < kFewestCharacters) return {};
  QList<CommandItem> rows;
  const QString subtitle = CommandSourceWords::tr("%1 · copy");
  for (const SymbolTable::Entry& entry : SymbolTable::entries()) {
    const auto begins = [&](const QString& keyword) { return keyword.startsWith(text); };
    if (!std::ranges::any_of(entry.keywords, begins) && !entry.name.contains(text)) continue;
    CommandItem row;
    row.id = "symbol:"_L1 % entry.character;
    row.kind = CommandItem::Kind::Symbol;
    row.title = entry.character;
    row.subtitle = subtitle.arg(entry.name);
    row.payload = entry.character;
    row.matchText = entry.name + u' ' + entry.keywords.join(u' ');
    rows.append(std::move(row));
  }
  return rows;
}

QList<CommandItem> CommandSources::clipboard(const QList<ClipboardEntry>& entries) {
  QList<CommandItem> rows;
  rows.reserve(entries.size());
  const QString subtitle = CommandSourceWords::tr("Copy");
  const QString symbol = u"doc.on.clipboard"_s;
  for (qsizetype i = 0; i < entries.size(); ++i) {
    if (entries[i].kind == ClipboardEntry::Kind::Image) continue;
    QString title = titleOf(entries[i].value);
    if (title.isEmpty()) continue;
    CommandItem& row = rows.emplaceBack();
    row.title = std::move(title);
    row.id = "clip:"_L1 % UuidText::write(entries[i].id);
    row.kind = CommandItem::Kind::Clipboard;
    row.subtitle = subtitle;
    row.symbol = symbol;
    row.payload = entries[i].value;
    row.sourceRank = rankAt(i, kClipboardRank);
  }
  return rows;
}

QList<CommandItem> CommandSources::files(const QList<FoundFile>& files) {
  QList<CommandItem> rows;
  rows.reserve(files.size());
  for (qsizetype i = 0; i < files.size(); ++i) {
    const QString& path = files[i].path;
    CommandItem& row = rows.emplaceBack();
    row.id = "file:"_L1 % path;
    row.kind = CommandItem::Kind::File;
    row.title = ForeignText::line(files[i].name);
    row.subtitle = path.first(std::max<qsizetype>(path.lastIndexOf(u'/'), path.startsWith(u'/') ? 1 : 0));
    row.symbol = u"doc"_s;
    row.path = path;
    row.isFolder = files[i].isFolder;
    row.sourceRank = rankAt(i, kFileRank);
  }
  return rows;
}

std::optional<CommandItem> CommandSources::web(const QString& query, const QString& searchChoice,
                                               const QLocale& locale) {
  const QString text = trimmed(query);
  if (text.isEmpty()) return std::nullopt;
  const auto url = address(text);
  CommandItem row = url ? addressRow(text, *url) : searchRow(text, searchChoice, locale);
  if (row.payload.isEmpty()) return std::nullopt;
  row.kind = CommandItem::Kind::Web;
  return row;
}

QList<CommandItem> CommandSources::windows(const QList<RunningApp>& apps, const QList<ClientWindow>& windows,
                                           const QSet<quint64>& active, const QString& query) {
  QHash<quint64, QString> titles;
  for (const ClientWindow& window : windows)
    if (!active.contains(window.id)) titles.insert(window.id, window.title);

  struct Found {
    double score;
    CommandItem row;
  };
  std::vector<Found> found;
  const FoldedText wanted(trimmed(query));
  const QString subtitle = CommandSourceWords::tr("Switch to · %1");
  FoldedText folded;
  for (const RunningApp& app : apps) {
    for (const quint64 window : app.windows) {
      const QString title = titles.value(window);
      folded.assign(title);
      const auto score = folded.isEmpty() ? std::nullopt : CommandMatch::score(wanted, folded);
      if (!score) continue;
      CommandItem row;
      row.payload = QString::number(window);
      row.id = "window:"_L1 + row.payload;
      row.title = title;
      row.subtitle = subtitle.arg(app.name);
      row.symbol = u"app"_s;
      row.path = app.path;
      found.push_back({*score, std::move(row)});
    }
  }
  std::ranges::stable_sort(found, std::greater(), &Found::score);
  QList<CommandItem> rows;
  for (auto each = found.begin(); each != found.end() && rows.size() < kMostWindows; ++each) rows.append(each->row);
  return rows;
}

std::optional<QUrl> CommandSources::address(const QString& query) { return WebAddress::of(trimmed(query)); }

const QSet<QString>& CommandSources::topLevelDomains() { return WebAddress::topLevelDomains(); }

}  // namespace tarnwick
