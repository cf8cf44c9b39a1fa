#include "app/SnapshotMode.h"

#include <QApplication>
#include <QDir>
#include <QLocale>
#include <QTemporaryDir>
#include <cmath>
#include <cstdio>

#include "app/SnapshotBar.h"
#include "app/SnapshotWindows.h"
#include "app/Words.h"
#include "base/DomainError.h"
#include "base/Text.h"
#include "views/snapshot/SnapshotFixture.h"
#include "views/theme/DesktopLook.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kMostDensity = 4;

std::optional<QString> valueOf(const QStringList& arguments, QLatin1StringView name) {
  const qsizetype at = arguments.indexOf(name);
  if (at < 0) return std::nullopt;
  if (at + 1 >= arguments.size() || arguments[at + 1].startsWith(u"--"_s))
    throw DomainError::invalid(u"%1 needs a value."_s.arg(name));
  return arguments[at + 1];
}

void choose(SnapshotOptions& options, const QString& list) {
  options.tiles = options.panels = options.docks = options.windows = options.bars = false;
  for (const QString& part : list.split(u',')) {
    const QString word = part.trimmed();
    if (word == u"tiles"_s)
      options.tiles = true;
    else if (word == u"panels"_s)
      options.panels = true;
    else if (word == u"docks"_s)
      options.docks = true;
    else if (word == u"windows"_s)
      options.windows = true;
    else if (word == u"bars"_s)
      options.bars = true;
    else
      throw DomainError::invalid(
          u"\"%1\" is no kind of picture. There are tiles, panels, docks, windows and bars."_s.arg(word));
  }
}

QLocale localeNamed(const QString& name) {
  const QLocale locale(name);
  // What the toolkit does not know is the locale of no language.
  if (locale.language() == QLocale::C)
    throw DomainError::invalid(u"\"%1\" is no locale. One is written like de_DE."_s.arg(name));
  return locale;
}

QList<double> densities(const QString& list) {
  QList<double> result;
  for (const QString& part : list.split(u',')) {
    const double density = Text::number(part.trimmed()).value_or(0);
    if (!(density >= 0.5 && density <= kMostDensity))
      throw DomainError::invalid(u"\"%1\" is no density. It must be a number from 0.5 to 4."_s.arg(part.trimmed()));
    if (!result.contains(density)) result << density;
  }
  return result;
}

}  // namespace

SnapshotOptions snapshotOptions(const QStringList& arguments) {
  SnapshotOptions options;
  if (const auto images = valueOf(arguments, "--snapshot-images"_L1)) choose(options, *images);
  if (const auto list = valueOf(arguments, "--snapshot-densities"_L1)) options.densities = densities(*list);
  if (const auto name = valueOf(arguments, "--snapshot-locale"_L1)) options.locale = localeNamed(*name);
  const auto output = valueOf(arguments, "--output"_L1);
  if (output) {
    options.folder = QDir(*output).absolutePath();
    return options;
  }
  QTemporaryDir folder(QDir::temp().filePath(u"tarnwick-snapshot-XXXXXX"_s));
  if (!folder.isValid()) throw DomainError::invalid(u"No folder for the pictures could be made."_s);
  folder.setAutoRemove(false);
  options.folder = folder.path();
  return options;
}

int runSnapshot(const QStringList& arguments) {
  SnapshotOptions options = snapshotOptions(arguments);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("TZ", "UTC");
  qunsetenv("QT_SCALE_FACTOR");
  qunsetenv("QT_STYLE_OVERRIDE");
  if (options.locale) SnapshotFixture::locale() = *options.locale;
  QLocale::setDefault(SnapshotFixture::locale());
  QByteArray name("tarnwick");
  if (arguments.contains(u"--snapshot-high-contrast"_s)) DesktopLook::set({.highContrast = true});
  // The toolkit's own switch, for looking at everything as people see it who read from the right.
  QByteArray reverse("-reverse");
  char* argv[] = {name.data(), reverse.data(), nullptr};
  int argc = arguments.contains(u"-reverse"_s) ? 2 : 1;
  QApplication application(argc, argv);
  loadWords(application);
  SnapshotWindows windows;
  if (options.windows) options.windowList = windows.list();
  if (options.bars) options.barList = SnapshotBar::list(windows.places());
  const QStringList files = takeSnapshot(options);
  std::printf("%s\n", qUtf8Printable(options.folder));
  std::fprintf(stderr, "%s\n", qUtf8Printable(u"%1 pictures"_s.arg(files.size())));
  return 0;
}

}  // namespace tarnwick
