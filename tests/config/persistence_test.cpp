#include <gmock/gmock.h>

#include <QJsonDocument>

#include "config/DataDirectory.h"
#include "config/Persistence.h"
#include "config/SettingsLoader.h"
#include "config/document.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

const QString kSettingsFile = u"config.json"_s;
const QString kRecovery = u"config-recovery-1700000000.json"_s;
const char* const kPreserved =
    "Could not load settings. The original file was preserved as config-recovery-1700000000.json. ";
const char* const kBlocked = "Settings recovery could not preserve the original file. ";

QByteArray indented(const QByteArray& json) { return QJsonDocument::fromJson(json).toJson(QJsonDocument::Indented); }

QByteArray with(const QByteArray& old, const QByteArray& replacement) {
  QByteArray json = kDocument;
  EXPECT_TRUE(json.contains(old)) << old.constData();
  return json.replace(old, replacement);
}

TEST(Persistence, KeepsTheFormat) {
  EXPECT_EQ(Persistence::encode(Persistence::decode(kDocument)).toStdString(), indented(kDocument).toStdString());
  DockConfiguration fresh;
  fresh.validate();
  EXPECT_EQ(Persistence::decode(Persistence::encode(fresh)), fresh);
}

TEST(Persistence, ReadsOlderDocuments) {
  const qsizetype from = kDocument.indexOf("\"desktop\":{");
  const qsizetype to = kDocument.indexOf("\"display\":\"all\"");
  const QByteArray without = kDocument.first(from) + kDocument.sliced(to);
  EXPECT_EQ(Persistence::decode(without).desktop, DesktopOptions());

  const QByteArray partial = kDocument.first(from) +
                             R"("desktop": {"triggerSize": 9, "classicMenu": null, "later": []},)" +
                             kDocument.sliced(to);
  DesktopOptions expected;
  expected.triggerSize = 9;
  EXPECT_EQ(Persistence::decode(partial).desktop, expected);

  DockConfiguration config;
  DeskOptions desk;
  desk.contrast = QStringLiteral("on");
  desk.styleFollows = true;
  desk.lightStyle = QStringLiteral("white");
  desk.darkStyle = QStringLiteral("black");
  desk.magnification = QStringLiteral("off");
  desk.dodge = QStringLiteral("active");
  desk.peep = true;
  desk.barEmoji = desk.barFiles = false;
  desk.webSearch = QStringLiteral("https://example.org/?q=%s");
  desk.neverRecord = {QStringLiteral("org.example.Vault")};
  config.setDesk(desk);
  EXPECT_EQ(Persistence::decode(Persistence::encode(config)).desk(), desk);
  config.setDesk({});
  EXPECT_FALSE(Persistence::encode(config).contains("\"desk\"")) << "defaults are not written";

  for (const QByteArray key : {"activeProfileID", "tileBorders", "rememberedMediaSource", "temperatureUnit"}) {
    EXPECT_NO_THROW(Persistence::decode(with('"' + key + '"', "\"unknown\""))) << key.constData();
  }
}

TEST(Persistence, RefusesWithASentence) {
  const struct {
    QByteArray json;
    const char* message;
  } cases[] = {
      {with("\"title\":\"Title\"", "\"Title\":\"\""), "The value of “profiles[0].widgets[0].title” is missing."},
      {with("replaceAutoHide", "sideways"), "The value of “layout” is unknown."},
      {with("\"schema\":1", "\"schema\":2"), "Unsupported configuration or invalid profile count."},
  };
  for (const auto& c : cases) EXPECT_EQ(failureOf([&] { Persistence::decode(c.json); }), c.message);
  EXPECT_THAT(failureOf([] { Persistence::decode(with("1.25", "1e400")); }), HasSubstr("not valid JSON"));
}

struct SettingsFile : FolderTest {
  SettingsLoader::Result load() const { return SettingsLoader::load(at(kSettingsFile), 1700000000); }
  /// The user's file is kept as it is, under the other name, and the user gets a message.
  void expectMovedAside() const {
    const auto result = load();
    EXPECT_TRUE(result.ready);
    EXPECT_THAT(result.error.toStdString(), StartsWith(kPreserved));
    EXPECT_EQ(entries(), QStringList{kRecovery});
  }
};

TEST_F(SettingsFile, IsSavedWholeAndPrivate) {
  DockConfiguration configuration = Persistence::decode(kDocument);
  const QString path = at(u"a/b/config.json"_s);
  configuration.scale = 99;
  Persistence::save(configuration, path);
  EXPECT_EQ(mode(u"a/b/config.json"_s), 0600);
  EXPECT_EQ(content(u"a/b/config.json"_s), indented(with("1.25", "1.6")).toStdString());

  configuration.profiles[0].name.clear();
  EXPECT_EQ(failureOf([&] { Persistence::save(configuration, path); }), "Invalid profile name or too many widgets.");
  EXPECT_EQ(Persistence::read(path).scale, 1.6);
}

TEST_F(SettingsFile, LoadsWithoutAWordWhenItIsGoodOrMissing) {
  const auto first = load();
  EXPECT_TRUE(first.ready && first.error.isEmpty());
  EXPECT_EQ(first.configuration.profiles.first().name, u"Everyday"_s);
  EXPECT_TRUE(entries().isEmpty());

  put(kSettingsFile, kDocument);
  EXPECT_EQ(load().configuration, Persistence::decode(kDocument));
  EXPECT_TRUE(load().ready && load().error.isEmpty());
  EXPECT_EQ(entries(), QStringList{kSettingsFile});
}

