# A display for tests that drive real windows.
pkg_check_modules(TARNWICK_TEST_X11 REQUIRED IMPORTED_TARGET xcb xcb-xtest)
set(support ${CMAKE_CURRENT_LIST_DIR})
add_library(tarnwick_virtual_display STATIC
  ${support}/ChildProcess.cpp ${support}/ChildProcess.h
  ${support}/ForeignWindow.cpp ${support}/ForeignWindow.h
  ${support}/VirtualDisplay.cpp ${support}/VirtualDisplay.h)
tarnwick_test_sources(tarnwick_virtual_display)
target_link_libraries(tarnwick_virtual_display PUBLIC
  Qt6::Gui PkgConfig::TARNWICK_TEST_X11 GTest::gtest)
