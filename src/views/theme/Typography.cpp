#include "views/theme/Typography.h"

#include <QCache>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "views/theme/Theme.h"
#include "views/theme/Upright.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct Type {
  double size;
  QFont::Weight weight;
  double tracking;  ///< As a share of the size.
};

Type typeOf(TextStyle style) {
  switch (style) {
    case TextStyle::Display:
      return {28, QFont::DemiBold, -0.02};
    case TextStyle::Headline:
      return {22, QFont::DemiBold, -0.02};
    case TextStyle::Timer:
      return {20, QFont::DemiBold, -0.02};
    case TextStyle::Gauge:
      return {18, QFont::DemiBold, -0.01};
    case TextStyle::Figure17:
      return {17, QFont::DemiBold, -0.01};
    case TextStyle::Title:
      return {13, QFont::DemiBold, -0.01};
    case TextStyle::Body:
      return {12, QFont::Medium, 0};
    case TextStyle::ListRow:
      return {11.5, QFont::Medium, 0};
    case TextStyle::Caption:
      return {10.5, QFont::Medium, 0};
    case TextStyle::TabLabel:
      return {10.5, QFont::DemiBold, 0};
    case TextStyle::GaugeLabel:
      return {9.5, QFont::DemiBold, 0.5 / 9.5};
    case TextStyle::BadgeInitial:
      return {11, QFont::Bold, 0};
    case TextStyle::Flip:
      return {34, QFont::DemiBold, -0.02};
    case TextStyle::Overlap:
      return {46, QFont::ExtraBold, -0.08};
    case TextStyle::Capitals:
      return {10.5, QFont::Bold, 0.8 / 10.5};
    case TextStyle::BodyStrong:
      return {12, QFont::DemiBold, 0};
    case TextStyle::DayFigure:
      return {23, QFont::DemiBold, -0.02};
    case TextStyle::ListRowStrong:
      return {11.5, QFont::DemiBold, 0};
    case TextStyle::CommandField:
      return {22, QFont::Medium, -0.02};
    case TextStyle::CommandTitle:
      return {14, QFont::Medium, -0.01};
    case TextStyle::CommandCaption:
      return {11, QFont::Medium, 0};
    case TextStyle::KeyCap:
      return {11, QFont::DemiBold, 0};
  }
  return {12, QFont::Medium, 0};
}

constexpr double kUnitShare = 0.7;

QString& cachedFamily() {
  static QString family;
  return family;
}

/// What decides how a line is laid out, but for the family.
struct LineKey {
  QString text;
  TextStyle style;
  double scale;
  bool unit;
  Qt::LayoutDirection direction;
  bool operator==(const LineKey&) const = default;
};

size_t qHash(const LineKey& key, size_t seed) {
  return qHashMulti(seed, key.text, static_cast<int>(key.style), key.scale, key.unit, static_cast<int>(key.direction));
}

/// Measuring a line costs more than drawing it, and most lines are the same the next time.
QCache<LineKey, TextLine>& knownLines() {
  constexpr qsizetype kMostLines = 384;
  // Never destroyed: fonts must not outlive what draws them, and this lives as long as the process.
  static auto* const lines = new QCache<LineKey, TextLine>(kMostLines);
  return *lines;
}

bool isDigit(QChar character) { return character.category() == QChar::Number_DecimalDigit; }

/// The digits' advances and the heights of the ink of "0" and ":", measured once per font and way of writing digits.
struct FigureMetrics {
  std::array<double, 10> advances{};
  double widest = 0;
  double digitMiddle = 0;
  double colonMiddle = 0;
};

const FigureMetrics& figuresOf(const QFont& font, QChar digit) {
  static QHash<std::pair<QString, char16_t>, FigureMetrics> cache;
  const auto zero = static_cast<char16_t>(digit.unicode() - digit.digitValue());
  const std::pair key(font.key(), zero);
  if (const auto found = cache.constFind(key); found != cache.constEnd()) return *found;
  const QFontMetricsF metrics(font);
  FigureMetrics figures;
  for (size_t i = 0; i < figures.advances.size(); ++i)
    figures.advances[i] = metrics.horizontalAdvance(QString(QChar(static_cast<char16_t>(zero + i))));
  figures.widest = *std::ranges::max_element(figures.advances);
  figures.digitMiddle = metrics.tightBoundingRect(QString(QChar(zero))).center().y();
  figures.colonMiddle = metrics.tightBoundingRect(u":"_s).center().y();
  return *cache.insert(key, figures);
}

/// A part of a line whose glyphs are moved together.
struct TextSpan {
  int start = 0;
  int length = 0;
  bool alone = false;
  double wider = 0;  ///< By how much its cell is wider than its character.
  double rise = 0;
};

