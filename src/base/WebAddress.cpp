#include "base/WebAddress.h"

#include <QStringList>
#include <algorithm>

#include "base/Text.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kCountryLetters = 2;

bool isKnownEnding(const QString& ending) {
  const QStringList letters = Text::characters(ending, kCountryLetters + 1);
  if (letters.size() != kCountryLetters) return WebAddress::topLevelDomains().contains(ending);
  return std::ranges::all_of(letters, [](const QString& letter) { return QChar::isLetter(letter.toUcs4().value(0)); });
}

bool looksLikeHost(QStringView host) {
  const auto pieces = host.split(u'.');
  if (pieces.size() < 2) return false;
  if (std::ranges::any_of(pieces, [](QStringView piece) { return piece.isEmpty(); })) return false;
  return isKnownEnding(pieces.last().toString().toLower());
}

std::optional<QUrl> parsed(const QString& text) {
  const QUrl url(text);
  return url.isValid() && !url.host().isEmpty() ? std::optional(url) : std::nullopt;
}

}  // namespace

std::optional<QUrl> WebAddress::of(const QString& text) {
  if (text.contains(u' ')) return std::nullopt;
  if (text.startsWith("https://"_L1) || text.startsWith("http://"_L1)) return parsed(text);
  const QStringView whole(text);
  const qsizetype slash = whole.indexOf(u'/');
  if (!looksLikeHost(slash > 0 ? whole.first(slash) : whole)) return std::nullopt;
  return parsed("https://"_L1 + text);
}

const QSet<QString>& WebAddress::topLevelDomains() {
  static const QSet<QString> known{
      u"com"_s,    u"org"_s,  u"net"_s,  u"edu"_s,   u"gov"_s,    u"mil"_s,   u"int"_s,  u"info"_s,   u"biz"_s,
      u"dev"_s,    u"app"_s,  u"io"_s,   u"ai"_s,    u"co"_s,     u"me"_s,    u"tv"_s,   u"cc"_s,     u"xyz"_s,
      u"online"_s, u"site"_s, u"shop"_s, u"store"_s, u"blog"_s,   u"cloud"_s, u"tech"_s, u"design"_s, u"studio"_s,
      u"agency"_s, u"page"_s, u"wiki"_s, u"news"_s,  u"social"_s, u"space"_s, u"live"_s, u"life"_s,
  };
  return known;
}

}  // namespace tarnwick
