#pragma once

#include <QList>
#include <QString>

namespace tarnwick::test {

/// What others may write, to be sent through every way by which their texts come in.
struct ForeignSample {
  QString text;
  QString seen;  ///< A part of what is seen of it.

  /// Whether a text that is shown is as it should be: no longer than a line, and nothing in it that acts on what
  /// stands beside it.
  static bool isHarmless(const QString& shown) {
    return shown.size() < 2000 && !shown.contains(QChar(0x202E)) && !shown.contains(QChar(0x2028));
  }
};

inline QList<ForeignSample> foreignSamples() {
  using namespace Qt::StringLiterals;
  return {{u"<img src=file:///etc/passwd>Sales"_s, u"<img src=file:///etc/passwd>Sales"_s},
          {u"<b>Sales</b>"_s, u"<b>Sales</b>"_s},
          {u"1 &lt; 2 & 3"_s, u"1 &lt; 2 & 3"_s},
          {u"Invoice\u202Efdp.exe"_s, u"Invoicefdp.exe"_s},
          {u"Sales\u2028Invoices"_s, u"Sales Invoices"_s},
          {QString(1 << 20, u'w'), QString(250, u'w')}};
}

}  // namespace tarnwick::test
