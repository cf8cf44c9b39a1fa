#include <gtest/gtest.h>

#include <cerrno>

#include "audio/AppAudioFormat.h"
#include "audio/AudioRoutes.h"
#include "support/FakeAudioHardware.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using Format = AudioStreamBasicDescription;
using Program = AudioHardware::Program;
using test::FakeAudioHardware;

TEST(AppAudioFormat, IsWhatTheRendererCanDo) {
  constexpr quint32 kPcm = Format::kLinearPcm;
  constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
  struct Case {
    const char* what;
    Format format;
    bool asInput;
    bool asOutput;
  };
  for (const Case& each : {
           Case{"stereo", {48'000, kPcm, 1, 8, 1, 8, 2, 32}, true, true},
           Case{"mono", {48'000, kPcm, 9, 4, 1, 4, 1, 32}, true, true},
           Case{"apart", {48'000, kPcm, 41, 4, 1, 4, 2, 32}, true, true},
           Case{"surround", {48'000, kPcm, 1, 32, 1, 32, 8, 32}, false, true},
           Case{"nine channels", {48'000, kPcm, 1, 36, 1, 36, 9, 32}, false, false},
           Case{"no channels", {48'000, kPcm, 33, 4, 1, 4, 0, 32}, false, false},
           Case{"another code", {48'000, 1, 1, 8, 1, 8, 2, 32}, false, false},
           Case{"whole numbers", {48'000, kPcm, 4, 8, 1, 8, 2, 32}, false, false},
           Case{"big-endian", {48'000, kPcm, 3, 8, 1, 8, 2, 32}, false, false},
           Case{"double", {48'000, kPcm, 1, 16, 1, 16, 2, 64}, false, false},
           Case{"wide frames", {48'000, kPcm, 1, 16, 1, 16, 2, 32}, false, false},
           Case{"apart in wide frames", {48'000, kPcm, 33, 8, 1, 8, 2, 32}, false, false},
           Case{"packets of two", {48'000, kPcm, 1, 8, 2, 8, 2, 32}, false, false},
           Case{"wide packets", {48'000, kPcm, 1, 16, 1, 8, 2, 32}, false, false},
           Case{"slowest", {8000, kPcm, 1, 8, 1, 8, 2, 32}, true, true},
           Case{"too slow", {7999.9, kPcm, 1, 8, 1, 8, 2, 32}, false, false},
           Case{"fastest", {384'000, kPcm, 1, 8, 1, 8, 2, 32}, true, true},
           Case{"too fast", {384'000.1, kPcm, 1, 8, 1, 8, 2, 32}, false, false},
           Case{"no rate", {kNoNumber, kPcm, 1, 8, 1, 8, 2, 32}, false, false},
       }) {
    EXPECT_EQ(AppAudioFormat::supported(each.format, true), each.asInput) << each.what;
    EXPECT_EQ(AppAudioFormat::supported(each.format, false), each.asOutput) << each.what;
  }
}

constexpr qint64 kSelf = 1;
const QString kRestored = u" Original playback is restored."_s;
const QString kTryAll =
    u" The driver did not release the route; restoration could not be confirmed. "
    "Try Restore All Playback."_s;
const QString kNotReleased =
    u"The audio driver did not release a route. Original playback restoration is not confirmed. Try Restore All Playback."_s;
const QString kChanged = u"Audio routing changed. Affected apps were restored; reconnect to adjust their volume."_s;

class Routes : public FolderTest {
 protected:
  Routes() {
    for (quint32 id = 1; id <= 9; ++id) add(id, u"App %1"_s.arg(id));
    routes_.refresh();
  }

  void add(quint32 id, const QString& name, qint64 pid = 0, const QString& portal = {}) {
    hardware_.all[id] = {pid ? pid : 100 + id, portal, name, true};
    hardware_.play(id, 1000 + id);
  }
  /// As the list of them has it.
  AudioProcessEntry entry(const QString& name) const {
    for (const AudioProcessEntry& each : routes_.state().processes)
      if (each.name == name) return each;
    return {};
  }
  AudioProcessEntry app(int number = 1) const { return entry(u"App %1"_s.arg(number)); }
  QString start(int number = 1) {
    routes_.start(app(number));
    return error();
  }
  const QString& error() const { return routes_.state().error; }
  qsizetype controlled() const { return routes_.state().gains.size(); }
  QString sinkOf(quint32 serial) const { return hardware_.playing.at(serial).stream.node; }
  QString names() const {
    QStringList names;
    for (const AudioProcessEntry& each : routes_.state().processes) names += each.name;
    return names.join(u'|');
  }

  FakeAudioHardware hardware_;
  QHash<qint64, qint64> launches_;
  AudioStreamJournal journal_{folder_.path(), 0ms};
  AudioRows rows_{hardware_,
                  [](const Program& program) -> std::optional<AudioRows::App> {
                    if (!program.name.startsWith(u"Tab"_s)) return std::nullopt;
                    return AudioRows::App{u"browser"_s, u"Browser"_s};
                  },
                  [this](qint64 pid) { return std::optional(launches_.value(pid, pid)); }, kSelf};
  AudioRoutes routes_{{hardware_, journal_, rows_}, [] {}};
};

TEST_F(Routes, ListApplicationsThatPlay) {
  hardware_.all.clear();
  routes_.refresh();
  add(1, u"Zoom"_s);
  add(2, u"Player"_s);
  add(3, u"Player"_s);
  add(4, u"Tab 1"_s);
  add(5, u"Tab 2"_s);
  add(6, {}, 0, u"org.confined"_s);
  add(7, {});
  add(8, u"Ourselves"_s, kSelf);
  add(9, u"Silent"_s);
  hardware_.all[9].isPlaying = hardware_.all[4].isPlaying = false;
  routes_.refresh();
  EXPECT_EQ(names(), u"Audio process|Browser|Player|Player|Zoom|org.confined"_s);
  EXPECT_EQ(entry(u"Browser"_s).pid, 104) << "of its first program";
  const auto players = routes_.state().processes.mid(2, 2);
  EXPECT_NE(players[0].id, players[1].id);
  // A controlled one stays in a silent moment; one that comes back is another.
  routes_.start(entry(u"Zoom"_s));
  hardware_.all[1].isPlaying = false;
  hardware_.end(2);
  routes_.refresh();
  EXPECT_EQ(names(), u"Audio process|Browser|Player|Zoom|org.confined"_s);
  add(2, u"Player"_s);
  routes_.refresh();
  for (const auto& each : routes_.state().processes) EXPECT_NE(each.id, players[0].id);
  // Failures.
  const QString before = names();
  hardware_.fails["programs"] = -32;
  routes_.refresh();
  EXPECT_EQ(error(),
            u"List audio apps failed (-32). Check System Audio Recording access and the selected output device."_s);
  EXPECT_EQ(names(), before);
  hardware_.fails.clear();
  hardware_.inventory = QList<quint32>(249'999, 99);
  routes_.refresh();
  EXPECT_EQ(error(),
            u"List audio apps failed (-32). Check System Audio Recording access and the selected output device."_s);
  EXPECT_EQ(names(), u"Zoom"_s) << "what cannot be read is left out";
  hardware_.inventory->append(99);
  routes_.refresh();
  EXPECT_EQ(error(), u"Audio process inventory exceeded its limit."_s);
  hardware_.able = Capability::no(u"No sound server."_s);
  routes_.refresh();
  EXPECT_EQ(names(), QString());
  EXPECT_EQ(routes_.state().capability.reason, u"No sound server."_s);
  EXPECT_EQ(start(), u"No sound server."_s);
}

TEST_F(Routes, AreMadeAndEndedInOrder) {
  hardware_.play(1, 1001, u"phones"_s);
  EXPECT_EQ(start(), QString());
  EXPECT_EQ(hardware_.lastTap.name, u"Tarnwick · App 1"_s);
  EXPECT_EQ(hardware_.lastAggregate.identity, u"speakers"_s);
  EXPECT_EQ(hardware_.lastAggregate.slot, 1);
  EXPECT_EQ(journal_.records(), (QList{MovedStream{7, 1001, u"1001"_s, u"target.node"_s, u"phones"_s, 1}}));
  EXPECT_EQ(sinkOf(1001), u"com.brindlemoor.audio.1"_s);
  routes_.start(app());
  routes_.stop(app().id);
  EXPECT_EQ(hardware_.calls.join(u'|'),
            u"createTap|createAggregate|createCallback|start|bind 1001 target.object com.brindlemoor.audio.1|listen"
            "|bind 1001 target.node phones|stop|destroyCallback|destroyAggregate|destroyTap|rest"_s);
  EXPECT_TRUE(journal_.records().isEmpty());
  EXPECT_TRUE(hardware_.made.empty());
  EXPECT_EQ(controlled(), 0);
}

TEST_F(Routes, AreAtMostEight) {
  for (int i = 1; i <= 8; ++i) EXPECT_EQ(start(i), QString());
  EXPECT_EQ(start(9), u"Up to eight apps can be controlled together. Stop a route before adding another."_s);
  EXPECT_EQ(controlled(), 8);
  EXPECT_EQ(sinkOf(1008), u"com.brindlemoor.audio.8"_s);
  routes_.stop(app(3).id);
  EXPECT_EQ(start(9), QString());
  EXPECT_EQ(sinkOf(1009), u"com.brindlemoor.audio.3"_s) << "the place that is free";
  routes_.stop();
  EXPECT_TRUE(hardware_.made.empty());
  EXPECT_EQ(hardware_.calls.count(u"listen"_s), 1);
  EXPECT_EQ(hardware_.calls.last(), u"rest"_s);
}

TEST_F(Routes, SayWhyTheyCannotBeMade) {
  const QString check = u"%1 failed (-5). Check System Audio Recording access and the selected output device."_s;
  const QString badFormat = u"This app's audio format or sample rate is not supported on the selected output."_s;
  const QString badDevice =
      u"This device's app route is not compatible. Choose a Float32 output at the app's sample rate."_s;
  const Format slower = FakeAudioHardware::stereo(47'999.01);
  const Format muchSlower = FakeAudioHardware::stereo(47'999);
  const Format surround{48'000, Format::kLinearPcm, 1, 16, 1, 16, 4, 32};
  struct Case {
    QString message;
    const char* fails = "";
    std::function<void(FakeAudioHardware&)> change = {};
  };
  for (const Case& each : {
           Case{check.arg(u"Read audio property"_s), "programs"},
           Case{check.arg(u"Read audio property"_s), "defaultOutput"},
           Case{check.arg(u"Read audio identity"_s), "identity"},
           Case{u"The audio device did not provide an identity."_s, "", [](auto& h) { h.outputName = QString(); }},
           Case{check.arg(u"Read audio property"_s), "nominalSampleRate"},
           Case{check.arg(u"Enable app audio"_s), "createTap"},
           Case{check.arg(u"Read audio property"_s), "tapFormat"},
           Case{badFormat, "", [&](auto& h) { h.ofTap = surround; }},
           Case{badFormat, "", [&](auto& h) { h.ofTap = muchSlower; }},
           Case{check.arg(u"Create app audio route"_s), "createAggregate"},
           Case{check.arg(u"Read audio property"_s), "inputFormat"},
           Case{check.arg(u"Read audio property"_s), "outputFormat"},
           Case{badDevice, "", [&](auto& h) { h.ofInput = surround; }},
           Case{badDevice, "", [&](auto& h) { h.ofOutput.mBitsPerChannel = 16; }},
           Case{badDevice, "", [&](auto& h) { h.ofOutput = slower; }},
           Case{check.arg(u"Prepare app audio route"_s), "createCallback"},
           Case{check.arg(u"Start app audio route"_s), "start"},
           Case{check.arg(u"Start app audio route"_s), "bind"},
           Case{u"This audio process changed. Refresh Apps before enabling it."_s, "", [](auto& h) { h.end(1); }},
           Case{QString(), "", [](auto& h) { h.fails["bind"] = -ENOENT; }},
           Case{QString(), "", [&](auto& h) { h.ofTap = slower; }},
           Case{QString(), "", [&](auto& h) { h.ofOutput = surround; }},
       }) {
    const FakeAudioHardware before = hardware_;
    if (*each.fails) hardware_.fails[each.fails] = -5;
    if (each.change) each.change(hardware_);
    const bool isMade = each.message.isNull();
    EXPECT_EQ(start(), isMade ? QString() : each.message + kRestored);
    EXPECT_EQ(controlled(), isMade ? 1 : 0) << each.message.toStdString();
    routes_.stop();
    EXPECT_TRUE(hardware_.made.empty()) << each.message.toStdString();
    hardware_ = before;
    routes_.refresh();
  }
  // Nothing is moved that is not on the disk before.
  {
    const AsFullDisk full(0);
    EXPECT_TRUE(start().endsWith(kRestored));
  }
  EXPECT_EQ(sinkOf(1001), QString());
  EXPECT_TRUE(hardware_.made.empty());
}

TEST_F(Routes, AreQuarantinedWhereTheDriverHoldsThem) {
  struct Case {
    const char* what;
    QHash<QByteArray, int> fails;
    bool isReleased = false;
    bool isGainFreed = false;
  };
  for (const Case& each : {
           Case{"neither", {{"destroyCallback", -5}, {"destroyAggregate", -5}}},
           Case{"the callback alone", {{"destroyCallback", -5}}, true, true},
           Case{"the aggregate alone", {{"destroyAggregate", -5}}, false, true},
           Case{"the tap alone", {{"destroyTap", -5}}, false, true},
           Case{"stopping it", {{"stop", -5}}, true, true},
       }) {
    for (const bool atStart : {true, false}) {
      hardware_.fails = each.fails;
      std::weak_ptr<tw_gain_state> gain;
      if (atStart) {
        hardware_.fails["start"] = -5;
        const QString why =
            u"Start app audio route failed (-5). Check System Audio Recording access and the selected output device."_s;
        EXPECT_EQ(start(), why + (each.isReleased ? kRestored : kTryAll)) << each.what;
      } else {
        EXPECT_EQ(start(), QString());
        gain = routes_.state().gains.first();
        routes_.stop(app().id);
        EXPECT_EQ(error(), each.isReleased ? QString() : kNotReleased) << each.what;
        EXPECT_EQ(gain.expired(), each.isGainFreed) << each.what;
        EXPECT_EQ(sinkOf(1001), QString()) << "what is heard goes back all the same";
      }
      EXPECT_EQ(controlled(), 0);
      if (!each.isReleased) {
        EXPECT_EQ(
            start(2),
            u"An audio driver has not released an earlier route. Restore playback before enabling another app."_s);
        routes_.stop();
        EXPECT_EQ(
            error(),
            u"The driver still holds an audio route. Restart Tarnwick before trying again; restoration could not be confirmed."_s);
      }
      hardware_.fails.clear();
      routes_.stop();
      EXPECT_EQ(error(), QString());
      EXPECT_TRUE(gain.expired());
      EXPECT_TRUE(hardware_.made.empty());
    }
  }
}

TEST_F(Routes, EndWhenWhatTheyWereMadeForChanges) {
  struct Case {
    const char* what;
    std::function<void()> change;
    QSet<int> left;  ///< Of the first two.
  };
  const QList<Case> cases{
      Case{"nothing", [] {}, {1, 2}},
      Case{"another output", [this] { hardware_.output = 51; }, {}},
      Case{"another rate", [this] { hardware_.rate = std::nextafter(48'000, 0); }, {}},
      Case{"it cannot be read", [this] { hardware_.fails["defaultOutput"] = -5; }, {}},
      Case{"nobody is there", [this] { hardware_.fails["programs"] = -5; }, {}},
      Case{"the program ended", [this] { hardware_.end(1); }, {2}},
      Case{"its number is another's", [this] { launches_[101] = 5; }, {2}},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(start(1), QString());
    EXPECT_EQ(start(2), QString());
    const QList<quint32> ids{app(1).id, app(2).id};
    each.change();
    routes_.validateRoutes();
    for (const int number : {1, 2})
      EXPECT_EQ(routes_.state().gains.contains(ids[number - 1]), each.left.contains(number)) << each.what << number;
    EXPECT_EQ(error(), each.left.size() == 2 ? QString() : kChanged) << each.what;
    hardware_.fails.clear();
    hardware_.output = 50;
    hardware_.rate = 48'000;
    launches_.clear();
    routes_.stop();
    add(1, u"App 1"_s);
    routes_.refresh();
  }
  // A gain that faulted, and a driver that does not let go of it.
  EXPECT_EQ(start(1), QString());
  float samples[3] = {};
  AudioBuffer three{3, sizeof samples, samples};
  const AudioBufferList list{1, &three};
  tw_gain_render(hardware_.rendering, &list, &list);
  hardware_.fails["destroyTap"] = -5;
  routes_.validateRoutes();
  EXPECT_EQ(error(), kNotReleased);
  hardware_.fails.clear();
}

TEST_F(Routes, TakeWhatJoins) {
  EXPECT_EQ(start(1), QString());
  hardware_.play(1, 2001, u"phones"_s);
  hardware_.play(2, 2002);
  routes_.validateRoutes();
  EXPECT_EQ(sinkOf(2001), u"com.brindlemoor.audio.1"_s);
  EXPECT_EQ(sinkOf(2002), QString());
  // What its user sends elsewhere stays there; what the server sends to us by itself is not ours.
  hardware_.bind(1001, u"target.object"_s, u"hdmi"_s);
  hardware_.bind(2002, u"target.object"_s, u"com.brindlemoor.audio.1"_s);
  routes_.validateRoutes();
  EXPECT_EQ(sinkOf(1001), u"hdmi"_s);
  EXPECT_EQ(sinkOf(2002), QString());
  routes_.stop();
  EXPECT_EQ(sinkOf(1001), u"hdmi"_s);
  EXPECT_EQ(sinkOf(2001), u"phones"_s);
  EXPECT_TRUE(journal_.records().isEmpty());
}

TEST_F(Routes, BeginWithWhatAnEarlierRunLeft) {
  hardware_.play(5, 1005, u"phones"_s);
  AudioStreamJournal(folder_.path(), 0ms).prepare(7, {hardware_.playing.at(1005).stream}, 3);
  hardware_.bind(1005, u"target.object"_s, AudioHardware::sinkName(3));
  EXPECT_EQ(start(1), QString());
  EXPECT_EQ(sinkOf(1005), u"phones"_s);
  EXPECT_EQ(journal_.records().size(), 1);
}

}  // namespace
}  // namespace tarnwick
