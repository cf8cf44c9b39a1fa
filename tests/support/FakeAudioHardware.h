#pragma once

#include <QHash>
#include <QStringList>
#include <map>
#include <set>

#include "audio/GainRenderer.h"
#include "audio/ports/AudioHardware.h"

namespace tarnwick::test {

/// A sound server that does at once what it is told, unless a test has it fail. Everything is on the calling thread.
class FakeAudioHardware : public AudioHardware {
 public:
  /// What devices and nodes of this desktop have.
  static AudioStreamBasicDescription stereo(double rate = 48'000) { return {rate, kPcm, kFloat, 8, 1, 8, 2, 32}; }

  Capability capability() override { return able; }
  quint32 session() override { return run; }
  void listen(std::function<void()> changed) override {
    calls += changed ? QStringLiteral("listen") : QStringLiteral("rest");
    tell = std::move(changed);
  }

  Result<QList<quint32>> programs() override { return give("programs", inventory ? *inventory : ids()); }
  Result<Program> program(quint32 id) override {
    if (!all.contains(id)) return {-2, {}};
    return give("program", all.at(id));
  }
  Result<QList<Stream>> streams(const QList<quint32>& programs) override {
    QList<Stream> found;
    for (const auto& [serial, played] : playing)
      if (programs.contains(played.program)) found.append(played.stream);
    return give("streams", found);
  }
  Result<QList<Stream>> allStreams() override {
    QList<Stream> found;
    for (const auto& [serial, played] : playing) found.append(played.stream);
    return give("allStreams", found);
  }
  Status bind(quint32 stream, const QString& key, const QString& node) override {
    if (const int status = did("bind")) return status;
    calls.last() += QStringLiteral(" %1 %2 %3").arg(stream).arg(key, node);
    playing.at(stream).stream.key = key;
    playing.at(stream).stream.node = node;
    return 0;
  }

  Result<quint32> defaultOutput() override { return give("defaultOutput", output); }
  Result<QString> identity(quint32) override { return give("identity", outputName); }
  Result<double> nominalSampleRate(quint32) override { return give("nominalSampleRate", rate); }

  Result<quint32> createTap(const Tap& tap) override {
    lastTap = tap;
    return make("createTap");
  }
  Result<AudioStreamBasicDescription> tapFormat(quint32) override { return give("tapFormat", ofTap); }
  Status destroyTap(quint32 tap) override { return end("destroyTap", tap); }
  Result<quint32> createAggregate(const Aggregate& aggregate) override {
    lastAggregate = aggregate;
    return make("createAggregate");
  }
  Result<AudioStreamBasicDescription> inputFormat(quint32) override { return give("inputFormat", ofInput); }
  Result<AudioStreamBasicDescription> outputFormat(quint32) override { return give("outputFormat", ofOutput); }
  Status destroyAggregate(quint32 aggregate) override {
    const Status status = end("destroyAggregate", aggregate);
    if (status == 0) made.erase(callback_);
    return status;
  }
  Result<quint32> createCallback(quint32, tw_gain_state* gain) override {
    rendering = gain;
    const auto callback = make("createCallback");
    callback_ = callback.value;
    return callback;
  }
  Status destroyCallback(quint32, quint32 callback) override { return end("destroyCallback", callback); }
  Status start(quint32, quint32) override { return did("start"); }
  Status stop(quint32, quint32) override { return did("stop"); }

  void play(quint32 program, quint32 serial, const QString& node = {}, const QString& identity = {}) {
    const QString key = node.isEmpty() ? QString() : QStringLiteral("target.node");
    playing[serial] = {program, {serial, identity.isEmpty() ? QString::number(serial) : identity, key, node}};
  }
  void end(quint32 program) {
    all.erase(program);
    std::erase_if(playing, [program](const auto& each) { return each.second.program == program; });
  }

  Capability able;
  /// Status of what fails, by the name of the call.
  QHash<QByteArray, int> fails;
  /// What was done, without what is only read.
  QStringList calls;
  std::function<void()> tell;
  std::optional<QList<quint32>> inventory;  ///< Instead of what is there.
  std::map<quint32, Program> all;
  struct Played {
    quint32 program = 0;
    Stream stream;
  };
  std::map<quint32, Played> playing;  ///< By serial.
  std::set<quint32> made;             ///< Taps, aggregates and callbacks.
  quint32 run = 7;
  quint32 output = 50;
  QString outputName = QStringLiteral("speakers");
  double rate = 48'000;
  AudioStreamBasicDescription ofTap = stereo();
  AudioStreamBasicDescription ofInput = stereo();
  AudioStreamBasicDescription ofOutput = stereo();
  Tap lastTap;
  Aggregate lastAggregate;
  tw_gain_state* rendering = nullptr;

 private:
  static constexpr quint32 kPcm = AudioStreamBasicDescription::kLinearPcm;
  static constexpr quint32 kFloat = AudioStreamBasicDescription::kIsFloat;

  QList<quint32> ids() const {
    QList<quint32> found;
    for (const auto& [id, program] : all) found.append(id);
    return found;
  }
  template <class Value>
  Result<Value> give(const char* call, const Value& value) const {
    if (const int status = fails.value(call)) return {status, {}};
    return {0, value};
  }
  int did(const char* call) {
    calls += QString::fromLatin1(call);
    return fails.value(call);
  }
  Result<quint32> make(const char* call) {
    if (const int status = did(call)) return {status, 0};
    made.insert(++last_);
    return {0, last_};
  }
  int end(const char* call, quint32 object) {
    const int status = did(call);
    if (status == 0) made.erase(object);
    return status;
  }

  quint32 last_ = 100;
  quint32 callback_ = 0;  ///< Goes with its aggregate.
};

}  // namespace tarnwick::test
