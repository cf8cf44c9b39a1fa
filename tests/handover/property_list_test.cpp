#include "dock/PropertyList.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QRandomGenerator>
#include <limits>

#include "base/DomainError.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(PropertyListTest, EveryPlainValueComesBackAsItWas) {
  const QVariantMap deep{
      {u"docks"_s, QVariantList{QVariantMap{{u"dock"_s, u"plank"_s}, {u"settings"_s, QVariantList()}}, QVariantMap()}}};
  for (const QVariant& value :
       QVariantList{true, false, 0.5, 0.1, -1e-300, std::numeric_limits<double>::max(), qlonglong(0), qlonglong(-5),
                    std::numeric_limits<qlonglong>::max(), std::numeric_limits<qlonglong>::min(), QString(), u"a"_s,
                    u"Größe 🎈 “x”"_s, QByteArray("\0\xff bytes", 8), QByteArray(""), QVariantList(), deep}) {
    const QVariant back = PropertyList::decode(PropertyList::encode(value));
    EXPECT_EQ(back, value) << value.typeName();
    EXPECT_EQ(back.typeId(), value.typeId());
  }
}

TEST(PropertyListTest, WhatItCannotHoldIsRefusedNotBent) {
  for (const QVariant& value :
       QVariantList{QVariant(), QDateTime::currentDateTime(), QString(u"a\0b"_s), QVariantMap{{u"k"_s, QVariant()}}}) {
    EXPECT_THROW(PropertyList::encode(value), DomainError) << value.typeName();
  }
  QVariant endless = true;
  for (int i = 0; i < 100; ++i) endless = QVariantList{endless};
  EXPECT_THROW(PropertyList::decode(PropertyList::encode(endless)), DomainError);
}

TEST(PropertyListTest, ReadsWhatOtherToolsWrite) {
  const QByteArray binary = QByteArray::fromHex(
      "62706c6973743030d3010203040511586175746f686964655e6175746f686964652d64656c6179546c6973745a5f5f616273656e745f5fd1"
      "060755646f636b73a108d4090a0b0c0d0e0f10516254646f636b516e51724200ff650047007200f600df006513fffffffffffffffb233fd0"
      "000000000000a3121314090811012c080f18272c373a40424b4d52545659646d767a7b7c0000000000000101000000000000001500000000"
      "00000000000000000000007f");
  const QVariantMap dock{{u"dock"_s, u"Größe"_s}, {u"n"_s, -5}, {u"r"_s, 0.25}, {u"b"_s, QByteArray("\0\xff", 2)}};
  const QVariantMap expected{{u"autohide"_s, u"__absent__"_s},
                             {u"autohide-delay"_s, QVariantMap{{u"docks"_s, QVariantList{dock}}}},
                             {u"list"_s, QVariantList{true, false, 300}}};
  EXPECT_EQ(PropertyList::decode(binary), QVariant(expected));
}

/// A binary property list of these objects, the first of which is the whole.
QByteArray binaryList(const QByteArrayList& objects) {
  QByteArray data = "bplist00";
  QByteArray table;
  for (const QByteArray& object : objects) {
    table += static_cast<char>(data.size());
    data += object;
  }
  const auto tableAt = static_cast<char>(data.size());
  data += table + QByteArray(6, '\0') + '\1' + '\1';
  data += QByteArray(7, '\0') + static_cast<char>(objects.size());
  return data + QByteArray(15, '\0') + tableAt;
}

