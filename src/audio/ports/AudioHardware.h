#pragma once

#include <QList>
#include <QString>
#include <functional>

#include "desktop/Capability.h"

namespace tarnwick {

struct tw_gain_state;

/// How samples stand in a stream, in the words in which formats are compared.
struct AudioStreamBasicDescription {
  static constexpr quint32 kLinearPcm = 0x6c70'636d;
  static constexpr quint32 kIsFloat = 1;
  static constexpr quint32 kIsBigEndian = 2;
  static constexpr quint32 kIsNonInterleaved = 32;

  double mSampleRate = 0;  ///< Frames a second.
  quint32 mFormatID = 0;
  quint32 mFormatFlags = 0;
  quint32 mBytesPerPacket = 0;
  quint32 mFramesPerPacket = 0;
  quint32 mBytesPerFrame = 0;  ///< Of one channel where they are not interleaved.
  quint32 mChannelsPerFrame = 0;
  quint32 mBitsPerChannel = 0;

  bool operator==(const AudioStreamBasicDescription&) const = default;
};

/// What plays sound, what it is played on, and what takes one from the other. Belongs to one thread, which is not the
/// main one: calls wait for the sound server, each for as long as `kPatience` milliseconds at most. A status is 0 where
/// something was done, else the negative number of the system's error. Objects are named by numbers that are never 0.
class AudioHardware {
 public:
  static constexpr int kPatience = 500;

  using Status = int;
  template <class Value>
  struct Result {
    Status status = 0;
    Value value{};
  };

  /// A program that is connected to the sound server.
  struct Program {
    qint64 pid = 0;  ///< 0 where nobody tells that can be trusted.
    QString portal;  ///< The id of a confined application; empty for others.
    QString name;    ///< As it calls itself; may be empty.
    bool isPlaying = false;

    bool operator==(const Program&) const = default;
  };

  /// Something that a program plays.
  struct Stream {
    quint32 serial = 0;  ///< No other one's while the server runs.
    QString identity;    ///< By which the server remembers where it plays, longer than it is there.
    QString key;         ///< Under which it is bound to a node; empty where it is not.
    QString node;        ///< The name of that node; empty where it is gone, or it is not bound.

    bool operator==(const Stream&) const = default;
  };

  /// A sink that takes the streams of a program, so that they are heard nowhere else.
  struct Tap {
    int slot = 0;  ///< From 1 on; decides how its nodes are called.
    QString name;  ///< As people may read it.
  };

  /// What plays to a device what a tap takes.
  struct Aggregate {
    int slot = 0;
    QString name;
    quint32 tap = 0;
    quint32 output = 0;
    QString identity;  ///< Of the output.
  };

  /// Under this key a stream is bound by us.
  static constexpr auto kBinding = QLatin1StringView("target.object");
  /// What the sink of a slot is called, this run and any other.
  static QString sinkName(int slot) { return QStringLiteral("com.brindlemoor.audio.%1").arg(slot); }

  virtual ~AudioHardware() = default;

  /// Whether the volume of applications can be had.
  virtual Capability capability() = 0;
  /// Which run of the sound server this is: serials are of one run.
  virtual quint32 session() = 0;
  /// Has `changed` called, on any thread, after anything became different that can be read here, and after a gain that
  /// is rendered with has faulted. Empty: never more.
  virtual void listen(std::function<void()> changed) = 0;

  virtual Result<QList<quint32>> programs() = 0;
  virtual Result<Program> program(quint32 id) = 0;
  /// What they play now.
  virtual Result<QList<Stream>> streams(const QList<quint32>& programs) = 0;
  /// Of all programs.
  virtual Result<QList<Stream>> allStreams() = 0;
  /// Binds a stream to the node of a name, under a key as `Stream` has it; to none where the key is empty. -ENOENT
  /// where the stream has ended.
  virtual Status bind(quint32 stream, const QString& key, const QString& node) = 0;

  virtual Result<quint32> defaultOutput() = 0;
  virtual Result<QString> identity(quint32 device) = 0;
  virtual Result<double> nominalSampleRate(quint32 device) = 0;

  virtual Result<quint32> createTap(const Tap& tap) = 0;
  virtual Result<AudioStreamBasicDescription> tapFormat(quint32 tap) = 0;
  virtual Status destroyTap(quint32 tap) = 0;

  virtual Result<quint32> createAggregate(const Aggregate& aggregate) = 0;
  virtual Result<AudioStreamBasicDescription> inputFormat(quint32 aggregate) = 0;
  virtual Result<AudioStreamBasicDescription> outputFormat(quint32 aggregate) = 0;
  virtual Status destroyAggregate(quint32 aggregate) = 0;

  /// Has each cycle rendered with a gain, once the aggregate is started, until the callback or the aggregate is
  /// destroyed with status 0. Until then the gain must stay.
  virtual Result<quint32> createCallback(quint32 aggregate, tw_gain_state* gain) = 0;
  virtual Status destroyCallback(quint32 aggregate, quint32 callback) = 0;
  virtual Status start(quint32 aggregate, quint32 callback) = 0;
  virtual Status stop(quint32 aggregate, quint32 callback) = 0;
};

}  // namespace tarnwick
