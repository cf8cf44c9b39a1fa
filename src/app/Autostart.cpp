#include "app/Autostart.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>

#include "base/DomainError.h"
#include "base/DurableFile.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// A word of an Exec line: in double quotes, with the characters marked that are special there. The backslash is marked
/// twice, since the file's own rules for text are applied first, and a percent sign stands for itself when doubled.
QString quoted(const QString& word) {
  QString result;
  for (const QChar c : word) {
    if (c == u'\\') {
      result += u"\\\\\\\\"_s;
    } else if (c == u'"' || c == u'`' || c == u'$') {
      result += u"\\\\"_s + c;
    } else if (c == u'%') {
      result += u"%%"_s;
    } else {
      result += c;
    }
  }
  return u'"' + result + u'"';
}

QByteArray entryFor(const QString& executable) {
  return u"[Desktop Entry]\nType=Application\nName=Tarnwick\nExec=%1\nIcon=com.brindlemoor.Tarnwick\n"
         "X-GNOME-Autostart-enabled=true\n"_s.arg(quoted(executable))
             .toUtf8();
}

}  // namespace

QString Autostart::path() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         u"/autostart/com.brindlemoor.Tarnwick.desktop"_s;
}

void Autostart::apply(bool wanted, const QString& executable, const QString& file) {
  if (!wanted) {
    if (QFile::exists(file) && !QFile::remove(file)) {
      throw DomainError::invalid(
          QCoreApplication::translate("Autostart", "The login entry could not be removed: %1.").arg(file));
    }
    return;
  }
  const QByteArray entry = entryFor(executable);
  QFile present(file);
  if (present.open(QIODevice::ReadOnly) && present.readAll() == entry) return;
  DurableFile::makeParent(file);
  DurableFile::writeAtomically(entry, file);
}

}  // namespace tarnwick
