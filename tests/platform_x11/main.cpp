#include <gtest/gtest.h>

#include <QApplication>

#include "support/VirtualDisplay.h"

int main(int argc, char** argv) {
  return tarnwick::testing::VirtualDisplay::run(argc, argv, {}, [](int& count, char** arguments) {
    const QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
  });
}
