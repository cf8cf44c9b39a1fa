#include "windows/WindowService.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <mutex>

#include "apps/RunningApplications.h"
#include "support/FakeWindows.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// What a window system shows, asked on another thread: each picture's first pixel says how often that was painted.
struct Painted {
  std::mutex mutex;
  QHash<quint64, int> times;
  QSet<quint64> changed;
  QList<quint64> held;
  QList<quint64> taken;
  int rests = 0;

  template <class Value>
  Value read(Value Painted::*member) {
    const std::lock_guard lock(mutex);
    return this->*member;
  }
};

class FakePictures final : public WindowPictures {
 public:
  explicit FakePictures(Painted& painted) : painted_(painted) {}
  Capability capability() override { return Capability::yes(); }
  void hold(const QList<quint64>& windows) override {
    const std::lock_guard lock(painted_.mutex);
    painted_.held = windows;
  }
  QImage take(quint64 window) override {
    const std::lock_guard lock(painted_.mutex);
    painted_.taken.append(window);
    painted_.changed.remove(window);
    if (!painted_.times.contains(window)) return {};
    QImage picture(1, 1, QImage::Format_ARGB32_Premultiplied);
    picture.setPixel(0, 0, 0xFF000000 + static_cast<quint32>(painted_.times[window]));
    return picture;
  }
  bool hasChanged(quint64 window) override {
    const std::lock_guard lock(painted_.mutex);
    return painted_.changed.contains(window);
  }
  void rest() override {
    const std::lock_guard lock(painted_.mutex);
    ++painted_.rests;
  }

 private:
  Painted& painted_;
};

class Windows : public testing::Test {
 protected:
  void SetUp() override {
    applications_.start();
    ASSERT_TRUE(waitFor([&] { return installed_.loaded(); }));
  }
  void open(quint64 id, const QString& app, const QString& title) {
    test::FakeWindows& windows = windows_;
    windows.open(id, app);
    windows.windows.last().title = title;
    Q_EMIT windows.changed();
  }
  ClientWindow& window(quint64 id) { return *std::ranges::find(windows_.windows, id, &ClientWindow::id); }
  QStringList titles() const {
    QStringList titles;
    for (const AccessibleWindow& window : service_.windows()) titles.append(window.appName + u": "_s + window.title);
    return titles;
  }
  int shown(quint64 id) const {
    const QImage picture = service_.preview(id);
    return picture.isNull() ? -1 : static_cast<int>(picture.pixel(0, 0) & 0xFFFFFF);
  }
  void paint(quint64 id, int time) {
    const std::lock_guard lock(painted_.mutex);
    painted_.times[id] = time;
    painted_.changed.insert(id);
  }

  test::TestScheduler scheduler_;
  test::FakeWindows windows_;
  InstalledApps installed_{AppEnvironment(), scheduler_};
  RunningApplications applications_{windows_, installed_, {u"ours"_s, 1}};
  SessionEvents session_;
  Painted painted_;
  WindowService service_{{.windows = windows_,
                          .applications = [this] { return applications_.list(); },
                          .session = session_,
                          .pictures = [this] { return std::make_unique<FakePictures>(painted_); }}};
};

TEST_F(Windows, AreListedByTheirAppAndTitle) {
  service_.refresh();
  EXPECT_EQ(service_.message(), u"No available windows. Open an app window, then refresh."_s);
  open(1, u"viewer"_s, u"Page B"_s);
  open(2, u"viewer"_s, u"Page A"_s);
  open(3, u"editor"_s, {});
  open(4, u"editor"_s, u"A sliver"_s);
  window(4).frame = QRectF(0, 0, 30, 500);
  service_.refresh();
  EXPECT_EQ(titles(), (QStringList{u"Editor: Untitled window"_s, u"Viewer: Page A"_s, u"Viewer: Page B"_s}));
  EXPECT_EQ(service_.message(), QString());

  window(1).minimised = true;
  service_.raise(1);
  EXPECT_EQ(windows_.activated, QList<quint64>{1});
  service_.raise(99);
  EXPECT_EQ(service_.message(), u"This window could not be raised. It may have closed."_s);
  window(2).minimisable = window(2).closable = false;
  service_.minimize(2);
  EXPECT_EQ(service_.message(), u"This app does not allow that window action."_s);
  EXPECT_TRUE(windows_.minimised.isEmpty());
  service_.close(2);
  EXPECT_EQ(service_.message(), u"This app does not allow closing that window through Accessibility."_s);
  service_.close(3);
  EXPECT_EQ(titles(), (QStringList{u"Viewer: Page A"_s, u"Viewer: Page B"_s}));
}

