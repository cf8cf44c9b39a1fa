#include "commandbar/Arithmetic.h"

#include <QCoreApplication>
#include <cmath>

#include "base/DomainError.h"
#include "base/Text.h"

namespace tarnwick {
namespace {

struct ArithmeticWords {
  Q_DECLARE_TR_FUNCTIONS(Arithmetic)
};

using namespace Qt::StringLiterals;

[[noreturn]] void fail(const char* message) { throw DomainError::invalid(ArithmeticWords::tr(message)); }

QString normalised(const QString& text) {
  QString result;
  result.reserve(text.size());
  for (const QChar character : text) {
    if (character.isSpace()) continue;
    switch (character.unicode()) {
      case u'×':
        result += u'*';
        break;
      case u'÷':
        result += u'/';
        break;
      case u'−':
        result += u'-';
        break;
      default:
        result += character;
    }
  }
  return result;
}

bool isPartOfNumber(const QString& character) {
  if (character == "."_L1) return true;
  const char32_t first = QStringView(character).isEmpty() ? 0 : character.toUcs4().value(0);
  return QChar::isNumber(first);
}

}  // namespace

Arithmetic::Arithmetic(const QString& text) : characters_(Text::characters(normalised(text), kMostCharacters + 1)) {}

double Arithmetic::evaluate() {
  position_ = 0;
  if (characters_.isEmpty() || characters_.size() > kMostCharacters)
    fail(QT_TRANSLATE_NOOP("Arithmetic", "Enter an expression."));
  const double value = expression();
  if (position_ < characters_.size() || !std::isfinite(value))
    fail(QT_TRANSLATE_NOOP("Arithmetic", "Invalid expression."));
  return value;
}

bool Arithmetic::take(char16_t character) {
  if (position_ >= characters_.size() || characters_[position_] != QChar(character)) return false;
  ++position_;
  return true;
}

double Arithmetic::expression() {
  double value = term();
  for (;;) {
    if (take(u'+'))
      value += term();
    else if (take(u'-'))
      value -= term();
    else
      return value;
  }
}

double Arithmetic::term() {
  double value = factor();
  for (;;) {
    if (take(u'*')) {
      value *= factor();
    } else if (take(u'/')) {
      const double divisor = factor();
      if (divisor == 0) fail(QT_TRANSLATE_NOOP("Arithmetic", "Cannot divide by zero."));
      value /= divisor;
    } else {
      return value;
    }
  }
}

double Arithmetic::factor() {
  if (take(u'+')) return factor();
  if (take(u'-')) return -factor();
  if (!take(u'(')) return number();
  const double value = expression();
  if (!take(u')')) fail(QT_TRANSLATE_NOOP("Arithmetic", "Missing closing parenthesis."));
  return value;
}

double Arithmetic::number() {
  QString run;
  for (; position_ < characters_.size() && isPartOfNumber(characters_[position_]); ++position_)
    run += characters_[position_];
  if (const auto value = Text::number(run)) return *value;
  // A number too large for a double is one; what comes of it is judged at the end.
  if (const double value = run.toDouble(); std::isinf(value)) return value;
  fail(QT_TRANSLATE_NOOP("Arithmetic", "Expected a number."));
}

}  // namespace tarnwick
