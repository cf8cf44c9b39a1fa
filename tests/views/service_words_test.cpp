#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSet>

#include "DockFixture.h"
#include "services/ProviderTable.h"
#include "support/Conversations.h"
#include "views/families/services/ServiceFigures.h"
#include "views/families/services/ServiceTile.h"
#include "views/families/services/ServicesRoom.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;
using test::Conversation;

ServiceContent shownOf(const QString& kind, const RemoteValue& value, const QLocale& locale,
                       const QString& mode = value::native) {
  TileSources sources = morning();
  sources.locale = locale;
  sources.remoteExamples.clear();
  DockWidget shown = widget(kind);
  shown.options = {{option::endpoint, u"https://numbers.example/"_s}};
  if (!mode.isEmpty()) shown.options[option::connectionMode] = mode;
  RemoteReading reading;
  reading.value = value;
  reading.goodAt = sources.now;
  sources.remote.set(shown.id, reading);
  return contentAs<ServiceContent>(makeTileContent(shown, Catalog::find(kind), sources));
}

QString written(const QList<FigureWords>& ways) {
  QStringList all;
  for (const FigureWords& words : ways) all << words.figure + (words.unit.isEmpty() ? u""_s : u"_"_s + words.unit);
  return all.join(u'|');
}

/// headline in its ways; change; what stands beside it; figures; rows.
QString told(const ServiceContent& content) {
  QStringList figures;
  for (const ServiceFigure& figure : content.figures) figures << figure.label + u'=' + written(figure.ways);
  QStringList rows;
  for (const ServiceLine& line : content.rows) rows << line.label + u'=' + written(line.ways) + u';' + line.change;
  return QStringList{written(content.ways()), content.change, content.beside, figures.join(u' '), rows.join(u' ')}.join(
      u" / "_s);
}

TEST(ServiceWords, LayOutWhatProvidersSay) {
  const QLocale english(QLocale::English, QLocale::UnitedStates);
  const QLocale german(QLocale::German, QLocale::Germany);
  const QString none;
  const auto value = [](const char* headline, const char* subtitle, const char* detail = "",
                        const QList<ServiceMetric>& metrics = {}, const QList<ServiceRow>& rows = {}) {
    RemoteValue said;
    said.value = QString::fromUtf8(headline);
    said.subtitle = QString::fromUtf8(subtitle);
    said.detail = QString::fromUtf8(detail);
    said.metrics = metrics;
    said.rows = rows;
    return said;
  };
  const RemoteValue coins = value("2", "Coins", "", {},
                                  {{{}, u"Bitcoin"_s, u"$98,765.40 · -1.23% · 24h"_s, {}},
                                   {{}, u"Pepe"_s, u"$0.00001235 · 24-hour change unavailable"_s, {}},
                                   {{}, u"Solana"_s, u"—"_s, {}}});
  const RemoteValue mail = value("40", "Inbox messages", "", {},
                                 {{{}, u"Translation deadline"_s, u"\"Moreau, Ines\" <ines@example.org>"_s, {}}});
  const QString bitcoin = u"Bitcoin · USD"_s;
  const struct {
    QLatin1StringView kind;
    QString mode;
    const QLocale& locale;
    RemoteValue value;
    QString told;
  } cases[] = {
      {kind::socialTikTok, value::native, english, value("9999", "Followers"), u"9,999 /  / Followers /  / "_s},
      {kind::socialTikTok, value::native, english,
       value("48200000", "Followers", "", {{u"Likes"_s, u"999960"_s}, {u"Videos"_s, u"64"_s}}),
       u"48,200,000|48.2_M /  / Followers / Followers=48,200,000|48.2_M Likes=999,960|1_M Videos=64 / "_s},
      {kind::socialTikTok, value::native, german, value("48200", "Followers"), u"48.200|48,2_K /  / Followers /  / "_s},
      {kind::socialTikTok, none, english, value("48200", "Followers"), u"48200 /  / Followers /  / "_s},
      {kind::geminiAPIUsage, value::geminiHistory, german, value("48.132", "Tokens this month · local estimate"),
       u"48.132|48,1_K /  / Tokens this month · local estimate /  / "_s},
      {kind::homeAssistant, value::native, german, value("21.456 °C", "Attic"), u"21,456_°C /  / Attic /  / "_s},
      {kind::revenueStripe, value::native, english, value("$1,234,567.89", "Net revenue · 30 days"),
       u"$1,234,567.89|$1,234,568|$1.2_M /  / Net revenue · 30 days /  / "_s},
      {kind::revenueStripe, value::native, german, value("4.500 ¥", "Net revenue · 30 days"),
       u"4.500_¥ /  / Net revenue · 30 days /  / "_s},
      {kind::revenueStripe, value::native, english, value("Partial · -$640.50", "Net revenue · 30 days"),
       u"−$640.50|−$641 /  / Net revenue · 30 days /  / "_s},
      {kind::cryptoQuote, value::native, english,
       value("$98,765.40", "-1.23% · 24h", "Bitcoin · USD\nMarket data by CoinGecko"),
       u"$98,765.40|$98,765 / −1.23% / "_s + bitcoin + u" /  / "_s},
      {kind::cryptoQuote, value::native, english,
       value("$2.00", "24-hour change unavailable", "Bitcoin · USD\nMarket data by CoinGecko"),
       u"$2.00 /  / "_s + bitcoin + u" /  / "_s},
      {kind::stockChart, value::native, german, value("231,50 $", "+1.24% · ACME"),
       u"231,50_$|232_$ / +1,24% / ACME /  / "_s},
      {kind::cryptoWatchlist, value::native, english, coins,
       u"2 /  / Coins /  / Bitcoin=$98,765.40|$98,765;−1.23% Pepe=$0.00001235; Solana=—;"_s},
      {kind::gmailLatest, value::native, english, mail,
       u"Moreau, Ines /  / Translation deadline /  / Translation deadline=\"Moreau, Ines\" <ines@example.org>;"_s},
      {kind::shopifyOverview, value::native, english,
       value("$642.30", "Total sales · today", "", {{u"Net sales"_s, u"$618.30"_s}, {u"Returns"_s, u"-$24.00"_s}}),
       u"$642.30|$642 /  / Total sales · today / Total sales=$642.30|$642 Net sales=$618.30|$618 Returns=−$24.00 / "_s},
  };
  for (const auto& each : cases)
    EXPECT_EQ(told(shownOf(each.kind, each.value, each.locale, each.mode)).toStdString(), each.told.toStdString())
        << each.kind.data();
}

