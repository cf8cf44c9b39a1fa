#include "platform/kwin/KWinCalls.h"

#include <QDBusUnixFileDescriptor>
#include <QVariantMap>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QDBusMessage kwinCall(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments) {
  QDBusMessage call = QDBusMessage::createMethodCall(u"org.kde.KWin"_s, path, interface, method);
  call.setArguments(arguments);
  call.setAutoStartService(false);
  return call;
}

}  // namespace

QDBusMessage KWinCalls::scripting(const QString& method, const QVariantList& arguments) {
  return kwinCall(u"/Scripting"_s, u"org.kde.kwin.Scripting"_s, method, arguments);
}

QDBusMessage KWinCalls::hasScript(const QString& name) { return scripting(u"isScriptLoaded"_s, {name}); }

QDBusMessage KWinCalls::picture(const QString& window, int pipe) {
  const QVariantMap options{{u"include-cursor"_s, false},
                            {u"include-decoration"_s, true},
                            {u"include-shadow"_s, false},
                            {u"native-resolution"_s, false}};
  return kwinCall(u"/org/kde/KWin/ScreenShot2"_s, u"org.kde.KWin.ScreenShot2"_s, u"CaptureWindow"_s,
                  {window, options, QVariant::fromValue(QDBusUnixFileDescriptor(pipe))});
}

}  // namespace tarnwick
