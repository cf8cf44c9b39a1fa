#include "desktop/TestTerminal.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

#include "support/VirtualDisplay.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

// How a terminal reports a button, if it is asked to.
const QRegularExpression& report() {
  static const QRegularExpression pattern(u"\\x1b\\[<0;\\d+;\\d+([Mm])"_s);
  return pattern;
}

}  // namespace

TestTerminal::TestTerminal(const QStringList& command) {
  const QString script = u"stty raw -echo; printf '\\033[?1000h\\033[?1006h'; exec cat > '%1'"_s;
  const QString file = folder_.filePath(u"input"_s);
  process_ = ChildProcess::start(command + QStringList{u"sh"_s, u"-c"_s, script.arg(file)});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return QFile::exists(file); }));
}

QByteArray TestTerminal::input() const {
  QFile file(folder_.filePath(u"input"_s));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray TestTerminal::typed() const { return QString::fromLatin1(input()).remove(report()).toLatin1(); }

int TestTerminal::clicks() const {
  int clicks = 0;
  for (auto found = report().globalMatch(QString::fromLatin1(input())); found.hasNext();)
    clicks += found.next().captured(1) == u"M" ? 1 : 0;
  return clicks;
}

}  // namespace tarnwick::testing
