#include <sys/stat.h>

#include <QFile>
#include <QFileDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTest>

#include "base/DurableFile.h"
#include "config/Persistence.h"
#include "settings/SettingsFixture.h"
#include "store/DocumentEdits.h"
#include "support/Wait.h"
#include "views/controls/Buttons.h"
#include "views/controls/Labels.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

class ImportTest : public testing::Test, public SettingsFixture {
 protected:
  QString path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }
  /// A file of the settings as a change would leave them.
  template <class Change>
  QString written(const char* name, Change change) {
    DockConfiguration changed = config();
    change(changed);
    Persistence::save(changed, path(name));
    return path(name);
  }
  /// Gives whether it was taken.
  bool import(const QString& file) {
    std::optional<bool> taken;
    edits->importConfiguration(file, [&](bool isTaken) { taken = isTaken; });
    EXPECT_FALSE(taken) << "nobody waits for a disk";
    EXPECT_TRUE(waitFor([&] { return taken.has_value(); }));
    return taken.value_or(false);
  }
  /// Lets what was asked of other threads before this come in.
  void comeIn() {
    bool isIn = false;
    LatestWork later;
    later.start([](const std::stop_token&) { return 0; }, [&](int) { isIn = true; });
    EXPECT_TRUE(waitFor([&] { return isIn; }));
  }
  bool reads(const QString& words) {
    for (const TextLabel* label : window().findChildren<TextLabel*>())
      if (label->isVisible() && label->text() == words) return true;
    return false;
  }

  QTemporaryDir folder;
};

TEST_F(ImportTest, AFileThatCannotBeTakenChangesNothingAndSaysWhy) {
  const auto writeFile = [](const QString& file, const QByteArray& bytes, qint64 size) {
    QFile out(file);
    EXPECT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(bytes);
    EXPECT_TRUE(out.resize(size));
  };
  struct Case {
    const char* name;
    std::function<void(const QString&)> make;
  };
  const Case cases[] = {
      {"none.json", [](const QString&) {}},
      {"folder.json", [](const QString& file) { QDir().mkpath(file); }},
      {"pipe.json", [](const QString& file) { ASSERT_EQ(::mkfifo(QFile::encodeName(file).constData(), 0600), 0); }},
      {"huge.json", [&](const QString& file) { writeFile(file, "{", DurableFile::kMostBytes + 1); }},
      {"broken.json", [&](const QString& file) { writeFile(file, "{\"schema\": 1}", 13); }},
      {"newer.json", [&](const QString& file) { writeFile(file, "{\"schema\": 2}", 13); }},
  };
  edits->remove(config().profiles[0].widgets[0].id);
  const DockConfiguration before = config();
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    store().clearError();
    each.make(path(each.name));
    EXPECT_FALSE(import(path(each.name)));
    EXPECT_TRUE(store().error().endsWith(u'.')) << store().error().toStdString();
    EXPECT_EQ(config(), before);
    EXPECT_EQ(undo().size(), 1) << "the way back included";
  }
}

TEST_F(ImportTest, TheLastFileThatWasChosenIsTakenAndNoneOnceNobodyIsThere) {
  const QString first = written("first.json", [](DockConfiguration& c) { c.scale = 1.4; });
  const QString second = written("second.json", [](DockConfiguration& c) { c.scale = 1.6; });
  bool isFirstOver = false;
  edits->importConfiguration(first, [&](bool) { isFirstOver = true; });
  EXPECT_TRUE(import(second));
  comeIn();
  EXPECT_FALSE(isFirstOver);
  EXPECT_EQ(config().scale, 1.6);
  EXPECT_EQ(undo().size(), 1);

  // What is changed while a file is read is part of what its import can be taken back to.
  bool isOver = false;
  edits->importConfiguration(first, [&](bool) { isOver = true; });
  store().edit([](DockConfiguration& c) { c.scale = 0.8; });
  ASSERT_TRUE(waitFor([&] { return isOver; }));
  EXPECT_EQ(config().scale, 1.4);
  undo().undo();
  EXPECT_EQ(config().scale, 0.8);

  edits->importConfiguration(second, [](bool) { ADD_FAILURE() << "nobody is there"; });
  edits.reset();
  comeIn();
  EXPECT_EQ(config().scale, 0.8);
}

TEST_F(ImportTest, IsTakenBackAndWhatIsUnderItStays) {
  const QString other = written("other.json", [](DockConfiguration&) {});
  const DockConfiguration exported = config();
  edits->remove(config().profiles[0].widgets[0].id);
  const DockConfiguration before = config();
  EXPECT_TRUE(import(other));
  EXPECT_EQ(config(), exported);
  EXPECT_EQ(undo().size(), 2);
  undo().undo();
  EXPECT_EQ(config(), before);
  undo().redo();
  EXPECT_EQ(config(), exported);
  // What it brought is changed: it can no longer be taken back, and the removal under it is the newest.
  store().set(exported.profiles[0].widgets[0].id, u"label"_s, u"Mine"_s);
  EXPECT_EQ(undo().size(), 1);
  undo().undo();
  EXPECT_EQ(DocumentEdits::find(config(), exported.profiles[0].widgets[0].id)->options.value(u"label"_s), u"Mine"_s);
}

