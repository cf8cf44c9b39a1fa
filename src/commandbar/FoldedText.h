#pragma once

#include <QStringView>
#include <QVarLengthArray>
#include <string_view>

namespace tarnwick {

/// A text as the command bar compares it: in lower case and composed form, by characters as a user perceives them.
/// One object takes text after text without asking for memory, since thousands are compared at a keystroke.
class FoldedText {
 public:
  FoldedText() = default;
  explicit FoldedText(QStringView text) { assign(text); }

  void assign(QStringView text);

  /// Whether each unit is a character.
  bool isPlain() const { return begins_.isEmpty(); }
  std::u16string_view units() const { return {units_.constData(), static_cast<size_t>(units_.size())}; }
  bool isEmpty() const { return units_.isEmpty(); }
  qsizetype size() const { return begins_.isEmpty() ? units_.size() : begins_.size(); }  ///< In characters.
  QStringView at(qsizetype character) const;
  bool operator==(const FoldedText& other) const { return all() == other.all(); }

  /// Whether these characters stand in it from a place on.
  bool has(const FoldedText& characters, qsizetype from) const;
  /// The place of a character at or behind `from`; -1 where it is not there.
  qsizetype find(QStringView character, qsizetype from) const;

 private:
  QStringView all() const { return {units_.constData(), units_.size()}; }
  qsizetype beginOf(qsizetype character) const;

  QVarLengthArray<char16_t, 256> units_;
  QVarLengthArray<qsizetype, 64> begins_;  ///< Of the characters; empty where each is one unit.
};

}  // namespace tarnwick