/// What is the same of all values of one kind, whatever the figures are.
QStringList formsOf(const QString& kind, const RemoteValue& value) {
  static const QRegularExpression figure(u"[-+]?[0-9][0-9,]*(?:\\.[0-9]+)?"_s);
  static const QRegularExpression plain(u"^[0-9]+$"_s);
  const auto shape = [](const QString& text) {
    const bool isPlain = plain.match(text).hasMatch();
    return QString(text.section(u" · "_s, 0, 0)).replace(figure, u"#"_s) + u'/' +
           QString::number(text.count(u" · "_s)) + (isPlain ? u" plain"_s : QString());
  };
  const auto wayOf = [](const QString& text) { return plain.match(text).hasMatch() ? u" plain"_s : u" written"_s; };
  QStringList metrics;
  for (const ServiceMetric& metric : value.metrics) metrics << metric.label + wayOf(metric.value);
  const ServiceContent content = shownOf(kind, value, QLocale(QLocale::English, QLocale::UnitedStates));
  QStringList forms{u"headline"_s + wayOf(value.value.value_or(QString())),
                    u"shape %1"_s.arg(static_cast<int>(content.shape))};
  // The names of a user's own things are free, and so are how many allowances an account has.
  if (kind != kind::homeAssistant) forms << u"subtitle "_s + shape(value.subtitle);
  if (value.usageWindows.isEmpty()) forms << u"figures "_s + metrics.join(u", "_s);
  if (!value.rows.isEmpty() && ServiceText::of(value.rows.first().subtitle).change.isEmpty()) forms << u"rows"_s;
  if (!value.rows.isEmpty() && !ServiceText::of(value.rows.first().subtitle).change.isEmpty())
    forms << u"rows "_s + shape(value.rows.first().subtitle);
  if (!value.numbers.isEmpty()) forms << u"series"_s;
  return forms;
}

TEST(ServiceWords, OfExamplesAreThoseOfTheirProviders) {
  const QLocale english(QLocale::English, QLocale::UnitedStates);
  QLocale::setDefault(english);
  QHash<const ProviderTopic*, QList<RemoteValue>> real;
  for (const Conversation& each : test::conversations())
    real[providerFor(each.kind)->topic(each.kind)] << test::outcomeOf(each);
  QLocale::setDefault(QLocale::system());
  int compared = 0;
  for (const auto& [kind, example] : serviceExamples(morning().now, english).asKeyValueRange()) {
    const Provider* provider = providerFor(kind);
    const QList<RemoteValue> values = provider ? real.value(provider->topic(kind)) : QList<RemoteValue>();
    if (values.isEmpty()) continue;
    ++compared;
    QSet<QString> forms;
    for (const RemoteValue& value : values)
      for (const QString& form : formsOf(kind, value)) forms << form;
    for (const QString& form : formsOf(kind, example.value))
      EXPECT_TRUE(forms.contains(form)) << kind.toStdString() << " shows " << form.toStdString();
  }
  EXPECT_GE(compared, 40);
}

}  // namespace
}  // namespace tarnwick::testing