TEST_F(ImportTest, KeptSettingsComeWithoutWhatCannotBeUsedAndGoAgain) {
  const QString file = written("config-recovery-1.json", [](DockConfiguration& c) {
    c.scale = 1.4;
    c.profiles[0].name = u"Kept"_s;
    c.profiles[0].widgets[0].title = u"Unknown"_s;
  });
  QFile kept(file);
  ASSERT_TRUE(kept.open(QIODevice::ReadWrite));
  QJsonObject document = QJsonDocument::fromJson(kept.readAll()).object();
  QJsonArray profiles = document.value(u"profiles").toArray();
  QJsonObject first = profiles.at(0).toObject();
  QJsonArray widgets = first.value(u"widgets").toArray();
  QJsonObject widget = widgets.at(0).toObject();
  widget.insert(u"kind", u"later"_s);
  widgets.replace(0, widget);
  first.insert(u"widgets", widgets);
  profiles.replace(0, first);
  document.insert(u"profiles", profiles);
  const QByteArray bytes = QJsonDocument(document).toJson();
  ASSERT_TRUE(kept.resize(0) && kept.seek(0) && kept.write(bytes) == bytes.size());
  kept.close();

  const DockConfiguration before = config();
  EXPECT_FALSE(import(file)) << "a file of settings is taken whole or not at all";
  EXPECT_EQ(config(), before);
  std::optional<bool> taken;
  edits->importKept(file, [&](bool isTaken) { taken = isTaken; });
  ASSERT_TRUE(waitFor([&] { return taken.has_value(); }));
  EXPECT_TRUE(*taken);
  EXPECT_EQ(config().scale, 1.4);
  EXPECT_EQ(config().profiles[0].name, u"Kept"_s);
  EXPECT_EQ(config().profiles[0].widgets, before.profiles[0].widgets.mid(1));
  undo().undo();
  EXPECT_EQ(config(), before);
  ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
  EXPECT_EQ(kept.readAll(), bytes) << "the file stays as it is";
}

TEST_F(ImportTest, OfSeveralEachIsWatchedForWhatItBroughtItself) {
  const double scale = config().scale, spacing = config().spacing, gap = config().edgeGap;
  const QString one = written("one.json", [](DockConfiguration& c) { c.scale = 1.4, c.spacing = 9; });
  const QString two = written("two.json", [](DockConfiguration& c) { c.scale = 1.6, c.spacing = 9; });
  const auto set = [](double DockConfiguration::*field, double value) {
    return [field, value](DockConfiguration& c) { c.*field = value; };
  };
  struct Case {
    const char* name;
    std::function<void(DockConfiguration&)> since;
    qsizetype left;              // Of the two.
    double scale, spacing, gap;  // When all that is left is taken back.
  };
  const Case cases[] = {
      {"nothing", [](DockConfiguration&) {}, 2, scale, spacing, gap},
      {"what neither brought", set(&DockConfiguration::edgeGap, 20), 2, scale, spacing, 20},
      {"what the first brought alone", set(&DockConfiguration::spacing, 11), 1, 1.4, 11, gap},
      {"what both brought", set(&DockConfiguration::scale, 0.7), 0, 0.7, 9, gap},
  };
  const DockConfiguration start = config();
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    undo().clear();
    store().edit([&](DockConfiguration& c) { c = start; });
    ASSERT_TRUE(import(one));
    ASSERT_TRUE(import(two));
    ASSERT_EQ(undo().size(), 2);
    store().edit(each.since);
    EXPECT_EQ(undo().size(), each.left);
    while (undo().size() > 0) undo().undo();
    EXPECT_EQ(config().scale, each.scale);
    EXPECT_EQ(config().spacing, each.spacing);
    EXPECT_EQ(config().edgeGap, each.gap);
    EXPECT_TRUE(store().error().isEmpty()) << "nothing was offered that could not be done";
  }
}

TEST_F(ImportTest, ThePageSaysHowFarItIs) {
  const QString good = written("good.json", [](DockConfiguration& c) { c.scale = 1.4; });
  QFile broken(path("broken.json"));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write("{\"schema\": 1}");
  broken.close();
  QObject::connect(&undo(), &UndoStack::failed, &store(), &AppStore::setError);
  turnTo("general");
  const auto choose = [&](const QString& file) {
    for (Button* button : window().findChildren<Button*>())
      if (button->label() == u"Import…"_s) button->click();
    auto* dialog = window().findChild<QFileDialog*>();
    ASSERT_TRUE(dialog);
    dialog->setDirectory(folder.path());
    Q_EMIT dialog->fileSelected(file);
    delete dialog;
  };
  ASSERT_NO_FATAL_FAILURE(choose(good));
  EXPECT_TRUE(reads(u"Reading “good.json”…"_s));
  // A failure of something else is not its own.
  store().setError(u"The disk is full."_s);
  EXPECT_TRUE(waitFor([&] { return reads(u"Settings were imported from “good.json”."_s); }));
  EXPECT_EQ(config().scale, 1.4);

  const DockConfiguration before = config();
  ASSERT_NO_FATAL_FAILURE(choose(broken.fileName()));
  EXPECT_TRUE(waitFor([&] { return !store().error().isEmpty(); }));
  EXPECT_TRUE(reads(u"Replaces all settings with those of a file."_s));
  EXPECT_EQ(config(), before);
  for (IconButton* button : window().findChildren<IconButton*>())
    if (button->label() == u"Dismiss"_s) button->click();
  EXPECT_TRUE(store().error().isEmpty());
}

}  // namespace
}  // namespace tarnwick::test
