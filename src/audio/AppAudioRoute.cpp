#include "audio/AppAudioRoute.h"

#include <QCoreApplication>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <vector>

#include "audio/AppAudioFormat.h"
#include "base/DomainError.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct RouteWords {
  Q_DECLARE_TR_FUNCTIONS(ApplicationAudio)
};

constexpr auto kRead = QT_TRANSLATE_NOOP("AppAudioHardware", "Read audio property");
constexpr auto kTap = QT_TRANSLATE_NOOP("AppAudioHardware", "Enable app audio");
constexpr auto kAggregate = QT_TRANSLATE_NOOP("AppAudioHardware", "Create app audio route");
constexpr auto kPrepare = QT_TRANSLATE_NOOP("AppAudioHardware", "Prepare app audio route");
constexpr auto kStart = QT_TRANSLATE_NOOP("AppAudioHardware", "Start app audio route");
/// Rates that differ by less are one.
constexpr double kSameRate = 1;

DomainError routeFailure(const char* sentence) { return DomainError::invalid(RouteWords::tr(sentence)); }

QString nodeName(const AudioProcessEntry& process) { return u"Tarnwick · "_s + process.name; }

}  // namespace

AppAudioRoute::AppAudioRoute(const Parts& parts, AudioProcessEntry process, int slot)
    : parts_(parts), process_(std::move(process)), slot_(slot) {}

AppAudioRoute::~AppAudioRoute() {
  if (io_ == 0) return;
  // The device may call back as long as the process lives, so the gain has to stay for as long.
  static auto& stays = *new std::vector<std::shared_ptr<tw_gain_state>>;
  stays.push_back(gain_);
}

void AppAudioRoute::start(double volume) {
  const auto row = parts_.rows.row(process_.id, kRead);
  if (!row || !row->pids.contains(process_.pid))
    throw routeFailure(
        QT_TRANSLATE_NOOP("ApplicationAudio", "This audio process changed. Refresh Apps before enabling it."));
  launch_ = parts_.rows.launch(process_.pid);
  output_ = AppAudioHardware::read(parts_.hardware.defaultOutput(), kRead);
  identity_ = AppAudioHardware::identity(parts_.hardware, output_);
  rate_ = AppAudioHardware::read(parts_.hardware.nominalSampleRate(output_), kRead);
  makeTap();
  makeCallback(volume, makeAggregate());
  AppAudioHardware::check(parts_.hardware.start(aggregate_, io_), kStart);
  // Last: until then the application is heard as before.
  takeStreams();
}

void AppAudioRoute::makeTap() {
  tap_ = AppAudioHardware::read(parts_.hardware.createTap({slot_, nodeName(process_)}), kTap);
  const auto format = AppAudioHardware::read(parts_.hardware.tapFormat(tap_), kRead);
  if (!AppAudioFormat::supported(format, true) || !(std::abs(format.mSampleRate - rate_) < kSameRate))
    throw routeFailure(QT_TRANSLATE_NOOP(
        "ApplicationAudio", "This app's audio format or sample rate is not supported on the selected output."));
}

/// Returns the frames a second that are rendered.
double AppAudioRoute::makeAggregate() {
  aggregate_ = AppAudioHardware::read(
      parts_.hardware.createAggregate({slot_, nodeName(process_), tap_, output_, identity_}), kAggregate);
  const auto input = AppAudioHardware::read(parts_.hardware.inputFormat(aggregate_), kRead);
  const auto output = AppAudioHardware::read(parts_.hardware.outputFormat(aggregate_), kRead);
  const bool fits = AppAudioFormat::supported(input, true) && AppAudioFormat::supported(output, false) &&
                    input.mSampleRate == output.mSampleRate;
  if (!fits)
    throw routeFailure(QT_TRANSLATE_NOOP(
        "ApplicationAudio",
        "This device's app route is not compatible. Choose a Float32 output at the app's sample rate."));
  return input.mSampleRate;
}

