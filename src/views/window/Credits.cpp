#include "views/window/Credits.h"

#include <QLibrary>
#include <QStringList>
#include <optional>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// A library that is asked for as long as it answers, so that nothing stays loaded for it.
class Asked {
 public:
  Asked(const QString& name, int version) : library_(name, version) {}
  ~Asked() {
    if (library_.isLoaded()) library_.unload();
  }
  Asked(const Asked&) = delete;
  Asked& operator=(const Asked&) = delete;

  /// What a function that takes nothing and returns a lasting text says; empty where it is not there.
  QString text(const char* function) {
    const auto tell = reinterpret_cast<const char* (*)()>(library_.resolve(function));
    return tell ? QString::fromLatin1(tell()) : QString();
  }
  std::optional<unsigned> number(const char* variable) {
    const auto* value = reinterpret_cast<const unsigned*>(library_.resolve(variable));
    return value ? std::optional(*value) : std::nullopt;
  }

 private:
  QLibrary library_;
};

QString glibVersion() {
  Asked glib(u"glib-2.0"_s, 0);
  QStringList parts;
  for (const char* part : {"glib_major_version", "glib_minor_version", "glib_micro_version"})
    if (const auto number = glib.number(part)) parts << QString::number(*number);
  return parts.join(u'.');
}

}  // namespace

QList<Credit> allCredits() {
  return {
      {u"Qt"_s, QString::fromLatin1(qVersion()), u"LGPL-3.0"_s},
      {u"XCB"_s, {}, u"MIT"_s},
      {u"xkbcommon"_s, {}, u"MIT"_s},
      {u"Wayland"_s, {}, u"MIT"_s},
      {u"wlr protocols"_s, {}, u"MIT"_s},
      {u"libplist"_s, Asked(u"plist-2.0"_s, 4).text("libplist_version"), u"LGPL-2.1-or-later"_s},
      {u"libical"_s, {}, u"LGPL-2.1 or MPL-2.0"_s},
      {u"PulseAudio"_s, Asked(u"pulse"_s, 0).text("pa_get_library_version"), u"LGPL-2.1-or-later"_s},
      {u"LZ4"_s, Asked(u"lz4"_s, 1).text("LZ4_versionString"), u"BSD-2-Clause"_s},
      {u"SQLite"_s, Asked(u"sqlite3"_s, 0).text("sqlite3_libversion"), u"Public domain"_s},
      {u"GLib"_s, glibVersion(), u"LGPL-2.1-or-later"_s},
      {u"Inter"_s, {}, u"OFL-1.1"_s},
      {u"Noto Color Emoji"_s, {}, u"OFL-1.1"_s},
      {u"Unicode CLDR"_s, {}, u"Unicode-DFS-2016"_s},
  };
}

}  // namespace tarnwick