TEST(PropertyListTest, BytesThatAreNoneAreRefusedOrRead) {
  const auto bytes = [](const char* hex) { return QByteArray::fromHex(hex); };
  // {"a": true}, and the same with a null within and instead of the key.
  EXPECT_EQ(PropertyList::decode(binaryList({bytes("d10102"), bytes("5161"), bytes("09")})),
            QVariant(QVariantMap{{u"a"_s, true}}));
  EXPECT_EQ(PropertyList::decode(binaryList({bytes("d10102"), bytes("53610062"), bytes("09")})),
            QVariant(QVariantMap{{u"a\0b"_s, true}}));
  EXPECT_EQ(PropertyList::decode(binaryList({bytes("d10102"), bytes("550000000000"), bytes("09")})),
            QVariant(QVariantMap{{QString(5, u'\0'), true}}));

  const std::pair<const char*, QByteArrayList> refused[] = {
      {"a key that is no text", {bytes("d10102"), bytes("1001"), bytes("09")}},
      {"a key twice", {bytes("d201020303"), bytes("5161"), bytes("5161"), bytes("09")}},
      {"a list of itself", {bytes("a100")}},
      {"many lists of lists", {bytes("af101001010101010101010101010101010101"), bytes("a902020202020202020202"),
                               bytes("a903030303030303030303"), bytes("a904040404040404040404"),
                               bytes("a905050505050505050505"), bytes("a906060606060606060606"), bytes("09")}},
      {"an index beyond the table", {bytes("a105")}},
      {"a text beyond the end", {bytes("5f12ffffffff61")}},
      {"a size of eight bytes", {bytes("5f13ffffffffffffffff61")}},
      {"a size that is no number", {bytes("5f2361")}},
      {"half a surrogate", {bytes("61d800")}},
      {"nothing", {bytes("00")}},
      {"a date", {bytes("330000000000000000")}},
      {"a set", {bytes("c101"), bytes("09")}},
      {"sixteen bytes of number", {bytes("1400000000000000000000000000000000")}},
      {"no object", {}},
  };
  for (const auto& [name, objects] : refused) {
    EXPECT_THROW(PropertyList::decode(binaryList(objects)), DomainError) << name;
  }
}

TEST(PropertyListTest, NoChangeOfAFileEndsTheProgram) {
  const QVariantMap values{{u"autohide"_s, QVariantMap{{u"docks"_s, QVariantList{u"plank"_s, 1, 0.5, u"ä"_s}}}},
                           {u"autohide-delay"_s, QByteArray("bytes")}};
  const QByteArray binary = PropertyList::encode(values);
  QRandomGenerator random(7);
  int read = 0;
  for (int i = 0; i < 100'000; ++i) {
    QByteArray changed = binary;
    for (int n = random.bounded(1, 5); n > 0; --n) {
      changed[random.bounded(static_cast<int>(changed.size()))] = static_cast<char>(random.bounded(256));
    }
    if (random.bounded(8) == 0) changed.truncate(random.bounded(static_cast<int>(changed.size())));
    try {
      PropertyList::decode(changed);
      ++read;
    } catch (const DomainError&) {
    }
  }
  EXPECT_GT(read, 1000) << "the changes must not all be refused at the door";
}

TEST(PropertyListTest, ReadsTheXmlForm) {
  const QByteArray xml = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict><key>autohide</key><true/><key>autohide-delay</key><real>0.25</real></dict></plist>)";
  EXPECT_EQ(PropertyList::decode(xml), QVariant(QVariantMap{{u"autohide"_s, true}, {u"autohide-delay"_s, 0.25}}));

  const QByteArray within = "<plist><dict><key>a</key><array><integer>-7</integer><string>&lt;x&gt;</string>"
                            "<data>AP8=</data><false/></array></dict></plist>";
  EXPECT_EQ(PropertyList::decode(within),
            QVariant(QVariantMap{{u"a"_s, QVariantList{-7, u"<x>"_s, QByteArray("\0\xff", 2), false}}}));
  for (const char* text :
       {"<plist>", "<plist/>", "<plist><true/>", "<plist><true/><true/></plist>", "<plist><date>2020</date></plist>",
        "<plist><integer>one</integer></plist>", "<plist><dict><key>a</key></dict></plist>",
        "<plist><dict><true/><true/></dict></plist>", "<plist><string>&#0;</string></plist>", "<html/>",
        "<plist><dict><key>a</key><true/><key>a</key><true/></dict></plist>"}) {
    EXPECT_THROW(PropertyList::decode(text), DomainError) << text;
  }
  QByteArray deep;
  for (int i = 0; i < 100; ++i) deep = "<array>" + deep + "</array>";
  EXPECT_THROW(PropertyList::decode("<plist>" + deep + "</plist>"), DomainError);
}

}  // namespace
}  // namespace tarnwick
