#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <limits>
#include <string_view>
#include <vector>

namespace tarnwick {

/// All emoji in the order of emoji keyboards, each by its index, with the words by which people ask for them in English
/// and in one other language. Those that only differ in skin tone are left out. It reads the tables where they lie and
/// keeps nothing of them but where their lines begin.
class EmojiTable {
 public:
  /// In the user's language. Made at the first call, then constant.
  static const EmojiTable& shared();
  /// Of tables as cmake/emoji_table.py makes them, which must outlive it. Another language whose emoji are others than
  /// those of the English one is left out.
  explicit EmojiTable(std::string_view english, std::string_view other = {});

  qsizetype size() const { return static_cast<qsizetype>(english_.lines.size()); }
  QString emoji(qsizetype index) const;
  QString name(qsizetype index) const;
  /// What Unicode calls the group that it stands in, in English: "Smileys & Emotion".
  QString group(qsizetype index) const;
  /// -1 where it is not in the table.
  qsizetype indexOf(const QString& emoji) const;

  /// Those of whose words every word of the query begins one, in one of the languages, without regard to case, accents
  /// and signs: those whose name is the query first, then in order. An emoji finds itself, an empty query all.
  QList<qsizetype> search(const QString& query, qsizetype most = std::numeric_limits<qsizetype>::max()) const;

  /// A text as the tables have it to be found.
  static QString folded(const QString& text);
  /// What the files of other languages are called, the best first, by the languages that the user reads. None where
  /// English does.
  static QStringList fileNames(const QStringList& languages);

 private:
  struct Part {
    std::string_view text;
    std::vector<size_t> lines;  ///< Where the line of each emoji begins.

    static Part of(std::string_view text);
    std::string_view line(size_t index) const;
    std::string_view emoji(size_t index) const;
    std::string_view name(size_t index) const;
    std::vector<size_t> thatHave(std::string_view wordBeginning) const;
    bool isCalled(size_t index, std::string_view folded) const;
  };

  bool isCalled(qsizetype index, std::string_view folded) const;

  Part english_;
  Part other_;
};

}  // namespace tarnwick
