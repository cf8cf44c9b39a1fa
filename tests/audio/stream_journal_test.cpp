#include <gtest/gtest.h>

#include "audio/AppAudioRoute.h"
#include "support/FakeAudioHardware.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using Stream = AudioHardware::Stream;
constexpr quint32 kRun = 7;
const QString kSink = AudioHardware::sinkName(1);

class StreamJournal : public FolderTest {
 protected:
  AudioStreamJournal open() const { return AudioStreamJournal(folder_.path(), 0ms); }
};

TEST_F(StreamJournal, KeepsWhatAStreamWasBoundToFirst) {
  auto journal = open();
  struct Step {
    const char* what;
    Stream stream;
    QString key;
    QString node;
  };
  for (const Step& each : {
           Step{"bound", {1, u"a"_s, u"target.node"_s, u"speakers"_s}, u"target.node"_s, u"speakers"_s},
           Step{"by us meanwhile", {1, u"a"_s, u"target.object"_s, kSink}, u"target.node"_s, u"speakers"_s},
           Step{"one like it, bound to ours by the server",
                {2, u"a"_s, u"target.object"_s, kSink},
                u"target.node"_s,
                u"speakers"_s},
           Step{"of which nothing is known", {3, u"b"_s, u"target.object"_s, AudioHardware::sinkName(8)}, u""_s, u""_s},
           Step{"by its user since", {1, u"a"_s, u"target.object"_s, u"phones"_s}, u"target.object"_s, u"phones"_s},
           Step{"to a node that is gone", {4, u"c"_s, u"target.object"_s, u""_s}, u""_s, u""_s},
           Step{"not bound", {5, u"d"_s, u""_s, u""_s}, u""_s, u""_s},
       }) {
    journal.prepare(kRun, {each.stream}, 1);
    EXPECT_EQ(journal.records().last(),
              (MovedStream{kRun, each.stream.serial, each.stream.identity, each.key, each.node, 1}))
        << each.what;
  }
  EXPECT_EQ(journal.records().size(), 5);
  EXPECT_EQ(open().records(), journal.records()) << "on the disk";
}

TEST_F(StreamJournal, IsNotTouchedWhereItCannotBeUnderstood) {
  const QByteArray good = R"([{"identity":"a","key":"target.object","node":"phones","serial":1,"session":7,"slot":1}])";
  put(u"audio-recovery.json"_s, good);
  EXPECT_EQ(open().records(), (QList{MovedStream{7, 1, u"a"_s, u"target.object"_s, u"phones"_s, 1}}));
  const auto changed = [&good](const char* from, const char* to) { return QByteArray(good).replace(from, to); };
  const std::string invalid = "Invalid audio recovery journal.";
  struct Case {
    QByteArray content;
    std::string error;  ///< Empty for any.
  };
  for (const Case& each : {
           Case{QByteArray(1'000'001, ' '), "Audio recovery journal is too large."},
           Case{changed("\"slot\":1", "\"slot\":9"), invalid},
           Case{changed("\"slot\":1", "\"slot\":0"), invalid},
           Case{changed("\"serial\":1", "\"serial\":0"), invalid},
           Case{changed("\"phones\"", "\"\""), invalid},
           Case{changed("\"target.object\"", "\"\""), invalid},
           Case{'[' + good.mid(1).chopped(1) + ',' + good.mid(1), invalid},
           Case{changed("\"serial\":1", "\"serial\":-1"), ""},
           Case{good.chopped(1), ""},
           Case{"", ""},
       }) {
    put(u"audio-recovery.json"_s, each.content);
    auto journal = open();
    ASSERT_TRUE(journal.error()) << each.content.left(200).toStdString();
    const std::string error = journal.error()->toStdString();
    EXPECT_EQ(error, each.error.empty() ? error : each.error);
    EXPECT_EQ(failureOf([&] { journal.prepare(kRun, {{9, {}, {}, {}}}, 1); }), error);
    EXPECT_EQ(failureOf([&] { journal.recover({}); }), error);
    EXPECT_EQ(content(u"audio-recovery.json"_s), each.content.toStdString());
  }
}

TEST_F(StreamJournal, GivesBackWhatIsStillWithUs) {
  test::FakeAudioHardware hardware;
  struct Case {
    const char* what;
    Stream now;          ///< Without a serial: it is over.
    quint32 run = kRun;  ///< Of the sound server.
    int status = 0;      ///< Of binding it.
    bool isBound = false;
    bool isKept = false;
  };
  for (const Case& each : {
           Case{"with us", {1, u"a"_s, u"target.object"_s, kSink}, kRun, 0, true},
           Case{"refused", {1, u"a"_s, u"target.object"_s, kSink}, kRun, -13, false, true},
           Case{"bound by its user", {1, u"a"_s, u"target.object"_s, u"hdmi"_s}},
           Case{"over", {}},
           Case{"another run's serial", {1, u"b"_s, u"target.object"_s, kSink}, 8},
           Case{"the same sound in another run",
                {4, u"a"_s, u"target.object"_s, AudioHardware::sinkName(3)},
                8,
                0,
                true},
       }) {
    put(u"audio-recovery.json"_s, "[]");
    auto journal = open();
    journal.prepare(kRun, {{1, u"a"_s, u"target.node"_s, u"phones"_s}}, 1);
    journal.prepare(kRun, {{2, u"z"_s, {}, {}}}, 2);
    hardware.playing.clear();
    if (each.now.serial) hardware.playing[each.now.serial] = {1, each.now};
    hardware.run = each.run;
    hardware.fails["bind"] = each.status;
    giveBackStreams(hardware, journal, 1);
    EXPECT_EQ(journal.records().size(), each.isKept ? 2 : 1) << each.what;
    const Stream after = hardware.playing[each.now.serial].stream;
    EXPECT_EQ(after.node, each.isBound ? u"phones"_s : each.now.node) << each.what;
    EXPECT_EQ(after.key, each.isBound ? u"target.node"_s : each.now.key) << each.what;
    giveBackStreams(hardware, journal);
    EXPECT_EQ(journal.records().size(), each.isKept ? 1 : 0) << each.what;
  }
  hardware.fails = {{"allStreams", -32}};
  auto journal = open();
  journal.prepare(kRun, {{1, {}, {}, {}}}, 1);
  giveBackStreams(hardware, journal);
  EXPECT_EQ(journal.records().size(), 1) << "nobody tells what is there";
}

}  // namespace
}  // namespace tarnwick
