#include "dock/PropertyList.h"

#include <gtest/gtest.h>

#include <QDateTime>
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

TEST(PropertyListTest, ReadsTheXmlForm) {
  const QByteArray xml = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict><key>autohide</key><true/><key>autohide-delay</key><real>0.25</real></dict></plist>)";
  EXPECT_EQ(PropertyList::decode(xml), QVariant(QVariantMap{{u"autohide"_s, true}, {u"autohide-delay"_s, 0.25}}));
}

}  // namespace
}  // namespace tarnwick
