#include "commandbar/Calculator.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "base/Text.h"
#include "commandbar/UtilityText.h"

namespace tarnwick {
namespace {

constexpr std::string_view kOperators = "+-*/%^()";
/// What stands for digits of other scripts, which belong to a number that cannot be read, and for all that no
/// calculation has in it.
constexpr char kStrangeDigit = 'd';
constexpr char kOther = '?';

char markOf(const QString& character) {
  const char ascii = character.size() == 1 ? character[0].toLatin1() : kOther;
  if ((ascii >= '0' && ascii <= '9') || ascii == '.' || ascii == ' ') return ascii;
  if (kOperators.find(ascii) != kOperators.npos) return ascii;
  return QChar::isNumber(character.toUcs4().value(0)) ? kStrangeDigit : kOther;
}

bool isDigit(char mark) { return (mark >= '0' && mark <= '9') || mark == kStrangeDigit; }

/// Whether a text has a number and an operator. What else is typed into a command bar is told apart by this alone.
bool looksLikeCalculation(QStringView text) {
  bool hasNumber = false;
  bool hasOperator = false;
  for (qsizetype i = 0; i < text.size() && !(hasNumber && hasOperator); ++i) {
    const QChar unit = text[i];
    const bool isPair = unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
    hasNumber = hasNumber || QChar::isNumber(isPair ? QChar::surrogateToUcs4(unit, text[++i]) : unit.unicode());
    hasOperator = hasOperator || kOperators.find(unit.toLatin1()) != kOperators.npos;
  }
  return hasNumber && hasOperator;
}

/// Reads one calculation. Every step gives nothing where the text is none.
class Parser {
 public:
  explicit Parser(std::string marks) : marks_(std::move(marks)) {}

  std::optional<double> whole() {
    const auto value = expression();
    return value && peek() == kEnd && std::isfinite(*value) ? value : std::nullopt;
  }

 private:
  using Value = std::optional<double>;
  static constexpr char kEnd = '\0';

  /// Counts a level of nesting for as long as it lives.
  struct Level {
    explicit Level(int& depth) : depth_(++depth) {}
    ~Level() { --depth_; }
    Q_DISABLE_COPY_MOVE(Level)
    int& depth_;
  };

  /// The next mark that is no blank, which is where reading goes on.
  char peek() {
    position_ = std::min(marks_.find_first_not_of(' ', position_), marks_.size());
    return position_ < marks_.size() ? marks_[position_] : kEnd;
  }
  bool take(char mark) {
    if (peek() != mark) return false;
    ++position_;
    return true;
  }
  /// Whether what follows the percent sign here makes it a remainder.
  bool hasOperandAfterPercent() const {
    const size_t next = marks_.find_first_not_of(' ', position_ + 1);
    if (next == std::string::npos) return false;
    return isDigit(marks_[next]) || marks_[next] == '(' || marks_[next] == '-' || marks_[next] == '.';
  }

  Value expression() {
    Value left = term();
    while (left) {
      const char sign = peek();
      if (sign != '+' && sign != '-') break;
      ++position_;
      const Value right = term();
      if (!right) return right;
      left = sign == '+' ? *left + *right : *left - *right;
    }
    return left;
  }

  Value term() {
    Value left = power();
    while (left) {
      const char sign = peek();
      const bool isOurs = sign == '*' || sign == '/' || (sign == '%' && hasOperandAfterPercent());
      if (!isOurs) break;
      ++position_;
      const Value right = power();
      if (!right) return right;
      if (sign == '*') {
        left = *left * *right;
        continue;
      }
      if (*right == 0) return std::nullopt;
      left = sign == '/' ? *left / *right : std::fmod(*left, *right);
    }
    return left;
  }

  Value power() {
    const Level level(depth_);
    if (depth_ > kDeepest) return std::nullopt;
    const Value base = unary();
    if (!base || !take('^')) return base;
    const Value exponent = power();
    if (!exponent) return exponent;
    const double result = std::pow(*base, *exponent);
    return std::isfinite(result) ? Value(result) : std::nullopt;
  }

  Value unary() {
    bool isNegative = false;
    for (;; isNegative = !isNegative) {
      while (take('+')) continue;
      if (!take('-')) break;
    }
    Value value = primary();
    if (!value) return value;
    if (peek() == '%' && !hasOperandAfterPercent()) {
      ++position_;
      value = *value / 100;
    }
    return isNegative ? -*value : *value;
  }

  Value primary() {
    if (!take('(')) return number();
    const Value inner = expression();
    return inner && take(')') ? inner : std::nullopt;
  }

  Value number() {
    peek();
    const size_t begin = position_;
    while (position_ < marks_.size() && (isDigit(marks_[position_]) || marks_[position_] == '.')) ++position_;
    const QString run = QString::fromLatin1(marks_.data() + begin, static_cast<qsizetype>(position_ - begin));
    if (const auto value = Text::number(run)) return value;
    // A number too large for a double is one; what comes of it is judged at the end.
    const double value = run.toDouble();
    return std::isinf(value) ? Value(value) : std::nullopt;
  }

  static constexpr int kDeepest = Calculator::kDeepest;
  std::string marks_;
  size_t position_ = 0;
  int depth_ = 0;
};

}  // namespace

std::optional<double> Calculator::evaluate(const QString& text) {
  const QStringView trimmed = Text::withoutOuterBlanks(text);
  if (!looksLikeCalculation(trimmed)) return std::nullopt;
  std::string marks;
  for (const QString& character : Text::characters(trimmed.toString())) marks += markOf(character);
  return Parser(std::move(marks)).whole();
}

QString Calculator::format(double value, const QLocale& locale) {
  constexpr double kExactWholes = 1e15;
  const bool isWhole = std::round(value) == value && std::abs(value) < kExactWholes;
  return UtilityText::localised(value, locale, isWhole ? 0 : 10);
}

}  // namespace tarnwick
