#include <gtest/gtest.h>

#include <QLocale>
#include <QRegularExpression>

#include "commandbar/CommandBarLatency.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct LatencyRun {
  /// The first key takes `step` nanoseconds, each one after it so much more.
  LatencyRun(int iterations, qint64 step) {
    DesktopEntry named;
    named.path = u"/a/mail.desktop"_s;
    named.name = named.untranslatedName = u"Mail"_s;
    named.keywords = QStringList{u"qqqqzz"_s};
    status = CommandBarLatency::run({named}, iterations,
                                    {.clock =
                                         [&, time = qint64(0), isEnd = false, keys = 0]() mutable {
                                           isEnd = !isEnd;
                                           if (!isEnd) time += ++keys * step;
                                           return time;
                                         },
                                     .print = [this](const QString& text) { output += text; }});
  }

  int status = -1;
  QString output;
};

/// Without the numbers of rows.
QString shapeOf(QString output) {
  static const QRegularExpression rows(u"^(  [^ ]+: )[0-9]+$"_s, QRegularExpression::MultilineOption);
  return output.replace(rows, u"\\1N"_s);
}

QString expected(const QString& iterations, const QString& times, const QString& end) {
  return u"candidates: 1 applications, %1 widgets, 78 symbols, 30 clipboard entries\n"_s.arg(Catalog::items().size()) +
         u"iterations: "_s + iterations + u" per query, 18 queries\n\nkeystroke to first result, milliseconds\n"_s +
         times +
         u"\nresults per query\n  m: N\n  s: N\n  a: N\n  mail: N\n  calendar: N\n  safari: N\n  vsc: N\n  actmon: N\n"
         "  sysp: N\n  2+2: N\n  1234*5678/3: N\n  50%+10: N\n  arrow: N\n  heart: N\n  thumbs: N\n  qqqqzz: N\n"
         "  report: N\n  scr: N\n"_s +
         u"budget 16 ms (one frame at 60Hz) — "_s + end + u'\n';
}

TEST(CommandBarLatency, PrintsEveryLineAndJudgesTheSlowestHundredth) {
  QLocale::setDefault(QLocale(QLocale::German));  // Figures are written with a point all the same.
  const struct {
    int iterations;
    qint64 step;
    QString times;
    QString end;
    int status;
  } cases[] = {
      // Of 18 times the 10th, and thrice the last.
      {1, 1'000'000, u"  p50  10.000\n  p95  18.000\n  p99  18.000\n  max  18.000\n"_s, u"p99 18.000 ms — OVER"_s, 1},
      // Of 180 times the 91st, the 172nd, the 179th and the last: what is beyond the hundredth does not count.
      {10, 89'000, u"  p50  8.099\n  p95  15.308\n  p99  15.931\n  max  16.020\n"_s, u"p99 15.931 ms — ok"_s, 0},
      {0, 1, u"  p50  0.000\n  p95  0.000\n  p99  0.000\n  max  0.000\n"_s, u"p99 0.000 ms — ok"_s, 0},
  };
  for (const auto& each : cases) {
    const LatencyRun run(each.iterations, each.step);
    EXPECT_EQ(shapeOf(run.output), expected(QString::number(each.iterations), each.times, each.end));
    EXPECT_EQ(run.status, each.status);
  }
  QLocale::setDefault(QLocale::c());
}

TEST(CommandBarLatency, FindsByNamesAlone) {
  const LatencyRun run(1, 1);
  EXPECT_TRUE(run.output.contains(u"\n  qqqqzz: 1\n"_s)) << "the web alone, no keyword of an application";
  EXPECT_FALSE(run.output.contains(u"\n  mail: 1\n"_s)) << "the web and the application";
}

}  // namespace
}  // namespace tarnwick
