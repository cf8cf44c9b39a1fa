#pragma once

#include <QString>
#include <QStringList>

namespace tarnwick {

/// The calculator that says what is wrong: the four operations, signs and parentheses. Multiplication and division
/// signs and the true minus are understood, and white space means nothing.
class Arithmetic {
 public:
  /// More characters than this are no expression.
  static constexpr qsizetype kMostCharacters = 500;

  explicit Arithmetic(const QString& text);

  /// A finite number. Throws DomainError with a sentence that says what is wrong with the text.
  double evaluate();

 private:
  double expression();
  double term();
  double factor();
  double number();
  /// Steps over the next character if it is this one.
  bool take(char16_t character);

  QStringList characters_;  ///< As a user perceives them; more than there may be are not all listed.
  qsizetype position_ = 0;
};

}  // namespace tarnwick