/// Digits and the colons between them stand alone, everything else is shaped together.
std::vector<TextSpan> spansOf(const QString& text, const QFont& font) {
  const auto isColon = [&text](qsizetype i) {
    return text[i] == u':' && i > 0 && i + 1 < text.size() && isDigit(text[i - 1]) && isDigit(text[i + 1]);
  };
  std::vector<TextSpan> spans;
  const FigureMetrics* figures = nullptr;
  bool open = false;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const bool colon = isColon(i);
    const bool alone = colon || isDigit(text[i]);
    if (open && !alone) {
      ++spans.back().length;
      continue;
    }
    TextSpan span{static_cast<int>(i), 1, alone};
    if (colon) {
      span.rise = figures->digitMiddle - figures->colonMiddle;
    } else if (alone) {
      // Not asked again for each digit: who writes in two ways does not do so in one number.
      if (i == 0 || !figures || !isDigit(text[i - 1])) figures = &figuresOf(font, text[i]);
      span.wider = figures->widest - figures->advances[static_cast<size_t>(text[i].digitValue())];
    }
    spans.push_back(span);
    open = !alone;
  }
  return spans;
}

/// What ends a line elsewhere is a blank here.
QString onOneLine(QString text) {
  for (QChar& character : text)
    if (character.category() == QChar::Separator_Line || character.category() == QChar::Separator_Paragraph ||
        character == u'\n' || character == u'\t')
      character = u' ';
  return text;
}

Qt::LayoutDirection directionOf(const QString& text) {
  return text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

}  // namespace

QString Typography::family() {
  QString& family = cachedFamily();
  if (!family.isEmpty()) return family;
  family = QGuiApplication::font().family();
  static const QStringList generic = {u"Sans Serif"_s, u"Sans"_s, u"sans-serif"_s, u"sans"_s, u"Helvetica"_s,
                                      u"System"_s,     {}};
  if (generic.contains(family, Qt::CaseInsensitive) && QFontDatabase::families().contains(u"Inter"_s))
    family = u"Inter"_s;
  return family;
}

void Typography::reload() {
  cachedFamily().clear();
  knownLines().clear();
}

double Typography::pixelSize(TextStyle style, double scale) {
  return std::max(typeOf(style).size, theme::kLeastTextSize / scale);
}

QFont Typography::widgetFont(TextStyle style) {
  QFont font(family());
  font.setPixelSize(static_cast<int>(std::lround(typeOf(style).size)));
  // The toolkit thickens the stems of small text, so that medium would look semi-bold beside lines of our own.
  const QFont::Weight weight = typeOf(style).weight;
  font.setWeight(weight == QFont::Medium ? QFont::Normal : weight);
  return font;
}

TextLine Typography::fitting(const QStringList& texts, TextStyle style, double width, Elide mode, double scale) {
  for (const QString& text : texts)
    if (TextLine line(text, style, scale); line.width() <= width) return line;
  return TextLine(texts.isEmpty() ? QString() : texts.last(), style, scale).elided(width, mode);
}

double snappedY(const QPainter& painter, QPointF point) {
  const QTransform transform = painter.deviceTransform();
  if (transform.type() > QTransform::TxScale || qFuzzyIsNull(transform.m22())) return point.y();
  const double device = transform.m22() * point.y() + transform.dy();
  return point.y() + (std::round(device) - device) / transform.m22();
}

TextLine::TextLine(const QString& text, TextStyle style, double scale)
    : TextLine(text, style, scale, false, directionOf(text)) {}

TextLine TextLine::unit(const QString& text, TextStyle ofNumber, double scale) {
  return TextLine(text, ofNumber, scale, true, directionOf(text));
}

TextLine::TextLine(const QString& text, TextStyle style, double scale, bool unit, Qt::LayoutDirection direction)
    : text_(text), style_(style), scale_(scale), unit_(unit), direction_(direction) {
  const LineKey key{text, style, scale, unit, direction};
  if (const TextLine* known = knownLines().object(key)) {
    *this = *known;
    return;
  }
  const Type type = typeOf(style);
  size_ = std::max(type.size * (unit ? kUnitShare : 1), theme::kLeastTextSize / scale);
  font_ = QFont(Typography::family());
  font_.setPixelSize(static_cast<int>(std::lround(size_ * Typography::kGrid)));
  font_.setWeight(unit ? QFont::Medium : type.weight);
  font_.setHintingPreference(QFont::PreferNoHinting);
  font_.setLetterSpacing(QFont::AbsoluteSpacing, size_ * Typography::kGrid * type.tracking);
  if (!text_.isEmpty()) layOut();
  knownLines().insert(key, new TextLine(*this));
}

