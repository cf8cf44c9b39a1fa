#include "usage/LocalUsageDatabase.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include "base/DomainError.h"
#include "usage/UsageReaderWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kLatest = 100'000'000'000'000.0;  ///< Milliseconds since 1970.
constexpr auto kModelPrefix = "gemini-"_L1;
constexpr qsizetype kMessageColumns = 4;
constexpr qsizetype kUsageColumns = 5;

/// The first of these tables that is there; empty for none.
QString tableIn(UsageDatabase& database, std::initializer_list<QLatin1StringView> names) {
  for (const QLatin1StringView name : names)
    if (!database.rows(u"SELECT name FROM sqlite_master WHERE type='table' AND name='%1'"_s.arg(name)).isEmpty())
      return name.toString();
  return {};
}

bool isGemini(const QVariant& model) {
  return model.typeId() == QMetaType::QString && model.toString().startsWith(kModelPrefix);
}

/// What was noted of an answer, tokens from the cache included.
double tokensOf(const QVariant& text) {
  const QJsonDocument document = QJsonDocument::fromJson(text.toString().toUtf8());
  if (text.typeId() != QMetaType::QString || !document.isObject())
    throw DomainError::invalid(UsageReaderWords::tr("OpenCode token metadata is invalid."));
  const QJsonObject tokens = document.object();
  const auto counted = [](const QJsonObject& object, QLatin1StringView key) {
    const QJsonValue value = object.value(key);
    return LocalUsageDatabase::count(value.isDouble() ? QVariant(value.toDouble()) : QVariant());
  };
  if (!tokens.value("cache"_L1).isObject())
    throw DomainError::invalid(UsageReaderWords::tr("OpenCode cache usage is missing."));
  const QJsonObject cache = tokens.value("cache"_L1).toObject();
  const double parts = counted(tokens, "input"_L1) + counted(tokens, "output"_L1) + counted(cache, "read"_L1) +
                       counted(cache, "write"_L1);
  return tokens.contains("total"_L1) ? counted(tokens, "total"_L1) : parts;
}

}  // namespace

double LocalUsageDatabase::count(const QVariant& value) {
  const double number = value.typeId() == QMetaType::Double ? value.toDouble() : -1;
  if (!LocalTokens::isCount(number))
    throw DomainError::invalid(UsageReaderWords::tr("The usage database contains an invalid token count."));
  return number;
}

RemoteValue LocalUsageDatabase::openCode(UsageDatabase& database, const QDateTime& now) {
  const QString table = tableIn(database, {"session_message"_L1, "message"_L1});
  if (table.isEmpty())
    throw DomainError::invalid(UsageReaderWords::tr("No supported OpenCode message table was found."));
  const bool bySession = table == "session_message"_L1;
  const QString model = bySession ? u"$.model.id"_s : u"$.modelID"_s;
  const QString role = bySession ? u"type"_s : u"json_extract(data,'$.role')"_s;
  QList<LocalTokenRecord> records;
  const auto rows = database.rows(
      u"SELECT id, json_extract(data,'%1'), json_extract(data,'$.time.created'), json_extract(data,'$.tokens') FROM %2 "
      "WHERE %3='assistant'"_s.arg(model, table, role));
  for (const UsageDatabase::Row& row : rows) {
    if (row.size() != kMessageColumns || row[0].typeId() != QMetaType::QString)
      throw DomainError::invalid(UsageReaderWords::tr("OpenCode message metadata is incomplete."));
    if (!isGemini(row[1])) continue;
    const double created = row[2].typeId() == QMetaType::Double ? row[2].toDouble() : 0;
    if (!(created > 0 && created < kLatest))
      throw DomainError::invalid(UsageReaderWords::tr("OpenCode message time is invalid."));
    records.append({row[0].toString(), QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(created)), tokensOf(row[3])});
  }
  database.confirmUnchanged();
  return LocalTokens::thisMonth(
      records, now,
      UsageReaderWords::tr(
          "Gemini models in the selected OpenCode database. Includes cached tokens. Message bodies are "
          "not selected. This is recorded usage, not Google billing or a quota."));
}

RemoteValue LocalUsageDatabase::hermes(UsageDatabase& database, const QDateTime& now) {
  const QString table = tableIn(database, {"session_model_usage"_L1, "sessions"_L1});
  if (table.isEmpty()) throw DomainError::invalid(UsageReaderWords::tr("No supported Hermes usage table was found."));
  const auto rows = database.rows(
      u"SELECT model, input_tokens, output_tokens, cache_read_tokens, cache_write_tokens FROM %1"_s.arg(table));
  QSet<QString> models;
  double total = 0;
  qsizetype counted = 0;
  for (const UsageDatabase::Row& row : rows) {
    if (row.size() != kUsageColumns || !isGemini(row[0])) continue;
    models.insert(row[0].toString());
    ++counted;
    for (qsizetype i = 1; i < row.size(); ++i)
      if (row[i].isValid()) total += count(row[i]);
  }
  database.confirmUnchanged();
  RemoteValue value;
  value.value = LocalTokens::formatted(total);
  value.subtitle = UsageReaderWords::tr("Tokens in history · local estimate");
  value.symbol = u"cloud.sun.fill"_s;
  value.updated = now;
  value.metrics = {{UsageReaderWords::tr("Models"), LocalTokens::formatted(static_cast<double>(models.size()))},
                   {UsageReaderWords::tr("Usage records"), LocalTokens::formatted(static_cast<double>(counted))}};
  const QString attribution =
      table == "session_model_usage"_L1
          ? UsageReaderWords::tr("Uses per-model attribution.")
          : UsageReaderWords::tr("Older session-level model attribution may be approximate after model changes.");
  value.detail = UsageReaderWords::tr("Gemini input, output and cache tokens in the selected Hermes history. ") +
                 attribution +
                 UsageReaderWords::tr(
                     " Its cumulative counters cannot establish daily or monthly usage. This is not "
                     "Google billing or a quota.");
  return value;
}

}  // namespace tarnwick
