#pragma once

#include <QString>
#include <QStringList>

namespace tarnwick {

/// Which remarks about this desktop the user has had, so that a start does not repeat them. Kept in a small file; one
/// that cannot be read or written costs no more than a remark too many.
class ShownRemarks {
 public:
  explicit ShownRemarks(const QString& directory);

  bool contains(const QString& sentence) const { return shown_.contains(sentence); }
  void add(const QString& sentence);

 private:
  QString file_;
  QStringList shown_;
};

}  // namespace tarnwick
