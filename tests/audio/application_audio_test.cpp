#include <gtest/gtest.h>

#include <QCoreApplication>
#include <array>

#include "audio/ApplicationAudio.h"
#include "support/FakeAudioHardware.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// Lives in the thread of the routes; the test looks at it while that rests.
class SharedHardware final : public test::FakeAudioHardware {
 public:
  explicit SharedHardware(SharedHardware*& self) : self_(self) { self = this; }
  ~SharedHardware() override { self_ = nullptr; }

 private:
  SharedHardware*& self_;
};

class Volumes : public FolderTest {
 protected:
  void SetUp() override {
    audio_.refresh();
    settle();
    ASSERT_EQ(audio_.processes().size(), 2);
    first_ = audio_.processes()[0];
    audio_.start(first_);
    settle();
  }
  /// Until what was asked for is done and answered.
  void settle() {
    audio_.finish();
    QCoreApplication::sendPostedEvents();
    audio_.finish();
    QCoreApplication::sendPostedEvents();
  }
  double volume() const { return audio_.volumes().value(first_.id, -1); }
  /// With what is rendered.
  float gain() const {
    std::array<float, 241> samples;
    samples.fill(1);
    AudioBuffer buffer{1, sizeof samples, samples.data()};
    const AudioBufferList list{1, &buffer};
    tw_gain_render(hardware_->rendering, &list, &list);
    return samples.back();
  }

  SharedHardware* hardware_ = nullptr;
  AudioProcessEntry first_;
  int changes_ = 0;
  ApplicationAudio audio_{{[this] {
                             auto hardware = std::make_unique<SharedHardware>(hardware_);
                             hardware->all = {{1, {11, {}, u"One"_s, true}}, {2, {12, {}, u"Two"_s, true}}};
                             hardware->play(1, 1001);
                             return hardware;
                           },
                           folder_.path(), [](const auto&) { return std::nullopt; },
                           [](qint64) { return std::nullopt; }}};
};

TEST_F(Volumes, GoToWhatIsRendered) {
  constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
  constexpr double kEndless = std::numeric_limits<double>::infinity();
  EXPECT_EQ(volume(), 1);
  for (const auto& [asked, wanted] :
       {std::pair{0.5, 0.5}, {kNoNumber, 0.5}, {kEndless, 0.5}, {7.0, 1.0}, {-1.0, 0.0}, {0.25, 0.25}}) {
    audio_.setVolume(first_.id, asked);
    EXPECT_EQ(volume(), wanted) << asked;
    EXPECT_EQ(gain(), static_cast<float>(wanted)) << asked;
  }
  audio_.setVolume(first_.id + 100, 0.5);
  EXPECT_EQ(audio_.volumes().size(), 1);
}

TEST_F(Volumes, AreMutedAndComeBack) {
  struct Step {
    const char* what;
    std::optional<double> slid;  ///< Otherwise the mute is pressed.
    double volume;
  };
  for (const Step& each : {
           Step{"by a slider, without an earlier mute", 0, 0},
           Step{"back to full volume", {}, 1},
           Step{"slid", 0.5, 0.5},
           Step{"muted", {}, 0},
           Step{"back", {}, 0.5},
           Step{"slid to silence", 0, 0},
           Step{"back to what was muted last", {}, 0.5},
       }) {
    if (each.slid)
      audio_.setVolume(first_.id, *each.slid);
    else
      audio_.toggleMute(first_.id);
    EXPECT_EQ(volume(), each.volume) << each.what;
  }
  // Nothing of it outlives the route.
  audio_.stop(first_.id);
  settle();
  EXPECT_EQ(volume(), -1);
  audio_.toggleMute(first_.id);
  EXPECT_EQ(volume(), -1);
  audio_.start(first_);
  settle();
  audio_.setVolume(first_.id, 0);
  audio_.toggleMute(first_.id);
  EXPECT_EQ(volume(), 1);
}

TEST_F(Volumes, GoWithTheirRoute) {
  QObject::connect(&audio_, &ApplicationAudio::changed, &audio_, [this] { ++changes_; });
  hardware_->tell();
  hardware_->tell();
  settle();
  EXPECT_EQ(changes_, 0) << "nothing is different";
  hardware_->output = 51;
  hardware_->tell();
  settle();
  EXPECT_EQ(volume(), -1);
  EXPECT_EQ(audio_.error(), u"Audio routing changed. Affected apps were restored; reconnect to adjust their volume."_s);
  EXPECT_EQ(changes_, 1);
  EXPECT_FALSE(hardware_->tell) << "nothing is listened for";
  // A list that is seen follows what changes.
  audio_.setShown(true);
  settle();
  hardware_->all.erase(2);
  hardware_->tell();
  settle();
  EXPECT_EQ(audio_.processes(), QList{first_});
  audio_.start(first_);
  audio_.stop();
  settle();
  EXPECT_EQ(volume(), -1);
  EXPECT_TRUE(hardware_->made.empty());
}

}  // namespace
}  // namespace tarnwick
