#include "base/ModuleLoader.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

namespace tarnwick {

using namespace Qt::StringLiterals;

QString ModuleLoader::find(const QString& fileName) {
  const QDir program(QCoreApplication::applicationDirPath());
  for (const QString& folder : {u"."_s, u"../lib/tarnwick"_s}) {
    const QString path = QDir::cleanPath(program.absoluteFilePath(folder + u'/' + fileName));
    if (QFileInfo(path).isFile()) return path;
  }
  return {};
}

QFunctionPointer ModuleLoader::function(const QString& module, const char* name) {
  const QString path = find(module);
  if (path.isEmpty()) {
    qWarning("The part \"%s\" of the program is missing.", qUtf8Printable(module));
    return nullptr;
  }
  QLibrary library(path);
  library.setLoadHints(QLibrary::PreventUnloadHint);
  const QFunctionPointer found = library.resolve(name);
  if (!found) qWarning("%s", qUtf8Printable(library.errorString()));
  return found;
}

}  // namespace tarnwick