TEST_F(Windows, ShowPicturesWhileTheyAreWanted) {
  for (const quint64 id : {1, 2, 3}) {
    open(id, u"viewer"_s, QString::number(id));
    paint(id, static_cast<int>(id));
  }
  service_.refresh();
  service_.loadPreviews();
  ASSERT_TRUE(waitFor([&] { return shown(1) == 1 && shown(2) == 2 && shown(3) == 3; }));
  EXPECT_EQ(painted_.read(&Painted::held), (QList<quint64>{1, 2, 3})) << "once for all of them";

  // One that is minimized keeps how it looked; one that is closed is forgotten.
  window(1).minimised = true;
  windows_.close(3);
  paint(2, 20);
  service_.refresh();
  service_.loadPreviews();
  ASSERT_TRUE(waitFor([&] { return shown(2) == 20; }));
  EXPECT_EQ(painted_.read(&Painted::taken).count(1), 1);
  service_.stopPreviews();
  EXPECT_EQ(shown(1), 1);
  EXPECT_EQ(shown(2), -1);
  EXPECT_EQ(shown(3), -1);
  EXPECT_TRUE(waitFor([&] { return painted_.read(&Painted::rests) == 1; }));

  // Nothing while the session is locked; at once when it is not any more.
  Q_EMIT session_.lockedChanged(true);
  const auto before = painted_.read(&Painted::taken);
  service_.loadPreviews();
  Q_EMIT session_.lockedChanged(false);
  EXPECT_TRUE(waitFor([&] { return shown(2) == 20; }));
  EXPECT_EQ(painted_.read(&Painted::taken), before + QList<quint64>{2});
  EXPECT_EQ(painted_.read(&Painted::rests), 1) << "nothing was held that could be given back";
  Q_EMIT session_.lockedChanged(true);
  EXPECT_TRUE(waitFor([&] { return painted_.read(&Painted::rests) == 2; }));
}

TEST_F(Windows, ThatArePinnedAreFoundByTheirTitleAndFollowed) {
  open(1, u"viewer"_s, u"Chart"_s);
  open(2, u"editor"_s, u"Chart"_s);
  service_.refresh();
  const DockWidget widget = WindowService::pin(service_.windows().last());
  EXPECT_EQ(widget.options, (QMap<QString, QString>{{option::bundleID, service_.windows().last().bundleID},
                                                    {option::windowTitle, u"Chart"_s},
                                                    {option::appName, u"Viewer"_s}}));
  const auto pinned = service_.pinned(widget);
  ASSERT_TRUE(pinned);
  const quint64 id = pinned->id;
  paint(id, 1);
  service_.follow({widget});
  EXPECT_TRUE(service_.isNeededBy({}));
  const auto beatUntil = [&](int time) {
    return waitFor([&] {
      service_.beat({});
      return shown(id) == time;
    });
  };
  EXPECT_TRUE(beatUntil(1));
  const auto taken = painted_.read(&Painted::taken).size();
  for (int i = 0; i < 3; ++i) service_.beat({});
  paint(id, 2);
  EXPECT_TRUE(beatUntil(2));
  EXPECT_EQ(painted_.read(&Painted::taken).size(), taken + 1) << "only when it changed";
  service_.follow({});
  EXPECT_FALSE(service_.isNeededBy({}));
  EXPECT_TRUE(waitFor([&] { return painted_.read(&Painted::rests) == 1; }));
  window(id).title = u"Other"_s;
  Q_EMIT windows_.changed();
  EXPECT_NE(service_.pinned(widget).value_or(AccessibleWindow()).id, id);
}

}  // namespace
}  // namespace tarnwick
