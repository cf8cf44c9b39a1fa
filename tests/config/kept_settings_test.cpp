#include "config/KeptSettings.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "base/DomainError.h"
#include "config/ContentLine.h"
#include "config/Persistence.h"
#include "config/SettingsLoader.h"
#include "config/document.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// The document with these widgets behind its own.
QByteArray documentWith(const QByteArray& widgets) {
  QByteArray json = kDocument;
  return json.replace("\"title\":\"Title\"}]", "\"title\":\"Title\"}," + widgets + "]");
}

TEST(KeptSettings, LeavesOutWhatCannotBeUsedAndNothingElse) {
  const QByteArray later =
      R"({"id":"00000000-0000-4000-8000-0000000000C1","kind":"later","options":{},"title":"Mine"})";
  const QByteArray good = R"({"id":"00000000-0000-4000-8000-0000000000C2","kind":"ram","options":{},"title":""})";
  const struct {
    const char* what;
    QByteArray widgets;
    QStringList leftOut;
    qsizetype remain;
  } cases[] = {
      {"nothing is wrong", good, {}, 2},
      {"a kind of a newer version", later + ',' + good, {u"Mine (later)"_s}, 2},
      {"no record at all", "7," + good, {u"A damaged widget"_s}, 2},
      {"without its options",
       R"({"id":"00000000-0000-4000-8000-0000000000C3","kind":"cpu","title":""})",
       {u"CPU"_s},
       1},
      {"an identity twice",
       R"({"id":"00000000-0000-4000-8000-0000000000BB","kind":"ram","options":{},"title":"B"},)" + good,
       {u"B (RAM)"_s},
       2},
      {"a number that is none",
       R"({"id":"00000000-0000-4000-8000-0000000000C4","kind":"cpu","options":{"minutes":"x"},"title":""})",
       {u"CPU"_s},
       1},
      {"a credential",
       R"({"id":"00000000-0000-4000-8000-0000000000C5","kind":"cpu","options":{"token":"x"},"title":""})",
       {u"CPU"_s},
       1},
      {"several", "null," + later, {u"A damaged widget"_s, u"Mine (later)"_s}, 1},
  };
  const DockConfiguration whole = Persistence::decode(kDocument);
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    auto [configuration, leftOut] = KeptSettings::decode(documentWith(each.widgets));
    EXPECT_EQ(leftOut, each.leftOut);
    EXPECT_EQ(configuration.profiles[0].widgets.size(), each.remain);
    configuration.profiles[0].widgets.resize(1);
    EXPECT_EQ(configuration, whole);
  }
}

TEST(KeptSettings, WhatIsWrongElsewhereIsRefused) {
  const auto with = [](const QByteArray& old, const QByteArray& replacement) {
    QByteArray json = documentWith("7");
    EXPECT_TRUE(json.contains(old));
    return json.replace(old, replacement);
  };
  for (const QByteArray& json :
       {QByteArray("{ this is not"), QByteArray("[]"), with("\"schema\":1", "\"schema\":2"),
        with("\"scale\":1.25", "\"scale\":\"big\""), with("\"name\":\"Work\"", "\"name\":\"\"")})
    EXPECT_THROW(KeptSettings::decode(json), DomainError) << json.constData();
}

struct KeptSettingsFile : FolderTest {
  SettingsLoader::Result load() const { return SettingsLoader::load(at(u"config.json"_s), 1700000000); }
};

TEST_F(KeptSettingsFile, IsOfferedOnlyWhereMostOfItCanBeUsed) {
  put(u"config.json"_s, documentWith("7"));
  const auto recovered = load();
  EXPECT_EQ(recovered.kept.file, at(u"config-recovery-1700000000.json"_s));
  EXPECT_EQ(recovered.kept.leftOut, QStringList{u"A damaged widget"_s});
  EXPECT_NE(recovered.configuration.profiles[0].name, u"Work"_s) << "nothing is taken unasked";

  put(u"config.json"_s, "{ this is not");
  EXPECT_FALSE(load().kept);
  put(u"config.json"_s, kDocument);
  EXPECT_FALSE(load().kept);
  put(u"config.json"_s, documentWith("7"));
  ASSERT_TRUE(QFile::remove(at(u"config-recovery-1700000000.json"_s)));
  ASSERT_TRUE(QDir(folder_.path()).mkpath(u"config-recovery-1700000000.json/taken"_s));
  EXPECT_FALSE(load().kept) << "what could not be preserved stays where it is";
}

TEST_F(KeptSettingsFile, IsReadWithWhatWasEnteredAndNotSaved) {
  const QString file = at(u"config-recovery-1700000000.json"_s);
  put(u"config-recovery-1700000000.json"_s, documentWith("7"));
  EXPECT_EQ(KeptSettings::read(file), Persistence::decode(kDocument));
  ContentLine line;
  line.shelf = QStringList{u"/entered"_s};
  put(u"content-recovery-1700000000.json"_s, line.text());
  EXPECT_EQ(KeptSettings::read(file).shelf, QStringList{u"/entered"_s});
  EXPECT_THROW(KeptSettings::read(at(u"gone.json"_s)), DomainError);
}

}  // namespace
}  // namespace tarnwick
