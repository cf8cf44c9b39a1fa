#include "views/window/Credits.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

QList<Credit> allCredits() {
  return {
      {u"Qt"_s, QString::fromLatin1(qVersion()), u"LGPL-3.0"_s},
      {u"XCB"_s, {}, u"MIT"_s},
      {u"xkbcommon"_s, {}, u"MIT"_s},
      {u"Wayland"_s, {}, u"MIT"_s},
      {u"wlr protocols"_s, {}, u"MIT"_s},
      {u"libplist"_s, {}, u"LGPL-2.1-or-later"_s},
      {u"libical"_s, {}, u"LGPL-2.1 or MPL-2.0"_s},
      {u"PulseAudio"_s, {}, u"LGPL-2.1-or-later"_s},
      {u"LZ4"_s, {}, u"BSD-2-Clause"_s},
      {u"GLib"_s, {}, u"LGPL-2.1-or-later"_s},
      {u"Inter"_s, {}, u"OFL-1.1"_s},
      {u"Noto Color Emoji"_s, {}, u"OFL-1.1"_s},
  };
}

}  // namespace tarnwick
