#include "clipboard/ClipboardCapture.h"

#include <algorithm>

#include "base/Text.h"
#include "base/WebAddress.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

bool isHexDigit(QChar c) { return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F'); }

/// Numbers of any script, and what stands between them.
bool isOfNumbers(QStringView inside) {
  for (const char32_t c : inside.toUcs4()) {
    const bool separates = c == U'.' || c == U',' || c == U' ' || c == U'%';
    if (!separates && !QChar::isNumber(c)) return false;
  }
  return true;
}

}  // namespace

std::optional<ClipboardCapture> ClipboardCapture::ofText(const QString& text) {
  if (text.isEmpty()) return std::nullopt;
  return ClipboardCapture{.kind = kindOfText(text), .value = text, .imageData = std::nullopt};
}

ClipboardEntry::Kind ClipboardCapture::kindOfText(const QString& text) {
  const QStringView trimmed = Text::trimmed(text);
  if (isColor(trimmed)) return ClipboardEntry::Kind::Color;
  return isLink(trimmed.toString()) ? ClipboardEntry::Kind::Link : ClipboardEntry::Kind::Text;
}

bool ClipboardCapture::isColor(QStringView text) {
  if (text.startsWith(u'#')) {
    const QStringView digits = text.sliced(1);
    const qsizetype count = digits.size();
    return (count == 3 || count == 4 || count == 6 || count == 8) && std::ranges::all_of(digits, isHexDigit);
  }
  if (!text.endsWith(u')')) return false;
  for (const QStringView name : {u"rgb("_s, u"rgba("_s, u"hsl("_s, u"hsla("_s}) {
    if (!text.startsWith(name)) continue;
    const QStringView inside = text.sliced(name.size()).chopped(1);
    return !inside.isEmpty() && isOfNumbers(inside);
  }
  return false;
}

bool ClipboardCapture::isLink(const QString& text) {
  return !text.contains(u' ') && !text.contains(u'\n') && WebAddress::of(text).has_value();
}

}  // namespace tarnwick
