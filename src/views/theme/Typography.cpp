#include "views/theme/Typography.h"

#include <QCache>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <cmath>

#include "views/theme/Theme.h"

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
  bool operator==(const LineKey&) const = default;
};

size_t qHash(const LineKey& key, size_t seed) {
  return qHashMulti(seed, key.text, static_cast<int>(key.style), key.scale, key.unit);
}

/// Measuring a line costs more than drawing it, and most lines are the same the next time.
QCache<LineKey, TextLine>& knownLines() {
  constexpr qsizetype kMostLines = 384;
  // Never destroyed: fonts must not outlive what draws them, and this lives as long as the process.
  static auto* const lines = new QCache<LineKey, TextLine>(kMostLines);
  return *lines;
}

bool isDigit(QChar character) { return character >= u'0' && character <= u'9'; }

/// The widest digit and the heights of the ink of "0" and ":", measured once per font.
struct FigureMetrics {
  double widest = 0;
  double digitMiddle = 0;
  double colonMiddle = 0;
};

const FigureMetrics& figuresOf(const QFont& font) {
  static QHash<QString, FigureMetrics> cache;
  const QString key = font.key();
  if (const auto found = cache.constFind(key); found != cache.constEnd()) return *found;
  const QFontMetricsF metrics(font);
  FigureMetrics figures;
  for (char16_t digit = u'0'; digit <= u'9'; ++digit)
    figures.widest = std::max(figures.widest, metrics.horizontalAdvance(QString(QChar(digit))));
  figures.digitMiddle = metrics.tightBoundingRect(u"0"_s).center().y();
  figures.colonMiddle = metrics.tightBoundingRect(u":"_s).center().y();
  return *cache.insert(key, figures);
}

/// Where the run that begins at `start` ends: digits and colons between them stand alone, everything else is shaped
/// together.
qsizetype runEnd(const QString& text, qsizetype start) {
  const auto standsAlone = [&text](qsizetype i) {
    if (isDigit(text[i])) return true;
    return text[i] == u':' && i > 0 && i + 1 < text.size() && isDigit(text[i - 1]) && isDigit(text[i + 1]);
  };
  if (standsAlone(start)) return start + 1;
  qsizetype end = start + 1;
  while (end < text.size() && !standsAlone(end)) ++end;
  return end;
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
  font.setWeight(typeOf(style).weight);
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

TextLine::TextLine(const QString& text, TextStyle style, double scale) : TextLine(text, style, scale, false) {}

TextLine TextLine::unit(const QString& text, TextStyle ofNumber, double scale) {
  return TextLine(text, ofNumber, scale, true);
}

TextLine::TextLine(const QString& text, TextStyle style, double scale, bool unit)
    : text_(text), style_(style), scale_(scale), unit_(unit) {
  const LineKey key{text, style, scale, unit};
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
  layOut();
  knownLines().insert(key, new TextLine(*this));
}

void TextLine::layOut() {
  const QFontMetricsF metrics(font_);
  const FigureMetrics& figures = figuresOf(font_);
  double x = 0;
  for (qsizetype start = 0; start < text_.size();) {
    const qsizetype end = runEnd(text_, start);
    Run run{text_.sliced(start, end - start), x, 0};
    const double advance = metrics.horizontalAdvance(run.text);
    double cell = advance;
    if (isDigit(run.text[0])) {
      cell = figures.widest;
      run.x += (cell - advance) / 2;
    } else if (run.text == u":"_s) {
      run.rise = figures.digitMiddle - figures.colonMiddle;
    }
    if (start == 0) leftBearing_ = (run.x + metrics.tightBoundingRect(run.text.left(1)).left()) / Typography::kGrid;
    run.x /= Typography::kGrid;
    run.rise /= Typography::kGrid;
    x += cell;
    runs_.push_back(std::move(run));
    start = end;
  }
  width_ = x / Typography::kGrid;
}

TextLine TextLine::elided(double width, Elide mode) const {
  if (width_ <= width) return *this;
  const QString ellipsis(QChar(0x2026));
  // Cells of digits are wider than the font says, so the length is searched for with the measure that also draws.
  const auto shortened = [&](qsizetype kept) {
    const qsizetype head = mode == Elide::End ? kept : (kept + 1) / 2;
    const QString start = text_.left(head).trimmed();
    return TextLine(start + ellipsis + text_.right(kept - head).trimmed(), style_, scale_, unit_);
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
  return low > 0 && best.width() <= width ? best : TextLine(QString(), style_, scale_, unit_);
}

double TextLine::ascent() const { return QFontMetricsF(font_).ascent() / Typography::kGrid; }
double TextLine::descent() const { return QFontMetricsF(font_).descent() / Typography::kGrid; }
double TextLine::capHeight() const { return QFontMetricsF(font_).capHeight() / Typography::kGrid; }

void TextLine::draw(QPainter& painter, QPointF baseline, const QColor& color) const {
  painter.save();
  painter.translate(baseline.x(), snappedY(painter, baseline));
  painter.scale(1 / Typography::kGrid, 1 / Typography::kGrid);
  painter.setFont(font_);
  painter.setPen(color);
  for (const Run& run : runs_)
    painter.drawText(QPointF(run.x * Typography::kGrid, run.rise * Typography::kGrid), run.text);
  painter.restore();
}

void TextLine::drawFromInk(QPainter& painter, QPointF baseline, const QColor& color) const {
  draw(painter, {baseline.x() - leftBearing_, baseline.y()}, color);
}

void TextLine::drawCentred(QPainter& painter, QPointF baseline, const QColor& color) const {
  draw(painter, {baseline.x() - width_ / 2, baseline.y()}, color);
}

void TextLine::drawRight(QPainter& painter, QPointF baseline, const QColor& color) const {
  draw(painter, {baseline.x() - width_, baseline.y()}, color);
}

}  // namespace tarnwick
