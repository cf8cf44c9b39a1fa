#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace tarnwick {

/// mpv with a minute of silence called "Still Water", paused at its beginning, on the session bus of this process.
class RealPlayer {
 public:
  static constexpr quint32 kSeconds = 60;

  RealPlayer() {
    const QString sound = folder_.filePath(QStringLiteral("sound.wav"));
    constexpr quint32 kRate = 8000;
    constexpr quint32 kBytes = kRate * kSeconds;  // One a sample.
    QByteArray head = "RIFF";
    const auto number = [&head](quint32 value, int bytes) {
      for (int i = 0; i < bytes; ++i) head.append(static_cast<char>(value >> (8 * i)));
    };
    number(36 + kBytes, 4);
    head += "WAVEfmt ";
    for (const auto& [value, bytes] : {std::pair{16U, 4}, {1U, 2}, {1U, 2}, {kRate, 4}, {kRate, 4}, {1U, 2}, {8U, 2}})
      number(value, bytes);
    head += "data";
    number(kBytes, 4);
    QFile file(sound);
    if (file.open(QIODevice::WriteOnly)) file.write(head + QByteArray(kBytes, '\x80'));
    file.close();
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(QStringLiteral("mpv"),
                   {QStringLiteral("--no-config"), QStringLiteral("--no-video"), QStringLiteral("--ao=null"),
                    QStringLiteral("--no-terminal"), QStringLiteral("--pause"), QStringLiteral("--loop-file"),
                    QStringLiteral("--script=/usr/lib/mpv-mpris/mpris.so"),
                    QStringLiteral("--force-media-title=Still Water"), sound});
  }
  ~RealPlayer() { kill(); }
  Q_DISABLE_COPY_MOVE(RealPlayer)

  void kill() {
    process_.kill();
    process_.waitForFinished();
  }

  /// Asked of it directly; empty while it does not answer.
  static QString status(const QDBusConnection& bus) {
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.mpris.MediaPlayer2.mpv"), QStringLiteral("/org/mpris/MediaPlayer2"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question.setArguments({QStringLiteral("org.mpris.MediaPlayer2.Player"), QStringLiteral("PlaybackStatus")});
    const QDBusMessage reply = bus.call(question);
    return reply.arguments().value(0).value<QDBusVariant>().variant().toString();
  }

 private:
  QTemporaryDir folder_;
  QProcess process_;
};

}  // namespace tarnwick
