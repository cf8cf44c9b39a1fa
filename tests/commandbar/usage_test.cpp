#include <QTimeZone>

#include "commandbar/CommandUsageStore.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

class UsageFileTest : public FolderTest {};

TEST_F(UsageFileTest, KeepsWhatIsSaved) {
  CommandUsage usage;
  const QDateTime moment(QDate(2026, 11, 24), QTime(10, 24, 7, 251), QTimeZone::utc());
  usage.record(u"app:/a \"b\".desktop"_s, moment);
  usage.record(u"symbol:🔥"_s, moment);
  usage.record(u"symbol:🔥"_s, moment.addDays(-400));
  const QString folder = at(u"new/data"_s);
  {
    CommandUsageStore store;
    for (int i = 0; i < 50; ++i) {
      usage.record(u"web:search"_s, moment);
      store.save(usage, folder);
    }
  }
  EXPECT_EQ(CommandUsageStore::load(folder), usage);
  EXPECT_EQ(usage.records.value(u"web:search"_s).count, 50);
  EXPECT_EQ(mode(u"new/data/command-usage.json"_s), 0600U);
  EXPECT_EQ(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
}

TEST_F(UsageFileTest, IsEmptyWhereItCannotBeRead) {
  const QByteArray whole = R"({"records":{"app:/x":{"count":2,"last":817813447.5}}})";
  put(u"command-usage.json"_s, whole);
  EXPECT_EQ(CommandUsageStore::load(folder_.path()).records.value(u"app:/x"_s), (CommandUsage::Record{2, 817813447.5}));
  for (const QByteArray& damaged :
       {QByteArray(), whole.chopped(1), QByteArray("{}"), QByteArray("[]"), QByteArray(R"({"records":[]})"),
        QByteArray(R"({"records":{"a":{"count":2,"last":1},"b":{"count":2}}})"),
        QByteArray(R"({"records":{"a":{"last":1}}})"), QByteArray(R"({"records":{"a":{"count":"2","last":1}}})"),
        QByteArray(R"({"records":{"a":{"count":1.5,"last":1}}})"),
        QByteArray(R"({"records":{"a":{"count":1,"last":"x"}}})"), QByteArray(17 * 1024 * 1024, ' ') + whole,
        QByteArray("\xff\xfe\0\0", 4)}) {
    put(u"command-usage.json"_s, damaged);
    EXPECT_EQ(CommandUsageStore::load(folder_.path()), CommandUsage()) << damaged.right(80).toStdString();
  }
  EXPECT_EQ(CommandUsageStore::load(at(u"nowhere"_s)), CommandUsage());
}

TEST_F(UsageFileTest, StaysWholeWhenItCannotBeWritten) {
  CommandUsage usage;
  usage.records.insert(u"app:/x"_s, {1, 1});
  CommandUsageStore store;
  store.save(usage, folder_.path());
  store.finish();
  CommandUsage larger;
  for (int i = 0; i < 300; ++i) larger.records.insert(QString::number(i), {1, 1});
  {
    const AsFullDisk full(1000);
    store.save(larger, folder_.path());
    store.finish();
  }
  EXPECT_EQ(CommandUsageStore::load(folder_.path()), usage);
  EXPECT_EQ(entries().size(), 1);
  put(u"file"_s, "x");
  store.save(larger, at(u"file/below"_s));
  store.finish();
}

}  // namespace
}  // namespace tarnwick
