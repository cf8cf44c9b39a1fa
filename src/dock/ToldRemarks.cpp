#include "dock/ToldRemarks.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>

#include "base/DomainError.h"
#include "base/DurableFile.h"

namespace tarnwick {

ToldRemarks::ToldRemarks(const QString& directory)
    : file_(QDir(directory).filePath(QStringLiteral("told-remarks.json"))) {
  try {
    const QByteArray data = DurableFile::readIfPresent(file_).value_or(QByteArray());
    for (const QJsonValue& sentence : QJsonDocument::fromJson(data).array()) told_ << sentence.toString();
  } catch (const DomainError&) {
  }
}

void ToldRemarks::add(const QString& sentence) {
  if (told_.contains(sentence)) return;
  told_ << sentence;
  try {
    DurableFile::makeParent(file_);
    DurableFile::writeAtomically(QJsonDocument(QJsonArray::fromStringList(told_)).toJson(), file_,
                                 DurableFile::kPrivate);
  } catch (const DomainError&) {
  }
}

}  // namespace tarnwick
