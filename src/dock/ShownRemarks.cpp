#include "dock/ShownRemarks.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>

#include "base/DomainError.h"
#include "base/DurableFile.h"

namespace tarnwick {

ShownRemarks::ShownRemarks(const QString& directory)
    : file_(QDir(directory).filePath(QStringLiteral("told-remarks.json"))) {
  try {
    const QByteArray data = DurableFile::readIfPresent(file_).value_or(QByteArray());
    for (const QJsonValue& sentence : QJsonDocument::fromJson(data).array()) shown_ << sentence.toString();
  } catch (const DomainError&) {
  }
}

void ShownRemarks::add(const QString& sentence) {
  if (shown_.contains(sentence)) return;
  shown_ << sentence;
  try {
    DurableFile::makeParent(file_);
    DurableFile::writeAtomically(QJsonDocument(QJsonArray::fromStringList(shown_)).toJson(), file_,
                                 DurableFile::kPrivate);
  } catch (const DomainError&) {
  }
}

}  // namespace tarnwick
