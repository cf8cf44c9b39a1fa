#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QHash>
#include <mutex>

#include "support/Wait.h"
#include "windows/ZoomMeetingService.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(ZoomLabels, OnlyWholeLabelsMeanSomething) {
  using enum ZoomAction;
  const struct {
    const char* label;
    std::optional<ZoomAction> action;
  } actions[] = {{" Mute My Audio \n", Microphone},
                 {"UNMUTE", Microphone},
                 {"Mute my audio now", {}},
                 {"Stop Video", Video},
                 {"New Share", Share},
                 {"Sharing", {}},
                 {"Leave Meeting", Leave},
                 {"Leave.", {}},
                 {"", {}}};
  for (const auto& each : actions)
    EXPECT_EQ(ZoomLabels::action(QString::fromUtf8(each.label)), each.action) << each.label;
  const struct {
    const char* label;
    std::optional<int> count;
  } counts[] = {{"Participants (12)", 12}, {"Participants(999999)", 999999}, {"Participants (1234567)", {}},
                {"Participants: 12", {}},  {"Participants (12)\n", {}},      {"12 Participants (12)", {}}};
  for (const auto& each : counts)
    EXPECT_EQ(ZoomLabels::participants(QString::fromUtf8(each.label)), each.count) << each.label;
  const struct {
    const char* label;
    const char* time;
  } times[] = {{"Elapsed time: 12:05", "12:05"},
               {"Meeting duration: 100:05:09", "100:05:09"},
               {"Elapsed time: 1:5", ""},
               {"Elapsed time: 1000:05", ""},
               {"elapsed time: 12:05", ""}};
  for (const auto& each : times)
    EXPECT_EQ(ZoomLabels::duration(QString::fromUtf8(each.label)).value_or(QString()), QString::fromUtf8(each.time));
}

/// A program that the test describes: each place has a label and children. Asked on another thread.
class FakeControls final : public AccessibleControls {
 public:
  struct Program {
    std::mutex mutex;
    bool able = true;
    bool accepts = true;
    QHash<QString, Reading> readings;
    QHash<QString, QStringList> children;
    QStringList pressed;
    int read = 0;

    void add(const QString& place, const QString& label, const QString& parent = u"window"_s, bool enabled = true) {
      readings[place] = {label, true, enabled};
      children[parent].append(place);
    }
  };

  explicit FakeControls(Program& program) : program_(program) {}
  Capability capability() override {
    const std::lock_guard lock(program_.mutex);
    return program_.able ? Capability::yes() : Capability::no(u"No."_s);
  }
  QList<Element> windows(qint64) override { return children({{}, {}}); }
  QList<Element> children(const Element& element) override {
    const std::lock_guard lock(program_.mutex);
    QList<Element> found;
    for (const QString& each : program_.children.value(element.place)) found.append({{}, each});
    return found;
  }
  std::optional<Reading> read(const Element& element) override {
    const std::lock_guard lock(program_.mutex);
    ++program_.read;
    const auto found = program_.readings.constFind(element.place);
    return found == program_.readings.cend() ? std::nullopt : std::optional(*found);
  }
  bool press(const Element& element) override {
    const std::lock_guard lock(program_.mutex);
    program_.pressed.append(element.place);
    return program_.accepts;
  }

 private:
  Program& program_;
};

class Meeting : public testing::Test {
 protected:
  Meeting() {
    program_.children[QString()] = {u"window"_s};
    program_.readings[u"window"_s] = {u"Meeting"_s, false, true};
    program_.add(u"bar"_s, u"Toolbar"_s);
    program_.add(u"mute"_s, u"Mute"_s, u"bar"_s);
    program_.add(u"again"_s, u"Unmute"_s, u"mute"_s);
    program_.add(u"video"_s, u"Start Video"_s, u"bar"_s, false);
    program_.add(u"people"_s, u"Participants (3)"_s, u"bar"_s);
    program_.add(u"time"_s, u"Elapsed time: 12:05"_s);
  }
  bool rests() {
    return waitFor([&] { return !service_.loading(); });
  }

  FakeControls::Program program_;
  QList<qint64> processes_{7};
  ZoomMeetingService service_{{.controls = [this] { return std::make_unique<FakeControls>(program_); },
                               .processes = [this] { return processes_; }}};
};

TEST_F(Meeting, IsWhatItsToolbarShows) {
  service_.refresh();
  EXPECT_TRUE(service_.loading());
  ASSERT_TRUE(rests());
  EXPECT_TRUE(service_.connected());
  EXPECT_EQ(service_.actions(), (QMap<ZoomAction, QString>{{ZoomAction::Microphone, u"Mute"_s}}))
      << "the nearest of two, and none that cannot be pressed";
  EXPECT_EQ(service_.participants(), 3);
  EXPECT_EQ(service_.duration(), u"12:05"_s);

  service_.perform(ZoomAction::Microphone, u"Mute"_s);
  ASSERT_TRUE(waitFor([&] { return !service_.loading() && !program_.pressed.isEmpty(); }));
  EXPECT_EQ(program_.pressed, QStringList(u"mute"_s));
  EXPECT_EQ(service_.error(), QString());

  program_.readings[u"mute"_s].label = u"Unmute"_s;
  service_.perform(ZoomAction::Microphone, u"Mute"_s);
  ASSERT_TRUE(rests());
  EXPECT_EQ(service_.error(), u"Zoom’s controls changed. Refresh before trying again."_s);
  EXPECT_EQ(program_.pressed.size(), 1);
  program_.accepts = false;
  service_.perform(ZoomAction::Microphone, u"Unmute"_s);
  ASSERT_TRUE(rests());
  EXPECT_EQ(service_.error(), u"Zoom did not accept this action. Use its meeting toolbar."_s);
}

TEST_F(Meeting, SaysWhatIsMissing) {
  const auto error = [this] {
    service_.refresh();
    EXPECT_TRUE(rests());
    EXPECT_FALSE(service_.connected());
    return service_.error();
  };
  program_.children.remove(u"bar"_s);
  EXPECT_EQ(
      error(),
      u"No supported meeting toolbar is visible. Show Zoom’s meeting controls, then refresh. English control labels "
      u"are supported."_s);
  processes_.clear();
  EXPECT_EQ(error(), u"Open a Zoom meeting, then refresh."_s);
  program_.able = false;
  EXPECT_EQ(error(), u"Enable Accessibility to read Zoom’s meeting controls."_s);
  // What comes after it was forgotten counts no more.
  program_.able = true;
  service_.refresh();
  service_.forget();
  EXPECT_FALSE(service_.loading());
  service_.refresh();
  ASSERT_TRUE(rests());
  EXPECT_EQ(service_.error(), u"Open a Zoom meeting, then refresh."_s);
}

TEST_F(Meeting, LooksAtSoManyWindowsAndElementsOnly) {
  FakeControls controls(program_);
  const auto looked = [&] {
    program_.read = 0;
    ZoomInspection::inspect(7, controls, [] { return false; });
    return program_.read;
  };
  for (int i = 0; i < 700; ++i) program_.add(u"deep %1"_s.arg(i), u"x"_s);
  EXPECT_EQ(looked(), 600);
  for (int i = 0; i < 12; ++i) program_.children[QString()].append(u"window %1"_s.arg(i));
  EXPECT_EQ(looked(), 609) << "those that do not answer have nothing in them";
  EXPECT_TRUE(ZoomInspection::inspect(7, controls, [] { return true; }).actions.isEmpty());
}

}  // namespace
}  // namespace tarnwick
