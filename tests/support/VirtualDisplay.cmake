# A display for tests that drive real windows.
pkg_check_modules(TARNWICK_TEST_X11 REQUIRED IMPORTED_TARGET xcb xcb-xtest)
set(support ${CMAKE_CURRENT_LIST_DIR})
add_library(tarnwick_virtual_display STATIC
  ${support}/ChildProcess.cpp ${support}/ChildProcess.h
  ${support}/ForeignWindow.cpp ${support}/ForeignWindow.h
  ${support}/VirtualDisplay.cpp ${support}/VirtualDisplay.h)
target_include_directories(tarnwick_virtual_display PUBLIC ${PROJECT_SOURCE_DIR}/tests)
target_link_libraries(tarnwick_virtual_display PUBLIC
  tarnwick_options Qt6::Gui PkgConfig::TARNWICK_TEST_X11 GTest::gtest)
target_precompile_headers(tarnwick_virtual_display REUSE_FROM tarnwick_pch_gui)
