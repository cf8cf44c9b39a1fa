#include <gtest/gtest.h>

#include <QCoreApplication>

#include "NetworkDiagnoseChild.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.value(1) == tarnwick::kDiagnoseChild) return tarnwick::diagnoseAsChild(arguments.sliced(2));
  return RUN_ALL_TESTS();
}
