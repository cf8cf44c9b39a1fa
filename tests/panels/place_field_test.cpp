#include <gtest/gtest.h>

#include <QCoroTask>
#include <QTest>
#include <optional>

#include "base/DomainError.h"
#include "services/Connections.h"
#include "support/Wait.h"
#include "views/controls/Fields.h"
#include "views/controls/Labels.h"
#include "views/controls/Rows.h"
#include "views/panels/PlaceField.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// Two places of every name but one.
class Atlas final : public Connections {
 public:
  QCoro::Task<QList<GeocodeCache::Place>> places(QString name, std::stop_token) override {
    asked << name;
    if (name == u"Nowhere"_s) throw DomainError::invalid(u"The service is away."_s);
    co_return QList<GeocodeCache::Place>{{1, 2, name, u"Texas"_s}, {3, 4, name, u"France"_s}};
  }
  QStringList asked;
};

struct Searched : ::testing::Test {
  Searched() {
    QObject::connect(&field, &PlaceField::chosen, &field, [this](const GeocodeCache::Place& place) { chosen = place; });
    field.resize(320, 400);
    field.show();
  }
  QList<ListRow*> rows() {
    QList<ListRow*> shown = field.findChildren<ListRow*>();
    shown.removeIf([](const ListRow* row) { return !row->isVisible(); });
    return shown;
  }
  void type(const QString& keys) { QTest::keyClicks(&field.field(), keys); }

  Atlas atlas;
  PlaceField field{u"Place"_s, atlas};
  std::optional<GeocodeCache::Place> chosen;
};

TEST_F(Searched, AsksOnceForWhatIsTypedInOneGoAndNotForALetter) {
  type(u"P"_s);
  QTest::keyClick(&field.field(), Qt::Key_Return);
  type(u"aris"_s);
  ASSERT_TRUE(waitFor([&] { return rows().size() == 2; }));
  EXPECT_EQ(atlas.asked, QStringList{u"Paris"_s});
  EXPECT_FALSE(chosen);
  // The arrows lead to the rows and back, and Return chooses one.
  QTest::keyClick(&field.field(), Qt::Key_Down);
  QTest::keyClick(rows()[0], Qt::Key_Down);
  QTest::keyClick(rows()[1], Qt::Key_Return);
  ASSERT_TRUE(chosen);
  EXPECT_EQ(chosen->region, u"France"_s);
  EXPECT_TRUE(rows().isEmpty());
  EXPECT_EQ(field.text(), u"Paris"_s);
}

TEST_F(Searched, ReturnTakesTheFirstAndDoesNotWaitForTheRest) {
  type(u"Lyon"_s);
  QTest::keyClick(&field.field(), Qt::Key_Return);
  ASSERT_TRUE(waitFor([&] { return chosen.has_value(); }));
  EXPECT_EQ(chosen->region, u"Texas"_s);
  EXPECT_EQ(atlas.asked, QStringList{u"Lyon"_s}) << "what was taken is not asked for";
}

TEST_F(Searched, AFailureIsSaidInPlaceOfTheRows) {
  type(u"Nowhere"_s);
  const auto said = [&] {
    for (const TextLabel* label : field.findChildren<TextLabel*>())
      if (label->isVisible()) return label->text();
    return QString();
  };
  ASSERT_TRUE(waitFor([&] { return !said().isEmpty(); }));
  EXPECT_EQ(said(), u"The service is away."_s);
}

}  // namespace
}  // namespace tarnwick