void AppAudioRoute::makeCallback(double volume, double rate) {
  tw_gain_state* gain = tw_gain_create();
  if (!gain) throw routeFailure(QT_TRANSLATE_NOOP("ApplicationAudio", "Could not prepare app audio."));
  gain_ = std::shared_ptr<tw_gain_state>(gain, &tw_gain_destroy);
  tw_gain_prepare(gain, static_cast<float>(volume), rate);
  io_ = AppAudioHardware::read(parts_.hardware.createCallback(aggregate_, gain), kPrepare);
}

void AppAudioRoute::takeStreams() {
  const auto row = parts_.rows.row(process_.id, kRead);
  if (!row) return;
  auto streams = AppAudioHardware::read(parts_.hardware.streams(row->programs), kRead);
  streams.removeIf([this](const AudioHardware::Stream& stream) { return taken_.contains(stream.serial); });
  if (streams.isEmpty()) return;
  parts_.journal.prepare(parts_.hardware.session(), streams, slot_);
  for (const AudioHardware::Stream& stream : streams) {
    taken_.insert(stream.serial);
    const auto status = parts_.hardware.bind(stream.serial, AudioHardware::kBinding, AudioHardware::sinkName(slot_));
    // One that ended meanwhile needs no taking.
    if (status != -ENOENT) AppAudioHardware::check(status, kStart);
  }
}

bool AppAudioRoute::stop() {
  AudioHardware& hardware = parts_.hardware;
  if (!taken_.isEmpty()) {
    try {
      giveBackStreams(hardware, parts_.journal, slot_);
    } catch (const DomainError&) {
      // The sound is heard all the same once the tap is gone, and the journal is gone through again.
    }
  }
  bool isReleased = io_ == 0;
  if (aggregate_ != 0) {
    hardware.stop(aggregate_, io_);
    if (io_ != 0 && hardware.destroyCallback(aggregate_, io_) == 0) {
      io_ = 0;
      isReleased = true;
    }
    if (hardware.destroyAggregate(aggregate_) == 0) {
      aggregate_ = io_ = 0;
      isReleased = true;
    }
  }
  if (tap_ != 0 && hardware.destroyTap(tap_) == 0) tap_ = 0;
  if (!isReleased) return false;
  gain_.reset();
  return aggregate_ == 0 && tap_ == 0;
}

bool AppAudioRoute::valid() const {
  if (!gain_ || tw_gain_faulted(gain_.get())) return false;
  try {
    if (AppAudioHardware::read(parts_.hardware.defaultOutput(), kRead) != output_) return false;
    if (AppAudioHardware::read(parts_.hardware.nominalSampleRate(output_), kRead) != rate_) return false;
    const auto row = parts_.rows.row(process_.id, kRead);
    if (!row) return false;
    // What is left of an application whose first program ended is still that application.
    if (!launch_ || !row->pids.contains(process_.pid)) return true;
    return parts_.rows.launch(process_.pid) == launch_;
  } catch (const DomainError&) {
    return false;
  }
}

void giveBackStreams(AudioHardware& hardware, AudioStreamJournal& journal, std::optional<int> slot) {
  using Fate = AudioStreamJournal::Fate;
  const auto [status, streams] = hardware.allStreams();
  if (status != 0) return;
  const quint32 session = hardware.session();
  journal.recover(
      [&, &all = streams](const MovedStream& record) {
        const auto stream = std::ranges::find_if(all, [&](const AudioHardware::Stream& each) {
          return record.session == session ? each.serial == record.serial : each.identity == record.identity;
        });
        if (stream == all.end() || !AudioStreamJournal::isOurs(*stream)) return Fate::Given;
        const auto bound = hardware.bind(stream->serial, record.key, record.node);
        return bound == 0 || bound == -ENOENT ? Fate::Given : Fate::Kept;
      },
      slot);
}

}  // namespace tarnwick
