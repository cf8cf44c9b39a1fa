#include "app/Autostart.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "apps/DesktopExec.h"
#include "apps/KeyFile.h"
#include "base/DesktopId.h"
#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/SmallFile.h"

namespace tarnwick {
namespace {

struct AutostartWords {
  Q_DECLARE_TR_FUNCTIONS(Autostart)
};

using namespace Qt::StringLiterals;

/// An argument of an Exec line: in double quotes, with the characters marked that are special there. The backslash is
/// marked twice, since the file's own rules for text are applied first, and a percent sign stands for itself when
/// doubled.
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
  return u"[Desktop Entry]\nType=Application\nName=Tarnwick\nExec=%1\nIcon=%2\n"
         "X-GNOME-Autostart-enabled=true\n"_s.arg(quoted(executable), kDesktopId)
             .toUtf8();
}

enum class Entry { None, On, SwitchedOff, Foreign };

/// Whether a line is how one of the desktops' own tools switches an entry off.
bool switchesOff(QByteArrayView line) {
  const qsizetype equals = line.indexOf('=');
  if (equals < 0) return false;
  const QByteArrayView key = line.first(equals).trimmed();
  const QByteArrayView value = line.sliced(equals + 1).trimmed();
  return (key == "Hidden" && KeyFile::isTrue(QString::fromUtf8(value))) ||
         (key == "X-GNOME-Autostart-enabled" && value == "false");
}

/// Whether a command line starts this program: this copy, another build or the installed one.
bool isOurs(const QString& exec, const QString& executable) {
  const auto words = DesktopExec::split(exec);
  if (!words) return false;
  const QString program = QFileInfo(QString(words->first().text).replace(u"%%"_s, u"%"_s)).fileName();
  return program == "tarnwick"_L1 || program == QFileInfo(executable).fileName();
}

Entry look(const Autostart& place) {
  const QFileInfo info(place.file);
  if (!info.exists() && !info.isSymLink()) return Entry::None;
  const KeyFile entry = KeyFile::read(place.file);
  const QString group = u"Desktop Entry"_s;
  if (!isOurs(entry.string(group, u"Exec"_s), place.executable)) return Entry::Foreign;
  const bool isOff =
      entry.flag(group, u"Hidden"_s) || entry.string(group, u"X-GNOME-Autostart-enabled"_s).trimmed() == "false"_L1;
  return isOff ? Entry::SwitchedOff : Entry::On;
}

constexpr qint64 kLargestEntry = 1024 * 1024;

/// Takes the lines out that switch the entry off; every other byte stays.
void switchOn(const QString& file) {
  const auto present = SmallFile::read(file, kLargestEntry);
  if (!present) throw DomainError::invalid(Autostart::notChanged(file));
  QList<QByteArray> lines = present->split('\n');
  bool isInEntry = false;
  lines.removeIf([&isInEntry](const QByteArray& line) {
    const QByteArray bare = line.trimmed();
    if (bare.startsWith('[')) isInEntry = bare == "[Desktop Entry]";
    return isInEntry && switchesOff(bare);
  });
  DurableFile::writeAtomically(lines.join('\n'), file);
}

}  // namespace

QString Autostart::path() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         u"/autostart/%1.desktop"_s.arg(kDesktopId);
}

bool Autostart::isOn() const { return look(*this) == Entry::On; }

Capability Autostart::capability() const {
  if (look(*this) != Entry::Foreign) return Capability::yes();
  return Capability::no(AutostartWords::tr("The login entry “%1” was written by another app.").arg(file));
}

QString Autostart::notChanged(const QString& file) {
  return AutostartWords::tr("The login entry could not be changed: %1.").arg(file);
}

void Autostart::set(bool wanted) const {
  switch (look(*this)) {
    case Entry::Foreign:
      throw DomainError::invalid(capability().reason);
    case Entry::None:
      if (!wanted) return;
      DurableFile::makeParent(file);
      DurableFile::writeAtomically(entryFor(executable), file);
      return;
    case Entry::On:
      if (!wanted && !QFile::remove(file)) throw DomainError::invalid(notChanged(file));
      return;
    case Entry::SwitchedOff:
      if (wanted) switchOn(file);
      return;
  }
}

}  // namespace tarnwick
