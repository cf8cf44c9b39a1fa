#include "commandbar/WebSearch.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>

#include "base/Text.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct WebSearchWords {
  Q_DECLARE_TR_FUNCTIONS(WebSearch)
};

constexpr qsizetype kLongestAddress = 500;
constexpr QLatin1StringView kQueryMark = "%s"_L1;
/// Stands for the query while an address is looked at; part of no name.
constexpr QLatin1StringView kProbe = "q0q"_L1;

constexpr std::array kEngines = {
    WebSearch::Engine{"duckduckgo", "DuckDuckGo", "https://duckduckgo.com/?q=%s"},
    WebSearch::Engine{"startpage", "Startpage", "https://www.startpage.com/sp/search?query=%s"},
    WebSearch::Engine{"ecosia", "Ecosia", "https://www.ecosia.org/search?q=%s"},
    WebSearch::Engine{"wikipedia", "Wikipedia", "https://%l.wikipedia.org/w/index.php?search=%s"},
    WebSearch::Engine{"google", "Google", "https://www.google.com/search?q=%s"},
    WebSearch::Engine{"bing", "Bing", "https://www.bing.com/search?q=%s"},
    WebSearch::Engine{"brave", "Brave", "https://search.brave.com/search?q=%s"},
};

QString languageOf(const QLocale& locale) {
  const bool isNone = locale.language() == QLocale::C;
  return isNone ? u"en"_s : locale.name().section(u'_', 0, 0).toLower();
}

QString templateOf(const QString& choice, const QLocale& locale) {
  const auto known = std::ranges::find_if(
      kEngines, [&](const WebSearch::Engine& engine) { return choice == QLatin1StringView(engine.id); });
  if (known == kEngines.end() && WebSearch::problemWith(choice).isEmpty()) return choice;
  const WebSearch::Engine& engine = known == kEngines.end() ? kEngines.front() : *known;
  return QString::fromLatin1(engine.address).replace("%l"_L1, languageOf(locale));
}

QUrl filled(QString address, const QString& query) {
  return QUrl(address.replace(kQueryMark, QString::fromLatin1(QUrl::toPercentEncoding(query))));
}

}  // namespace

std::span<const WebSearch::Engine> WebSearch::engines() { return kEngines; }

QUrl WebSearch::address(const QString& choice, const QString& query, const QLocale& locale) {
  return filled(templateOf(choice, locale), query);
}

QString WebSearch::host(const QString& choice, const QLocale& locale) { return address(choice, {}, locale).host(); }

QString WebSearch::problemWith(const QString& address) {
  const QUrl url = filled(address, kProbe);
  const bool isGood = Text::characters(address, kLongestAddress + 1).size() <= kLongestAddress &&
                      address.count(kQueryMark) == 1 && url.isValid() && url.scheme() == "https"_L1 &&
                      !url.host().isEmpty() && !url.host().contains(kProbe) && url.userInfo().isEmpty() &&
                      !url.authority().contains(u'@');
  if (isGood) return {};
  return WebSearchWords::tr(
      "Enter an https address of at most 500 characters with %s once in the place of the query, and without a user "
      "name "
      "or password.");
}

}  // namespace tarnwick
