#include <gtest/gtest.h>

#include "clipboard/ClipboardPanelModel.h"
#include "support/FakePasteboard.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

class ClipboardPanelModelTest : public FolderTest {
 protected:
  void SetUp() override { make(); }
  void make() {
    model.reset();
    history = std::make_unique<ClipboardHistory>(folder_.path(), clock);
    model = std::make_unique<ClipboardPanelModel>(*history, pasteboard);
    settle();
  }
  void settle() {
    // Work that an answer asks for is done in the second round.
    for (int round = 0; round < 2; ++round) {
      bool isDone = false;
      history->load([&] { isDone = true; });
      ASSERT_TRUE(waitFor([&] { return isDone; }));
    }
  }
  void record(const QStringList& texts) {
    for (const QString& text : texts) history->record(*ClipboardCapture::ofText(text));
    settle();
  }
  QStringList shown() const {
    QStringList values;
    for (const auto& entry : model->entries()) values.append(entry.value);
    return values;
  }

  test::TestScheduler clock;
  test::FakePasteboard pasteboard;
  std::unique_ptr<ClipboardHistory> history;
  std::unique_ptr<ClipboardPanelModel> model;
};

TEST_F(ClipboardPanelModelTest, ShowsAGroupOfWhatTheSearchFinds) {
  record({u"example.com/Äpfel"_s, u"plain"_s, u"#abc"_s, u"apfel"_s});
  const struct {
    ClipboardGroup group;
    QString search;
    QStringList shown;
  } cases[] = {
      {ClipboardGroup::Recent, {}, {u"apfel"_s, u"#abc"_s, u"plain"_s, u"example.com/Äpfel"_s}},
      {ClipboardGroup::Links, {}, {u"example.com/Äpfel"_s}},
      {ClipboardGroup::Recent, u" APFEL "_s, {u"apfel"_s, u"example.com/Äpfel"_s}},
      {ClipboardGroup::Text, u"apfel"_s, {u"apfel"_s}},
      {ClipboardGroup::Files, {}, {}},
      {ClipboardGroup::Recent, u"nothing"_s, {}},
  };
  for (const auto& each : cases) {
    model->setGroup(each.group);
    model->setSearch(each.search);
    EXPECT_EQ(shown(), each.shown) << each.search.toStdString();
  }
  model->setSearch(u"example"_s);
  EXPECT_EQ(model->available(), (QList<ClipboardGroup>{ClipboardGroup::Recent, ClipboardGroup::Links}));
}

TEST_F(ClipboardPanelModelTest, ALongHistoryIsSearchedAlongside) {
  const QString much(60'000, u'x');
  record({u"first Äpfel "_s + much, u"second "_s + much, u"third "_s + much});
  model->setSearch(u"third"_s);
  model->setSearch(u"apfel"_s);
  EXPECT_EQ(shown().size(), 3) << "until it is known";
  ASSERT_TRUE(waitFor([&] { return shown().size() == 1; }));
  EXPECT_TRUE(shown().first().startsWith(u"first"_s));
  record({u"new Apfel"_s});
  ASSERT_TRUE(waitFor([&] { return shown().size() == 2; }));
  model->setSearch(u"second"_s);
  model->setSearch({});
  EXPECT_EQ(shown().size(), 4) << "at once";
  model->setSearch(u"third"_s);
  model.reset();  // What still runs answers nobody.
  settle();
}

TEST_F(ClipboardPanelModelTest, FollowsWhatHappens) {
  record({u"a"_s, u"b"_s});
  model->toggleFavourite(model->entries().first());
  settle();
  EXPECT_EQ(model->favourites(), 1);
  std::optional<RemovedClipboardEntry> removed;
  QObject::connect(model.get(), &ClipboardPanelModel::removed, [&](const auto& what) { removed = what; });
  model->remove(model->entries().first());
  settle();
  EXPECT_EQ(shown(), QStringList{u"a"_s});
  ASSERT_TRUE(removed);
  history->putBack(*removed);
  settle();
  EXPECT_EQ(shown(), (QStringList{u"b"_s, u"a"_s}));
  EXPECT_EQ(model->favourites(), 1);
  model->clear();
  settle();
  EXPECT_EQ(shown(), QStringList());
}

TEST_F(ClipboardPanelModelTest, PutsAnEntryBack) {
  record({u"a"_s});
  model->use(model->entries().first());
  EXPECT_EQ(pasteboard.offered, PasteboardOffer::text(u"a"_s));
  ClipboardEntry file = model->entries().first();
  file.kind = ClipboardEntry::Kind::File;
  file.value = u"/home/ann/ä b"_s;
  model->use(file);
  EXPECT_EQ(pasteboard.offered.forms.first(),
            (PasteboardOffer::Form{u"text/uri-list"_s, "file:///home/ann/%C3%A4%20b\r\n"}));
  put(u"Clipboard/there.png"_s, "png");
  ClipboardEntry picture = file;
  picture.kind = ClipboardEntry::Kind::Image;
  picture.imageFile = u"there.png"_s;
  model->use(picture);
  model.reset();
  settle();
  EXPECT_EQ(pasteboard.offered, PasteboardOffer::picture("png")) << "also when the panel is gone";
  model = std::make_unique<ClipboardPanelModel>(*history, pasteboard);
  EXPECT_FALSE(pasteboard.isEmpty());
  picture.imageFile = u"gone.png"_s;
  model->use(picture);
  settle();
  EXPECT_TRUE(pasteboard.isEmpty());
}

TEST_F(ClipboardPanelModelTest, SaysWhatWentWrong) {
  put(u"Clipboard/index.json"_s, "broken");
  make();
  EXPECT_EQ(model->message(), history->problem());
  EXPECT_TRUE(model->message().startsWith(u"Your clipboard history couldn't be read. It has been kept at "_s));
  model->clear();
  settle();
  EXPECT_EQ(content(u"Clipboard/index.json"_s), "broken");
  EXPECT_FALSE(model->message().isEmpty());
}

}  // namespace
}  // namespace tarnwick
