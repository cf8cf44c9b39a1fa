#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QString>
#include <QStringList>
#include <limits>

namespace tarnwick {

/// A text of groups and keys, as desktop entries and the lists beside them are written. Reading never fails: a line
/// that is neither is passed over, and what is not there reads as empty.
class KeyFile {
 public:
  /// Of a key that is given in several languages only the one that `locales` prefers is kept.
  static KeyFile parse(QByteArrayView utf8, const QStringList& locales = {});

  /// Reads a file of at most a megabyte; one that cannot be read is as empty. Blocks.
  static KeyFile read(const QString& path, const QStringList& locales = {});

  bool hasGroup(const QString& group) const { return groups_.contains(group); }
  bool has(const QString& group, const QString& key) const;
  QStringList keys(const QString& group) const;

  /// The value with its escapes resolved.
  QString string(const QString& group, const QString& key) const;
  /// The same without translation, which is English as a rule.
  QString untranslated(const QString& group, const QString& key) const;
  /// The items between semicolons, empty ones left out.
  QStringList list(const QString& group, const QString& key) const;
  /// How desktop files write that something holds: "true" in any case, or "1".
  static bool isTrue(const QString& value);
  bool flag(const QString& group, const QString& key) const;

 private:
  struct Value {
    QString raw;
    QString untranslated;
    qsizetype rank = std::numeric_limits<qsizetype>::max();  ///< The place of its language in the reader's list; the
                                                             ///< untranslated value comes last.
  };
  QHash<QString, QHash<QString, Value>> groups_;
};

}  // namespace tarnwick
