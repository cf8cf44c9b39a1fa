#include <gtest/gtest.h>

#include <QCoreApplication>
#include <ctime>

int main(int argc, char** argv) {
  qputenv("TZ", "Europe/Berlin");
  ::tzset();
  testing::InitGoogleTest(&argc, argv);
  const QCoreApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