TEST_F(SettingsFile, IsCopiedAsideWhenItCannotBeUsed) {
  for (const QByteArray& bytes : {QByteArray(), QByteArray("{\xff"), with("\"schema\":1", "\"schema\":2")}) {
    put(kSettingsFile, bytes);
    const auto result = load();
    EXPECT_TRUE(result.ready);
    EXPECT_EQ(result.error.toStdString(), kPreserved + failureOf([&] { Persistence::decode(bytes); }));
    EXPECT_EQ(result.configuration.profiles.first().name, u"Everyday"_s);
    EXPECT_EQ(content(kSettingsFile), bytes.toStdString());
    EXPECT_EQ(content(kRecovery), bytes.toStdString());
    EXPECT_EQ(mode(kRecovery), 0600);
  }
}

TEST_F(SettingsFile, IsMovedAsideWhenItCannotBeRead) {
  put(kSettingsFile + u"/inside"_s, "kept");
  expectMovedAside();
  EXPECT_EQ(content(kRecovery + u"/inside"_s), "kept");
  ASSERT_TRUE(QDir(at(kRecovery)).removeRecursively());

  put(kSettingsFile, kDocument);
  setMode(kSettingsFile, 0);
  const AsPlainUser user(folder_.path());
  expectMovedAside();
}

// Its disk is not there; that is no first run.
TEST_F(SettingsFile, ThatALinkDoesNotLeadToIsNotTakenForMissing) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"disk"_s));
  ASSERT_TRUE(QFile::link(at(u"disk/away/config.json"_s), at(kSettingsFile)));
  const auto result = load();
  EXPECT_TRUE(result.ready);
  EXPECT_THAT(result.error.toStdString(), StartsWith(kPreserved));
  EXPECT_EQ(entries(), (QStringList{kRecovery, u"disk"_s}));
  Persistence::save(result.configuration, at(kSettingsFile));
  put(u"disk/away/config.json"_s, kDocument);
  EXPECT_EQ(content(kRecovery), kDocument.toStdString()) << "the link stands, and nothing was written behind it";

  // The same of the folder: nothing can be moved, and nothing is written once it is back.
  ASSERT_TRUE(QFile::link(at(u"gone"_s), at(u"data"_s)));
  const auto blocked = SettingsLoader::load(at(u"data/config.json"_s), 1700000000);
  EXPECT_FALSE(blocked.ready);
  EXPECT_THAT(blocked.error.toStdString(), StartsWith(kBlocked));
}

TEST_F(SettingsFile, IsLeftAloneWhenNothingCanBePreserved) {
  const auto expectBlocked = [this](const SettingsLoader::Result& result) {
    EXPECT_FALSE(result.ready);
    EXPECT_THAT(result.error.toStdString(), AllOf(StartsWith(kBlocked), EndsWith(".")));
    EXPECT_EQ(result.configuration.profiles.first().name, u"Everyday"_s);
  };
  const QByteArray bad(5000, '?');
  put(kSettingsFile, bad);
  {
    const AsFullDisk full(1000);
    expectBlocked(load());
  }
  EXPECT_EQ(entries(), QStringList{kSettingsFile});
  {
    const AsPlainUser user(folder_.path());
    setMode(u"."_s, 0500);
    expectBlocked(load());
    setMode(u"."_s, 0700);
  }
  EXPECT_EQ(entries(), QStringList{kSettingsFile});

  ASSERT_TRUE(QDir(folder_.path()).mkpath(kRecovery + u"/taken"_s));
  expectBlocked(load());
  EXPECT_EQ(content(kSettingsFile), bad.toStdString());

  ASSERT_TRUE(QFile::remove(at(kSettingsFile)));
  ASSERT_TRUE(QDir(folder_.path()).mkdir(kSettingsFile));
  expectBlocked(load());
  EXPECT_EQ(entries().size(), 2);
}

TEST_F(SettingsFile, IsChosenByTheFirstThatApplies) {
  const QByteArray before = qgetenv("XDG_DATA_HOME");
  qputenv("XDG_DATA_HOME", "/data");
  put(u"none.json"_s, "{}");
  put(u"name.json"_s, R"({"TarnwickDataDirectoryName": "Tarnwick Beta"})");
  put(u"phase.json"_s, R"({"TarnwickDataDirectoryName": "X", "TarnwickPhaseDataDirectory": "/phase/"})");
  put(u"wrong.json"_s, R"({"TarnwickDataDirectoryName": "", "TarnwickPhaseDataDirectory": 5})");
  const struct {
    QString build;
    bool diagnostic;
    std::optional<QString> storage;
    QString path;
  } cases[] = {
      {u"phase.json"_s, true, u"/my/file"_s, u"/my/file"_s},
      {u"phase.json"_s, true, {}, QDir::tempPath() + u"/Tarnwick-diagnostic/config.json"_s},
      {u"phase.json"_s, false, {}, u"/phase/config.json"_s},
      {u"name.json"_s, false, {}, u"/data/Tarnwick Beta/config.json"_s},
      {u"none.json"_s, false, {}, u"/data/Tarnwick/config.json"_s},
      {u"wrong.json"_s, false, {}, u"/data/Tarnwick/config.json"_s},
  };
  for (const auto& c : cases) EXPECT_EQ(settingsFile(BuildSettings(at(c.build)), c.diagnostic, c.storage), c.path);
  qunsetenv("XDG_DATA_HOME");
  EXPECT_EQ(defaultStorageDirectory({}), QDir::homePath() + u"/.local/share/Tarnwick"_s);
  if (!before.isNull()) qputenv("XDG_DATA_HOME", before);
}

}  // namespace
}  // namespace tarnwick