void TextLine::layOut() {
  const QString text = onOneLine(text_);
  const std::vector<TextSpan> spans = spansOf(text, font_);
  QTextLayout layout(text, font_);
  QTextOption option;
  option.setTextDirection(direction_);
  option.setWrapMode(QTextOption::NoWrap);
  option.setFlags(QTextOption::IncludeTrailingSpaces);
  layout.setTextOption(option);
  // Ranges of their own keep digits from being kerned, and make their cells as wide as the widest.
  QList<QTextLayout::FormatRange> formats;
  for (const TextSpan& span : spans) {
    if (!span.alone) continue;
    QTextLayout::FormatRange range{span.start, span.length, {}};
    if (span.wider > 0) {
      range.format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
      range.format.setFontLetterSpacing(font_.letterSpacing() + span.wider);
    }
    formats << range;
  }
  layout.setFormats(formats);
  layout.beginLayout();
  const QTextLine line = layout.createLine();
  layout.endLayout();

  const double baseline = line.y() + line.ascent();
  double leftmost = std::numeric_limits<double>::max();
  double rightmost = std::numeric_limits<double>::lowest();
  std::pair<QRawFont, quint32> last;
  for (const TextSpan& span : spans) {
    const QPointF shift(span.wider / 2, span.rise - baseline);
    for (QGlyphRun& run : layout.glyphRuns(span.start, span.length)) {
      QList<QPointF> places = run.positions();
      for (QPointF& place : places) place += shift;
      for (qsizetype i = 0; i < places.size(); ++i) {
        if (places[i].x() > rightmost) {
          rightmost = places[i].x();
          last = {run.rawFont(), run.glyphIndexes()[i]};
        }
        if (places[i].x() >= leftmost) continue;
        leftmost = places[i].x();
        leftBearing_ = (leftmost + run.rawFont().boundingRect(run.glyphIndexes()[i]).left()) / Typography::kGrid;
      }
      run.setPositions(places);
      glyphs_.push_back(std::move(run));
    }
  }
  width_ = line.horizontalAdvance() / Typography::kGrid;
  if (!last.first.isValid()) return;
  const double end = rightmost + last.first.boundingRect(last.second).right();
  rightBearing_ = width_ - end / Typography::kGrid;
}

double TextLine::inkInset(const QPainter& painter) const { return isMirrored(painter) ? rightBearing_ : leftBearing_; }

TextLine TextLine::elided(double width, Elide mode) const {
  if (width_ <= width) return *this;
  const QString ellipsis(QChar(0x2026));
  const QTextLayout whole(text_);
  // Cells of digits are wider than the font says, so the length is searched for with the measure that also draws.
  const auto shortened = [&](qsizetype kept) {
    const qsizetype head = mode == Elide::End ? kept : (kept + 1) / 2;
    qsizetype end = head;
    while (end > 0 && !whole.isValidCursorPosition(static_cast<int>(end))) --end;
    qsizetype rest = text_.size() - (kept - head);
    while (rest < text_.size() && !whole.isValidCursorPosition(static_cast<int>(rest))) ++rest;
    return TextLine(text_.left(end).trimmed() + ellipsis + text_.sliced(rest).trimmed(), style_, scale_, unit_,
                    direction_);
  };
  qsizetype low = 0;
  qsizetype high = text_.size() - 1;
  while (low < high) {
    const qsizetype middle = (low + high + 1) / 2;
    if (shortened(middle).width() <= width)
      low = middle;
    else
      high = middle - 1;
  }
  const TextLine best = shortened(low);
  return low > 0 && best.width() <= width ? best : TextLine(QString(), style_, scale_, unit_, direction_);
}

double TextLine::ascent() const { return QFontMetricsF(font_).ascent() / Typography::kGrid; }
double TextLine::descent() const { return QFontMetricsF(font_).descent() / Typography::kGrid; }
double TextLine::capHeight() const { return QFontMetricsF(font_).capHeight() / Typography::kGrid; }

void TextLine::draw(QPainter& painter, QPointF baseline, const QColor& color) const {
  painter.save();
  keepUpright(painter, baseline.x() + width_ / 2);
  painter.translate(baseline.x(), snappedY(painter, baseline));
  painter.scale(1 / Typography::kGrid, 1 / Typography::kGrid);
  painter.setPen(color);
  for (const QGlyphRun& run : glyphs_) painter.drawGlyphRun({}, run);
  painter.restore();
}

void TextLine::drawFromInk(QPainter& painter, QPointF baseline, const QColor& color) const {
  draw(painter, {baseline.x() - inkInset(painter), baseline.y()}, color);
}

void TextLine::drawCentred(QPainter& painter, QPointF baseline, const QColor& color) const {
  draw(painter, {baseline.x() - width_ / 2, baseline.y()}, color);
}

void TextLine::drawRight(QPainter& painter, QPointF baseline, const QColor& color) const {
  draw(painter, {baseline.x() - width_, baseline.y()}, color);
}

}  // namespace tarnwick
