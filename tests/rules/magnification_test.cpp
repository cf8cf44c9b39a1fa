#include <gtest/gtest.h>

#include <limits>

#include "dock/rules/Magnification.h"

namespace tarnwick {

TEST(Magnified, TilesSwellAlongACosine) {
  EXPECT_DOUBLE_EQ(Magnification::scale(40, 40), 1.08);
  EXPECT_NEAR(Magnification::scale(0, 75), 1.04, 1e-12);
  EXPECT_DOUBLE_EQ(Magnification::scale(0, 150), 1);
  EXPECT_DOUBLE_EQ(Magnification::scale(0, -400), 1);
  EXPECT_DOUBLE_EQ(Magnification::scale(0, std::numeric_limits<double>::infinity()), 1);
  EXPECT_DOUBLE_EQ(Magnification::scale(std::numeric_limits<double>::quiet_NaN(), 0), 1);
  EXPECT_DOUBLE_EQ(Magnification::scale(40, 40, 0), 1);
  EXPECT_DOUBLE_EQ(Magnification::scale(0, 75, Magnification::kMuch), 1.08);
  const std::pair<const char*, double> amounts[] = {{"off", 0}, {"little", 0.08}, {"much", 0.16}, {"later", 0.08}};
  for (const auto& [name, amount] : amounts)
    EXPECT_DOUBLE_EQ(Magnification::amountNamed(QString::fromLatin1(name)), amount) << name;
  EXPECT_EQ(Magnification::centres({50, 50}, 7, 10), (QList<double>{35, 92}));
}

}  // namespace tarnwick
