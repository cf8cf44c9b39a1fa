#include <gtest/gtest.h>

#include <QApplication>

#include "desktop/Program.h"

int main(int argc, char** argv) {
  using tarnwick::testing::VirtualDisplay;
  const VirtualDisplay::Options options{.size = {1600, 900}};
  return VirtualDisplay::run(argc, argv, options, [](int& count, char** arguments) {
    const QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    const tarnwick::testing::SessionBus bus;
    return RUN_ALL_TESTS();
  });
}
